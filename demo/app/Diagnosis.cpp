#include "demo/app/Diagnosis.h"

#include "demo/app/CommandLine.h"
#include "demo/app/Console.h"
#include "demo/app/Describe.h"
#include "demo/app/Hands.h"
#include "demo/app/Visitor.h"
#include "demo/host/HostObjects.h"

namespace tamvelo::demo {

namespace {

using Verdict = Findings::Verdict;

/// What was wrong; empty when it was as it should be. `found` is what to say then.
std::wstring Try(MainWindow& window, const Operation& operation, Findings& findings, std::wstring& found) {
    std::wstring heard;
    Visitor visitor(window.Handle(), operation.name, {}, VK_ESCAPE);
    visitor.gaveUp = [&](const std::wstring& text) {
        findings.Add(Verdict::Bad, operation.name, text);
        findings.End();
        Say(findings.Path());
    };
    try {
        window.Perform(operation, window.Fields().For(L"articulos"), [&](Request& request) {
            // Only listens: what is to be printed at once is not.
            request.sink = MakeSink(
                [&heard](std::wstring_view member, com::Invocation&) { heard.append(L", ").append(member); });
        });
        UntilAlone(window.Handle());
    } catch (...) {
        return Describe(AnyCurrentError());
    }
    const bool dialog = !std::wstring_view(operation.name).starts_with(L"Print");
    if (dialog || visitor.OpenedAfter() > 0) {
        found = std::to_wstring(visitor.OpenedAfter()) + L" ms" + heard;
        return visitor.Complaint();
    }
    found = L"sin diálogo" + heard;
    return heard.empty() ? L"no responde" : L"";
}

} // namespace

void TryOperations(MainWindow& window, Findings& findings, const std::wstring& only) {
    findings.Part(L"Las operaciones: abrir sobre datos de ejemplo, y cancelar");
    bool any = false;
    for (const Operation& operation : Operations()) {
        if (!IsWanted(only, operation.name)) {
            continue;
        }
        any = true;
        std::wstring found;
        const std::wstring complaint = Try(window, operation, findings, found);
        findings.Add(complaint.empty() ? Verdict::Good : Verdict::Bad, operation.name,
                     complaint.empty() ? found : complaint);
        window.Forget();
    }
    if (!any) {
        findings.Add(Verdict::Bad, only, L"no hay ninguna operación de ese nombre");
    }
}

} // namespace tamvelo::demo
