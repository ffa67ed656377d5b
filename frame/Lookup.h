#pragma once

#include <optional>
#include <string>

#include "base/FilterText.h"
#include "com/LateObject.h"

namespace tamvelo::frame {

/// Makes the public object that nested dialogs are opened through. A form that needs another dialog goes the
/// way a host goes; the top storey says here how the object is made.
using ShowSerchFactory = com::ComPtr<IDispatch> (*)();
void SetShowSerchFactory(ShowSerchFactory factory);
com::LateObject NewShowSerch();

/// What a box can be filled from: `operation` of the library over a data class that the environment makes,
/// which is asked for its records by the name of a selection first.
struct Lookup {
    const wchar_t* className = nullptr; // null: nothing
    const wchar_t* selection = base::kSeleccion;
    const wchar_t* operation = L"ShowSelec";
    short column = 0; // that the panel opens in, and that classes without an answer of their own answer with
    bool find = true; // stand on the record that the control holds
};

/// A data class with the look-up's records. Throws com::Error when the environment makes none, or the host's
/// own error.
com::LateObject MakeList(const Lookup& lookup);

/// Opens the look-up for a control; the answer goes to `sink`, a relay of the caller's, with `index`. Throws
/// com::Error when the environment makes no such class, or what the operation raised.
void OpenLookup(const Lookup& lookup, const com::ComPtr<IDispatch>& sink, com::ComPtr<IDispatch> control,
                short index);

/// The name that goes with a code in a look-up's list: the second field of the record that the data class
/// finds, if its first field is the code, in any case. Nothing when there is no such record. Throws
/// com::Error when the environment makes no such class, when it has no record set, or the host's own error.
std::optional<std::wstring> NameOf(const Lookup& lookup, const std::wstring& code);

} // namespace tamvelo::frame
