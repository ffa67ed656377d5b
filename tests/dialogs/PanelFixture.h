#pragma once

#include "selection/Resources.h"
#include "tests/dialogs/DialogFixture.h"

namespace tamvelo::testing {

/// One call of an operation that opens a grid over the host's records; what it changes by reference is here
/// afterwards.
struct PanelCall {
    using Operation = decltype(&entry::IClsShowSerch::ShowSelec);
    Operation operation = &entry::IClsShowSerch::ShowSelec;
    short column = 0;
    short indx = 0;
    VARIANT_BOOL find = VARIANT_TRUE;
    short last = 0; // bStock, or iModal of the direct ones
};

inline Log operator+(Log first, const Log& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// What a search for "ma" asks.
inline const Log kSearch{L"CreateFilter(&TxtFields(0))", L"SetFilter(&\"campo=ma\", \"FilterSelec\")",
                         L"GetFilter(\"FilterSelec\")",  L"AplyFilter(\"campo=ma\")",
                         L"Requery(\"selec\")",          L"GetFilter(\"FilterSelec\")",
                         L"existenregistros()"};

/// The selection panel's operations.
class PanelTest : public DialogTest {
protected:
    explicit PanelTest(long records = 20) : DialogTest(records) {
        gdiSlack = 4; // what the system draws a window on, which comes and goes when one is hidden
    }

    /// Calls the operation with the script playing; the error that the host got, if any.
    std::optional<com::Error> Show(PanelCall& call, Script script);
    std::optional<com::Error> Show(PanelCall&& call, Script script) { return Show(call, std::move(script)); }
    std::optional<com::Error> Show(Script script) { return Show(PanelCall{}, std::move(script)); }
    /// The indirect operation, which has a text of its own.
    std::optional<com::Error> ShowIndirect(const wchar_t* text, short modal, Script script);
    /// As a late-bound caller, by name and with the three objects only.
    std::optional<com::Error> ShowLate(const wchar_t* operation, Script script);

    // Waits for a dialog over the panel, and for the panel again.
    static Script Elsewhere();
    static Script Back();
    // Goes to the search box, the button beside it, the list.
    static Script InBox() { return Into(IDC_TXTFIELDS0); }
    static Script OnButton() { return Into(IDC_CMDBUSCAR); }
    static Script InGrid() { return Into(IDC_DATAGRID); }
    static Script DoubleClick();

    static HWND Panel();
    /// A place in the first row of the grid, or in its heading, as a mouse message has it.
    static LPARAM FirstRow();
    static HWND Heading();

    static constexpr wchar_t kFormKey[] = L"SOFTWARE\\Tamvelo\\Tamvelo\\1.0\\Configuracion\\frmSeleccion";

private:
    void WarmUp() override;
};

} // namespace tamvelo::testing
