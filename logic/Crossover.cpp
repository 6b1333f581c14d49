#include "logic/Crossover.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "logic/FilterValues.h"
#include "logic/Numbers.h"
#include "logic/Text.h"

namespace logic {

namespace {

constexpr std::size_t filterFields = 4;
constexpr std::size_t delayFields = 2;
constexpr std::size_t crossoverFields = filterFields + 2 + delayFields;

template <std::size_t count>
std::string Named(const std::array<std::string_view, count>& names, std::int32_t index) {
    const bool known = index >= 0 && index < static_cast<std::int32_t>(count);
    return std::string(known ? names[static_cast<std::size_t>(index)] : "");
}

bool IsIndex(std::int32_t value, std::int32_t count) {
    return value >= 0 && value < count;
}

std::vector<std::string_view> Fields(std::string_view text, std::size_t count) {
    std::vector<std::string_view> fields = SplitFields(text, ',');
    fields.resize(count);
    return fields;
}

bool TakeType(std::string_view field, std::int32_t& type) {
    auto found = IndexOfWord(crossoverKeys, field);
    if (!found)
        found = IndexOfWord(crossoverNames, field);
    type = found.value_or(type);
    return found.has_value();
}

bool TakeNumber(std::string_view field, float low, float high, float& number) {
    const auto read = ParseFloat(field);
    number = read ? Clamp(*read, low, high) : number;
    return read.has_value();
}

// fields[0] to fields[3]
bool TakeFilters(const std::string_view* fields, CrossoverFilters& filters) {
    bool anything = TakeType(fields[0], filters.highPass.type);
    anything |= TakeNumber(fields[1], lowestFrequency, highestFrequency, filters.highPass.frequency);
    anything |= TakeType(fields[2], filters.lowPass.type);
    anything |= TakeNumber(fields[3], lowestFrequency, highestFrequency, filters.lowPass.frequency);
    return anything;
}

// fields[0] and fields[1]
bool TakeDelay(const std::string_view* fields, DelaySetting& delay) {
    const auto bypass = ParseInteger(fields[0]);
    if (bypass)
        delay.bypass = *bypass != 0 ? 1 : 0;
    const bool amount = ReadDelayAmount(fields[1], delay) > 0;
    delay.amount = std::max(delay.amount, 0.0F);
    return amount || bypass;
}

bool IsFrequency(CrossoverField field) {
    return field == CrossoverField::HighPassFrequency || field == CrossoverField::LowPassFrequency;
}

// The filter of a frequency.
template <class Filters>
auto& FilterOf(Filters& filters, CrossoverField field) {
    return field == CrossoverField::HighPassFrequency ? filters.highPass : filters.lowPass;
}

} // namespace

bool IsSound(const CrossoverFilters& filters) {
    return std::isfinite(filters.highPass.frequency) && std::isfinite(filters.lowPass.frequency);
}

bool IsSound(const DelaySetting& delay) {
    return std::isfinite(delay.amount);
}

bool IsSound(const Crossover& crossover) {
    return IsSound(crossover.filters) && std::isfinite(crossover.gain) && IsSound(crossover.delay);
}

bool IsKnown(const CrossoverFilters& filters) {
    return IsSound(filters) && IsIndex(filters.highPass.type, crossoverTypeCount) &&
           IsIndex(filters.lowPass.type, crossoverTypeCount);
}

bool IsKnown(const DelaySetting& delay) {
    return IsSound(delay) && IsIndex(delay.unit, delayUnitCount);
}

bool IsKnown(const Crossover& crossover) {
    return IsSound(crossover) && IsKnown(crossover.filters) && IsIndex(crossover.polarity, 2) &&
           IsKnown(crossover.delay);
}

std::string FiltersText(const CrossoverFilters& filters) {
    return Named(crossoverKeys, filters.highPass.type) + "," + FormatFloat(filters.highPass.frequency) +
           " Hz," + Named(crossoverKeys, filters.lowPass.type) + "," +
           FormatFloat(filters.lowPass.frequency) + " Hz";
}

std::string DelayText(const DelaySetting& delay) {
    return std::to_string(delay.bypass) + "," + DelayAmountText(delay);
}

std::string DelayAmountText(const DelaySetting& delay) {
    return FormatFloat(delay.amount) + " " + Named(delayUnits, delay.unit);
}

std::string CrossoverText(const Crossover& crossover) {
    return FiltersText(crossover.filters) + "," + FormatFloat(crossover.gain) + " dB," +
           Named(polarities, crossover.polarity) + "," + DelayText(crossover.delay);
}

std::optional<CrossoverFilters> ReadFilters(std::string_view text, const CrossoverFilters& before) {
    CrossoverFilters filters = before;
    return TakeFilters(Fields(text, filterFields).data(), filters) ? std::optional(filters) : std::nullopt;
}

std::optional<DelaySetting> ReadDelay(std::string_view text, const DelaySetting& before) {
    DelaySetting delay = before;
    return TakeDelay(Fields(text, delayFields).data(), delay) ? std::optional(delay) : std::nullopt;
}

std::optional<Crossover> ReadCrossover(std::string_view text, const Crossover& before) {
    const std::vector<std::string_view> fields = Fields(text, crossoverFields);
    Crossover crossover = before;
    bool anything = TakeFilters(fields.data(), crossover.filters);
    anything |= TakeNumber(fields[filterFields], lowestTrim, highestTrim, crossover.gain);
    if (const auto polarity = IndexOfWord(polarities, fields[filterFields + 1])) {
        crossover.polarity = *polarity;
        anything = true;
    }
    anything |= TakeDelay(fields.data() + filterFields + 2, crossover.delay);
    return anything ? std::optional(crossover) : std::nullopt;
}

int ReadDelayAmount(std::string_view text, DelaySetting& delay) {
    const auto amount = TakeFloat(text);
    if (!amount)
        return 0;
    delay.amount = *amount;
    const std::string_view word = TrimBlanks(text);
    if (word.empty())
        return 1;
    const auto unit = IndexOfWord(delayUnits, word.substr(0, word.find_first_of(" \t\r\n")));
    delay.unit = unit.value_or(delay.unit);
    return unit ? 2 : 1;
}

std::string FieldText(const Crossover& crossover, CrossoverField field) {
    switch (field) {
    case CrossoverField::Gain:
        return TrimText(crossover.gain);
    case CrossoverField::Delay:
        return DelayAmountText(crossover.delay);
    default:
        return FrequencyText(FilterOf(crossover.filters, field).frequency);
    }
}

std::string TypedFieldText(const Crossover& crossover, CrossoverField field) {
    return IsFrequency(field) ? TypedCrossoverFrequencyText(FilterOf(crossover.filters, field).frequency)
                              : FieldText(crossover, field);
}

void TypeField(Crossover& crossover, CrossoverField field, const std::string* typed) {
    if (field == CrossoverField::Delay) {
        ReadDelayAmount(typed != nullptr ? *typed : "", crossover.delay);
        crossover.delay.amount = std::max(crossover.delay.amount, 0.0F);
        return;
    }
    const auto read = ParseFloat(typed != nullptr ? *typed : "");
    if (field == CrossoverField::Gain) {
        crossover.gain = Clamp(read.value_or(crossover.gain), lowestTrim, highestTrim);
    } else {
        float& hertz = FilterOf(crossover.filters, field).frequency;
        hertz = Clamp(read.value_or(hertz), lowestFrequency, highestFrequency);
    }
}

void StepField(Crossover& crossover, CrossoverField field, int steps) {
    if (field == CrossoverField::Gain) {
        crossover.gain = StepGain(crossover.gain, steps, lowestTrim, highestTrim);
    } else if (field == CrossoverField::Delay) {
        crossover.delay.amount = std::max(crossover.delay.amount + static_cast<float>(steps), 0.0F);
    } else {
        float& hertz = FilterOf(crossover.filters, field).frequency;
        hertz = StepFrequency(hertz, steps);
    }
}

} // namespace logic
