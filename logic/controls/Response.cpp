#include "logic/controls/Response.h"

#include "logic/controls/FilterValues.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numbers>

namespace logic {

namespace {

using Section = Filter::Section;

constexpr double SHELF_Q = 1 / std::numbers::sqrt2;
constexpr double MOST_GAIN = 200;        // dB; beyond it everything is off any scale
constexpr double SPEED_OF_SOUND = 343.2; // m/s

// Low passes; a high pass is one with 1 / s for s.
constexpr Section FirstOrder(double corner = 1) {
    return {{1, 0, 0}, {1, 1, 0}, corner};
}
constexpr Section SecondOrder(double q, double corner = 1) {
    return {{1, 0, 0}, {1, 1 / q, 1}, corner};
}

// With 1 / s for s.
Section Reversed(const Section& section) {
    const auto turned = [&section](const double(&of)[3], int power) {
        const int degree = section.over[2] != 0 || section.under[2] != 0 ? 2 : 1;
        return power <= degree ? of[degree - power] : 0;
    };
    Section reversed{{}, {}, 1 / section.corner};
    for (int power = 0; power < 3; ++power) {
        reversed.over[power] = turned(section.over, power);
        reversed.under[power] = turned(section.under, power);
    }
    return reversed;
}

// Of a low shelf; that of a high one is reversed.
Section Shelf(double a, bool isSteep) {
    if (!isSteep) {
        return {{a, 1, 0}, {1 / a, 1, 0}};
    }
    const double middle = std::sqrt(a) / SHELF_Q;
    return {{a * a, a * middle, a}, {1, middle, a}};
}

// Where a filter of that frequency has its corner; nothing where there can be none.
std::optional<double> CornerOf(double hertz, double sampleRate) {
    const double corner = Warped(hertz, sampleRate);
    return corner > 0 ? std::optional(corner) : std::nullopt;
}

// The low passes of a crossover by their type.
std::vector<Section> PassSections(std::int32_t type) {
    constexpr double QS[] = {0.5, 0.6, 0.7, 0.8, 1.0, 1.2, 1.5, 2.0};
    constexpr int FIRST_Q = 2;
    constexpr double BUTTERWORTH = 1 / std::numbers::sqrt2;
    switch (type) {
    case 0:
        return {};
    case 1:
        return {FirstOrder()};
    case 10: // the corners of Bessel filters make them 3 dB down at their frequency
        return {SecondOrder(0.5773502691896258, 1.2720196495140685)};
    case 11:
        return {SecondOrder(BUTTERWORTH)};
    case 12:
        return {SecondOrder(0.5)};
    case 13:
        return {FirstOrder(1.3226757999104444), SecondOrder(0.6910466258250713, 1.4476171331469865)};
    case 14:
        return {FirstOrder(), SecondOrder(1)};
    case 15:
        return {SecondOrder(0.5219345816689801, 1.4301715599939893),
                SecondOrder(0.805538281841666, 1.6033575162169713)};
    case 16:
        return {SecondOrder(1 / (2 * std::sin(std::numbers::pi / 8))),
                SecondOrder(1 / (2 * std::sin(3 * std::numbers::pi / 8)))};
    case 17:
        return {SecondOrder(BUTTERWORTH), SecondOrder(BUTTERWORTH)};
    default:
        return {SecondOrder(QS[type - FIRST_Q])};
    }
}

double Square(double number) {
    return number * number;
}

} // namespace

double Warped(double hertz, double sampleRate) {
    const bool isInside = hertz >= 0 && hertz < sampleRate / 2;
    return isInside ? std::tan(std::numbers::pi * hertz / sampleRate)
                    : std::numeric_limits<double>::quiet_NaN();
}

FrequencyGrid::FrequencyGrid(int count, double sampleRate) : sampleRate_(sampleRate) {
    for (int i = 0; i < count; ++i) {
        const double hertz = FrequencyAt(count > 1 ? static_cast<double>(i) / (count - 1) : 0.5);
        hertz_.push_back(hertz);
        warped_.push_back(logic::Warped(hertz, sampleRate));
    }
}

std::optional<Filter> Filter::OfBand(const EqBand& band, double sampleRate) {
    const auto corner = CornerOf(band.frequency, sampleRate);
    const bool isSteep = band.slope == 2;
    if (!corner || !IsKnown(band) || (HasQ(band.type, band.slope) && band.q <= 0)) {
        return std::nullopt;
    }
    const double a = std::pow(10, std::clamp<double>(band.gain, -MOST_GAIN, MOST_GAIN) / 40);
    const double q = band.q;
    Filter filter;
    filter.corner_ = *corner;
    switch (band.type) {
    case Peak:
        filter.sections_ = {{{1, a / q, 1}, {1, 1 / (a * q), 1}}};
        break;
    case LowShelf:
        filter.sections_ = {Shelf(a, isSteep)};
        break;
    case HighShelf:
        filter.sections_ = {Reversed(Shelf(a, isSteep))};
        break;
    case HighPass:
        filter.sections_ = {Reversed(isSteep ? SecondOrder(q) : FirstOrder())};
        break;
    case LowPass:
        filter.sections_ = {isSteep ? SecondOrder(q) : FirstOrder()};
        break;
    default:
        break;
    }
    return filter;
}

std::optional<Filter> Filter::OfCrossover(const CrossoverFilter& filter, bool isHighPass, double sampleRate) {
    if (filter.type == 0) {
        return Filter();
    }
    const auto corner = CornerOf(filter.frequency, sampleRate);
    if (!corner || filter.type < 0 || filter.type >= CROSSOVER_TYPE_COUNT) {
        return std::nullopt;
    }
    Filter made;
    made.corner_ = *corner;
    made.sections_ = PassSections(filter.type);
    if (isHighPass) {
        std::transform(made.sections_.begin(), made.sections_.end(), made.sections_.begin(), Reversed);
    }
    return made;
}

std::complex<double> Filter::At(double warped) const {
    std::complex<double> product = 1;
    for (const Section& section : sections_) {
        const double s = warped / corner_ / section.corner;
        const auto polynomial = [s](const double(&of)[3]) {
            return std::complex<double>(of[0] - of[2] * s * s, of[1] * s);
        };
        product *= polynomial(section.over) / polynomial(section.under);
    }
    return product;
}

double Filter::PowerAt(double warped) const {
    double product = 1;
    for (const Section& section : sections_) {
        const double square = Square(warped / corner_ / section.corner);
        const auto power = [square](const double(&of)[3]) {
            return Square(of[0] - of[2] * square) + Square(of[1]) * square;
        };
        product *= power(section.over) / power(section.under);
    }
    return product;
}

double FrequencyAt(double place) {
    const double span = std::log(HIGHEST_FREQUENCY / LOWEST_FREQUENCY);
    return LOWEST_FREQUENCY * std::exp(span * (place > 0 ? std::min(place, 1.0) : 0.0));
}

double PlaceOfFrequency(double hertz) {
    const double span = std::log(HIGHEST_FREQUENCY / LOWEST_FREQUENCY);
    return hertz > LOWEST_FREQUENCY ? std::min(std::log(hertz / LOWEST_FREQUENCY) / span, 1.0) : 0.0;
}

double DelaySeconds(const DelaySetting& delay, double sampleRate) {
    constexpr double FOOT = 0.3048;
    // By unit, in the order of the words.
    const double units[] = {1e-3,
                            1 / sampleRate,
                            FOOT / SPEED_OF_SOUND,
                            FOOT / 12 / SPEED_OF_SOUND,
                            1 / SPEED_OF_SOUND,
                            0.01 / SPEED_OF_SOUND,
                            1e-6,
                            1};
    static_assert(std::size(units) == DELAY_UNIT_COUNT);
    return delay.bypass == 0 && IsKnown(delay) ? delay.amount * units[delay.unit] : 0;
}

std::optional<std::vector<std::complex<double>>> ResponseOf(const Crossover& way, const FrequencyGrid& grid) {
    const auto high = Filter::OfCrossover(way.filters.highPass, true, grid.SampleRate());
    const auto low = Filter::OfCrossover(way.filters.lowPass, false, grid.SampleRate());
    if (!high || !low || !IsKnown(way)) {
        return std::nullopt;
    }
    const double gain = std::pow(10, std::clamp<double>(way.gain, -MOST_GAIN, MOST_GAIN) / 20);
    const double sign = way.polarity == 0 ? 1 : -1;
    const double seconds = DelaySeconds(way.delay, grid.SampleRate());
    std::vector<std::complex<double>> response;
    for (int i = 0; i < grid.Count(); ++i) {
        const double turn = -2 * std::numbers::pi * std::fmod(grid.Hertz(i) * seconds, 1.0);
        response.push_back(high->At(grid.Warped(i)) * low->At(grid.Warped(i)) * std::polar(gain, turn) *
                           sign);
    }
    return response;
}

// To nine digits; the system's logarithm takes longer than all else of a curve.
double DecibelsOfPower(double power) {
    constexpr double OF_TWO = 10 * std::numbers::ln2 / std::numbers::ln10;
    constexpr double OF_E = 10 / std::numbers::ln10;
    if (!std::isnormal(power) || power < 0) {
        return 10 * std::log10(power);
    }
    constexpr int MANTISSA = 52;
    constexpr std::uint64_t EXPONENT = 0x7FF;
    constexpr std::uint64_t ONE = 0x3FF;
    const auto bits = std::bit_cast<std::uint64_t>(power);
    double exponent = static_cast<double>(bits >> MANTISSA & EXPONENT) - static_cast<double>(ONE);
    double mantissa = std::bit_cast<double>((bits & ~(EXPONENT << MANTISSA)) | ONE << MANTISSA);
    if (mantissa > std::numbers::sqrt2) {
        mantissa /= 2;
        exponent += 1;
    }
    const double z = (mantissa - 1) / (mantissa + 1);
    const double square = z * z;
    const double series =
        1 + square * (1.0 / 3 + square * (1.0 / 5 + square * (1.0 / 7 + square * (1.0 / 9 + square / 11))));
    return exponent * OF_TWO + 2 * z * series * OF_E;
}

} // namespace logic
