// The checker of hosts, as the programmer of one uses it: a program that is run and read.
#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <set>
#include <sstream>
#include <thread>

#include "Person.h"
#include "ProductVersion.h"
#include "base/Text.h"
#include "com/Automation.h"
#include "com/Error.h"
#include "demo/data/SampleData.h"
#include "demo/host/HostObjects.h"

namespace tamvelo::hosts {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

/// Registered, for scripts that make one.
class Checker : public PersonTest {
public:
    /// Its lines parted by LF, with one blank where there are several.
    static Finished Check(const std::wstring& source, const std::wstring& more = L"") {
        Finished run = RunProgram(L"TamveloDemo" TAMVELO_SUFFIX L".exe comprobar " + source + L" " + more);
        std::erase(run.output, '\r');
        const auto both = [](char a, char b) { return a == ' ' && b == ' '; };
        run.output.erase(std::unique(run.output.begin(), run.output.end(), both), run.output.end());
        return run;
    }
    static Finished CheckScript(const std::string& text, const std::wstring& more = L"") {
        Put(L"anfitrion.vbs", text);
        return Check(L"anfitrion.vbs", more);
    }
};

/// All that a script can have wrong: members that lack, answer something else, raise; what changes something
/// says so.
constexpr char kFaulty[] = R"vbs(
Class Conjunto
    Public Property Get RecordCount : RecordCount = 0 : End Property
    Public Property Get EOF : EOF = True : End Property
    Public Property Get Fields : Set Fields = Me : End Property
    Public Sub MoveFirst : End Sub
End Class
Class Tabla
    Public Property Get Recordset : Set Recordset = New Conjunto : End Property
    Public Property Get existenregistros : existenregistros = "quizas" : End Property
    Public Sub Requery(consulta) : WScript.Echo "Requery", consulta : End Sub
    Public Sub FindRecord(texto) : Err.Raise 1234, "Gestion", "La tabla esta cerrada." : End Sub
    Public Function GetFilter(hueco) : GetFilter = hueco : End Function
    Public Sub SetFilter(texto, hueco) : WScript.Echo "SetFilter", texto, hueco : End Sub
    Public Sub AplyFilter(texto) : WScript.Echo "AplyFilter", texto : End Sub
    Public Function ValidaDefinedSize(caja) : ValidaDefinedSize = caja.Name : End Function
    Public Function ValidaKey(caja, tecla) : ValidaKey = Null : End Function
    Public Sub Denegar_todos(conexion) : WScript.Echo "Denegar_todos" : End Sub
End Class
Class Pantalla
    Public Sub AceptarBuscar : WScript.Echo "AceptarBuscar" : End Sub
    Public Sub AceptarFechaEntre(primera) : End Sub
End Class
Set MyClase = New Tabla
Set objClsEvents = New Pantalla
)vbs";

TEST_F(Checker, NamesWhatIsMissingWhatAnswersWrongAndWhatFails) {
    const Finished run = CheckScript(kFaulty);
    EXPECT_EQ(run.code, 1U);
    const std::string& told = run.output;
    for (const char* line : {
             "sClassName FALTA",
             "Requery con 1 argumento responde",
             "Requery sin argumentos FALLA: ",
             "FindRecord FALLA: La tabla esta cerrada. (línea 12) («MyClase».FindRecord)",
             "existenregistros RESPONDE OTRO TIPO: «MyClase».existenregistros: No coinciden los tipos.",
             "ValidaDefinedSize RESPONDE OTRO TIPO: «MyClase».ValidaDefinedSize: No coinciden los tipos.",
             "ValidaKey responde Verdadero",
             "ValidaValue FALTA",
             "AplyFilter está; no se ha llamado, porque cambia algo",
             "GetFilter responde «FilterSelec»",
             "clsEvents_AceptaSeleccion no está, ni hace falta",
             "FALLA: «Recordset» no devolvió un conjunto de registros: no tiene el miembro «MoveNext».",
             "ShowSelecDate frmSeleccionFecha lista",
             "ShowNuevaCita frmCita NO, por MyClase.sClassName\n",
             "ShowBuscar frmBuscar sin comprobar: no se ha dado «Columns»",
             "ShowSelecMinim frmSelecMinim NO, por MyClase.sClassName, MyClase.CreateFilter, "
             "MyClase.ValidaValue, MyClase.ValidaDefinedSize, un conjunto de registros\n",
             "1 de 7 listas",
         }) {
        EXPECT_THAT(told, HasSubstr(line));
    }
    EXPECT_THAT(told, HasSubstr("Requery seleccion"));
    EXPECT_THAT(told, AllOf(Not(HasSubstr("AplyFilter Filter")), Not(HasSubstr("SetFilter Filter")),
                            Not(HasSubstr("\nAceptarBuscar\n"))));
}

