// Where frequencies and gains lie in a picture of curves: from the lowest frequency of the filters' range at
// the left to the highest at the right, and from +range dB at the top to -range dB at the bottom.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "logic/drawing/Coverage.h"

namespace logic {

struct CurvePlot {
    double left = 0; // pixels
    double top = 0;
    int width = 0;
    int height = 0;
    double range = 18; // dB, above 0

    double X(double hertz) const;
    double Y(double decibels) const;
    double HertzAt(double x) const;
    double DecibelsAt(double y) const;

    // Of a curve with a gain for each column. What is far outside is brought near; what is no number stays
    // none.
    std::vector<double> Heights(std::span<const double> decibels) const;

    // Gains with a line of the grid, so that two of them are at least that many pixels apart: multiples of 1,
    // 2, 3, 6, 12 ... dB that lie inside.
    std::vector<int> GridGains(int pixels) const;
};

// Frequencies with a line of the grid, and whether they are to have a number.
struct GridFrequency {
    int hertz;
    bool isNumbered;
};
std::span<const GridFrequency> GridFrequencies();

// Which of the points is nearest to the spot, and not farther away than that; of equally near ones the one
// that is preferred, else the last. Missing points are none.
std::optional<int> NearestPoint(std::span<const std::optional<Spot>> points, Spot spot, double reach,
                                int preferred);

// The next point that is there, forwards or backwards from one, or from outside (-1); -1 for none.
int NextPoint(std::span<const std::optional<Spot>> points, int from, bool backwards);

} // namespace logic
