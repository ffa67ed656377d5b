// Each member of the host that a dialog calls goes wrong in every way that there is, while the dialog is
// opened, used and accepted. What to expect is the same every time: the process lives, the fault is returned
// to the caller or told to the user, what was typed stays, nothing is left, and the next call finds
// everything in order.
#include <cstdio>
#include <set>

#include "base/Text.h"
#include "contract/Members.h"
#include "frame/Resources.h"
#include "tests/dialogs/EveryOperation.h"
#include "tests/support/Clerk.h"
#include "tests/support/Foreign.h"

namespace tamvelo::testing {
namespace {

/// What the clerk does in the dialogs of the operations whose name begins so; the first that fits.
struct Use {
    const wchar_t* operation;
    const wchar_t* keys;
};
constexpr Use kUses[] = {
    {L"ShowSelecDate", L"Down :Aceptar"},
    {L"ShowSelecMinim", L"7 *F4 Tab 8 = ^Enter = 9 :Aceptar"},
    {L"ShowSelecLab", L"7 *F4 Tab 8 = ^Enter = 9 :Aceptar"},
    {L"ShowSeleccionar", L"7 *F4 Tab 8 = ^Enter = 9 :Aceptar"},
    {L"ShowSelecTrueFalse", L"^E 7 Enter = Space Down F9 *F5 ^E 8 = :Aceptar :Aceptar"},
    {L"ShowSelecAdd", L"^E 7 Enter = Down ^N 5 Tab 6 *F4 = :Aceptar Esc :Aceptar"},
    {L"ShowSelec", L"^E 7 Enter = Down Next F9 +F9 End Home Delete *F5 *F12 ^E 8 = :Aceptar :Aceptar"},
    {L"ShowBuscar", L"7 = Enter = Down F9 End Home *F5 8 = :Aceptar"},
    {L"ShowRegistros", L"^E 7 Enter = Down F9 End Home ^N Enter Delete *F5 F7 :Aceptar"},
    {L"ShowNuevaCita", L"7 Tab 8 *F4 = Tab Tab 9 :Aceptar"},
    {L"Print", L""},
    {L"ShowOrder", L"Down Space Down :Aceptar"},
    {L"ShowColums", L"Down Space :Aceptar"},
    {L"Show", L"Space Down Space ^A :Aceptar"}, // lists and reports
};

const wchar_t* UseOf(const std::wstring& operation) {
    const auto fits = [&](const Use& use) { return operation.starts_with(use.operation); };
    return std::ranges::find_if(kUses, fits)->keys;
}

/// Faults that nobody hears of, with the reason why that is right.
struct Silent {
    std::wstring_view member; // the end of operation and way to it
    Fault fault;              // None: all
    VARTYPE answers;          // of a member that answers this; VT_EMPTY: all
    const char* why;
};
constexpr Silent kSilent[] = {
    {L"", Fault::Null, VT_BSTR, "reads as \"\""},
    {L"", Fault::Null, VT_BOOL, "reads as False"},
    {L"", Fault::Empty, VT_BSTR, "reads as \"\""},
    {L"", Fault::Empty, VT_BOOL, "reads as False"},
    {L"", Fault::Empty, VT_I4, "reads as 0"},
    {L"", Fault::NotANumber, VT_BSTR, "a number is a text"},
    {L"", Fault::NotANumber, VT_BOOL, "reads as True"},
    {L"", Fault::Infinite, VT_BSTR, "a number is a text"},
    {L"", Fault::Infinite, VT_BOOL, "reads as True"},
    {L"", Fault::Huge, VT_BSTR, "a number is a text"},
    {L"", Fault::Huge, VT_BOOL, "reads as True"},
    {L"", Fault::Negative, VT_BSTR, "a number is a text"},
    {L"", Fault::Negative, VT_BOOL, "reads as True"},
    {L"", Fault::Negative, VT_I4, "a number like others"},
    {L"", Fault::Megabyte, VT_BSTR, "a text like others"},
    {L"", Fault::EmbeddedZero, VT_BSTR, "a text like others"},
    {L"Recordset", Fault::Null, VT_DISPATCH, "a data class may have no records"},
    {L"Recordset", Fault::Empty, VT_DISPATCH, "a data class may have no records"},
    {L"Fields.Count", Fault::Empty, VT_EMPTY, "a set without fields"},
    {L"Fields.Count", Fault::Negative, VT_EMPTY, "a set without fields"},
    {L".Clone", Fault::None, VT_EMPTY, "the host's own set is read then"},
    {L".GetRows", Fault::None, VT_EMPTY, "values are read one by one then"},
    {L".Clone.RecordCount", Fault::None, VT_EMPTY, "asked to see whether the clone has the host's rows"},
    {L".AbsolutePosition", Fault::None, VT_EMPTY, "or Bookmark"},
    {L"Recordset.BOF", Fault::None, VT_EMPTY, "the rows are the clone's, bookmarks tell the place"},
    {L"Recordset.EOF", Fault::None, VT_EMPTY, "the rows are the clone's, bookmarks tell the place"},
    {L".Bookmark", Fault::None, VT_EMPTY, "or AbsolutePosition"},
    {L".Filter", Fault::None, VT_EMPTY, "asked, not needed"},
    {L".Sort", Fault::None, VT_EMPTY, "asked, not needed"},
    {L".State", Fault::None, VT_EMPTY, "asked, not needed"},
    {L".EditMode", Fault::None, VT_EMPTY, "asked, not needed"},
    {L".DataVersion", Fault::None, VT_EMPTY, "asked, not needed"},
    {L"Fields.Item.Type", Fault::None, VT_EMPTY, "asked, not needed"},
    {L"Fields.Item.Caption", Fault::None, VT_EMPTY, "the name stands for it"},
    {L"Fields.Item.DefinedSize", Fault::None, VT_EMPTY, "asked, not needed"},
    {L"Fields.Item.Value", Fault::Null, VT_EMPTY, "the cell shows it"},
    {L"Fields.Item.Value", Fault::WrongType, VT_EMPTY, "the cell shows it"},
    {L"Fields.Item.Value", Fault::NotANumber, VT_EMPTY, "the cell shows it"},
    {L"Fields.Item.Value", Fault::Infinite, VT_EMPTY, "the cell shows it"},
    {L"Fields.Item.Value", Fault::Huge, VT_EMPTY, "the cell shows it"},
    {L"Fields.Item.Value", Fault::Negative, VT_EMPTY, "the cell shows it"},
    {L"Fields.Item.Value", Fault::Empty, VT_EMPTY, "the cell shows it"},
    {L"Fields.Item.Value", Fault::Array, VT_EMPTY, "the cell shows it"},
    {L"Fields.Item.Value", Fault::Megabyte, VT_EMPTY, "the cell shows it"},
    {L"Fields.Item.Value", Fault::EmbeddedZero, VT_EMPTY, "the cell shows it"},
    {L"ShowSelecAdd MyClase.Recordset.Fields.Item.Value", Fault::None, VT_EMPTY,
     "the cell shows it, handed over is the code that was typed"},
    {L"ShowSelecAdd MyClase.ValidaValue", Fault::Missing, VT_EMPTY, "may be missing"},
    {L"Entorno.CrearClase", Fault::Null, VT_DISPATCH, "the user is told of the class"},
    {L"Entorno.CrearClase", Fault::Empty, VT_DISPATCH, "the user is told of the class"},
    {L"Entorno.ClaseRelacionada", Fault::Missing, VT_EMPTY, "may be missing"},
    {L"objClsEvents.AceptarNuevo", Fault::Missing, VT_EMPTY, "the status line tells"},
    {L"objClsEvents.AceptarModificar", Fault::Missing, VT_EMPTY, "the status line tells"},
    {L"objClsEvents.AceptarEliminar", Fault::Missing, VT_EMPTY, "the status line tells"},
    {L"objClsEvents.clsEvents_AceptaSeleccion", Fault::Missing, VT_EMPTY, "may be missing"},
};

/// The object of the contract that a way leads to ("MyClase.Recordset.Fields"), and the member at its end.
std::pair<std::wstring, std::wstring> MemberAt(const std::wstring& way) {
    static const std::map<std::wstring, const wchar_t*> objects{{L"Clone", L"Recordset"},
                                                                {L"Fields.Item", L"Field"},
                                                                {L"Columns.Item", L"Column"},
                                                                {L"_NewEnum.Next", L"informe"}};
    const size_t dot = way.rfind(L'.');
    std::wstring object = way.substr(0, dot);
    for (const auto& [end, name] : objects) {
        object = object.ends_with(end) ? name : object;
    }
    return {object.substr(object.rfind(L'.') + 1), way.substr(dot + 1)};
}

/// The rows of the library's list for that member in that operation.
std::vector<const contract::Member*> RowsOf(const std::wstring& way, size_t operation) {
    const auto [object, name] = MemberAt(way);
    std::vector<const contract::Member*> rows;
    for (const contract::Member& row : contract::Members()) {
        const bool its = row.object == object || object == L"Entorno";
        if (its && (row.name == name || row.name == name + L"=") &&
            row.operations & contract::Bit(operation)) {
            rows.push_back(&row);
        }
    }
    return rows;
}

struct Scene {
    std::wstring error; // returned
    std::vector<std::wstring> told;
    std::map<std::wstring, VARTYPE> called;
    int struck = 0;
    std::vector<bool> kept;
    bool stuck = false;
};

class Faults : public WithEnvironment {
protected:
    void SetUp() override {
        WithEnvironment::SetUp();
        checks.reset(); // faults are passed on to where the contract knows none
        m_alive = Foreign::Alive();
    }
    void TearDown() override {
        for (const auto& [how, times] : m_ends) {
            std::printf("%6d %s\n", times, how.c_str());
        }
        Foreign::fault = Fault::None;
        WithEnvironment::TearDown();
    }
    com::ComPtr<IDispatch> Reached(IDispatch* object, const wchar_t* name) override {
        return Foreign::Wrap(object, name);
    }

