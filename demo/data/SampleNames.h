#pragma once

#include <span>
#include <string_view>

#include "demo/data/SampleRecipe.h"

namespace tamvelo::demo {

// Words of which the sample data is made, in UTF-8 as they go into the database.

using WordList = std::span<const std::string_view>;

WordList ListOf(Words words);

struct Place {
    std::string_view town;
    std::string_view province;
    int postCode; // of its first district
};
std::span<const Place> Places();

} // namespace tamvelo::demo
