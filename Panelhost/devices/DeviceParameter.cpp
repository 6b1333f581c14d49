#include "Panelhost/devices/DeviceParameter.h"

#include "logic/text/Numbers.h"

#include <algorithm>
#include <utility>

bool DeviceParameter::Declare(const logic::ParameterDeclaration& declaration) {
    DeviceParameter declared;
    declared.declaration_ = declaration;
    if (declared.IsNumber() || declaration.type == logic::ParameterType::Text) {
        declared.text_ = declaration.value;
        declared.SetNumber(logic::ParseFloat(declaration.value).value_or(0));
    } else if (!declared.SetBlock(declaration.value)) {
        return false;
    }
    declared.Came();
    declared.state = state;
    *this = std::move(declared);
    return true;
}

int DeviceParameter::Datatype() const {
    switch (declaration_.type) {
    case logic::ParameterType::Integer:
        return DATATYPE_INTEGER;
    case logic::ParameterType::Float:
        return DATATYPE_FLOAT;
    case logic::ParameterType::Text:
        return DATATYPE_TEXT;
    case logic::ParameterType::MasterEq:
        return DATATYPE_MASTER_EQ;
    case logic::ParameterType::ChannelEq:
        return DATATYPE_CHANNEL_EQ;
    case logic::ParameterType::CrossoverFilters:
        return DATATYPE_CROSSOVER;
    case logic::ParameterType::Delay:
        return DATATYPE_DELAY;
    }
    return DATATYPE_NONE;
}

const logic::EqBand* DeviceParameter::Band() const {
    const bool isBand = declaration_.type == logic::ParameterType::MasterEq ||
                        declaration_.type == logic::ParameterType::ChannelEq;
    return isBand ? &band_ : nullptr;
}

const logic::CrossoverFilters* DeviceParameter::Filters() const {
    return declaration_.type == logic::ParameterType::CrossoverFilters ? &filters_ : nullptr;
}

void DeviceParameter::SetNumber(float value) {
    const float limited = logic::Clamp(value, declaration_.minimum, declaration_.maximum);
    number_ = declaration_.type == logic::ParameterType::Integer
                  ? static_cast<float>(logic::TruncateToInteger(logic::RoundToStep(limited, 1.0F)))
                  : limited;
    Came();
}

DeviceParameter::BlockNumbers DeviceParameter::Numbers() const {
    const auto number = [](std::int32_t whole) { return static_cast<float>(whole); };
    switch (declaration_.type) {
    case logic::ParameterType::CrossoverFilters:
        return {number(filters_.highPass.type), filters_.highPass.frequency, number(filters_.lowPass.type),
                filters_.lowPass.frequency};
    case logic::ParameterType::Delay:
        return {number(delay_.bypass), delay_.amount};
    default:
        return {number(band_.bypass), number(band_.type), number(band_.slope),
                band_.frequency,      band_.gain,         band_.q};
    }
}

void DeviceParameter::SetNumbers(const BlockNumbers& numbers) {
    const auto whole = [&](std::size_t place) {
        return logic::TruncateToInteger(static_cast<double>(numbers.at(place)));
    };
    switch (declaration_.type) {
    case logic::ParameterType::CrossoverFilters:
        filters_ = {{whole(0), numbers[1]}, {whole(2), numbers[3]}};
        break;
    case logic::ParameterType::Delay:
        delay_.bypass = whole(0);
        delay_.amount = numbers[1];
        break;
    default:
        band_ = {whole(0), whole(1), numbers[3], numbers[4], numbers[5], whole(2)};
        break;
    }
}

