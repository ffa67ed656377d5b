// Calls out of the library, seen from a host that shares no code with it: what is in force while it runs,
// what becomes of its errors, and who goes on when its window went meanwhile.
#include "com/CallOut.h"

#include <float.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <set>

#include "com/Collection.h"
#include "com/Guard.h"
#include "com/LateObject.h"
#include "tests/support/HostChecks.h"

namespace tamvelo::testing {
namespace {

using com::Error;
using com::LateObject;
using com::Variant;

constexpr unsigned kTraps = _EM_ZERODIVIDE | _EM_INVALID | _EM_OVERFLOW;

/// A script engine's object in the rough: it knows any name, through the extended way only where told so,
/// walks over `items` and fails as it is told. It notes in which of its members the host's traps were not
/// set.
class Foreign final : public IDispatch, public IEnumVARIANT {
public:
    std::function<HRESULT(EXCEPINFO*)> failure; // none: it answers its value
    double value = 2;                           // its own
    HRESULT newEnum = S_OK;
    int items = 0;
    HRESULT end = S_FALSE;
    std::set<std::string> masked;
    std::function<void()> during = [] {};
    int references = 1;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
        Note("QueryInterface");
        *out = id == IID_IUnknown || id == IID_IDispatch ? static_cast<void*>(static_cast<IDispatch*>(this))
               : id == IID_IEnumVARIANT ? static_cast<void*>(static_cast<IEnumVARIANT*>(this))
                                        : nullptr;
        references += *out ? 1 : 0;
        return *out ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references); }
    ULONG STDMETHODCALLTYPE Release() override {
        Note("Release");
        return static_cast<ULONG>(--references);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* id) override {
        Note("GetIDsOfNames");
        *id = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                     EXCEPINFO* thrown, UINT*) override {
        Note(id == DISPID_NEWENUM ? "_NewEnum" : "Invoke");
        if (id == DISPID_NEWENUM) {
            if (SUCCEEDED(newEnum)) {
                AddRef();
                result->vt = VT_UNKNOWN;
                result->punkVal = static_cast<IEnumVARIANT*>(this);
            }
            return newEnum;
        }
        if (failure) {
            return failure(thrown);
        }
        if (result) {
            result->vt = VT_R8;
            result->dblVal = value;
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Next(ULONG, VARIANT* out, ULONG*) override {
        Note("Next");
        if (items == 0) {
            return end;
        }
        --items;
        out->vt = VT_BSTR;
        out->bstrVal = SysAllocStringLen(L"u\0o", 3);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT**) override { return E_NOTIMPL; }

private:
    void Note(const char* where) {
        during();
        if ((_controlfp(0, 0) & kTraps) != 0) {
            masked.insert(where);
        }
    }
};

TEST(CallOut, TheHostHasItsFloatingPointTrapsInEveryCall) {
    Foreign host;
    host.items = 1;
    {
        const HostChecks traps(HostChecks::Traps::Set);
        const com::FloatGuard floats;
        LateObject object(static_cast<IDispatch*>(&host), L"MyClase");
        object.Call(L"Requery");
        const std::vector<Variant> items = com::ItemsOf(object);
        ASSERT_EQ(items.size(), 1U);
        EXPECT_EQ(items[0].ToText(), std::wstring(L"u\0o", 3)) << "a text does not end at a zero";
        Variant value(object.Get());
        EXPECT_EQ(value.ToShort(), 2) << "the object's own value";
        host.value = std::nan("");
        for (const Variant& none : {value, Variant(host.value), Variant::Date(host.value)}) {
            EXPECT_THROW(none.ToLong(), Error) << "what is no number is no integer";
        }
        value = Variant();
        EXPECT_TRUE(com::SameObject(object.Get(), static_cast<IEnumVARIANT*>(&host)));
        object.Reset();
        EXPECT_EQ(_controlfp(0, 0) & kTraps, kTraps) << "and the library has none";
    }
    EXPECT_EQ(host.masked, std::set<std::string>());
    EXPECT_EQ(host.references, 1);
}

TEST(CallOut, AnErrorKeepsWhatTheHostSaidAndNamesTheCall) {
    Foreign host;
    LateObject object(static_cast<IDispatch*>(&host), L"MyClase");
    com::PublishError(Error(E_FAIL, L"De antes."), IID_NULL); // must not be taken for this call's
    const struct {
        HRESULT (*failure)(EXCEPINFO* thrown);
        Error said;
        const wchar_t* help; // file and place
    } cases[] = {
        {[](EXCEPINFO*) { return RPC_E_DISCONNECTED; },
         {RPC_E_DISCONNECTED, L"«MyClase».Requery: " + com::SystemText(RPC_E_DISCONNECTED),
          L"«MyClase».Requery"},
         L" 0"},
        {[](EXCEPINFO* thrown) {
             thrown->pfnDeferredFillIn = [](EXCEPINFO * info) __attribute__((stdcall))->HRESULT {
                 info->wCode = 513;
                 info->bstrSource = SysAllocString(L"Anfitrión");
                 info->bstrDescription = SysAllocString(L"Lo pienso y no.");
                 info->bstrHelpFile = SysAllocString(L"ayuda.chm");
                 info->dwHelpContext = 7;
                 return S_OK;
             };
             return DISP_E_EXCEPTION;
         },
         {static_cast<HRESULT>(0x800A0201), L"Lo pienso y no.", L"Anfitrión"},
         L"ayuda.chm 7"},
        {[](EXCEPINFO* thrown) {
             thrown->scode = E_ACCESSDENIED;
             thrown->bstrDescription = SysAllocString(L"Con su código.");
             return DISP_E_EXCEPTION;
         },
         {E_ACCESSDENIED, L"Con su código.", L"«MyClase».Requery"},
         L" 0"},
        {[](EXCEPINFO* thrown) {
             thrown->scode = 513; // as scripts say it
             thrown->bstrDescription = SysAllocString(L"Con su número.");
             return DISP_E_EXCEPTION;
         },
         {static_cast<HRESULT>(0x800A0201), L"Con su número.", L"«MyClase».Requery"},
         L" 0"},
        {[](EXCEPINFO*) {
             com::ComPtr<ICreateErrorInfo> made;
             com::ComPtr<IErrorInfo> info;
             CreateErrorInfo(&made);
             made->SetDescription(const_cast<LPOLESTR>(L"Con objeto."));
             made->SetHelpContext(9);
             made.As(&info);
             SetErrorInfo(0, info.Get());
             return E_FAIL;
         },
         {E_FAIL, L"Con objeto.", L"«MyClase».Requery"},
         L" 9"},
    };
    for (const auto& [failure, expected, help] : cases) {
        SCOPED_TRACE(::testing::PrintToString(expected.description));
        host.failure = failure;
        try {
            object.Call(L"Requery");
            ADD_FAILURE() << "no error";
        } catch (const Error& error) {
            EXPECT_EQ(error.call, L"«MyClase».Requery");
            EXPECT_NE(com::DescriptionWithCall(error).find(error.call), std::wstring::npos);
            EXPECT_EQ(error.number, expected.number);
            EXPECT_EQ(error.source, expected.source);
            EXPECT_EQ(error.description, expected.description);
            EXCEPINFO passedOn{};
            com::FillExcepInfo(error, &passedOn);
            EXPECT_EQ((passedOn.bstrHelpFile ? passedOn.bstrHelpFile : L"") +
                          (L" " + std::to_wstring(passedOn.dwHelpContext)),
                      help);
            for (BSTR text : {passedOn.bstrSource, passedOn.bstrDescription, passedOn.bstrHelpFile}) {
                SysFreeString(text);
            }
        }
    }
}

TEST(CallOut, AWalkThatFailsIsAnErrorAndNotTheEnd) {
    Foreign host;
    LateObject object(static_cast<IDispatch*>(&host), L"cReports");
    host.items = 2;
    host.end = E_ACCESSDENIED;
    try {
        com::ItemsOf(object);
        ADD_FAILURE() << "the end";
    } catch (const Error& error) {
        EXPECT_EQ(error.number, E_ACCESSDENIED);
        EXPECT_EQ(error.source, L"«cReports».Next");
    }
    host.newEnum = E_ACCESSDENIED;
    EXPECT_THROW(com::ItemsOf(object), Error);
    host.newEnum = DISP_E_MEMBERNOTFOUND; // no enumerator: Count and Item, which are 2 for this host
    EXPECT_EQ(com::ItemsOf(object).size(), 2U);
    host.newEnum = S_OK;
    host.items = 10'000'000;
    EXPECT_THROW(com::ItemsOf(object), Error) << "it never ends";

    LateObject ours(com::MakeCollection({Variant(L"uno"), Variant(L"dos")}).Get(), L"cReports");
    EXPECT_EQ(ours.Call(L"Count").ToLong(), 2);
    EXPECT_EQ(ours.Call(L"Item", {2L}).ToText(), L"dos");
    for (const long outside : {0L, 3L}) {
        try {
            ours.Call(L"Item", {outside});
            ADD_FAILURE() << outside;
        } catch (const Error& error) {
            EXPECT_TRUE(error.description.ends_with(L" " + std::to_wstring(outside) + L"."));
        }
    }
}

TEST(CallOut, EndsTheCallerWhoseWindowWentMeanwhile) {
    Foreign host;
    LateObject object(static_cast<IDispatch*>(&host), L"MyClase");
    HWND window = nullptr;
    const com::Watch watch(&window);
    const auto made = reinterpret_cast<HWND>(LONG_PTR{4});
    host.during = [&] { window = made; };
    object.Call(L"Requery"); // an opening makes it meanwhile
    host.during = [&] { window = nullptr; };
    int told = 0;
    int after = 0;
    for (const bool fails : {false, true}) {
        window = made;
        host.failure = fails ? [](EXCEPINFO*) { return E_FAIL; } : host.failure;
        com::AtEdge(
            [&] {
                try {
                    object.Call(L"Requery");
                } catch (const Error&) { // as code that can do without an answer does
                }
                ++after;
            },
            [&](const Error&) { ++told; });
    }
    host.failure = nullptr;
    object.Call(L"Requery"); // what is done after a window went on purpose
    EXPECT_EQ(after + told, 0);
    window = made;
    EXPECT_THROW(object.Answers(L"Sort"), com::Gone);
    window = made;
    EXPECT_EQ(com::Guard(IID_NULL, [&] { object.Call(L"Requery"); }), S_OK)
        << "a call from outside is its own";
    object.Reset();
    EXPECT_EQ(host.references, 1);
}

} // namespace
} // namespace tamvelo::testing
