// What the fader computes: its value, where its knob lies, what a drag does, and the text of its offsets.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "logic/text/Numbers.h"
#include "logic/text/PropertyLine.h"

namespace logic {

struct FaderRange {
    std::int32_t minimum, maximum;
    float resolution; // step size; 0 or a non-finite one: continuous, and the step keys do nothing
};

struct LimitedValue {
    float value;
    bool outside; // it had to be limited
};

// The nearest step, then limited to the range: below the minimum the minimum, otherwise above the maximum the
// maximum. A reversed range thus gives one of its ends; what is not a number becomes the minimum.
LimitedValue LimitFader(float value, const FaderRange& range);
// The same for whole numbers; a step that is none is cut off towards zero.
std::int32_t LimitFaderInteger(std::int32_t value, const FaderRange& range);

// Whether a resolution can be saved: of its text five characters are read back.
bool IsShortResolution(float resolution);

// Numbered as the keyboard's virtual-key codes.
enum class FaderKey { PageUp = 0x21, PageDown, End, Home, Left, Up, Right, Down };

// The value a key asks for, not yet limited and possibly infinite. Nothing when the key does nothing.
std::optional<float> StepFader(float value, FaderKey key, const FaderRange& range);

// Pixels. A fader that is wider than high is horizontal, with its minimum on the left; any other is vertical,
// with its maximum at the top. The knob is `knobHeight` long along the travel and as wide as the fader.
struct FaderShape {
    std::int32_t width = 0, height = 0;
    std::int32_t knobHeight = 22;

    bool IsVertical() const { return width <= height; }
    // Pixels that the knob has to go. The horizontal way is deliberately one pixel longer than the vertical
    // one, and a knob that leaves none has none.
    std::int32_t Way() const;
};

struct FaderPoint {
    std::int32_t x, y; // in the fader
};

// Where the knob lies and how it is held. Each layout has a position of its own; the other one is kept.
class FaderKnob {
public:
    // Puts the knob where the value is, in a fader of that shape. Whether it moved. An equal range puts the
    // knob where the minimum is.
    bool Place(float value, const FaderRange& range, const FaderShape& shape);

    const FaderShape& Shape() const { return shape_; }
    std::int32_t Top() const { return top_; }   // in the vertical layout
    std::int32_t Left() const { return left_; } // in the horizontal layout

    // Takes hold of the knob. False, and nothing done, when the point lies beside it.
    bool Hold(FaderPoint point);
    // Moves the held knob along with the pointer and returns where the pointer is to be kept: at the ends the
    // knob stops and holds the pointer back, and so do the edges of the fader across the travel.
    // Deliberately, a drag goes one pixel further than Place in the vertical as well. Nothing when the
    // pointer did not move along the travel or there is no travel.
    std::optional<FaderPoint> Drag(FaderPoint pointer);
    // The value at the place that it was dragged to, to the nearest step; it may pass an end by up to half a
    // step.
    float Value(const FaderRange& range) const;

private:
    std::int32_t& Position() { return shape_.IsVertical() ? top_ : left_; }

    FaderShape shape_;
    std::int32_t top_ = 0;
    std::int32_t left_ = 0;
    std::int32_t anchor_ = 0; // along the travel: where the pointer holds the knob
};

// What relative mode knows of one connection.
struct OffsetRecord {
    float offset = 0;     // remote value minus fader value
    float remote = 0;     // remote value when the record was made
    float lastRemote = 0; // remote value seen last
};

// "1,,2,,3,": a comma behind every number and deliberately one more between two of them. ParseFloats reads it
// back.
std::string OffsetsText(const std::vector<OffsetRecord>& records, float OffsetRecord::*member);
// More of them could be too long for the value of a keyword.
constexpr std::size_t MAXIMUM_OFFSETS = (MAXIMUM_VALUE + 1) / (LONGEST_FLOAT_TEXT + 2);
// Puts a record at the end. Throws std::length_error rather than let a list grow for ever, since loading
// appends.
void AppendOffset(std::vector<OffsetRecord>& records, const OffsetRecord& record);

} // namespace logic
