#include "dates/FrmCita.h"

#include <commctrl.h>

#include <algorithm>

#include "base/Appointment.h"
#include "base/Commands.h"
#include "dates/Resources.h"
#include "frame/Lookup.h"
#include "win/Clock.h"
#include "win/MousePointer.h"
#include "win/Picker.h"

namespace tamvelo::dates {

using namespace frame::tables;

namespace {

constexpr ToolUse kTools[] = {{base::kAceptar}, {base::kCancelar}};

// Commands that only keys know.
constexpr wchar_t kLeerCodigo[] = L"{LEER}";
constexpr wchar_t kNewLine[] = L"{LINEA}";
constexpr wchar_t kLater[] = L"{MAS_TARDE}";
constexpr wchar_t kEarlier[] = L"{MAS_TEMPRANO}";

constexpr KeyRow kKeys[] = {
    {IDC_TXTCITA10, kFirst | VK_RETURN, kLeerCodigo},
    {IDC_TXTCITA6, kFirst | VK_RETURN, kLeerCodigo},
    {IDC_TXTCITA14, kCtrl | VK_RETURN, kNewLine},
    {IDC_DTPICHORA, VK_PRIOR, kLater},
    {IDC_DTPICHORA, VK_NEXT, kEarlier},
};

struct Box {
    int control;
    short index; // in the control array TxtFields
    std::wstring base::AppointmentTexts::*text;
};
constexpr Box kBoxes[] = {
    {IDC_TXTCITA10, 10, &base::AppointmentTexts::customerCode},
    {IDC_TXTCITA0, 0, &base::AppointmentTexts::customerName},
    {IDC_TXTCITA14, 14, &base::AppointmentTexts::comment},
    {IDC_TXTCITA6, 6, &base::AppointmentTexts::employeeCode},
    {IDC_TXTCITA1, 1, &base::AppointmentTexts::employeeName},
    {IDC_TXTCITA13, 13, &base::AppointmentTexts::box},
    {IDC_TXTCITA15, 15, &base::AppointmentTexts::type},
};

constexpr frame::Lookup kCustomers{L"clientes"};
constexpr frame::Lookup kEmployees{L"empleados"};
constexpr frame::Lookup kTypes{.className = L"tipos_cita", .column = 1}; // the name, not the code

/// The row of a table whose `member` is `value`; null when there is none.
template <class Table, class Row, class Value>
const Row* Find(const Table& table, Value Row::*member, Value value) {
    const auto found = std::ranges::find(table, value, member);
    return found == std::end(table) ? nullptr : &*found;
}

} // namespace

/// A code with the name that belongs to it.
struct FrmCita::Person {
    int code;
    int name;
    frame::Lookup lookup;
    const wchar_t* unknown; // what is said of a code that is not in the list
};

/// A look-up of a box, its button, and where the focus goes on to.
struct FrmCita::Search {
    int button;
    int box;
    frame::Lookup lookup;
    const Person* person; // null: the answer is all there is
    int next;
};

const std::array<FrmCita::Person, 2> FrmCita::kPersons{{
    {IDC_TXTCITA10, IDC_TXTCITA0, kCustomers, L"No hay ningún cliente con el código "},
    {IDC_TXTCITA6, IDC_TXTCITA1, kEmployees, L"No hay ningún empleado con el código "},
}};

const std::array<FrmCita::Search, 4> FrmCita::kSearches{{
    {IDC_CMDCITA10, IDC_TXTCITA10, kCustomers, &kPersons[0], IDC_TXTCITA14},
    {IDC_CMDCITA0, IDC_TXTCITA0, kCustomers, &kPersons[0], IDC_TXTCITA14},
    {IDC_CMDCITA6, IDC_TXTCITA6, kEmployees, &kPersons[1], IDC_TXTCITA13},
    {IDC_CMDCITA15, IDC_TXTCITA15, kTypes, nullptr, IDC_MTHVFECHA},
}};

FrmCita::FrmCita() : Form({kName, IDD_CITA, kTools, kKeys}) {}

std::span<const CommandRow> FrmCita::Commands() const {
    using F = FrmCita;
    static constexpr CommandRow kCommands[] = {
        {base::kAceptar, Do<&F::Aceptar>}, {base::kCancelar, Do<&F::Salir>},  {base::kCerrar, Do<&F::Salir>},
        {kLookUp, Do<&F::Buscar>},         {kLeerCodigo, Do<&F::LeerCodigo>}, {kNewLine, Do<&F::NewLine>},
        {kLater, Do<&F::Later>},           {kEarlier, Do<&F::Earlier>},
    };
    return kCommands;
}

std::vector<LayoutRow> FrmCita::Layout() const {
    return {
        {kOwn, {{IDC_LBLCITA0}, {IDC_DTPICHORA}}},
        {kOwn, {{IDC_LBLCITA1}, {IDC_TXTCITA10}, {IDC_CMDCITA10}, {IDC_TXTCITA0, kFill}, {IDC_CMDCITA0}}},
        {kFill, {{IDC_LBLCITA2}, {IDC_TXTCITA14, kFill}}},
        {kOwn, {{IDC_LBLCITA3}, {IDC_TXTCITA6}, {IDC_CMDCITA6}, {IDC_TXTCITA1, kFill}}},
        {kOwn, {{IDC_LBLCITA4}, {IDC_TXTCITA13}}},
        {kOwn, {{IDC_LBLCITA5}, {IDC_TXTCITA15}, {IDC_CMDCITA15}}},
        {kOwn, {{IDC_MTHVFECHA}, {IDC_LBLDIA, kFill}}},
        {kOwn, {{IDC_LBLAVISO, kFill}}},
    };
}

HWND FrmCita::FirstFocus() const { return Control(IDC_DTPICHORA); }

// Life.

void FrmCita::Mostrar(IDispatch* sink, IDispatch* data, HWND owner, DATE date) {
    if (IsShown()) {
        SetForegroundWindow(GetLastActivePopup(Window())); // itself, or the look-up that is open above it
        return;
    }
    Show([&] {
        m_objClsEvents = contract::Sink(sink, L"objClsEvents");
        m_myClase = contract::DataClass(data);
        m_className = m_myClase.sClassName();
        SetOwner(owner);
        Load();
        SetDay(date);
        SetWindowTextW(Window(), (L"Nueva Cita :  " + com::Variant::Date(date).ToText()).c_str());
        ShowModeless();
    });
}

void FrmCita::OnLoad() {
    m_clsMeEvents = MakeRelay(
        {{objects::AceptaSeleccion, [this](com::Invocation& call) { clsMeEvents_AceptaSeleccion(call); }},
         {objects::AceptaSeleccionParam,
          [this](com::Invocation& call) { clsMeEvents_AceptaSeleccionParam(call); }}});
    for (const Box& box : kBoxes) {
        ObjectOf(box.control, L"TxtFields", box.index);
    }
    m_glyph = Bar().Glyph(base::kFiltrar);
    for (const Search& search : kSearches) {
        SendMessageW(Control(search.button), BM_SETIMAGE, IMAGE_ICON,
                     reinterpret_cast<LPARAM>(m_glyph.get()));
        SetTip(search.button, L"Buscar en la lista", kLookUp);
    }
    for (const Person& person : kPersons) {
        Of(person).watch = win::EditWatch::Start(Control(person.code), {[](wchar_t&) {},
                                                                        [this, &person] {
                                                                            Tried([&] { FillName(person); });
                                                                            return true;
                                                                        },
                                                                        {}});
    }
    DateTime_SetFormat(Control(IDC_DTPICHORA), L"HH':'mm");
    SYSTEMTIME now{};
    GetLocalTime(&now);
    now.wSecond = now.wMilliseconds = 0;
    SetTime(now);
    SetTip(IDC_DTPICHORA, L"Re Pág y Av Pág: un cuarto de hora más o menos");
    const HWND calendar = Control(IDC_MTHVFECHA);
    MonthCal_SetFirstDayOfWeek(calendar, 0); // Monday
    wchar_t firstWeek[2] = L"";
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_IFIRSTWEEKOFYEAR, firstWeek, ARRAYSIZE(firstWeek));
    if (*firstWeek != L'2') { // the system counts weeks another way: one number, the note's, not two
        SetWindowLongW(calendar, GWL_STYLE, GetWindowLongW(calendar, GWL_STYLE) & ~MCS_WEEKNUMBERS);
    }
    RECT least{};
    MonthCal_GetMinReqRect(calendar, &least);
    SetWindowPos(calendar, nullptr, 0, 0, least.right, least.bottom, SWP_NOMOVE | SWP_NOZORDER);
}

