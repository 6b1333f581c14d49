#include "logic/controls/RockerPositions.h"

#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

#include <algorithm>

namespace logic {

std::optional<RockerPositions> RockerPositions::Parse(std::string_view text) {
    constexpr std::size_t FEWEST = 2;
    constexpr std::size_t MOST = 3;
    RockerPositions positions;
    positions.numbers_.assign(SplitFields(text, ',').size(), 0);
    auto& numbers = positions.numbers_;
    if (numbers.size() < FEWEST || numbers.size() > MOST || !ParseIntegers(text, numbers)) {
        return std::nullopt;
    }
    std::vector<std::int32_t> sorted = numbers;
    std::sort(sorted.begin(), sorted.end());
    return std::adjacent_find(sorted.begin(), sorted.end()) == sorted.end() ? std::optional(positions)
                                                                            : std::nullopt;
}

std::string RockerPositions::Text() const {
    std::string text;
    for (const std::int32_t number : numbers_) {
        text += (text.empty() ? "" : ",") + std::to_string(number);
    }
    return text;
}

std::optional<int> RockerPositions::PositionOf(std::int32_t number) const {
    const auto found = std::find(numbers_.begin(), numbers_.end(), number);
    return found == numbers_.end() ? std::nullopt : std::optional(static_cast<int>(found - numbers_.begin()));
}

int RockerPositions::Step(std::int32_t number, int direction) const {
    const auto position = PositionOf(number);
    const int last = Count() - 1;
    return position ? std::clamp(*position + direction, 0, last) : (direction > 0 ? last : 0);
}

int RockerPositions::Next(std::int32_t number) const {
    return PositionOf(number) == Count() - 1 ? 0 : Step(number, 1);
}

} // namespace logic
