#include "Controls/families/RangedNumber.h"

#include "logic/text/Numbers.h"
#include "logic/text/Ranges.h"

#include <cmath>

bool RANGEDPROPERTIES::TakeValue(float newValue) {
    if (newValue == value) {
        return false;
    }
    value = newValue;
    Moved();
    Send();
    return true;
}

std::string RANGEDPROPERTIES::RangeText() const {
    return logic::RangeAndValueText(minimum, maximum, value);
}

bool RANGEDPROPERTIES::LoadRange(const std::string& text) {
    const auto read = logic::ParseRangeAndValue(text);
    if (!read) {
        return false;
    }
    minimum = read->minimum;
    maximum = read->maximum.value_or(maximum);
    value = Loaded(read->value.value_or(value));
    Moved();
    return true;
}

bool RANGEDPROPERTIES::SetRangeText(const std::string& text) {
    if (!LoadRange(text)) {
        return false;
    }
    Send();
    return true;
}

int RANGEDPROPERTIES::AnswerValue(VALUERECORD& record) const {
    if (record.data == nullptr) {
        return 0;
    }
    if (record.datatype == DATATYPE_INTEGER) {
        auto& held = *static_cast<int*>(record.data);
        if (static_cast<float>(held) == value) { // 3 is not 3.5
            return 0;
        }
        held = logic::TruncateToInteger(value);
        return 1;
    }
    const bool isHeld = record.datatype == DATATYPE_FLOAT &&
                        std::fabs(value - *static_cast<const float*>(record.data)) < 0.00001F;
    return isHeld ? 0 : a_AnswerFloat(&record, value);
}

// Of a reversed range, which leaves only its ends, each one is kept: a value that is saved comes back.
float RANGEDPROPERTIES::Limited(float number) const {
    const auto low = static_cast<float>(minimum);
    const auto high = static_cast<float>(maximum);
    return number == low || number == high ? number : logic::Clamp(number, low, high);
}

int RANGEDPROPERTIES::ValueKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return a_AnswerFloat(&record, value);
    }
    float number = 0;
    if (record.command != COMMAND_SET || a_ReadFloat(&record, &number) == 0) {
        return 0;
    }
    number = Limited(number);
    if (record.datatype == DATATYPE_FLOAT) {
        *static_cast<float*>(record.data) = number;
    }
    return TakeValue(number) ? 1 : 0;
}

std::string WholeRange::Text() const {
    return logic::RangeText(minimum, maximum);
}

bool WholeRange::Load(const std::string& text) {
    const auto read = logic::ParseRange(text);
    if (!read) {
        return false;
    }
    minimum = read->minimum;
    maximum = read->maximum.value_or(maximum);
    return true;
}
