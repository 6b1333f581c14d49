#include "logic/controls/ButtonLogic.h"

#include "logic/text/Numbers.h"

#include <algorithm>
#include <limits>

namespace logic {

PressMode ParsePressMode(std::string_view text) {
    return text.starts_with('i')   ? PressMode::Increment
           : text.starts_with('d') ? PressMode::Decrement
                                   : PressMode::Absolute;
}

const char* PressModeText(PressMode mode) {
    switch (mode) {
    case PressMode::Increment:
        return "increment";
    case PressMode::Decrement:
        return "decrement";
    default:
        return "absolute";
    }
}

std::int32_t RepeatSteps(std::uint32_t heldMilliseconds, std::int32_t periodMilliseconds,
                         float acceleration) {
    if (periodMilliseconds <= 0) {
        return 0;
    }
    const std::uint32_t periods = heldMilliseconds / static_cast<std::uint32_t>(periodMilliseconds);
    const float steps = acceleration * static_cast<float>(periods);
    return steps > 0.0F ? TruncateToInteger(static_cast<double>(steps) + 0.5) : 0;
}

std::int32_t StepValue(std::int32_t value, PressMode mode, std::int32_t steps) {
    using Limits = std::numeric_limits<std::int32_t>;
    const std::int64_t change = mode == PressMode::Increment   ? steps
                                : mode == PressMode::Decrement ? -static_cast<std::int64_t>(steps)
                                                               : 0;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value + change, Limits::min(), Limits::max()));
}

std::string QuestionText(std::string_view text) {
    std::string question;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string_view pair = text.substr(i, 2);
        const bool isEscape = pair == "\\n" || pair == "\\t";
        question += isEscape ? (pair[1] == 'n' ? '\n' : '\t') : text[i];
        i += isEscape ? 1 : 0;
    }
    return question;
}

std::string ExpandTemplate(std::string_view text, std::span<const Placeholder> placeholders) {
    std::string expanded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto found =
            text[i] != '%' || i + 1 == text.size()
                ? placeholders.end()
                : std::find_if(placeholders.begin(), placeholders.end(),
                               [&](const Placeholder& one) { return one.letter == text[i + 1]; });
        if (found == placeholders.end()) {
            expanded += text[i];
        } else {
            expanded += found->text;
            ++i;
        }
    }
    return expanded;
}

} // namespace logic