void FrmCita::OnUnload() noexcept {
    m_known = {};
    m_clsMeEvents.reset();
    m_objClsEvents.Reset();
    m_myClase.Reset();
    m_glyph.reset();
}

// Day and hour.

void FrmCita::SetDay(DATE date) {
    SYSTEMTIME day{};
    if (!VariantTimeToSystemTime(date, &day) || !MonthCal_SetCurSel(Control(IDC_MTHVFECHA), &day)) {
        throw com::Error(E_INVALIDARG, L"La fecha de la cita está fuera del calendario.");
    }
    ShowDay();
}

base::Day FrmCita::Day() const {
    SYSTEMTIME day{};
    MonthCal_GetCurSel(Control(IDC_MTHVFECHA), &day);
    return win::DayOf(day);
}

void FrmCita::ShowDay() { SetControlText(IDC_LBLDIA, base::DescribeDay(Day())); }

int FrmCita::Minute() const {
    constexpr int kMinutesPerHour = 60;
    win::TakeTyped(Control(IDC_DTPICHORA));
    SYSTEMTIME time{};
    DateTime_GetSystemtime(Control(IDC_DTPICHORA), &time);
    return time.wHour * kMinutesPerHour + time.wMinute;
}

void FrmCita::SetTime(const SYSTEMTIME& time) {
    DateTime_SetSystemtime(Control(IDC_DTPICHORA), GDT_VALID, &time);
}

