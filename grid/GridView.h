#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "grid/Grid.h"
#include "grid/GridColumns.h"
#include "grid/GridData.h"
#include "grid/GridFont.h"
#include "grid/GridHeadings.h"
#include "grid/GridPainter.h"

namespace tamvelo::grid {

/// A scroll bar as it was last drawn.
struct ScrollState {
    int most = -1;
    int page = 0;
    int position = 0;
    int thumb = 0; // pixels, about
};

/// The grid's window. Shared, because a host call made from inside one of these functions may destroy the
/// grid: each looks at Window() again afterwards. The accessible object and the column objects hold it
/// weakly.
class GridView : public std::enable_shared_from_this<GridView> {
public:
    explicit GridView(GridEvents& events) : m_events(&events) {}
    void Create(HWND parent, int controlId);
    /// The owner goes: no window, no more events.
    void Close() noexcept;
    HWND Window() const { return m_window; }

    void SetDataSource(IUnknown* source);
    void Sync(HostDid did);
    /// Whether the host's current record is the one that is highlighted. If it is another the rows are read
    /// again and the owner is told; also false without a current row.
    bool Confirm();
    GridData& Data() { return m_data; }
    const GridColumns& Columns() const { return m_columns; }
    const GridGeometry& Geometry() const { return m_geometry; }
    const std::optional<OrderMark>& Mark() const { return m_mark; }
    const std::wstring& Name() const { return m_name; }
    void SetName(std::wstring_view name) { m_name = name; }

    /// -1 without columns.
    short CurrentColumn() const { return m_columns.Count() == 0 ? short{-1} : m_column; }
    void SetCurrentColumn(short column);
    /// Throws a subscript error unless the record set has that column.
    void CheckColumn(short column) const;
    com::Variant Value(short column);
    std::wstring Text(short column);
    const GridColumn& Column(short column) const;
    /// As loaded for the screen, cut to what a cell can show; "" while it is not loaded.
    std::wstring LoadedText(long row, short column);

    /// Lets `change` alter one column and shows the result.
    template <class Change>
    void ChangeColumn(short column, Change&& change) {
        CheckColumn(column);
        change(m_columns, m_columns[column]);
        ShowColumns();
    }
    void SetMark(const std::optional<OrderMark>& mark);
    base::GridLayout Layout() const { return m_columns.ToLayout(m_dpi, m_fontChoice); }
    void Apply(const base::GridLayout& layout);
    LOGFONTW Font() const { return ToLogFont(m_fontChoice, m_dpi); }
    void SetFont(const base::GridLayout::Font& font);
    int Dpi() const { return m_dpi; }
    void FitColumn(short column);

    // Marks (GridMarks.cpp), as Grid has them
    void OfferMarks() { m_offersMarks = true; }
    std::vector<short> MarkColumns();
    void PutMarksFirst();
    bool ToggleMark(short column);
    MarkCount CountMarks(short column);
    void NameField(std::wstring_view field, std::wstring_view caption);

    void CopyRow(bool withHeadings);
    void CopyCell();
    void SetEmptyText(std::wstring_view text);

    /// Makes the row the host's current one and shows it.
    void MoveTo(long row);
    /// The same, and the row was chosen.
    void Activate(long row);
    void PressHeading(short column);
    /// In client coordinates; -1 outside the rows or columns.
    long RowAt(int y) const;
    short ColumnAt(int x) const;
    /// Of a visible column; empty for another.
    RECT CellRect(long row, short column) const;

private:
    static constexpr UINT kColumnsDragged = WM_USER + 1;

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM w, LPARAM l) noexcept;
    static void RegisterWindowClass();
    LRESULT Handle(UINT message, WPARAM w, LPARAM l);
    template <class Event>
    void Raise(Event&& event) {
        if (m_events) {
            event(*m_events);
        }
    }
    void Report(const com::Error& error) noexcept;

    // What is shown
    void Show(const GridData::Change& change);
    void TakeFields();
    int CaptionWidth(short column) const;
    int DefaultWidth(short column) const;
    int FittingWidth(short column);
    void WidenGuessed();
    void ShowColumns();
    void ShowCurrent(bool oneThirdDown);
    bool Load(long top);
    void CatchUp();
    void RemakeFont();
    void ChangeDpi(int dpi);
    void Resize();
    void UpdateScrollBars();
    void ScrollTo(long top);
    void ScrollAcross(int scrolled);
    long MostTop() const;
    void InvalidateBody();
    void InvalidateRow(long row);
    void AnnounceCurrent();
    void Paint();

    bool IsMark(short column);
    bool TakesMarks(short column);

    // What the user does (GridInput.cpp)
    bool Key(WPARAM key);
    void TakeColumn(short column);
    void Type(wchar_t letter);
    long RowStarting(std::wstring_view text, long from);
    void Step(long row, long top);
    /// What a press of either button does: its cell becomes the current one. False when it hit none.
    bool SelectCell(int x, int y);
    void Click(int x, int y);
    void DoubleClick(int x, int y);
    void ScrollVertically(WORD request);
    void ScrollHorizontally(WORD request);
    void Wheel(int delta, bool across);
    void ContextMenu(LPARAM place);
    LRESULT HeadingNotice(const NMHDR& notice);
    LRESULT ColumnsDragged();

    GridEvents* m_events;
    HWND m_window = nullptr;
    int m_dpi = USER_DEFAULT_SCREEN_DPI;
    GridData m_data;
    GridColumns m_columns;
    GridHeadings m_headings;
    base::GridLayout::Font m_fontChoice;
    std::unique_ptr<GridFont> m_font;
    GridLook m_look{};
    GridGeometry m_geometry;
    short m_column = 0;
    std::optional<OrderMark> m_mark;
    std::wstring m_emptyText = L"No hay registros";
    std::wstring m_name;
    std::map<std::wstring, std::wstring> m_captions; // by the field's name in small letters
    bool m_offersMarks = false;
    bool m_catchingUp = false;
    ScrollState m_vertical;
    ScrollState m_horizontal;
    int m_wheel = 0; // what is left of the wheel's turns
    struct {
        std::wstring text;
        DWORD time = 0; // of the last letter's message
        long row = -1;  // where it led to
        short column = -1;
    } m_typed;
};

} // namespace tamvelo::grid
