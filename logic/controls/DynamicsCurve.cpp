#include "logic/controls/DynamicsCurve.h"

#include "logic/text/Numbers.h"

#include <algorithm>
#include <cmath>

namespace logic {

namespace {

// By how much the output lies below the input for one dB beyond the threshold.
double SlopeOf(const DynamicsCurve& curve) {
    switch (curve.mode) {
    case DynamicsMode::Compressor:
        return 1.0 - 1.0 / curve.ratio;
    case DynamicsMode::Limiter:
        return 1.0;
    default:
        return curve.ratio - 1.0;
    }
}

// From the threshold to where the ratio is held, on the side of what changes: of a compressor along the
// input, of an expander along the output.
double HandleReach(const DynamicsCurve& curve) {
    return std::max(0.0, IsDownward(curve.mode) ? (curve.threshold - LOWEST_LEVEL) / 2
                                                : (HIGHEST_LEVEL - curve.threshold) / 2);
}

} // namespace

bool IsSound(const DynamicsCurve& curve) {
    return std::isfinite(curve.threshold) && std::isfinite(curve.ratio) && std::isfinite(curve.knee) &&
           std::isfinite(curve.gain) && curve.ratio >= LOWEST_RATIO && curve.knee >= 0.0F;
}

double Reduction(const DynamicsCurve& curve, double input) {
    const double most = std::isfinite(input) ? std::min(LOWEST_LEVEL - input, 0.0) : 0.0;
    const double over = IsDownward(curve.mode) ? curve.threshold - input : input - curve.threshold;
    if (curve.mode == DynamicsMode::Gate) {
        return over > 0 ? most : 0.0;
    }
    const double into = over + curve.knee / 2; // from where the bend begins
    if (!(into > 0)) {
        return 0.0;
    }
    // Within the bend the slope grows evenly from none to that of the straight part.
    const double beyond = into < curve.knee ? into * into / (2.0 * curve.knee) : over;
    return std::max(-SlopeOf(curve) * beyond, most);
}

double OutputLevel(const DynamicsCurve& curve, double input) {
    if (!std::isfinite(input)) {
        return LOWEST_LEVEL;
    }
    const double passed = input + Reduction(curve, input);
    const bool isClosed = curve.mode == DynamicsMode::Gate && input < curve.threshold;
    return isClosed ? std::min(passed, LOWEST_LEVEL) + std::min(curve.gain, 0.0F) : passed + curve.gain;
}

CurvePoint ThresholdHandle(const DynamicsCurve& curve) {
    return {curve.threshold, OutputLevel(curve, curve.threshold)};
}

std::optional<CurvePoint> RatioHandle(const DynamicsCurve& curve) {
    const double reach = HandleReach(curve);
    if (!HasRatio(curve.mode) || reach <= 0 || !(curve.ratio >= LOWEST_RATIO)) {
        return std::nullopt;
    }
    const double threshold = curve.threshold;
    const double gain = curve.gain;
    return IsDownward(curve.mode) ? CurvePoint{threshold - reach / curve.ratio, threshold - reach + gain}
                                  : CurvePoint{threshold + reach, threshold + reach / curve.ratio + gain};
}

float ThresholdAt(const CurvePoint& place) {
    return Clamp(RoundToStep(static_cast<float>(place.input), 0.1F), static_cast<float>(LOWEST_LEVEL),
                 static_cast<float>(HIGHEST_LEVEL));
}

float RatioAt(const DynamicsCurve& curve, const CurvePoint& place) {
    const double way =
        IsDownward(curve.mode) ? curve.threshold - place.input : place.output - curve.gain - curve.threshold;
    const double ratio = way > 0 ? HandleReach(curve) / way : HIGHEST_RATIO;
    return Clamp(RoundToStep(static_cast<float>(std::min(ratio, double{HIGHEST_RATIO})), 0.01F), LOWEST_RATIO,
                 HIGHEST_RATIO);
}

float StepRatio(float ratio, int steps, bool isSmall) {
    const double stepped = ratio * std::pow(isSmall ? 1.01 : 1.1, steps);
    const float rounded = RoundToStep(static_cast<float>(stepped), 0.01F);
    // A hundredth of a small ratio is less than what is rounded to.
    const float moved = rounded == ratio && steps != 0 ? ratio + (steps > 0 ? 0.01F : -0.01F) : rounded;
    return Clamp(moved, LOWEST_RATIO, HIGHEST_RATIO);
}

} // namespace logic
