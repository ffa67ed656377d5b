#pragma once

#include "com/WinHeaders.h"

#include <string>
#include <vector>

namespace tamvelo::frame {

struct RecordField {
    std::wstring caption;
    std::wstring value;
};

/// Shows one record, a line per field with its whole value, until the user closes it. Ctrl+C copies a field's
/// value.
void ShowRecord(const std::wstring& title, const std::vector<RecordField>& fields);

} // namespace tamvelo::frame