int DeviceParameter::Answer(VALUERECORD* record) const {
    if (!a_HasForm(Datatype(), record->datatype) ||
        (record->datatype == DATATYPE_INTEGER && !HasNumber(logic::ParseInteger)) ||
        (record->datatype == DATATYPE_FLOAT && !HasNumber(logic::ParseFloat))) {
        return -1;
    }
    switch (declaration_.type) {
    case logic::ParameterType::Integer:
        return a_AnswerInteger(record, static_cast<int>(number_));
    case logic::ParameterType::Float:
        return a_AnswerFloat(record, number_);
    case logic::ParameterType::Text:
        return a_AnswerText(record, text_.c_str());
    default:
        break;
    }
    if (record->datatype == DATATYPE_TEXT) {
        return a_AnswerText(record, BlockText().c_str());
    }
    switch (Datatype()) {
    case DATATYPE_CROSSOVER:
        return a_AnswerBytes(record, DATATYPE_CROSSOVER, &filters_, sizeof filters_);
    case DATATYPE_DELAY:
        return a_AnswerBytes(record, DATATYPE_DELAY, &delay_, sizeof delay_);
    default:
        return a_AnswerBytes(record, Datatype(), &band_, sizeof band_);
    }
}

std::string DeviceParameter::BlockText() const {
    switch (declaration_.type) {
    case logic::ParameterType::CrossoverFilters:
        return logic::FiltersText(filters_);
    case logic::ParameterType::Delay:
        return logic::DelayText(delay_);
    default:
        return logic::EqBandText(band_);
    }
}

bool DeviceParameter::SetBlock(const std::string& given) {
    const auto take = [](const auto& read, auto& member) {
        member = read.value_or(member);
        return read.has_value();
    };
    switch (declaration_.type) {
    case logic::ParameterType::CrossoverFilters:
        return take(logic::ReadFilters(given, filters_), filters_);
    case logic::ParameterType::Delay:
        return take(logic::ReadDelay(given, delay_), delay_);
    default:
        return take(logic::ReadEqBand(given, band_), band_);
    }
}

// A block as bytes must be one that the device knows; a real one would refuse it, too.
int DeviceParameter::TakeBlock(const VALUERECORD* record) {
    const auto take = [&](auto& member) {
        auto given = member;
        if (a_ReadBytes(record, Datatype(), &given, sizeof given) == 0 || !logic::IsKnown(given)) {
            return 0;
        }
        member = given;
        return 1;
    };
    switch (declaration_.type) {
    case logic::ParameterType::CrossoverFilters:
        return take(filters_);
    case logic::ParameterType::Delay:
        return take(delay_);
    default:
        return take(band_);
    }
}

int DeviceParameter::TakeValue(const VALUERECORD* record) {
    if (declaration_.type == logic::ParameterType::Text) {
        return a_ReadText(record, &text_);
    }
    if (!logic::IsNumber(declaration_.type)) {
        std::string given;
        return record->datatype == DATATYPE_TEXT ? a_ReadText(record, &given) != 0 && SetBlock(given) ? 1 : 0
                                                 : TakeBlock(record);
    }
    float value = 0;
    if (std::string given; record->datatype == DATATYPE_TEXT && a_ReadText(record, &given) != 0) {
        const auto read = logic::ParseFloatIn(declaration_.unit, given);
        if (!read) {
            return 0;
        }
        value = *read;
    } else if (a_ReadFloat(record, &value) == 0) {
        return 0;
    }
    SetNumber(value);
    return 1;
}

int DeviceParameter::Take(const VALUERECORD* record) {
    const int taken = TakeValue(record);
    if (taken != 0) {
        Came();
    }
    return taken;
}

std::optional<DeviceParameter> DeviceParameter::Taking(const std::string& text) const {
    DeviceParameter taken = *this;
    std::string copy = text;
    const VALUERECORD record = VALUERECORD::SetText(copy.data());
    return taken.Take(&record) != 0 ? std::optional(std::move(taken)) : std::nullopt;
}

bool DeviceParameter::HoldsTheSame(const DeviceParameter& other) const {
    return number_ == other.number_ && text_ == other.text_ && Numbers() == other.Numbers() &&
           delay_.unit == other.delay_.unit;
}

DWORD DeviceParameter::Age() const {
    return came_ == 0 ? NO_AGE
                      : static_cast<DWORD>(std::min<ULONGLONG>(GetTickCount64() - came_, NO_AGE - 1));
}
