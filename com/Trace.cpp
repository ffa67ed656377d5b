#include "com/Trace.h"

#include <mutex>

#include "base/Text.h"
#include "base/TraceText.h"
#include "com/Variant.h"

namespace tamvelo::com {

namespace {

std::mutex g_lock;
std::wstring g_path;

const wchar_t* TypeName(VARTYPE type) {
    switch (type & VT_TYPEMASK) {
    case VT_I2:
        return L"Integer";
    case VT_I4:
        return L"Long";
    case VT_R8:
        return L"Double";
    case VT_BOOL:
        return L"Boolean";
    case VT_DATE:
        return L"Date";
    case VT_BSTR:
        return L"String";
    case VT_VARIANT:
        return L"Variant";
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return L"Object";
    default:
        return L"Otro";
    }
}

std::wstring DescribePlain(const VARIANT& value) {
    switch (value.vt) {
    case VT_EMPTY:
        return L"Empty";
    case VT_NULL:
        return L"Null";
    case VT_ERROR:
        return value.scode == DISP_E_PARAMNOTFOUND ? L"(omitido)" : L"Error";
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return value.punkVal ? L"Object" : L"Nothing";
    default:
        break;
    }
    if (value.vt & VT_ARRAY) {
        return L"Matriz";
    }
    Variant text;
    // Fixed locale: two traces of one session compare equal on machines with different settings.
    if (FAILED(VariantChangeTypeEx(text.Address(), const_cast<VARIANT*>(&value),
                                   MAKELCID(MAKELANGID(LANG_SPANISH, SUBLANG_SPANISH_MODERN), SORT_DEFAULT),
                                   0, VT_BSTR))) {
        return TypeName(value.vt);
    }
    const std::wstring shown = base::TraceText(text.ToText());
    if (value.vt == VT_BSTR) {
        return L"\"" + shown + L"\"";
    }
    return std::wstring(TypeName(value.vt)) + L" " + shown;
}

} // namespace

void Trace::WriteTo(const std::wstring& path) noexcept {
    try {
        const std::scoped_lock lock(g_lock);
        g_path = path;
        s_enabled = !path.empty();
    } catch (...) {
        s_enabled = false;
    }
}

void Trace::Line(std::wstring_view text) noexcept {
    try {
        const std::scoped_lock lock(g_lock);
        // Opened anew for each line: the log stays readable while the host runs and complete if it dies.
        const HANDLE file = CreateFileW(g_path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file == INVALID_HANDLE_VALUE) {
            s_enabled = false;
            return;
        }
        const std::string line = base::ToUtf8(text) + "\r\n";
        DWORD written = 0;
        WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
        CloseHandle(file);
    } catch (...) {
        s_enabled = false;
    }
}

std::wstring Trace::Describe(const VARIANT& value) {
    if (!(value.vt & VT_BYREF)) {
        return DescribePlain(value);
    }
    Variant plain;
    if (FAILED(VariantCopyInd(plain.Address(), const_cast<VARIANT*>(&value)))) {
        return std::wstring(L"&") + TypeName(value.vt);
    }
    return L"&" + DescribePlain(plain.Get());
}

} // namespace tamvelo::com