void FrmCita::StepHour(int direction) {
    constexpr int kMinutesPerHour = 60;
    const int minute = base::StepQuarter(Minute(), direction);
    SYSTEMTIME time = win::SystemTimeOf(win::Today());
    time.wHour = static_cast<WORD>(minute / kMinutesPerHour);
    time.wMinute = static_cast<WORD>(minute % kMinutesPerHour);
    SetTime(time);
}

// Ways out.

void FrmCita::Aceptar() {
    for (const Person& person : kPersons) {
        FillName(person); // of a code that was typed last
        CheckStands();
    }
    environment::Appointment cita{Day(), Minute(), {}};
    for (const Box& box : kBoxes) {
        cita.texts.*box.text = ControlText(box.control);
    }
    cita.texts = base::WithDefaults(std::move(cita.texts));
    win::MousePointer::Hourglass();
    environment::Environment::NewAppointments()->Save(cita);
    win::MousePointer::Default();
    if (IsLoaded()) {
        Salir();
    }
}

void FrmCita::Salir() {
    // The host hears of every way out. One that fails then must not keep the user here, who would save a
    // second time; and it may ask for the next appointment at once.
    Deliver([&] {
        win::MousePointer::Default();
        contract::Sink sink = m_objClsEvents; // it may close its window meanwhile, and the form with it
        Trapped([&] { sink.AceptarBuscar(); });
    });
}

// Look-ups.

FrmCita::Known& FrmCita::Of(const Person& person) {
    return m_known[static_cast<size_t>(&person - kPersons.data())];
}

void FrmCita::MoveFocus(int control) {
    if (IsLoaded()) {
        SendMessageW(Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(control)), TRUE);
    }
}

