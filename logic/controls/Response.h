// What filters of equalisers and crossovers do to a signal: the response of bilinear sections at a sampling
// rate. Frequencies and rates in Hz, gains in dB, delays in seconds.
#pragma once

#include "logic/controls/Crossover.h"
#include "logic/controls/EqBand.h"

#include <complex>
#include <optional>
#include <span>
#include <vector>

namespace logic {

// What the bilinear transform makes of a frequency; no number from half the sampling rate on, and below 0.
double Warped(double hertz, double sampleRate);

// The frequencies of a curve, each with what a filter has to know of it. From half the sampling rate on there
// is no response: it is no number there.
class FrequencyGrid {
public:
    // So many from the lowest to the highest of the filters' range, evenly on a logarithmic scale.
    FrequencyGrid(int count, double sampleRate);

    int Count() const { return static_cast<int>(hertz_.size()); }
    double SampleRate() const { return sampleRate_; }
    double Hertz(int i) const { return hertz_[static_cast<std::size_t>(i)]; }
    double Warped(int i) const { return warped_[static_cast<std::size_t>(i)]; }

private:
    double sampleRate_;
    std::vector<double> hertz_;
    std::vector<double> warped_;
};

// A filter as the product of sections. It is designed in the frequency that the bilinear transform makes of
// its own, tan(pi f / rate): there a section is a quotient of polynomials in s of the second degree.
class Filter {
public:
    struct Section {
        double over[3];    // of s to the powers 0, 1 and 2
        double under[3];   // likewise
        double corner = 1; // in that of the filter
    };

    // Lets everything pass.
    Filter() = default;

    // A band of an equaliser: a peak with alpha * A above and alpha / A below the line of the fraction, A
    // being 10^(gain / 40); sections of the first order for 6 dB an octave; shelves with a Q of 1 / sqrt(2)
    // for 12; an all-pass lets everything pass. Whether it is bypassed is the caller's affair. Nothing for a
    // band that cannot be: a frequency that is not between 0 and half the rate, a Q of a type that has one
    // that is not above 0, an unknown type, what is no number.
    static std::optional<Filter> OfBand(const EqBand& band, double sampleRate);
    // A filter of a crossover: Bessel filters are 3 dB down at their frequency, those of Linkwitz and
    // Riley 6. Nothing likewise.
    static std::optional<Filter> OfCrossover(const CrossoverFilter& filter, bool isHighPass,
                                             double sampleRate);

    std::complex<double> At(double warped) const;
    // The square of its absolute value: less work.
    double PowerAt(double warped) const;

private:
    double corner_ = 1;
    std::vector<Section> sections_;
};

// The frequency that a way of the range is at, 0 for the lowest and 1 for the highest, and back. Anything is
// limited to the range.
double FrequencyAt(double place);
double PlaceOfFrequency(double hertz);

// A delay in seconds; samples are those of that rate, lengths what sound needs in air of 20 degrees. 0 while
// it is bypassed, and for one of an unknown unit.
double DelaySeconds(const DelaySetting& delay, double sampleRate);

// Of one way of a crossover, all of it. Nothing when one of its filters cannot be.
std::optional<std::vector<std::complex<double>>> ResponseOf(const Crossover& way, const FrequencyGrid& grid);

double DecibelsOfPower(double power);

} // namespace logic
