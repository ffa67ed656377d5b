#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/Fake.h"
#include "tests/support/RecordSets.h"

/// A host that does what the test tells it and writes down every call.
namespace tamvelo::testing {

using Log = std::vector<std::wstring>;

/// An automation object whose members are functions. Each call is written as text with its arguments as they
/// came: "&" before one by reference, 1 for a 16-bit integer, 1L for a 32-bit one, 1.5# for a floating-point
/// number, 1.5@ for money, "a" for a string, #2026-12-31# for a date, True, Null, Empty, {1L, "a"} for an
/// array, objects by name.
class HostObject final : public Fake {
public:
    using Behaviour = std::function<void(com::Invocation&)>;
    HostObject(std::wstring name, Log& log) : Fake(std::move(name)), m_log(log) {}

    /// A member, or another behaviour for one. A quiet one is not written down.
    void On(const std::wstring& member, Behaviour behaviour, bool quiet = false);
    void Without(const std::wstring& member);
    // Members that do no more than that.
    void Returns(const std::wstring& member, com::Variant value, bool quiet = false);
    void Raises(const std::wstring& member);
    void Accepts(std::initializer_list<const wchar_t*> members);
    long References();

    /// Runs before each call of any of them, with the member's name.
    static inline std::function<void(const std::wstring&)> beforeEach;

private:
    struct Entry {
        std::wstring name;
        Behaviour behaviour;
        bool quiet;
    };
    std::span<const com::Member> Members() const override { return m_members; }
    void Entered(DISPID id, const DISPPARAMS& parameters) override;
    void Renumber();

    Log& m_log;
    std::vector<Entry> m_entries;
    std::vector<com::Member> m_members;
};

/// The data class, sink and control of a host. Unless told otherwise the data class keeps the filter that it
/// is given (one that is not empty leaves every second record), sorts and moves its record set; the sink
/// accepts everything.
class FakeHost {
public:
    explicit FakeHost(long records = 20);
    /// In place of the set's own values texts that tell their place, "f<record>c<column>" from 0.
    void TextCells();

    Log log;
    std::wstring className = L"prueba";
    std::wstring text;   // the control's
    std::wstring stored; // the filter last set
    com::ComPtr<MemoryRecordSet> set;
    com::ComPtr<HostObject> data;
    com::ComPtr<HostObject> sink;
    com::ComPtr<HostObject> ctl;
    com::ComPtr<HostObject> columns; // none until AddColumn

    /// A column of the host's grid, at the end of `columns`.
    HostObject& AddColumn(const wchar_t* caption, const wchar_t* field, bool visible = true);
    bool IsColumnVisible(size_t index) const { return m_columns[index]->visible; }
    /// References to all of the host's objects together.
    long References() const;

private:
    struct Column {
        com::ComPtr<HostObject> object;
        bool visible;
    };
    std::vector<std::unique_ptr<Column>> m_columns;
};

/// Raises the error that a host raises; automation clients read its number as 513.
[[noreturn]] void RaiseHostError();
inline constexpr HRESULT kHostErrorNumber = static_cast<HRESULT>(0x800A0201);
inline constexpr wchar_t kHostErrorText[] = L"La tabla está bloqueada.";
inline constexpr wchar_t kHostErrorSource[] = L"Gestión";

} // namespace tamvelo::testing
