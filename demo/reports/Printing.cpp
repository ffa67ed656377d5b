#include "demo/reports/Printing.h"

#include "com/WinHeaders.h"

#include <winspool.h>

#include "com/Error.h"
#include "demo/data/Values.h"
#include "demo/reports/PageDrawing.h"

namespace tamvelo::demo {

namespace {

constexpr wchar_t kJob[] = L"Gestión de pedidos";

/// "" when there is none.
std::wstring DefaultPrinter() {
    DWORD size = 0;
    GetDefaultPrinterW(nullptr, &size);
    std::wstring name(size, L'\0');
    return size > 0 && GetDefaultPrinterW(name.data(), &size) ? name.substr(0, size - 1) : L"";
}

/// A device that is drawn on; given back when this goes.
class Device {
public:
    explicit Device(HDC handle) : m_handle(handle) {
        if (handle == nullptr) {
            com::ThrowLastError(L"No se puede usar la impresora.");
        }
    }
    ~Device() { DeleteDC(m_handle); }
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;
    HDC Handle() const { return m_handle; }

private:
    const HDC m_handle;
};

void CheckPrinted(int result) {
    if (result <= 0) {
        com::ThrowLastError(L"La impresora no ha aceptado el documento.");
    }
}

void PrintPages(const std::vector<Page>& pages, int copies, const std::wstring& printer) {
    const Device device(CreateDCW(L"WINSPOOL", printer.c_str(), nullptr, nullptr));
    const HDC paper = device.Handle();
    DOCINFOW job{};
    job.cbSize = sizeof job;
    job.lpszDocName = kJob;
    CheckPrinted(StartDocW(paper, &job));
    // The sheet begins before the place where the printer can print.
    const int left = -GetDeviceCaps(paper, PHYSICALOFFSETX);
    const int top = -GetDeviceCaps(paper, PHYSICALOFFSETY);
    const RECT sheet{left, top, left + GetDeviceCaps(paper, PHYSICALWIDTH),
                     top + GetDeviceCaps(paper, PHYSICALHEIGHT)};
    for (int copy = 0; copy < copies; ++copy) {
        for (const Page& page : pages) {
            CheckPrinted(StartPage(paper));
            DrawPage(paper, sheet, page);
            CheckPrinted(EndPage(paper));
        }
    }
    CheckPrinted(EndDoc(paper));
}

void SavePage(const Page& page, const std::wstring& path) {
    constexpr RECT kFrame{0, 0, kSheet.cx * 10, kSheet.cy * 10}; // hundredths of a millimetre
    const HDC device = CreateEnhMetaFileW(nullptr, path.c_str(), &kFrame, kJob);
    if (device == nullptr) {
        com::ThrowLastError(L"No se puede escribir «" + path + L"».");
    }
    const auto pixels = [&](int tenths, int resolution, int size) {
        return MulDiv(tenths, GetDeviceCaps(device, resolution), GetDeviceCaps(device, size) * 10);
    };
    DrawPage(device, {0, 0, pixels(kSheet.cx, HORZRES, HORZSIZE), pixels(kSheet.cy, VERTRES, VERTSIZE)},
             page);
    DeleteEnhMetaFile(CloseEnhMetaFile(device));
}

} // namespace

std::wstring Print(const std::vector<Report>& reports, int copies, const std::wstring& folder) {
    const std::vector<Page> pages = Paginate(reports);
    const std::wstring amount =
        ShowCount(static_cast<std::int64_t>(pages.size())) + (pages.size() == 1 ? L" página" : L" páginas");
    if (const std::wstring printer = DefaultPrinter(); !printer.empty()) {
        PrintPages(pages, copies, printer);
        return L"Impreso: " + amount + L" en «" + printer + L"», " + ShowCount(copies) +
               (copies == 1 ? L" copia" : L" copias");
    }
    CreateDirectoryW(folder.c_str(), nullptr);
    for (const Page& page : pages) {
        const std::wstring number = std::to_wstring(1001 + (&page - pages.data())).substr(1);
        std::wstring path = folder;
        SavePage(page, path.append(L"\\pagina-").append(number).append(L".emf"));
    }
    return L"No hay ninguna impresora; guardado: " + amount + L" como «" + folder + L"\\pagina-*.emf»";
}

} // namespace tamvelo::demo
