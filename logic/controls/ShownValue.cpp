#include "logic/controls/ShownValue.h"

#include "logic/text/FloatFormat.h"
#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <cmath>

namespace logic {

std::int32_t AlignedStart(Alignment alignment, std::int32_t width, std::int32_t room) {
    const std::int32_t left = std::max(room - width, 0);
    return alignment == Alignment::Left ? 0 : alignment == Alignment::Right ? left : left / 2;
}

std::string OneLine(std::string_view text) {
    std::string line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
            continue;
        }
        line += IsControl(text[i]) ? ' ' : text[i];
    }
    return line;
}

std::string WrapText(std::string_view text, std::size_t columns) {
    std::string wrapped;
    while (columns > 0 && text.size() > columns) {
        const std::size_t blank = text.rfind(' ', columns);
        const bool isCut = blank == std::string_view::npos || blank == 0;
        wrapped += std::string(text.substr(0, isCut ? columns : blank)) + "\n";
        text.remove_prefix(isCut ? columns : blank + 1);
    }
    return wrapped += text;
}

std::optional<std::int32_t> RoundToInteger(float value) {
    constexpr double lowest = -2147483648.0;
    constexpr double highest = 2147483647.0;
    const double rounded = std::round(static_cast<double>(value));
    if (!(rounded >= lowest && rounded <= highest)) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(rounded);
}

std::optional<std::int32_t> ParseRounded(std::string_view text) {
    if (std::string_view rest = text; const auto whole = TakeInteger(rest)) {
        if (rest.empty() || std::string_view(".eE").find(rest.front()) == std::string_view::npos) {
            return whole; // exact, even where a float is not
        }
    }
    const auto number = ParseFloat(text);
    return number ? RoundToInteger(*number) : std::nullopt;
}

std::optional<std::int32_t> ParseWholeRounded(std::string_view text) {
    return ParseWholeInteger(text) || ParseWholeFloat(text) ? ParseRounded(text) : std::nullopt;
}

void ShownValue::SetType(ValueType type) {
    if (type == type_) {
        return;
    }
    const ValueType before = type_;
    type_ = type;
    if (before == ValueType::Text) {
        SetCaption(std::string(text_));
        if (hasNumber_) {
            Render();
        }
    } else if (type == ValueType::Integer && hasNumber_) {
        hasNumber_ = false;
        if (const auto rounded = RoundToInteger(float_)) {
            Take(*rounded);
        }
    } else if (type == ValueType::Float && hasNumber_) {
        hasNumber_ = false;
        Take(static_cast<float>(integer_));
    }
}

void ShownValue::SetFormat(std::string format) {
    format_ = std::move(format);
    if (type_ == ValueType::Text) {
        return;
    }
    if (hasNumber_) {
        Render();
    } else {
        SetCaption(std::string(text_)); // what stands in front of a number may be the format's
    }
}

void ShownValue::SetCaption(std::string_view text) {
    text_ = OneLine(text);
    hasNumber_ = false;
    const std::string_view number = WithoutSurroundings(text_, format_);
    if (type_ == ValueType::Float) {
        const auto value = ParseFloat(number);
        hasNumber_ = value.has_value();
        float_ = value.value_or(0.0F);
    } else if (type_ == ValueType::Integer) {
        const auto value = ParseRounded(number);
        hasNumber_ = value.has_value();
        integer_ = value.value_or(0);
    }
}

bool ShownValue::Take(float value) {
    if (hasNumber_ && value == float_) {
        return false;
    }
    float_ = value;
    hasNumber_ = true;
    Render();
    return true;
}

bool ShownValue::Take(std::int32_t value) {
    if (hasNumber_ && value == integer_) {
        return false;
    }
    integer_ = value;
    hasNumber_ = true;
    Render();
    return true;
}

bool ShownValue::Take(std::string_view text) {
    std::string line = OneLine(text);
    if (line == text_) {
        return false;
    }
    text_ = std::move(line);
    return true;
}

bool ShownValue::TakeTyped(std::string_view text, const std::optional<Limits>& limits) {
    if (type_ == ValueType::Text) {
        Take(text);
        return true;
    }
    const std::string_view typed = WithoutSurroundings(text, format_);
    const auto number = ParseWholeFloat(typed);
    if (!number) {
        return false;
    }
    const float limited = limits ? Clamp(*number, limits->minimum, limits->maximum) : *number;
    if (type_ == ValueType::Float) {
        Take(limited);
        return true;
    }
    const auto rounded = limited == *number ? ParseRounded(typed) : RoundToInteger(limited);
    if (rounded) {
        Take(*rounded);
    }
    return rounded.has_value();
}

void ShownValue::Render() {
    if (type_ == ValueType::Integer && format_.empty()) {
        text_ = std::to_string(integer_);
    } else {
        text_ = format_.empty() ? FormatFloat(Float()) : FormatFloatAs(format_, Float());
    }
}

} // namespace logic
