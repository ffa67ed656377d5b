#pragma once

#include "com/WinHeaders.h"

#include <string>
#include <vector>

namespace tamvelo::frame {

struct RecordField {
    std::wstring caption;
    std::wstring value;
};

/// Shows one record until the user closes it: a line for each field, and below the whole value of the current
/// one, wrapped, with its line ends. Ctrl+C copies it.
void ShowRecord(const std::wstring& title, const std::vector<RecordField>& fields);

} // namespace tamvelo::frame
