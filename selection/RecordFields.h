#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/RecordBoxes.h"
#include "com/ComPtr.h"
#include "grid/CellText.h"

namespace tamvelo::selection {

/// A field of the record set as a form for a new record needs it.
struct RecordField : base::RecordField {
    std::wstring caption;
    grid::CellKind kind = grid::CellKind::Any;
    long size = 0; // most letters of a text; 0 is any number
};

/// Of the data class's record set, all of its fields in their order. Throws com::Error when there is no
/// record set, or what the host raised.
std::vector<RecordField> ReadRecordFields(IDispatch* data);

struct Choice {
    std::wstring code;
    std::wstring shown;
};

/// The records of a class that a field refers to, by code and name. Nothing when the environment does not
/// make the class, or it has more records than one looks for in a list.
std::optional<std::vector<Choice>> ReadChoices(const std::wstring& className);

} // namespace tamvelo::selection
