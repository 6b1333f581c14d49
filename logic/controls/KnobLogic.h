// What the knob computes: its value under the mouse and the keys, and where its dot lies.
#pragma once

#include <cstdint>
#include <optional>

namespace logic {

struct KnobRange {
    std::int32_t minimum, maximum;
    float resolution; // step size; 0 or a non-finite one: continuous, and the step keys do nothing
};

// Mouse travel in pixels as a signed 16-bit difference, since a mouse message carries no more; it wraps
// around.
std::int16_t DragDistance(int x, int origin);

// The value after the mouse moved by dx pixels, one unit a pixel, moving right raises it. Below the minimum
// it becomes the minimum and above the maximum the maximum, both unrounded; in between it is rounded to the
// resolution (and may thereby pass an end that is no multiple of it by up to half a step). dx 0 changes
// nothing. A reversed range gives one of its ends, an equal one that value (rounded when the mouse hits it
// exactly); a value that is not a number becomes the minimum.
float DragKnob(float value, std::int16_t dx, const KnobRange& range);

// With the codes of the keys.
enum class KnobKey { PageUp = 33, PageDown, End, Home, Left, Right = 39 };

// The value a key asks for, not yet clamped and possibly infinite: End the minimum, Home the maximum, Page Up
// and Page Down ten steps up and down, Left one up, Right one down (deliberately the mirror of the drag).
// Nothing when the key does nothing.
std::optional<float> StepKnob(float value, KnobKey key, const KnobRange& range);

// The box of the dot in pixels of the knob's window, right and bottom exclusive: 5 x 5 around a point 14
// pixels from (23.5, 23.5), from -45 degrees at the maximum to 225 degrees at the minimum, counter-clockwise
// with y up. On a larger face, in percent, it is as much larger.
struct DotRectangle {
    std::int32_t left, top, right, bottom;
};

// A reversed range is drawn by the same formula; an equal one as at the maximum; a value that is not a number
// as 0.
DotRectangle KnobDot(float value, const KnobRange& range, std::int32_t percent = 100);

} // namespace logic