    Scene Try(const Operation& operation, const wchar_t* keys, Fault fault = Fault::None,
              const std::wstring& member = L"") {
        Scene run;
        host.log.clear();
        Foreign::called.clear();
        Foreign::struck = 0;
        Foreign::member = member;
        Foreign::fault = fault;
        Foreign::act = [&] { Act(operation); };
        NewOwner();
        gdiSlack += operation.name == L"ShowNuevaCita"; // Wine's calendar keeps a font
        {
            Clerk clerk(owner, keys, m_all, [](const wchar_t* caption) {
                if (ToolCommand(caption) >= 0) {
                    ClickTool(caption);
                }
            });
            if (const auto error = Unwatched(operation)) {
                run.error = error->description;
            }
            for (MSG message; IsWindowVisible(Dialog()) &&
                              GetMessageW(&message, nullptr, 0, 0) > 0;) { // one that does not wait
                TranslateMessage(&message);
                DispatchMessageW(&message);
            }
            run.told = clerk.told;
            run.kept = clerk.kept;
            run.stuck = clerk.stuck;
        }
        Foreign::fault = Fault::None;
        run.struck = Foreign::struck;
        run.called = Foreign::called;
        return run;
    }
    void Act(const Operation& operation) {
        switch (Foreign::fault) {
        case Fault::ClosesWindow:
            DestroyWindow(owner);
            break;
        case Fault::PumpsKey:
            PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 1);
            for (MSG message; PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE);) {
                TranslateMessage(&message);
                DispatchMessageW(&message);
            }
            break;
        case Fault::CallsAgain:
            Unwatched(operation);
            break;
        case Fault::TakesTwoSeconds:
            Sleep(2000);
            break;
        default:
            break;
        }
    }

