// Responses of filters, against closed forms and against values that were computed otherwise.
#include "logic/controls/Response.h"

#include <cmath>
#include <numbers>

#include "logic/controls/FilterValues.h"
#include "tests/native/Tables.h"

using namespace logic;

namespace {

constexpr double RATE = 48000;
constexpr double FREQUENCIES[] = {25, 100, 400, 1000, 2500, 6300, 12000, 19000};

double Decibels(const Filter& filter, double hertz) {
    return DecibelsOfPower(filter.PowerAt(Warped(hertz, RATE)));
}

} // namespace

// Made with scipy 1.10: coefficients in z with alpha = sin(w) / (2 Q), signal.freqz.
TEST_CASE("bands have the gains that their coefficients in z have") {
    struct {
        EqBand band;
        double decibels[std::size(FREQUENCIES)];
    } const rows[] = {
        {{0, Peak, 1000, 6, 1.4, 2},
         {0.002065, 0.033464, 0.655307, 6.000000, 0.645317, 0.076643, 0.014305, 0.001640}},
        {{0, Peak, 60, -12, 8, 1},
         {-0.063808, -0.216209, -0.005953, -0.000915, -0.000143, -0.000020, -0.000004, -0.000000}},
        {{0, Peak, 15000, 9, 0.5, 1},
         {0.000051, 0.000818, 0.013084, 0.081406, 0.495126, 2.739136, 7.543602, 5.768434}},
        {{0, LowShelf, 200, -9, 3, 2},
         {-8.997390, -8.390728, -0.608986, -0.016982, -0.000423, -0.000009, -0.000000, -0.000000}},
        {{0, HighShelf, 5000, 7.5, 3, 2},
         {0.000000, 0.000001, 0.000300, 0.011746, 0.439855, 5.422658, 7.389613, 7.498508}},
        {{0, HighPass, 120, 3, 0.6, 2},
         {-27.402080, -6.225939, -0.326446, -0.049121, -0.007660, -0.001089, -0.000208, -0.000024}},
        {{0, LowPass, 9000, 3, 1.8, 2},
         {0.000044, 0.000705, 0.011286, 0.070852, 0.455338, 3.383454, -3.480089, -25.390264}},
        {{0, LowShelf, 300, 8, 3, 1},
         {7.936902, 7.119113, 2.947524, 0.730578, 0.127262, 0.018449, 0.003538, 0.000408}},
        {{0, HighShelf, 3000, -10, 3, 1},
         {-0.000836, -0.013357, -0.207982, -1.135275, -4.166368, -8.089871, -9.542016, -9.944090}},
        {{0, HighPass, 150, 0, 3, 1},
         {-15.682281, -5.118941, -0.571219, -0.096366, -0.015330, -0.002187, -0.000419, -0.000048}},
        {{0, LowPass, 4000, 0, 3, 1},
         {-0.000162, -0.002590, -0.041281, -0.252382, -1.397715, -5.640545, -11.740075, -20.859107}},
    };
    for (const auto& row : rows) {
        CAPTURE(row.band.type);
        CAPTURE(row.band.frequency);
        const auto filter = Filter::OfBand(row.band, RATE);
        REQUIRE(filter);
        for (std::size_t i = 0; i < std::size(FREQUENCIES); ++i) {
            CHECK(Decibels(*filter, FREQUENCIES[i]) ==
                  doctest::Approx(row.decibels[i]).epsilon(1e-4).scale(0.1));
        }
    }
}

