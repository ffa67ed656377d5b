#pragma once

#include "com/WinHeaders.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "com/Automation.h"
#include "demo/reports/Report.h"

namespace tamvelo::demo {

/// One use of a report dialog: offers the reports of a table, makes those that come back ticked, and prints
/// them or keeps them for the preview.
class ReportRun {
public:
    using Log = std::function<void(std::wstring_view line)>;

    ReportRun(std::shared_ptr<Database> database, std::wstring_view className, std::wstring_view operation,
              Log log);

    /// The collection that the dialog gets, and the name that it keeps the user's choices under.
    com::ComPtr<IDispatch> Offer() const;
    std::wstring Screen() const;

    /// The sink's call. Throws com::Error and DataError.
    void Accept(std::wstring_view member, com::Invocation& call);
    /// Opens what is to be looked at, once the dialog has gone; null when there is nothing.
    HWND ShowPreview(HWND owner);

private:
    bool Is(std::wstring_view operation) const { return m_operation == operation; }
    void AddOwnConditions(Parameters& parameters) const;

    const std::shared_ptr<Database> m_database;
    const std::wstring m_className;
    const std::wstring m_operation;
    const std::vector<ReportInfo> m_offered;
    const Log m_log;
    std::vector<Report> m_shown;
    std::wstring m_caption;
};

} // namespace tamvelo::demo
