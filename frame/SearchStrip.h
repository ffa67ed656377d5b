#pragma once

#include <functional>
#include <string>

#include "frame/RecordGrid.h"
#include "frame/Resources.h"

namespace tamvelo::frame {

inline constexpr wchar_t kApplySearch[] = L"{BUSCAR}";

/// What distinguishes the search strip of one form.
struct SearchStripDesign {
    /// Whether a text of nothing but base::kAnyText asks for every record rather than for something.
    bool anyMeansAll = false;
    /// What the line above the grid says while `filter` is in force; null: the filter, or nothing.
    std::wstring (*heading)(const RecordRequest& request, const std::wstring& filter) = nullptr;
    /// Whether that line goes away with the strip.
    bool headingGoes = false;
    /// The strip was shown or put away.
    std::function<void(bool shown)> shown = {};
    /// A filter came into force, or went.
    std::function<void(bool filtered)> filtered = {};
};

/// The strip above a grid in which one column is searched, the filter that comes of it, and the line that
/// names the filter.
class SearchStrip final : public FormPart {
public:
    SearchStrip(Form& form, RecordRequest& request, RecordGrid& grid, SearchStripDesign design);

    /// Whether the user may have the strip; it is not there otherwise.
    void Allow(bool allowed) { m_allowed = allowed; }
    /// Within a show method: the form opens with the text of the host's control searched for. As
    /// RecordRequest::ShowFor.
    void ShowSearching(contract::HostControl& caller, bool find, short modal);
    bool IsShown() const;
    void SetText(const std::wstring& text);
    /// Whether something was typed that the grid does not show yet, or shows of another column.
    bool IsPending() const;
    /// Runs the typed search (true), or takes it away (false).
    void AplicarBusqueda(bool apply);
    /// After the host has other records than before, with `filter` in force and nothing searched.
    void ShowRecords(const std::wstring& filter);
    bool IsFiltered() const { return !m_filter.empty(); }

private:
    /// What a search would look for, and where.
    struct Search {
        std::wstring text;
        short column = kNoColumn; // of a text that is looked for
        bool operator==(const Search&) const = default;
    };
    static constexpr short kNoColumn = -1;

    void OnLoad() override;
    void OnUnload() noexcept override;
    std::span<const KeyRow> Keys() const override;
    std::span<const CommandRow> Commands() const override;

    /// "ID_Filtrar": brings the strip back, or applies what was typed and puts it away, or goes to its box.
    void Filtrar();
    void ApplyTyped() { AplicarBusqueda(true); }
    void Clear() { AplicarBusqueda(false); }
    void GoToBox();

    bool MeansAll(const std::wstring& typed) const;
    Search Typed() const;
    com::ComPtr<objects::ControlObject> Box() { return Host().ObjectOf(IDC_TXTFIELDS0, L"TxtFields", 0); }
    void BuildFilter(const std::wstring& typed);
    void NameColumn();
    void Show(bool shown);
    void ShowFilter(const std::wstring& filter);
    /// The line above the grid; "" takes it away.
    void SetHeading(const std::wstring& text);
    void ShowHeading() { SetHeading(Heading()); }
    std::wstring Heading() const;
    void SetEmptyText(bool noMatch);

    RecordRequest& m_request;
    RecordGrid& m_grid;
    const SearchStripDesign m_design;
    bool m_allowed = true;
    std::wstring m_filter; // in force, as far as this form knows
    Search m_searched;     // what the grid shows
};

} // namespace tamvelo::frame
