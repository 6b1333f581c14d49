#include "logic/controls/DynamicsCurve.h"
#include "logic/devices/SimulatedBlocks.h"
#include "logic/text/NamePattern.h"
#include "tests/native/Tables.h"

using namespace logic;
using enum DynamicsMode;

TEST_CASE("dynamics change levels by their closed forms") {
    struct Level {
        DynamicsCurve curve;
        double input, output;
    };
    const Level levels[] = {
        {{Compressor, -20, 4, 0, 0}, -40, -40},
        {{Compressor, -20, 4, 0, 0}, -20, -20},
        {{Compressor, -20, 4, 0, 0}, 0, -15},
        {{Compressor, -20, 4, 0, 6}, 0, -9},
        {{Compressor, -20, 1, 12, 0}, 0, 0},
        // A knee of 12: it begins 6 below, bends by slope * into^2 / 24, and ends on the straight line.
        {{Compressor, -20, 4, 12, 0}, -26, -26},
        {{Compressor, -20, 4, 12, 0}, -20, -20 - 0.75 * 36 / 24},
        {{Compressor, -20, 4, 12, 0}, -17, -17 - 0.75 * 81 / 24},
        {{Compressor, -20, 4, 12, 0}, -14, -14 - 0.75 * 6},
        {{Limiter, -6, 1, 0, 0}, 12, -6},
        {{Limiter, -6, 50, 8, 0}, -6, -6 - 1.0 * 16 / 16},
        {{Limiter, -6, 1, 0, 3}, -10, -7},
        {{Gate, -50, 1, 12, 0}, -50, -50},
        {{Gate, -50, 1, 12, 0}, -50.1, -80},
        {{Gate, -50, 1, 0, 9}, -60, -80},
        {{Gate, -50, 1, 0, 9}, -40, -31},
        {{Expander, -40, 2, 0, 0}, -50, -60},
        {{Expander, -40, 2, 0, 0}, -30, -30},
        {{Expander, -40, 3, 0, 0}, -70, -80}, // silence is the end
        {{Expander, -40, 2, 10, 0}, -40, -40 - 1.0 * 25 / 20},
        {{Expander, -40, 2, 10, 0}, -45, -50},
        {{Expander, -40, 2, 10, 0}, -35, -35},
        {{Compressor, -20, 4, 0, 0}, -90, -90},
        {{Expander, -40, 2, 0, 0}, -90, -90},
        {{Gate, -40, 2, 0, 0}, infinity, -80},
        {{Expander, -40, 2, 0, 6}, notANumber, -80}};
    for (const Level& level : levels) {
        CAPTURE(DYNAMICS_MODES[static_cast<std::size_t>(level.curve.mode)]);
        CAPTURE(level.input);
        CHECK(OutputLevel(level.curve, level.input) == doctest::Approx(level.output));
    }
    CHECK(IsSound(DynamicsCurve{}));
    for (const DynamicsCurve& bad :
         {DynamicsCurve{Gate, notANumber}, DynamicsCurve{Gate, 0, infinity}, DynamicsCurve{Gate, 0, 0.5F},
          DynamicsCurve{Gate, 0, 1, -1.0F}, DynamicsCurve{Gate, 0, 1, 0, notANumber}}) {
        CHECK_FALSE(IsSound(bad));
    }
}

TEST_CASE("curves never jump and never rise where more comes in") {
    std::mt19937 random(1);
    for (int round = 0; round < 100; ++round) {
        const DynamicsCurve curve{
            static_cast<DynamicsMode>(Any(random, 0, 3)), static_cast<float>(Any(random, -80, 0)),
            static_cast<float>(Any(random, 10, 1000)) / 10, static_cast<float>(Any(random, 0, 24)),
            static_cast<float>(Any(random, -24, 24))};
        double before = OutputLevel(curve, -80);
        for (double input = -80; input <= 0; input += 0.02) {
            const double output = OutputLevel(curve, input);
            REQUIRE(output >= before - 1e-9);
            if (curve.mode != Gate) {
                REQUIRE(output - before < 0.02 * std::max(1.0F, curve.ratio) + 1e-6);
            }
            before = output;
        }
    }
}

TEST_CASE("a curve is held by its threshold and its ratio") {
    for (const DynamicsMode mode : {Compressor, Expander}) {
        for (const float ratio : {1.0F, 1.5F, 4.0F, 20.0F}) {
            for (const float gain : {0.0F, -3.0F}) {
                CAPTURE(ratio);
                const DynamicsCurve curve{mode, -30, ratio, 0, gain};
                const CurvePoint place = RatioHandle(curve).value();
                CHECK(OutputLevel(curve, place.input) == doctest::Approx(place.output));
                CHECK(RatioAt(curve, place) == doctest::Approx(ratio));
                CHECK(ThresholdAt(ThresholdHandle(curve)) == -30.0F);
            }
        }
    }
    CHECK(RatioHandle({Compressor, 0, 4}) == std::nullopt);
    CHECK(RatioHandle({Expander, -80, 4}) == std::nullopt);
    CHECK(RatioHandle({Limiter, -30, 4}) == std::nullopt);
    CHECK(RatioHandle({Gate, -30, 4}) == std::nullopt);
    CHECK(RatioAt({Compressor, -20, 4}, {-10, -40}) == HIGHEST_RATIO);
    CHECK(RatioAt({Compressor, -20, 4}, {-10, 30}) == LOWEST_RATIO);
    CHECK(ThresholdAt({-12.34, 0}) == doctest::Approx(-12.3F));
    CHECK(ThresholdAt({7, 0}) == 0.0F);
    const Row<float, float, int, bool> steps[] = {{{4.0F, 1, false}, 4.4F},     {{4.0F, -1, false}, 3.64F},
                                                  {{4.0F, 1, true}, 4.04F},     {{1.0F, 1, true}, 1.01F},
                                                  {{1.2F, -1, true}, 1.19F},    {{1.0F, -1, false}, 1.0F},
                                                  {{100.0F, 5, false}, 100.0F}, {{4.0F, 0, true}, 4.0F}};
    for (const auto& row : steps) {
        CHECK(std::apply(StepRatio, row.arguments) == doctest::Approx(row.result));
    }
}

