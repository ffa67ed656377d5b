#include "demo/app/Tour.h"

#include <span>

#include "base/Text.h"
#include "com/Error.h"
#include "demo/app/CommandLine.h"
#include "demo/app/Console.h"
#include "demo/app/Describe.h"
#include "demo/app/Hands.h"
#include "demo/app/Picture.h"
#include "demo/app/Structure.h"
#include "demo/app/Visitor.h"

namespace tamvelo::demo {

namespace {

// To the column of the names, to the search box, and search.
constexpr Stroke kSearchScrew[] = {{Stroke::Key, L"", VK_RIGHT},
                                   {Stroke::Access, L"u"},
                                   {Stroke::Text, L"tornillo"},
                                   {Stroke::Access, L"b"}};
constexpr Stroke kModify[] = {{Stroke::Key, L"", VK_DOWN}, {Stroke::Key, L"", VK_RETURN}};
constexpr Stroke kTwoDown[] = {{Stroke::Key, L"", VK_DOWN}, {Stroke::Key, L"", VK_DOWN}};
// From the box over the button to the options, and back to the boxes of the next one.
constexpr Stroke kSearchBetween[] = {{Stroke::Key, L"", VK_TAB},   {Stroke::Key, L"", VK_TAB},
                                     {Stroke::Key, L"", VK_RIGHT}, {Stroke::Access, L"d"},
                                     {Stroke::Text, L"03000010"},  {Stroke::Access, L"h"},
                                     {Stroke::Text, L"03000050"},  {Stroke::Key, L"", VK_RETURN}};
constexpr Stroke kSearchBox[] = {{Stroke::Access, L"s"},       {Stroke::Key, L"", VK_DOWN},
                                 {Stroke::Key, L"", VK_DOWN},  {Stroke::Key, L"", VK_DOWN},
                                 {Stroke::Access, L"v"},       {Stroke::Text, L"125"},
                                 {Stroke::Key, L"", VK_RETURN}};

constexpr Stroke kUntickThird[] = {
    {Stroke::Key, L"", VK_DOWN}, {Stroke::Key, L"", VK_DOWN}, {Stroke::Key, L"", VK_SPACE}};
// There and back: what is marked stays in the database, and the next tour is to look the same.
constexpr Stroke kTickAndUntick[] = {
    {Stroke::Key, L"", VK_DOWN}, {Stroke::Key, L"", VK_SPACE}, {Stroke::Key, L"", VK_SPACE}};
constexpr Stroke kSearchAndShowLinks[] = {{Stroke::Key, L"", VK_RIGHT}, {Stroke::Access, L"u"},
                                          {Stroke::Text, L"ar"},        {Stroke::Access, L"b"},
                                          {Stroke::Key, L"", VK_TAB},   {Stroke::Key, L"", VK_TAB},
                                          {Stroke::Key, L"", VK_TAB}};
// Over marks, dates, period, output, copies, printer and automatic printing to the button.
constexpr Stroke kTab{Stroke::Key, L"", VK_TAB};
constexpr Stroke kFilterTypes[] = {{Stroke::Box, L"Informes:"}, kTab, kTab, kTab, kTab, kTab, kTab,
                                   {Stroke::Key, L"", VK_SPACE}};
constexpr Stroke kFindPrice[] = {{Stroke::Access, L"b"}, {Stroke::Text, L"pre"}};

// Two reports of what the clinics have not been invoiced yet, as a preview.
constexpr Stroke kPreviewTwo[] = {
    {Stroke::Box, L"Informes:"},      {Stroke::Key, L"", VK_HOME}, {Stroke::Key, L"", VK_DOWN},
    {Stroke::Key, L"", VK_SPACE},     {Stroke::Key, L"", VK_DOWN}, {Stroke::Key, L"", VK_SPACE},
    {Stroke::Box, L"Tipo / Cliente"}, {Stroke::Text, L"clinica"},  {Stroke::Box, L"Facturado :"},
    {Stroke::Key, L"", VK_UP},        {Stroke::Box, L"Salida:"},   {Stroke::Key, L"", VK_DOWN},
    {Stroke::Box, L"Informes:"}};
constexpr Stroke kTickFirst[] = {
    {Stroke::Box, L"Etiquetas:"}, {Stroke::Key, L"", VK_HOME}, {Stroke::Key, L"", VK_SPACE}};
constexpr Stroke kTickEleventh[] = {{Stroke::Box, L"Informes:"}, {Stroke::Key, L"", VK_END},
                                    {Stroke::Key, L"", VK_UP},   {Stroke::Key, L"", VK_UP},
                                    {Stroke::Key, L"", VK_UP},   {Stroke::Key, L"", VK_UP},
                                    {Stroke::Key, L"", VK_SPACE}};
constexpr Stroke kMailDraft[] = {{Stroke::Box, L"Informes:"},  {Stroke::Key, L"", VK_HOME},
                                 {Stroke::Key, L"", VK_SPACE}, {Stroke::Box, L"Salida:"},
                                 {Stroke::Key, L"", VK_END},   {Stroke::Box, L"Informes:"}};
constexpr Stroke kChooseCustomer[] = {{Stroke::Box, L"Cliente :"}, {Stroke::Key, L"", VK_F4}};

constexpr Stroke kRecordView[] = {{Stroke::Key, L"", VK_F5}, {Stroke::Key, L"", VK_DOWN}};

constexpr Stroke kSearchNow{Stroke::Key, L"", VK_F5};
constexpr Stroke kCriteriaOfSales[] = {kTab, kTab, kTab, kTab, {Stroke::Text, L"000025"}, kSearchNow};
constexpr Stroke kCriteriaOfPurchases[] = {kTab, {Stroke::Text, L"*tornillo*"}, kSearchNow};
constexpr Stroke kCriteriaOfMinimum[] = {
    kTab, kTab, kTab, kTab, kTab, {Stroke::Text, L"10"}, kSearchNow, {Stroke::Access, L"h"}, kSearchNow};
// Past what fits: the rows scroll to the list of "Urgente".
constexpr Stroke kCriteriaOfLaboratory[] = {{Stroke::Text, L"1001"},
                                            kTab,
                                            kTab,
                                            kTab,
                                            kTab,
                                            kTab,
                                            kTab,
                                            {Stroke::Text, L"1/1/26"},
                                            kTab,
                                            kTab,
                                            kTab,
                                            {Stroke::Key, L"", VK_HOME}};
constexpr Stroke kCriteriaOfReceipts[] = {
    kTab, {Stroke::Text, L"*clinica*"}, kTab, {Stroke::Text, L"sevilla"}, kSearchNow};
constexpr Stroke kLookUpCustomer[] = {kTab, kTab, kTab, kTab, {Stroke::Key, L"", VK_F4}};
constexpr Stroke kAppointment[] = {
    {Stroke::Box, L"Cliente :"},   {Stroke::Text, L"000025"},
    {Stroke::Key, L"", VK_RETURN}, {Stroke::Text, L"Trae el modelo antiguo; avisar a la clínica."},
    {Stroke::Box, L"Empleado :"},  {Stroke::Text, L"003"},
    {Stroke::Key, L"", VK_RETURN}, {Stroke::Text, L"2"},
    {Stroke::Key, L"", VK_TAB},    {Stroke::Text, L"Prueba"},
    {Stroke::Box, L"Hora :"},      {Stroke::Key, L"", VK_PRIOR}};
constexpr Stroke kChooseEmployee[] = {{Stroke::Box, L"Empleado :"}, {Stroke::Key, L"", VK_F4}};
// A new article: the family proposes the code, the rest is typed, the tax is chosen from its list.
constexpr Stroke kNewArticle[] = {
    {Stroke::Access, L"n"},          {Stroke::Box, L"Familia *"},
    {Stroke::Text, L"03"},           {Stroke::Key, L"", VK_TAB},
    {Stroke::Box, L"Descripción *"}, {Stroke::Text, L"Corona de circonio monolítica"},
    {Stroke::Box, L"Precio"},        {Stroke::Text, L"184,50"},
    {Stroke::Box, L"Impuesto"},      {Stroke::Key, L"", VK_DOWN},
    {Stroke::Box, L"Alta"},          {Stroke::Text, L"21/11/2026"}};

/// One dialog of the tour.
struct Stop {
    const wchar_t* name;
    const wchar_t* operation; // null: the main window itself
    const wchar_t* className;
    const wchar_t* value;            // typed into the field before the dialog opens; null: what is there
    std::span<const Stroke> strokes; // before the picture
    UINT leave;                      // the key that closes the dialog afterwards
    int previewPage = 0;             // the picture is of that page of the preview that comes up then
};

constexpr Stop kStops[] = {
    {L"seleccion-articulos", L"ShowSelec", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"seleccion-busqueda", L"ShowSelec", L"articulos", nullptr, kSearchScrew, VK_RETURN},
    {L"seleccion-clientes", L"ShowSelec", L"clientes", L"000025", kTwoDown, VK_RETURN},
    {L"seleccion-ordenes", L"ShowSelec", L"Ordenes", L"100200", {}, VK_RETURN},
    {L"seleccion-empleados", L"ShowSelec", L"empleados", L"elena", {}, VK_RETURN},
    {L"registro", L"ShowSelec", L"clientes", L"000025", kRecordView, VK_ESCAPE},
    {L"verificacion", L"ShowSelecVerif", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"control-verificacion", L"ShowSelecControlVerif", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"seleccion-directa", L"ShowSelecDirecta", L"proveedores", L"dental", {}, VK_RETURN},
    {L"seleccion-indirecta", L"ShowSelecInDirecta", L"familias", L"ortodoncia", {}, VK_RETURN},
    {L"casillas", L"ShowSelecTrueFalse", L"fases", L"", kTickAndUntick, VK_ESCAPE},
    {L"casillas-busqueda", L"ShowSelecTrueFalse", L"empleados", L"", kSearchAndShowLinks, VK_ESCAPE},
    {L"columnas", L"ShowColums", L"clientes", nullptr, kUntickThird, VK_RETURN},
    {L"orden", L"ShowOrder", L"articulos", nullptr, kFindPrice, VK_RETURN},
    {L"fechas", L"ShowSelecDate", L"articulos", nullptr, {}, VK_RETURN},
    {L"registros", L"ShowRegistros", L"clientes", L"000025", kModify, VK_F4},
    {L"registros-busqueda", L"ShowRegistros", L"articulos", nullptr, kSearchScrew, VK_ESCAPE},
    {L"alta", L"ShowSelecAdd", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"alta-registro", L"ShowSelecAdd", L"articulos", nullptr, kNewArticle, VK_RETURN},
    {L"buscar-entre", L"ShowBuscar", L"articulos", L"", kSearchBetween, VK_ESCAPE},
    {L"buscar-ordenes", L"ShowBuscar", L"Ordenes", nullptr, kSearchBox, VK_ESCAPE},
    {L"criterios-ventas", L"ShowSeleccionar", L"Ordenes", nullptr, kCriteriaOfSales, VK_RETURN},
    {L"criterios-compras", L"ShowSeleccionarComp", L"articulos", nullptr, kCriteriaOfPurchases, VK_ESCAPE},
    {L"criterios-minimos", L"ShowSelecMinim", L"articulos", nullptr, kCriteriaOfMinimum, VK_ESCAPE},
    {L"criterios-laboratorio", L"ShowSelecLab", L"Ordenes", nullptr, kCriteriaOfLaboratory, VK_RETURN},
    {L"criterios-recibos", L"ShowSeleccionarRecibo", L"clientes", nullptr, kCriteriaOfReceipts, VK_ESCAPE},
    {L"criterios-consulta", L"ShowSeleccionar", L"Ordenes", nullptr, kLookUpCustomer, VK_ESCAPE},
    {L"cita", L"ShowNuevaCita", L"clientes", nullptr, kAppointment, VK_RETURN},
    {L"cita-empleado", L"ShowNuevaCita", L"clientes", nullptr, kChooseEmployee, VK_ESCAPE},
    {L"informes", L"ShowRpt", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"informes-serie", L"ShowSql", L"articulos", nullptr, kTickEleventh, VK_ESCAPE},
    {L"etiquetas", L"ShowEtiq", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"listas", L"ShowRptListas", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"informes-condiciones", L"ShowRptCond", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"informes-resumidos", L"ShowRptInfCond", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"informes-correo", L"ShowRptMailCond", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"borradores", L"ShowRptBorrador", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"informes-horas", L"ShowRptCondHr", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"informes-fechas", L"ShowRptFchAuto", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"informes-resumidos-fechas", L"ShowRptFchAutoInf", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"informes-tipos-producto", L"ShowRptFchAutoInf", L"articulos", nullptr, kFilterTypes, VK_ESCAPE},
    {L"informes-fechas-serie", L"ShowRptsInfFch", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"informes-cliente", L"ShowRptFchCliDirec", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"informes-ordenes", L"ShowRptInfOrdenes", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"documentos-numerados", L"ShowRptNumAut", L"articulos", nullptr, {}, VK_ESCAPE},
    {L"informes-ordenes-cliente", L"ShowRptInfOrdenes", L"Ordenes", nullptr, kChooseCustomer, VK_ESCAPE},
    {L"vista-previa-condiciones", L"ShowRptCond", L"Ordenes", nullptr, kPreviewTwo, VK_RETURN, 1},
    {L"vista-previa-borrador", L"ShowRptBorrador", L"Ordenes", nullptr, kMailDraft, VK_RETURN, 2},
    {L"vista-previa-etiquetas", L"ShowEtiq", L"clientes", nullptr, kTickFirst, VK_RETURN, 1},
    {L"pedidos", nullptr, nullptr, nullptr, {}, 0},
};

/// A picture, and beside it in words what it shows: those can be compared, where pictures differ with the
/// theme.
void Keep(HWND window, const std::wstring& path) {
    SavePicture(window, path + L".png");
    SaveStructure(window, path + L".txt");
}

/// Turns to the page, as the user does, and closes the window afterwards.
std::wstring PicturePreview(HWND preview, int page, const std::wstring& picture) {
    if (preview == nullptr) {
        return L"no aparece ninguna vista previa";
    }
    for (int i = 1; i < page; ++i) {
        SendMessageW(preview, WM_KEYDOWN, VK_NEXT, 1);
    }
    Keep(preview, picture);
    SendMessageW(preview, WM_KEYDOWN, VK_ESCAPE, 1);
    return IsWindow(preview) ? L"la vista previa no se cierra" : L"";
}

/// Makes one stop; answers what went wrong, empty for nothing.
std::wstring Visit(MainWindow& window, const Stop& stop, const std::wstring& picture) {
    try {
        if (stop.operation == nullptr) {
            Keep(window.Handle(), picture);
            return {};
        }
        Visitor visitor(window.Handle(), stop.name, stop.strokes,
                        stop.leave); // a message may come up at once
        visitor.look = [&](HWND dialog) {
            if (stop.previewPage == 0) {
                Keep(dialog, picture);
            }
        };
        const std::size_t field = window.Fields().For(stop.className);
        if (stop.value != nullptr) {
            window.Fields().Type(field, stop.value);
        }
        window.Perform(*FindOperation(stop.operation), field);
        if (stop.previewPage == 0) {
            UntilAlone(window.Handle());
        }
        std::wstring complaint = visitor.Complaint();
        if (stop.previewPage > 0 && complaint.empty()) {
            complaint = PicturePreview(window.Preview(), stop.previewPage, picture);
        }
        return complaint;
    } catch (...) {
        return Describe(AnyCurrentError());
    }
}

} // namespace

bool TakeTour(MainWindow& window, const std::wstring& folder, const std::wstring& only) {
    const HDC screen = GetDC(window.Handle());
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(window.Handle(), screen);
    bool good = true;
    bool any = false;
    int number = 0;
    for (const Stop& stop : kStops) {
        ++number;
        if (!IsWanted(only, stop.name)) {
            continue;
        }
        any = true;
        wchar_t name[64];
        wsprintfW(name, L"%02d-%s-%d", number, stop.name, dpi);
        const std::wstring complaint = Visit(window, stop, folder + L'\\' + name);
        good = good && complaint.empty();
        Say(complaint.empty() ? name : std::wstring(name) + L": " + complaint);
    }
    if (!any) {
        Say(L"El recorrido no tiene ninguna parada «" + only + L"».");
    }
    return good && any;
}

} // namespace tamvelo::demo
