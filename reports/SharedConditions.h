#pragma once

#include "reports/ReportForm.h"

namespace tamvelo::reports {

// What several dialogs ask for.

/// Codes of the price lists, as the hosts know them.
inline constexpr const wchar_t* kPriceLists[] = {L"PRC", L"SL1", L"SL2", L"SL3", L"SL4",
                                                 L"SL5", L"SM1", L"SM2", L"SM3", L"TDS"};

/// Whether a yes/no property must hold: the host gets the entry's place, not the number in its text.
using frame::kAllOfThem;
using frame::kYesNoAll;

inline constexpr Condition kAutomatic{
    .kind = Condition::Kind::Check, .index = 0, .caption = L"Impresión Automática "};

/// A check box's value, as the sinks take it.
inline short Automatic(const ReportForm& form) { return form.IsTicked(0) ? short{1} : short{0}; }

inline void ShowAutomaticIfAsked(ReportForm& form) {
    form.Row(Condition::Kind::Check, 0).Show(form.ShowsAuto());
}

} // namespace tamvelo::reports
