#include "demo/check/Checker.h"

#include <algorithm>
#include <map>

#include "base/SelectionAnswers.h"
#include "base/Text.h"
#include "com/Error.h"
#include "demo/check/Probes.h"

namespace tamvelo::demo {

namespace {

using contract::Effect;
using contract::Member;
using contract::Need;

/// The roles, and the names under which a host may give the object.
struct Role {
    const wchar_t* name;
    std::vector<const wchar_t*> names;
};
const Role kRoles[] = {{L"MyClase", {L"MyClase"}},
                       {L"objClsEvents", {L"objClsEvents", L"ClsEventos", L"objClsEventos"}},
                       {L"ctl", {L"ctl"}},
                       {L"Columns", {L"Columns"}},
                       {L"cReports", {L"cReports"}}};

enum class State { Good, There, Missing, Wrong, Fails };

struct Finding {
    const Member* row;
    State state;
    std::wstring text; // what it answered, or what is wrong
};

std::wstring OneLine(std::wstring text) {
    std::ranges::replace(text, L'\n', L' ');
    std::erase(text, L'\r');
    return text;
}

std::wstring Padded(std::wstring text, size_t width) {
    text.resize(std::max(text.size() + 1, width), L' ');
    return text;
}

bool IsEnvironment(const Member& row) {
    static constexpr std::wstring_view kComponents[] = {L"Configuracion", L"Archivos", L"Errores",
                                                        L"Clases",        L"Citas",    L"Foco"};
    return std::ranges::find(kComponents, row.object) != std::end(kComponents);
}

/// Rows differ in what the member is needed for.
bool SameCall(const Member& a, const Member& b) {
    return std::wstring_view(a.object) == b.object && std::wstring_view(a.name) == b.name &&
           std::wstring_view(a.arguments) == b.arguments;
}

class Check {
public:
    Check(const CheckRequest& request, const SayLine& say) : m_request(request), m_say(say) {}

    bool Run() {
        const auto operations = contract::Operations();
        for (const std::wstring& name : base::Split(m_request.operations, L",")) {
            if (name.empty()) {
                continue;
            }
            const auto found = std::ranges::find(
                operations, name, [](const auto& each) { return std::wstring_view(each.name); });
            if (found == operations.end()) {
                throw com::Error(E_INVALIDARG, L"No hay ninguna operación «" + name + L"».", L"comprobar");
            }
            m_asked |= contract::Bit(static_cast<size_t>(found - operations.begin()));
        }
        Take(m_source.Object());
        LookOver();
        m_probes.PutBack();
        TellMembers();
        return TellOperations();
    }

private:
    /// By the names of its roles; else one object that is all that it looks like.
    void Take(com::LateObject& host) {
        bool any = false;
        for (const Role& role : kRoles) {
            for (const wchar_t* name : role.names) {
                if (!m_probes.Find(role.name) && host.Answers(name)) {
                    m_probes.Give(role.name, host.Call(name).ToObject());
                    any = any || m_probes.Find(role.name);
                }
            }
        }
        for (const Member& row : contract::Members()) {
            const bool role = std::ranges::any_of(
                kRoles, [&](const Role& each) { return row.object == std::wstring_view(each.name); });
            const bool telling = row.object != std::wstring_view(L"Columns") &&
                                 row.object != std::wstring_view(L"cReports") && row.name[0] != L'_';
            if (!any && role && telling && !m_probes.Find(row.object) && host.Answers(row.name)) {
                m_probes.Give(row.object, com::ComPtr<IDispatch>(host.Get()));
            }
        }
        if (std::ranges::none_of(kRoles, [&](const Role& role) { return m_probes.Find(role.name); })) {
            throw com::Error(
                E_INVALIDARG,
                L"«" + m_request.source +
                    L"» no da ningún objeto de un anfitrión: ni MyClase, ni objClsEvents, ni ctl, "
                    L"ni Columns, ni cReports.",
                L"comprobar");
        }
    }

    /// In the order in which a dialog comes by its objects.
    void LookOver() {
        const auto first = [](const Member& row) {
            return row.object == std::wstring_view(L"MyClase") &&
                   (row.name == std::wstring_view(L"sClassName") ||
                    (row.name == std::wstring_view(L"Requery") && *row.arguments));
        };
        const auto records = [](const Member& row) {
            return row.object == std::wstring_view(L"Recordset") ||
                   std::wstring_view(row.object).starts_with(L"Field");
        };
        Ask(first);
        const bool wanted = std::ranges::any_of(contract::Members(), [&](const Member& row) {
            return row.object == std::wstring_view(L"Recordset") && Wanted(row.operations);
        });
        if (m_probes.Find(L"MyClase") && wanted) {
            try {
                m_probes.FindRecords();
            } catch (const com::Error& error) {
                m_noRecords = com::DescriptionWithCall(error);
            }
        }
        Ask(records);
        Ask([&](const Member& row) { return !first(row) && !records(row); });
        std::ranges::sort(m_findings, {}, &Finding::row); // as they are listed
    }

