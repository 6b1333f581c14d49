// What stages of processing do in a simulated device: the lines that declare dynamics and matrices, and how
// their levels move.
//
//     DSP*gate1=dynamics,in1                    a gate that listens to in1
//     DSP*route%i_%o=matrix,8,8,in%i,out%o      64 crosspoints, and the levels behind them
//     DSP*post=through,gate1,band1,filters      a level that is changed by what it goes through
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "logic/controls/DynamicsCurve.h"
#include "logic/controls/Response.h"
#include "logic/devices/Simulation.h"

namespace logic {

struct Dynamics {
    std::string source; // the level that it listens to
    DynamicsMode mode;
};

// Reads "source,mode" of the block of that name. Without a mode it is the one that the name begins with
// ("gate1"), or else a compressor. Nothing when the source is empty, the mode unknown or something follows.
std::optional<Dynamics> ParseDynamics(std::string_view name, std::string_view text);

// The parameters of such a block, in the order in which they move: what stands behind its name, and the
// declaration.
std::vector<std::pair<std::string, ParameterDeclaration>> DynamicsParameters(DynamicsMode mode);

// The next gain reduction: it goes to the target within the time constant (milliseconds) of attack, or of
// release on its way back. A gate and an expander attack when they open.
float ReductionStep(DynamicsMode mode, float current, float target, std::uint32_t elapsedMilliseconds,
                    float attack, float release);

constexpr std::int32_t LARGEST_MATRIX = 64;

struct Matrix {
    std::vector<std::string> crosspoints; // parameters of the device, all inputs of the first output first
    std::int32_t inputs, outputs;         // 1 to LARGEST_MATRIX
    std::string input, output;            // patterns of their levels

    std::vector<std::string> InputNames() const;
    std::vector<std::string> OutputNames() const;
};

// Reads "inputs,outputs,input pattern,output pattern" of the crosspoints of that pattern. Nothing when a
// field is missing or out of range, or two of them would have one name.
std::optional<Matrix> ParseMatrix(std::string_view crosspoints, std::string_view text);

// An output that is not declared otherwise.
inline const ParameterDeclaration MATRIX_OUTPUT{ParameterType::Float, LOWEST_LEVEL, 24, "-80", "dB"};

// The level (dB) of all of them together, which have nothing in common. Nothing of none.
std::optional<float> PowerSum(std::span<const float> levels);

constexpr double SIMULATED_RATE = 48'000; // Hz

// By how much filters, one behind the other, change the level (dB) of a signal that has the same power in
// every octave from 20 Hz to 20 kHz; for filters at the simulated rate.
float GainOfMusic(std::span<const Filter> filters);

} // namespace logic
