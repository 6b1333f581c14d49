#include "logic/controls/RoutingGrid.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "logic/text/Numbers.h"
#include "logic/text/PropertyLine.h"

namespace logic {

RoutingMatrix::RoutingMatrix(int inputs, int outputs)
    : inputs_(std::clamp(inputs, 1, MOST_ROUTED)),
      outputs_(std::clamp(outputs, 1, MOST_ROUTED)),
      states_(static_cast<std::size_t>(inputs_ * outputs_), CrosspointState::Missing) {}

Crosspoint RoutingMatrix::PlaceOf(std::size_t number) const {
    const int place = static_cast<int>(number);
    return {place / outputs_, place % outputs_};
}

bool RoutingMatrix::Set(Crosspoint place, CrosspointState state) {
    CrosspointState& held = states_[NumberOf(place)];
    const bool isNew = held != state;
    held = state;
    return isNew;
}

std::vector<Crosspoint> RoutingMatrix::OthersOn(Crosspoint place) const {
    std::vector<Crosspoint> others;
    for (int input = 0; input < inputs_; ++input) {
        if (input != place.input && IsOn({input, place.output})) {
            others.push_back({input, place.output});
        }
    }
    return others;
}

std::string RoutingMatrix::Text() const {
    std::vector<std::string> entries;
    for (std::size_t number = 0; number < states_.size(); ++number) {
        if (const Crosspoint place = PlaceOf(number); IsOn(place)) {
            entries.push_back(std::to_string(place.input + 1) + "_" + std::to_string(place.output + 1));
        }
    }
    return JoinList(entries);
}

std::optional<std::vector<bool>> RoutingMatrix::Read(std::string_view text) const {
    std::vector<bool> isOn(states_.size(), false);
    for (const std::string& entry : SplitList(text)) {
        const auto middle = entry.find('_');
        const auto input = ParseWholeInteger(std::string_view(entry).substr(0, middle));
        const auto output = middle == std::string::npos
                                ? std::nullopt
                                : ParseWholeInteger(std::string_view(entry).substr(middle + 1));
        if (!input || !output || *input < 1 || *input > inputs_ || *output < 1 || *output > outputs_) {
            return std::nullopt;
        }
        isOn[NumberOf({*input - 1, *output - 1})] = true;
    }
    return isOn;
}

std::vector<Crosspoint> CrosspointsTo(Crosspoint from, Crosspoint to) {
    const int rows = to.input - from.input;
    const int columns = to.output - from.output;
    const int steps = std::max(std::abs(rows), std::abs(columns));
    const auto part = [steps](int way, int step) { // rounded, away from zero
        return (2 * way * step + (way < 0 ? -steps : steps)) / (2 * steps);
    };
    std::vector<Crosspoint> places;
    for (int step = 1; step <= steps; ++step) {
        places.push_back({from.input + part(rows, step), from.output + part(columns, step)});
    }
    return places;
}

Crosspoint MoveBy(RoutingKey key, Crosspoint from, const RoutingMatrix& matrix, int page) {
    Crosspoint to = from;
    switch (key) {
    case RoutingKey::Left:
        --to.output;
        break;
    case RoutingKey::Right:
        ++to.output;
        break;
    case RoutingKey::Up:
        --to.input;
        break;
    case RoutingKey::Down:
        ++to.input;
        break;
    case RoutingKey::Home:
        to.output = 0;
        break;
    case RoutingKey::End:
        to.output = matrix.Outputs();
        break;
    case RoutingKey::FirstRow:
        to.input = 0;
        break;
    case RoutingKey::LastRow:
        to.input = matrix.Inputs();
        break;
    case RoutingKey::PageUp:
        to.input -= page;
        break;
    case RoutingKey::PageDown:
        to.input += page;
        break;
    }
    return {std::clamp(to.input, 0, matrix.Inputs() - 1), std::clamp(to.output, 0, matrix.Outputs() - 1)};
}

namespace {

constexpr int SMALLEST_FOR_NAMES = 64; // an area that is narrower, or lower, has none

int NamesIn(int wanted, int length) {
    return length < SMALLEST_FOR_NAMES ? 0 : std::clamp(wanted, 0, length / 3);
}

int FirstSeen(int first, int count, int seen) {
    return std::clamp(first, 0, std::max(count - seen, 0));
}

int FirstShowing(int first, int place, int count, int seen) {
    return FirstSeen(std::clamp(first, place - seen + 1, std::max(place, place - seen + 1)), count, seen);
}

// From and to, within a track of that length, of a thumb that stands for what is seen.
struct Thumb {
    Thumb(int track, int count, int seen)
        : length(std::clamp(track * seen / std::max(count, 1), std::min(8, track), std::max(track, 0))),
          way(track - length),
          steps(std::max(count - seen, 0)) {}

