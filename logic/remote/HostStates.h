// Hosts that are asked again and again whether they are there, and what is known of each.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace logic {

enum class HostState { Unknown, Answers, Gone };

// Names or addresses joined by ";", without blanks around them; empty ones are left out. Nothing when there
// are too many, or one is longer than a name can be or holds a blank or "=".
std::optional<std::vector<std::string>> ParseHosts(std::string_view text);
constexpr std::size_t MOST_HOSTS = 64;
constexpr std::size_t LONGEST_HOST = 255;

class HostStates {
public:
    HostStates() = default;
    explicit HostStates(const std::vector<std::string>& hosts);

    std::size_t Size() const { return hosts_.size(); }
    const std::string& Name(std::size_t host) const { return hosts_[host].name; }
    HostState State(std::size_t host) const { return hosts_[host].state; }
    // Takes the result of one try: milliseconds, or nothing for one that is lost. A host that did not answer
    // that many tries in a row is gone; one that answers is there at once.
    void Take(std::size_t host, std::optional<std::int32_t> milliseconds, std::int32_t lostUntilGone);

    bool IsOf(const std::vector<std::string>& hosts) const;
    bool IsUnknown() const;         // nothing is known of any
    std::int32_t Answering() const; // how many
    std::int32_t LastTime() const {
        return time_;
    }                         // milliseconds of the last try that was answered; -1: none
    std::string Text() const; // "name=ok;name=gone;name=unknown"

private:
    struct Host {
        std::string name;
        HostState state = HostState::Unknown;
        std::int32_t lost = 0; // tries in a row
    };
    std::vector<Host> hosts_;
    std::int32_t time_ = -1;
};

} // namespace logic
