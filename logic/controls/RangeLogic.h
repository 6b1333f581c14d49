// What the range computes: where its value and the ends of what is permitted lie on the track, and which of
// them the mouse moves to what value.
#pragma once

#include <cstdint>
#include <optional>

namespace logic {

// A number in the range; of a reversed range too. What is not a number becomes the lower end.
float LimitToRange(float number, std::int32_t minimum, std::int32_t maximum);

// The ends of what is permitted, as they were set. One that is not set follows the range.
struct PermittedEnds {
    std::optional<float> low, high;

    // Sets one, which the other one stops.
    void SetLow(std::optional<float> number);
    void SetHigh(std::optional<float> number);
};

// A permitted range within the range, of which low is never above high.
struct Permitted {
    float low, high;

    // -1 when the value is below, 1 when it is above, else 0.
    int StateOf(float value) const { return value < low ? -1 : (value > high ? 1 : 0); }
};
Permitted PermittedIn(const PermittedEnds& ends, std::int32_t minimum, std::int32_t maximum);

// A track of so many pixels, with the minimum at its beginning, whichever end is the greater one. Both ends
// leave a margin for the marker.
struct RangeTrack {
    std::int32_t length;
    std::int32_t minimum, maximum;

    std::int32_t Margin() const;
    std::int32_t Way() const; // pixels from one end to the other
    // The pixel of a number. One beyond the range lies at the nearest end, what is not a number and all of a
    // range of one number at the beginning.
    std::int32_t PlaceOf(float number) const;
    // The number at a pixel: at the ends the end itself, in between rounded to the largest power of ten that
    // is not above the step from pixel to pixel. Where there is no room the minimum.
    float NumberAt(std::int32_t pixel) const;
};

enum class RangePart { None, Low, High, Value };

struct RangeGrip {
    std::int32_t pixel;
    bool isAtMarker; // on the side of the track where the marker is held, not on that of the ends
    bool mayMoveEnds, mayMoveValue;
};

// What is held there: the nearest part that may be moved, up to 6 pixels away. Of marker and end at the same
// distance the one on whose side it is, of two ends the one that can be moved towards the pixel.
RangePart PartAt(const RangeGrip& grip, const RangeTrack& track, const Permitted& permitted, float value);

} // namespace logic
