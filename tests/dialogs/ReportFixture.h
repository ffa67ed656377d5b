#pragma once

#include <variant>

#include "base/DateRanges.h"
#include "com/Collection.h"
#include "reports/Resources.h"
#include "tests/dialogs/DialogFixture.h"
#include "tests/support/Component.h"

namespace tamvelo::testing {

/// Today's month as the log writes dates.
inline std::wstring Month() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    const base::DateRange range = base::WholeMonth(*base::ToDay({now.wYear, now.wMonth, now.wDay}));
    const auto text = [](base::Day day) {
        const base::CalendarDate date = base::ToDate(day);
        wchar_t written[16];
        wsprintfW(written, L"#%04d-%02d-%02d#", date.year, date.month, date.day);
        return std::wstring(written);
    };
    return text(range.first) + L", " + text(range.last);
}

/// The report dialogs over three reports.
class Reports : public DialogTest {
protected:
    using Server = entry::IClsShowSerch;
    using Plain = decltype(&Server::ShowRpt);
    using WithAuto = decltype(&Server::ShowRptFchAuto);
    using Operation = std::variant<Plain, WithAuto>;

    Reports() {
        gdiSlack =
            16; // a window that is hidden before it goes leaves pictures that the system keeps for others
        for (const wchar_t* member :
             {L"AceptarReports", L"AceptarReportsParam", L"AceptarReportsParamMail", L"AceptarReportsParamHr",
              L"AceptarReportsFchAuto", L"AceptarReportsInformesParam", L"AceptarInformesFchAuto",
              L"AceptarInformesFch", L"AceptarInformesFchAutoTipoTime", L"AceptarDocNumAut",
              L"AceptarListasParam", L"AceptarEtiqueta"}) {
            host.sink->On(member, [](com::Invocation&) {});
        }
    }
    void WarmUp() override {
        Show(&Server::ShowRptCond, Script().Key(VK_ESCAPE));
        Show(&Server::ShowRptCond, L"Otra",
             Script().Do([] { SetWindowTextW(Item(IDC_TXTCOPIAS), L""); }).Key(VK_RETURN).Box(L"copias"));
        Show(&Server::ShowRptCond, Script().Key(VK_ESCAPE));
    }
    std::optional<com::Error> Show(Operation operation, const std::wstring& screen, Script script,
                                   VARIANT_BOOL showAuto = VARIANT_TRUE) {
        com::Bstr cls(screen);
        com::ComPtr<IDispatch> list = reports ? reports : Titles(titles);
        return Play(std::move(script), [&] {
            BSTR* const text = cls.Address();
            IDispatch** const to = sink.GetAddressOf();
            IDispatch** const from = list.GetAddressOf();
            return std::holds_alternative<Plain>(operation)
                       ? (server.Get()->*std::get<Plain>(operation))(text, to, from)
                       : (server.Get()->*std::get<WithAuto>(operation))(text, to, from, &showAuto);
        });
    }
    std::optional<com::Error> Show(Operation operation, Script script) {
        return Show(operation, L"Pedidos", std::move(script));
    }
    static com::ComPtr<IDispatch> Titles(const std::vector<std::wstring>& texts) {
        std::vector<com::Variant> items;
        for (const std::wstring& text : texts) {
            items.emplace_back(text);
        }
        return com::MakeCollection(std::move(items));
    }
    /// The control of the dialog's condition of that place.
    static HWND Part(int condition) { return Item(IDC_CONDITIONS + 4 * condition + 1); }
    static Script TypeInto(int condition, const wchar_t* text) {
        return Script().Do([=] { SetFocus(Part(condition)); }).Type(text);
    }
    static void Choose(int condition, int entry) {
        SendMessageW(Part(condition), CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
        SendMessageW(Dialog(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(Part(condition)), CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(Part(condition)));
    }
    static Script Copies(const wchar_t* text) {
        return Script().Do([text] { SetWindowTextW(Item(IDC_TXTCOPIAS), text); });
    }
    static std::wstring ChoicesKey(const wchar_t* form, const std::wstring& screen) {
        return FormKey(form) + L"\\rpts" + screen;
    }

    std::vector<std::wstring> titles{L"Listado", L"Resumen", L"Etiquetas"};
    com::ComPtr<IDispatch> reports; // in place of the titles
};

} // namespace tamvelo::testing
