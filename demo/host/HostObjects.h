#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "com/Automation.h"
#include "demo/data/Database.h"

namespace tamvelo::demo {

// What a host hands to the dialogs. Each function makes a new automation object; whoever holds it keeps it
// alive.

/// The data class of a table (`MyClase`), by one of the names in demo/data/Tables.h, in any case. It shares
/// the database with the others; each has a record set, filters and an order of its own. Throws com::Error
/// for a class that there is none of.
com::ComPtr<IDispatch> MakeDataClass(std::shared_ptr<Database> database, std::wstring_view className);

/// Hears a member of the sink and its arguments, in declared order. An argument that came by reference is
/// changed with call.WriteBack. A com::Error thrown here reaches the dialog.
using SinkCallback = std::function<void(std::wstring_view member, com::Invocation& call)>;

/// An event sink (`objClsEvents`, `ClsEventos`) that knows every member that the dialogs call.
com::ComPtr<IDispatch> MakeSink(SinkCallback callback);

/// One of the host's text boxes (`ctl`). `index` is its place in its control array, `dataField` the field
/// that it shows. It may outlive the window; members that need it then raise an error.
com::ComPtr<IDispatch> MakeTextControl(HWND window, std::wstring_view name, short index,
                                       std::wstring_view dataField = {});

/// The columns of the host's grid of a table (`Columns`), all visible. Throws com::Error for a class that
/// there is none of.
com::ComPtr<IDispatch> MakeColumns(std::wstring_view className);

/// The reports that the host offers (`cReports`): a collection of objects with a `Titulo`.
com::ComPtr<IDispatch> MakeReports(const std::vector<std::wstring>& titles);

/// The component that the library asks for data classes when a dialog looks something up on its own:
/// `CrearClase(nombre)` answers a new data class of that table, `ClaseRelacionada(clase, campo)` the name of
/// the class whose codes that field holds.
com::ComPtr<IDispatch> MakeDataClasses(std::shared_ptr<Database> database);

/// The component that keeps what the new appointment form saves: `GuardarCita` writes a row of the table
/// "citas".
com::ComPtr<IDispatch> MakeAppointments(std::shared_ptr<Database> database);

/// The appointments of a day, a line each, by their hours. Throws DataError.
std::vector<std::wstring> AppointmentsOn(Database& database, DATE day);

} // namespace tamvelo::demo