// Made with scipy 1.10: signal.butter and signal.bessel (norm "mag") as analog filters, bilinear_zpk with the
// corner at 800 Hz, freqz at 500, 3000 and 15000 Hz.
TEST_CASE("crossover filters have the phases that designs in z have") {
    struct {
        std::int32_t type;
        bool isHighPass;
        double response[3][2];
    } const rows[] = {
        {1, true, {{0.280674, 0.449328}, {0.935089, 0.246369}, {0.998775, 0.0349749}}},
        {1, false, {{0.719326, -0.449328}, {0.0649114, -0.246369}, {0.00122474, -0.0349749}}},
        {2, true, {{-0.123118, 0.252229}, {0.813693, 0.460754}, {0.996329, 0.0698641}}},
        {2, false, {{0.315534, -0.646427}, {-0.0564844, -0.0319843}, {-0.00122174, -8.56704e-05}}},
        {3, true, {{-0.163452, 0.27905}, {0.878895, 0.414729}, {0.997821, 0.0583072}}},
        {3, false, {{0.418904, -0.715165}, {-0.0610105, -0.0287894}, {-0.00122357, -7.14989e-05}}},
        {4, true, {{-0.203687, 0.298063}, {0.923516, 0.37353}, {0.998722, 0.0500228}}},
        {4, false, {{0.52202, -0.763893}, {-0.064108, -0.0259294}, {-0.00122468, -6.13401e-05}}},
        {5, true, {{-0.242417, 0.310396}, {0.954984, 0.337975}, {0.999308, 0.0437956}}},
        {5, false, {{0.621279, -0.7955}, {-0.0662924, -0.0234613}, {-0.0012254, -5.37041e-05}}},
        {6, true, {{-0.312236, 0.319835}, {0.994848, 0.281667}, {0.999998, 0.0350607}}},
        {6, false, {{0.800215, -0.81969}, {-0.0690597, -0.0195526}, {-0.00122624, -4.2993e-05}}},
        {7, true, {{-0.370145, 0.315961}, {1.01793, 0.240168}, {1.00037, 0.0292282}}},
        {7, false, {{0.948628, -0.809763}, {-0.070662, -0.0166719}, {-0.0012267, -3.58409e-05}}},
        {8, true, {{-0.436361, 0.297988}, {1.03763, 0.195853}, {1.00068, 0.0233898}}},
        {8, false, {{1.11833, -0.763699}, {-0.0720294, -0.0135956}, {-0.00122708, -2.86815e-05}}},
        {9, true, {{-0.506889, 0.259613}, {1.05348, 0.149134}, {1.00092, 0.0175465}}},
        {9, false, {{1.29908, -0.66535}, {-0.07313, -0.0103525}, {-0.00122737, -2.15163e-05}}},
        {10, true, {{-0.114659, 0.42803}, {0.916108, 0.343393}, {0.998485, 0.0476459}}},
        {10, false, {{0.584043, -0.654627}, {-0.0886308, -0.0579584}, {-0.00197624, -0.000152772}}},
        {11, true, {{-0.206502, 0.299146}, {0.92612, 0.370818}, {0.998772, 0.0495225}}},
        {11, false, {{0.529235, -0.766667}, {-0.0642888, -0.0257412}, {-0.00122474, -6.07267e-05}}},
        {12, true, {{-0.123118, 0.252229}, {0.813693, 0.460754}, {0.996329, 0.0698641}}},
        {12, false, {{0.315534, -0.646427}, {-0.0564844, -0.0319843}, {-0.00122174, -8.56704e-05}}},
        {13, true, {{-0.33564, 0.206744}, {0.875824, 0.43673}, {0.997733, 0.0614178}}},
        {13, false, {{0.403244, -0.783892}, {-0.0371181, 0.0289264}, {-1.41955e-05, 0.000118029}}},
        {14, true, {{-0.231347, -0.0505271}, {0.860877, 0.508484}, {0.997548, 0.0699926}}},
        {14, false, {{0.207305, -0.949184}, {-0.00929992, 0.015745}, {-3.0055e-06, 4.2835e-05}}},
        {15, true, {{-0.371124, -0.0428464}, {0.830182, 0.51697}, {0.996871, 0.0739281}}},
        {15, false, {{0.218031, -0.852337}, {0.00692163, 0.0221265}, {7.78759e-06, 1.3024e-06}}},
        {16, true, {{-0.0267754, -0.148113}, {0.767795, 0.640677}, {0.995815, 0.0913936}}},
        {16, false, {{-0.175867, -0.972839}, {0.00369983, 0.00308727}, {1.49738e-06, 1.37426e-07}}},
        {17, true, {{-0.046845, -0.123548}, {0.720192, 0.686845}, {0.995094, 0.0989234}}},
        {17, false, {{-0.307689, -0.811495}, {0.00347044, 0.00330974}, {1.4963e-06, 1.48748e-07}}},
    };
    for (const auto& row : rows) {
        CAPTURE(row.type);
        CAPTURE(row.isHighPass);
        const auto filter = Filter::OfCrossover({row.type, 800.0F}, row.isHighPass, RATE);
        REQUIRE(filter);
        std::size_t i = 0;
        for (const double hertz : {500.0, 3000.0, 15000.0}) {
            const std::complex<double> response = filter->At(Warped(hertz, RATE));
            CHECK(response.real() == doctest::Approx(row.response[i][0]).epsilon(2e-5));
            CHECK(response.imag() == doctest::Approx(row.response[i][1]).epsilon(2e-5));
            CHECK(filter->PowerAt(Warped(hertz, RATE)) == doctest::Approx(std::norm(response)));
            ++i;
        }
    }
}

