#pragma once

#include <string_view>

#include "demo/data/Database.h"

namespace tamvelo::demo {

inline constexpr long kDefaultArticles = 50'000;
inline constexpr long kMostArticles = 1'000'000;

/// The sample database in the file, made first when the file is new, or of another version of the sample
/// data, or of another number of articles (1 to kMostArticles); customers and orders grow with it. The same
/// number makes the same data everywhere. A file that holds somebody else's database is left alone. Throws
/// DataError.
Database OpenSampleData(std::wstring_view path, long articles = kDefaultArticles);

} // namespace tamvelo::demo
