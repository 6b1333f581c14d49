#include "logic/controls/LedLogic.h"

#include "logic/text/Numbers.h"

#include <algorithm>

namespace logic {

bool IsLit(float value, float onThreshold, float offThreshold, bool wasLit) {
    return value >= onThreshold || (wasLit && value >= offThreshold);
}

std::int32_t FrameOfValue(float value, std::int32_t frames) {
    return std::clamp(TruncateToInteger(static_cast<double>(value)), 0, std::max(frames, 1) - 1);
}

} // namespace logic
