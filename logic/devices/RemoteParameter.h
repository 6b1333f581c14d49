// What is declared of a parameter of a real device, whatever it is reached by.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "logic/devices/Simulation.h"

namespace logic {

// A part of a block: another parameter, or a number that is no parameter of the device. Monostate: its
// default.
using BlockComponent = std::variant<std::monostate, std::size_t, float>;

struct RemoteParameter {
    std::string name;
    ParameterType type = ParameterType::Float;
    float minimum = 0; // of numbers
    float maximum = 0;
    std::size_t longest = 0; // characters of a text
    std::string unit;
    bool canBeSet = true; // a block: when all of its components can
    // Of a block, in the order of its line: channeleq and mastereq bypass, type, slope, frequency, gain, Q;
    // delay bypass, amount; xoverfilters type and frequency of the high-pass, then of the low-pass.
    std::vector<BlockComponent> components;
    std::int32_t delayUnit = 0; // of a delay

    bool IsBlock() const { return !IsNumber(type) && type != ParameterType::Text; }
};

} // namespace logic