TEST_CASE("patterns stand for many names") {
    const Row<std::string, const char*, int, int> rows[] = {
        {{"route%i_%o", 3, 12}, "route3_12"},
        {{"%02i/%03o", 3, 12}, "03/012"},
        {{"%02i%02i", 300, 1}, "300300"},
        {{"%n*a%%i%d%0i%00i%10i%", 1, 2}, "%n*a%1%d%0i%00i%10i%"},
        {{"%0", 1, 2}, "%0"},
        {{"%09o", 1, 2}, "000000002"}};
    CheckRows(ExpandPattern, rows);
}

TEST_CASE("dynamics and matrices are declared whole or not at all") {
    const Row<DynamicsMode, const char*, const char*> modes[] = {{{"gate1", "in1"}, Gate},
                                                                 {{"x", " in1 , expander "}, Expander},
                                                                 {{"gate1", "in1,limiter"}, Limiter},
                                                                 {{"comp", "in1"}, Compressor}};
    CheckRows([](const char* name, const char* text) { return ParseDynamics(name, text).value().mode; },
              modes);
    CHECK(ParseDynamics("x", " AMP2*in1 ").value().source == "AMP2*in1");
    CheckRefused([](const std::string& text) { return ParseDynamics("gate1", text); }, "", " ,gate", "in1,",
                 "in1,Gate", "in1,gate,");

    const Matrix matrix = ParseMatrix("r%i_%02o", " 2 ,3, in%i , AMP2*out%o").value();
    CHECK(matrix.crosspoints ==
          std::vector<std::string>{"r1_01", "r2_01", "r1_02", "r2_02", "r1_03", "r2_03"});
    CHECK(matrix.InputNames() == std::vector<std::string>{"in1", "in2"});
    CHECK(matrix.OutputNames().back() == "AMP2*out3");
    CheckTaken([](const std::string& text) { return ParseMatrix("r", text); }, "1,1,in,out");
    CheckTaken([](const std::string& text) { return ParseMatrix("r%i.%o", text); }, "64,64,in%i,out%o");
    CheckRefused([](const std::string& text) { return ParseMatrix("r%i.%o", text); }, "", "8,8,in%i",
                 "8,8,in%i,out%o,", "0,8,in%i,out%o", "65,8,in%i,out%o", "8,65,in%i,out%o", "8,8,in,out%o",
                 "8,8,in%i,out", "8,8,in%i,", "8,x,in%i,out%o");
    CheckRefused([](const std::string& pattern) { return ParseMatrix(pattern, "12,12,in%i,out%o"); }, "",
                 "r%i", "r%o", "r%i%o"); // of the last one 1,11 and 11,1 are the same
    CHECK(PowerSum({}) == std::nullopt);
    const float both[] = {-20, -20, -80};
    CHECK(PowerSum(both).value() == doctest::Approx(-16.9897F));
    CHECK(ReductionStep(Compressor, 0, -10, 100, 100, 1) == doctest::Approx(-6.3212F));
    CHECK(ReductionStep(Compressor, -10, 0, 100, 1, 100) == doctest::Approx(-3.6788F));
    CHECK(ReductionStep(Gate, -10, 0, 100, 100, 1) == doctest::Approx(-3.6788F));
}

TEST_CASE("filters change the level of music by what they leave of it") {
    const auto gain = [](const EqBand& band) {
        const Filter filter[] = {Filter::OfBand(band, SIMULATED_RATE).value()};
        return doctest::Approx(GainOfMusic(filter)).epsilon(0.05);
    };
    CHECK(GainOfMusic({}) == 0);
    CHECK(0.0 == gain({0, Peak, 1000, 0, 1, 2}));
    // Half of the octaves are gone: 3 dB. What a shelf leaves alone and what it raises by 12 dB, in equal
    // parts.
    const float middle = 632.456F;
    CHECK(-3.01 == gain({0, HighPass, middle, 0, 0.707F, 2}));
    CHECK(10 * std::log10((1 + std::pow(10, 1.2)) / 2) == gain({0, LowShelf, middle, 12, 1, 2}));
    const Filter none[] = {Filter::OfBand({0, HighPass, 20000, 0, 0.7F, 2}, SIMULATED_RATE).value(),
                           Filter::OfBand({0, LowPass, 20, 0, 0.7F, 2}, SIMULATED_RATE).value()};
    CHECK(GainOfMusic(none) < -40);
}
