#include "com/Collection.h"

#include "com/Automation.h"
#include "com/Enumerator.h"
#include "com/Error.h"

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

/// Null when the object has no enumerator.
ComPtr<IEnumVARIANT> EnumeratorOf(IDispatch* collection) {
    DISPPARAMS none{};
    Variant answer;
    ComPtr<IEnumVARIANT> walk;
    if (SUCCEEDED(collection->Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT,
                                     DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none, answer.Address(), nullptr,
                                     nullptr)) &&
        answer.IsObject() && answer.Get().punkVal) {
        answer.Get().punkVal->QueryInterface(IID_PPV_ARGS(&walk));
    }
    return walk;
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
    if (const ComPtr<IEnumVARIANT> walk = EnumeratorOf(collection.Get())) {
        for (;;) {
            Variant item;
            if (walk->Next(1, item.Address(), nullptr) != S_OK) {
                return items;
            }
            items.push_back(std::move(item));
        }
    }
    const long count = collection.Call(L"Count").ToLong();
    for (long i = 1; i <= count; ++i) {
        items.push_back(collection.Call(L"Item", {i}));
    }
    return items;
}

} // namespace tamvelo::com
