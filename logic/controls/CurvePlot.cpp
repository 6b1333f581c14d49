#include "logic/controls/CurvePlot.h"

#include "logic/controls/Response.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace logic {

namespace {

constexpr double HALF = 0.5; // from the edge of a pixel to its middle

} // namespace

double CurvePlot::X(double hertz) const {
    return left + HALF + PlaceOfFrequency(hertz) * std::max(width - 1, 0);
}

double CurvePlot::Y(double decibels) const {
    return top + HALF + (range - decibels) / (2 * range) * std::max(height - 1, 0);
}

double CurvePlot::HertzAt(double x) const {
    return FrequencyAt((x - left - HALF) / std::max(width - 1, 1));
}

double CurvePlot::DecibelsAt(double y) const {
    return range - (y - top - HALF) / std::max(height - 1, 1) * 2 * range;
}

std::vector<double> CurvePlot::Heights(std::span<const double> decibels) const {
    std::vector<double> heights;
    heights.reserve(decibels.size());
    for (const double gain : decibels) {
        heights.push_back(Y(gain < -2 * range ? -2 * range : gain > 2 * range ? 2 * range : gain));
    }
    return heights;
}

std::vector<int> CurvePlot::GridGains(int pixels) const {
    int step = 0;
    for (const int candidate : {1, 2, 3, 6, 12, 24, 48, 96, 192}) {
        if (step == 0 && candidate / (2 * range) * height >= pixels) {
            step = candidate;
        }
    }
    std::vector<int> gains;
    for (int gain = 0; gain < range && step > 0; gain += step) {
        gains.push_back(gain);
        if (gain > 0) {
            gains.push_back(-gain);
        }
    }
    return gains;
}

std::span<const GridFrequency> GridFrequencies() {
    static constexpr GridFrequency FREQUENCIES[] = {
        {50, true},    {100, true},   {200, true},   {500, true},   {1000, true},  {2000, true},
        {5000, true},  {10000, true}, {30, false},   {40, false},   {60, false},   {70, false},
        {80, false},   {90, false},   {300, false},  {400, false},  {600, false},  {700, false},
        {800, false},  {900, false},  {3000, false}, {4000, false}, {6000, false}, {7000, false},
        {8000, false}, {9000, false},
    };
    return FREQUENCIES;
}

std::optional<int> NearestPoint(std::span<const std::optional<Spot>> points, Spot spot, double reach,
                                int preferred) {
    std::optional<int> nearest;
    double least = reach;
    for (int i = 0; i < static_cast<int>(points.size()); ++i) {
        const auto& point = points[static_cast<std::size_t>(i)];
        const double away = point ? std::hypot(point->x - spot.x, point->y - spot.y) : reach + 1;
        if (away < least || (away <= least && nearest != preferred)) {
            least = away;
            nearest = i;
        }
    }
    return nearest;
}

int NextPoint(std::span<const std::optional<Spot>> points, int from, bool backwards) {
    const int count = static_cast<int>(points.size());
    const int step = backwards ? -1 : 1;
    int next = from < 0 && backwards ? count - 1 : from + step;
    while (next >= 0 && next < count && !points[static_cast<std::size_t>(next)]) {
        next += step;
    }
    return next < count ? next : -1;
}

} // namespace logic
