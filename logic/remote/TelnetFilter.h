// What a telnet client says beside its text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace logic {

// Takes commands, option negotiations and sub-negotiations out of the bytes of one connection, however they
// are divided among its packets. Nothing of them is answered.
class TelnetFilter {
public:
    // The text of a block.
    std::string Text(std::string_view block);

private:
    enum class State {
        Text,
        Command,         // behind IAC
        Option,          // behind IAC and WILL, WONT, DO or DONT
        Negotiation,     // up to IAC SE
        NegotiationByte, // behind IAC in a sub-negotiation
    };

    std::optional<char> Put(char byte);

    State state_ = State::Text;
};

// Text as a telnet client has to be sent it: the byte 255 twice.
std::string TelnetText(std::string_view text);

} // namespace logic