TEST_F(Checker, ChangesSomethingOnlyWhenTold) {
    const std::string told = CheckScript(kFaulty, L"--escribir").output;
    EXPECT_THAT(told,
                HasSubstr("\nSetFilter FilterSelec FilterSelec\nAplyFilter FilterSelec\nAceptarBuscar\n\n"));
    EXPECT_THAT(told, HasSubstr("AceptarFechaEntre FALLA")); // one argument, and two are passed
    EXPECT_THAT(told, HasSubstr("Denegar_todos está; no se ha llamado"));
    EXPECT_THAT(told, Not(HasSubstr("\nDenegar_todos\n"))); // marks all that somebody has chosen: never
}

TEST_F(Checker, GoesByWhatIsAskedFor) {
    const Finished dates = CheckScript(kFaulty, L"--only ShowSelecDate");
    EXPECT_EQ(dates.code, 0U);
    EXPECT_THAT(dates.output, AllOf(HasSubstr("1 de 1 listas"), Not(HasSubstr("Requery"))));
    EXPECT_EQ(CheckScript(kFaulty, L"--only ShowSelecDate,ShowBuscar").code, 1U);
    const Finished unknown = CheckScript(kFaulty, L"--only ShowSelecDato");
    EXPECT_EQ(unknown.code, 1U);
    EXPECT_THAT(unknown.output, HasSubstr("ShowSelecDato"));
}

TEST_F(Checker, KnowsByWhichMemberAClassIsAnswered) {
    const std::string example = Text("../../examples/seleccion.vbs", "Option Explicit\n", "Dim campo, busca");
    const struct {
        const char* className;
        const char* sink;
        const char* told;
    } cases[] = {
        {"articulos", "AceptarSeleccion(i, ctl, v)", "frmSeleccion abre, pero le falta MyClase.CreateFilter"},
        {"empleados", "AceptarSeleccion(i, ctl, v)", "NO, por objClsEvents.AceptarSeleccionParam\n"},
        {"empleados", "AceptarSeleccionParam(i, ctl, a, b, c)", "frmSeleccion abre, pero le falta "},
        {"articulos", "AceptarSeleccionParam(i, ctl, a, b, c)", "NO, por objClsEvents.AceptarSeleccion\n"},
        {"Ordenes", "AceptarSeleccionParam(i, ctl, a, b, c)", "NO, por objClsEvents.AceptarSeleccion\n"},
    };
    for (const auto& [className, sink, told] : cases) {
        std::string text = example;
        text.replace(text.find("\"articulos\"") + 1, 9, className);
        text += "Class Respuesta\nPublic Sub " + std::string(sink) + " : End Sub\nEnd Class\n" +
                "Set MyClase = articulos\nSet ctl = New Pantalla\nSet objClsEvents = New Respuesta\n";
        EXPECT_THAT(CheckScript(text, L"--only ShowSelec").output, HasSubstr(told))
            << className << " " << sink;
    }
}

TEST_F(Checker, TellsWhatIsNoHost) {
    const Finished broken = CheckScript("Option Explicit\r\nDim uno\r\nuno = = 2\r\n");
    EXPECT_EQ(broken.code, 1U);
    EXPECT_THAT(broken.output, HasSubstr("(línea 3)"));
    for (const wchar_t* source : {L"Scripting.Dictionary", L"No.Existe", L"noexiste.js"}) {
        const Finished none = Check(source);
        EXPECT_EQ(none.code, 1U);
        EXPECT_THAT(none.output, HasSubstr("«" + base::ToUtf8(source) + "»"));
    }
    Put(L"anfitrion.js", "var ctl = { Text: 'A-1' };");
    EXPECT_THAT(Check(L"anfitrion.js").output, HasSubstr("Text responde «A-1»"));
}

/// The demo's objects under the names of their roles.
class Program final : public com::Automation {
public:
    Program()
        : m_data(demo::MakeDataClass(m_database, L"articulos")),
          m_sink(demo::MakeSink(
              [this](std::wstring_view member, com::Invocation&) { heard.emplace_back(member); })),
          m_columns(demo::MakeColumns(L"articulos")),
          m_reports(demo::MakeReports({L"Listado", L"Etiquetas"})) {}

    std::vector<std::wstring> heard;

private:
    std::span<const com::Member> Members() const override {
        using com::Member;
        static constexpr Member kMembers[] = {
            {L"MyClase", 1, Member::Get, 0, 0, com::Run<&Program::Data>},
            {L"ClsEventos", 2, Member::Get, 0, 0, com::Run<&Program::Sink>},
            {L"ctl", 3, Member::Get, 0, 0, com::Run<&Program::Itself>},
            {L"Columns", 4, Member::Get, 0, 0, com::Run<&Program::Columns>},
            {L"cReports", 5, Member::Get, 0, 0, com::Run<&Program::Reports>},
            {L"Text", 6, Member::Get, 0, 0, com::Run<&Program::Text>},
        };
        return kMembers;
    }
    void Data(com::Invocation& call) { call.Return(com::Variant(m_data.Get())); }
    void Sink(com::Invocation& call) { call.Return(com::Variant(m_sink.Get())); }
    void Itself(com::Invocation& call) { call.Return(com::Variant(this)); }
    void Columns(com::Invocation& call) { call.Return(com::Variant(m_columns.Get())); }
    void Reports(com::Invocation& call) { call.Return(com::Variant(m_reports.Get())); }
    void Text(com::Invocation& call) { call.Return(com::Variant(L"A-1")); }

