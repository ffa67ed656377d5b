#pragma once

#include "com/WinHeaders.h"

#include <functional>
#include <map>
#include <string>

#include "com/ComPtr.h"

/// Somebody else's objects: each host object goes through one of these, made with nothing of the library's.
namespace tamvelo::testing {

/// What the host does wrong in one member of one kind of object.
enum class Fault {
    None,
    Missing,
    Raises,
    Null,
    WrongType,
    ClosesWindow,
    PumpsKey,
    // on demand
    RaisesWithoutText,
    RaisesMegabyte,
    BareFailure,
    NotANumber,
    Infinite,
    Huge,
    Negative,
    Empty,
    Array,
    Megabyte,
    EmbeddedZero,
    RetypesArgument,
    CallsAgain,
    TakesTwoSeconds,
};

struct FaultName {
    Fault fault;
    const wchar_t* name;
    bool daily;   // in every run of the tests
    bool answers; // replaces the member's answer, so a member that answers nothing has no such fault
    bool silent;  // the answer comes all the same: there is nothing to tell
};
extern const FaultName kFaults[20];

/// The members that the library calls, by the way that leads to their object ("MyClase.Recordset.Fields"),
/// and the one that is at fault.
class Foreign {
public:
    /// `object` as it reaches the library, and all that it hands out: in names and arguments nothing else
    /// changes.
    static com::ComPtr<IDispatch> Wrap(IDispatch* object, const std::wstring& name);
    /// Objects that are alive.
    static long Alive();

    /// Members called since it was emptied, with the type of what came back.
    static inline std::map<std::wstring, VARTYPE> called;
    static inline std::wstring member; // at fault
    static inline Fault fault = Fault::None;
    static inline int struck = 0; // times that the fault took place
    /// What a fault does that is no answer: closing, pumping, calling.
    static inline std::function<void()> act;

    static constexpr HRESULT kError = static_cast<HRESULT>(0x800A0201);
    static constexpr wchar_t kText[] = L"El fichero está bloqueado.";
};

} // namespace tamvelo::testing
