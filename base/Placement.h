#pragma once

#include <span>

namespace tamvelo::base {

/// Pixels of the virtual screen, where negative coordinates are legal (a monitor left of or above the first).
struct Rect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Rect&) const = default;
};

struct Size {
    int width = 0;
    int height = 0;
};

/// A saved window rectangle as it may be shown now. One that lies inside a work area stays untouched; any
/// other is shrunk to fit and moved into the area that it overlaps most, or else into the nearest one. It is
/// first grown to the minimum size, which yields only to a smaller work area. With no work areas it is not
/// moved.
Rect PullOnto(Rect saved, std::span<const Rect> workAreas, Size minimum);

/// Whether stored numbers can be a window's rectangle at all (Windows keeps window coordinates in 16 bits).
bool IsSanePlacement(const Rect& rect);

/// A length from one resolution to another, rounded to the nearest, halves away from zero. Going to a higher
/// resolution and back gives the same length. Both resolutions are positive.
int Scale(int length, int fromDpi, int toDpi);

} // namespace tamvelo::base
