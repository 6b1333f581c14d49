// Value records: what they carry, converted between the datatypes by one set of rules.

#include "Panelhost/ValueRecord.h"

#include "base/Guard.h"
#include "logic/controls/Crossover.h"
#include "logic/controls/EqBand.h"
#include "logic/text/Numbers.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <optional>

namespace {

template <class Number>
int Store(VALUERECORD* record, Number value) {
    auto* held = static_cast<Number*>(record->data);
    if (*held == value) {
        return 0;
    }
    *held = value;
    return 1;
}

int StoreText(VALUERECORD* record, const char* value) {
    auto* held = static_cast<char*>(record->data);
    const std::size_t length = std::strlen(value);
    if (length >= TEXT_SIZE || std::strcmp(held, value) == 0) {
        return 0;
    }
    std::memcpy(held, value, length + 1);
    return 1;
}

template <class Value>
bool IsSoundRecord(const void* data) {
    Value value;
    std::memcpy(&value, data, sizeof value);
    return logic::IsSound(value);
}

// What its data is; none where there is none.
int DatatypeOf(const VALUERECORD* record) {
    return record->data == nullptr ? DATATYPE_NONE : record->datatype;
}

template <class Number>
Number NumberIn(const VALUERECORD* record) {
    return *static_cast<const Number*>(record->data);
}

std::optional<float> Finite(float number) {
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<int> Truncated(float number) {
    constexpr float LOWEST = -2147483648.0F; // the ends of int in float
    constexpr float HIGHEST = 2147483520.0F;
    return number >= LOWEST && number <= HIGHEST ? std::optional(static_cast<int>(number)) : std::nullopt;
}

template <class Value>
int Take(const std::optional<Value>& read, Value* value) {
    if (!read) {
        return 0;
    }
    *value = *read;
    return 1;
}

} // namespace

int a_ValueSize(int datatype, const void* data) {
    switch (datatype) {
    case DATATYPE_INTEGER:
    case DATATYPE_FLOAT:
        return 4;
    case DATATYPE_TEXT:
        return static_cast<int>(strnlen(static_cast<const char*>(data), TEXT_SIZE - 1)) + 1;
    case DATATYPE_DELAY:
        return sizeof(logic::DelaySetting);
    case DATATYPE_CROSSOVER:
        return sizeof(logic::Crossover);
    case DATATYPE_MASTER_EQ:
    case DATATYPE_CHANNEL_EQ:
        return sizeof(logic::EqBand);
    default:
        return 0;
    }
}

bool a_IsSoundValue(int datatype, const void* data) {
    switch (datatype) {
    case DATATYPE_FLOAT:
        return std::isfinite(*static_cast<const float*>(data));
    case DATATYPE_TEXT:
        return strnlen(static_cast<const char*>(data), TEXT_SIZE) < TEXT_SIZE;
    case DATATYPE_DELAY:
        return IsSoundRecord<logic::DelaySetting>(data);
    case DATATYPE_CROSSOVER:
        return IsSoundRecord<logic::Crossover>(data);
    case DATATYPE_MASTER_EQ:
    case DATATYPE_CHANNEL_EQ:
        return IsSoundRecord<logic::EqBand>(data);
    default:
        return true;
    }
}

bool a_HasForm(int keptDatatype, int askedDatatype) {
    const auto isSimple = [](int datatype) {
        return datatype == DATATYPE_INTEGER || datatype == DATATYPE_FLOAT || datatype == DATATYPE_TEXT;
    };
    if (keptDatatype == DATATYPE_NONE) {
        return false;
    }
    return keptDatatype == askedDatatype || (isSimple(keptDatatype) && isSimple(askedDatatype)) ||
           (askedDatatype == DATATYPE_TEXT && keptDatatype != DATATYPE_DATA);
}

int a_AnswerBytes(VALUERECORD* record, int datatype, const void* value, int size) {
    if (record->data == nullptr || record->datatype != datatype ||
        std::memcmp(record->data, value, static_cast<std::size_t>(size)) == 0) {
        return 0;
    }
    std::memcpy(record->data, value, static_cast<std::size_t>(size));
    return 1;
}

int a_ReadBytes(const VALUERECORD* record, int datatype, void* value, int size) {
    if (record->data == nullptr || record->datatype != datatype || !a_IsSoundValue(datatype, record->data)) {
        return 0;
    }
    std::memcpy(value, record->data, static_cast<std::size_t>(size));
    return 1;
}

int a_FindKeyword(const KEYWORDROW* table, const char* keyword) {
    return keyword == nullptr ? -1 : a_FindKeyword(table, std::string_view(keyword));
}

int a_FindKeyword(const KEYWORDROW* table, std::string_view keyword) {
    const char* wanted = keyword.empty() ? "" : keyword.data(); // an empty one may point nowhere
    for (int row = 0; table != nullptr && table[row].keyword != nullptr; ++row) {
        const char* name = table[row].keyword; // most differ in the first letter already
        if (std::strncmp(name, wanted, keyword.size()) == 0 && name[keyword.size()] == '\0') {
            return row;
        }
    }
    return -1;
}

int a_AnswerInteger(VALUERECORD* record, int value) {
    switch (DatatypeOf(record)) {
    case DATATYPE_INTEGER:
        return Store(record, value);
    case DATATYPE_FLOAT:
        return Store(record, static_cast<float>(value));
    case DATATYPE_TEXT: {
        char text[16];
        std::snprintf(text, sizeof text, "%d", value);
        return StoreText(record, text);
    }
    default:
        return 0;
    }
}

int a_AnswerFloat(VALUERECORD* record, float value) {
    switch (DatatypeOf(record)) {
    case DATATYPE_INTEGER:
        return Store(record, static_cast<int>(logic::TruncateToInteger(value)));
    case DATATYPE_FLOAT:
        return Store(record, value);
    case DATATYPE_TEXT:
        return StoreText(record, logic::FormatFloat(value).c_str());
    default:
        return 0;
    }
}

int a_AnswerText(VALUERECORD* record, const char* value) {
    switch (value == nullptr ? DATATYPE_NONE : DatatypeOf(record)) {
    case DATATYPE_INTEGER: {
        const auto number = logic::ParseInteger(value);
        return number ? Store(record, static_cast<int>(*number)) : 0;
    }
    case DATATYPE_FLOAT: {
        const auto number = logic::ParseFloat(value);
        return number ? Store(record, *number) : 0;
    }
    case DATATYPE_TEXT:
        return StoreText(record, value);
    default:
        return 0;
    }
}

int a_ReadInteger(const VALUERECORD* record, int* value) {
    switch (DatatypeOf(record)) {
    case DATATYPE_INTEGER:
        return Take(std::optional(NumberIn<int>(record)), value);
    case DATATYPE_FLOAT:
        return Take(Truncated(NumberIn<float>(record)), value);
    case DATATYPE_TEXT:
        return Take(logic::ParseWholeInteger(static_cast<const char*>(record->data)), value);
    default:
        return 0;
    }
}

int a_ReadFloat(const VALUERECORD* record, float* value) {
    switch (DatatypeOf(record)) {
    case DATATYPE_INTEGER:
        return Take(std::optional(static_cast<float>(NumberIn<int>(record))), value);
    case DATATYPE_FLOAT:
        return Take(Finite(NumberIn<float>(record)), value);
    case DATATYPE_TEXT:
        return Take(logic::ParseWholeFloat(static_cast<const char*>(record->data)), value);
    default:
        return 0;
    }
}

int a_ReadText(const VALUERECORD* record, std::string* value) {
    return Guarded(0, [&] {
        switch (DatatypeOf(record)) {
        case DATATYPE_INTEGER:
            *value = std::to_string(NumberIn<int>(record));
            return 1;
        case DATATYPE_FLOAT: {
            const auto number = Finite(NumberIn<float>(record));
            return Take(number ? std::optional(logic::FormatFloat(*number)) : std::nullopt, value);
        }
        case DATATYPE_TEXT: {
            const auto* text = static_cast<const char*>(record->data);
            const std::size_t length = strnlen(text, TEXT_SIZE);
            if (length == TEXT_SIZE) {
                return 0;
            }
            value->assign(text, length);
            return 1;
        }
        default:
            return 0;
        }
    });
}

int a_CheckIntRange(int* value, int minimum, int maximum) {
    const int given = *value;
    *value = given < minimum ? minimum : given > maximum ? maximum : given;
    return *value == given ? 1 : 0;
}

int a_CheckFloatRange(float* value, float minimum, float maximum) {
    const float given = *value;
    *value = logic::Clamp(given, minimum, maximum);
    return *value == given ? 1 : 0;
}