TEST_CASE("bands in closed form") {
    for (const float gain : {-15.0F, -3.0F, 6.0F, 12.0F}) {
        for (const float hertz : {20.0F, 440.0F, 12345.0F}) {
            const auto at = [&](FilterType type, std::int32_t slope, double where) {
                return Decibels(*Filter::OfBand({0, type, hertz, gain, 2.0F, slope}, RATE), where);
            };
            CHECK(at(Peak, 1, hertz) == doctest::Approx(gain));
            // Between two frequencies whose warped product is the square of that of the peak the gain is the
            // same.
            const double below = std::atan(Warped(hertz, RATE) / 1.5) * RATE / std::numbers::pi;
            const double above = std::atan(Warped(hertz, RATE) * 1.5) * RATE / std::numbers::pi;
            CHECK(at(Peak, 1, below) == doctest::Approx(at(Peak, 1, above)));
            for (const std::int32_t slope : {1, 2}) {
                CHECK(at(LowShelf, slope, hertz) == doctest::Approx(gain / 2));
                CHECK(at(HighShelf, slope, hertz) == doctest::Approx(gain / 2));
                CHECK(at(LowShelf, slope, 0.001) == doctest::Approx(gain));
                CHECK(at(HighShelf, slope, 23999.999) == doctest::Approx(gain));
                CHECK(at(AllPass, slope, 1000) == 0);
            }
            // A pass of the second order is at its Q at its frequency, one of the first 3 dB down.
            CHECK(at(LowPass, 2, hertz) == doctest::Approx(20 * std::log10(2.0)));
            CHECK(at(HighPass, 2, hertz) == doctest::Approx(20 * std::log10(2.0)));
            CHECK(at(HighPass, 1, hertz) == doctest::Approx(-10 * std::log10(2.0)));
        }
    }
}

