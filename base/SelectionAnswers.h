#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

/// Which call a chosen record leads to: the host's classes differ in what they want back from the selection
/// panel and from the record browser. Class names count in any case.
namespace tamvelo::base {

/// A number of the call: what the host passed as Column or Indx (travels by reference) or a fixed one.
struct NumberSource {
    enum class Kind { Column, Indx, Fixed };
    Kind kind = Kind::Column;
    short fixed = 0;

    constexpr short Resolve(short column, short indx) const {
        return kind == Kind::Column ? column : kind == Kind::Indx ? indx : fixed;
    }
    bool operator==(const NumberSource&) const = default;
};

enum class SinkMember { AceptarSeleccion, AceptarSeleccionParam };

/// The call on acceptance: `member`(first, ctl, texts of the current row in the grid columns `Columns()`).
struct Answer {
    SinkMember member = SinkMember::AceptarSeleccion;
    NumberSource first;
    std::array<NumberSource, 3> columns;
    bool asValue = false; // the column's value as it is, in place of its text

    /// One column for AceptarSeleccion, three for AceptarSeleccionParam. Views into this object.
    std::span<const NumberSource> Columns() const;
};

Answer AnswerFor(std::wstring_view className);
/// The same for the record browser, which goes by Indx alone.
Answer AnswerInBrowser(std::wstring_view className);
/// The same for the panel with a new record: a value, of the column that Indx says.
Answer AnswerInAddPanel(std::wstring_view className);

/// The call that a double click makes for some classes: AceptarSeleccion(code, ctl, value of grid column
/// `column`).
struct DoubleClickAnswer {
    short code = 0;
    short column = 0;
};

/// Nothing for the classes whose double click just accepts.
std::optional<DoubleClickAnswer> DoubleClickAnswerFor(std::wstring_view className);

/// A Column above the grid's column count counts as 0. One equal to the count is left as it is.
short ClampColumn(short column, long count);

/// The selection that the panel asks of the data class; stock wins over verification.
std::wstring_view SelectionName(bool stock, bool verify);

/// How the panel looks for the host control's text: FindRecord(text) or FindRecord(text, number).
struct FindRule {
    std::optional<short> number;
};

/// Nothing for the columns that are not looked for.
std::optional<FindRule> FindRuleFor(short column);

} // namespace tamvelo::base
