#include "logic/editing/EditGeometry.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <numeric>
#include <optional>

namespace logic {

namespace {

constexpr std::int32_t HANDLE_SIZE = 6;
constexpr std::int32_t REACHABLE = 8; // pixels of a control that stay inside the panel

// One axis of a rectangle, so that across and down are written once.
struct Span {
    std::int32_t from, to;
    std::int32_t Centre() const { return from + (to - from) / 2; }
    std::int32_t Length() const { return to - from; }
};

Span Across(const Rectangle& rectangle) {
    return {rectangle.left, rectangle.right};
}
Span Down(const Rectangle& rectangle) {
    return {rectangle.top, rectangle.bottom};
}

// -1 at the near end, 1 at the far end, 0 between.
int EndAt(Span span, std::int32_t point) {
    const std::int32_t size = std::clamp(span.Length() / 3, 1, HANDLE_SIZE);
    return point < span.from + size ? -1 : (point >= span.to - size ? 1 : 0);
}

bool IsInMiddle(Span span, std::int32_t point) {
    const std::int32_t size = std::clamp(span.Length() / 3, 1, HANDLE_SIZE);
    return std::abs(2 * point + 1 - span.from - span.to) <= size;
}

std::int32_t NearestMultiple(std::int32_t value, std::int32_t step) {
    const std::int32_t half = value >= 0 ? step / 2 : -(step / 2);
    return (value + half) / step * step;
}

// The shortest way from one of the own lines to a line of another span.
struct Attraction {
    std::int32_t by = 0;
    std::int32_t line = 0;
};
std::optional<Attraction> Attract(std::span<const std::int32_t> own, std::span<const Rectangle> others,
                                  Span (*axis)(const Rectangle&), bool centres, std::int32_t distance) {
    std::optional<Attraction> best;
    for (const Rectangle& other : others) {
        const Span span = axis(other);
        const std::array lines{span.from, span.to, span.Centre()};
        for (std::size_t i = 0; i < (centres ? 3U : 2U); ++i) {
            for (const std::int32_t mine : own) {
                const std::int32_t by = lines[i] - mine;
                if (std::abs(by) <= distance && (!best || std::abs(by) < std::abs(best->by))) {
                    best = {by, lines[i]};
                }
            }
        }
    }
    return best;
}

// The line along the snapped rectangle and all others that share it.
Guide GuideAlong(std::int32_t line, bool vertical, const Rectangle& snapped,
                 std::span<const Rectangle> others) {
    const auto along = vertical ? Down : Across;
    const auto across = vertical ? Across : Down;
    Guide guide{vertical, line, along(snapped).from, along(snapped).to};
    for (const Rectangle& other : others) {
        const Span span = across(other);
        if (line == span.from || line == span.to || line == span.Centre()) {
            guide.from = std::min(guide.from, along(other).from);
            guide.to = std::max(guide.to, along(other).to);
        }
    }
    return guide;
}

struct AxisLines {
    std::array<std::int32_t, 3> lines{};
    std::size_t count = 0;
    bool centres = false;
};

Snap SnapLines(const Rectangle& rectangle, const AxisLines& x, const AxisLines& y, Handle handle,
               std::span<const Rectangle> others, const SnapSettings& settings) {
    const auto axis = [&](const AxisLines& own, Span (*of)(const Rectangle&)) -> std::optional<Attraction> {
        if (own.count == 0 || settings.distance <= 0) {
            return std::nullopt;
        }
        return Attract({own.lines.data(), own.count}, others, of, own.centres, settings.distance);
    };
    const auto toGrid = [&](const AxisLines& own) {
        return own.count == 0 || settings.grid <= 0
                   ? 0
                   : NearestMultiple(own.lines[0], settings.grid) - own.lines[0];
    };
    const auto across = axis(x, Across);
    const auto down = axis(y, Down);
    Snap snap;
    snap.by = {across ? across->by : toGrid(x), down ? down->by : toGrid(y)};
    const Rectangle snapped =
        handle == Handle::None ? Moved(rectangle, snap.by) : Sized(rectangle, handle, snap.by, 1);
    if (across) {
        snap.guides.push_back(GuideAlong(across->line, true, snapped, others));
    }
    if (down) {
        snap.guides.push_back(GuideAlong(down->line, false, snapped, others));
    }
    return snap;
}

std::int32_t ReachableAxis(std::int32_t by, std::span<const Rectangle> rectangles,
                           Span (*axis)(const Rectangle&), std::int32_t length) {
    std::int32_t least = INT32_MIN;
    std::int32_t most = INT32_MAX;
    for (const Rectangle& rectangle : rectangles) {
        const Span span = axis(rectangle);
        const std::int32_t part = std::min({REACHABLE, span.Length(), length});
        // What is outside already may stay there, but goes no further.
        least = std::max(least, std::min(0, part - span.to));
        most = std::min(most, std::max(0, length - part - span.from));
    }
    return std::clamp(by, least, std::max(least, most));
}

void Distribute(std::span<Rectangle> rectangles, Span (*axis)(const Rectangle&), bool across) {
    if (rectangles.size() < 3) {
        return;
    }
    std::vector<std::size_t> order(rectangles.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        const Span first = axis(rectangles[a]);
        const Span second = axis(rectangles[b]);
        return first.from + first.to < second.from + second.to;
    });
    std::int64_t lengths = 0;
    for (const Rectangle& rectangle : rectangles) {
        lengths += axis(rectangle).Length();
    }
    const std::int64_t start = axis(rectangles[order.front()]).from;
    const std::int64_t room = axis(rectangles[order.back()]).to - start - lengths;
    const auto gaps = static_cast<std::int64_t>(order.size() - 1);
    std::int64_t used = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        Rectangle& rectangle = rectangles[order[i]];
        const Span span = axis(rectangle);
        const std::int64_t gap = room * static_cast<std::int64_t>(i);
        const auto by = static_cast<std::int32_t>(
            start + used + (gap >= 0 ? gap + gaps / 2 : gap - gaps / 2) / gaps - span.from);
        used += span.Length();
        if (i > 0 && i + 1 < order.size()) {
            rectangle = Moved(rectangle, across ? Offset{by, 0} : Offset{0, by});
        }
    }
}

} // namespace

