// Equaliser bands and crossovers: their values, texts and steps.
#include "logic/controls/Crossover.h"
#include "logic/controls/EqBand.h"
#include "logic/controls/FilterValues.h"
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
    for (const float odd : {0.0F, -5.0F, notANumber, infinity, -infinity}) {
        CHECK(StepFrequency(odd, 1) == StepFrequency(20.0F, 1));
    }

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
        {20.2417F, "20.2 Hz"}, {99.9F, "99.9 Hz"}, {100.0F, "100 Hz"}, {20000.0F, "20000 Hz"}};
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
    for (const float q : {0.002F, 0.1F, 0.7F, 5.0F, 900.0F}) {
        CHECK(BandwidthToQ(QToBandwidth(q)) == doctest::Approx(q).epsilon(1e-4));
    }
    for (const float q : {1e-10F, 1e10F}) {
        CHECK(std::isfinite(QToBandwidth(q)));
        CHECK(std::isfinite(BandwidthToQ(q)));
    }
}

TEST_CASE("a band as text") {
    const EqBand before{0, LowShelf, 500.0F, -6.0F, 2.0F, 1};
    const auto read = [&before](const std::string& text) { return ReadEqBand(text, before); };
    const Row<std::optional<EqBand>, const char*> rows[] = {
        {"1,Hipass,12 dB,1000,0,0.7", {{1, HighPass, 1000.0F, 0.0F, 0.7F, 2}}},
        {"0,PEQ,6 dB,62.5 Hz,+3.5 dB,1.4", {{0, Peak, 62.5F, 3.5F, 1.4F, 1}}},
        {"-7", {{1, LowShelf, 500.0F, -6.0F, 2.0F, 1}}},
        {"0,ALLPASS", {{0, AllPass, 500.0F, -6.0F, 2.0F, 1}}},
        {"0,PEQ,18", {{0, Peak, 500.0F, -6.0F, 2.0F, 2}}}, // slopes end at 12
        {"0,PEQ,3db", {{0, Peak, 500.0F, -6.0F, 2.0F, 0}}},
        {"0,PEQ,6,5", {{0, Peak, 5.0F, -6.0F, 2.0F, 1}}}, // not limited to 20 here
        {"0,PEQ,6,-5", {{0, Peak, 0.0F, -6.0F, 2.0F, 1}}},
        {"0,PEQ,6,99999", {{0, Peak, 20000.0F, -6.0F, 2.0F, 1}}},
        {"1,,,PEQ", {{1, Peak, 500.0F, -6.0F, 2.0F, 1}}}, // empty fields are none
    };
    CheckRows(read, rows);
    CheckRefused(read, "", "x", ",,,", "0,Hi pass", "0x", "1.5", "0,PEQ,6 dB/Oct", "0,PEQ,6,80 kHz",
                 "0,PEQ,6,80,nan", "0,PEQ,6,80,3 dBu", "0,PEQ,6,80,3,1e99", "0,PEQ,6,80,3,1,1");
    CHECK(EqBandText(*rows[0].result) == "1,Hipass,12 dB,1000 Hz,0 dB,0.7");
    CHECK(EqBandText({}) == "0,PEQ,6 dB,0 Hz,0 dB,0");
    CHECK(EqBandText({0, 77, 20.0F, 0.0F, 1.0F, 3}) == "0,,18 dB,20 Hz,0 dB,1");
    for (const auto& row : rows) {
        CHECK(ReadEqBand(EqBandText(*row.result), {}) == row.result);
    }
}

TEST_CASE("Q is limited by the type, bandwidth only for the all-pass") {
    const float octavesOfFive = QToBandwidth(5.0F);
    const auto typed = [](float q, std::int32_t type, bool asBandwidth) {
        return doctest::Approx(TypedQ(q, type, asBandwidth));
    };
    const Row<float, float, std::int32_t, bool> limited[] = {
        {{500.0F, Peak, false}, 100.0F},         {{0.0F, LowPass, false}, 0.1F},
        {{5.0F, HighPass, false}, 2.0F},         {{5.0F, AllPass, false}, 2.0F},
        {{0.0F, HighPass, true}, 100.0F},        {{50.0F, Peak, true}, 0.1F},
        {{octavesOfFive, HighPass, true}, 5.0F}, {{octavesOfFive, AllPass, true}, 2.0F}};
    CheckRows(typed, limited);
    const auto stepped = [](float q, int steps, std::int32_t type, bool asBandwidth) {
        return doctest::Approx(StepQ(q, steps, type, asBandwidth)).epsilon(0.001);
    };
    const Row<float, float, int, std::int32_t, bool> steps[] = {
        {{0.7F, 1, Peak, false}, 0.8F},
        {{0.1F, -1, Peak, false}, 0.1F},
        {{2.0F, 3, HighPass, false}, 2.0F},
        {{1.0F, 1, Peak, true}, 0.9266F}, // wider by 0.1 octaves
    };
    CheckRows(stepped, steps);
    const float narrow = TypedQ(0.0F, Peak, true);
    CHECK(StepQ(narrow, -1, Peak, true) == narrow); // no rounding at the end of the range

    EqBand band{0, LowPass, 100.0F, 0.0F, 3.0F, 1};
    CHECK_FALSE(LimitPassQ(band));
    band.slope = 2;
    CHECK(LimitPassQ(band));
    CHECK(band.q == 2.0F);
    band = {0, AllPass, 100.0F, 0.0F, 3.0F, 2};
    CHECK_FALSE(LimitPassQ(band));
}

