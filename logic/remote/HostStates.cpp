#include "logic/remote/HostStates.h"

#include <algorithm>
#include <array>

#include "logic/text/Text.h"

namespace logic {

std::optional<std::vector<std::string>> ParseHosts(std::string_view text) {
    std::vector<std::string> hosts;
    for (const std::string_view field : SplitFields(text, ';')) {
        const std::string_view host = TrimBlanks(field);
        if (host.empty()) {
            continue;
        }
        if (host.size() > LONGEST_HOST || host.find_first_of(" \t=") != std::string_view::npos ||
            hosts.size() == MOST_HOSTS) {
            return std::nullopt;
        }
        hosts.emplace_back(host);
    }
    return hosts;
}

HostStates::HostStates(const std::vector<std::string>& hosts) {
    for (const std::string& name : hosts) {
        hosts_.push_back({name});
    }
}

void HostStates::Take(std::size_t host, std::optional<std::int32_t> milliseconds,
                      std::int32_t lostUntilGone) {
    Host& asked = hosts_[host];
    if (milliseconds) {
        asked.state = HostState::Answers;
        asked.lost = 0;
        time_ = *milliseconds;
        return;
    }
    asked.lost = std::min(asked.lost + 1, lostUntilGone);
    if (asked.lost >= lostUntilGone) {
        asked.state = HostState::Gone;
    }
    if (Answering() == 0) {
        time_ = -1;
    }
}

bool HostStates::IsOf(const std::vector<std::string>& hosts) const {
    return std::equal(hosts_.begin(), hosts_.end(), hosts.begin(), hosts.end(),
                      [](const Host& host, const std::string& name) { return host.name == name; });
}

bool HostStates::IsUnknown() const {
    return std::all_of(hosts_.begin(), hosts_.end(),
                       [](const Host& host) { return host.state == HostState::Unknown; });
}

std::int32_t HostStates::Answering() const {
    return static_cast<std::int32_t>(std::count_if(
        hosts_.begin(), hosts_.end(), [](const Host& host) { return host.state == HostState::Answers; }));
}

std::string HostStates::Text() const {
    constexpr std::array<const char*, 3> WORDS = {"unknown", "ok", "gone"};
    std::string text;
    for (const Host& host : hosts_) {
        text += (text.empty() ? "" : ";") + host.name + "=" + WORDS[static_cast<std::size_t>(host.state)];
    }
    return text;
}

} // namespace logic