Rectangle Moved(const Rectangle& rectangle, Offset by) {
    return {rectangle.left + by.x, rectangle.top + by.y, rectangle.right + by.x, rectangle.bottom + by.y};
}

Rectangle Spanned(Offset corner, Offset opposite) {
    return {std::min(corner.x, opposite.x), std::min(corner.y, opposite.y), std::max(corner.x, opposite.x),
            std::max(corner.y, opposite.y)};
}

bool Touches(const Rectangle& band, const Rectangle& rectangle) {
    return band.left < rectangle.right && rectangle.left < band.right && band.top < rectangle.bottom &&
           rectangle.top < band.bottom;
}

Rectangle Bounds(std::span<const Rectangle> rectangles) {
    if (rectangles.empty()) {
        return {};
    }
    Rectangle all = rectangles.front();
    for (const Rectangle& one : rectangles) {
        all = {std::min(all.left, one.left), std::min(all.top, one.top), std::max(all.right, one.right),
               std::max(all.bottom, one.bottom)};
    }
    return all;
}

Handle HandleAt(const Rectangle& frame, Offset point) {
    if (point.x < frame.left || point.x >= frame.right || point.y < frame.top || point.y >= frame.bottom) {
        return Handle::None;
    }
    const int across = EndAt(Across(frame), point.x);
    const int down = EndAt(Down(frame), point.y);
    constexpr Handle CORNERS[3][3] = {{Handle::TopLeft, Handle::Top, Handle::TopRight},
                                      {Handle::Left, Handle::None, Handle::Right},
                                      {Handle::BottomLeft, Handle::Bottom, Handle::BottomRight}};
    const Handle handle = CORNERS[down + 1][across + 1];
    const bool graspable = across != 0 && down != 0 ? true
                                                    : (across == 0 ? IsInMiddle(Across(frame), point.x)
                                                                   : IsInMiddle(Down(frame), point.y));
    return graspable ? handle : Handle::None;
}

