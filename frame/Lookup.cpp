#include "frame/Lookup.h"

#include "base/Text.h"
#include "com/Error.h"
#include "contract/DataClass.h"
#include "environment/Environment.h"
#include "grid/RecordSource.h"

namespace tamvelo::frame {

namespace {

ShowSerchFactory g_factory = nullptr;

} // namespace

com::LateObject MakeList(const Lookup& lookup) {
    com::LateObject data(environment::Environment::Get().GetDataClasses().Create(lookup.className).Get(),
                         L"MyClase");
    data.Call(L"Requery", {lookup.selection});
    return data;
}

void SetShowSerchFactory(ShowSerchFactory factory) { g_factory = factory; }

com::LateObject NewShowSerch() {
    if (!g_factory) {
        throw com::Error(E_UNEXPECTED, L"No se pueden abrir diálogos desde este formulario.");
    }
    return {g_factory().Get(), L"ClsShowSerch"};
}

void OpenLookup(const Lookup& lookup, const com::ComPtr<IDispatch>& sink, com::ComPtr<IDispatch> control,
                short index) {
    const com::ComPtr<IDispatch> answers(sink.Get()); // its owner may go while the list is made
    const com::LateObject data = MakeList(lookup);
    short column = lookup.column;
    NewShowSerch().Call(lookup.operation,
                        {answers.Get(), data.Get(), com::Argument::Ref(control), com::Argument::Ref(column),
                         com::Argument::Ref(index), lookup.find});
}

std::optional<std::wstring> NameOf(const Lookup& lookup, const std::wstring& code) {
    const com::LateObject list = MakeList(lookup);
    contract::DataClass(list.Get()).FindRecord(code, {});
    com::LateObject set(grid::RecordSource(list.Get()).Set(), L"Recordset");
    if (!set || set.Call(L"BOF").ToBool() || set.Call(L"EOF").ToBool()) {
        return std::nullopt;
    }
    com::LateObject fields(set.Call(L"Fields").ToObject().Get(), L"Fields");
    const auto text = [&](long field) {
        com::LateObject cell(fields.Call(L"Item", {field}).ToObject().Get(), L"Field");
        return cell.Call(L"Value").ToText();
    };
    if (fields.Call(L"Count").ToLong() < 2 || base::Lower(text(0)) != base::Lower(code)) {
        return std::nullopt;
    }
    return text(1);
}

} // namespace tamvelo::frame
