#include "grid/SetMembers.h"

#include <algorithm>

#include "base/MessageText.h"
#include "com/Error.h"

namespace tamvelo::grid {

using com::LateObject;
using com::Variant;

namespace {

LateObject Fields(LateObject& set) { return {set.Call(L"Fields").ToObject().Get(), L"Fields"}; }

LateObject Item(LateObject& fields, long which) {
    return {fields.Call(L"Item", {which}).ToObject().Get(), L"Field"};
}

} // namespace

Variant OptionalMember::Ask(LateObject& object) {
    if (!m_missing) {
        try {
            return object.Call(m_name);
        } catch (const com::Error&) {
            m_missing = true;
        }
    }
    return {};
}

template <class T>
T OptionalMember::Ask(LateObject& object, T none, T (Variant::*as)() const) {
    const Variant answer = Ask(object);
    try {
        return answer.IsEmpty() || answer.IsNull() ? none : (answer.*as)();
    } catch (const com::Error&) {
        m_missing = true;
        return none;
    }
}

template long OptionalMember::Ask(LateObject&, long, long (Variant::*)() const);

bool IsTrue(LateObject& set, const wchar_t* member) { return set.Call(member).ToBool(); }

bool HasNoRows(LateObject& set) { return IsTrue(set, L"EOF") && IsTrue(set, L"BOF"); }

bool StandsOnNone(LateObject& set) { return IsTrue(set, L"EOF") || IsTrue(set, L"BOF"); }

bool SameValue(const Variant& a, const Variant& b) {
    if (a.Type() != b.Type() || (a.Type() & VT_ARRAY) || a.IsObject()) {
        return false;
    }
    return a.IsEmpty() || a.IsNull() || VarCmp(a.In(), b.In(), LOCALE_USER_DEFAULT, 0) == VARCMP_EQ;
}

std::vector<FieldInfo> FieldsOf(LateObject& set) {
    LateObject fields = Fields(set);
    const long count = std::clamp(fields.Call(L"Count").ToLong(), 0L, 0x7FFFL);
    std::vector<FieldInfo> read(static_cast<size_t>(count));
    OptionalMember caption(L"Caption");
    OptionalMember type(L"Type");
    OptionalMember size(L"DefinedSize");
    for (long i = 0; i < count; ++i) {
        LateObject field = Item(fields, i);
        FieldInfo& info = read[static_cast<size_t>(i)];
        info.name = field.Call(L"Name").ToText();
        const std::wstring shown = caption.Ask(field, std::wstring(), &Variant::ToText);
        info.caption = base::Shortened(shown.empty() ? info.name : shown, base::kLongestLabel);
        info.type = type.Ask(field, 0L, &Variant::ToLong);
        info.definedSize = size.Ask(field, 0L, &Variant::ToLong);
    }
    return read;
}

LateObject FieldOf(LateObject& set, short column) {
    LateObject fields = Fields(set);
    return Item(fields, column);
}

std::vector<LateObject> FieldObjects(LateObject& set, short columns) {
    LateObject fields = Fields(set);
    std::vector<LateObject> objects;
    for (short column = 0; column < columns; ++column) {
        objects.push_back(Item(fields, column));
    }
    return objects;
}

Record ValuesOf(std::vector<LateObject>& fields) {
    Record values;
    for (LateObject& field : fields) {
        std::optional<Variant>& value = values.emplace_back();
        try {
            value = field.Call(L"Value");
        } catch (const com::Error&) { // shown as what it is, in its cell only
        }
    }
    return values;
}

bool AreOthers(const Record& a, const Record& b) {
    for (size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        if (a[i] && b[i]) {
            const HRESULT order = VarCmp(a[i]->In(), b[i]->In(), LOCALE_USER_DEFAULT, 0);
            if (order == static_cast<HRESULT>(VARCMP_LT) || order == static_cast<HRESULT>(VARCMP_GT)) {
                return true;
            }
        }
    }
    return false;
}

} // namespace tamvelo::grid
