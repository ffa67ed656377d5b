#pragma once

#include <optional>
#include <string>
#include <vector>

#include "com/LateObject.h"

namespace tamvelo::grid {

struct FieldInfo {
    std::wstring name;
    std::wstring caption;
    long type = 0; // ADO's number; 0 when the field does not say
    long definedSize = 0;
    bool operator==(const FieldInfo&) const = default;
};

/// A record's first values; nothing in place of one that could not be read.
using Record = std::vector<std::optional<com::Variant>>;

/// A member that some sets lack: it reads as Empty there, and after it failed it is not asked for again.
class OptionalMember {
public:
    explicit OptionalMember(const wchar_t* name) : m_name(name) {}
    const wchar_t* Name() const { return m_name; }
    bool IsMissing() const { return m_missing; }
    com::Variant Ask(com::LateObject& object);
    /// As the type that it should have; one that answers something else is as good as not there.
    template <class T>
    T Ask(com::LateObject& object, T none, T (com::Variant::*as)() const);

private:
    const wchar_t* m_name;
    bool m_missing = false;
};

bool IsTrue(com::LateObject& set, const wchar_t* member);
bool HasNoRows(com::LateObject& set);
bool StandsOnNone(com::LateObject& set);
bool SameValue(const com::Variant& a, const com::Variant& b);

/// Throws where fields belong to a record and the set stands on none.
std::vector<FieldInfo> FieldsOf(com::LateObject& set);
com::LateObject FieldOf(com::LateObject& set, short column);
/// Those of the first columns.
std::vector<com::LateObject> FieldObjects(com::LateObject& set, short columns);
Record ValuesOf(std::vector<com::LateObject>& fields);
/// Whether some column holds two values that are really different: not one that is missing from either.
bool AreOthers(const Record& a, const Record& b);

} // namespace tamvelo::grid
