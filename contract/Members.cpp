#include "contract/Members.h"

namespace tamvelo::contract {

namespace {

constexpr Operation kOperations[] = {
    {L"ShowSelecDate", L"frmSeleccionFecha"},
    {L"ShowBuscar", L"frmBuscar"},
    {L"ShowColums", L"frmColumnas"},
    {L"ShowSelec", L"frmSeleccion"},
    {L"ShowSelecNoVerif", L"frmSeleccion"},
    {L"ShowSelecVerif", L"frmSeleccion"},
    {L"ShowSelecControlVerif", L"frmSeleccion"},
    {L"ShowSelecTrueFalse", L"frmSeleccionTrueFalse"},
    {L"ShowSelecAdd", L"frmSelecAdd"},
    {L"ShowRegistros", L"frmRegistros"},
    {L"ShowSelecDirecta", L"frmSeleccion"},
    {L"ShowSelecInDirecta", L"frmSeleccion"},
    {L"ShowOrder", L"frmOrden"},
    {L"ShowRpt", L"frmRpts"},
    {L"ShowSql", L"frmsql"},
    {L"ShowEtiq", L"frmSelecEti"},
    {L"PrintEtiq", L"frmSelecEti"},
    {L"ShowRptCond", L"frmRptsCond"},
    {L"ShowRptMailCond", L"frmRptsMailCond"},
    {L"ShowRptBorrador", L"frmRptsMailCond"},
    {L"ShowRptListas", L"frmRptsListas"},
    {L"ShowRptInfCond", L"frmRptsInfCond"},
    {L"ShowRptCondHr", L"frmRptsCondHr"},
    {L"ShowRptFchAuto", L"frmRptsFchAuto"},
    {L"ShowRptFchAutoInf", L"frmRptsFchAutoInf"},
    {L"ShowRptInfOrdenes", L"frmRptsInfOrdenes"},
    {L"ShowRptFchCliDirec", L"frmRptsFchCliDirec"},
    {L"ShowRptsInfFch", L"frmRptsInfFch"},
    {L"ShowRptNumAut", L"frmRptNumAut"},
    {L"PrintRptNumAut", L"frmRptNumAut"},
    {L"ShowSeleccionar", L"frmSelecVenta"},
    {L"ShowSelecLab", L"frmSelecLab"},
    {L"ShowNuevaCita", L"frmCita"},
    {L"ShowSelecMinim", L"frmSelecMinim"},
    {L"ShowSeleccionarComp", L"frmSeleccionar"},
    {L"ShowSeleccionarRecibo", L"frmSelecRecibo"},
};

/// From the first of the two to the last.
constexpr OperationSet Range(std::size_t first, std::size_t last) { return Bit(last + 1) - Bit(first); }

constexpr OperationSet kDate = Bit(0), kSearch = Bit(1), kColumns = Bit(2), kSelec = Bit(3),
                       kSelecNoVerif = Bit(4), kVerify = Range(5, 6), kCheckList = Bit(7), kAdd = Bit(8),
                       kBrowser = Bit(9), kDirect = Range(10, 11), kOrder = Bit(12), kRpt = Bit(13),
                       kSql = Bit(14), kLabels = Range(15, 16), kCond = Bit(17), kMail = Range(18, 19),
                       kLists = Bit(20), kInfCond = Bit(21), kHours = Bit(22), kFchAuto = Bit(23),
                       kFchAutoInf = Bit(24), kWorkOrders = Bit(25), kAddresses = Bit(26), kInfFch = Bit(27),
                       kNumbered = Range(28, 29), kAppointment = Bit(32);
constexpr OperationSet kAll = Range(0, 35);
constexpr OperationSet kReports = Range(13, 29);
constexpr OperationSet kCriteria = Range(30, 31) | Range(33, 35);
constexpr OperationSet kPanels = kSelec | kSelecNoVerif | kVerify | kDirect;
constexpr OperationSet kGrids = kPanels | kCheckList | kAdd | kBrowser;
constexpr OperationSet kWithStrip = kGrids & ~kVerify; // a box to search in
constexpr OperationSet kAtOnce = Bit(10);              // searches when it opens
constexpr OperationSet kRecords = kGrids | kCriteria;  // read a record set
constexpr OperationSet kTyped = kSearch | kCriteria;   // boxes that the host checks letter by letter
constexpr OperationSet kGridColumns = kSearch | kColumns | kOrder;

using enum Answers;
using enum Need;
using enum Effect;

// Those of all report dialogs begin alike.
#define REPORT(more) L"&Object, &Integer, &Integer" more
#define DATES REPORT(L", Date, Date")

constexpr Member kMembers[] = {
    {L"MyClase", L"sClassName", L"", Text, Always, Reads, kSearch | kRecords | kAppointment},
    {L"MyClase", L"Recordset", L"", Object, Optional, Reads, kRecords},
    {L"MyClase", L"RecordCount", L"", Number, Optional, Reads, kRecords},
    {L"MyClase", L"Requery", L"String", Nothing, Always, Moves, kRecords},
    {L"MyClase", L"Requery", L"", Nothing, Command, Moves, kSearch | kBrowser},
    {L"MyClase", L"FindRecord", L"String[, Integer]", Nothing, Always, Moves, kGrids & ~kSelecNoVerif},
    {L"MyClase", L"CreateFilter", L"&Object, Integer", Text, Always, Reads, kTyped},
    {L"MyClase", L"CreateFilter", L"&Object", Text, Always, Reads, kAtOnce},
    {L"MyClase", L"CreateFilter", L"&Object", Text, Command, Reads, kWithStrip & ~kAtOnce},
    {L"MyClase", L"GetFilter", L"String", Text, Always, Reads, kTyped | kAtOnce},
    {L"MyClase", L"GetFilter", L"String", Text, Command, Reads, kWithStrip & ~kAtOnce},
    {L"MyClase", L"SetFilter", L"&String, String", Nothing, Always, Writes, kTyped | kAtOnce},
    {L"MyClase", L"SetFilter", L"&String, String", Nothing, Command, Writes, kWithStrip & ~kAtOnce},
    {L"MyClase", L"AplyFilter", L"String", Nothing, Always, Writes, kTyped | (kWithStrip & ~kBrowser)},
    {L"MyClase", L"AplyFilter", L"String", Nothing, Command, Writes, kVerify | kBrowser},
    {L"MyClase", L"existenregistros", L"", Boolean, Always, Reads, kAtOnce},
    {L"MyClase", L"existenregistros", L"", Boolean, Command, Reads, kWithStrip & ~kAtOnce},
    {L"MyClase", L"MoveFirst", L"", Nothing, Command, Moves, kTyped | kGrids},
    {L"MyClase", L"MoveLast", L"", Nothing, Command, Moves, kTyped | kGrids},
    {L"MyClase", L"MoveNext", L"", Nothing, Command, Moves, kTyped | kGrids},
    {L"MyClase", L"MovePrevious", L"", Nothing, Command, Moves, kTyped | kGrids},
    {L"MyClase", L"SetOrder", L"&Integer, String, String", Nothing, Command, Writes, kGrids},
    {L"MyClase", L"ValidaKey", L"&Object, &Integer", Boolean, Always, Reads, kTyped},
    {L"MyClase", L"ValidaValue", L"&Object", Boolean, Always, Reads, kTyped},
    {L"MyClase", L"ValidaValue", L"&Object", Boolean, Optional, Reads, kAdd},
    {L"MyClase", L"ValidaDefinedSize", L"&Object", Number, Always, Reads, kTyped},
    {L"MyClase", L"GetConnection", L"", Value, Command, Reads, kCheckList},
    {L"MyClase", L"Aceptar_todos", L"&Variant", Nothing, Command, Writes, kCheckList},
    {L"MyClase", L"Denegar_todos", L"&Variant", Nothing, Command, Writes, kCheckList},
    {L"MyClase", L"NuevoCodigo_Fam", L"String", Text, Command, Writes, kAdd},
    {L"MyClase", L"InsertarArticulo", L"Array", Nothing, Command, Writes, kAdd},

    {L"objClsEvents", L"AceptarBuscar", L"", Nothing, Always, Writes, kTyped | kAppointment},
    {L"objClsEvents", L"AceptarSeleccion", L"&Integer|Integer, &Object, Value", Nothing, Always, Writes,
     kVerify},
    {L"objClsEvents", L"AceptarSeleccion", L"&Integer|Integer, &Object, Value", Nothing, EitherOf, Writes,
     kGrids & ~kVerify},
    {L"objClsEvents", L"AceptarSeleccionParam", L"&Integer|Integer, &Object, String, String, String", Nothing,
     EitherOf, Writes, kGrids & ~kVerify},
    {L"objClsEvents", L"clsEvents_AceptaSeleccion", L"&Integer, &Object, String, String, String", Nothing,
     Optional, Writes, kCheckList},
    {L"objClsEvents", L"AceptarNuevo", L"&Integer, &Object", Nothing, Optional, Writes, kBrowser},
    {L"objClsEvents", L"AceptarModificar", L"&Integer, &Object", Nothing, Optional, Writes, kBrowser},
    {L"objClsEvents", L"AceptarEliminar", L"&Integer, &Object", Nothing, Optional, Writes, kBrowser},
    {L"objClsEvents", L"ActualizaColumnas", L"&Object", Nothing, Always, Writes, kColumns},
    {L"objClsEvents", L"ActualizaOrden", L"&Integer, &Integer", Nothing, Always, Writes, kOrder},
    {L"objClsEvents", L"AceptarFechaEntre", L"Date, Date", Nothing, Always, Writes, kDate},
    {L"objClsEvents", L"AceptarReports", L"&Object, &Integer|Integer, &Integer|Integer", Nothing, Always,
     Writes, kRpt | kSql},
    {L"objClsEvents", L"AceptarReportsParam", DATES L", String, &Integer, &Integer, String, &String", Nothing,
     Always, Writes, kCond},
    {L"objClsEvents", L"AceptarReportsParamMail", DATES L", String, &Integer, &Integer, String, &String",
     Nothing, Always, Writes, kMail},
    {L"objClsEvents", L"AceptarReportsInformesParam", DATES L", String, &Integer, &Integer, String", Nothing,
     Always, Writes, kInfCond},
    {L"objClsEvents", L"AceptarReportsParamHr", DATES L", String, Boolean, Boolean, Date, Date", Nothing,
     Always, Writes, kHours},
    {L"objClsEvents", L"AceptarReportsFchAuto", DATES L", Integer", Nothing, Always, Writes, kFchAuto},
    // For the screen of the stock ledger only, in place of the one above.
    {L"objClsEvents", L"AceptarInformesFchAuto", DATES L", Integer", Nothing, Optional, Writes, kFchAuto},
    {L"objClsEvents", L"AceptarInformesFchAuto", DATES L", Integer", Nothing, Always, Writes, kFchAutoInf},
    {L"objClsEvents", L"AceptarInformesFchAuto", DATES, Nothing, Always, Writes, kAddresses},
    {L"objClsEvents", L"AceptarInformesFch", DATES L", String", Nothing, Always, Writes, kInfFch},
    {L"objClsEvents", L"AceptarInformesFchAutoTipoTime",
     DATES L", Integer, String, Date, Date, Integer, Integer, String", Nothing, Always, Writes, kWorkOrders},
    {L"objClsEvents", L"AceptarDocNumAut", REPORT(L", String|Empty, String|Empty, Boolean"), Nothing, Always,
     Writes, kNumbered},
    {L"objClsEvents", L"AceptarListasParam", REPORT(L", String"), Nothing, Always, Writes, kLists},
    {L"objClsEvents", L"AceptarEtiqueta", L"&Object", Nothing, Always, Writes, kLabels},

    {L"ctl", L"Text", L"", Text, Always, Reads, kGrids & ~kSelecNoVerif},
    {L"ctl", L"Text", L"", Text, EitherOf, Reads, kSelecNoVerif},
    {L"ctl", L"Caption", L"", Text, EitherOf, Reads, kSelecNoVerif},
    {L"ctl", L"Value", L"", Value, EitherOf, Reads, kSelecNoVerif},
    {L"ctl", L"hWnd", L"", Number, EitherOf, Reads, kSelecNoVerif},

    {L"Columns", L"Count", L"", Number, Always, Reads, kGridColumns},
    {L"Columns", L"Item", L"Integer", Object, Always, Reads, kGridColumns},
    {L"Columns", L"Col", L"", Number, Optional, Reads, kSearch},
    {L"Column", L"Caption", L"", Text, Always, Reads, kGridColumns},
    {L"Column", L"DataField", L"", Text, Always, Reads, kSearch},
    {L"Column", L"Visible", L"", Boolean, Always, Reads, kColumns},
    {L"Column", L"Visible=", L"Boolean", Nothing, Always, Writes, kColumns},

    {L"Recordset", L"RecordCount", L"", Number, Always, Reads, kRecords},
    {L"Recordset", L"BOF", L"", Boolean, Always, Reads, kRecords},
    {L"Recordset", L"EOF", L"", Boolean, Always, Reads, kRecords},
    {L"Recordset", L"MoveFirst", L"", Nothing, Always, Moves, kRecords},
    {L"Recordset", L"MoveLast", L"", Nothing, Optional, Moves, kRecords},
    {L"Recordset", L"MoveNext", L"", Nothing, Always, Moves, kRecords},
    {L"Recordset", L"MovePrevious", L"", Nothing, Optional, Moves, kRecords},
    {L"Recordset", L"Fields", L"", Object, Always, Reads, kRecords},
    {L"Recordset", L"State", L"", Number, Optional, Reads, kRecords},
    {L"Recordset", L"EditMode", L"", Number, Optional, Reads, kRecords},
    {L"Recordset", L"Filter", L"", Value, Optional, Reads, kRecords},
    {L"Recordset", L"Filter=", L"Value", Nothing, Optional, Writes, kRecords},
    {L"Recordset", L"Sort", L"", Value, Optional, Reads, kRecords},
    {L"Recordset", L"Sort=", L"String", Nothing, Optional, Writes, kRecords},
    {L"Recordset", L"Bookmark", L"", Value, EitherOf, Reads, kRecords},
    {L"Recordset", L"Bookmark=", L"Value", Nothing, Optional, Moves, kRecords},
    {L"Recordset", L"AbsolutePosition", L"", Number, EitherOf, Reads, kRecords},
    {L"Recordset", L"AbsolutePosition=", L"Long", Nothing, Optional, Moves, kRecords},
    {L"Recordset", L"Clone", L"[Integer]", Object, Optional, Reads, kRecords},
    {L"Recordset", L"GetRows", L"Long", Value, Optional, Moves, kRecords},
    {L"Recordset", L"DataVersion", L"", Number, Optional, Reads, kRecords},
    {L"Recordset", L"Update", L"", Nothing, Optional, Writes, kCheckList},
    {L"Recordset", L"CancelUpdate", L"", Nothing, Optional, Writes, kCheckList},
    {L"Fields", L"Count", L"", Number, Always, Reads, kRecords},
    {L"Fields", L"Item", L"Long", Object, Always, Reads, kRecords},
    {L"Field", L"Name", L"", Text, Always, Reads, kRecords},
    {L"Field", L"Value", L"", Value, Always, Reads, kRecords},
    {L"Field", L"Value=", L"Value", Nothing, Command, Writes, kCheckList},
    {L"Field", L"Type", L"", Number, Optional, Reads, kRecords},
    {L"Field", L"DefinedSize", L"", Number, Optional, Reads, kRecords},
    {L"Field", L"Caption", L"", Text, Optional, Reads, kRecords},
    {L"Field", L"Relacion", L"", Text, Optional, Reads, kAdd},
    {L"Field", L"Required", L"", Boolean, Optional, Reads, kAdd},

    {L"cReports", L"_NewEnum", L"", Value, EitherOf, Reads, kReports},
    {L"cReports", L"Count", L"", Number, EitherOf, Reads, kReports},
    {L"cReports", L"Item", L"Long", Value, EitherOf, Reads, kReports},
    {L"informe", L"Titulo", L"", Text, Optional, Reads, kReports},

    // What the environment may replace.
    {L"Configuracion", L"RestaurarPosicion", L"String, Object", Nothing, Optional, Writes, kAll},
    {L"Configuracion", L"GuardarPosicion", L"String, Object", Nothing, Optional, Writes, kAll},
    {L"Configuracion", L"LeerValor", L"String, String, &String", Nothing, Always, Reads,
     kSearch | kPanels | kSql | kWorkOrders},
    {L"Configuracion", L"GuardarValor", L"String, String, String", Nothing, Command, Writes, kAll},
    {L"Configuracion", L"CargarLista", L"String, Object, Object[, Object, Object, Boolean, Boolean]", Nothing,
     Always, Writes, kReports & ~kLabels},
    {L"Configuracion", L"CargarEtiquetas", L"String, Object, Object", Nothing, Always, Writes, kLabels},
    {L"Configuracion", L"GuardarLista", L"String, Object[, Object, Object]", Nothing, Command, Writes,
     kReports},
    {L"Archivos", L"RutaBarra", L"String", Text, Optional, Reads, kAll},
    {L"Archivos", L"Existe", L"String", Boolean, Optional, Reads, kAll},
    {L"Archivos", L"CarpetaCuadriculas", L"String, &Boolean", Text, Optional, Reads, kAll},
    {L"Errores", L"Mostrar", L"Long, String, String", Nothing, Optional, Writes, kAll},
    {L"Clases", L"CrearClase", L"String", Object, Command, Reads, kCriteria | kAdd | kReports | kAppointment},
    {L"Clases", L"ClaseRelacionada", L"String, String", Text, Optional, Reads, kCriteria},
    {L"Citas", L"GuardarCita", L"Date, Date, String, String, String, String, String, String, String, Object",
     Nothing, Command, Writes, kAppointment},
    {L"Foco", L"Recibir", L"Object", Nothing, Optional, Writes, kAll},
};

#undef DATES
#undef REPORT

} // namespace

std::span<const Operation> Operations() { return kOperations; }

std::span<const Member> Members() { return kMembers; }

} // namespace tamvelo::contract
