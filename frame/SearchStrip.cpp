#include "frame/SearchStrip.h"

#include "base/Commands.h"
#include "base/FilterText.h"
#include "frame/Resources.h"

namespace tamvelo::frame {

namespace {

/// A text as a label shows it: its ampersands are no access keys.
std::wstring AsLabel(std::wstring text) {
    for (size_t at = 0; (at = text.find(L'&', at)) != std::wstring::npos; at += 2) {
        text.insert(at, 1, L'&');
    }
    return text;
}

} // namespace

SearchStrip::SearchStrip(Form& form, RecordRequest& request, RecordGrid& grid, SearchStripDesign design)
    : FormPart(form), m_request(request), m_grid(grid), m_design(std::move(design)) {
    grid.OnColumn([this] { NameColumn(); });
}

void SearchStrip::OnLoad() {
    Box();
    ShowHeading();
}

void SearchStrip::OnUnload() noexcept {
    m_searched = {};
    m_filter.clear();
}

void SearchStrip::ShowSearching(contract::HostControl& caller, bool find, short modal) {
    m_request.OpenRecords(base::kSeleccion, find);
    Load();
    const std::wstring text = m_request.control.Text();
    if (!text.empty()) {
        SetText(base::kAnyText + text);
        AplicarBusqueda(true);
    }
    m_request.ShowFor(caller, modal);
}

bool SearchStrip::MeansAll(const std::wstring& typed) const {
    return m_design.anyMeansAll && typed == base::kAnyText;
}

SearchStrip::Search SearchStrip::Typed() const {
    std::wstring text = Host().ControlText(IDC_TXTFIELDS0);
    const bool somewhere = !text.empty() && !MeansAll(text);
    return {std::move(text), somewhere ? m_grid.Grid().CurrentColumn() : kNoColumn};
}

bool SearchStrip::IsShown() const { return Host().IsShownControl(IDC_TXTFIELDS0); }

void SearchStrip::SetText(const std::wstring& text) { Host().SetControlText(IDC_TXTFIELDS0, text); }

bool SearchStrip::IsPending() const { return IsShown() && Typed() != m_searched; }

void SearchStrip::Show(bool shown) {
    if (!shown && IsChild(Host().Window(), GetFocus())) {
        SetFocus(m_grid.Grid().Window());
    }
    for (const int control : {IDC_LBLBUSCAR, IDC_TXTFIELDS0, IDC_CMDBUSCAR}) {
        Host().ShowControl(control, shown);
    }
    Host().Relayout();
    if (m_design.headingGoes) {
        SetHeading(shown ? Heading() : std::wstring());
    }
    if (m_design.shown) {
        m_design.shown(shown);
    }
}

void SearchStrip::NameColumn() {
    const short column = m_grid.Grid().CurrentColumn();
    Box()->SetDataField(m_grid.Grid().Field(column));
    Host().SetControlText(IDC_LBLBUSCAR, L"B&uscar en " + AsLabel(m_grid.Grid().Caption(column)) + L":");
}

void SearchStrip::BuildFilter(const std::wstring& typed) {
    std::wstring filter;
    if (!MeansAll(typed)) {
        const std::wstring fragments[] = {m_request.data.CreateFilter(Box())};
        filter = base::JoinAnd(fragments);
    }
    m_request.data.SetFilter(filter,
                             base::kSlotFilterSelec); // also an empty one, or the last one would come back
}

void SearchStrip::AplicarBusqueda(bool apply) {
    if (!m_request.data) {
        return;
    }
    if (!apply) {
        m_grid.AskHost([&] {
            m_request.data.AplyFilter(L"");
            m_request.data.Requery(base::kSelec);
        });
        if (!IsLoaded()) {
            return;
        }
        ShowRecords({});
        return;
    }
    const Search search = Typed();
    BuildFilter(search.text);
    m_grid.AskHost([&] {
        m_request.data.AplyFilter(m_request.data.GetFilter(base::kSlotFilterSelec));
        m_request.data.Requery(base::kSelec);
    });
    if (!IsLoaded()) {
        return;
    }
    m_searched = search;
    m_grid.Grid().Requeried();
    ShowFilter(m_request.data.GetFilter(base::kSlotFilterSelec));
    SetFocus(Control(IDC_TXTFIELDS0));
    SetEmptyText(!m_request.data.existenregistros());
    m_grid.ShowStatus();
}

void SearchStrip::ShowRecords(const std::wstring& filter) {
    m_searched = {};
    m_grid.Grid().Requeried();
    ShowFilter(filter);
    SetEmptyText(!filter.empty());
    m_grid.ShowStatus();
}

void SearchStrip::ShowFilter(const std::wstring& filter) {
    m_filter = filter;
    Host().Bar().SetPressed(base::kFiltro, IsFiltered());
    if (m_design.filtered) {
        m_design.filtered(IsFiltered());
    }
    ShowHeading();
}

void SearchStrip::SetEmptyText(bool noMatch) {
    m_grid.Grid().SetEmptyText(noMatch ? L"Sin coincidencias: quite el filtro (F7)" : L"No hay registros");
}

std::wstring SearchStrip::Heading() const {
    return m_design.heading ? m_design.heading(m_request, m_filter)
           : IsFiltered()   ? L"Filtro: " + m_filter
                            : std::wstring();
}

void SearchStrip::Filtrar() {
    if (!m_allowed) {
        return;
    }
    if (!IsShown()) {
        Show(true);
        SetFocus(Control(IDC_TXTFIELDS0));
    } else if (IsPending()) {
        AplicarBusqueda(true);
        if (IsLoaded()) {
            Show(false);
        }
    } else {
        SetFocus(Control(IDC_TXTFIELDS0));
    }
}

void SearchStrip::GoToBox() {
    if (!m_allowed) {
        return;
    }
    if (!IsShown()) {
        Show(true);
    }
    SetFocus(Control(IDC_TXTFIELDS0));
}

void SearchStrip::SetHeading(const std::wstring& text) {
    const bool shown = !text.empty();
    Host().SetControlText(IDC_LBLTABLE, AsLabel(text));
    if (shown != Host().IsShownControl(IDC_LBLTABLE)) {
        Host().ShowControl(IDC_LBLTABLE, shown);
        Host().Relayout();
    }
}

std::span<const KeyRow> SearchStrip::Keys() const {
    static constexpr KeyRow kKeys[] = {
        {0, kCtrl | 'E', kGoToSearch},
        {IDC_CMDBUSCAR, kClick, kApplySearch},
        {0, VK_F7, base::kFiltro},
    };
    return kKeys;
}

std::span<const CommandRow> SearchStrip::Commands() const {
    using S = SearchStrip;
    static constexpr CommandRow kCommands[] = {
        {base::kFiltro, Do<&S::Clear>},
        {base::kFiltrar, Do<&S::Filtrar>},
        {kApplySearch, Do<&S::ApplyTyped>},
        {kGoToSearch, Do<&S::GoToBox>},
    };
    return kCommands;
}

} // namespace tamvelo::frame
