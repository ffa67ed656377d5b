// Hosts in scripts, under the interpreter that they are written for, and a person at the keyboard: every
// operation with what the script is asked and answered.
#include <algorithm>
#include <sstream>

#include "Person.h"
#include "dates/Resources.h"
#include "frame/Resources.h"
#include "search/Resources.h"
#include "selection/Resources.h"
#include "tests/support/Operations.h"

namespace tamvelo::hosts {
namespace {

const Steps kLeave{{IDC_DATAGRID, VK_ESCAPE}};
const Steps kAccept{{IDC_DATAGRID, VK_RETURN}};
const Steps kMarkOne{{IDC_LIST1, VK_SPACE}, {IDC_LIST1, VK_RETURN}};
const Steps kThird{{IDC_LIST1, VK_DOWN}, {IDC_LIST1, VK_DOWN}, {IDC_LIST1, VK_SPACE}, {IDC_LIST1, VK_RETURN}};
const Steps kCode{
    {IDC_CRITERIA_FIELDS + 1, 0, L"a1b"}, {IDC_CRITERIA_FIELDS + 1, kSays, L"ab"}, {0, VK_RETURN}};

/// A statement of the script, and what comes of it.
struct Row {
    std::wstring statement;
    std::wstring caption; // of the dialog that opens, if one does
    std::string transcript;
    Steps steps = kMarkOne;
};

constexpr wchar_t kPanel[] = L"Selección de fichas";
constexpr wchar_t kDocuments[] = L"Selección de Documentos e informes";
constexpr char kFiltered[] =
    "ValidaValue TxtFields0 [ab]; CreateFilter TxtFields0codigo 0; CreateFilter TxtFields1nombre 0; "
    "CreateFilter TxtFields2familia 0; CreateFilter TxtFields3precio 0; "
    "CreateFilter TxtFields4Planificar 0; SetFilter 'codigo=ab' 'Filter'; AplyFilter 'codigo=ab'; "
    "Requery 'selec'; AceptarBuscar";
constexpr wchar_t kReports[] = L"Selección de Informes";

const Row kRows[] = {
    {L"ShowSelecDate p", L"Seleccionar Fechas", "", {{IDC_DTPICKER0, VK_ESCAPE}}},
    {L"ShowSelecDate p",
     L"Seleccionar Fechas",
     "AceptarFechaEntre 'Date' Double:0 'Date' Double:0",
     {{IDC_DTPICKER0, VK_RETURN}}},
    {L"ShowBuscar busca, busca, cuadro",
     L"Buscar Registros",
     "ValidaValue TxtFields0 []; ValidaValue TxtFields0 [lima]; ValidaValue TxtFields0 [pera]; "
     "CreateFilter List20nombre 0; SetFilter ',lima,pera' 'Filter'; AplyFilter ',lima,pera'; "
     "ValidaValue TxtFields0 []; AceptarBuscar",
     {{IDC_TXTFIELDS0, 0},
      {IDC_OPTBUSCAR4, kClick},
      {IDC_TXTFIELDS0, VK_RETURN, L"li7ma"},
      {IDC_TXTFIELDS0, VK_RETURN, L"pera"},
      {IDC_TXTFIELDS0, VK_RETURN},
      {IDC_TXTFIELDS0, VK_TAB},
      {IDC_CMDBUSCAR, VK_TAB}, // where Enter would search again
      {IDC_LIST2, VK_RETURN}}},
    {L"ShowColums p, cuadro", L"Columnas visibles", "Codigo True; Nombre True; Saldo True", kThird},
    {L"ShowOrder modo, p, cuadro", L"Columna de orden", "ActualizaOrden 1 7", kThird},
    {L"ShowSelec p, lista, p, columna, indice, hallar, existencias",
     kPanel,
     "Requery 'seleccion'; FindRecord 'C-2'; CreateFilter TxtFields0codigo [-3]; "
     "SetFilter '-3' 'FilterSelec'; AplyFilter '-3'; Requery 'selec'; AceptarSeleccion 0 [C-2] 'C-3'; "
     "AplyFilter ''; Queda [C-3]",
     {{IDC_DATAGRID, VK_INSERT}, {IDC_TXTFIELDS0, VK_RETURN, L"-3"}}},
    {L"ShowSelec p, lista, p, , , , True", kPanel, "Requery 'seleccion_stock'; FindRecord 'C-2'", kLeave},
    {L"ShowSelec p, busca, p, (columna) + 1, 1 + 1, Not hallar, \"False\"", kPanel,
     "Requery 'seleccion'; AceptarSeleccion 1 [C-2] 'Iban~ez'; AplyFilter ''; Queda [Iban~ez]", kAccept},
    {L"ShowSelecNoVerif p, lista, p, columna, 3, True, True", kPanel,
     "Requery 'seleccion'; AceptarSeleccion 0 [C-2] 'C-1'; AplyFilter ''; Queda [C-1]", kAccept},
    {L"ShowSelecVerif p, lista, p",
     kPanel,
     "Requery 'seleccionar'; FindRecord 'C-2'; AceptarSeleccion 0 [C-2] True",
     {{IDC_DATAGRID, VK_TAB}, {IDC_CMD1, VK_RETURN}}},
    {L"ShowSelecControlVerif p, lista, p, columna",
     kPanel,
     "Requery 'seleccionar'; FindRecord 'C-2'; AceptarSeleccion 0 [C-2] False",
     {{IDC_DATAGRID, VK_TAB}, {IDC_CMD3, VK_RETURN}}},
    {L"ShowSelecTrueFalse p, lista, p",
     L"Lista con casillas de fichas",
     "Requery 'seleccion'; FindRecord 'C-2'; Denegar_todos 'conexion'; Requery 'seleccion'; "
     "Value de C-1 True; Update; Value de C-3 True; AceptarSeleccion 0 [C-2] 'C-3'; "
     "clsEvents_AceptaSeleccion 0 [C-3] 'C-3' 'C-3' 'Mun~oz'; AplyFilter ''; Queda [C-3]",
     {{IDC_STATUS, kSays, L"Registro 2 de 3   ·   1 marcada"},
      {IDC_LBLNINGUNO, kClick},
      {IDC_LBLNINGUNO, VK_TAB},
      {IDC_TXTFIELDS0, VK_TAB},
      {IDC_DATAGRID, VK_SPACE},
      {IDC_DATAGRID, VK_DOWN},
      {IDC_DATAGRID, VK_DOWN},
      {IDC_DATAGRID, VK_SPACE},
      {IDOK, VK_RETURN},
      {IDC_DATAGRID, VK_RETURN}}},
    {L"ShowSelecAdd p, lista, p",
     kPanel,
     "Requery 'seleccion'; FindRecord 'C-2'; InsertarArticulo '7-001' 'Puente' '7' Empty: Empty:; "
     "AceptarSeleccion 0 [C-2] '7-001'; AplyFilter ''; Queda [7-001]",
     {{IDC_DATAGRID, 0},
      {IDC_CMDNUEVO, kClick},
      {IDC_RECORD_BOXES + 0 * 4 + 1, VK_TAB, L"7"}, // the family
      {IDC_RECORD_BOXES + 1 * 4 + 1, VK_TAB},       // its code
      {IDC_RECORD_BOXES + 2 * 4 + 1, VK_RETURN, L"Puente"}}},
    {L"ShowRegistros p, busca, p, 1, 0, True",
     L"Registros de fichas",
     "Requery 'seleccion'; FindRecord 'C-2' 1; AceptarEliminar de C-2 0 [C-2]; "
     "AceptarSeleccion 0 [C-2] 'C-3'; Queda [C-3]",
     {{IDC_DATAGRID, VK_DELETE}, {IDNO, VK_LEFT}, {IDYES, VK_RETURN}, {IDC_DATAGRID, VK_F4}}},
    {L"ShowSelecDirecta p, lista, p, columna, indice, hallar, modal", kPanel,
     "Requery 'seleccion'; FindRecord 'C-2'; CreateFilter TxtFields0codigo [*C-2]; "
     "SetFilter 'C-2' 'FilterSelec'; AplyFilter 'C-2'; Requery 'selec'; AceptarSeleccion 0 [C-2] 'C-2'; "
     "AplyFilter ''",
     kAccept},
    {L"ShowSelecInDirecta p, lista, p, columna, texto, hallar, modal",
     kPanel,
     "Requery 'seleccion'; FindRecord 'C-2'; AceptarSeleccion 0 [C-2] 'C-2'; AplyFilter ''",
     {{IDC_TXTFIELDS0, kSays, L"A"}, {IDC_DATAGRID, VK_RETURN}}},
    {L"ShowSelecInDirecta p, lista, p, , \"B\", , 1", kPanel, "Requery 'seleccion'; FindRecord 'C-2'",
     kLeave},
    {L"ShowRpt clave, p, informes", L"Selección de Documentos", "AceptarReports(-10) 0 1"},
    {L"ShowSql clave, p, informes", kReports, "AceptarReports(-10) 0 0"},
    {L"ShowEtiq clave, p, informes", L"Selección de Etiquetas", "AceptarEtiqueta(-10)"},
    {L"PrintEtiq clave, p, informes", L"", "AceptarEtiqueta(-10)"},
    {L"ShowRptListas clave, p, informes", L"Selección de Listas", "AceptarListasParam(-10) 0 1 'PRC'"},
    {L"ShowRptCond clave, p, informes", kDocuments, "AceptarReportsParam(-10) 0 1 mes fin '' 2 2 '' 'PRC'"},
    {L"ShowRptInfCond clave, p, informes", kDocuments,
     "AceptarReportsInformesParam(-10) 0 1 mes fin '' 2 2 ''"},
    {L"ShowRptMailCond clave, p, informes", kDocuments,
     "AceptarReportsParamMail(-10) 0 1 mes fin '' 2 2 '' 'PRC'"},
    {L"ShowRptBorrador clave & 2, p, informes", kDocuments,
     "AceptarReportsParamMail(-10) 0 1 mes fin 'Borrador' 2 2 '' 'PRC'"},
    {L"ShowRptCondHr clave, p, informes", kDocuments,
     "AceptarReportsParamHr(-10) 0 1 mes fin '' False False 7:0 23:59"},
    {L"ShowRptFchAuto clave, p, informes", kDocuments, "AceptarReportsFchAuto(-10) 0 1 mes fin 0"},
    {L"ShowRptFchAutoInf clave, p, informes, False", kReports, "AceptarInformesFchAuto(-10) 0 1 mes fin 0"},
    {L"ShowRptsInfFch clave, p, informes", kReports, "AceptarInformesFch(-10) 0 1 mes fin ''"},
    {L"ShowRptFchCliDirec clave, New PantallaBreve, informes", kReports,
     "AceptarInformesFchAuto(-10) 0 1 mes fin"},
    {L"ShowRptInfOrdenes clave, p, informes, True", kReports,
     "AceptarInformesFchAutoTipoTime(-10) 0 1 mes fin 0 '' 0:0 23:59 2 2 ''"},
    {L"ShowRptNumAut clave, p, informes", L"Selección de Documentos",
     "AceptarDocNumAut(-10) 0 1 Empty: Empty: False"},
    {L"PrintRptNumAut clave, p, informes", L"", "AceptarDocNumAut(-10) 0 1 Empty: Empty: False"},
    {L"ShowSeleccionar busca, busca", L"Criterios de ventas", kFiltered, kCode},
    {L"ShowSelecLab busca, busca", L"Criterios de laboratorio", kFiltered, kCode},
    {L"ShowSelecMinim busca, busca", L"Criterios de mínimos", kFiltered, kCode},
    {L"ShowSeleccionarComp busca, busca", L"Criterios de compras", kFiltered, kCode},
    {L"ShowSeleccionarRecibo busca, busca", L"Criterios de recibos", kFiltered, kCode},
    {L"ShowNuevaCita p, lista, ventana, fecha : MsgBox \"Acepte.\", 0, \"Agenda\"",
     L"Agenda",
     "AceptarBuscar",
     {{0, kGoTo, L"Nueva Cita :  21/11/2026"},
      {IDC_DTPICHORA, VK_RETURN}, // there is nothing to save with
      {IDOK, VK_RETURN},
      {IDC_DTPICHORA, VK_ESCAPE},
      {0, kGoTo, L"Agenda"},
      {IDOK, VK_RETURN}}},
    {L"ShowSelec p, lista, \"texto\"", L"", "Error 13"},
    {L"ShowSelec p, lista, dialogos", L"", "Error 13"},
    {L"ShowSelec p, lista, p, \"uno\"", L"", "Error 13"},
    {L"ShowSelec p, lista", L"", "Error 450"},
    {L"NoExiste", L"", "Error 438"},
};

using ScriptTest = PersonTest;

TEST_F(ScriptTest, EveryOperationAsksAndAnswersExactlyThis) {
    std::string text = Text("host.vbs");
    std::vector<Visit> visits;
    for (const Row& row : kRows) {
        visits.push_back({row.caption, row.steps});
        text += "Empieza " + std::to_string(&row - kRows) + "\ndialogos." +
                std::string(row.statement.begin(), row.statement.end()) + "\n";
    }
    Put(L"host.vbs", text + "Empieza " + std::to_string(std::size(kRows)) + "\n");
    std::istringstream output(Run(L"cscript.exe //nologo host.vbs", visits));
    std::string got, line;
    std::getline(output, line);
    for (const Row& row : kRows) {
        EXPECT_EQ(line, "== " + std::to_string(&row - kRows));
        for (got.clear(); std::getline(output, line) && !line.starts_with("== ");) {
            got += (got.empty() ? "" : "; ") + line;
        }
        EXPECT_EQ(got, row.transcript) << ::testing::PrintToString(row.statement);
    }
    for (const tamvelo::testing::Operation& operation : tamvelo::testing::Operations()) {
        EXPECT_TRUE(std::ranges::any_of(kRows, [&](const Row& row) {
            return row.statement.starts_with(operation.name + L" ") && !row.transcript.starts_with("Error");
        })) << ::testing::PrintToString(operation.name);
    }
}

// No answer: Wine's engine for this language takes no arguments by reference, and the sink's are.
TEST_F(ScriptTest, ObjectsWithoutTypesServeToo) {
    const Visit visits[] = {{L"Selección de familias", {{IDC_DATAGRID, VK_DOWN}, {IDC_DATAGRID, VK_ESCAPE}}}};
    Put(L"panel.js", Text("panel.js"));
    EXPECT_EQ(Run(L"cscript.exe //nologo panel.js", visits), "Requery seleccion\nQueda en 2\n");
}

} // namespace
} // namespace tamvelo::hosts
