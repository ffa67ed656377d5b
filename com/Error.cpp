#include "com/Error.h"

#include <new>

#include "com/CallOut.h"

namespace tamvelo::com {

namespace {

constexpr HRESULT kAutomationNumber = static_cast<HRESULT>(0x800A0000);

/// Takes over a string that a callee allocated.
std::wstring Take(BSTR& text) {
    std::wstring copy = text ? std::wstring(text, SysStringLen(text)) : std::wstring();
    SysFreeString(text);
    text = nullptr;
    return copy;
}

} // namespace

Error::Error(HRESULT numberIn, std::wstring descriptionIn, std::wstring sourceIn)
    : number(FAILED(numberIn) ? numberIn : E_FAIL),
      source(std::move(sourceIn)),
      description(std::move(descriptionIn)) {
    if (description.empty()) {
        description = SystemText(number);
    }
}

void Check(HRESULT result, std::wstring_view description) {
    if (FAILED(result)) {
        throw Error(result, std::wstring(description));
    }
}

void ThrowLastError(std::wstring_view description) {
    const HRESULT number = HRESULT_FROM_WIN32(GetLastError());
    throw Error(number, std::wstring(description) + L"\n" + SystemText(FAILED(number) ? number : E_FAIL));
}

std::wstring SystemText(HRESULT number) {
    wchar_t text[512];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                  static_cast<DWORD>(number), 0, text, ARRAYSIZE(text), nullptr);
    while (length > 0 &&
           (text[length - 1] == L'\n' || text[length - 1] == L'\r' || text[length - 1] == L' ')) {
        --length;
    }
    if (length > 0) {
        return {text, length};
    }
    wchar_t code[32];
    wsprintfW(code, L"Error 0x%08lX.", static_cast<unsigned long>(number));
    return code;
}

Error CurrentError() noexcept {
    try {
        throw;
    } catch (const Error& error) {
        return error;
    } catch (const Gone&) {
        return Error(E_ABORT, L"El formulario se ha cerrado.");
    } catch (const std::bad_alloc&) {
        return Error(E_OUTOFMEMORY, L"No hay memoria suficiente.");
    } catch (const std::exception& error) {
        const std::string text = error.what();
        return Error(E_UNEXPECTED, L"Error interno: " + std::wstring(text.begin(), text.end()));
    } catch (...) {
        return Error(E_UNEXPECTED, L"Error interno desconocido.");
    }
}

Error ErrorOfInvoke(HRESULT result, EXCEPINFO& info, const std::wstring& call) {
    HRESULT number = result;
    std::wstring source;
    std::wstring description;
    std::wstring helpFile;
    DWORD helpContext = 0;
    if (result == DISP_E_EXCEPTION) {
        if (info.pfnDeferredFillIn) {
            WithHostFloats([&] { return info.pfnDeferredFillIn(&info); });
        }
        source = Take(info.bstrSource);
        description = Take(info.bstrDescription);
        helpFile = Take(info.bstrHelpFile);
        helpContext = info.dwHelpContext;
        number = info.scode;
        if (info.wCode != 0) {
            number = kAutomationNumber | info.wCode;
        } else if (number > 0 && number <= 0xFFFF) {
            number = kAutomationNumber | number; // script engines put their plain numbers here
        }
    } else if (ComPtr<IErrorInfo> thrown; GetErrorInfo(0, &thrown) == S_OK) {
        BSTR text = nullptr;
        WithHostFloats([&] { return thrown->GetSource(&text); });
        source = Take(text);
        WithHostFloats([&] { return thrown->GetDescription(&text); });
        description = Take(text);
        WithHostFloats([&] { return thrown->GetHelpFile(&text); });
        helpFile = Take(text);
        WithHostFloats([&] { return thrown->GetHelpContext(&helpContext); });
    }
    if (source.empty()) {
        source = call;
    }
    if (description.empty()) {
        description = call + L": " + SystemText(FAILED(number) ? number : E_FAIL);
    }
    Error error(number, std::move(description), std::move(source));
    error.call = call;
    error.helpFile = std::move(helpFile);
    error.helpContext = helpContext;
    return error;
}

std::wstring DescriptionWithCall(const Error& error) {
    const bool named = error.call.empty() || error.description.find(error.call) != std::wstring::npos;
    return named ? error.description : error.description + L"\n(" + error.call + L")";
}

HRESULT PublishError(const Error& error, REFIID interfaceId) noexcept {
    ComPtr<ICreateErrorInfo> creator;
    ComPtr<IErrorInfo> published;
    if (SUCCEEDED(CreateErrorInfo(&creator)) && SUCCEEDED(creator.As(&published))) {
        creator->SetGUID(interfaceId);
        creator->SetSource(const_cast<LPOLESTR>(error.source.c_str()));
        creator->SetDescription(const_cast<LPOLESTR>(error.description.c_str()));
        creator->SetHelpFile(const_cast<LPOLESTR>(error.helpFile.c_str()));
        creator->SetHelpContext(error.helpContext);
        SetErrorInfo(0, published.Get());
    }
    return error.number;
}

HRESULT FillExcepInfo(const Error& error, EXCEPINFO* info) noexcept {
    if (info) {
        *info = {};
        info->scode = error.number;
        info->bstrSource = SysAllocString(error.source.c_str());
        info->bstrDescription = SysAllocString(error.description.c_str());
        info->bstrHelpFile = error.helpFile.empty() ? nullptr : SysAllocString(error.helpFile.c_str());
        info->dwHelpContext = error.helpContext;
    }
    return DISP_E_EXCEPTION;
}

} // namespace tamvelo::com
