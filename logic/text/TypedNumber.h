// Numbers as people type them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace logic {

// A number with a point or a comma in front of its decimals, one of them at most, and none between thousands.
// k (or K) and M behind it are thousands and millions; between two digits they are the decimal point as well:
// 1k5 is 1500. The unit may follow, in capitals or not; where that leaves a choice, the letters as the unit
// has them are the unit, and any other a multiplier. Nothing for another unit, for what is no number, and for
// one that no float holds.
std::optional<float> ParseTypedNumber(std::string_view text, std::string_view unit);

// The same of what stands in a field that shows numbers in a printf format, with or without what the format
// puts around them.
std::optional<float> ParseTypedNumber(std::string_view text, std::string_view unit,
                                      const std::string& format);

} // namespace logic
