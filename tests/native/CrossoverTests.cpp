#include "logic/Crossover.h"
#include "tests/native/Tables.h"

using namespace logic;

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
        {",,Linkw 24,2 hz", "LINK24,80 Hz,LINK24,20 Hz,-3 dB,inverted,0,2.5 ms"},
        {",,,99999", "LINK24,80 Hz,OFF,20000 Hz,-3 dB,inverted,0,2.5 ms"},
        {",,,,10,Normal,-1,1 Samples", "LINK24,80 Hz,OFF,20000 Hz,6 dB,normal,1,1 samples"},
        {",,,,-99", "LINK24,80 Hz,OFF,20000 Hz,-30 dB,inverted,0,2.5 ms"},
        {",,,,,,,-4 ft", "LINK24,80 Hz,OFF,20000 Hz,-3 dB,inverted,0,0 ft"},
        {",,,,,,,7", "LINK24,80 Hz,OFF,20000 Hz,-3 dB,inverted,0,7 ms"},
    };
    CheckRows(result, rows);
    CheckRefused(read, "", "x", ",,,,,,,", "bess12,80 kHz", "bess12,,,,3 dBu", ",,,,,upside", ",,,,,,1x",
                 ",,,,,,,7 parsecs", ",,,,,,,7 ms late", ",,,,3,normal,0,1 ms,4");
    for (std::int32_t type = 0; type < crossoverTypeCount; ++type) {
        const auto index = static_cast<std::size_t>(type);
        for (const auto name : {crossoverKeys[index], crossoverNames[index]})
            CHECK(ReadFilters(std::string(name), {})->highPass.type == type);
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
        {"-2", {1, -2.0F, 4}},        {"12in", {2, 12.0F, 3}},
    };
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
