#pragma once

#include "com/ComPtr.h"

namespace tamvelo::com {

/// The description of an interface from the type library embedded in this module; null when it cannot be
/// read.
ComPtr<ITypeInfo> OwnTypeInfo(REFIID interfaceId) noexcept;

/// IDispatch::Invoke for a dual interface. The system's own version refuses what scripts send (a variant by
/// reference where an integer by reference is declared) and passes null for what was left out, so every
/// parameter gets a cell of exactly its declared type first, filled from the argument, the declared default
/// or zero. What the method changed, and only that, is written back to arguments that came by reference.
HRESULT InvokeTyped(ITypeInfo* info, void* self, DISPID id, WORD flags, DISPPARAMS* parameters,
                    VARIANT* result, EXCEPINFO* thrown, UINT* wrong) noexcept;

} // namespace tamvelo::com
