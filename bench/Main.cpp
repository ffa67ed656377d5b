// Measures the library against its budgets. Everything is a ratio within one run, against a floor or against
// itself with fewer rows, so that the machine's speed does not matter.
#include "com/WinHeaders.h"

#include <array>
#include <cstdio>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Text.h"
#include "bench/Clock.h"
#include "bench/Cycles.h"
#include "bench/DialogSession.h"
#include "bench/GridPart.h"
#include "bench/HostCalls.h"
#include "bench/Panel.h"
#include "bench/PrivateSettings.h"
#include "bench/Report.h"
#include "bench/SqliteHost.h"
#include "com/Error.h"
#include "com/Module.h"

namespace tamvelo::bench {

namespace {

constexpr long kFew = 1'000;
constexpr long kMany = 1'000'000;
constexpr wchar_t kSought[] = L"100";
constexpr int kPages = 20; // per opening; so many are there below the row on which the shortest list opens
constexpr SIZE kAllColumnsShown{1000, 740}; // as many columns as the floor paints
constexpr double kMebibyte = 1024.0 * 1024.0;

struct Effort {
    int openings;
    int repetitions;
    int cycles;
};
constexpr Effort kWhole{25, 200, 1000};
constexpr Effort kQuick{7, 40, 100};

/// One dialog that is opened again and again, and its times.
struct Subject {
    std::string name;
    std::function<void()> show;
    HWND (*list)(HWND dialog);
    std::vector<double> opening;
    std::vector<double> page;

