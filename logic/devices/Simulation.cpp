#include "logic/devices/Simulation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

template <class Value, std::size_t count>
std::optional<Value> FindWord(const std::array<std::pair<std::string_view, Value>, count>& words,
                              std::string_view text) {
    for (const auto& [word, value] : words) {
        if (word == TrimBlanks(text)) {
            return value;
        }
    }
    return std::nullopt;
}

constexpr std::array<std::pair<std::string_view, ParameterType>, 7> PARAMETER_TYPES{{
    {"integer", ParameterType::Integer},
    {"float", ParameterType::Float},
    {"text", ParameterType::Text},
    {"mastereq", ParameterType::MasterEq},
    {"channeleq", ParameterType::ChannelEq},
    {"xoverfilters", ParameterType::CrossoverFilters},
    {"delay", ParameterType::Delay},
}};

constexpr std::array<std::pair<std::string_view, WaveShape>, 5> WAVE_SHAPES{{
    {"sine", WaveShape::Sine},
    {"triangle", WaveShape::Triangle},
    {"square", WaveShape::Square},
    {"random", WaveShape::Random},
    {"programme", WaveShape::Programme},
}};

// The number as a float, when the text is a number of the type.
std::optional<float> ParseTyped(ParameterType type, std::string_view text) {
    if (type == ParameterType::Float) {
        return ParseWholeFloat(text);
    }
    const std::optional<std::int32_t> number = ParseWholeInteger(text);
    return number ? std::optional(static_cast<float>(*number)) : std::nullopt;
}

// Milliseconds; an integer in [low, high].
std::optional<std::uint32_t> ParseDuration(std::string_view text, std::uint32_t low, std::uint32_t high) {
    const std::optional<std::int32_t> number = ParseWholeInteger(text);
    if (!number || *number < static_cast<std::int32_t>(low) || *number > static_cast<std::int32_t>(high)) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(*number);
}

// Spreads neighbouring numbers over all 64 bits; 0 stays 0.
std::uint64_t Scatter(std::uint64_t number) {
    number ^= number >> 32;
    number *= 0x9E3779B97F4A7C15;
    number ^= number >> 29;
    number *= 0xD1342543DE82EF95;
    return number ^ number >> 32;
}

// A pseudo-random number in [0, 1], the same each time for the same place in the same sequence.
double Chance(std::uint64_t sequence, std::uint64_t place) {
    constexpr double largest = 0xFFFFFFFFU;
    return static_cast<double>(Scatter(Scatter(sequence + 1) + place) >> 32) / largest;
}

constexpr float ARRIVAL = 1e-6F;

constexpr std::uint32_t SYLLABLES_PER_PHRASE = 8;

// The level in [0, 1]. Every syllable begins a little late, rises within a tenth of its length and then
// decays; the level is the loudest of those that still sound, under a quick flutter.
double ProgrammeLevel(std::uint64_t time, std::uint32_t period, std::uint64_t seed) {
    constexpr std::uint64_t audible = 4; // syllables until one has decayed
    constexpr double attack = 0.1;
    constexpr double longestDelay = 0.35;
    constexpr double pauseProbability = 0.15;
    constexpr double flutter = 0.15;
    constexpr double fluttersPerSyllable = 6.0;

    const std::uint64_t strengths = seed * 3;
    const std::uint64_t delays = seed * 3 + 1;
    const std::uint64_t flutters = seed * 3 + 2;
    const std::uint64_t phrase = time / period;
    const double inPhrase = static_cast<double>(time % period) * SYLLABLES_PER_PHRASE / period;
    const auto whole = static_cast<std::uint64_t>(inPhrase);
    const std::uint64_t newest = phrase * SYLLABLES_PER_PHRASE + whole;

    double level = 0.0;
    for (std::uint64_t back = 0; back < audible; ++back) {
        const std::uint64_t syllable = newest - back;
        const double age = inPhrase - static_cast<double>(whole) + static_cast<double>(back) -
                           longestDelay * Chance(delays, syllable);
        if (age < 0.0) {
            continue;
        }
        const double chance = Chance(strengths, syllable);
        const bool isAccent = syllable % SYLLABLES_PER_PHRASE == 0;
        const double strength = isAccent ? 1.0 : chance < pauseProbability ? 0.2 : 0.4 + 0.6 * chance;
        const double remaining = 1.0 - age / audible;
        level = std::max(level, strength * std::min(age / attack, 1.0) * remaining * remaining);
    }
    const auto inSyllable =
        static_cast<std::uint64_t>((inPhrase - static_cast<double>(whole)) * fluttersPerSyllable);
    return level * (1.0 - flutter * Chance(flutters, newest * 8 + inSyllable));
}

// The level in [0, 1].
double WaveLevel(WaveShape shape, std::uint64_t time, std::uint32_t period, std::uint64_t seed) {
    const double phase = static_cast<double>(time % period) / period;
    switch (shape) {
    case WaveShape::Sine:
        return 0.5 + 0.5 * std::sin(2.0 * std::numbers::pi * phase);
    case WaveShape::Triangle:
        return 1.0 - std::fabs(2.0 * phase - 1.0);
    case WaveShape::Square:
        return phase < 0.5 ? 1.0 : 0.0;
    case WaveShape::Random:
        return Chance(seed, time / period);
    case WaveShape::Programme:
        return ProgrammeLevel(time, period, seed);
    }
    return 0.0;
}

} // namespace

