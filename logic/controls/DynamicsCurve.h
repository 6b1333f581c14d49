// What a compressor, limiter, gate or expander does to a level: its curve, and the parts of it that can be
// taken hold of. All levels in dB.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace logic {

enum class DynamicsMode { Compressor, Limiter, Gate, Expander };
constexpr std::array<std::string_view, 4> DYNAMICS_MODES{"compressor", "limiter", "gate", "expander"};

// The curve is shown between these, and a level below the lowest is silence.
constexpr double LOWEST_LEVEL = -80.0;
constexpr double HIGHEST_LEVEL = 0.0;

constexpr float LOWEST_RATIO = 1.0F;
constexpr float HIGHEST_RATIO = 100.0F;

struct DynamicsCurve {
    DynamicsMode mode = DynamicsMode::Compressor;
    float threshold = -20.0F;
    float ratio = 4.0F; // dB of input above (of an expander: dB of output below) the threshold for one dB
    float knee = 0.0F;  // width of the bend around the threshold
    float gain = 0.0F;  // added to the output

    bool operator==(const DynamicsCurve&) const = default;
};

// Whether its numbers are finite, the ratio is at least 1 and the knee not negative.
bool IsSound(const DynamicsCurve& curve);
// A limiter lets nothing above the threshold, a gate nothing below it: their ratio does not count, and a gate
// has no knee.
constexpr bool HasRatio(DynamicsMode mode) {
    return mode == DynamicsMode::Compressor || mode == DynamicsMode::Expander;
}
// Whether it works on what is below the threshold.
constexpr bool IsDownward(DynamicsMode mode) {
    return mode == DynamicsMode::Gate || mode == DynamicsMode::Expander;
}

// How much the curve changes an input, without the gain: 0 or less, never less than what leaves the lowest
// level, or nothing of an input that is lower still. Of a sound curve; an input that is not finite counts as
// silence.
double Reduction(const DynamicsCurve& curve, double input);
// The output: input, reduction and gain. A gain does not make a closed gate louder.
double OutputLevel(const DynamicsCurve& curve, double input);

// A place on the curve.
struct CurvePoint {
    double input, output;
};
// Where the threshold, and where the ratio is held. The latter lies on the line that the curve has beyond its
// knee, half of what there is of it away; a curve without a ratio, or without room for one, has none.
CurvePoint ThresholdHandle(const DynamicsCurve& curve);
std::optional<CurvePoint> RatioHandle(const DynamicsCurve& curve);
// The threshold, and the ratio, that bring the handle to a place, in tenths of a dB and in two digits behind
// the point; limited to what they can be.
float ThresholdAt(const CurvePoint& place);
float RatioAt(const DynamicsCurve& curve, const CurvePoint& place);

// The ratio after so many steps up (down where negative), each a tenth of it; small steps are a hundredth.
float StepRatio(float ratio, int steps, bool isSmall);

} // namespace logic
