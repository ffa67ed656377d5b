#include "contract/ReportCollection.h"

#include "com/Collection.h"

namespace tamvelo::contract {

std::vector<std::wstring> ReportTitles(IDispatch* reports) {
    com::LateObject collection(reports, L"cReports");
    std::vector<std::wstring> titles;
    for (const com::Variant& item : com::ItemsOf(collection)) {
        constexpr wchar_t kTitle[] = L"Titulo";
        if (com::LateObject report(item.IsObject() ? item.ToObject().Get() : nullptr, L"informe");
            report && report.Answers(kTitle)) {
            titles.push_back(report.Call(kTitle).ToText());
        } else {
            titles.push_back(item.ToText());
        }
    }
    return titles;
}

} // namespace tamvelo::contract
