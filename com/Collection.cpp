#include "com/Collection.h"

#include <optional>

#include "com/Automation.h"
#include "com/CallOut.h"
#include "com/Enumerator.h"
#include "com/Error.h"
#include "com/Trace.h"

namespace tamvelo::com {

namespace {

constexpr HRESULT kBadIndex = static_cast<HRESULT>(0x800A0009); // automation's number 9

/// Turns the bits of a value that someone else owns into a value of our own.
void Keep(VARIANT& item) {
    VARIANT copy;
    VariantInit(&copy);
    Check(VariantCopy(&copy, &item));
    item = copy;
}
void Drop(VARIANT& item) { VariantClear(&item); }

class Collection final : public Automation {
public:
    explicit Collection(std::vector<Variant> items) : m_items(std::move(items)) {}

private:
    std::span<const Member> Members() const override {
        static constexpr Member kMembers[] = {
            {L"Item", DISPID_VALUE, Member::Get, 1, 1, Run<&Collection::Item>},
            {L"_NewEnum", DISPID_NEWENUM, Member::Get, 0, 0, Run<&Collection::NewEnum>},
            {L"Count", 1, Member::Get, 0, 0, Run<&Collection::Count>},
        };
        return kMembers;
    }

    void Count(Invocation& call) { call.Return(Variant(static_cast<long>(m_items.size()))); }
    void Item(Invocation& call) {
        const long index = call[0].ToLong();
        if (index < 1 || index > static_cast<long>(m_items.size())) {
            throw Error(kBadIndex, L"La colección no tiene elemento " + std::to_wstring(index) + L".");
        }
        call.Return(m_items[static_cast<size_t>(index) - 1]);
    }
    void NewEnum(Invocation& call) {
        std::vector<VARIANT> items;
        for (const Variant& item : m_items) {
            items.push_back(item.Get());
        }
        Variant walk;
        walk.Address()->punkVal =
            Make<Enumerator<IEnumVARIANT, VARIANT, Keep, Drop>>(std::move(items)).Detach();
        walk.Address()->vt = VT_UNKNOWN;
        call.Return(std::move(walk));
    }

    const std::vector<Variant> m_items;
};

constexpr wchar_t kNewEnum[] = L"_NewEnum";
constexpr size_t kMostItems = 100'000; // an enumerator that never ends must not keep us

/// Null when the object has no enumerator.
ComPtr<IEnumVARIANT> EnumeratorOf(IDispatch* collection, const wchar_t* role) {
    DISPPARAMS none{};
    const ComPtr<IDispatch> held = collection;
    try {
        const Variant answer = InvokeMember(held.Get(), role, kNewEnum, DISPID_NEWENUM,
                                            DISPATCH_METHOD | DISPATCH_PROPERTYGET, none);
        return answer.IsObject() ? Query<IEnumVARIANT>(answer.Get().punkVal) : nullptr;
    } catch (const Error& error) {
        if (error.number != DISP_E_MEMBERNOTFOUND && error.number != DISP_E_UNKNOWNNAME &&
            error.number != E_NOTIMPL) {
            throw;
        }
        return nullptr;
    }
}

/// The next item; nothing at the end. A walk that fails half way is the host's error, not the end.
std::optional<Variant> Next(IEnumVARIANT& walk, const wchar_t* role) {
    Variant item;
    const HRESULT code = CallOut([&] { return walk.Next(1, item.Address(), nullptr); });
    if (Trace::Enabled()) {
        Trace::Line(std::wstring(role) + L".Next() = " + (code == S_OK ? Trace::Describe(item.Get()) : L"…"));
    }
    if (FAILED(code)) {
        EXCEPINFO none{};
        throw Error(ErrorOfInvoke(code, none, std::wstring(L"«") + role + L"».Next"));
    }
    return code == S_OK ? std::optional(Variant::CopyOf(item.Get())) : std::nullopt;
}

} // namespace

ComPtr<IDispatch> MakeCollection(std::vector<Variant> items) {
    return ComPtr<IDispatch>(Make<Collection>(std::move(items)).Get());
}

std::vector<Variant> ItemsOf(LateObject& collection) {
    std::vector<Variant> items;
    if (!collection) {
        return items;
    }
    if (const ComPtr<IEnumVARIANT> walk = EnumeratorOf(collection.Get(), collection.Role())) {
        while (std::optional<Variant> item = Next(*walk.Get(), collection.Role())) {
            items.push_back(std::move(*item));
            if (items.size() > kMostItems) {
                throw Error(E_UNEXPECTED,
                            std::wstring(L"La colección «") + collection.Role() + L"» no se acaba nunca.");
            }
        }
        return items;
    }
    const long count = collection.Call(L"Count").ToLong();
    for (long i = 1; i <= count; ++i) {
        items.push_back(collection.Call(L"Item", {i}));
    }
    return items;
}

} // namespace tamvelo::com
