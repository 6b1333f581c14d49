// What the spin edit computes: its range, its steps, and what the drag of an arrow does.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace logic {

struct SpinRange {
    float minimum, maximum; // in any order

    bool Contains(float value) const;
    // What is not a number becomes the smaller end.
    float Limited(float value) const;
};

// The value so many steps further, limited to the range. One that is a multiple of the step, but for what
// floats cannot hold, stays one however many steps are taken. A step of 0 leads nowhere.
float StepSpin(float value, std::int32_t steps, float step, const SpinRange& range);

// The pixels of a drag become steps, upwards is more; what is left of them counts for the next move.
class SpinDrag {
public:
    void Press(std::int32_t y) { origin_ = y; }
    // Whether the mouse is so far from the press that it is meant to drag.
    bool IsMeant(std::int32_t y) const;
    std::int32_t StepsTo(std::int32_t y);

private:
    std::int32_t origin_ = 0;
};

// "minimum,maximum,value", of which the value, or maximum and value, may be missing; nothing when a field
// that is there is no number. The text is read back as the same numbers.
struct SpinProperties {
    float minimum;
    std::optional<float> maximum, value;
};
std::optional<SpinProperties> ParseSpinProperties(std::string_view text);
std::string SpinPropertiesText(const SpinRange& range, float value);

} // namespace logic
