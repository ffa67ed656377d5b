#include "base/Placement.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace tamvelo::base {

namespace {

/// One axis of a rectangle. 64 bits, because stored numbers may be anything.
struct Span {
    std::int64_t start, length;
    std::int64_t End() const { return start + length; }
};

Span Across(const Rect& rect) { return {rect.left, rect.width}; }
Span Down(const Rect& rect) { return {rect.top, rect.height}; }

std::int64_t Overlap(Span a, Span b) {
    return std::max<std::int64_t>(0, std::min(a.End(), b.End()) - std::max(a.start, b.start));
}
std::int64_t Gap(Span a, Span b) {
    return std::max<std::int64_t>(0, std::max(a.start, b.start) - std::min(a.End(), b.End()));
}

bool IsBetterArea(const Rect& rect, const Rect& candidate, const Rect& best) {
    const auto overlap = [&](const Rect& area) {
        return Overlap(Across(rect), Across(area)) * Overlap(Down(rect), Down(area));
    };
    const auto distance = [&](const Rect& area) {
        return Gap(Across(rect), Across(area)) + Gap(Down(rect), Down(area));
    };
    if (overlap(candidate) != overlap(best)) {
        return overlap(candidate) > overlap(best);
    }
    return distance(candidate) < distance(best);
}

/// Start and length along one axis, inside the area.
Span PullInto(Span span, Span area) {
    const std::int64_t length = std::min(span.length, area.length);
    return {std::clamp(span.start, area.start, area.End() - length), length};
}

} // namespace

Rect PullOnto(Rect saved, std::span<const Rect> workAreas, Size minimum) {
    saved.width = std::max(saved.width, minimum.width);
    saved.height = std::max(saved.height, minimum.height);
    if (workAreas.empty()) {
        return saved;
    }
    const Rect* best = &workAreas.front();
    for (const Rect& area : workAreas) {
        if (IsBetterArea(saved, area, *best)) {
            best = &area;
        }
    }
    const Span across = PullInto(Across(saved), Across(*best));
    const Span down = PullInto(Down(saved), Down(*best));
    return {static_cast<int>(across.start), static_cast<int>(down.start), static_cast<int>(across.length),
            static_cast<int>(down.length)};
}

bool IsSanePlacement(const Rect& rect) {
    constexpr int kLeast = -32768;
    constexpr int kMost = 32767;
    const auto coordinate = [](int value) { return value >= kLeast && value <= kMost; };
    const auto length = [](int value) { return value > 0 && value <= kMost; };
    return coordinate(rect.left) && coordinate(rect.top) && length(rect.width) && length(rect.height);
}

int Scale(int length, int fromDpi, int toDpi) {
    const std::int64_t twice = std::int64_t{2} * std::abs(std::int64_t{length}) * toDpi;
    const std::int64_t rounded = (twice + fromDpi) / (std::int64_t{2} * fromDpi);
    return static_cast<int>(length < 0 ? -rounded : rounded);
}

} // namespace tamvelo::base
