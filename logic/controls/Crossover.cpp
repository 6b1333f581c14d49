#include "logic/controls/Crossover.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "logic/controls/FilterValues.h"
#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

template <std::size_t count>
std::string Named(const std::array<std::string_view, count>& names, std::int32_t index) {
    const bool known = index >= 0 && index < static_cast<std::int32_t>(count);
    return std::string(known ? names[static_cast<std::size_t>(index)] : "");
}

bool IsIndex(std::int32_t value, std::int32_t count) {
    return value >= 0 && value < count;
}

// Reads the fields of a text one after the other. An empty field leaves what is there.
class FieldReader {
public:
    explicit FieldReader(std::string_view text) : fields_(SplitFields(text, ',')) {}

    // Whether any field was taken and all that are there could be.
    bool Succeeded() const { return takenAny_ && !failed_ && next_ >= fields_.size(); }

    // read: the field as a value of the member, or nothing.
    template <class Member, class Read>
    void Take(Member& member, Read read) {
        const std::string_view field = next_ < fields_.size() ? TrimBlanks(fields_[next_]) : "";
        ++next_;
        if (field.empty()) {
            return;
        }
        const std::optional<Member> value = read(field);
        failed_ = failed_ || !value;
        takenAny_ = takenAny_ || value;
        member = value.value_or(member);
    }

    void TakeNumber(float& number, std::string_view unit, float low, float high) {
        Take(number, [&](std::string_view field) -> std::optional<float> {
            const auto read = ParseFloatIn(unit, field);
            return read ? std::optional(Clamp(*read, low, high)) : std::nullopt;
        });
    }

private:
    std::vector<std::string_view> fields_;
    std::size_t next_ = 0;
    bool takenAny_ = false;
    bool failed_ = false;
};

std::optional<std::int32_t> FilterType(std::string_view word) {
    const auto byKey = IndexOfWord(CROSSOVER_KEYS, word);
    return byKey ? byKey : IndexOfWord(CROSSOVER_NAMES, word);
}

void TakeFilters(FieldReader& fields, CrossoverFilters& filters) {
    for (CrossoverFilter* filter : {&filters.highPass, &filters.lowPass}) {
        fields.Take(filter->type, FilterType);
        fields.TakeNumber(filter->frequency, "Hz", LOWEST_FREQUENCY, HIGHEST_FREQUENCY);
    }
}

void TakeDelay(FieldReader& fields, DelaySetting& delay) {
    fields.Take(delay.bypass, [](std::string_view field) -> std::optional<std::int32_t> {
        const auto read = ParseWholeInteger(field);
        return read ? std::optional(*read != 0 ? 1 : 0) : std::nullopt;
    });
    fields.Take(delay, [&](std::string_view field) -> std::optional<DelaySetting> {
        DelaySetting read = delay;
        ReadDelayAmount(field, read);
        read.amount = std::max(0.0F, read.amount); // not -0 either
        const bool isAmount = std::any_of(DELAY_UNITS.begin(), DELAY_UNITS.end(), [&](std::string_view unit) {
            return ParseFloatIn(unit, field).has_value();
        });
        return isAmount ? std::optional(read) : std::nullopt;
    });
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
    return IsSound(filters) && IsIndex(filters.highPass.type, CROSSOVER_TYPE_COUNT) &&
           IsIndex(filters.lowPass.type, CROSSOVER_TYPE_COUNT);
}

bool IsKnown(const DelaySetting& delay) {
    return IsSound(delay) && IsIndex(delay.unit, DELAY_UNIT_COUNT);
}

bool IsKnown(const Crossover& crossover) {
    return IsSound(crossover) && KnownOf(crossover, {}) == crossover;
}

Crossover KnownOf(const Crossover& answered, const Crossover& held) {
    Crossover known = answered;
    const auto check = [](std::int32_t& index, std::int32_t count, std::int32_t heldIndex) {
        index = IsIndex(index, count) ? index : heldIndex;
    };
    check(known.filters.highPass.type, CROSSOVER_TYPE_COUNT, held.filters.highPass.type);
    check(known.filters.lowPass.type, CROSSOVER_TYPE_COUNT, held.filters.lowPass.type);
    check(known.polarity, POLARITIES.size(), held.polarity);
    known.delay = KnownOf(answered.delay, held.delay);
    return known;
}

