// What the fader computes: its value, where its knob lies, what a drag does, and the text of its offsets.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

enum class FaderKey { PageUp, PageDown, End, Home, Down, Up };

// The value a key asks for, not yet limited and possibly infinite. Nothing when the key does nothing.
std::optional<float> StepFader(float value, FaderKey key, const FaderRange& range);

// The beginning of "minimum,maximum,value". Nothing when it does not even begin with a minimum.
struct FaderProperties {
    std::int32_t minimum;
    std::optional<std::int32_t> maximum;
    std::optional<float> value;
};
std::optional<FaderProperties> ParseFaderProperties(std::string_view text);

// Pixels. A fader that is wider than high is horizontal, with its minimum on the left; any other is vertical,
// with its maximum at the top. The knob is `knobHeight` long along the travel and as wide as the fader.
struct FaderShape {
    std::int32_t width, height, knobHeight;

    bool IsVertical() const { return width <= height; }
};

// Where the knob begins, from the top or the left. The horizontal travel is deliberately one pixel longer
// than the vertical one. An equal range puts the knob where the minimum is, and so does a knob that leaves no
// travel.
std::int32_t KnobPosition(float value, const FaderRange& range, const FaderShape& shape);

// Whether the point lies on the knob that begins at the position.
bool IsOnKnob(std::int32_t x, std::int32_t y, std::int32_t position, const FaderShape& shape);

// A knob that is held: where it begins, and where along the travel the pointer holds it.
struct HeldKnob {
    std::int32_t position;
    std::int32_t anchor;
};

// The held knob after the pointer moved there. At the ends the knob stops, and the anchor is where the
// pointer would still hold it. Deliberately, a drag goes one pixel further than KnobPosition in the vertical
// as well. Nothing when the pointer did not move or the knob leaves no travel.
std::optional<HeldKnob> MoveKnob(HeldKnob knob, std::int32_t pointer, const FaderShape& shape);

// The value of a dragged knob, to the nearest step; it may pass an end by up to half a step.
float DraggedValue(std::int32_t position, const FaderRange& range, const FaderShape& shape);

// What relative mode knows of one connection.
struct OffsetRecord {
    float offset = 0;     // remote value minus fader value
    float remote = 0;     // remote value when the record was made
    float lastRemote = 0; // remote value seen last
};

// "1,,2,,3,": a comma behind every number and deliberately one more between two of them. ParseOffsets reads
// both its own text and plain lists.
std::string OffsetsText(const std::vector<OffsetRecord>& records, float OffsetRecord::*member);
// One number a piece between commas; empty pieces are skipped, unreadable ones are 0.
std::vector<float> ParseOffsets(std::string_view text);
// Puts a record at the end. Throws std::length_error rather than let a list grow for ever, since loading
// appends.
void AppendOffset(std::vector<OffsetRecord>& records, const OffsetRecord& record);

} // namespace logic