bool MovesLeft(Handle handle) {
    return handle == Handle::TopLeft || handle == Handle::Left || handle == Handle::BottomLeft;
}
bool MovesTop(Handle handle) {
    return handle == Handle::TopLeft || handle == Handle::Top || handle == Handle::TopRight;
}
bool MovesRight(Handle handle) {
    return handle == Handle::TopRight || handle == Handle::Right || handle == Handle::BottomRight;
}
bool MovesBottom(Handle handle) {
    return handle == Handle::BottomLeft || handle == Handle::Bottom || handle == Handle::BottomRight;
}

Rectangle Sized(const Rectangle& rectangle, Handle handle, Offset by, std::int32_t minimum) {
    // What is smaller already may stay so.
    const std::int32_t width = std::min(minimum, rectangle.right - rectangle.left);
    const std::int32_t height = std::min(minimum, rectangle.bottom - rectangle.top);
    Rectangle sized = rectangle;
    if (MovesLeft(handle)) {
        sized.left = std::min(rectangle.left + by.x, rectangle.right - width);
    }
    if (MovesRight(handle)) {
        sized.right = std::max(rectangle.right + by.x, rectangle.left + width);
    }
    if (MovesTop(handle)) {
        sized.top = std::min(rectangle.top + by.y, rectangle.bottom - height);
    }
    if (MovesBottom(handle)) {
        sized.bottom = std::max(rectangle.bottom + by.y, rectangle.top + height);
    }
    return sized;
}

Snap SnapMove(const Rectangle& rectangle, std::span<const Rectangle> others, const SnapSettings& settings) {
    const auto lines = [](Span span) { return AxisLines{{span.from, span.to, span.Centre()}, 3, true}; };
    return SnapLines(rectangle, lines(Across(rectangle)), lines(Down(rectangle)), Handle::None, others,
                     settings);
}

Snap SnapSize(const Rectangle& rectangle, Handle handle, std::span<const Rectangle> others,
              const SnapSettings& settings) {
    const auto lines = [](Span span, bool near, bool far) {
        return AxisLines{{near ? span.from : span.to}, near || far ? 1U : 0U, false};
    };
    return SnapLines(rectangle, lines(Across(rectangle), MovesLeft(handle), MovesRight(handle)),
                     lines(Down(rectangle), MovesTop(handle), MovesBottom(handle)), handle, others, settings);
}

Offset ReachableMove(Offset by, std::span<const Rectangle> rectangles, std::int32_t width,
                     std::int32_t height) {
    return {ReachableAxis(by.x, rectangles, Across, width), ReachableAxis(by.y, rectangles, Down, height)};
}

void GiveSameSize(SameSize what, std::span<Rectangle> rectangles) {
    for (Rectangle& rectangle : rectangles) {
        const Rectangle& first = rectangles.front();
        if (what != SameSize::Height) {
            rectangle.right = rectangle.left + first.right - first.left;
        }
        if (what != SameSize::Width) {
            rectangle.bottom = rectangle.top + first.bottom - first.top;
        }
    }
}

void Align(Alignment alignment, std::span<Rectangle> rectangles) {
    if (rectangles.empty()) {
        return;
    }
    const Rectangle first = rectangles.front();
    for (Rectangle& one : rectangles) {
        switch (alignment) {
        case Alignment::Left:
            one = Moved(one, {first.left - one.left, 0});
            break;
        case Alignment::Top:
            one = Moved(one, {0, first.top - one.top});
            break;
        case Alignment::Right:
            one = Moved(one, {first.right - one.right, 0});
            break;
        case Alignment::Bottom:
            one = Moved(one, {0, first.bottom - one.bottom});
            break;
        case Alignment::CentreAcross:
            one = Moved(one, {Across(first).Centre() - Across(one).Centre(), 0});
            break;
        case Alignment::CentreDown:
            one = Moved(one, {0, Down(first).Centre() - Down(one).Centre()});
            break;
        }
    }
}

void DistributeAcross(std::span<Rectangle> rectangles) {
    Distribute(rectangles, Across, true);
}

void DistributeDown(std::span<Rectangle> rectangles) {
    Distribute(rectangles, Down, false);
}

} // namespace logic
