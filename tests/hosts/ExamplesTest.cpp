// What others copy, as it stands: the same program in each language that runs here, with a person at the
// keyboard.
#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "Person.h"
#include "ProductVersion.h"
#include "base/Text.h"
#include "contract/Members.h"
#include "dates/Resources.h"
#include "frame/Resources.h"
#include "search/Resources.h"
#include "tests/support/Operations.h"

namespace tamvelo::hosts {
namespace {

using Examples = PersonTest;

const Visit kChoose{L"Selección de articulos",
                    {{IDC_DATAGRID, VK_DOWN},
                     {IDC_DATAGRID, kShows, L" A-1; Tornillo [A-2; Tuerca] A-3; Arandela "},
                     {IDC_DATAGRID, VK_RETURN}}};
const Visit kSearch{L"Buscar Registros",
                    {{IDC_TXTFIELDS0, VK_RETURN, L"A-3"},
                     {IDC_TXTFIELDS0, VK_TAB},
                     {IDC_CMDBUSCAR, VK_TAB}, // where Enter would search again
                     {IDC_OPTBUSCAR0, VK_RETURN}}};

TEST_F(Examples, ShowTheirRowsAndPrintWhatCameBack) {
    const Visit both[] = {kChoose, kSearch};
    std::wistringstream commands(TAMVELO_EXAMPLES);
    for (std::wstring command; std::getline(commands, command, L'|');) {
        EXPECT_EQ(Run(command, both), "Elegido: A-2\nFiltro: Codigo=A-3\n")
            << ::testing::PrintToString(command);
    }
}

// Wine's engine for this language takes no arguments by reference, as the answers' are: no key is pressed
// that has one.
TEST_F(Examples, InJScriptShowTheirRows) {
    const Visit look[] = {{kChoose.caption, {kChoose.steps[0], kChoose.steps[1], {IDC_DATAGRID, VK_ESCAPE}}},
                          {kSearch.caption, {{IDC_TXTFIELDS0, VK_ESCAPE}}}};
    EXPECT_EQ(Run(L"cscript.exe //nologo seleccion.js", look), "Elegido: \nFiltro: \n");
}

TEST_F(Examples, OfTheReadmeRunsWithTheDataClassOfTheScript) {
    Put(L"readme.vbs", Text("../../examples/seleccion.vbs", "Option Explicit\n", "Class Pantalla") +
                           Text("../../README.md", "```vb\n", "```"));
    EXPECT_EQ(Run(L"cscript.exe //nologo readme.vbs", {&kChoose, 1}), "A-2\n");
}

/// The page's pieces of program, in their order.
std::vector<std::string> Pieces() {
    std::vector<std::string> pieces;
    const std::string page = Text("../../docs/escribir-su-programa.md");
    const std::string begin = "```vb\n";
    for (size_t at = page.find(begin); at != std::string::npos; at = page.find(begin, at + 1)) {
        pieces.push_back(page.substr(at + begin.size(), page.find("```", at + 1) - at - begin.size()));
    }
    return pieces;
}

// The first piece is a program, and so are the others together; without their calls they are what the checker
// takes.
TEST_F(Examples, OfThePageForProgrammersRun) {
    const Visit dates[] = {{L"Seleccionar Fechas", {{IDC_DTPICKER0, VK_RETURN}}}};
    const std::vector<std::string> pieces = Pieces();
    Put(L"primero.vbs", pieces.at(0));
    EXPECT_THAT(Run(L"cscript.exe //nologo primero.vbs", dates), ::testing::MatchesRegex("Del .* al .*\n"));

    std::string program;
    std::string host;
    for (size_t i = 1; i < pieces.size(); ++i) {
        program += pieces[i];
        host += pieces[i].find("dialogos.") == std::string::npos ? pieces[i] : "";
    }
    const Steps mark{{IDC_LIST1, VK_DOWN}, {IDC_LIST1, VK_SPACE}, {IDC_LIST1, VK_RETURN}};
    const Visit visits[] = {kChoose,
                            kSearch,
                            {L"Columnas visibles", mark},
                            {L"Columna de orden", mark},
                            {L"Selección de Documentos", mark}};
    Put(L"programa.vbs", program);
    EXPECT_EQ(Run(L"cscript.exe //nologo programa.vbs", visits),
              "Elegido: A-2\nFiltro: Codigo=A-3\nSe ve Nombre: 0\nOrden: 0\nInformes: 0-1 copias: 1\n");
    Put(L"programa.vbs", host);
    const Finished checked =
        RunProgram(L"TamveloDemo" TAMVELO_SUFFIX L".exe comprobar programa.vbs --only ShowColums,ShowOrder");
    EXPECT_EQ(checked.code, 0U) << checked.output;
}

// What cannot be run here is read: the calls, and the members that the library will look for.

constexpr const char* kFiles[] = {"seleccion.vbs", "seleccion.js",           "seleccion.pas",
                                  "seleccion.cs",  "seleccion-temprana.cpp", "vba/Seleccion.bas",
                                  "seleccion.ps1"};

std::string Example(const std::string& file) { return Text("../../examples/" + file); }

/// How many there are between commas; what is in parentheses is one.
size_t Count(const std::string& list) {
    size_t count = list.find_first_not_of(" )") == std::string::npos ? 0 : 1;
    int depth = 0;
    for (const char c : list) {
        depth += c == '(' || c == '[' ? 1 : c == ')' || c == ']' ? -1 : 0;
        count += c == ',' && depth == 0;
    }
    return count;
}

TEST(ExamplesRead, CallOperationsAsTheTypeLibraryHasThem) {
    const std::regex call(R"(dialogos(?:\.|->)((?:Show|Print)\w+)[ (]([^\r\n;]*))");
    for (const char* file : kFiles) {
        const std::string text = Example(file);
        std::set<std::string> called;
        for (std::sregex_iterator at(text.begin(), text.end(), call), end; at != end; ++at) {
            const auto& operation = tamvelo::testing::OperationOf(*base::FromUtf8((*at)[1].str()));
            const size_t given = Count((*at)[2]);
            EXPECT_TRUE(given >= operation.Required() && given <= operation.parameters.size())
                << file << ": " << at->str();
            called.insert((*at)[1]);
        }
        EXPECT_EQ(called, (std::set<std::string>{"ShowSelec", "ShowBuscar"})) << file;
    }
}

/// How many arguments a member takes.
struct Declared {
    size_t least = 0;
    size_t most = 0;
};
/// By class, then by name.
using Classes = std::map<std::string, std::map<std::string, Declared>>;

Classes Read(const std::string& text) {
    Classes classes;
    std::string name;
    const std::regex line(
        R"re((?:public (?:static )?class |VB_Name = ")(\w+))re"
        R"re(|[Pp]ublic (?:Sub |Function |Property Get |string |object |int |bool |void )?(\w+)(?:\(([^)\r\n]*)\))?(?= As| \{|\s))re");
    for (std::sregex_iterator at(text.begin(), text.end(), line), end; at != end; ++at) {
        const std::string member = (*at)[2];
        if ((*at)[1].matched) {
            name = (*at)[1];
        } else if (member != name) {
            const std::string list = (*at)[3];
            Declared& declared = classes[name][member];
            declared.most = Count(list);
            declared.least = declared.most;
            for (const char* optional : {"Optional ", "= null"}) {
                for (size_t i = list.find(optional); i != std::string::npos; i = list.find(optional, i + 1)) {
                    --declared.least;
                }
            }
        }
    }
    return classes;
}

