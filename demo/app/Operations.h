#pragma once

#include <span>

#include "com/LateObject.h"

namespace tamvelo::demo {

/// The menus in which the operations stand.
enum class Group { Selection, Search, Grid, Reports, Dates };

/// What the host gives to an operation; each takes what it needs. The dialogs may change any of it.
struct Request {
    com::ComPtr<IDispatch> sink;
    com::ComPtr<IDispatch> dataClass;
    com::ComPtr<IDispatch> control; // that receives the answer
    com::ComPtr<IDispatch> columns; // of the host's grid
    com::ComPtr<IDispatch> reports;
    std::wstring screen; // the name under which report choices are kept
    std::wstring text;   // proposed for the search
    short column = 0;
    short index = 0;
    bool find = true;
    bool stock = false;
    bool showAuto = true;
    short modal = 1;
    short mode = 0;
    long window = 0;
    DATE date = 0;
};

/// One of the library's operations.
struct Operation {
    const wchar_t* name;
    Group group;
    const wchar_t* caption; // of its menu item
    void (*call)(com::LateObject& showSerch, const wchar_t* name, Request& request);

    /// Opens the dialog and comes back when it is closed. Throws com::Error with the library's error.
    void Perform(com::LateObject& showSerch, Request& request) const { call(showSerch, name, request); }
};

/// All of them, in the order of the menus.
std::span<const Operation> Operations();

/// The operation of that name; null when there is none.
const Operation* FindOperation(std::wstring_view name);

} // namespace tamvelo::demo