TEST_CASE("a way is delayed, inverted and trimmed, and two of Linkwitz and Riley sum up flat") {
    const FrequencyGrid grid(64, RATE);
    const auto low = ResponseOf({{{0, 0}, {17, 1000}}, 0, 0, {}}, grid);
    const auto high = ResponseOf({{{17, 1000}, {0, 0}}, 0, 0, {}}, grid);
    const auto changed = ResponseOf({{{17, 1000}, {0, 0}}, -6, 1, {0, 2, 0}}, grid);
    const auto bypassed = ResponseOf({{{17, 1000}, {0, 0}}, 0, 0, {1, 2, 0}}, grid);
    REQUIRE((low && high && changed && bypassed));
    CHECK(*bypassed == *high);
    for (std::size_t i = 0; i < 64; ++i) {
        CHECK(std::abs((*low)[i] + (*high)[i]) == doctest::Approx(1));
        const double turn = -2 * std::numbers::pi * grid.Hertz(static_cast<int>(i)) * 0.002;
        const std::complex<double> expected = -(*high)[i] * std::polar(std::pow(10, -0.3), turn);
        CHECK(std::abs((*changed)[i] - expected) < 1e-9);
    }
    const Row<double, DelaySetting, double> delays[] = {
        {{{0, 3, 0}, RATE}, 0.003}, {{{0, 96, 1}, RATE}, 0.002}, {{{0, 1, 6}, RATE}, 1e-6},
        {{{0, 1, 7}, RATE}, 1},     {{{1, 1, 7}, RATE}, 0},      {{{0, 1, 8}, RATE}, 0},
        {{{0, 0, 4}, RATE}, 0},
    };
    for (const auto& row : delays) {
        CHECK(std::apply(DelaySeconds, row.arguments) == doctest::Approx(row.result));
    }
    CHECK(DelaySeconds({0, 1, 4}, RATE) == doctest::Approx(100 * DelaySeconds({0, 1, 5}, RATE)));
    CHECK(DelaySeconds({0, 1, 2}, RATE) == doctest::Approx(12 * DelaySeconds({0, 1, 3}, RATE)));
}

TEST_CASE("a filter that cannot be is none, and nothing is computed beyond half the rate") {
    const EqBand odd[] = {
        {0, Peak, 24000, 6, 1, 1}, {0, Peak, 0, 6, 1, 1},           {0, Peak, notANumber, 6, 1, 1},
        {0, Peak, 1000, 6, 0, 1},  {0, Peak, 1000, infinity, 1, 1}, {0, 6, 1000, 6, 1, 1},
        {0, Peak, 1000, 6, 1, 3},
    };
    for (const EqBand& band : odd) {
        CAPTURE(&band - odd);
        CHECK(!Filter::OfBand(band, RATE));
    }
    CHECK(Filter::OfBand({0, Peak, 1000, largest, 1e-30F, 1}, RATE));
    CHECK(!Filter::OfCrossover({18, 1000}, true, RATE));
    CHECK(!Filter::OfCrossover({-1, 1000}, true, RATE));
    CHECK(!Filter::OfCrossover({1, 24000}, false, RATE));
    CHECK(Filter::OfCrossover({0, notANumber}, false, RATE)); // off

    const FrequencyGrid slow(100, 16000);
    CHECK(slow.Hertz(0) == doctest::Approx(20));
    CHECK(slow.Hertz(99) == doctest::Approx(20000));
    for (int i = 0; i < slow.Count(); ++i) {
        CHECK(std::isnan(slow.Warped(i)) == (slow.Hertz(i) >= 8000));
    }
    for (const double power :
         {1e-300, 1e-7, 0.3, 0.70710678, 0.99999, 1.0, 1.41421357, 1.5, 2.0, 3e9, 1e308}) {
        CHECK(DecibelsOfPower(power) == doctest::Approx(10 * std::log10(power)).epsilon(1e-9));
    }
    CHECK(DecibelsOfPower(0) == -static_cast<double>(infinity));
    CHECK(std::isnan(DecibelsOfPower(-1)));
    CHECK(std::isnan(DecibelsOfPower(notANumber)));
    for (const double place : {0.0, 0.3, 1.0}) {
        CHECK(PlaceOfFrequency(FrequencyAt(place)) == doctest::Approx(place));
    }
    CHECK(FrequencyAt(notANumber) == LOWEST_FREQUENCY);
    CHECK(FrequencyAt(7) == doctest::Approx(HIGHEST_FREQUENCY));
    CHECK(PlaceOfFrequency(notANumber) == 0);
}