    bool Wanted(contract::OperationSet operations) const { return !m_asked || (m_asked & operations) != 0; }

    template <class Rows>
    void Ask(const Rows& rows) {
        for (const Member& row : contract::Members()) {
            com::LateObject* const object =
                rows(row) && Wanted(row.operations) ? m_probes.Find(row.object) : nullptr;
            if (object) {
                const auto before = std::ranges::find_if(
                    m_findings, [&](const Finding& each) { return SameCall(*each.row, row); });
                Finding finding = before != m_findings.end() ? *before : Look(*object, row);
                finding.row = &row;
                m_findings.push_back(std::move(finding));
            }
        }
    }

    Finding Look(com::LateObject& object, const Member& row) {
        std::wstring name = row.name;
        name.erase(name.find_last_not_of(L'=') + 1);
        const bool byNumber = name[0] == L'_'; // an enumerator has no name that one could ask for
        if (!byNumber && !object.Answers(name.c_str())) {
            return {&row, State::Missing, L""};
        }
        try {
            m_source.TakeError();
            const auto answer = m_probes.Call(row);
            return {&row,
                    answer     ? State::Good
                    : byNumber ? State::Missing
                               : State::There,
                    answer.value_or(L"")};
        } catch (const com::Error& error) {
            if (byNumber) {
                return {&row, State::Missing, L""};
            }
            // What the host itself says has a call; what could not be made of its answer has none.
            const bool wrong = error.call.empty() && error.number == DISP_E_TYPEMISMATCH;
            com::Error whole = error;
            if (const auto said = m_source.TakeError()) {
                whole.description = said->description;
            }
            return {&row, wrong ? State::Wrong : State::Fails, com::DescriptionWithCall(whole)};
        }
    }

    static std::wstring Described(const Finding& finding) {
        switch (finding.state) {
        case State::Good:
            return finding.text.empty() ? L"responde" : L"responde " + finding.text;
        case State::There:
            return finding.row->effect == Effect::Writes ? L"está; no se ha llamado, porque cambia algo"
                                                         : L"está";
        case State::Missing:
            return finding.row->need == Need::Optional   ? L"no está, ni hace falta"
                   : finding.row->need == Need::EitherOf ? L"no está"
                                                         : L"FALTA";
        case State::Wrong:
            return L"RESPONDE OTRO TIPO: " + finding.text;
        default:
            return L"FALLA: " + finding.text;
        }
    }

    /// With the number of arguments, where the member is called in several ways.
    static std::wstring Label(const Member& row) {
        const bool several = std::ranges::any_of(contract::Members(), [&](const Member& other) {
            return std::wstring_view(row.object) == other.object &&
                   std::wstring_view(row.name) == other.name &&
                   std::wstring_view(row.arguments) != other.arguments;
        });
        const std::wstring_view list = row.arguments;
        const auto count = list.empty() ? 0 : 1 + std::ranges::count(list, L',');
        const std::wstring arguments =
            count == 0 ? L" sin argumentos"
                       : L" con " + std::to_wstring(count) + (count == 1 ? L" argumento" : L" argumentos");
        return several ? row.name + arguments : row.name;
    }

    void TellMembers() {
        std::wstring_view object;
        std::vector<std::wstring> told;
        for (const Finding& finding : m_findings) {
            const Member& row = *finding.row;
            if (object != row.object) {
                object = row.object;
                told.clear();
                m_say(L"");
                m_say(object);
            }
            // One line for what is needed in several ways, by the first of them, which weighs most.
            const std::wstring name = Label(row);
            if (std::ranges::find(told, name) == told.end()) {
                told.push_back(name);
                m_say(L"  " + Padded(name, 40) + OneLine(Described(finding)));
            }
        }
        if (!m_noRecords.empty()) {
            m_say(L"");
            m_say(L"Conjunto de registros");
            m_say(L"  FALLA: " + OneLine(m_noRecords));
        }
    }

