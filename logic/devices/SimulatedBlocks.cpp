#include "logic/devices/SimulatedBlocks.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "logic/text/NamePattern.h"
#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

std::optional<DynamicsMode> ModeOf(std::string_view word) {
    const auto found = std::find(DYNAMICS_MODES.begin(), DYNAMICS_MODES.end(), word);
    return found == DYNAMICS_MODES.end()
               ? std::nullopt
               : std::optional(static_cast<DynamicsMode>(found - DYNAMICS_MODES.begin()));
}

DynamicsMode ModeOfName(std::string_view name) {
    const auto begins = [name](std::string_view word) { return name.starts_with(word); };
    const auto found = std::find_if(DYNAMICS_MODES.begin(), DYNAMICS_MODES.end(), begins);
    return found == DYNAMICS_MODES.end() ? DynamicsMode::Compressor : *ModeOf(*found);
}

std::optional<std::int32_t> ParseSize(std::string_view text) {
    const std::optional<std::int32_t> size = ParseWholeInteger(text);
    return size && *size >= 1 && *size <= LARGEST_MATRIX ? size : std::nullopt;
}

bool AreDistinct(const std::vector<std::string>& names) {
    return std::set(names.begin(), names.end()).size() == names.size();
}

} // namespace

std::optional<Dynamics> ParseDynamics(std::string_view name, std::string_view text) {
    const std::vector<std::string_view> fields = SplitFields(text, ',');
    const std::string_view source = TrimBlanks(fields.front());
    const std::optional<DynamicsMode> mode =
        fields.size() == 1 ? ModeOfName(name) : ModeOf(TrimBlanks(fields[1]));
    if (source.empty() || !mode || fields.size() > 2) {
        return std::nullopt;
    }
    return Dynamics{std::string(source), *mode};
}

std::vector<std::pair<std::string, ParameterDeclaration>> DynamicsParameters(DynamicsMode mode) {
    constexpr float attacks[] = {10, 1, 1, 10}; // by mode
    constexpr float releases[] = {200, 100, 150, 200};
    constexpr float thresholds[] = {-20, -6, -50, -45};
    constexpr float ratios[] = {4, 100, 100, 2};
    const auto row = static_cast<std::size_t>(mode);
    const auto number = [](const char* name, float minimum, float maximum, float value, const char* unit) {
        return std::pair(std::string(name), ParameterDeclaration{ParameterType::Float, minimum, maximum,
                                                                 FormatFloat(value), unit});
    };
    return {
        number(".threshold", LOWEST_LEVEL, HIGHEST_LEVEL, thresholds[row], "dB"),
        number(".ratio", LOWEST_RATIO, HIGHEST_RATIO, ratios[row], ""),
        number(".knee", 0, 24, mode == DynamicsMode::Compressor ? 6 : 0, "dB"),
        number(".gain", -24, 24, 0, "dB"),
        number(".attack", 0, 1000, attacks[row], "ms"),
        number(".release", 0, 10'000, releases[row], "ms"),
        {".on", {ParameterType::Integer, 0, 1, "1", ""}},
        number(".level", LOWEST_LEVEL, 24, LOWEST_LEVEL, "dB"),
        number(".reduction", LOWEST_LEVEL, 0, 0, "dB"),
    };
}

float ReductionStep(DynamicsMode mode, float current, float target, std::uint32_t elapsedMilliseconds,
                    float attack, float release) {
    const bool isAttack = IsDownward(mode) ? target > current : target < current;
    return FollowStep(current, target, elapsedMilliseconds,
                      static_cast<std::uint32_t>(TruncateToInteger(isAttack ? attack : release)));
}

std::vector<std::string> Matrix::InputNames() const {
    std::vector<std::string> names;
    for (int number = 1; number <= inputs; ++number) {
        names.push_back(ExpandPattern(input, number, 0));
    }
    return names;
}

std::vector<std::string> Matrix::OutputNames() const {
    std::vector<std::string> names;
    for (int number = 1; number <= outputs; ++number) {
        names.push_back(ExpandPattern(output, 0, number));
    }
    return names;
}

std::optional<Matrix> ParseMatrix(std::string_view crosspoints, std::string_view text) {
    const std::vector<std::string_view> fields = SplitFields(text, ',');
    if (fields.size() != 4) {
        return std::nullopt;
    }
    const auto inputs = ParseSize(fields[0]);
    const auto outputs = ParseSize(fields[1]);
    if (!inputs || !outputs) {
        return std::nullopt;
    }
    Matrix matrix{
        {}, *inputs, *outputs, std::string(TrimBlanks(fields[2])), std::string(TrimBlanks(fields[3]))};
    for (int number = 0; number < *outputs * *inputs; ++number) {
        matrix.crosspoints.push_back(ExpandPattern(crosspoints, number % *inputs + 1, number / *inputs + 1));
    }
    const bool isUsable = !crosspoints.empty() && !matrix.input.empty() && !matrix.output.empty() &&
                          AreDistinct(matrix.crosspoints) && AreDistinct(matrix.InputNames()) &&
                          AreDistinct(matrix.OutputNames());
    return isUsable ? std::optional(matrix) : std::nullopt;
}

std::optional<float> PowerSum(std::span<const float> levels) {
    double power = 0;
    for (const float level : levels) {
        power += std::pow(10.0, level / 10.0);
    }
    return levels.empty() ? std::nullopt : std::optional(static_cast<float>(10.0 * std::log10(power)));
}

float GainOfMusic(std::span<const Filter> filters) {
    constexpr int STEPS = 41; // four an octave
    static const FrequencyGrid grid(STEPS, SIMULATED_RATE);
    if (filters.empty()) {
        return 0;
    }
    double power = 0;
    for (int step = 0; step < STEPS; ++step) {
        double passed = 1;
        for (const Filter& filter : filters) {
            passed *= filter.PowerAt(grid.Warped(step));
        }
        power += passed / STEPS;
    }
    // Silence has no level either.
    return static_cast<float>(std::max(DecibelsOfPower(power), -200.0));
}

} // namespace logic
