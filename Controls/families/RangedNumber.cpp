#include "Controls/families/RangedNumber.h"

#include "logic/text/Numbers.h"

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

bool RANGEDPROPERTIES::SetRangeText(const std::string& text) {
    const auto read = logic::ParseRangeAndValue(text);
    if (!read) {
        return false;
    }
    minimum = read->minimum;
    maximum = read->maximum.value_or(maximum);
    value = Loaded(read->value.value_or(value));
    Moved();
    Send();
    return true;
}
