#pragma once

#include "com/Variant.h"
#include "demo/data/Database.h"
#include "demo/data/Tables.h"

namespace tamvelo::demo {

/// A cell as automation shows it: money as Currency, a day as Date, a mark as Boolean, Null as Null.
com::Variant ToVariant(const Column& column, const Value& value);

/// What a host or a dialog writes into a cell; a text is read as if it had been typed. Throws DataError when
/// it is no value of the column's type.
Value FromVariant(const Column& column, const com::Variant& value);

/// The type of the column's values in ADO's numbers.
long AdoType(const Column& column);
/// Characters of a text, bytes of any other value.
long DefinedSize(const Column& column);

} // namespace tamvelo::demo
