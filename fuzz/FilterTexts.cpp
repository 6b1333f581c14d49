// Texts of equaliser bands, crossovers and delays, as they stand in files and are typed.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "fuzz/Fuzzer.h"
#include "logic/controls/Crossover.h"
#include "logic/controls/EqBand.h"
#include "logic/controls/FilterValues.h"

using namespace logic;

namespace {

void CheckBand(const EqBand& band) {
    Require(IsKnown(band));
    Require(band.frequency >= 0 && band.frequency <= HIGHEST_FREQUENCY);
    const auto again = ReadEqBand(EqBandText(band), {});
    Require(again && again->type == band.type && again->slope == band.slope);
    const float stepped = StepFrequency(band.frequency, static_cast<std::int8_t>(band.bypass));
    Require(stepped >= LOWEST_FREQUENCY && stepped <= HIGHEST_FREQUENCY);
    Require(!GainText(band.gain).empty());
}

void CheckCrossover(const Crossover& crossover) {
    Require(IsKnown(crossover));
    Require(crossover.filters.highPass.frequency >= LOWEST_FREQUENCY &&
            crossover.filters.lowPass.frequency <= HIGHEST_FREQUENCY);
    Require(crossover.gain >= LOWEST_TRIM && crossover.gain <= HIGHEST_TRIM && crossover.delay.amount >= 0);
    const auto again = ReadCrossover(CrossoverText(crossover), {});
    Require(again && again->filters.lowPass.type == crossover.filters.lowPass.type &&
            again->polarity == crossover.polarity && again->delay.unit == crossover.delay.unit);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // A copy of exactly this size, so that reading past the end is seen.
    const std::string text(data, data + size);
    if (const auto band = ReadEqBand(text, {})) {
        CheckBand(*band);
    }
    const Crossover start{{{0, 20.0F}, {0, 20.0F}}, 0.0F, 0, {}};
    if (const auto crossover = ReadCrossover(text, start)) {
        CheckCrossover(*crossover);
    }
    if (const auto delay = ReadDelay(text, {})) {
        Require(IsKnown(*delay) && delay->amount >= 0);
    }
    DelaySetting typed;
    Require(ReadDelayAmount(text, typed) <= 2 && IsKnown(typed));
    for (const auto field : {CrossoverField::HighPassFrequency, CrossoverField::LowPassFrequency,
                             CrossoverField::Gain, CrossoverField::Delay}) {
        Crossover entered = start;
        TypeField(entered, field, &text);
        StepField(entered, field, static_cast<std::int8_t>(size));
        CheckCrossover(entered);
    }
    Require(OfferedFilterTypes(text, size % 2 == 0) >= 4);
    // Records come from devices as any bytes.
    Crossover raw;
    std::memcpy(&raw, text.data(), std::min(size, sizeof raw));
    Require(!CrossoverText(raw).empty() && !GainText(raw.gain).empty());
    return 0;
}
