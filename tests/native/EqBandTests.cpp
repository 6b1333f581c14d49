#include "logic/EqBand.h"
#include "logic/FilterValues.h"
#include "tests/native/Tables.h"

using namespace logic;

TEST_CASE("a band as text") {
    const EqBand before{0, LowShelf, 500.0F, -6.0F, 2.0F, 1};
    const struct {
        const char* text;
        EqBand band;
    } rows[] = {
        {"1,Hipass,12 dB,1000,0,0.7", {1, HighPass, 1000.0F, 0.0F, 0.7F, 2}},
        {"0,PEQ,6 dB,62.5 Hz,+3.5 dB,1.4", {0, Peak, 62.5F, 3.5F, 1.4F, 1}},
        {"-7", {1, LowShelf, 500.0F, -6.0F, 2.0F, 1}},
        {"0,ALLPASS", {0, AllPass, 500.0F, -6.0F, 2.0F, 1}},
        {"0,PEQ,18", {0, Peak, 500.0F, -6.0F, 2.0F, 2}}, // slopes end at 12
        {"0,PEQ,3db", {0, Peak, 500.0F, -6.0F, 2.0F, 0}},
        {"0,PEQ,-2147483648", {0, Peak, 500.0F, -6.0F, 2.0F, 0}},
        {"0,PEQ,6,5", {0, Peak, 5.0F, -6.0F, 2.0F, 1}}, // not limited to 20 here
        {"0,PEQ,6,-5", {0, Peak, 0.0F, -6.0F, 2.0F, 1}},
        {"0,PEQ,6,99999", {0, Peak, 20000.0F, -6.0F, 2.0F, 1}},
        {"1,,,PEQ", {1, Peak, 500.0F, -6.0F, 2.0F, 1}}, // empty fields are none
    };
    for (const auto& row : rows) {
        CAPTURE(row.text);
        CHECK(ReadEqBand(row.text, before).value_or(before) == row.band);
    }
    CheckRefused([&](const auto& text) { return ReadEqBand(text, before); }, "", "x", ",,,", "0,Hi pass",
                 "0x", "1.5", "0,PEQ,6 dB/Oct", "0,PEQ,6,80 kHz", "0,PEQ,6,80,nan", "0,PEQ,6,80,3 dBu",
                 "0,PEQ,6,80,3,1e99", "0,PEQ,6,80,3,1,1");
    CHECK(EqBandText(rows[0].band) == "1,Hipass,12 dB,1000 Hz,0 dB,0.7");
    CHECK(EqBandText({}) == "0,PEQ,6 dB,0 Hz,0 dB,0");
    CHECK(EqBandText({0, 77, 20.0F, 0.0F, 1.0F, 3}) == "0,,18 dB,20 Hz,0 dB,1");
    for (const auto& row : rows)
        CHECK(ReadEqBand(EqBandText(row.band), {}) == row.band);
}

TEST_CASE("what can be shown and set") {
    CHECK(IsKnown({}));
    CHECK(IsSound({0, 99, 20.0F, 0.0F, 1.0F, 99}));
    for (const auto& [type, slope] : {std::pair(6, 1), {-1, 1}, {0, 3}, {0, -1}})
        CHECK_FALSE(IsKnown({0, type, 20.0F, 0.0F, 1.0F, slope}));
    for (float EqBand::*member : {&EqBand::frequency, &EqBand::gain, &EqBand::q}) {
        for (const float odd : {notANumber, infinity}) {
            EqBand band{0, 0, 20.0F, 0.0F, 1.0F, 1};
            band.*member = odd;
            CHECK_FALSE(IsSound(band));
        }
    }
}

TEST_CASE("devices offer different types") {
    const Row<int, const char*, bool> rows[] = {
        {{"DSP", true}, 5},     {{"DSP_ZQBCON", false}, 6}, {{"ZQBCON", true}, 4},
        {{"ZQBCON", false}, 5}, {{"ZQBCON_1", true}, 4},    {{"zqacon_left_2", false}, 5},
        {{"ZQBCONX", true}, 5}, {{"", false}, 6},
    };
    CheckRows(OfferedFilterTypes, rows);
}

