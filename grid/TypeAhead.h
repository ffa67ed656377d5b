#pragma once

#include <string>

#include "grid/GridData.h"

namespace tamvelo::grid {

/// Letters typed one after the other, and the loaded row that they lead to.
class TypeAhead {
public:
    explicit TypeAhead(GridData& data) : m_data(data) {}

    /// One more letter, at a message's time, which begins another text after a pause or where the user has
    /// gone elsewhere meanwhile. The row whose column starts with the text; -1 when there is none.
    long Type(wchar_t letter, DWORD time, short column);
    /// The current row afterwards.
    void LedTo(long row) { m_row = row; }

private:
    long RowStarting(std::wstring_view text, long from);

    GridData& m_data;
    std::wstring m_text;
    DWORD m_time = 0; // of the last letter
    long m_row = -1;
    short m_column = -1;
};

} // namespace tamvelo::grid
