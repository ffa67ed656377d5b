#pragma once

#include <optional>
#include <string>
#include <vector>

#include "com/LateObject.h"

namespace tamvelo::contract {

/// The host's data class (`MyClase`): one table's record set behind late-bound members. Every member here is
/// one call with the host's own names and argument order; nothing is asked in advance, so a member that the
/// host lacks throws when it is used. All throw com::Error with the host's own error.
class DataClass {
public:
    DataClass() = default;
    explicit DataClass(IDispatch* object) : m_object(object, L"MyClase") {}

    explicit operator bool() const { return static_cast<bool>(m_object); }
    IDispatch* Get() const { return m_object.Get(); }
    void Reset() { m_object.Reset(); }

    std::wstring sClassName();
    void Requery();
    void Requery(std::wstring_view selection);
    /// Positions the record set on `text`, sought in the key column or in column `number`.
    void FindRecord(std::wstring_view text, std::optional<short> number);
    std::wstring GetFilter(std::wstring_view slot);
    /// `filter` travels by reference: the host may rewrite it.
    void SetFilter(std::wstring& filter, std::wstring_view slot);
    /// The fragment for what was typed in `control`; `bound` is 0 equal, 1 lower, 2 upper, where the dialog
    /// passes one.
    std::wstring CreateFilter(com::ComPtr<IDispatch> control, std::optional<short> bound = {});
    /// The empty string clears the filter.
    void AplyFilter(std::wstring_view filter);
    bool existenregistros();
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    /// `column` travels by reference; the direction is "" or " DESC".
    void SetOrder(short& column, bool descending);
    /// Whether the key is kept. Null keeps it: hosts answer Null for fields that they do not check.
    bool ValidaKey(com::ComPtr<IDispatch> box, short& key);
    /// Whether what was typed is valid; Null counts as valid.
    bool ValidaValue(com::ComPtr<IDispatch> box);
    long ValidaDefinedSize(com::ComPtr<IDispatch> box);
    com::Variant GetConnection();
    void Aceptar_todos(com::Variant& connection);
    void Denegar_todos(com::Variant& connection);
    std::wstring NuevoCodigo_Fam(std::wstring_view family);
    /// Whether the host has checks of its own for values; not every dialog asks that of it.
    bool ChecksValues() { return m_object.Answers(L"ValidaValue"); }
    /// Adds a record; one value for each field of the record set, in its order, Empty for none.
    void InsertarArticulo(std::vector<com::Variant> values);

private:
    com::LateObject m_object;
};

} // namespace tamvelo::contract
