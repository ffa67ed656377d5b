#include <algorithm>

#include "base/Commands.h"
#include "base/FilterText.h"
#include "frame/Resources.h"
#include "search/FrmBuscar.h"
#include "search/Resources.h"
#include "win/BusyCursor.h"

// What the search panel does with what is typed: checks, the list of values, the filter.
namespace tamvelo::search {

bool FrmBuscar::IsChecked(short index) {
    return Mode().boxes.at(static_cast<size_t>(index)) && !base::IsUncheckedField(Box(index)->DataField());
}

bool FrmBuscar::PasteValues(const std::wstring& text) {
    const auto values = Mode().list ? base::PastedValues(text) : std::nullopt;
    if (!values) {
        return false;
    }
    AddValues(*values);
    return true;
}

void FrmBuscar::AddValues(std::span<const std::wstring> values) {
    const HWND list = Control(IDC_LIST2);
    const win::BusyWork busy(Window(), values.size());
    LRESULT last = 0;
    ShowWindow(list, SW_HIDE); // or each value would be drawn, and the bar with it
    for (const std::wstring& value : values) {
        last = SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(value.c_str()));
    }
    ShowWindow(list, SW_SHOWNA);
    SendMessageW(list, LB_SETTOPINDEX, static_cast<WPARAM>(last), 0);
    InvalidateRect(list, nullptr, TRUE);
    ShowCount();
}

bool FrmBuscar::TakeTyped() {
    const std::wstring typed = Mode().list ? ControlText(IDC_TXTFIELDS0) : std::wstring();
    if (typed.empty()) {
        return false;
    }
    AddValues({&typed, 1});
    SetControlText(IDC_TXTFIELDS0, {});
    return true;
}

void FrmBuscar::RemoveValue() {
    const HWND list = Control(IDC_LIST2);
    const auto removed = static_cast<long>(SendMessageW(list, LB_GETCURSEL, 0, 0));
    const auto left = static_cast<long>(SendMessageW(list, LB_DELETESTRING, static_cast<WPARAM>(removed), 0));
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(std::min(removed, left - 1)), 0);
    ShowCount();
}

void FrmBuscar::ShowCount() {
    const auto count = static_cast<long>(SendMessageW(Control(IDC_LIST2), LB_GETCOUNT, 0, 0));
    SetControlText(IDC_LBLLIST2, L"&Lista: " + base::CountOfValues(count));
}

// Searching.

void FrmBuscar::BoxEntered() {
    // What the host checks and what it makes a filter of must be what stands in the box.
    if (m_boxes.SettleAll() && !TakeTyped()) {
        AplicarBusqueda(true);
    }
}

void FrmBuscar::Buscar() {
    if (m_boxes.SettleAll()) {
        TakeTyped();
        AplicarBusqueda(true);
    }
}

void FrmBuscar::AplicarBusqueda(bool apply) {
    if (apply) {
        RememberKind();
    }
    if (!m_data) {
        return;
    }
    std::wstring filter;
    if (apply) {
        BuildFilter();
        filter = m_data.GetFilter(base::kSlotFilter);
    }
    m_data.AplyFilter(filter);
    if (!IsLoaded()) {
        return;
    }
    m_filter = filter;
    ShowFilter();
    if (apply) {
        SetFocus(FirstFocus());
    }
}

void FrmBuscar::BuildFilter() {
    std::array<std::wstring, 3> fragments;
    if (!Mode().list) {
        for (short i = 0; i < 3; ++i) {
            if (Mode().boxes.at(static_cast<size_t>(i))) {
                fragments.at(static_cast<size_t>(i)) = m_data.CreateFilter(Box(i), i);
                CheckStands();
            }
        }
    } else if (SendMessageW(Control(IDC_LIST2), LB_GETCOUNT, 0, 0) > 0) {
        fragments[0] = m_data.CreateFilter(ObjectOf(IDC_LIST2, L"List2", 0), short{0});
    }
    std::wstring filter = base::JoinAnd(fragments);
    m_data.SetFilter(filter, base::kSlotFilter);
}

void FrmBuscar::ShowFilter() {
    SetControlText(IDC_STATUS, m_filter.empty() ? L"Sin filtro" : L"Filtro aplicado: " + m_filter);
    Bar().SetPressed(base::kFiltro, !m_filter.empty());
}

void FrmBuscar::Aceptar() {
    contract::Sink sink = m_sink; // a copy: the host may close the form while it is told
    Deliver([&] { sink.AceptarBuscar(); });
}

void FrmBuscar::Cancelar() {
    AplicarBusqueda(false);
    if (IsLoaded()) {
        Unload();
    }
}

} // namespace tamvelo::search