TEST_CASE("what the types have") {
    const std::string expected[] = {"gain q", "gain slope", "gain slope", "slope", "slope", "slope"};
    for (std::int32_t type = 0; type < filterTypeCount; ++type) {
        std::string found = HasGain(type) ? "gain" : "";
        found += HasQ(type, 1) ? " q" : "";
        found += HasSlope(type) ? (found.empty() ? "slope" : " slope") : "";
        CHECK(found == expected[type]);
        CHECK(HasQ(type, 2) == (type == Peak || type >= HighPass));
    }
}

TEST_CASE("Q is limited by the type, bandwidth only for the all-pass") {
    const float octavesOfFive = QToBandwidth(5.0F);
    CHECK(TypedQ(5.0F, Peak, false) == 5.0F);
    CHECK(TypedQ(500.0F, Peak, false) == 100.0F);
    CHECK(TypedQ(0.0F, LowPass, false) == 0.1F);
    for (const std::int32_t type : {HighPass, LowPass, AllPass})
        CHECK(TypedQ(5.0F, type, false) == 2.0F);
    CHECK(TypedQ(octavesOfFive, HighPass, true) == doctest::Approx(5.0));
    CHECK(TypedQ(octavesOfFive, AllPass, true) == doctest::Approx(2.0));
    CHECK(TypedQ(0.0F, HighPass, true) == doctest::Approx(100.0));
    CHECK(TypedQ(50.0F, Peak, true) == doctest::Approx(0.1));

    CHECK(StepQ(0.7F, 1, Peak, false) == doctest::Approx(0.8));
    CHECK(StepQ(0.1F, -1, Peak, false) == 0.1F);
    CHECK(StepQ(2.0F, 3, HighPass, false) == 2.0F);
    CHECK(StepQ(1.0F, 1, Peak, true) == doctest::Approx(0.92).epsilon(0.01)); // wider by 0.1 octaves
    const float narrow = TypedQ(0.0F, Peak, true);
    CHECK(StepQ(narrow, -1, Peak, true) == narrow); // no rounding at the end of the range
    CHECK(StepGain(11.8F, 1, lowestEqGain, highestEqGain) == 12.0F);
    CHECK(StepGain(-18.0F, -1, lowestEqGain, highestEqGain) == -18.0F);
    CHECK(StepGain(0.0F, -2, lowestEqGain, highestEqGain) == -1.0F);

    EqBand band{0, LowPass, 100.0F, 0.0F, 3.0F, 1};
    CHECK_FALSE(LimitPassQ(band));
    band.slope = 2;
    CHECK(LimitPassQ(band));
    CHECK(band.q == 2.0F);
    band = {0, AllPass, 100.0F, 0.0F, 3.0F, 2};
    CHECK_FALSE(LimitPassQ(band));
}

TEST_CASE("what is typed into a band and stepped in it stays within its range") {
    EqBand band{0, Peak, 5.0F, 20.0F, 0.7F, 1};
    TypeField(band, EqField::Gain, {}, false); // what is held is limited as well
    TypeField(band, EqField::Frequency, {}, false);
    TypeField(band, EqField::Q, {}, false);
    CHECK(band == EqBand{0, Peak, 20.0F, 12.0F, 0.7F, 1});
    CHECK_FALSE(StepField(band, EqField::Gain, 1, false));
    CHECK_FALSE(StepField(band, EqField::Frequency, -1, false));
    CHECK(StepField(band, EqField::Gain, -1, false));
    TypeField(band, EqField::Frequency, 440.0F, false);
    CHECK(band == EqBand{0, Peak, 440.0F, 11.5F, 0.7F, 1});
    CHECK(FieldText(band, EqField::Frequency, false) == "440 Hz");
    CHECK(TypedFieldText(band, EqField::Frequency, false) == "440.0 Hz");
}
