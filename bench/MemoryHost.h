#pragma once

#include <string>

#include "com/ComPtr.h"

namespace tamvelo::bench {

/// What a host hands to the panel: its event sink, its data class and the control that asks.
struct Host {
    com::ComPtr<IDispatch> sink;
    com::ComPtr<IDispatch> data;
    com::ComPtr<IDispatch> control;
};

/// The data class "articulos" over `rows` records computed on demand, asked for by a control that shows
/// `text`. The host's own work is next to nothing here, however many rows there are: what is left to measure
/// is ours.
Host MakeMemoryHost(long rows, const std::wstring& text);

/// A control that shows `text`, and a sink that nobody calls: all that opening and closing needs.
com::ComPtr<IDispatch> MakeTextControl(const std::wstring& text);
com::ComPtr<IDispatch> MakeSilentSink();

} // namespace tamvelo::bench
