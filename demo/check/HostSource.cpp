#include "demo/check/HostSource.h"

#include <activscp.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <type_traits>
#include <utility>

#include "base/Text.h"
#include "com/Automation.h"
#include "com/CallOut.h"

namespace tamvelo::demo {

namespace {

using com::ComPtr;

// Scripts are handed over in as many bits as addresses have.
using ScriptParse =
    std::conditional_t<sizeof(void*) == sizeof(DWORD), IActiveScriptParse32, IActiveScriptParse64>;

/// What a script of the Windows Script Host may use here of its `WScript`.
class Console final : public com::Automation {
public:
    explicit Console(SayLine say) : m_say(std::move(say)) {}

private:
    std::span<const com::Member> Members() const override {
        static constexpr com::Member kMembers[] = {
            {L"Echo", 1, com::Member::Method, 0, 16, com::Run<&Console::Echo>}};
        return kMembers;
    }
    void Echo(com::Invocation& call) {
        std::wstring line;
        for (size_t i = 0; i < call.Count(); ++i) {
            line += (i > 0 ? L" " : L"") + call[i].ToText();
        }
        m_say(line);
    }

    const SayLine m_say;
};

constexpr wchar_t kConsole[] = L"WScript";

} // namespace

/// Where the engine finds the console, and tells of errors.
class ScriptSite final : public com::Object<IActiveScriptSite> {
public:
    explicit ScriptSite(SayLine say) : m_console(com::Make<Console>(std::move(say)).Get()) {}
    std::optional<com::Error> error;

    HRESULT STDMETHODCALLTYPE GetLCID(LCID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** item,
                                          ITypeInfo** info) override {
        if (std::wstring_view(name) != kConsole) {
            return TYPE_E_ELEMENTNOTFOUND;
        }
        if (wanted & SCRIPTINFO_ITYPEINFO) {
            *info = nullptr;
        }
        if (wanted & SCRIPTINFO_IUNKNOWN) {
            *item = ComPtr<IDispatch>(m_console.Get()).Detach();
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* what) override {
        EXCEPINFO thrown{};
        DWORD context = 0;
        ULONG line = 0;
        LONG character = 0;
        what->GetExceptionInfo(&thrown);
        what->GetSourcePosition(&context, &line, &character);
        error = com::ErrorOfInvoke(DISP_E_EXCEPTION, thrown, L"guion");
        error->description = error->description + L" (línea " + std::to_wstring(line + 1) + L")";
        return E_FAIL; // the caller gets it too
    }
    HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

private:
    const ComPtr<IDispatch> m_console;
};

namespace {

/// UTF-8, else in the system's letters; UTF-16 where the file says so.
std::wstring TextOf(const std::wstring& path) {
    std::ostringstream all;
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    if (!file || !(all << file.rdbuf())) {
        throw com::Error(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), L"No se puede leer «" + path + L"».");
    }
    const std::string bytes = all.str();
    if (bytes.starts_with("\xFF\xFE")) {
        std::wstring text(bytes.size() / 2 - 1, L'\0');
        std::memcpy(text.data(), bytes.data() + 2, text.size() * 2);
        return text;
    }
    if (const auto text = base::FromUtf8(bytes.starts_with("\xEF\xBB\xBF") ? bytes.substr(3) : bytes)) {
        return *text;
    }
    std::wstring text(bytes.size(), L'\0');
    MultiByteToWideChar(CP_ACP, 0, bytes.data(), static_cast<int>(bytes.size()), text.data(),
                        static_cast<int>(text.size()));
    return text;
}

ComPtr<IUnknown> Create(const std::wstring& progId, REFIID id, DWORD where) {
    CLSID classId{};
    ComPtr<IUnknown> made;
    HRESULT code = CLSIDFromProgID(progId.c_str(), &classId);
    if (SUCCEEDED(code)) {
        code = com::CallOut([&] {
            return CoCreateInstance(classId, nullptr, where, id,
                                    reinterpret_cast<void**>(made.GetAddressOf()));
        });
    }
    com::Check(code, L"No se puede crear «" + progId + L"»: " + com::SystemText(code));
    return made;
}

} // namespace

HostSource::HostSource(const std::wstring& name, SayLine say) {
    const std::wstring lower = base::Lower(name);
    if (lower.ends_with(L".vbs") || lower.ends_with(L".js")) {
        RunScript(name, lower.ends_with(L".js") ? L"JScript" : L"VBScript", std::move(say));
        return;
    }
    const ComPtr<IUnknown> made = Create(name, IID_IDispatch, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER);
    m_object = com::LateObject(com::Query<IDispatch>(made.Get()).Get(), L"anfitrión");
}

HostSource::~HostSource() {
    m_object.Reset();
    if (m_engine) {
        m_engine->Close();
    }
}

std::optional<com::Error> HostSource::TakeError() {
    return m_site ? std::exchange(m_site->error, std::nullopt) : std::nullopt;
}

void HostSource::RunScript(const std::wstring& path, const wchar_t* language, SayLine say) {
    const std::wstring text = TextOf(path);
    m_site = com::Make<ScriptSite>(std::move(say));
    m_engine = com::Query<IActiveScript>(Create(language, IID_IUnknown, CLSCTX_INPROC_SERVER).Get());
    const auto parse = com::Query<ScriptParse>(m_engine.Get());
    if (!parse) {
        throw com::Error(E_NOINTERFACE, L"El intérprete de guiones no se puede usar.");
    }
    HRESULT code = m_engine->SetScriptSite(m_site.Get());
    code = SUCCEEDED(code) ? parse->InitNew() : code;
    code = SUCCEEDED(code) ? m_engine->AddNamedItem(kConsole, SCRIPTITEM_ISVISIBLE) : code;
    code = SUCCEEDED(code) ? parse->ParseScriptText(text.c_str(), nullptr, nullptr, nullptr, 0, 0,
                                                    SCRIPTTEXT_ISVISIBLE, nullptr, nullptr)
                           : code;
    code = SUCCEEDED(code) ? m_engine->SetScriptState(SCRIPTSTATE_CONNECTED) : code;
    if (const std::optional<com::Error> error = TakeError()) {
        throw com::Error(*error);
    }
    com::Check(code);
    ComPtr<IDispatch> names;
    com::Check(m_engine->GetScriptDispatch(nullptr, &names));
    m_object = com::LateObject(names.Get(), L"guion");
}

} // namespace tamvelo::demo