    const std::shared_ptr<demo::Database> m_database =
        std::make_shared<demo::Database>(demo::OpenSampleData(L":memory:", 32));
    const com::ComPtr<IDispatch> m_data, m_sink, m_columns, m_reports;
};

/// A program that other programs find by the name of its class while it lives.
class Served {
public:
    explicit Served(IDispatch* object) : m_factory(com::Make<Factory>(object)) {
        com::Check(CoRegisterClassObject(kId, m_factory.Get(), CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE,
                                         &m_registered));
        wchar_t id[39];
        StringFromGUID2(kId, id, ARRAYSIZE(id));
        RegSetKeyValueW(HKEY_CLASSES_ROOT, kKey, nullptr, REG_SZ, id, sizeof id);
    }
    ~Served() {
        CoRevokeClassObject(m_registered);
        RegDeleteTreeW(HKEY_CLASSES_ROOT, kName);
    }
    Served(const Served&) = delete;
    Served& operator=(const Served&) = delete;

    static constexpr wchar_t kName[] = L"TamveloPrueba.Programa";

private:
    class Factory final : public com::Object<IClassFactory> {
    public:
        explicit Factory(IDispatch* object) : m_object(object) {}
        HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** out) override {
            return m_object->QueryInterface(id, out);
        }
        HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

    private:
        const com::ComPtr<IDispatch> m_object;
    };
    static constexpr CLSID kId = {
        0x6a1c2d3e, 0x51b0, 0x4f6e, {0x9b, 0x27, 0x4d, 0x10, 0x8e, 0x33, 0xc5, 0x71}};
    static constexpr wchar_t kKey[] = L"TamveloPrueba.Programa\\CLSID";
    const com::ComPtr<Factory> m_factory;
    DWORD m_registered = 0;
};

/// While this thread, whose objects are asked, lets the others in.
Finished CheckServed(const std::wstring& more) {
    Finished run;
    std::atomic<bool> done = false;
    std::thread other([&] {
        run = Checker::Check(Served::kName, more);
        done = true;
    });
    for (MSG message; !done; MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT)) {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
    }
    other.join();
    return run;
}

/// A data class that hears the answers too.
class Alone final : public com::Automation {
    std::span<const com::Member> Members() const override {
        using com::Member;
        static constexpr Member kMembers[] = {
            {L"sClassName", 1, Member::Get, 0, 0, com::Run<&Alone::Name>},
            {L"AceptarBuscar", 2, Member::Method, 0, 0, com::Run<&Alone::Name>},
        };
        return kMembers;
    }
    void Name(com::Invocation& call) { call.Return(com::Variant(L"citas")); }
};

TEST_F(Checker, TakesAnObjectThatPlaysSeveralRoles) {
    const Served served(com::Make<Alone>().Get());
    const Finished run = CheckServed(L"--only ShowNuevaCita");
    EXPECT_EQ(run.code, 0U) << run.output;
    EXPECT_THAT(run.output, HasSubstr("ShowNuevaCita frmCita lista"));
}

// Of another process, so that every call is a message; its data class has its record set apart, with clones.
TEST_F(Checker, FindsAWholeHostOfAnotherProcessReadyForEverything) {
    const auto program = com::Make<Program>();
    const Served served(program.Get());
    const Finished run = CheckServed(L"");
    EXPECT_EQ(run.code, 0U) << run.output;
    EXPECT_THAT(run.output, HasSubstr("36 de 36 listas"));
    EXPECT_TRUE(program->heard.empty());
    const Finished written = CheckServed(L"--escribir");
    EXPECT_EQ(written.code, 0U) << written.output;
    std::set<std::string> uncalled; // what it only looks for
    std::istringstream lines(written.output);
    for (std::string line; std::getline(lines, line);) {
        if (line.find(" está") != std::string::npos && line.find("no está") == std::string::npos) {
            uncalled.insert(line.substr(1, line.find(' ', 1) - 1));
        }
    }
    EXPECT_THAT(uncalled,
                ::testing::ElementsAre("AbsolutePosition=", "Aceptar_todos", "Bookmark=", "Denegar_todos",
                                       "Filter=", "InsertarArticulo", "NuevoCodigo_Fam",
                                       "Sort=", "Value=", "Visible=", "clsEvents_AceptaSeleccion"));
    EXPECT_EQ(program->heard.size(), 19U) << ::testing::PrintToString(program->heard);
}

} // namespace
} // namespace tamvelo::hosts
