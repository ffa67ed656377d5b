#pragma once

#include <string_view>
#include <vector>

#include "com/Automation.h"
#include "demo/reports/Report.h"

namespace tamvelo::demo {

/// What a report dialog hands over: which reports, where to, under which conditions.
struct ReportCall {
    enum class Output { Printer, Preview, Mail }; // in the order of the dialogs' list
    std::vector<bool> ticks;                      // one per report that was offered
    Output output = Output::Preview;              // also of the dialogs that do not ask for it
    int copies = 1;
    Parameters parameters;
};

/// Whether the member of the sink brings a report dialog's result.
bool IsReportMember(std::wstring_view member);

/// Throws com::Error when an argument is of no use.
ReportCall ReadReportCall(std::wstring_view member, const com::Invocation& call);

} // namespace tamvelo::demo
