#pragma once

#include "com/WinHeaders.h"

#include <functional>
#include <optional>
#include <string>

#include "com/Error.h"
#include "com/LateObject.h"

struct IActiveScript;

namespace tamvelo::demo {

class ScriptSite;

using SayLine = std::function<void(std::wstring_view line)>;

/// A host that somebody else wrote: an object that its ProgID makes, or the global names of a script (.vbs,
/// .js) that is run here. A script's `WScript.Echo` goes to `say`.
class HostSource {
public:
    /// Throws com::Error when there is no such class or file, or with the script's own error and its line.
    HostSource(const std::wstring& name, SayLine say);
    ~HostSource();
    HostSource(const HostSource&) = delete;
    HostSource& operator=(const HostSource&) = delete;

    com::LateObject& Object() { return m_object; }
    /// What a script said of its last error since this was asked; the caller may have been told less.
    std::optional<com::Error> TakeError();

private:
    void RunScript(const std::wstring& path, const wchar_t* language, SayLine say);

    com::ComPtr<IActiveScript> m_engine;
    com::ComPtr<ScriptSite> m_site;
    com::LateObject m_object;
};

} // namespace tamvelo::demo
