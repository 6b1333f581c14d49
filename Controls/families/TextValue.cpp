#include "Controls/families/TextValue.h"

#include <cmath>
#include <cstdio>

namespace {

// Beyond this a float does not hold every whole number.
constexpr float EXACT_INTEGERS = 8388608.0F;

} // namespace

void TEXTPROPERTIES::SetDefaults() {
    interval = 1000;
    SetCaption(Title());
    FontChanged();
}

int TEXTPROPERTIES::ControlType() const {
    switch (shown.Type()) {
    case logic::ValueType::Float:
        return DATATYPE_FLOAT;
    case logic::ValueType::Integer:
        return DATATYPE_INTEGER;
    default:
        return DATATYPE_TEXT;
    }
}

// Value

bool TEXTPROPERTIES::SetCaption(const std::string& text) {
    shown.SetCaption(std::string_view(text).substr(0, TEXT_SIZE - 1)); // a window text may be longer
    caption = shown.Text();
    TextChanged();
    return true;
}

void TEXTPROPERTIES::KeepCaption() {
    if (requests.empty()) { // else it would be another one in each file that is saved
        caption = shown.Text();
    }
    TextChanged();
}

void TEXTPROPERTIES::Send() {
    if (shown.Type() != logic::ValueType::Text && !shown.HasNumber()) {
        return;
    }
    switch (shown.Type()) {
    case logic::ValueType::Float: {
        float value = shown.Float();
        a_SendRequest(requests, COMMAND_SET, DATATYPE_FLOAT, &value, nullptr);
        return;
    }
    case logic::ValueType::Integer: {
        int value = shown.Integer();
        a_SendRequest(requests, COMMAND_SET, DATATYPE_INTEGER, &value, nullptr);
        return;
    }
    default: {
        std::string value = shown.Text();
        a_SendRequest(requests, COMMAND_SET, DATATYPE_TEXT, value.data(), nullptr);
        return;
    }
    }
}

// Each asks with what is held and takes a new value.

int TEXTPROPERTIES::PollText() {
    char text[TEXT_SIZE];
    std::snprintf(text, sizeof text, "%s", shown.Text().c_str());
    const int result = Ask(requests, DATATYPE_TEXT, text);
    if (result == REQUEST_DELIVERED && shown.Take(text)) {
        TextChanged();
    }
    return result;
}

namespace {

// A number that is not held yet is asked for with 0.
bool IsKnown(int result) {
    return result == REQUEST_DELIVERED || result == REQUEST_UNCHANGED;
}

} // namespace

int TEXTPROPERTIES::PollInteger() {
    int number = shown.Integer();
    const int result = Ask(requests, DATATYPE_INTEGER, &number);
    if (IsKnown(result) && shown.Take(number)) {
        TextChanged();
    }
    return result;
}

int TEXTPROPERTIES::PollNumber() {
    const bool isInteger = shown.Type() == logic::ValueType::Integer;
    if (isInteger && std::fabs(shown.Float()) >= EXACT_INTEGERS) {
        return PollInteger();
    }
    float number =
        shown.Float(); // also for a whole number: asked for one, a target would cut the fraction off
    const int result = Ask(requests, DATATYPE_FLOAT, &number);
    if (!IsKnown(result)) {
        return result;
    }
    if (isInteger && std::fabs(number) >= EXACT_INTEGERS) {
        return PollInteger();
    }
    const bool isNew = isInteger ? shown.Take(logic::RoundToInteger(number).value_or(0)) : shown.Take(number);
    if (isNew) {
        TextChanged();
    }
    return result;
}

void TEXTPROPERTIES::Poll() {
    if (requests.empty()) {
        ShowPollResult(REQUEST_UNCHANGED); // it may have been bound before
        return;
    }
    const int result = shown.Type() == logic::ValueType::Text ? PollText() : PollNumber();
    Answered(requests, ControlType(), result);
    ShowPollResult(result);
}

// Keywords

// What a set record holds, taken as a new value. Nothing when it cannot be read, else whether it is new.
std::optional<bool> TEXTPROPERTIES::TakeRecord(const VALUERECORD& record) {
    switch (shown.Type()) {
    case logic::ValueType::Float: {
        float number = 0;
        return a_ReadFloat(&record, &number) != 0 ? std::optional(shown.Take(Limited(number))) : std::nullopt;
    }
    case logic::ValueType::Integer: {
        std::optional<std::int32_t> number;
        if (int exact = 0; record.datatype == DATATYPE_INTEGER && a_ReadInteger(&record, &exact) != 0) {
            number = exact;
        } else if (std::string read; a_ReadText(&record, &read) != 0) {
            number = logic::ParseWholeRounded(read);
        }
        if (!number) {
            return std::nullopt;
        }
        const auto asFloat = static_cast<float>(*number);
        const float limited = Limited(asFloat);
        return shown.Take(limited == asFloat ? *number : logic::RoundToInteger(limited).value_or(0));
    }
    default: {
        std::string read;
        return a_ReadText(&record, &read) != 0 ? std::optional(shown.Take(read)) : std::nullopt;
    }
    }
}

int TEXTPROPERTIES::ValueKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_SET) {
        const auto isNew = TakeRecord(record);
        if (isNew == true) {
            KeepCaption();
            Send();
        }
        return isNew ? 1 : 0;
    }
    if (record.command != COMMAND_GET) {
        return 0;
    }
    switch (shown.Type()) {
    case logic::ValueType::Float:
        return a_AnswerFloat(&record, shown.Float());
    case logic::ValueType::Integer:
        return a_AnswerInteger(&record, shown.Integer());
    default:
        return a_AnswerText(&record, shown.Text().c_str());
    }
}

bool TEXTPROPERTIES::SetValueType(int type) {
    shown.SetType(static_cast<logic::ValueType>(type));
    KeepCaption();
    return true;
}

bool TEXTPROPERTIES::SetFormat(const std::string& format) {
    if (!MayBeFormat(format)) {
        return false;
    }
    shown.SetFormat(format);
    KeepCaption();
    return true;
}