    static bool Names(const std::wstring& text, const std::wstring& member) {
        return text.find(member.substr(member.rfind(L'.') + 1)) != std::wstring::npos ||
               text.find(L"» no está establecido") !=
                   std::wstring::npos || // where an object should have come
               text.find(L"«ClsShowSerch»") !=
                   std::wstring::npos; // in the dialog that a dialog opens to look up
    }
    static const Silent* IsSilent(const std::wstring& member, Fault fault, VARTYPE answers) {
        const auto fits = [&](const Silent& each) {
            return std::wstring_view(member).ends_with(each.member) &&
                   (each.fault == Fault::None || each.fault == fault) &&
                   (each.answers == VT_EMPTY || each.answers == answers);
        };
        const auto found = std::ranges::find_if(kSilent, fits);
        return found != std::end(kSilent) ? &*found : nullptr;
    }

    /// What is wrong with how a fault ended; "" when nothing is.
    static std::wstring Verdict(const Scene& run, const Scene& clean, const std::wstring& operation,
                                const std::wstring& member, const FaultName& fault) {
        std::wstring wrong = run.stuck ? L" stuck" : L"";
        const bool judges = member.ends_with(L".ValidaKey") || member.ends_with(L".ValidaDefinedSize");
        for (size_t i = 0; !judges && i < std::min(run.kept.size(), clean.kept.size()); ++i) {
            wrong += clean.kept[i] && !run.kept[i] ? L" lost" : L"";
        }
        wrong += Dialog() ? L" left open" : L"";
        const bool told =
            std::ranges::any_of(run.told, [&](const auto& text) { return Names(text, member); });
        if (run.struck > 0 && !fault.silent && run.error.empty() && !told &&
            !IsSilent(operation + L" " + member, fault.fault, clean.called.at(member))) {
            wrong += L" unheard:";
            for (const std::wstring& text : run.told) {
                wrong += L" «" + text.substr(0, 120) + L"»";
            }
        }
        return wrong;
    }

