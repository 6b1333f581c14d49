// How the number of a parameter moves from one value to another in some time.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "logic/devices/ParameterLaw.h"
#include "logic/devices/Simulation.h"

namespace logic {

// The way of a parameter from the beginning of its law to the end: positions are 0 to 1, and equal distances
// look equal on a control of that law. What is no number does not move, nor does one that stands for a choice
// (a switch, a filter type): an integer of few values.
class FadeScale {
public:
    // An integer moves when each of its steps is at most 1/20 of the range.
    static constexpr float LEAST_RANGE = 20;

    FadeScale() = default; // of what does not move
    // Of a parameter without a law: even, frequencies (unit Hz, above 0) by ratios.
    FadeScale(ParameterType type, float minimum, float maximum, std::string_view unit);
    // By its law, where that says how: linear, log, points. Others are even between the limits.
    FadeScale(ParameterType type, float minimum, float maximum, const ParameterLaw& law);

    bool Moves() const { return kind_ != Kind::None; }
    // Of a value, limited to the range; 0 for one that is not finite.
    double PositionOf(float value) const;
    // At a position, limited to 0 to 1; whole for integers.
    float ValueAt(double position) const;

private:
    enum class Kind { None, Even, Ratios, Law };

    Kind kind_ = Kind::None;
    bool isWhole_ = false;
    double minimum_ = 0;
    double maximum_ = 0;
    std::optional<ParameterLaw> law_;
};

// One number on its way.
class Fade {
public:
    Fade() = default;
    // From and to are positions, times milliseconds of one clock. Of no duration: it is over at once.
    Fade(double from, double to, std::uint64_t begin, std::uint32_t duration)
        : from_(from), to_(to), sent_(from), begin_(begin), duration_(duration) {}

    double Distance() const { return from_ < to_ ? to_ - from_ : from_ - to_; }
    bool IsOver(std::uint64_t now) const { return now >= begin_ + duration_; }
    double PositionAt(std::uint64_t now) const;
    // The position to be sent now; nothing while the last one is nearer than the grain. Once it is over: the
    // end.
    std::optional<double> Next(std::uint64_t now, double grain);

private:
    double from_ = 0;
    double to_ = 0;
    double sent_ = 0;
    std::uint64_t begin_ = 0;
    std::uint32_t duration_ = 0;
};

// The distance between two positions that are sent, so that parameters which share a connection get as many
// writes as they have way to go: all distances together, over what can be sent in that time. 0 for a
// connection without a limit (writes a second: 0).
double FadeGrain(double distances, std::uint32_t duration, std::uint32_t writesASecond);

} // namespace logic
