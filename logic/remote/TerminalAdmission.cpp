#include "logic/remote/TerminalAdmission.h"

#include <algorithm>

#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr std::string_view NOBODY = "none";

// Digits only, and none in front that does nothing: some read "010" as eight.
std::optional<std::uint32_t> ParseDecimal(std::string_view text, std::uint32_t maximum) {
    if (text.empty() || text.size() > 3 || (text.size() > 1 && text.front() == '0')) {
        return std::nullopt;
    }
    std::uint32_t number = 0;
    for (const char digit : text) {
        if (digit < '0' || digit > '9') {
            return std::nullopt;
        }
        number = number * 10 + static_cast<std::uint32_t>(digit - '0');
    }
    return number <= maximum ? std::optional(number) : std::nullopt;
}

std::optional<std::uint32_t> ParseAddress(std::string_view text) {
    const auto bytes = SplitFields(text, '.');
    if (bytes.size() != 4) {
        return std::nullopt;
    }
    std::uint32_t address = 0;
    for (const std::string_view byte : bytes) {
        const auto number = ParseDecimal(byte, 255);
        if (!number) {
            return std::nullopt;
        }
        address = address << 8 | *number;
    }
    return address;
}

std::optional<std::uint32_t> ParseMask(std::string_view bits) {
    const auto count = ParseDecimal(bits, 32);
    if (!count) {
        return std::nullopt;
    }
    return *count == 0 ? 0 : ~std::uint32_t{0} << (32 - *count);
}

} // namespace

std::optional<TerminalNetworks> TerminalNetworks::Parse(std::string_view text) {
    TerminalNetworks parsed;
    if (text.empty()) {
        return parsed;
    }
    parsed.networks_.clear();
    if (TrimBlanks(text) == NOBODY) {
        return parsed;
    }
    for (std::string_view entry : SplitFields(text, ',')) {
        entry = TrimBlanks(entry);
        const std::size_t slash = entry.find('/');
        const auto address = ParseAddress(entry.substr(0, slash));
        const auto mask = ParseMask(slash == std::string_view::npos ? "32" : entry.substr(slash + 1));
        if (!address || !mask) {
            return std::nullopt;
        }
        parsed.networks_.push_back({*address & *mask, *mask});
    }
    return parsed;
}

bool TerminalNetworks::Contain(std::uint32_t address) const {
    return std::any_of(networks_.begin(), networks_.end(), [address](const Network& network) {
        return (address & network.mask) == network.address;
    });
}

std::uint32_t RefusalCount::Report(std::uint32_t now) {
    if (TimeToReport(now) != 0U) {
        return 0;
    }
    lastReport_ = now;
    const std::uint32_t reported = count_;
    count_ = 0;
    return reported;
}

std::optional<std::uint32_t> RefusalCount::TimeToReport(std::uint32_t now) const {
    if (count_ == 0) {
        return std::nullopt;
    }
    const std::uint32_t passed = lastReport_ ? now - *lastReport_ : period;
    return passed >= period ? 0 : period - passed;
}

} // namespace logic
