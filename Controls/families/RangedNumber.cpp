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
