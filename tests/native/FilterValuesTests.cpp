#include "logic/FilterValues.h"
#include "tests/native/Tables.h"

using namespace logic;

TEST_CASE("a frequency goes along a grid of 575 steps from 20 Hz to 20 kHz") {
    CHECK(StepFrequency(20.0F, 1) == doctest::Approx(20.2417).epsilon(1e-5));
    CHECK(StepFrequency(1000.0F, 1) == doctest::Approx(1016.52).epsilon(1e-5)); // from step 326
    CHECK(StepFrequency(1000.0F, 0) == doctest::Approx(1004.38).epsilon(1e-5));
    const Row<float, float, int> ends[] = {
        {{20.0F, 575}, 20000.0F},  {{20000.0F, -575}, 20.0F},      {{20.0F, -1}, 20.0F},
        {{20000.0F, 1}, 20000.0F}, {{20000.0F, 100000}, 20000.0F}, {{5.0F, 1}, 20.0F},
        {{1e30F, -1}, 20000.0F}, // outside the range
    };
    CheckRows(StepFrequency, ends);
    for (const float odd : {0.0F, -5.0F, notANumber, infinity, -infinity})
        CHECK(StepFrequency(odd, 1) == StepFrequency(20.0F, 1));

    float up = 20.0F;
    for (int step = 1; step <= 575; ++step) {
        const float next = StepFrequency(up, 1);
        CHECK(next > up);
        CHECK(StepFrequency(next, -1) == up); // the way back is the same
        up = next;
    }
    CHECK(up == 20000.0F);
}

TEST_CASE("how values are shown") {
    const Row<std::string, float> frequencies[] = {
        {20.2417F, "20.2 Hz"},
        {99.9F, "99.9 Hz"},
        {100.0F, "100 Hz"},
        {20000.0F, "20000 Hz"},
    };
    CheckRows(FrequencyText, frequencies);
    CHECK(TypedBandFrequencyText(20000.0F) == "20000.0 Hz");
    CHECK(TypedCrossoverFrequencyText(20.0F) == "20 Hz");
    CHECK(TypedCrossoverFrequencyText(62.5F) == "62.5 Hz");
    const Row<std::string, float> gains[] = {{0.0F, "+0.0 dB"}, {-18.0F, "-18.0 dB"}, {-29.96F, "-30.0 dB"}};
    CheckRows(GainText, gains);
    CHECK(QText(0.7071F, false) == "0.7");
    CHECK(QText(1.0F, true) == "1.39 Oct");
    for (const float odd : {notANumber, infinity, -infinity}) {
        CHECK(FrequencyText(odd) == (odd > 0 ? "0 Hz" : "0.0 Hz"));
        CHECK(GainText(odd) == "+0.0 dB");
        CHECK(QText(odd, false) == "0.0");
        CHECK(QText(odd, true) == "0.00 Oct");
    }
}

TEST_CASE("Q and bandwidth are each other's inverse") {
    CHECK(QToBandwidth(1.4142136F) == doctest::Approx(1.0).epsilon(1e-3));
    CHECK(QToBandwidth(0.1F) == doctest::Approx(6.6724).epsilon(1e-4));
    CHECK(QToBandwidth(100.0F) == doctest::Approx(0.0144269).epsilon(1e-4));
    CHECK(BandwidthToQ(2.0F) == doctest::Approx(0.6667).epsilon(1e-3));
    for (const float odd : {0.0F, -1.0F, notANumber, infinity}) {
        CHECK(QToBandwidth(odd) == 0.0F);
        CHECK(BandwidthToQ(odd) == 0.0F);
    }
    std::mt19937 random(3);
    std::uniform_real_distribution<float> exponent(-10.0F, 10.0F);
    for (int round = 0; round < 2000; ++round) {
        const float q = std::pow(10.0F, exponent(random));
        const float octaves = QToBandwidth(q);
        CHECK(std::isfinite(octaves));
        CHECK(std::isfinite(BandwidthToQ(q)));
        if (q > 0.001F && q < 1000.0F)
            CHECK(BandwidthToQ(octaves) == doctest::Approx(q).epsilon(1e-4));
    }
}
