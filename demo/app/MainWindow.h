#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "com/Automation.h"
#include "com/LateObject.h"
#include "demo/app/CodeFields.h"
#include "demo/app/Operations.h"
#include "demo/app/ReportRun.h"
#include "demo/data/Database.h"

namespace tamvelo::demo {

/// The order screen: a form whose fields are chosen in the library's dialogs, a menu with all its operations,
/// and below what the sink heard.
class MainWindow {
public:
    /// Makes the window, not shown yet. Throws com::Error.
    explicit MainWindow(std::shared_ptr<Database> database);
    ~MainWindow();
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    HWND Handle() const { return m_window; }
    void Show() const;
    /// Until the user closes the window.
    void Run();

    /// One operation on a field of the form (its place in the table of fields), as the menu and F4 do it.
    /// Comes back when the dialog is closed. `vary` may change what the operation is given. Throws
    /// com::Error.
    using Vary = std::function<void(Request& request)>;
    void Perform(const Operation& operation, std::size_t field, const Vary& vary = {});
    /// Lets everything of the library go that operations left, empties the log.
    void Forget();
    const CodeFields& Fields() const { return m_fields; }
    /// The preview that the last operation ended with; null when it did not, or the window is closed.
    HWND Preview() const { return IsWindow(m_preview) ? m_preview : nullptr; }

private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnInit();
    void OnCommand(int id, int notification);
    void OnSize() const;
    void OnLimits(MINMAXINFO& limits) const;
    void FillTables() const;

    void Choose();
    void PerformFor(const Operation& operation, std::size_t field);
    void ReportError(std::wstring_view what);
    void ShowManual();
    void Clear() const;
    com::ComPtr<IDispatch> ColumnsOf(const std::wstring& className);

    // What the sink hears.
    void Hear(std::wstring_view member, com::Invocation& call);
    void Selected(com::Invocation& call);
    void DatesChosen(com::Invocation& call);
    void Searched(com::Invocation& call);
    com::ComPtr<IDispatch> AppointmentSink(DATE day);
    DATE ChosenDay() const;
    void Log(std::wstring_view line) const;

    HWND m_window = nullptr;
    const std::shared_ptr<Database> m_database;
    CodeFields m_fields;
    com::LateObject m_showSerch;
    com::LateObject m_dataClass;        // of the last operation
    std::optional<ReportRun> m_reports; // of the last operation
    HWND m_preview = nullptr;
    std::map<std::wstring, com::ComPtr<IDispatch>> m_columns; // of the host's grids, as the user left them
};

} // namespace tamvelo::demo