    /// What is used is listed for that operation, and what is listed as always needed is used.
    static void ExpectListed(const Operation& operation, const std::map<std::wstring, VARTYPE>& called) {
        const size_t number = static_cast<size_t>(&operation - Operations().data());
        std::set<const contract::Member*> met;
        for (const auto& [way, answers] : called) {
            // Of the list that the appointment looks up in, which is the same object here; of no name.
            const bool others = (operation.name == L"ShowNuevaCita" && way.starts_with(L"MyClase.") &&
                                 way != L"MyClase.sClassName") ||
                                way.ends_with(L"(default)") || way.ends_with(L".Next");
            const auto rows = others ? std::vector<const contract::Member*>() : RowsOf(way, number);
            EXPECT_TRUE(others || !rows.empty()) << base::ToUtf8(way) << " is not listed for it";
            met.insert(rows.begin(), rows.end());
        }
        for (const contract::Member& row : contract::Members()) {
            const std::wstring_view object = row.object;
            const bool due = row.need == contract::Need::Always && row.operations & contract::Bit(number) &&
                             object != L"Recordset" && object != L"Field"; // read in one of several ways
            EXPECT_TRUE(!due || met.contains(&row))
                << base::ToUtf8(row.object + std::wstring(L".") + row.name) << " is listed, and not used";
        }
    }

    /// For a long run, with a line for each fault: the operations whose names begin so, with a period behind
    /// them ("*": all).
    static const wchar_t* Only() { return _wgetenv(L"TAMVELO_FAULTS"); }
    /// Instead of all that, the folder for the traces of each operation in use.
    static const wchar_t* Records() { return _wgetenv(L"TAMVELO_RECORD"); }

    /// Accepted, left, and refused by each member of the sink.
    void Record(const Operation& operation) {
        const std::wstring use = UseOf(operation.name);
        const auto traced = [&](const std::wstring& how, const std::wstring& keys, Fault fault = Fault::None,
                                const std::wstring& member = L"") {
            SetValue(kEnvironmentKey, L"Traza", Records() + (L"\\" + operation.name) + L" " + how + L".txt");
            Renew();
            return Try(operation, keys.c_str(), fault, member);
        };
        const Scene accepted = traced(L"aceptado", use);
        traced(L"dejado", use.substr(0, use.find(L":")));
        for (const auto& [member, answers] : accepted.called) {
            if (member.starts_with(L"objClsEvents.")) {
                traced(L"sin " + member.substr(member.find(L'.') + 1), use, Fault::Raises, member);
            }
        }
        CountObjects(); // what is left is looked at where nothing is recorded
    }

