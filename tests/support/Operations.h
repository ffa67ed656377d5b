#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "com/Error.h"
#include "com/Variant.h"

/// The operations of the library as its type library has them: nothing else in the tests lists them.
namespace tamvelo::testing {

struct Parameter {
    std::wstring name;
    WORD flags;
    VARTYPE type; // of the variable that a caller has
    bool byReference;
    std::wstring standIn; // the declared default, "" without one
    bool Optional() const { return flags & PARAMFLAG_FOPT; }
};

struct Operation {
    DISPID id;
    std::wstring name;
    ULONG_PTR slot; // of the method: how far into the table of an early-bound caller
    std::vector<Parameter> parameters;
    size_t Required() const; // how many parameters are not optional; those stand first
};

/// The functions of an interface; of a dual one, as a late-bound caller sees them.
std::vector<Operation> Functions(ITypeInfo* info);

/// Those of the public class, in the order of the type library beside the test program.
const std::vector<Operation>& Operations();
const Operation& OperationOf(std::wstring_view name);

/// Calls late bound by DISPID, a value for each parameter; the error that the caller gets, if any.
std::optional<com::Error> CallLate(IDispatch* object, const Operation& operation,
                                   const std::function<com::Variant(const Parameter&)>& argument);

} // namespace tamvelo::testing