std::string ParameterForm(std::string_view type) {
    const std::optional<ParameterType> known = FindWord(PARAMETER_TYPES, type);
    return !known             ? std::string()
           : IsNumber(*known) ? std::string(type) + ",minimum,maximum,value,unit"
                              : std::string(type) + ",,,value";
}

std::optional<ParameterDeclaration> ParseParameter(std::string_view value) {
    std::vector<std::string_view> fields = SplitFields(value, ',');
    if (fields.size() < 4) {
        return std::nullopt;
    }
    const std::optional<ParameterType> type = FindWord(PARAMETER_TYPES, fields[0]);
    if (!type) {
        return std::nullopt;
    }
    if (!IsNumber(*type)) {
        if (!TrimBlanks(fields[1]).empty() || !TrimBlanks(fields[2]).empty()) {
            return std::nullopt;
        }
        if (*type != ParameterType::Text) {
            return ParameterDeclaration{
                *type, 0.0F, 0.0F, std::string(fields[3].data(), value.data() + value.size()), {}};
        }
        const std::string_view unit = fields.size() > 4 ? fields.back() : std::string_view();
        const char* const end = fields.size() > 4 ? unit.data() - 1 : value.data() + value.size();
        return ParameterDeclaration{*type, 0.0F, 0.0F, std::string(fields[3].data(), end),
                                    std::string(TrimBlanks(unit))};
    }
    if (fields.size() > 5) {
        return std::nullopt;
    }
    fields.resize(5);
    const std::optional<float> minimum = ParseTyped(*type, fields[1]);
    const std::optional<float> maximum = ParseTyped(*type, fields[2]);
    if (!minimum || !maximum || *minimum > *maximum || !ParseTyped(*type, fields[3])) {
        return std::nullopt;
    }
    return ParameterDeclaration{*type, *minimum, *maximum, std::string(TrimBlanks(fields[3])),
                                std::string(TrimBlanks(fields[4]))};
}

std::optional<Wave> ParseWave(std::string_view text) {
    const std::vector<std::string_view> fields = SplitFields(text, ',');
    if (fields.size() != 4) {
        return std::nullopt;
    }
    const std::optional<WaveShape> shape = FindWord(WAVE_SHAPES, fields[0]);
    const std::optional<float> low = ParseWholeFloat(fields[1]);
    const std::optional<float> high = ParseWholeFloat(fields[2]);
    const std::optional<std::uint32_t> period =
        ParseDuration(fields[3], MINIMUM_WAVE_PERIOD, MAXIMUM_WAVE_PERIOD);
    if (!shape || !low || !high || *low > *high || !period) {
        return std::nullopt;
    }
    return Wave{*shape, *low, *high, *period};
}

float WaveValue(const Wave& wave, std::uint64_t milliseconds, std::uint32_t seed) {
    if (!std::isfinite(wave.low)) {
        return 0.0F;
    }
    if (!std::isfinite(wave.high) || wave.low >= wave.high) {
        return wave.low;
    }
    const std::uint32_t period =
        std::clamp(wave.periodMilliseconds, MINIMUM_WAVE_PERIOD, MAXIMUM_WAVE_PERIOD);
    const std::uint64_t start = Scatter(seed) % period;
    const double low = wave.low;
    const double high = wave.high;
    const double level = WaveLevel(wave.shape, milliseconds + start, period, seed);
    return static_cast<float>(std::clamp(low + (high - low) * level, low, high));
}

std::optional<Follow> ParseFollow(std::string_view text) {
    std::vector<std::string_view> fields = SplitFields(text, ',');
    if (fields.size() > 3) {
        return std::nullopt;
    }
    fields.resize(3);
    for (std::string_view& field : fields) {
        field = TrimBlanks(field);
    }
    const std::optional<float> offset = ParseWholeFloat(fields[1].empty() ? "0" : fields[1]);
    const std::optional<std::uint32_t> timeConstant =
        ParseDuration(fields[2].empty() ? "0" : fields[2], 0, MAXIMUM_TIME_CONSTANT);
    if (fields[0].empty() || !offset || !timeConstant) {
        return std::nullopt;
    }
    return Follow{std::string(fields[0]), *offset, *timeConstant};
}

float FollowStep(float current, float target, std::uint32_t elapsedMilliseconds, std::uint32_t timeConstant) {
    if (!std::isfinite(target)) {
        return current;
    }
    if (timeConstant == 0 || !std::isfinite(current)) {
        return target;
    }
    if (elapsedMilliseconds == 0) {
        return current;
    }
    const double share = -std::expm1(-static_cast<double>(elapsedMilliseconds) / timeConstant);
    const double way = static_cast<double>(target) - current;
    const auto next = static_cast<float>(current + way * share);
    // Without this a target of 0 would be approached through ever smaller numbers.
    if (std::fabs(target - next) < ARRIVAL) {
        return target;
    }
    // Close to a large target a step can be too short to change a float at all.
    return next == current ? std::nextafter(current, target) : next;
}

} // namespace logic
