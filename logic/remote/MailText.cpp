#include "logic/remote/MailText.h"

#include <optional>

namespace logic {

namespace {

constexpr std::uint64_t HOUR = 3'600'000;

// What stands between the braces behind a "%" at that place.
std::optional<std::string_view> AddressAt(std::string_view text, std::size_t place) {
    if (text.substr(place, 2) != "%{") {
        return std::nullopt;
    }
    const std::size_t end = text.find('}', place);
    return end == std::string_view::npos ? std::nullopt
                                         : std::optional(text.substr(place + 2, end - place - 2));
}

const std::string* FactFor(char letter, const MailFacts& facts) {
    switch (letter) {
    case 'v':
        return &facts.value;
    case 'n':
        return &facts.name;
    case 'd':
        return &facts.date;
    case 't':
        return &facts.time;
    default:
        return nullptr;
    }
}

char EscapedBy(char letter) {
    return letter == 'n' ? '\n' : letter == 't' ? '\t' : letter == '\\' ? '\\' : '\0';
}

} // namespace

std::string ExpandMailText(std::string_view text, const MailFacts& facts) {
    std::string expanded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        if (const auto address = AddressAt(text, i)) {
            expanded += address->empty() ? std::string() : facts.valueOf(*address);
            i += address->size() + 2;
        } else if (const std::string* fact = text[i] == '%' ? FactFor(next, facts) : nullptr) {
            expanded += *fact;
            ++i;
        } else if (const char escaped = text[i] == '\\' ? EscapedBy(next) : '\0') {
            expanded += escaped;
            ++i;
        } else {
            expanded += text[i];
        }
    }
    return expanded;
}

bool HourlyLimit::Pass(std::uint64_t now, std::int32_t limit) {
    while (!passed_.empty() && now - passed_.front() >= HOUR) {
        passed_.pop_front();
    }
    if (limit <= 0 || passed_.size() >= static_cast<std::size_t>(limit)) {
        return false;
    }
    passed_.push_back(now);
    return true;
}

} // namespace logic
