#include "demo/app/MainWindow.h"

#include <windowsx.h>

#include <algorithm>
#include <iterator>
#include <optional>

#include "com/Error.h"
#include "com/Module.h"
#include "demo/app/Accessible.h"
#include "demo/app/Describe.h"
#include "demo/app/Manual.h"
#include "demo/app/MenuBar.h"
#include "demo/app/Resources.h"
#include "demo/app/Server.h"
#include "demo/data/Tables.h"
#include "demo/host/HostError.h"
#include "demo/host/HostObjects.h"
#include "demo/reports/ReportCall.h"

namespace tamvelo::demo {

namespace {

using com::ComPtr;
using com::LateObject;

DATE Today() {
    SYSTEMTIME now;
    DATE date = 0;
    GetLocalTime(&now);
    now.wHour = now.wMinute = now.wSecond = now.wMilliseconds = 0;
    SystemTimeToVariantTime(&now, &date);
    return date;
}

} // namespace

MainWindow::MainWindow(std::shared_ptr<Database> database)
    : m_database(std::move(database)), m_fields(m_database) {
    if (CreateDialogParamW(com::Module::Instance(), MAKEINTRESOURCEW(IDD_PEDIDO), nullptr, Procedure,
                           reinterpret_cast<LPARAM>(this)) == nullptr) {
        com::ThrowLastError(L"No se puede crear la ventana.");
    }
}

MainWindow::~MainWindow() {
    if (m_window != nullptr) {
        DestroyWindow(m_window);
    }
}

void MainWindow::Show() const {
    ShowWindow(m_window, SW_SHOWNORMAL);
    UpdateWindow(m_window);
}

void MainWindow::Run() {
    const HACCEL keys = LoadAcceleratorsW(com::Module::Instance(), MAKEINTRESOURCEW(IDA_PEDIDO));
    MSG message;
    while (m_window != nullptr && GetMessageW(&message, nullptr, 0, 0) > 0) {
        const bool own = message.hwnd == m_window || IsChild(m_window, message.hwnd);
        if (!(own && TranslateAcceleratorW(m_window, keys, &message)) &&
            !IsDialogMessageW(m_window, &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

INT_PTR CALLBACK MainWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        reinterpret_cast<MainWindow*>(lParam)->m_window = window;
        SetWindowLongPtrW(window, DWLP_USER, lParam);
    }
    auto* const self = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, DWLP_USER));
    if (self == nullptr) {
        return FALSE;
    }
    try {
        return self->OnMessage(message, wParam, lParam);
    } catch (...) {
        self->ReportError(L"La pantalla de pedidos");
        return TRUE;
    }
}

INT_PTR MainWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        OnInit();
        return TRUE;
    case WM_COMMAND:
        OnCommand(LOWORD(wParam), HIWORD(wParam));
        return TRUE;
    case WM_SIZE:
        OnSize();
        return TRUE;
    case WM_GETMINMAXINFO:
        OnLimits(*reinterpret_cast<MINMAXINFO*>(lParam));
        return TRUE;
    case WM_CLOSE:
        DestroyWindow(m_window);
        return TRUE;
    case WM_NCDESTROY:
        m_window = nullptr;
        PostQuitMessage(0);
        return TRUE;
    default:
        return FALSE;
    }
}

void MainWindow::OnInit() {
    for (const auto& [kind, metric] : {std::pair{ICON_BIG, SM_CXICON}, {ICON_SMALL, SM_CXSMICON}}) {
        const int size = GetSystemMetrics(metric);
        SendMessageW(m_window, WM_SETICON, static_cast<WPARAM>(kind),
                     reinterpret_cast<LPARAM>(LoadImageW(com::Module::Instance(), MAKEINTRESOURCEW(IDI_DEMO),
                                                         IMAGE_ICON, size, size, LR_SHARED)));
    }
    SetMenu(m_window, MakeMenuBar());
    FillTables();
    m_fields.Attach(m_window);
    SetAccessibleName(GetDlgItem(m_window, IDC_FECHAS), L"Seleccionar las fechas");
}

void MainWindow::FillTables() const {
    const HWND combo = GetDlgItem(m_window, IDC_TABLA);
    for (const TableInfo& table : Tables()) {
        ComboBox_AddString(combo, std::wstring(table.title).c_str());
    }
    ComboBox_SetCurSel(combo, 0);
}

