// What people type as the value of a keyword, kind by kind.

#include "Panelhost/TypedValues.h"

#include "Panelhost/PropertyValues.h"
#include "base/Guard.h"
#include "logic/text/Numbers.h"
#include "logic/text/Text.h"
#include "logic/text/TypedNumber.h"

#include <cmath>
#include <cstdio>

namespace {

// Behind a number whose unit is that of the device's parameter. None of them can be mistaken for a multiple
// of another.
constexpr const char* UNITS[] = {"dB", "Hz", "%"};

std::optional<float> NumberOf(const KEYWORDINFO& info, const std::string& typed, bool strictly) {
    if (strictly) {
        return logic::ParseWholeFloat(typed);
    }
    auto number = logic::ParseTypedNumber(typed, info.unit);
    for (const char* unit : UNITS) {
        if (!number && *info.unit == '\0') {
            number = logic::ParseTypedNumber(typed, unit);
        }
    }
    return number;
}

std::string OutOf(const KEYWORDINFO& info, double number) {
    if (!info.hasLimits || (number >= info.minimum && number <= info.maximum)) {
        return {};
    }
    return number < info.minimum ? "is less than " + logic::FormatFloat(static_cast<float>(info.minimum))
                                 : "is more than " + logic::FormatFloat(static_cast<float>(info.maximum));
}

TYPEDVALUE ReadInteger(const KEYWORDINFO& info, const std::string& typed, bool strictly) {
    auto whole = logic::ParseWholeInteger(typed); // with all its digits
    const auto number = whole ? std::nullopt : NumberOf(info, typed, strictly);
    constexpr float BEYOND = 2147483648.0F;
    if (!strictly && number && std::abs(*number) < BEYOND && *number == std::trunc(*number)) {
        whole = static_cast<std::int32_t>(*number);
    }
    if (!whole) {
        return {"", "is not a whole number"};
    }
    return {strictly ? std::string(logic::TrimBlanks(typed)) : std::to_string(*whole),
            strictly ? "" : OutOf(info, *whole)};
}

TYPEDVALUE ReadNumber(const KEYWORDINFO& info, const std::string& typed, bool strictly) {
    const auto number = NumberOf(info, typed, strictly);
    if (!number) {
        return {"", "is not a number"};
    }
    const bool isAsTyped = info.isAsTyped && logic::ParseWholeFloat(typed);
    return {isAsTyped ? std::string(logic::TrimBlanks(typed)) : logic::FormatFloat(*number),
            strictly ? "" : OutOf(info, *number)};
}

TYPEDVALUE ReadColour(const std::string& typed, bool strictly) {
    const std::string_view text = logic::TrimBlanks(typed);
    const bool isWeb = !strictly && text.size() == 7 && text.front() == '#';
    const auto colour = logic::ParseWholeHex(isWeb ? text.substr(1) : text);
    if (!text.empty() && !colour) {
        return {"", "is not a colour (0x00bbggrr)"};
    }
    if (!isWeb) {
        return {typed, ""};
    }
    char value[16];
    std::snprintf(value, sizeof value, "0x%08x",
                  static_cast<unsigned>((*colour & 0xFF) << 16 | (*colour & 0xFF00) | *colour >> 16));
    return {value, ""};
}

std::string WordFor(const KEYWORDINFO& info, const std::string& typed) {
    const auto words = logic::SplitFields(info.words, ',');
    const auto index = logic::IndexOfWord(words, typed);
    return index ? std::string(words[static_cast<std::size_t>(*index)]) : typed;
}

TYPEDVALUE Read(const char* keyword, const KEYWORDINFO& info, const std::string& typed, bool strictly) {
    const bool isNone = info.mayBeEmpty && logic::TrimBlanks(typed).empty();
    switch (isNone && !strictly ? KeywordKind::Text : info.kind) {
    case KeywordKind::Integer:
        return ReadInteger(info, typed, strictly);
    case KeywordKind::Number:
        return ReadNumber(info, typed, strictly);
    case KeywordKind::Colour:
        return ReadColour(typed, strictly);
    default:
        break;
    }
    TYPEDVALUE read{typed, a_LengthObjection(keyword, typed)};
    if (read.objection.empty() && info.kind == KeywordKind::Words && !strictly) {
        read.value = WordFor(info, typed);
    }
    if (read.objection.empty() && info.objection != nullptr) {
        read.objection = info.objection(typed);
    }
    return read;
}

} // namespace

TYPEDVALUE a_ReadTyped(const char* keyword, const KEYWORDINFO& info, const std::string& typed,
                       bool strictly) {
    return Guarded(TYPEDVALUE{"", "cannot be read"}, [&] { return Read(keyword, info, typed, strictly); });
}
