#include "grid/TypeAhead.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "win/TextSearch.h"

namespace tamvelo::grid {

long TypeAhead::Type(wchar_t letter, DWORD time, short column) {
    const long current = m_data.Current();
    const bool elsewhere = std::exchange(m_column, column) != column || m_row != current;
    if (time - std::exchange(m_time, time) > 2 * GetDoubleClickTime() || elsewhere) {
        m_text.clear();
    }
    const bool first = m_text.empty();
    const bool repeated = !first && m_text.find_first_not_of(letter) == std::wstring::npos;
    m_text += letter;
    const long row = RowStarting(m_text, first ? current + 1 : current);
    // The same key again: on to the next one.
    return row < 0 && repeated ? RowStarting({&letter, 1}, current + 1) : row;
}

/// The next one at or after `from`, then from the top again.
long TypeAhead::RowStarting(std::wstring_view text, long from) {
    long before = -1;
    for (const long first : m_data.LoadedBlocks()) {
        const long end = std::min(first + GridData::kRowsReadTogether, m_data.Count());
        for (long row = first; row < end; ++row) {
            if ((row >= from || before < 0) && win::StartsWith(m_data.ShownText(row, m_column), text)) {
                if (row >= from) {
                    return row;
                }
                before = row;
            }
        }
    }
    return before;
}

} // namespace tamvelo::grid
