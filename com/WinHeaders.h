#pragma once

// The one way into the Windows headers: everything above base/ includes them through this file.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef STRICT
#define STRICT
#endif

#include <windows.h>

#include <ocidl.h>
#include <ole2.h>
#include <oleauto.h>
#include <olectl.h>