void MainWindow::OnCommand(int id, int notification) {
    if (const int operation = id - IDM_OPERACIONES;
        operation >= 0 && operation < static_cast<int>(Operations().size())) {
        PerformFor(Operations()[static_cast<std::size_t>(operation)], CodeFields::Value());
        return;
    }
    const std::optional<std::size_t> field = CodeFields::At(id);
    if (field && notification == EN_CHANGE) {
        m_fields.ShowName(*field);
    } else if (field && CodeFields::IsButton(id)) {
        PerformFor(*FindOperation(L"ShowSelec"), *field);
    } else if (id == IDC_FECHAS) {
        PerformFor(*FindOperation(L"ShowSelecDate"), CodeFields::Value());
    } else if (id == IDC_TABLA && notification == CBN_SELCHANGE) {
        m_fields.ShowName(CodeFields::Value());
    } else if (id == IDM_SELECCIONAR) {
        Choose();
    } else if (id == IDM_NUEVO) {
        Clear();
    } else if (id == IDM_VACIAR) {
        SetDlgItemTextW(m_window, IDC_LOG, L"");
    } else if (id == IDM_MANUAL) {
        ShowManual();
    } else if (id == IDM_SALIR) {
        DestroyWindow(m_window);
    } else if (id == IDOK) { // Enter goes on to the next field, as whoever types orders all day expects
        SendMessageW(m_window, WM_NEXTDLGCTL, 0, FALSE);
    }
}

