#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/RecordBoxes.h"
#include "com/ComPtr.h"
#include "grid/CellText.h"
#include "grid/RecordCursor.h"

namespace tamvelo::selection {

/// A field of the host's record set, as the forms need it that make a box for each.
struct RecordField : base::RecordField {
    std::wstring caption;
    grid::CellKind kind = grid::CellKind::Any;
    long size = 0; // as the record set defines it
};

/// All fields of the record set in their order, with what every record set tells of them.
std::vector<RecordField> ReadFields(grid::RecordCursor& records);
/// The same with what a record needs and refers to. Throws com::Error when there is no record set, or what
/// the host raised.
std::vector<RecordField> ReadRecordFields(IDispatch* data);

struct Choice {
    std::wstring code;
    std::wstring shown;
};

/// The records of a class that a field refers to, by code and name. Nothing when the environment does not
/// make the class, or it has more records than one looks for in a list.
std::optional<std::vector<Choice>> ReadChoices(const std::wstring& className);

} // namespace tamvelo::selection
