#pragma once

#include <memory>
#include <string>

#include "demo/data/Database.h"

namespace tamvelo::demo {

/// The sample database, made when it is not there yet; meanwhile a small window tells the user. `path` empty:
/// beside the program, or in the user's own folder when that is not writable; `rows` 0: the usual number of
/// articles. Throws DataError.
std::shared_ptr<Database> OpenSampleFile(std::wstring path, long rows);

} // namespace tamvelo::demo