/// The names and the log take what the window has more than its template.
void MainWindow::OnSize() const {
    const HWND log = GetDlgItem(m_window, IDC_LOG);
    const auto placeOf = [this](HWND control) {
        RECT place;
        GetWindowRect(control, &place);
        MapWindowPoints(nullptr, m_window, reinterpret_cast<POINT*>(&place), 2);
        return place;
    };
    const LONG margin = placeOf(log).left;
    RECT client;
    GetClientRect(m_window, &client);
    const auto stretch = [&](HWND control, bool down) {
        const RECT place = placeOf(control);
        SetWindowPos(control, nullptr, 0, 0, client.right - margin - place.left,
                     (down ? client.bottom - margin : place.bottom) - place.top,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    };
    for (std::size_t field = 0; field < CodeFields::Count(); ++field) {
        stretch(m_fields.Name(field), false);
    }
    stretch(GetDlgItem(m_window, IDC_RAYA), false);
    stretch(log, true);
}

void MainWindow::OnLimits(MINMAXINFO& limits) const {
    RECT least{0, 0, 300, 260};
    RECT client;
    RECT window;
    MapDialogRect(m_window, &least);
    GetClientRect(m_window, &client);
    GetWindowRect(m_window, &window);
    limits.ptMinTrackSize = {least.right + (window.right - window.left) - client.right,
                             least.bottom + (window.bottom - window.top) - client.bottom};
}

/// F4: what the control with the focus chooses from.
void MainWindow::Choose() {
    const HWND focus = GetFocus();
    const int id = GetDlgCtrlID(focus);
    if (const std::optional<std::size_t> field = CodeFields::At(id)) {
        PerformFor(*FindOperation(L"ShowSelec"), *field);
    } else if (id == IDC_DESDE || id == IDC_HASTA) {
        PerformFor(*FindOperation(L"ShowSelecDate"), CodeFields::Value());
    } else if (id == IDC_TABLA) {
        ComboBox_ShowDropdown(focus, !ComboBox_GetDroppedState(focus));
    }
}

/// For the user: an error is shown to him.
void MainWindow::PerformFor(const Operation& operation, std::size_t field) {
    try {
        Perform(operation, field);
    } catch (...) {
        ReportError(operation.name);
    }
}

void MainWindow::Perform(const Operation& operation, std::size_t field, const Vary& vary) {
    if (!m_showSerch) {
        m_showSerch = MakeShowSerch();
    }
    const std::wstring className = m_fields.ClassOf(field);
    const HWND box = m_fields.Box(field);
    const ComPtr<IDispatch> dataClass = MakeDataClass(m_database, className);
    m_dataClass = LateObject(dataClass.Get(), L"MyClase");

    Request request;
    request.sink = MakeSink([this](std::wstring_view member, com::Invocation& call) { Hear(member, call); });
    request.dataClass = dataClass;
    request.control =
        MakeTextControl(box, L"TxtFields", static_cast<short>(field), FindTable(className)->Code().field);
    request.columns = ColumnsOf(className);
    m_reports.emplace(m_database, className, operation.name, [this](std::wstring_view line) { Log(line); });
    request.reports = m_reports->Offer();
    request.screen = m_reports->Screen();
    request.text = TextOf(box);
    request.column =
        m_fields.NameFor(field, request.text) ? 0 : 1; // what is no code is looked for in the names
    LateObject(request.columns.Get(), L"Columns").Put(L"Col", request.column);
    request.window = static_cast<long>(reinterpret_cast<LONG_PTR>(m_window));
    request.date = ChosenDay();
    if (operation.name == std::wstring_view(L"ShowNuevaCita")) {
        request.sink = AppointmentSink(request.date); // it hears when others have been opened since
    }
    if (vary) {
        vary(request);
    }

    Log(std::wstring(operation.name) + L": " + className);
    operation.Perform(m_showSerch, request);
    m_preview = m_reports->ShowPreview(m_window);
}

void MainWindow::Forget() {
    m_showSerch = {};
    m_dataClass = {};
    m_reports.reset();
    m_columns.clear();
    SetDlgItemTextW(m_window, IDC_LOG, L"");
}

void MainWindow::ReportError(std::wstring_view what) {
    const std::wstring text = Describe(AnyCurrentError());
    Log(L"    " + text);
    MessageBoxW(m_window, (std::wstring(what) + L"\n\n" + text).c_str(), L"Pedidos", MB_ICONWARNING);
}

void MainWindow::ShowManual() {
    try {
        OpenManual(m_window);
    } catch (...) {
        ReportError(L"El manual");
    }
}

void MainWindow::Clear() const {
    m_fields.Clear();
    SetDlgItemTextW(m_window, IDC_DESDE, L"");
    SetDlgItemTextW(m_window, IDC_HASTA, L"");
    SetFocus(m_fields.Box(0));
}

ComPtr<IDispatch> MainWindow::ColumnsOf(const std::wstring& className) {
    ComPtr<IDispatch>& columns = m_columns[className];
    if (!columns) {
        columns = MakeColumns(className);
    }
    return columns;
}

void MainWindow::Hear(std::wstring_view member, com::Invocation& call) {
    struct Handler {
        std::wstring_view member;
        void (MainWindow::*run)(com::Invocation& call);
    };
    // The others carry what a host sorts or shows in its grid, or that marks are settled: the log tells of
    // them.
    static constexpr Handler kHandlers[] = {
        {L"AceptarSeleccion", &MainWindow::Selected},
        {L"AceptarSeleccionParam", &MainWindow::Selected},
        {L"AceptarFechaEntre", &MainWindow::DatesChosen},
        {L"AceptarBuscar", &MainWindow::Searched},
    };
    Log(L"    " + Describe(member, call));
    if (const auto found = std::ranges::find(kHandlers, member, &Handler::member);
        found != std::end(kHandlers)) {
        (this->*found->run)(call);
    } else if (IsReportMember(member)) {
        try {
            m_reports->Accept(member, call);
        } catch (const DataError& error) { // the dialog's user is to read it
            throw HostError(E_FAIL, error.Message());
        }
    }
}

/// index, control, value; with five arguments the value is what stands in the searched column, and the next
/// one the code. A panel that asked for verification answers with a Boolean.
void MainWindow::Selected(com::Invocation& call) {
    LateObject control(call[1].ToObject().Get(), L"ctl");
    const com::Variant& value = call[call.Count() == 5 ? 3 : 2];
    if (value.Type() == VT_BOOL) {
        m_fields.Tell(static_cast<std::size_t>(control.Call(L"Index").ToShort()),
                      value.ToBool() ? L"Verificado" : L"No verificado");
    } else {
        control.Put(L"Text", value); // and the box's change brings the name
    }
}

/// The form stays open beside this window and its menus: what it ends with is told apart from the others.
ComPtr<IDispatch> MainWindow::AppointmentSink(DATE day) {
    return MakeSink([this, day](std::wstring_view member, com::Invocation& call) {
        Log(L"    " + Describe(member, call));
        const std::vector<std::wstring> appointments = AppointmentsOn(*m_database, day);
        Log(L"Citas del " + com::Variant::Date(day).ToText() + L": " + std::to_wstring(appointments.size()));
        for (const std::wstring& line : appointments) {
            Log(L"    " + line);
        }
    });
}

/// The day in the first of the two dates, else today.
DATE MainWindow::ChosenDay() const {
    const std::wstring text = TextOf(GetDlgItem(m_window, IDC_DESDE));
    DATE day = 0;
    return SUCCEEDED(VarDateFromStr(com::Bstr(text).Get(), LOCALE_USER_DEFAULT, VAR_DATEVALUEONLY, &day))
               ? day
               : Today();
}

void MainWindow::DatesChosen(com::Invocation& call) {
    SetDlgItemTextW(m_window, IDC_DESDE, call[0].ToText().c_str());
    SetDlgItemTextW(m_window, IDC_HASTA, call[1].ToText().c_str());
}

void MainWindow::Searched(com::Invocation&) {
    Log(L"    Filtro: " + m_dataClass.Call(L"GetFilter", {L"Filter"}).ToText());
}

void MainWindow::Log(std::wstring_view line) const {
    const HWND log = GetDlgItem(m_window, IDC_LOG);
    const int end = GetWindowTextLengthW(log);
    const std::wstring text = (end > 0 ? L"\r\n" : L"") + std::wstring(line);
    Edit_SetSel(log, end, end);
    Edit_ReplaceSel(log, text.c_str());
}

} // namespace tamvelo::demo
