#include "com/TypedDispatch.h"

#include <vector>

#include "com/CallOut.h"
#include "com/Error.h"
#include "com/Module.h"
#include "com/References.h"
#include "com/Variant.h"

namespace tamvelo::com {

namespace {

/// One declared parameter: the value handed to the method, and what it was before.
struct Cell {
    Variant value;
    Variant before;
    VARTYPE type = VT_EMPTY;
    VARIANT* given = nullptr;
    UINT position = 0;
};

class Function {
public:
    Function(ITypeInfo* info, DISPID id, WORD flags) : m_info(info) {
        FUNCDESC* found = nullptr;
        for (UINT i = 0; SUCCEEDED(info->GetFuncDesc(i, &found)); ++i) {
            if (found->memid == id && (found->invkind & flags)) {
                m_description = found;
                return;
            }
            info->ReleaseFuncDesc(found);
        }
    }
    ~Function() {
        if (m_description) {
            m_info->ReleaseFuncDesc(m_description);
        }
    }
    Function(const Function&) = delete;
    Function& operator=(const Function&) = delete;

    explicit operator bool() const { return m_description != nullptr; }
    size_t Count() const { return static_cast<size_t>(m_description->cParams); }
    const ELEMDESC& Parameter(size_t index) const { return m_description->lprgelemdescParam[index]; }

private:
    ITypeInfo* m_info;
    FUNCDESC* m_description = nullptr;
};

VARTYPE DeclaredType(const ELEMDESC& parameter) {
    const TYPEDESC& type = parameter.tdesc;
    const TYPEDESC& target = type.vt == VT_PTR ? *type.lptdesc : type;
    // A pointer to an interface of our own, or of another library, is an object.
    return target.vt == VT_PTR || target.vt == VT_USERDEFINED ? static_cast<VARTYPE>(VT_DISPATCH) : target.vt;
}

/// Pairs the arguments with the parameters: rgvarg is in reverse order, the named ones first.
HRESULT Pair(DISPPARAMS& parameters, std::vector<Cell>& cells, UINT* wrong) {
    if (parameters.cArgs > cells.size()) {
        return DISP_E_BADPARAMCOUNT;
    }
    for (UINT i = 0; i < parameters.cArgs; ++i) {
        const size_t index = i < parameters.cNamedArgs ? static_cast<size_t>(parameters.rgdispidNamedArgs[i])
                                                       : parameters.cArgs - 1 - i;
        if (index >= cells.size() || cells[index].given) {
            if (wrong) {
                *wrong = i;
            }
            return DISP_E_PARAMNOTFOUND;
        }
        cells[index].given = &parameters.rgvarg[i];
        cells[index].position = i;
    }
    return S_OK;
}

HRESULT FillDefault(const PARAMDESC& parameter, bool omitted, Cell& cell) {
    if (!(parameter.wParamFlags & PARAMFLAG_FOPT)) {
        return omitted ? DISP_E_PARAMNOTOPTIONAL : DISP_E_BADPARAMCOUNT;
    }
    if (parameter.wParamFlags & PARAMFLAG_FHASDEFAULT) {
        return VariantChangeType(cell.value.Address(), &parameter.pparamdescex->varDefaultValue, 0,
                                 cell.type);
    }
    if (cell.type == VT_VARIANT) {
        cell.value = Variant::Missing();
    } else {
        cell.value.Address()->vt = cell.type; // zero, or the null string
    }
    return S_OK;
}

HRESULT Fill(const ELEMDESC& parameter, Cell& cell) {
    cell.type = DeclaredType(parameter);
    Variant given;
    if (cell.given) {
        const HRESULT result = VariantCopyInd(given.Address(), cell.given);
        if (FAILED(result)) {
            return result;
        }
    }
    if (!cell.given || given.IsMissing()) {
        return FillDefault(parameter.paramdesc, cell.given != nullptr, cell);
    }
    if (given.Type() == cell.type || cell.type == VT_VARIANT) {
        cell.value = std::move(given);
        return S_OK;
    }
    return VariantChangeType(cell.value.Address(), given.In(), VARIANT_ALPHABOOL, cell.type);
}

/// What a by-reference argument points at: the variant itself where one is declared, else what is in it.
void* ContentOf(Cell& cell) {
    VARIANT* value = cell.value.Address();
    return cell.type == VT_VARIANT ? static_cast<void*>(value) : &value->lVal;
}

bool Changed(const Cell& cell) {
    const VARIANT& now = cell.value.Get();
    const VARIANT& before = cell.before.Get();
    if (now.vt != before.vt) {
        return true; // of a declared variant only
    }
    switch (now.vt) {
    case VT_BSTR:
        return cell.value.ToText() != cell.before.ToText();
    case VT_DISPATCH:
        return now.pdispVal != before.pdispVal;
    case VT_I2:
    case VT_BOOL:
        return now.iVal != before.iVal;
    case VT_I4:
        return now.lVal != before.lVal;
    default:
        return now.cyVal.int64 != before.cyVal.int64;
    }
}

} // namespace

ComPtr<ITypeInfo> OwnTypeInfo(REFIID interfaceId) noexcept {
    ComPtr<ITypeInfo> info;
    wchar_t path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(Module::Instance(), path, MAX_PATH);
    ComPtr<ITypeLib> library;
    if (length > 0 && length < MAX_PATH && SUCCEEDED(LoadTypeLibEx(path, REGKIND_NONE, &library))) {
        library->GetTypeInfoOfGuid(interfaceId, &info);
    }
    return info;
}

HRESULT InvokeTyped(ITypeInfo* info, void* self, DISPID id, WORD flags, DISPPARAMS* parameters,
                    VARIANT* result, EXCEPINFO* thrown, UINT* wrong) noexcept {
    const FloatGuard floats;
    const Watch outermost;
    try {
        const Function function(info, id, flags);
        if (!parameters || !function) {
            return parameters ? DISP_E_MEMBERNOTFOUND : E_INVALIDARG;
        }
        std::vector<Cell> cells(function.Count());
        HRESULT code = Pair(*parameters, cells, wrong);
        std::vector<VARIANT> exact(cells.size());
        for (size_t i = 0; SUCCEEDED(code) && i < cells.size(); ++i) {
            code = Fill(function.Parameter(i), cells[i]);
            if (FAILED(code)) {
                if (wrong && cells[i].given) {
                    *wrong = cells[i].position;
                }
                break;
            }
            cells[i].before = cells[i].value;
            VARIANT& argument = exact[cells.size() - 1 - i];
            argument.vt = cells[i].type;
            if (function.Parameter(i).tdesc.vt == VT_PTR &&
                function.Parameter(i).tdesc.lptdesc->vt != VT_USERDEFINED) {
                argument.vt |= VT_BYREF;
                argument.byref = ContentOf(cells[i]);
            } else {
                argument = cells[i].value.Get();
            }
        }
        if (FAILED(code)) {
            return code;
        }
        DISPPARAMS all{exact.data(), nullptr, static_cast<UINT>(exact.size()), 0};
        code = info->Invoke(self, id, flags, &all, result, thrown, nullptr);
        if (SUCCEEDED(code)) {
            for (Cell& cell : cells) {
                if (cell.given && Changed(cell)) {
                    StoreReference(*cell.given, cell.value.Get());
                }
            }
        }
        return code;
    } catch (...) {
        return FillExcepInfo(CurrentError(), thrown);
    }
}

} // namespace tamvelo::com