/// Which objects of the contract the classes of the examples are.
const std::map<std::string, std::set<std::wstring>> kRoles{{"Tabla", {L"MyClase", L"Recordset"}},
                                                           {"Pantalla", {L"ctl", L"objClsEvents"}},
                                                           {"Campo", {L"Field", L"Column"}},
                                                           {"Campos", {L"Fields", L"Columns"}},
                                                           {"Columna", {L"Column"}},
                                                           {"Columnas", {L"Columns"}}};

void ExpectContract(const Classes& classes) {
    const contract::OperationSet shown = contract::Bit(1) | contract::Bit(3); // ShowBuscar, ShowSelec
    for (const auto& [name, members] : classes) {
        SCOPED_TRACE(name);
        const auto& roles = kRoles.at(name);
        std::set<std::string> listed;
        for (const contract::Member& row : contract::Members()) {
            const bool elsewhere =
                row.object == std::wstring_view(L"Recordset") && members.contains("Recordset");
            if (!roles.contains(row.object) || elsewhere) {
                continue;
            }
            const std::string member = base::ToUtf8(row.name);
            std::string arguments = base::ToUtf8(row.arguments);
            const auto found = members.find(member);
            listed.insert(member);
            if (found == members.end()) {
                EXPECT_FALSE(row.need == contract::Need::Always && row.operations & shown)
                    << "lacks " << member;
                continue;
            }
            const Declared& declared = found->second;
            EXPECT_LE(declared.least, Count(arguments.substr(0, arguments.find('[')))) << member;
            std::erase_if(arguments, [](char c) { return c == '[' || c == ']'; });
            EXPECT_GE(declared.most, Count(arguments)) << member;
        }
        for (const auto& [member, declared] : members) {
            EXPECT_TRUE(listed.contains(member)) << "nobody asks for " << member;
        }
    }
}

// Their engines and editors read them in the letters of the system.
TEST(ExamplesRead, OfScriptsArePlainLetters) {
    for (const char* file : {"seleccion.vbs", "seleccion.js", "seleccion.ps1", "vba/Seleccion.bas",
                             "vba/Tabla.cls", "vba/Pantalla.cls", "vba/Columnas.cls", "vba/Columna.cls"}) {
        EXPECT_TRUE(std::ranges::all_of(Example(file), [](char c) { return c > 0; })) << file;
    }
    EXPECT_THAT(Example("vba/Tabla.cls"), ::testing::HasSubstr("END\r\n")); // VBA takes no other line ends
}

TEST(ExamplesRead, HaveWhatTheLibraryAsksFor) {
    Classes sharp = Read(Example("seleccion.cs"));
    EXPECT_EQ(sharp.size(), 5U);
    sharp.erase("Seleccion");
    ExpectContract(sharp);
    Classes basic;
    for (const char* name : {"Tabla", "Pantalla", "Columnas", "Columna"}) {
        basic.merge(Read(Example("vba/" + std::string(name) + ".cls")));
    }
    EXPECT_EQ(basic.size(), 4U);
    ExpectContract(basic);
}

} // namespace
} // namespace tamvelo::hosts