DelaySetting KnownOf(const DelaySetting& answered, const DelaySetting& held) {
    DelaySetting known = answered;
    known.unit = IsIndex(known.unit, DELAY_UNIT_COUNT) ? known.unit : held.unit;
    return known;
}

std::string FiltersText(const CrossoverFilters& filters) {
    return Named(CROSSOVER_KEYS, filters.highPass.type) + "," + FormatFloat(filters.highPass.frequency) +
           " Hz," + Named(CROSSOVER_KEYS, filters.lowPass.type) + "," +
           FormatFloat(filters.lowPass.frequency) + " Hz";
}

std::string DelayText(const DelaySetting& delay) {
    return std::to_string(delay.bypass) + "," + DelayAmountText(delay);
}

std::string DelayAmountText(const DelaySetting& delay) {
    return FormatFloat(delay.amount) + " " + Named(DELAY_UNITS, delay.unit);
}

std::string CrossoverText(const Crossover& crossover) {
    return FiltersText(crossover.filters) + "," + FormatFloat(crossover.gain) + " dB," +
           Named(POLARITIES, crossover.polarity) + "," + DelayText(crossover.delay);
}

std::optional<CrossoverFilters> ReadFilters(std::string_view text, const CrossoverFilters& before) {
    FieldReader fields(text);
    CrossoverFilters filters = before;
    TakeFilters(fields, filters);
    return fields.Succeeded() ? std::optional(filters) : std::nullopt;
}

std::optional<DelaySetting> ReadDelay(std::string_view text, const DelaySetting& before) {
    FieldReader fields(text);
    DelaySetting delay = before;
    TakeDelay(fields, delay);
    return fields.Succeeded() ? std::optional(delay) : std::nullopt;
}

std::optional<Crossover> ReadCrossover(std::string_view text, const Crossover& before) {
    FieldReader fields(text);
    Crossover crossover = before;
    TakeFilters(fields, crossover.filters);
    fields.TakeNumber(crossover.gain, "dB", LOWEST_TRIM, HIGHEST_TRIM);
    fields.Take(crossover.polarity, [](std::string_view word) { return IndexOfWord(POLARITIES, word); });
    TakeDelay(fields, crossover.delay);
    return fields.Succeeded() ? std::optional(crossover) : std::nullopt;
}

int ReadDelayAmount(std::string_view text, DelaySetting& delay) {
    const auto amount = TakeFloat(text);
    if (!amount) {
        return 0;
    }
    delay.amount = *amount;
    const std::string_view word = TrimBlanks(text);
    if (word.empty()) {
        return 1;
    }
    const auto unit = IndexOfWord(DELAY_UNITS, word.substr(0, word.find_first_of(" \t\r\n")));
    delay.unit = unit.value_or(delay.unit);
    return unit ? 2 : 1;
}

std::string FieldText(const Crossover& crossover, CrossoverField field) {
    switch (field) {
    case CrossoverField::Gain:
        return GainText(crossover.gain);
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
        crossover.delay.amount = std::max(0.0F, crossover.delay.amount); // not -0 either
        return;
    }
    const auto read = ParseFloat(typed != nullptr ? *typed : "");
    if (field == CrossoverField::Gain) {
        crossover.gain = Clamp(read.value_or(crossover.gain), LOWEST_TRIM, HIGHEST_TRIM);
    } else {
        float& hertz = FilterOf(crossover.filters, field).frequency;
        hertz = Clamp(read.value_or(hertz), LOWEST_FREQUENCY, HIGHEST_FREQUENCY);
    }
}

void StepField(Crossover& crossover, CrossoverField field, int steps) {
    if (field == CrossoverField::Gain) {
        crossover.gain = StepGain(crossover.gain, steps, LOWEST_TRIM, HIGHEST_TRIM);
    } else if (field == CrossoverField::Delay) {
        crossover.delay.amount = std::max(crossover.delay.amount + static_cast<float>(steps), 0.0F);
    } else {
        float& hertz = FilterOf(crossover.filters, field).frequency;
        hertz = StepFrequency(hertz, steps);
    }
}

} // namespace logic
