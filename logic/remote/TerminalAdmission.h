// Who may connect to a terminal on the network.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace logic {

// IPv4 addresses as numbers, the first byte of the dotted form highest.
class TerminalNetworks {
public:
    // Reads networks and addresses joined by ',': "192.168.0.0/16,10.1.2.3". An empty text stands for
    // everybody, "none" for nobody. Nothing when any entry is neither a dotted address nor one with a number
    // of bits from 0 to 32. Blanks around an entry do not matter, and neither do address bits beyond those of
    // the network.
    static std::optional<TerminalNetworks> Parse(std::string_view text);

    bool Contain(std::uint32_t address) const;

private:
    struct Network {
        std::uint32_t address;
        std::uint32_t mask;
    };

    std::vector<Network> networks_{{0, 0}}; // everybody
};

// Counts those who were turned away, to be told of all together once in a while. Times are tick counts in
// milliseconds, which may run over.
class RefusalCount {
public:
    static constexpr std::uint32_t period = 60'000;

    void Add() { ++count_; }
    // How many were added since the last report, if it is time for one; otherwise 0.
    std::uint32_t Report(std::uint32_t now);
    // How long until there is something to report; nothing while nobody was turned away.
    std::optional<std::uint32_t> TimeToReport(std::uint32_t now) const;

private:
    std::uint32_t count_ = 0;
    std::optional<std::uint32_t> lastReport_;
};

} // namespace logic
