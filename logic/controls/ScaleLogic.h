// What the scale computes: which values are marked, which of them have a number, and where they lie.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "logic/controls/Travel.h"

namespace logic {

// A way for a line through a scale of that length that leaves so many pixels free at both ends, from left to
// right or from the bottom up.
Travel OwnTravel(const TravelRange& range, std::int32_t length, std::int32_t margin, bool isHorizontal);

struct ScaleMark {
    float value;
    std::int32_t place; // pixel along the window
    bool isMain;        // may have a number; else it is a small one
    bool hasNumber;
    bool operator==(const ScaleMark&) const = default;
};

// Where numbers take room along the window. One that would pass its end is moved inside.
struct NumberRoom {
    std::int32_t length;                       // of the window
    std::int32_t gap;                          // pixels between two numbers, at least
    std::function<std::int32_t(float)> extent; // pixels that the number of a value takes

    struct Place {
        std::int32_t first, last; // first included, last not
    };
    Place PlaceOf(const ScaleMark& mark) const;
};

struct ScaleGrid {
    float step = 0;            // from main mark to main mark; 0 or below: chosen
    std::int32_t minor = 0;    // small marks between two main ones
    std::vector<float> listed; // the main marks, in any order, in place of a step
};
constexpr std::size_t MOST_LISTED_MARKS = 256; // so that their text fits a property

// The marks in the order of their values, each place moved by the offset.
//
// A step that is chosen is 1, 2 or 5 times a power of ten, the least with which no numbers touch; on a
// logarithmic range over a decade or more it is 1, 2 and 5 of every decade, or one mark a decade or in
// several. A step with more than one main mark on two pixels is chosen anew. Of the numbers of a given step
// or a list that would touch, those nearer to the lower value are left out; of small marks that would touch,
// all between the two main ones.
std::vector<ScaleMark> ScaleMarks(const Travel& travel, std::int32_t offset, const ScaleGrid& grid,
                                  const NumberRoom& room);

} // namespace logic