namespace {

const Crossover channel{{{17, 80.0F}, {0, 20000.0F}}, -3.0F, 1, {0, 2.5F, 0}};

} // namespace

TEST_CASE("a channel as text") {
    CHECK(CrossoverText(channel) == "LINK24,80 Hz,OFF,20000 Hz,-3 dB,inverted,0,2.5 ms");
    CHECK(FiltersText({{99, 80.0F}, {-1, 20.0F}}) == ",80 Hz,,20 Hz");
    CHECK(DelayAmountText({0, 0.5F, 99}) == "0.5 ");
    CHECK(ReadCrossover(CrossoverText(channel), {}) == channel);
    const auto read = [](const std::string& text) { return ReadCrossover(text, channel); };
    const auto result = [&read](const char* text) { return CrossoverText(read(text).value()); };
    const Row<std::string, const char*> rows[] = {
        {"bess12", "BESS12,80 Hz,OFF,20000 Hz,-3 dB,inverted,0,2.5 ms"},
        {"12dB/0.7,5", "S12Q07,20 Hz,OFF,20000 Hz,-3 dB,inverted,0,2.5 ms"},
        {",,,,10,Normal,-1,1 Samples", "LINK24,80 Hz,OFF,20000 Hz,6 dB,normal,1,1 samples"},
        {",,,,-99", "LINK24,80 Hz,OFF,20000 Hz,-30 dB,inverted,0,2.5 ms"},
        {",,,,,,,-4 ft", "LINK24,80 Hz,OFF,20000 Hz,-3 dB,inverted,0,0 ft"},
        {",,,,,,,7", "LINK24,80 Hz,OFF,20000 Hz,-3 dB,inverted,0,7 ms"}};
    CheckRows(result, rows);
    CheckRefused(read, "", "x", ",,,,,,,", "bess12,80 kHz", "bess12,,,,3 dBu", ",,,,,upside", ",,,,,,1x",
                 ",,,,,,,7 parsecs", ",,,,,,,7 ms late", ",,,,3,normal,0,1 ms,4");
    for (std::int32_t type = 0; type < CROSSOVER_TYPE_COUNT; ++type) {
        const auto index = static_cast<std::size_t>(type);
        for (const auto name : {CROSSOVER_KEYS[index], CROSSOVER_NAMES[index]}) {
            CHECK(ReadFilters(std::string(name), {})->highPass.type == type);
        }
    }
}

TEST_CASE("a typed delay keeps its unit unless another one stands behind it") {
    using Read = std::tuple<int, float, int>; // items read, amount, unit
    const auto read = [](const char* text) {
        DelaySetting delay{1, 9.0F, 4};
        const int items = ReadDelayAmount(text, delay);
        CHECK(delay.bypass == 1);
        return Read(items, delay.amount, delay.unit);
    };
    const Row<Read, const char*> rows[] = {
        {"3", {1, 3.0F, 4}},          {" 1.5  samples ", {2, 1.5F, 1}}, {"2 US", {2, 2.0F, 6}},
        {"2 furlongs", {1, 2.0F, 4}}, {"2 ms later", {2, 2.0F, 0}},     {"ms", {0, 9.0F, 4}},
        {"", {0, 9.0F, 4}},           {"nan ms", {0, 9.0F, 4}},         {"1e99 s", {0, 9.0F, 4}},
        {"-2", {1, -2.0F, 4}},        {"12in", {2, 12.0F, 3}}};
    CheckRows(read, rows);
}

TEST_CASE("what can be shown and set") {
    CHECK(IsKnown(channel));
    for (int fault = 0; fault < 8; ++fault) {
        Crossover bad = channel;
        CrossoverFilters& filters = bad.filters;
        (fault == 0 ? filters.highPass.type : fault == 1 ? filters.lowPass.type : bad.delay.bypass) = 18;
        bad.polarity = fault == 2 ? 2 : 0;
        bad.delay.unit = fault == 3 ? 8 : 7;
        filters.highPass.frequency = fault == 4 ? notANumber : 20.0F;
        filters.lowPass.frequency = fault == 5 ? -infinity : 20.0F;
        bad.gain = fault == 6 ? infinity : 0.0F;
        bad.delay.amount = fault == 7 ? notANumber : 0.0F;
        CAPTURE(fault);
        CHECK_FALSE(IsKnown(bad));
        CHECK(IsSound(bad) == (fault < 4));
    }
}
