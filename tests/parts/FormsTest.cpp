// Forms as their developer sees them: the one that ARCHITECTURE.md builds, and the keys of all.
#include <gmock/gmock.h>

#include <fstream>
#include <map>
#include <regex>
#include <sstream>

#include "base/Text.h"
#include "com/Module.h"
#include "dates/FrmCita.h"
#include "dates/FrmSeleccionFecha.h"
#include "frame/FormPart.h"
#include "gridconfig/ColumnsForm.h"
#include "nota/FrmNota.h"
#include "reports/Dialogs.h"
#include "search/FrmBuscar.h"
#include "search/FrmRegistros.h"
#include "selection/Criteria.h"
#include "selection/CriteriaForm.h"
#include "selection/FrmSelecAdd.h"
#include "selection/FrmSeleccion.h"
#include "selection/FrmSeleccionTrueFalse.h"
#include "tests/support/Drive.h"
#include "tests/support/FakeHost.h"

namespace tamvelo::testing {
namespace {

using ::testing::ElementsAre;

std::string ReadAll(const std::string& file) {
    std::ifstream stream(TAMVELO_SOURCES "/" + file, std::ios::binary);
    std::stringstream text;
    text << stream.rdbuf();
    return text.str();
}

class Forms : public ::testing::Test {
protected:
    Forms() {
        com::Module::Attach(GetModuleHandleW(nullptr));
        OleInitialize(nullptr);
    }
    ~Forms() override { OleUninitialize(); }
};

TEST_F(Forms, TheExampleOfTheGuideTypesClearsAndAnswers) {
    Log log;
    const auto sink = com::Make<HostObject>(L"sink", log);
    sink->Accepts({L"AceptarSeleccion"});
    const auto play = [&](Script script) {
        const Player player(std::move(script), [] { return std::string(); });
        std::make_shared<nota::FrmNota>()->Mostrar(sink.Get());
    };
    play({L"'mal ^D 'bien Enter"});
    EXPECT_THAT(log, ElementsAre(L"AceptarSeleccion(&0, &Nothing, \"bien\")"));
    log.clear();
    play({L"'nada Esc"});
    EXPECT_THAT(log, ElementsAre());
    sink->Raises(L"AceptarSeleccion");
    play({L"'otra Enter", Script().Box(L"AceptarSeleccion"), L"Esc"});
}

/// The names of controls by number, as a room's forms know them.
std::map<int, std::string> ControlNames(const std::string& room) {
    std::map<int, std::string> names;
    for (const std::string& file : {std::string("frame"), room}) {
        const std::string text = ReadAll(file + "/Resources.h");
        static const std::regex define(R"(#define IDC_(\w+) (\d+))");
        for (std::sregex_iterator it(text.begin(), text.end(), define), end; it != end; ++it) {
            names.try_emplace(std::stoi((*it)[2]), (*it)[1]);
        }
    }
    return names;
}

std::string Where(const frame::Controls& controls, const std::map<int, std::string>& names) {
    const auto name = [&](int control) {
        const auto known = names.find(control);
        return known == names.end() ? std::to_string(control) : known->second;
    };
    return controls.first == 0                          ? "everywhere"
           : controls.first == frame::kAnyControl.first ? "where it is offered"
           : controls.first == controls.last            ? name(controls.first)
           : controls.last == 0xFFFF                    ? "from " + name(controls.first) + " on"
                                                        : name(controls.first) + " to " + name(controls.last);
}

void WriteRows(std::string& text, std::span<const frame::KeyRow> rows,
               const std::map<int, std::string>& names) {
    for (const frame::KeyRow& row : rows) {
        const std::wstring key =
            row.key == frame::kClick ? L"clic" : frame::KeyName(row.key & ~frame::kFirst);
        const std::string command =
            row.command.empty() ? "(nothing)" : base::ToUtf8(std::wstring(row.command));
        text += "| " + base::ToUtf8(key) + " | " + Where(row.controls, names) + " | " + command + " |\n";
    }
}

std::string ToolsOf(const frame::Form& form) {
    std::wstring text;
    for (const frame::ToolUse& use : form.Tools()) {
        text += (text.empty() ? L"" : L" · ") + std::wstring(frame::ToolCaption(form.Tools(), use.id));
    }
    std::erase(text, L'&');
    return base::ToUtf8(text);
}

std::string RowsOf(const std::string& room, const frame::Form& form) {
    const std::map<int, std::string> names = ControlNames(room);
    std::string text = "Tools: " + ToolsOf(form) + "\n\n| key | where | command |\n|---|---|---|\n";
    WriteRows(text, form.Keys(), names);
    for (const frame::FormPart* part : form.FormParts()) {
        WriteRows(text, part->Keys(), names);
    }
    return text;
}

/// The record is for people who look a key up, and for whoever changes one: the difference shows what else it
/// is used for.
TEST_F(Forms, TheRecordOfKeysIsThatOfTheTables) {
    std::string text = R"(# Keys and tools
The keys of all dialogs, as their tables have them; the first row that fits wins: the form's own, those of its parts,
then those of every form. Tools stand as the bar has them. Written by a test (`tests/parts/FormsTest.cpp`); the
manual's tables are made of it.

## Every form
| key | where | command |
|---|---|---|
)";
    const auto any = std::make_shared<nota::FrmNota>();
    WriteRows(text, frame::FrameCommands(*any).Keys(), {});
    std::string title;
    std::string rows;
    const auto write = [&](const std::string& room, const std::shared_ptr<frame::Form>& form) {
        const std::string more = form ? RowsOf(room, *form) : std::string();
        if (!title.empty() && more != rows) { // forms with the same keys stand together
            text += "\n## " + std::exchange(title, {}) + "\n" + rows;
        }
        title += form ? (title.empty() ? "" : ", ") + base::ToUtf8(form->Name()) : std::string();
        rows = more;
    };
    write("selection", std::make_shared<selection::FrmSeleccion>());
    write("selection", std::make_shared<selection::FrmSeleccionTrueFalse>());
    write("selection", std::make_shared<selection::FrmSelecAdd>());
    for (const selection::CriteriaDesign* design :
         {&selection::kSelecVenta, &selection::kSeleccionar, &selection::kSelecMinim, &selection::kSelecLab,
          &selection::kSelecRecibo}) {
        write("selection", std::make_shared<selection::CriteriaForm>(*design));
    }
    write("search", std::make_shared<search::FrmBuscar>());
    write("search", std::make_shared<search::FrmRegistros>());
    write("gridconfig", std::make_shared<gridconfig::ColumnsForm>(gridconfig::kColumnas));
    write("gridconfig", std::make_shared<gridconfig::ColumnsForm>(gridconfig::kOrden));
    write("dates", std::make_shared<dates::FrmSeleccionFecha>());
    write("dates", std::make_shared<dates::FrmCita>());
    for (const reports::ReportDesign* design :
         {&reports::kRpts, &reports::kSql, &reports::kSelecEti, &reports::kRptsListas, &reports::kRptsCond,
          &reports::kRptsInfCond, &reports::kRptsMailCond, &reports::kRptsCondHr, &reports::kRptsFchAuto,
          &reports::kRptsFchAutoInf, &reports::kRptsInfFch, &reports::kRptsFchCliDirec,
          &reports::kRptsInfOrdenes, &reports::kRptNumAut}) {
        write("reports", std::make_shared<reports::ReportForm>(*design));
    }
    write("", nullptr);
    if (text != ReadAll("docs/keys.md")) {
        std::ofstream("keys.md", std::ios::binary) << text;
        FAIL() << "docs/keys.md says something else: keys.md in the build folder is what it should be.";
    }
}

} // namespace
} // namespace tamvelo::testing
