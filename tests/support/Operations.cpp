#include "tests/support/Operations.h"

#include <algorithm>
#include <stdexcept>

namespace tamvelo::testing {

namespace {

Parameter Describe(const ELEMDESC& element, BSTR name) {
    const bool pointer = element.tdesc.vt == VT_PTR;
    const TYPEDESC& type = pointer ? *element.tdesc.lptdesc : element.tdesc;
    Parameter parameter{name, element.paramdesc.wParamFlags, type.vt, pointer, {}};
    if (type.vt == VT_PTR) {
        parameter.type = VT_DISPATCH;
    }
    if (parameter.flags & PARAMFLAG_FHASDEFAULT) {
        com::Variant standIn;
        com::Check(
            VariantChangeType(standIn.Address(), &element.paramdesc.pparamdescex->varDefaultValue, 0, VT_I4));
        parameter.standIn = std::to_wstring(standIn.ToLong());
    }
    return parameter;
}

std::vector<Operation> OfPublicClass() {
    wchar_t path[MAX_PATH];
    const std::wstring program(path, GetModuleFileNameW(nullptr, path, ARRAYSIZE(path)));
    com::ComPtr<ITypeLib> library;
    com::ComPtr<ITypeInfo> info;
    com::Check(LoadTypeLibEx((program.substr(0, program.rfind(L'\\')) + L"\\" TAMVELO_LIBRARY).c_str(),
                             REGKIND_NONE, &library));
    com::Check(library->GetTypeInfo(0, &info));
    return Functions(info.Get());
}

} // namespace

size_t Operation::Required() const {
    return static_cast<size_t>(
        std::ranges::count_if(parameters, [](const Parameter& parameter) { return !parameter.Optional(); }));
}

std::vector<Operation> Functions(ITypeInfo* info) {
    std::vector<Operation> functions;
    FUNCDESC* description = nullptr;
    for (UINT i = 0; SUCCEEDED(info->GetFuncDesc(i, &description)); ++i) {
        const bool inherited = description->wFuncFlags & FUNCFLAG_FRESTRICTED; // of IUnknown and IDispatch
        if (!inherited) {
            std::vector<BSTR> names(static_cast<size_t>(description->cParams) + 1);
            UINT count = 0;
            com::Check(
                info->GetNames(description->memid, names.data(), static_cast<UINT>(names.size()), &count));
            Operation function{description->memid, names[0], static_cast<ULONG_PTR>(description->oVft), {}};
            for (size_t p = 1; p < names.size(); ++p) {
                function.parameters.push_back(Describe(description->lprgelemdescParam[p - 1], names[p]));
            }
            for (const BSTR name : names) {
                SysFreeString(name);
            }
            functions.push_back(std::move(function));
        }
        info->ReleaseFuncDesc(description);
    }
    return functions;
}

const std::vector<Operation>& Operations() {
    static const std::vector<Operation> operations = OfPublicClass();
    return operations;
}

const Operation& OperationOf(std::wstring_view name) {
    const auto found = std::ranges::find(Operations(), name, &Operation::name);
    return found == Operations().end() ? throw std::out_of_range("no such operation") : *found;
}

std::optional<com::Error> CallLate(IDispatch* object, const Operation& operation,
                                   const std::function<com::Variant(const Parameter&)>& argument) {
    std::vector<com::Variant> values;
    for (auto each = operation.parameters.rbegin(); each != operation.parameters.rend(); ++each) {
        values.push_back(argument(*each));
    }
    static_assert(sizeof(com::Variant) == sizeof(VARIANT));
    DISPPARAMS parameters{values.empty() ? nullptr : values[0].Address(), nullptr,
                          static_cast<UINT>(values.size()), 0};
    EXCEPINFO thrown{};
    const HRESULT code = object->Invoke(operation.id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                        &parameters, nullptr, &thrown, nullptr);
    if (SUCCEEDED(code)) {
        return {};
    }
    return com::ErrorOfInvoke(code, thrown, L"ClsShowSerch");
}

} // namespace tamvelo::testing
