#include "logic/remote/TelnetFilter.h"

namespace logic {

namespace {

constexpr char interpretAsCommand = '\xFF'; // IAC
constexpr char will = '\xFB';
constexpr char wont = '\xFC';
constexpr char dont = '\xFE'; // and DO between the two
constexpr char subNegotiation = '\xFA';
constexpr char subNegotiationEnd = '\xF0';

static_assert(wont - will == 1 && dont - will == 3);

} // namespace

std::string TelnetFilter::Text(std::string_view block) {
    std::string text;
    for (const char byte : block) {
        if (const auto character = Put(byte)) {
            text += *character;
        }
    }
    return text;
}

std::optional<char> TelnetFilter::Put(char byte) {
    switch (state_) {
    case State::Text:
        if (byte != interpretAsCommand) {
            return byte;
        }
        state_ = State::Command;
        break;
    case State::Command:
        state_ = State::Text;
        if (byte == interpretAsCommand) {
            return byte;
        }
        if (byte == subNegotiation) {
            state_ = State::Negotiation;
        } else if (byte >= will && byte <= dont) {
            state_ = State::Option;
        }
        break;
    case State::Option:
        state_ = State::Text;
        break;
    case State::Negotiation:
        if (byte == interpretAsCommand) {
            state_ = State::NegotiationByte;
        }
        break;
    case State::NegotiationByte:
        state_ = byte == subNegotiationEnd ? State::Text : State::Negotiation;
        break;
    }
    return std::nullopt;
}

std::string TelnetText(std::string_view text) {
    std::string bytes;
    for (const char character : text) {
        bytes += character;
        if (character == interpretAsCommand) {
            bytes += character;
        }
    }
    return bytes;
}

} // namespace logic
