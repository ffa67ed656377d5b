#include "demo/app/SampleFile.h"

#include <windows.h>

#include <commctrl.h>
#include <shlobj.h>

#include <chrono>
#include <future>

#include "com/Module.h"
#include "demo/app/Resources.h"
#include "demo/app/Server.h"
#include "demo/data/SampleData.h"

namespace tamvelo::demo {

namespace {

using namespace std::chrono_literals;

constexpr wchar_t kFile[] = L"\\TamveloDemo.sqlite";

bool Writable(const std::wstring& path) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    return file != INVALID_HANDLE_VALUE && CloseHandle(file);
}

std::wstring UsualPath() {
    std::wstring path = ProgramFolder() + kFile;
    if (wchar_t own[MAX_PATH];
        !Writable(path) &&
        SUCCEEDED(SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, own))) {
        const std::wstring folder = std::wstring(own) + L"\\Tamvelo";
        CreateDirectoryW(folder.c_str(), nullptr);
        path = folder + kFile;
    }
    return path;
}

using Work = std::future<std::shared_ptr<Database>>;

/// Keeps a progress window alive until the work is done.
void ShowProgress(Work& work) {
    const HWND progress = CreateDialogParamW(
        com::Module::Instance(), MAKEINTRESOURCEW(IDD_PROGRESO), nullptr,
        [](HWND window, UINT message, WPARAM, LPARAM) __attribute__((stdcall))->INT_PTR {
            if (message == WM_INITDIALOG) {
                SendDlgItemMessageW(window, IDC_PROGRESO, PBM_SETMARQUEE, TRUE, 0);
            }
            return message == WM_INITDIALOG;
        },
        0);
    while (work.wait_for(20ms) == std::future_status::timeout) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
    }
    DestroyWindow(progress);
}

} // namespace

std::shared_ptr<Database> OpenSampleFile(std::wstring path, long rows) {
    if (path.empty()) {
        path = UsualPath();
    }
    Work work = std::async(std::launch::async, [&path, rows] {
        return std::make_shared<Database>(OpenSampleData(path, rows > 0 ? rows : kDefaultArticles));
    });
    if (work.wait_for(400ms) == std::future_status::timeout) { // what is quicker shows no progress
        ShowProgress(work);
    }
    return work.get();
}

} // namespace tamvelo::demo
