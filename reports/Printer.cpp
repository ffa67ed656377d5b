#include "reports/Printer.h"

#include <commdlg.h>
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
    dialog.Flags = PD_PRINTSETUP;
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