bool FrmCita::FillName(const Person& person) {
    Known& known = Of(person);
    const std::wstring code = ControlText(person.code);
    if (code == known.code) {
        return known.name.has_value();
    }
    const std::wstring before = known.name.value_or(L"");
    known.code = code;
    known.name.reset();
    const bool asks = !code.empty() && environment::Environment::OffersDataClasses();
    const std::optional<std::wstring> name = asks ? frame::NameOf(person.lookup, code) : std::nullopt;
    if (!IsLoaded()) {
        return false;
    }
    known.name = name;
    if (name || ControlText(person.name) == before) { // a name that the user typed stays
        SetControlText(person.name, name.value_or(L""));
    }
    SetControlText(IDC_LBLAVISO, asks && !name ? person.unknown + (L"«" + code + L"».") : L"");
    return name.has_value();
}

void FrmCita::LeerCodigo(int box) {
    const Search* const search = Find(kSearches, &Search::box, box);
    if (FillName(*search->person) || !environment::Environment::OffersDataClasses()) {
        MoveFocus(search->next);
    } else if (IsLoaded()) {
        LookUp(*search);
    }
}

const FrmCita::Search* FrmCita::SearchAt(int control) {
    const Search* const search = Find(kSearches, &Search::box, control);
    return search ? search : Find(kSearches, &Search::button, control);
}

void FrmCita::Buscar(int control) { LookUp(*SearchAt(control)); }

void FrmCita::LookUp(const Search& search) {
    const Box& box = *Find(kBoxes, &Box::control, search.box);
    m_answered = false;
    frame::OpenLookup(search.lookup, m_clsMeEvents->Sink(),
                      ObjectOf(box.control, L"TxtFields", box.index).Get(), box.index);
    if (!IsLoaded()) {
        return;
    }
    if (!m_answered) {
        MoveFocus(search.box);
        return;
    }
    if (search.person) {
        FillName(*search.person);
        CheckStands();
    }
    // The panel gave the focus back to the box as it closed.
    MoveFocus(search.next);
}

void FrmCita::clsMeEvents_AceptaSeleccion(com::Invocation& call) { Answered(call, call[2].ToText(), {}); }

void FrmCita::clsMeEvents_AceptaSeleccionParam(com::Invocation& call) {
    // What was looked for, the code, the name.
    Answered(call, call[3].ToText(), call[4].ToText());
}

void FrmCita::Answered(com::Invocation& call, const std::wstring& code,
                       const std::optional<std::wstring>& name) {
    com::LateObject control(call[1].ToObject().Get(), L"ctl");
    const Box* const box = Find(kBoxes, &Box::index, control.Call(L"Index").ToShort());
    const Search* const search = box ? Find(kSearches, &Search::box, box->control) : nullptr;
    CheckStands();
    if (!search) {
        return;
    }
    m_answered = true;
    if (!search->person) {
        SetControlText(search->box, code);
        return;
    }
    SetControlText(search->person->code, code);
    if (name) {
        Known& known = Of(*search->person);
        known.code = code;
        known.name = name;
        SetControlText(search->person->name, *name);
        SetControlText(IDC_LBLAVISO, L"");
    }
}

// Keys and notifications.

void FrmCita::NewLine() {
    SendMessageW(Control(IDC_TXTCITA14), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"\r\n"));
}

bool FrmCita::Offers(std::wstring_view command, int control) const {
    return command == kLookUp       ? SearchAt(control) != nullptr
           : command == kLeerCodigo ? GetWindowTextLengthW(Control(control)) > 0
                                    : true;
}

bool FrmCita::OnNotify(NMHDR& header, LRESULT& /*answer*/) {
    if (header.idFrom == IDC_MTHVFECHA && (header.code == MCN_SELCHANGE || header.code == MCN_SELECT)) {
        ShowDay();
    }
    return false;
}

} // namespace tamvelo::dates
