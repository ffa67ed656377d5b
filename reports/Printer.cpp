#include "reports/Printer.h"

#include <commdlg.h>
#include <dlgs.h>
#include <winspool.h>

#include "com/Error.h"

namespace tamvelo::reports {

namespace {

constexpr HRESULT kNoPrinter = static_cast<HRESULT>(0x800A6FF8); // the common dialogs' number 28664

/// The name inside the block that the print dialog leaves, which is freed.
std::wstring TakeDeviceName(HGLOBAL block) {
    std::wstring name;
    if (const auto* names = static_cast<const DEVNAMES*>(GlobalLock(block))) {
        name = reinterpret_cast<const wchar_t*>(names) + names->wDeviceOffset;
        GlobalUnlock(block);
    }
    GlobalFree(block);
    return name;
}

/// Takes out of the system's dialog what nobody would keep: paper, orientation and the properties. The
/// buttons move up to the group of the printer, which stays.
UINT_PTR CALLBACK OfferOnlyThePrinter(HWND dialog, UINT message, WPARAM /*first*/, LPARAM /*second*/) {
    const HWND group = message == WM_INITDIALOG ? GetDlgItem(dialog, grp4) : nullptr;
    if (!group) {
        return message == WM_INITDIALOG;
    }
    RECT whole{};
    RECT printer{};
    RECT button{};
    GetWindowRect(dialog, &whole);
    GetWindowRect(group, &printer);
    GetWindowRect(GetDlgItem(dialog, IDOK), &button);
    const LONG lift = button.top - printer.bottom - (button.bottom - button.top) / 2;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const int id = GetDlgCtrlID(child);
        RECT place{};
        GetWindowRect(child, &place);
        if (id == IDOK || id == IDCANCEL) {
            POINT corner{place.left, place.top - lift};
            ScreenToClient(dialog, &corner);
            SetWindowPos(child, nullptr, corner.x, corner.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        } else if (id == psh2 || place.top >= printer.bottom) {
            ShowWindow(child, SW_HIDE);
        }
    }
    SetWindowPos(dialog, nullptr, 0, 0, whole.right - whole.left, whole.bottom - whole.top - lift,
                 SWP_NOMOVE | SWP_NOZORDER);
    return TRUE;
}

} // namespace

std::wstring DefaultPrinter() {
    DWORD size = 0;
    GetDefaultPrinterW(nullptr, &size);
    std::wstring name(size, L'\0');
    if (size == 0 || !GetDefaultPrinterW(name.data(), &size)) {
        return {};
    }
    name.resize(size - 1);
    return name;
}

bool ChoosePrinter(HWND owner) {
    if (DefaultPrinter().empty()) {
        throw com::Error(kNoPrinter, L"No hay ninguna impresora instalada.");
    }
    PRINTDLGW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    // Which of the two is asked in this kind of the dialog depends on the system.
    dialog.Flags = PD_PRINTSETUP | PD_ENABLESETUPHOOK | PD_ENABLEPRINTHOOK;
    dialog.lpfnSetupHook = dialog.lpfnPrintHook = OfferOnlyThePrinter;
    if (!PrintDlgW(&dialog)) {
        const DWORD error = CommDlgExtendedError();
        if (error != 0) {
            throw com::Error(static_cast<HRESULT>(0x800A0000 | (error & 0xFFFF)),
                             L"No se puede abrir el diálogo de la impresora.");
        }
        return false; // cancelled
    }
    GlobalFree(dialog.hDevMode);
    const std::wstring chosen = TakeDeviceName(dialog.hDevNames);
    if (!SetDefaultPrinterW(chosen.c_str())) {
        com::ThrowLastError(L"No se puede cambiar a la impresora «" + chosen + L"».");
    }
    return true;
}

} // namespace tamvelo::reports