    void Measure(bool keep) {
        double turned = 0;
        const double opened = OpenDialog(show, list, [&](HWND shown) { turned = TurnPages(shown, kPages); });
        if (keep) {
            opening.push_back(opened);
            page.push_back(turned);
        }
    }
};

Subject DialogOver(const Library& library, const GridDialog& dialog, const char* name, const Host& host) {
    return {name, [&library, &dialog, host] { ShowDialog(library, dialog, host); }, ListOf, {}, {}};
}

/// In turns, so that whatever else the machine does weighs on all alike.
void MeasureInTurns(std::span<Subject> subjects, int openings) {
    for (int i = -2; i < openings; ++i) { // the first two are for warming up
        for (Subject& subject : subjects) {
            subject.Measure(i >= 0);
        }
    }
}

/// The floor in the shape that the dialog has now. It keeps the size that it is closed with, here `size`.
Subject FloorFor(const Library& library, const GridDialog& dialog, std::optional<SIZE> size) {
    const Host host = MakeMemoryHost(kFew, L"");
    Floor shape{};
    OpenDialog([&] { ShowDialog(library, dialog, host); }, ListOf,
               [&](HWND list) {
                   if (size) {
                       SetWindowPos(GetParent(list), nullptr, 0, 0, size->cx, size->cy, SWP_NOZORDER);
                   }
                   shape = FloorOf(list);
               });
    return {"suelo", [shape] { ShowFloor(shape); }, ListOfFloor, {}, {}};
}

void MeasureDialog(const Library& library, const GridDialog& dialog, const Effort& effort, Report& report) {
    const auto idOf = [&](const char* id) { return std::string(id) + dialog.suffix; };
    const auto open = [&](const char* id, const Subject& subject, const Subject& against, double limit) {
        report.Ratio(idOf(id),
                     std::string("Abrir ") + dialog.name + " (" + subject.name + ") / " + against.name,
                     Typical(subject.opening), Typical(against.opening), limit);
    };
    SqliteHost sample = SqliteHost::Sample();
    {
        std::array subjects{FloorFor(library, dialog, {}),
                            DialogOver(library, dialog, "demo, tamaño inicial", sample.Objects())};
        MeasureInTurns(subjects, effort.openings);
        open("abrir-demo-inicial", subjects[1], subjects[0], 2.5);
    }
    SqliteHost fewArticles = SqliteHost::Articles(kFew);
    SqliteHost manyArticles = SqliteHost::Articles(kMany);
    std::array subjects{FloorFor(library, dialog, kAllColumnsShown),
                        DialogOver(library, dialog, "demo, ventana grande", sample.Objects()),
                        DialogOver(library, dialog, "SQLite, 1.000", fewArticles.Objects()),
                        DialogOver(library, dialog, "SQLite, 1.000.000", manyArticles.Objects()),
                        DialogOver(library, dialog, "memoria, 1.000", MakeMemoryHost(kFew, kSought)),
                        DialogOver(library, dialog, "memoria, 100.000", MakeMemoryHost(100'000, kSought)),
                        DialogOver(library, dialog, "memoria, 1.000.000", MakeMemoryHost(kMany, kSought))};
    MeasureInTurns(subjects, effort.openings);
    const auto& [floor, demo, sqliteFew, sqliteMany, few, hundred, many] = subjects;
    open("abrir-demo", demo, floor, 2.5);
    open("abrir-escala-sqlite", sqliteMany, sqliteFew, 1.2);
    open("abrir-escala-memoria", many, few, 1.2);
    const auto turn = [&](const char* id, const Subject& subject) {
        report.Ratio(idOf(id), std::string("AvPág en ") + dialog.name + " (" + subject.name + ") / suelo",
                     Typical(subject.page), Typical(subjects[0].page), 1.3);
    };
    turn("avpag-1000", few);
    turn("avpag-100000", hundred);
    turn("avpag-1000000", many);
}

void MeasureGrid(const Effort& effort, Report& report) {
    const GridPart filter = MeasureFilter(kFew, kMany, effort.repetitions);
    report.Ratio("filtro-escala", "Filtrar, parte de la cuadrícula, 1.000.000 / 1.000", filter.many,
                 filter.few, 1.2);
    const GridPart order = MeasureOrder(kFew, kMany, effort.repetitions);
    report.Ratio("orden-escala", "Ordenar, parte de la cuadrícula, 1.000.000 / 1.000", order.many, order.few,
                 1.2);
}

void MeasureCalls(const Effort& effort, Report& report) {
    const Host host = MakeMemoryHost(kFew, L"");
    const HostCall move = MeasureMoveNext(host.data.Get(), effort.repetitions);
    report.Ratio("llamada-movenext", "Llamada MoveNext / Invoke directo", move.adapter, move.bare, 1.5);
    const HostCall find = MeasureFindRecord(host.data.Get(), effort.repetitions);
    report.Ratio("llamada-findrecord", "Llamada FindRecord / Invoke directo", find.adapter, find.bare, 1.5);
}

void MeasureCycles(const Library& library, const GridDialog& dialog, const Effort& effort, Report& report) {
    const Leftovers left = OpenAndClose(library, dialog, effort.cycles);
    const std::string cycles =
        std::string("Abrir y cerrar ") + dialog.name + " " + std::to_string(effort.cycles) + " veces: ";
    const auto amount = [&](const char* id, const char* what, double value, double limit, const char* unit) {
        report.Amount(id + std::string(dialog.suffix), cycles + what, value, limit, unit);
    };
    amount("ciclos-ventanas", "ventanas de más", left.windows, 0, "");
    amount("ciclos-gdi", "objetos GDI de más", left.gdiObjects, 0, "");
    amount("ciclos-user", "objetos USER de más", left.userObjects, 0, "");
    amount("ciclos-referencias", "referencias de más", left.hostReferences, 0, "");
    amount("ciclos-biblioteca", "biblioteca en uso", left.libraryInUse ? 1 : 0, 0, "");
    amount("ciclos-memoria", "memoria privada de más", left.privateBytes / kMebibyte, 1, "MiB");
}

void MeasureSize(const Library& library, Report& report) {
    WIN32_FILE_ATTRIBUTE_DATA file{};
    GetFileAttributesExW(library.Path().c_str(), GetFileExInfoStandard, &file);
    report.Amount("tamano", "Tamaño de Tamvelo.dll", file.nFileSizeLow / kMebibyte, 1.5, "MiB");
}

int Run(const Effort& effort) {
    const PrivateSettings settings;
    const Library library;
    Report report;
    for (const GridDialog* const dialog : {&kPanel, &kBrowser}) {
        MeasureDialog(library, *dialog, effort, report);
    }
    MeasureGrid(effort, report);
    MeasureCalls(effort, report);
    for (const GridDialog* const dialog : {&kPanel, &kBrowser}) {
        MeasureCycles(library, *dialog, effort, report);
    }
    MeasureSize(library, report);
    report.Print();
    return report.AllMet() ? 0 : 1;
}

} // namespace

} // namespace tamvelo::bench

/// 0: every budget is met; 1: one is not; 2: it could not be measured. `--rapido` measures less often.
int main(int count, char** arguments) {
    using namespace tamvelo;
    const bool quick = count == 2 && std::string_view(arguments[1]) == "--rapido";
    if (count > 1 && !quick) {
        fputs("bench [--rapido]\n", stderr);
        return 2;
    }
    com::Module::Attach(GetModuleHandleW(nullptr));
    OleInitialize(nullptr);
    int result = 2;
    try {
        result = bench::Run(quick ? bench::kQuick : bench::kWhole);
    } catch (...) {
        fprintf(stderr, "%s\n", base::ToUtf8(com::CurrentError().description).c_str());
    }
    OleUninitialize();
    return result;
}