    /// All faults of all members that a clean run calls; unless it is a long run the daily ones, and of an
    /// operation that shares its form only what the others of that form did not call.
    void TryAll(const Operation& operation) {
        const std::wstring& name = operation.name;
        const wchar_t* const use = UseOf(name);
        const Scene clean = Try(operation, use);
        EXPECT_EQ(clean.error, L"");
        EXPECT_THAT(clean.told, IsEmpty());
        EXPECT_FALSE(clean.stuck);
        const bool looks = std::ranges::count(operation.parameters, L"ctl", &Parameter::name) > 0;
        host.text = L"A-1"; // to be found at opening
        ExpectListed(operation, looks ? Try(operation, use).called : clean.called);
        host.text.clear();
        const Scene opening = Try(operation, L"");
        CountObjects();
        gdiSlack = m_all ? 100 : 32; // of the system, for all the tries together
        for (const auto& [member, answers] : clean.called) {
            // Operations that are used alike have a form in common, and all grids read their records the same
            // way.
            const std::wstring where = member.find(L".Recordset.") == std::wstring::npos ? use : L"";
            if (!s_tried.insert(where + member).second && !m_all) {
                continue;
            }
            for (const FaultName& fault : kFaults) {
                if ((!m_all && !fault.daily) || (fault.answers && answers == VT_EMPTY)) {
                    continue;
                }
                const std::string line = base::ToUtf8(name + L" | " + member + L" | " + fault.name);
                if (m_all) {
                    std::printf("%s", line.c_str());
                    std::fflush(stdout);
                }
                const Scene run = Try(operation, use, fault.fault, member);
                const std::string wrong = base::ToUtf8(Verdict(run, clean, name, member, fault));
                EXPECT_EQ(wrong, "") << line;
                if (m_all) {
                    const char* how = run.struck == 0      ? "not met"
                                      : !run.error.empty() ? "returned"
                                      : !run.told.empty()  ? "told"
                                      : fault.silent       ? "goes on"
                                                           : "needed by nobody";
                    std::printf(" | %d times | %s |%s\n", run.struck, how, wrong.c_str());
                    ++m_ends[wrong.empty() ? how : "WRONG"];
                }
            }
            const Scene after = Try(operation, L"");
            EXPECT_EQ(after.called, opening.called) << "after the faults of " << base::ToUtf8(member);
            EXPECT_THAT(after.told, IsEmpty());
            EXPECT_EQ(after.error, L"");
            Renew();
            EXPECT_LE(Foreign::Alive(), m_alive) << base::ToUtf8(member);
        }
        ExpectObjects();
    }

private:
    const bool m_all = Only() || Records();
    static inline std::set<std::wstring> s_tried;
    std::map<std::string, int> m_ends;
    long m_alive = 0;
};

/// Operations that are used alike, in parts that can run side by side.
class EachUse : public Faults, public ::testing::WithParamInterface<std::wstring> {
public:
    static std::set<std::wstring> All() {
        std::set<std::wstring> all;
        std::ranges::transform(kUses, std::inserter(all, all.end()), &Use::keys);
        return all;
    }
};

TEST_P(EachUse, LivesTellsAndGoesOn) {
    for (const Operation& operation : Operations()) {
        const bool wanted = !Only() || *Only() == L'*' || (operation.name + L".").starts_with(Only());
        if (UseOf(operation.name) == GetParam() && wanted) {
            Records() ? Record(operation) : TryAll(operation);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, EachUse, ::testing::ValuesIn(EachUse::All()));

} // namespace
} // namespace tamvelo::testing
