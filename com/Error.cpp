#include "com/Error.h"

#include <new>

#include "com/ComPtr.h"

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
    } catch (const std::bad_alloc&) {
        return Error(E_OUTOFMEMORY, L"No hay memoria suficiente.");
    } catch (const std::exception& error) {
        const std::string text = error.what();
        return Error(E_UNEXPECTED, L"Error interno: " + std::wstring(text.begin(), text.end()));
    } catch (...) {
        return Error(E_UNEXPECTED, L"Error interno desconocido.");
    }
}

Error ErrorOfInvoke(HRESULT result, EXCEPINFO& info) {
    if (result == DISP_E_EXCEPTION) {
        if (info.pfnDeferredFillIn) {
            info.pfnDeferredFillIn(&info);
        }
        SysFreeString(info.bstrHelpFile);
        std::wstring source = Take(info.bstrSource);
        std::wstring description = Take(info.bstrDescription);
        HRESULT number = info.scode;
        if (info.wCode != 0) {
            number = kAutomationNumber | info.wCode;
        } else if (SUCCEEDED(number) && number > 0 && number <= 0xFFFF) {
            number = kAutomationNumber | number; // script engines put their plain numbers here
        }
        return {number, std::move(description), std::move(source)};
    }
    ComPtr<IErrorInfo> thrown;
    if (GetErrorInfo(0, &thrown) == S_OK) {
        BSTR source = nullptr;
        BSTR description = nullptr;
        thrown->GetSource(&source);
        thrown->GetDescription(&description);
        std::wstring sourceText = Take(source);
        return {result, Take(description), std::move(sourceText)};
    }
    return {result, {}};
}

HRESULT PublishError(const Error& error, REFIID interfaceId) noexcept {
    ComPtr<ICreateErrorInfo> creator;
    ComPtr<IErrorInfo> published;
    if (SUCCEEDED(CreateErrorInfo(&creator)) && SUCCEEDED(creator.As(&published))) {
        creator->SetGUID(interfaceId);
        creator->SetSource(const_cast<LPOLESTR>(error.source.c_str()));
        creator->SetDescription(const_cast<LPOLESTR>(error.description.c_str()));
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
    }
    return DISP_E_EXCEPTION;
}

} // namespace tamvelo::com
