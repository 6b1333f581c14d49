// The positions of a rocker switch.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace logic {

// Two or three numbers, from the lower end to the upper one. Positions are counted from 0.
class RockerPositions {
public:
    RockerPositions() : numbers_{0, 1} {}
    // "0,1"; nothing unless there are two or three numbers, no two of them the same.
    static std::optional<RockerPositions> Parse(std::string_view text);
    std::string Text() const;

    int Count() const { return static_cast<int>(numbers_.size()); }
    std::int32_t At(int position) const { return numbers_[static_cast<std::size_t>(position)]; }
    // Nothing for a number that is no position.
    std::optional<int> PositionOf(std::int32_t number) const;
    // Where it springs back to: the first, of three the middle one.
    int Rest() const { return Count() - 2; }
    // One up (1) or down (-1) from that number, not beyond the ends; from what is no position to the end.
    int Step(std::int32_t number, int direction) const;
    // The next one up, after the upper end the lower one.
    int Next(std::int32_t number) const;

private:
    std::vector<std::int32_t> numbers_;
};

} // namespace logic
