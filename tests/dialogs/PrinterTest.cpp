// The printer of a report dialog: named, chosen in the system's dialog, and what belongs to it.
#include "com/WinHeaders.h"

#include <dlgs.h>
#include <winspool.h>

#include <memory>

#include "reports/Resources.h"
#include "tests/dialogs/DialogFixture.h"

namespace tamvelo::testing {
namespace {

struct PrinterRemoval {
    void operator()(HANDLE printer) const {
        DeletePrinter(printer);
        ClosePrinter(printer);
    }
};

/// A printer of this machine. The user's choice of it is kept in the test's own registry.
std::unique_ptr<void, PrinterRemoval> MakePrinter() {
    wchar_t driver[] = L"PS Driver";
    wchar_t file[] = L"wineps.drv";
    wchar_t raw[] = L"RAW";
    DRIVER_INFO_3W information{};
    information.cVersion = 3;
    information.pName = driver;
    information.pDriverPath = information.pConfigFile = information.pDataFile = file;
    information.pDefaultDataType = raw;
    AddPrinterDriverExW(nullptr, 3, reinterpret_cast<BYTE*>(&information), // may be there already
                        APD_COPY_NEW_FILES | APD_COPY_FROM_DIRECTORY);
    wchar_t name[] = L"Prueba";
    wchar_t port[] = L"FILE:";
    wchar_t processor[] = L"winprint";
    PRINTER_INFO_2W printer{};
    printer.pPrinterName = name;
    printer.pPortName = port;
    printer.pDriverName = driver;
    printer.pPrintProcessor = processor;
    printer.pDatatype = raw;
    std::unique_ptr<void, PrinterRemoval> made(AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&printer)));
    EXPECT_TRUE(made && SetDefaultPrinterW(name)) << GetLastError();
    return made;
}

class Impresora : public DialogTest {
protected:
    Impresora() { gdiSlack = 80; } // what the system keeps of its printer dialog
    void Show(const Script& script) {
        const auto reports = com::MakeCollection({Variant(L"Listado")});
        EXPECT_FALSE(PlayLate(L"ShowRpt", {L"Pedidos", sink.Get(), reports.Get()}, script));
    }
};

TEST_F(Impresora, IsChosenInTheSystemsDialogAndCopiesAreItsOwn) {
    const auto copies = [](const wchar_t* shown) {
        return Looks({IDC_LBLCOPIAS, IDC_TXTCOPIAS, IDC_CMDPRINTER}, shown);
    };
    Show({copies(L"xxx"), Click(IDC_CMDPRINTER), Box(L"No hay ninguna impresora"), Set(IDC_TXTCOPIAS, L"9"),
          Into(IDC_TXTCOPIAS), L"Up Up", Into(IDC_CMBSELEC), L"Down", copies(L"ooo"), L"Enter"});
    const auto printer = MakePrinter();
    const Script choose{Click(IDC_CMDPRINTER),
                        Until("the printer dialog", [](HWND top) { return top != Dialog(); }),
                        Do([] { // only what is kept
                            EXPECT_TRUE(IsWindowVisible(GetDlgItem(TopWindow(), cmb1)));
                            for (const int id : {psh2, cmb2, cmb3, rad1, rad2}) {
                                EXPECT_FALSE(IsWindowVisible(GetDlgItem(TopWindow(), id))) << id;
                            }
                        })};
    const Script back{Showing(IDC_LBLPRINTER), Says(IDC_LBLPRINTER, L"Prueba")};
    // The choice is there again, and the copies travel also to where they do not belong.
    Show({copies(L"ooo"), Into(IDC_CMBSELEC), L"Up", copies(L"xxx"), choose, L"Esc", back, choose, L"Enter",
          back, Into(IDC_LIST1), L"Enter"});
    EXPECT_THAT(TakeLog(),
                ElementsAre(L"AceptarReports(&[False], &1, &11)", L"AceptarReports(&[False], &0, &11)"));
}

} // namespace
} // namespace tamvelo::testing
