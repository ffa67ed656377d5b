#include "contract/ReportCollection.h"

#include "base/MessageText.h"
#include "com/Collection.h"
#include "com/Error.h"

namespace tamvelo::contract {

namespace {

/// "" when it is no text and has no default value that is one.
std::wstring TextOf(const com::Variant& value) {
    try {
        return value.ToText();
    } catch (const com::Error&) {
        return {};
    }
}

std::wstring TitleOf(const com::Variant& item) {
    constexpr wchar_t kTitle[] = L"Titulo";
    com::LateObject report(item.IsObject() ? item.ToObject().Get() : nullptr, L"informe");
    return TextOf(report && report.Answers(kTitle) ? report.Call(kTitle) : item);
}

} // namespace

std::vector<std::wstring> ReportTitles(IDispatch* reports) {
    com::LateObject collection(reports, L"cReports");
    std::vector<std::wstring> titles;
    for (const com::Variant& item : com::ItemsOf(collection)) {
        const std::wstring title = TitleOf(item);
        titles.push_back(!title.empty() ? base::Shortened(title, base::kLongestLabel)
                                        : L"Informe " + std::to_wstring(titles.size() + 1));
    }
    return titles;
}

} // namespace tamvelo::contract
