#include "logic/Crossover.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <string>

#include <doctest/doctest.h>

using namespace logic;

namespace {

const Crossover channel{{{17, 80.0F}, {0, 20000.0F}}, -3.0F, 1, {0, 2.5F, 0}};

} // namespace

TEST_CASE("the bytes of a channel are those that devices exchange") {
    CHECK(offsetof(Crossover, gain) == 16);
    CHECK(offsetof(Crossover, polarity) == 20);
    CHECK(offsetof(Crossover, delay) == 24);
    CHECK(offsetof(DelaySetting, unit) == 8);
    CHECK(offsetof(CrossoverFilters, lowPass) + offsetof(CrossoverFilter, frequency) == 12);
}

TEST_CASE("a channel as text") {
    CHECK(CrossoverText(channel) == "LINK24,80 Hz,OFF,20000 Hz,-3 dB,inverted,0,2.5 ms");
    CHECK(FiltersText({{99, 80.0F}, {-1, 20.0F}}) == ",80 Hz,,20 Hz");
    CHECK(DelayAmountText({0, 0.5F, 99}) == "0.5 ");
    CHECK(ReadCrossover(CrossoverText(channel), {}) == channel);
    const struct {
        const char* text;
        const char* result; // read into the channel above
    } rows[] = {
        {"bess12", "BESS12,80 Hz,OFF,20000 Hz,-3 dB,inverted,0,2.5 ms"},
        {"12dB/0.7,5", "S12Q07,20 Hz,OFF,20000 Hz,-3 dB,inverted,0,2.5 ms"},
        {",,Linkw 24,2 hz", "LINK24,80 Hz,LINK24,20 Hz,-3 dB,inverted,0,2.5 ms"},
        {",,,99999", "LINK24,80 Hz,OFF,20000 Hz,-3 dB,inverted,0,2.5 ms"},
        {",,,,10,Normal,-1,1 Samples", "LINK24,80 Hz,OFF,20000 Hz,6 dB,normal,1,1 samples"},
        {",,,,-99", "LINK24,80 Hz,OFF,20000 Hz,-30 dB,inverted,0,2.5 ms"},
        {",,,,,,,-4 ft", "LINK24,80 Hz,OFF,20000 Hz,-3 dB,inverted,0,0 ft"},
        {",,,,,,,7", "LINK24,80 Hz,OFF,20000 Hz,-3 dB,inverted,0,7 ms"},
    };
    for (const auto& row : rows) {
        CAPTURE(row.text);
        CHECK(CrossoverText(ReadCrossover(row.text, channel).value_or(Crossover{})) == row.result);
    }
    for (const char* text : {"", "x", ",,,,,,,", "bess12,80 kHz", "bess12,,,,3 dBu", ",,,,,upside",
                             ",,,,,,1x", ",,,,,,,7 parsecs", ",,,,,,,7 ms late", ",,,,3,normal,0,1 ms,4"})
        CHECK_FALSE(ReadCrossover(text, channel));
    for (std::int32_t type = 0; type < crossoverTypeCount; ++type) {
        const auto index = static_cast<std::size_t>(type);
        for (const auto name : {crossoverKeys[index], crossoverNames[index]})
            CHECK(ReadFilters(std::string(name), {})->highPass.type == type);
    }
}

TEST_CASE("a typed delay keeps its unit unless another one stands behind it") {
    const struct {
        const char* text;
        int items;
        float amount;
        int unit;
    } rows[] = {
        {"3", 1, 3.0F, 4},          {" 1.5  samples ", 2, 1.5F, 1}, {"2 US", 2, 2.0F, 6},
        {"2 furlongs", 1, 2.0F, 4}, {"2 ms later", 2, 2.0F, 0},     {"ms", 0, 9.0F, 4},
        {"", 0, 9.0F, 4},           {"nan ms", 0, 9.0F, 4},         {"1e99 s", 0, 9.0F, 4},
        {"-2", 1, -2.0F, 4},        {"12in", 2, 12.0F, 3},
    };
    for (const auto& row : rows) {
        CAPTURE(row.text);
        DelaySetting delay{1, 9.0F, 4};
        CHECK(ReadDelayAmount(row.text, delay) == row.items);
        CHECK(delay == DelaySetting{1, row.amount, row.unit});
    }
}

TEST_CASE("what can be shown and set") {
    CHECK(IsKnown(channel));
    const float endless = std::numeric_limits<float>::infinity();
    for (int fault = 0; fault < 8; ++fault) {
        Crossover bad = channel;
        CrossoverFilters& filters = bad.filters;
        (fault == 0 ? filters.highPass.type : fault == 1 ? filters.lowPass.type : bad.delay.bypass) = 18;
        bad.polarity = fault == 2 ? 2 : 0;
        bad.delay.unit = fault == 3 ? 8 : 7;
        filters.highPass.frequency = fault == 4 ? std::nanf("") : 20.0F;
        filters.lowPass.frequency = fault == 5 ? -endless : 20.0F;
        bad.gain = fault == 6 ? endless : 0.0F;
        bad.delay.amount = fault == 7 ? std::nanf("") : 0.0F;
        CAPTURE(fault);
        CHECK_FALSE(IsKnown(bad));
        CHECK(IsSound(bad) == (fault < 4));
    }
}

TEST_CASE("what is typed into a channel and stepped in it touches nothing else") {
    const struct {
        CrossoverField field;
        const char* typed; // null for what is held
        int steps;
        const char* text;
        const char* all;
    } rows[] = {
        {CrossoverField::HighPassFrequency, "5", 0, "20 Hz",
         "LINK24,20 Hz,OFF,20000 Hz,-3 dB,inverted,0,2.5 ms"},
        {CrossoverField::LowPassFrequency, "1e6", 9, "20000 Hz",
         "LINK24,80 Hz,OFF,20000 Hz,-3 dB,inverted,0,2.5 ms"},
        {CrossoverField::Gain, "5.8", 1, "+6.0 dB", "LINK24,80 Hz,OFF,20000 Hz,6 dB,inverted,0,2.5 ms"},
        {CrossoverField::Gain, nullptr, -2, "-4.0 dB", "LINK24,80 Hz,OFF,20000 Hz,-4 dB,inverted,0,2.5 ms"},
        {CrossoverField::Delay, "0.5 samples", -1, "0 samples",
         "LINK24,80 Hz,OFF,20000 Hz,-3 dB,inverted,0,0 samples"},
        {CrossoverField::Delay, "late", 1, "3.5 ms", "LINK24,80 Hz,OFF,20000 Hz,-3 dB,inverted,0,3.5 ms"},
    };
    for (const auto& row : rows) {
        CAPTURE(row.all);
        Crossover all = channel;
        const std::string typed = row.typed != nullptr ? row.typed : "";
        TypeField(all, row.field, row.typed != nullptr ? &typed : nullptr);
        if (row.steps != 0)
            StepField(all, row.field, row.steps);
        CHECK(TypedFieldText(all, row.field) == row.text);
        CHECK(CrossoverText(all) == row.all);
    }
}
