#pragma once

#include <vector>

#include "com/LateObject.h"

namespace tamvelo::com {

/// A collection object over values that never change: `Count`, `Item` counted from 1 (the default member) and
/// For Each.
ComPtr<IDispatch> MakeCollection(std::vector<Variant> items);

/// What a collection of any maker holds, in its order: by its enumerator, else by `Count` and `Item` counted
/// from 1. Throws com::Error when it is no collection.
std::vector<Variant> ItemsOf(LateObject& collection);

} // namespace tamvelo::com
