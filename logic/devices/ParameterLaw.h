// Laws: how the number that a device sends and takes (its wire value) becomes the value that is shown, and
// back.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace logic {

enum class WireType {
    Integer,
    Float,
    Text,  // passed on as it is
    Switch // 0 or 1, sent without bytes
};

// Wire values lie in [0, 1] for the kinds linear, log and points, which can have steps: the device then knows
// the multiples of 1/steps only.
class ParameterLaw {
public:
    // Reads "wire,kind,...[,trigger]":
    //   i, f or T, then `same`, or `not` for 1 - wire; s,same
    //   f,linear,steps,first,last   f,log,steps,first,last (ends of the values, in any order; log above 0)
    //   f,points,steps,wire:value,...   2 to 16, wire from 0 to 1 and values both strictly rising
    //   i,map,wire:value,...            integers, each once
    //   f,amplitude                     20 log10 of it; cannot be set
    // Steps 0 stands for none. A trigger is sent whenever it is set, and its value means nothing.
    static std::optional<ParameterLaw> Parse(std::string_view text);

    WireType Wire() const { return wire_; }
    bool IsTrigger() const { return isTrigger_; }
    bool CanBeSet() const { return kind_ != Kind::Amplitude; }
    // A wire value without a partner in a map reads as this.
    static constexpr float UNKNOWN = -1;
    bool HasUnknown() const { return kind_ == Kind::Map; }
    // Whether wire values 0 to 1 are the way along a scale.
    bool IsScale() const {
        return kind_ == Kind::Linear || kind_ == Kind::Logarithmic || kind_ == Kind::Points;
    }

    // The value of a finite number from the wire. An amplitude of 0 or less is the least float, for which a
    // range has its minimum.
    float ToValue(double wire) const;
    // The number for the wire, on a step, whole for integers and switches. Nothing for a value that is not
    // finite, without a partner in a map, beyond 32 bits for an integer, or that cannot be set at all.
    std::optional<float> ToWire(float value) const;
    // Whether a wire value that came back is the one that was sent: within half a step; without steps within
    // a thousandth of the range, which is in values.
    bool IsSame(double sent, double answered, float range) const;

private:
    enum class Kind { Same, Not, Linear, Logarithmic, Points, Map, Amplitude };
    using Pair = std::pair<double, double>; // wire and value

    bool ReadKind(std::string_view word, std::string_view rest);
    bool ReadRange(std::string_view text);
    bool ReadPoints(std::string_view text);
    bool ReadMap(std::string_view text);

    WireType wire_ = WireType::Float;
    Kind kind_ = Kind::Same;
    bool isTrigger_ = false;
    std::int32_t steps_ = 0;
    double first_ = 0;
    double last_ = 0;
    std::vector<Pair> pairs_; // points or map
};

} // namespace logic