    int Begin(int first) const { return steps == 0 ? 0 : way * first / steps; }
    int First(int begin) const {
        return way <= 0 ? 0 : std::clamp((begin * steps + way / 2) / way, 0, steps);
    }

    int length, way, steps;
};

} // namespace

RoutingLayout::RoutingLayout(const RoutingSpace& space) : space_(space) {
    left = NamesIn(space.rowNames, space.width);
    top = NamesIn(space.columnNames, space.height);
    const int width = std::max(space.width - left, 0);
    const int height = std::max(space.height - top, 0);
    cell = std::min({width / space.outputs, height / space.inputs, LARGEST_CELL});
    columns = space.outputs;
    rows = space.inputs;
    if (cell >= SMALLEST_CELL) {
        return;
    }
    cell = SCROLLED_CELL;
    const auto seen = [this](int length, int count, bool hasBar) {
        return std::clamp((length - (hasBar ? BAR : 0)) / cell, 1, count);
    };
    // A bar takes room, which can make the other one necessary.
    columns = seen(width, space.outputs, false);
    rows = seen(height, space.inputs, HasHorizontalBar());
    columns = seen(width, space.outputs, HasVerticalBar());
    rows = seen(height, space.inputs, HasHorizontalBar());
}

Crosspoint RoutingLayout::Limited(Crosspoint first) const {
    return {FirstSeen(first.input, space_.inputs, rows), FirstSeen(first.output, space_.outputs, columns)};
}

Crosspoint RoutingLayout::Showing(Crosspoint first, Crosspoint place) const {
    return {FirstShowing(first.input, place.input, space_.inputs, rows),
            FirstShowing(first.output, place.output, space_.outputs, columns)};
}

RoutingLayout::Box RoutingLayout::CellBox(Crosspoint place, Crosspoint first) const {
    const int x = left + (place.output - first.output) * cell;
    const int y = top + (place.input - first.input) * cell;
    return {x, y, x + cell, y + cell};
}

bool RoutingLayout::IsSeen(Crosspoint place, Crosspoint first) const {
    return place.input >= first.input && place.input < first.input + rows && place.output >= first.output &&
           place.output < first.output + columns;
}

std::optional<Crosspoint> RoutingLayout::CellAt(int x, int y, Crosspoint first) const {
    if (x < left || y < top || x >= left + columns * cell || y >= top + rows * cell) {
        return std::nullopt;
    }
    return Crosspoint{first.input + (y - top) / cell, first.output + (x - left) / cell};
}

Crosspoint RoutingLayout::NearestCell(int x, int y, Crosspoint first) const {
    const auto nearest = [this](int pixel, int begin, int seen, int firstSeen, int count) {
        const int place = pixel < begin ? -1 : std::min((pixel - begin) / cell, seen);
        return std::clamp(firstSeen + place, 0, count - 1);
    };
    return {nearest(y, top, rows, first.input, space_.inputs),
            nearest(x, left, columns, first.output, space_.outputs)};
}

RoutingLayout::Box RoutingLayout::HorizontalTrack() const {
    return {left, space_.height - BAR, left + columns * cell, space_.height};
}

RoutingLayout::Box RoutingLayout::VerticalTrack() const {
    return {space_.width - BAR, top, space_.width, top + rows * cell};
}

RoutingLayout::Box RoutingLayout::HorizontalThumb(Crosspoint first) const {
    const Box track = HorizontalTrack();
    const Thumb thumb(track.right - track.left, space_.outputs, columns);
    const int begin = track.left + thumb.Begin(first.output);
    return {begin, track.top, begin + thumb.length, track.bottom};
}

RoutingLayout::Box RoutingLayout::VerticalThumb(Crosspoint first) const {
    const Box track = VerticalTrack();
    const Thumb thumb(track.bottom - track.top, space_.inputs, rows);
    const int begin = track.top + thumb.Begin(first.input);
    return {track.left, begin, track.right, begin + thumb.length};
}

int RoutingLayout::FirstColumnAt(int thumbLeft) const {
    const Box track = HorizontalTrack();
    return Thumb(track.right - track.left, space_.outputs, columns).First(thumbLeft - track.left);
}

int RoutingLayout::FirstRowAt(int thumbTop) const {
    const Box track = VerticalTrack();
    return Thumb(track.bottom - track.top, space_.inputs, rows).First(thumbTop - track.top);
}

} // namespace logic
