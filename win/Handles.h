#pragma once

#include "com/WinHeaders.h"

#include <memory>
#include <type_traits>

namespace tamvelo::win {

/// A handle that is closed with its owner; `Close` is the system's function for its kind.
template <class Handle, auto Close>
struct HandleCloser {
    using pointer = Handle; // NOLINT(readability-identifier-naming): the name that unique_ptr looks for
    void operator()(Handle handle) const { Close(handle); }
};

template <class Handle, auto Close>
using UniqueHandle = std::unique_ptr<std::remove_pointer_t<Handle>, HandleCloser<Handle, Close>>;

using UniqueFont = UniqueHandle<HFONT, DeleteObject>;
using UniqueBitmap = UniqueHandle<HBITMAP, DeleteObject>;
using UniqueIcon = UniqueHandle<HICON, DestroyIcon>;
using UniqueMenu = UniqueHandle<HMENU, DestroyMenu>;
using UniqueHook = UniqueHandle<HHOOK, UnhookWindowsHookEx>;
using UniqueFile = UniqueHandle<HANDLE, CloseHandle>;

} // namespace tamvelo::win
