// A lamp over a condition: it goes on and off after delays, can blink and can stay lit until somebody has
// seen it. All times are milliseconds of one clock that may wrap around.
#pragma once

#include <cstdint>
#include <optional>

namespace logic {

class ConditionLamp {
public:
    // What the condition is found to be; nothing while it cannot be known, which begins its time anew.
    void Take(std::optional<bool> holds, std::uint32_t now);
    // Lets the time pass.
    void Advance(std::uint32_t now);
    // Somebody has seen it: a latched lamp goes dark with its condition, or at once when that does not hold
    // any more.
    void Acknowledge(std::uint32_t now);

    bool IsLit() const { return isLit_; } // while the condition is unknown: as it was
    bool IsUnknown() const { return isUnknown_; }
    // Whether it is to be drawn bright: of a lit lamp that blinks half of the time.
    bool IsBright(std::uint32_t now) const;
    // Milliseconds until Advance or IsBright have something new, as things are; nothing when they have not.
    std::optional<std::uint32_t> DueIn(std::uint32_t now) const;

    std::uint32_t delayOn = 0;  // the condition must hold so long
    std::uint32_t delayOff = 0; // or not hold
    std::uint32_t blink = 0;    // period while it is lit; 0 for a steady light
    bool latch = false;

private:
    // Milliseconds until it goes on or off; nothing when it stays as it is.
    std::optional<std::uint32_t> UntilChange(std::uint32_t now) const;

    bool isUnknown_ = false;
    bool holds_ = false;
    bool isLit_ = false;
    bool isSeen_ = false;
    std::uint32_t since_ = 0; // the condition is as it is
    std::uint32_t litSince_ = 0;
};

} // namespace logic
