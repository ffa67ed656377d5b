#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "com/LateObject.h"
#include "contract/DataClass.h"
#include "contract/Members.h"
#include "contract/Sink.h"

namespace tamvelo::demo {

/// The objects of a host while they are looked over, by their role ("MyClase"), with those that they hand
/// out.
class Probes {
public:
    /// `write` lets the members be called that change something: the filter, the order, and the sink with an
    /// answer.
    explicit Probes(bool write) : m_write(write) {}

    void Give(std::wstring_view role, const com::ComPtr<IDispatch>& object);
    /// The record set that a grid would take from the data class. Throws com::Error when there is none.
    void FindRecords();
    /// Null when the host has not given it, and neither has one of its objects.
    com::LateObject* Find(std::wstring_view role);
    /// The class name that the data class answered; "" before.
    const std::wstring& ClassName() const { return m_className; }

    /// Calls the member as the library does and reads the answer as the library reads it; what it answered,
    /// for people. Nothing, and no call, when it would change something that must not be changed. Throws
    /// com::Error.
    std::optional<std::wstring> Call(const contract::Member& row);

    /// Puts the record set back to where it stood when it was first seen, as far as it can.
    void PutBack() noexcept;

private:
    struct Row; // of the table of calls
    static const Row kCalls[];

    com::ComPtr<IDispatch> Box() const;
    /// An answer of a report dialog.
    std::wstring Hand(void (*answer)(contract::Sink& sink, contract::ReportChoice& choice));
    std::wstring FirstText();

    const bool m_write;
    std::map<std::wstring, com::LateObject, std::less<>> m_objects;
    contract::DataClass m_data;
    contract::Sink m_sink;
    std::wstring m_className;
    std::wstring m_field; // the first one
    std::wstring m_filter;
    com::Variant m_connection;
    std::optional<com::Variant> m_bookmark;
    std::optional<long> m_position;
};

} // namespace tamvelo::demo