    /// The one of the two that this class is answered by; a double click may have an answer of its own.
    bool IsAnsweredBy(const Member& row, size_t operation) const {
        const std::wstring_view form = contract::Operations()[operation].form;
        const base::Answer answer = form == L"frmRegistros"  ? base::AnswerInBrowser(m_probes.ClassName())
                                    : form == L"frmSelecAdd" ? base::AnswerInAddPanel(m_probes.ClassName())
                                                             : base::AnswerFor(m_probes.ClassName());
        const bool one = row.name == std::wstring_view(L"AceptarSeleccion");
        return (answer.member == base::SinkMember::AceptarSeleccion) == one ||
               (one && base::DoubleClickAnswerFor(m_probes.ClassName()));
    }

    /// What an operation is told to be, and whether the host is ready; nothing is when it has not given the
    /// objects.
    std::pair<std::wstring, std::optional<bool>> Verdict(size_t operation) {
        std::wstring blocks;
        std::wstring lacks;
        const auto add = [](std::wstring& list, const std::wstring& name) {
            list += list.find(name) == std::wstring::npos ? (list.empty() ? L"" : L", ") + name : L"";
        };
        std::map<std::wstring_view, bool> either; // by object, whether there is one of them
        for (const Member& row : contract::Members()) {
            if (!(row.operations & contract::Bit(operation)) || IsEnvironment(row) ||
                row.need == Need::Optional) {
                continue;
            }
            const bool role = std::ranges::any_of(
                kRoles, [&](const Role& each) { return row.object == std::wstring_view(each.name); });
            if (role && !m_probes.Find(row.object)) {
                return {L"sin comprobar: no se ha dado «" + std::wstring(row.object) + L"»", std::nullopt};
            }
            const std::wstring name = std::wstring(row.object) + L"." + row.name;
            const auto finding = std::ranges::find(m_findings, &row, &Finding::row);
            const bool good = finding == m_findings.end() || finding->state == State::Good ||
                              finding->state == State::There;
            const bool answer = row.object == std::wstring_view(L"objClsEvents");
            if (row.need == Need::EitherOf && !(answer && IsAnsweredBy(row, operation))) {
                either[row.object] |= answer || (finding != m_findings.end() && good);
            } else if (!good) {
                add(row.need == Need::Command ? lacks : blocks, name);
            }
            if (row.object == std::wstring_view(L"Recordset") && !m_noRecords.empty()) {
                add(blocks, L"un conjunto de registros");
            }
        }
        for (const auto& [object, there] : either) {
            if (!there && (m_noRecords.empty() || object != L"Recordset")) {
                add(blocks, OneOf(object, operation));
            }
        }
        if (!blocks.empty()) {
            return {L"NO, por " + blocks, false};
        }
        return lacks.empty() ? std::pair{std::wstring(L"lista"), std::optional(true)}
                             : std::pair{L"abre, pero le falta " + lacks, std::optional(false)};
    }

    static std::wstring OneOf(std::wstring_view object, size_t operation) {
        std::wstring names;
        for (const Member& row : contract::Members()) {
            if (row.object == object && row.need == Need::EitherOf &&
                row.operations & contract::Bit(operation)) {
                names += (names.empty() ? L"" : L" o ") + std::wstring(object) + L"." + row.name;
            }
        }
        return names;
    }

    bool TellOperations() {
        m_say(L"");
        m_say(L"Operaciones");
        int ready = 0;
        int asked = 0;
        for (size_t i = 0; i < contract::Operations().size(); ++i) {
            if (!Wanted(contract::Bit(i))) {
                continue;
            }
            const contract::Operation& operation = contract::Operations()[i];
            const auto [text, good] = Verdict(i);
            m_say(L"  " + Padded(operation.name, 23) + Padded(operation.form, 23) + text);
            asked += good || m_asked ? 1 : 0;
            ready += good.value_or(false) ? 1 : 0;
        }
        m_say(L"");
        m_say(std::to_wstring(ready) + L" de " + std::to_wstring(asked) + L" listas" +
              (m_request.write ? L"." : L"; con --escribir se llama también a lo que cambia algo."));
        return asked > 0 && ready == asked;
    }

    const CheckRequest& m_request;
    const SayLine& m_say;
    contract::OperationSet m_asked = 0; // none: all
    HostSource m_source{m_request.source, m_say};
    Probes m_probes{m_request.write};
    std::vector<Finding> m_findings;
    std::wstring m_noRecords; // why there is no record set
};

} // namespace

bool CheckHost(const CheckRequest& request, const SayLine& say) { return Check(request, say).Run(); }

} // namespace tamvelo::demo
