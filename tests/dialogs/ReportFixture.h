#pragma once

#include "com/WinHeaders.h"

#include <commctrl.h>

#include <variant>

#include "base/DateRanges.h"
#include "com/Collection.h"
#include "frame/Resources.h"
#include "reports/Resources.h"
#include "tests/dialogs/DialogFixture.h"
#include "tests/support/Component.h"

namespace tamvelo::testing {

inline base::DateRange ThisMonth() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return base::WholeMonth(*base::ToDay({now.wYear, now.wMonth, now.wDay}));
}

/// A range as the log writes its dates.
inline std::wstring Logged(const base::DateRange& range) {
    wchar_t text[40];
    const base::CalendarDate first = base::ToDate(range.first);
    const base::CalendarDate last = base::ToDate(range.last);
    wsprintfW(text, L"#%04d-%02d-%02d#, #%04d-%02d-%02d#", first.year, first.month, first.day, last.year,
              last.month, last.day);
    return text;
}

/// The report dialogs over three reports.
class Reports : public DialogTest {
protected:
    using Server = entry::IClsShowSerch;
    using Plain = decltype(&Server::ShowRpt);
    using WithAuto = decltype(&Server::ShowRptFchAuto);
    using Operation = std::variant<Plain, WithAuto>;

    Reports() {
        host.TextCells();
        gdiSlack = 16; // a hidden window leaves pictures that the system keeps for others
        for (const wchar_t* member :
             {L"AceptarReports", L"AceptarReportsParam", L"AceptarReportsParamMail", L"AceptarReportsParamHr",
              L"AceptarReportsFchAuto", L"AceptarReportsInformesParam", L"AceptarInformesFchAuto",
              L"AceptarInformesFch", L"AceptarInformesFchAutoTipoTime", L"AceptarDocNumAut",
              L"AceptarListasParam", L"AceptarEtiqueta"}) {
            host.sink->On(member, [](com::Invocation& call) { // which changes what it gets by reference
                call.WriteBack(1, com::Variant(short{9}));
                call.WriteBack(2, com::Variant(short{9}));
            });
        }
    }
    void WarmUp() override {
        Show(&Server::ShowRptCond, Key(VK_ESCAPE));
        Show(&Server::ShowRptCond, {Copies(L""), Key(VK_RETURN), Box(L"copias")}, L"Otra");
        Show(&Server::ShowRptCond, Key(VK_ESCAPE));
    }
    void TearDown() override {
        component.reset();
        DialogTest::TearDown();
    }
    std::optional<com::Error> Show(Operation operation, Script script,
                                   const std::wstring& screen = L"Pedidos",
                                   VARIANT_BOOL showAuto = VARIANT_TRUE) {
        com::Bstr cls(screen);
        std::vector<com::Variant> texts;
        for (const std::wstring& title : titles) {
            texts.emplace_back(title);
        }
        com::ComPtr<IDispatch> list = reports ? reports : com::MakeCollection(std::move(texts));
        return Play(std::move(script), [&] {
            BSTR* const text = cls.Address();
            IDispatch** const to = sink.GetAddressOf();
            IDispatch** const from = list.GetAddressOf();
            return std::holds_alternative<Plain>(operation)
                       ? (server.Get()->*std::get<Plain>(operation))(text, to, from)
                       : (server.Get()->*std::get<WithAuto>(operation))(text, to, from, &showAuto);
        });
    }
    /// A component of the environment.
    void Offer(const wchar_t* setting, HostObject& object) {
        component.emplace(&object);
        SetValue(kEnvironmentKey, setting, component->Name());
    }
    /// The control of the dialog's condition of that place.
    static HWND Part(int condition) { return Item(IDC_CONDITIONS + 4 * condition + 1); }
    // What the user does to it: writes a text, chooses an entry, ticks.
    static Script Set(int condition, const wchar_t* text) {
        return Do([=] { SetWindowTextW(Part(condition), text); });
    }
    static Script Choose(int condition, int entry) {
        return Do([=] {
            SendMessageW(Part(condition), CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
            SendMessageW(Dialog(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(Part(condition)), CBN_SELCHANGE),
                         reinterpret_cast<LPARAM>(Part(condition)));
        });
    }
    static Script Tick(int condition) {
        return Do([=] { SendMessageW(Part(condition), BM_CLICK, 0, 0); });
    }
    // And what it then is.
    static Script Holds(int condition, const std::wstring& text) {
        return Do([=] { EXPECT_EQ(TextOf(Part(condition)), text); });
    }
    static Script Enabled(int condition, bool enabled) {
        return Do([=] { EXPECT_EQ(IsWindowEnabled(Part(condition)) != FALSE, enabled) << condition; });
    }
    static Script Copies(const wchar_t* text) {
        return Do([=] { SetWindowTextW(Item(IDC_TXTCOPIAS), text); });
    }
    static Script Output(int entry) {
        return Do([=] { SendMessageW(Item(IDC_CMBSELEC), CB_SETCURSEL, static_cast<WPARAM>(entry), 0); });
    }
    static std::wstring ChoicesKey(const wchar_t* form, const std::wstring& screen) {
        return FormKey(form) + L"\\rpts" + screen;
    }

    const std::wstring month = Logged(ThisMonth());
    std::vector<std::wstring> titles{L"Listado", L"Resumen", L"Etiquetas"};
    com::ComPtr<IDispatch> reports; // in place of the titles
    std::optional<Component> component;
};

} // namespace tamvelo::testing
