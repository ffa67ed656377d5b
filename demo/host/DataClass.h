#pragma once

#include <map>
#include <memory>
#include <string>

#include "com/Automation.h"
#include "demo/data/Filter.h"
#include "demo/host/RecordSet.h"

// clang-format off: it leans on the Windows headers above
#include <msdatsrc.h>
// clang-format on

namespace tamvelo::demo {

/// The interface of data sources, whose uuid the compiler cannot be asked for.
inline constexpr IID kDataSourceId = {
    0x7c0ffab3, 0xcd84, 0x11d0, {0x94, 0x9a, 0x00, 0xa0, 0xc9, 0x11, 0x10, 0xed}};

/// The data class that the dialogs read and change the data through, the same for every table. Besides the
/// members that every dialog calls it has
///
///     Recordset                the record set, always the same object; also as the data member "Primary"
///     InsertarArticulo(values) adds a record: an array of Variants, one for each field in the order of the
///                              record set's, as typed or as values; an empty one leaves the field Null
class DataClass final : public com::Automation, public DataSource {
public:
    DataClass(std::shared_ptr<Database> database, const TableInfo& table);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
        return Automation::QueryInterface(id, out);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return Automation::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return Automation::Release(); }

    HRESULT STDMETHODCALLTYPE getDataMember(DataMember name, REFIID id, IUnknown** out) override;
    HRESULT STDMETHODCALLTYPE getDataMemberName(LONG index, DataMember* name) override;
    HRESULT STDMETHODCALLTYPE getDataMemberCount(LONG* count) override;
    HRESULT STDMETHODCALLTYPE addDataSourceListener(DataSourceListener* listener) override;
    HRESULT STDMETHODCALLTYPE removeDataSourceListener(DataSourceListener* listener) override;

protected:
    std::span<const com::Member> Members() const override;
    HRESULT QueryOther(REFIID id, void** out) override;

private:
    void ClassName(com::Invocation& call);
    void Requery(com::Invocation& call);
    void FindRecord(com::Invocation& call);
    void GetFilter(com::Invocation& call);
    void SetFilter(com::Invocation& call);
    void CreateFilter(com::Invocation& call);
    void AplyFilter(com::Invocation& call);
    void ExistenRegistros(com::Invocation& call);
    void MoveFirst(com::Invocation& call);
    void MoveLast(com::Invocation& call);
    void MoveNext(com::Invocation& call);
    void MovePrevious(com::Invocation& call);
    void SetOrder(com::Invocation& call);
    void ValidaKey(com::Invocation& call);
    void ValidaValue(com::Invocation& call);
    void ValidaDefinedSize(com::Invocation& call);
    void GetConnection(com::Invocation& call);
    void AceptarTodos(com::Invocation& call);
    void DenegarTodos(com::Invocation& call);
    void NuevoCodigoFam(com::Invocation& call);
    void Recordset(com::Invocation& call);
    void InsertarArticulo(com::Invocation& call);

    const TableInfo& Table() const { return m_records->Table(); }
    std::wstring WithSelection(const std::wstring& filter) const;
    void MarkAll(com::Invocation& call, bool marked);

    const std::shared_ptr<Database> m_database;
    const com::ComPtr<RecordSet> m_records;
    const com::ComPtr<IDispatch> m_connection;
    std::wstring m_selection;                      // the condition of the selection asked for last
    std::map<std::wstring, std::wstring> m_stored; // filters by the name of their slot
};

} // namespace tamvelo::demo
