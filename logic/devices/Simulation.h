// How the parameters of a simulated device are declared, move by themselves and follow each other: the
// right-hand sides of the lines of a device file.
//
//     AMP1*device=simulated
//     AMP1*gain1=float,-80,18,-20,dB          a parameter that holds what is set
//     AMP1*level1=float,-80,18,-80,dB         a meter ...
//     AMP1*level1=wave,programme,-40,0,6000   ... that moves by itself
//     AMP1*output1=float,-80,18,-80,dB        a parameter ...
//     AMP1*output1=follow,gain1,-3,200        ... that follows another with an offset and a lag
//
// The words `wave` and `follow` belong to the reader of the file; the functions here read what stands behind
// them. In all of them fields are separated by commas and blanks around a field are ignored; words are lower
// case.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace logic {

// The last four are records: an equaliser band (of two kinds), a crossover's pair of filters, a delay.
enum class ParameterType { Integer, Float, Text, MasterEq, ChannelEq, CrossoverFilters, Delay };

// Whether a value of the type is a number.
constexpr bool IsNumber(ParameterType type) {
    return type == ParameterType::Integer || type == ParameterType::Float;
}

struct ParameterDeclaration {
    ParameterType type;
    float minimum, maximum; // finite, minimum <= maximum; 0 and 0 for what is no number
    std::string value;      // a readable number of the type, or any text; may lie outside the range
    std::string unit;       // may be empty
};

// Reads "type,minimum,maximum,value,unit"; the unit and its comma may be missing. Types are integer, float,
// text, mastereq, channeleq, xoverfilters and delay. A text has empty bounds and keeps its blanks; a text
// that holds commas needs the comma of the unit: "text,,,a, b,". A record has empty bounds and no unit, and
// all behind the bounds is its text. Nothing when the range is reversed (an equal one is fine) or a number is
// unreadable, not finite, or no integer where the type asks for one. Bounds of an integer beyond 24 bits are
// rounded to a float. The value is not clamped here.
std::optional<ParameterDeclaration> ParseParameter(std::string_view value);
// How a declaration of that type reads, "float,minimum,maximum,value,unit"; empty when the word is no type.
std::string ParameterForm(std::string_view type);

enum class WaveShape {
    Sine,     // starts in the middle, rising
    Triangle, // starts at the low end, at the high end after half the period
    Square,   // high for the first half of the period, then low
    Random,   // a new value every period
    Programme // the level of music or speech: a phrase a period, its eight syllables peak near the high end
};

constexpr std::uint32_t MINIMUM_WAVE_PERIOD = 20;
constexpr std::uint32_t MAXIMUM_WAVE_PERIOD = 3'600'000;

struct Wave {
    WaveShape shape;
    float low, high;
    std::uint32_t periodMilliseconds; // MINIMUM_WAVE_PERIOD to MAXIMUM_WAVE_PERIOD
};

// Reads "shape,low,high,period": sine, triangle, square, random or programme, two numbers, milliseconds.
// Nothing when a field is missing, unreadable or out of range, something follows, or the range is reversed.
std::optional<Wave> ParseWave(std::string_view text);

// The wave at a time; the same arguments always give the same value. The seed sets where in its period the
// wave starts (seed 0: as described at the shapes) and what the two random shapes do, so that parameters do
// not move together. Always within [low, high]. An equal or reversed range, or one that is not finite, gives
// low, or 0 when that is not finite. A period outside its limits counts as the nearest limit.
float WaveValue(const Wave& wave, std::uint64_t milliseconds, std::uint32_t seed);

constexpr std::uint32_t MAXIMUM_TIME_CONSTANT = 60'000;

struct Follow {
    std::string source;                     // a parameter of the same device, or DEVICE*parameter
    float offset;                           // added to the source, in its unit
    std::uint32_t timeConstantMilliseconds; // 0 to MAXIMUM_TIME_CONSTANT; 0: at once
};

// Reads "source,offset,time constant"; offset and time constant may be empty or missing and are then 0.
// Nothing when the source is empty, a number is unreadable or out of range, or something follows.
std::optional<Follow> ParseFollow(std::string_view text);

// One step of a one-pole lag: after one time constant 63 % of the way is done. Never overshoots, and arrives:
// a step of some duration always moves the value, and the last millionth of a unit is skipped. No duration
// moves nothing; a time constant of 0 arrives at once, whatever the duration. A target that is not finite
// changes nothing; a current value that is not finite becomes the target.
float FollowStep(float current, float target, std::uint32_t elapsedMilliseconds, std::uint32_t timeConstant);

} // namespace logic
