#include "logic/controls/EqBand.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "logic/controls/FilterValues.h"
#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr std::size_t FIELD_COUNT = 6; // of a band as text

} // namespace

bool IsSound(const EqBand& band) {
    return std::isfinite(band.frequency) && std::isfinite(band.gain) && std::isfinite(band.q);
}

bool IsKnown(const EqBand& band) {
    return IsSound(band) && KnownOf(band, {}) == band;
}

EqBand KnownOf(const EqBand& answered, const EqBand& held) {
    EqBand known = answered;
    if (known.type < 0 || known.type >= filterTypeCount) {
        known.type = held.type;
    }
    if (known.slope < 0 || known.slope > 2) {
        known.slope = held.slope;
    }
    return known;
}

std::string EqBandText(const EqBand& band) {
    const bool named = band.type >= 0 && band.type < filterTypeCount;
    const std::string_view name = named ? FILTER_TYPE_NAMES[static_cast<std::size_t>(band.type)] : "";
    return std::to_string(band.bypass) + "," + std::string(name) + "," + std::to_string(band.slope * 6) +
           " dB," + FormatFloat(band.frequency) + " Hz," + FormatFloat(band.gain) + " dB," +
           FormatFloat(band.q);
}

std::optional<EqBand> ReadEqBand(std::string_view text, const EqBand& before) {
    std::vector<std::string_view> fields = SplitFields(text, ',');
    std::erase(fields, std::string_view());
    const std::size_t count = fields.size();
    if (count == 0 || count > FIELD_COUNT) {
        return std::nullopt;
    }
    fields.resize(FIELD_COUNT);

    EqBand band = before;
    std::size_t taken = 0;
    const auto take = [&taken](auto read, auto& member, auto convert) {
        if (read) {
            member = convert(*read);
            ++taken;
        }
    };
    const auto same = [](float value) { return value; };
    take(ParseWholeInteger(fields[0]), band.bypass, [](std::int32_t value) { return value != 0 ? 1 : 0; });
    take(IndexOfWord(FILTER_TYPE_NAMES, fields[1]), band.type, [](std::int32_t type) { return type; });
    take(ParseIntegerIn("dB", fields[2]), band.slope,
         [](std::int32_t decibels) { return std::clamp((std::clamp(decibels, -1000, 1000) + 2) / 6, 0, 2); });
    take(ParseFloatIn("Hz", fields[3]), band.frequency,
         [](float hertz) { return Clamp(hertz, 0.0F, HIGHEST_FREQUENCY); });
    take(ParseFloatIn("dB", fields[4]), band.gain, same);
    take(ParseWholeFloat(fields[5]), band.q, same);
    return taken == count ? std::optional(band) : std::nullopt;
}

int OfferedFilterTypes(std::string_view device, bool isMaster) {
    constexpr std::array<std::string_view, 2> withoutAllPass{"ZQBCON", "ZQACON"};
    const bool all = !IndexOfWord(withoutAllPass, device.substr(0, device.find('_')));
    return (all ? filterTypeCount : filterTypeCount - 1) - (isMaster ? 1 : 0);
}

float HighestQ(std::int32_t type, bool asBandwidth) {
    const bool limited = asBandwidth ? type == AllPass : type >= HighPass && type <= AllPass;
    return limited ? HIGHEST_PASS_Q : HIGHEST_Q;
}

float TypedQ(float typed, std::int32_t type, bool asBandwidth) {
    const float highest = HighestQ(type, asBandwidth);
    return asBandwidth ? BandwidthToQ(Clamp(typed, QToBandwidth(highest), QToBandwidth(LOWEST_Q)))
                       : Clamp(typed, LOWEST_Q, highest);
}

float StepQ(float q, int steps, std::int32_t type, bool asBandwidth) {
    constexpr float step = 0.1F;
    const float highest = HighestQ(type, asBandwidth);
    const float low = asBandwidth ? QToBandwidth(highest) : LOWEST_Q;
    const float high = asBandwidth ? QToBandwidth(LOWEST_Q) : highest;
    const float shown = asBandwidth ? QToBandwidth(q) : q;
    const float stepped = Clamp(shown + static_cast<float>(steps) * step, low, high);
    if (stepped == shown) {
        return q;
    }
    return asBandwidth ? BandwidthToQ(stepped) : stepped;
}

float FieldOf(const EqBand& band, EqField field) {
    return field == EqField::Gain ? band.gain : field == EqField::Frequency ? band.frequency : band.q;
}

std::string FieldText(const EqBand& band, EqField field, bool asBandwidth) {
    return field == EqField::Gain        ? GainText(band.gain)
           : field == EqField::Frequency ? FrequencyText(band.frequency)
                                         : QText(band.q, asBandwidth);
}

std::string TypedFieldText(const EqBand& band, EqField field, bool asBandwidth) {
    return field == EqField::Frequency ? TypedBandFrequencyText(band.frequency)
                                       : FieldText(band, field, asBandwidth);
}

void TypeField(EqBand& band, EqField field, std::optional<float> typed, bool asBandwidth) {
    switch (field) {
    case EqField::Gain:
        band.gain = Clamp(typed.value_or(band.gain), LOWEST_EQ_GAIN, HIGHEST_EQ_GAIN);
        break;
    case EqField::Frequency:
        band.frequency = Clamp(typed.value_or(band.frequency), LOWEST_FREQUENCY, HIGHEST_FREQUENCY);
        break;
    default:
        band.q = typed ? TypedQ(*typed, band.type, asBandwidth) : StepQ(band.q, 0, band.type, asBandwidth);
        break;
    }
}

bool StepField(EqBand& band, EqField field, int steps, bool asBandwidth) {
    const EqBand before = band;
    switch (field) {
    case EqField::Gain:
        band.gain = StepGain(band.gain, steps, LOWEST_EQ_GAIN, HIGHEST_EQ_GAIN);
        break;
    case EqField::Frequency:
        band.frequency = StepFrequency(band.frequency, steps);
        break;
    default:
        band.q = StepQ(band.q, steps, band.type, asBandwidth);
        break;
    }
    return band != before;
}

bool LimitPassQ(EqBand& band) {
    const bool isPass = band.type == HighPass || band.type == LowPass;
    if (!isPass || band.slope != 2 || band.q <= HIGHEST_PASS_Q) {
        return false;
    }
    band.q = HIGHEST_PASS_Q;
    return true;
}

} // namespace logic
