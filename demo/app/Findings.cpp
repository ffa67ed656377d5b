#include "demo/app/Findings.h"

#include "base/Text.h"
#include "com/Error.h"
#include "demo/app/Server.h"

namespace tamvelo::demo {

namespace {

constexpr wchar_t kFile[] = L"\\TamveloDiagnostico.txt";

HANDLE Create(const std::wstring& path) {
    return CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

} // namespace

Findings::Findings() : m_path(ProgramFolder() + kFile), m_file(Create(m_path)) {
    if (m_file == INVALID_HANDLE_VALUE) {
        wchar_t folder[MAX_PATH];
        m_path.assign(folder, GetTempPathW(ARRAYSIZE(folder), folder)).append(kFile + 1);
        m_file = Create(m_path);
    }
    if (m_file == INVALID_HANDLE_VALUE) {
        com::ThrowLastError(L"No se puede escribir «" + m_path + L"».");
    }
    Write(L"\xFEFF"); // or older editors take it for something else
}

Findings::~Findings() { CloseHandle(m_file); }

void Findings::Write(std::wstring_view text) const {
    const std::string bytes = base::ToUtf8(text);
    DWORD written = 0;
    WriteFile(m_file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

void Findings::Part(std::wstring_view title) { Write(L"\r\n" + std::wstring(title) + L"\r\n"); }

void Findings::Add(Verdict verdict, std::wstring_view what, std::wstring_view found) {
    constexpr const wchar_t* kMarks[] = {L"          ", L"  bien    ", L"  AVISO   ", L"  FALLO   "};
    m_bad += verdict == Verdict::Bad ? 1 : 0;
    m_warnings += verdict == Verdict::Warning ? 1 : 0;
    std::wstring line = kMarks[static_cast<int>(verdict)] + std::wstring(what) + L": ";
    line += base::WithLineEnds(found, L" ");
    Write(line + L"\r\n");
}

bool Findings::End() {
    const auto count = [](long number, const wchar_t* one, const wchar_t* several) {
        return std::to_wstring(number) + (number == 1 ? one : several);
    };
    Write(L"\r\nResultado: " +
          (m_bad == 0 ? std::wstring(L"todo bien") : count(m_bad, L" fallo", L" fallos")) +
          (m_warnings == 0 ? L"" : L", " + count(m_warnings, L" aviso", L" avisos")) + L".\r\n");
    return m_bad == 0;
}

} // namespace tamvelo::demo
