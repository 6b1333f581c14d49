// What a LED makes of its value: lit or dark with hysteresis, or one of several frames.
#pragma once

#include <cstdint>

namespace logic {

// Lit from the on threshold upwards, dark below the off threshold, and as it was in between. An off threshold
// above the on threshold counts as equal to it. A value that is not a number is dark.
bool IsLit(float value, float onThreshold, float offThreshold, bool wasLit);

// The number of the frame that a value picks among that many: the value without its fraction, limited to
// them.
std::int32_t FrameOfValue(float value, std::int32_t frames);

} // namespace logic
