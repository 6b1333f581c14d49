#include "logic/remote/TelnetFilter.h"

namespace logic {

namespace {

constexpr char INTERPRET_AS_COMMAND = '\xFF'; // IAC
constexpr char WILL = '\xFB';
constexpr char WONT = '\xFC';
constexpr char DONT = '\xFE'; // and DO between the two
constexpr char SUB_NEGOTIATION = '\xFA';
constexpr char SUB_NEGOTIATION_END = '\xF0';

static_assert(WONT - WILL == 1 && DONT - WILL == 3);

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
        if (byte != INTERPRET_AS_COMMAND) {
            return byte;
        }
        state_ = State::Command;
        break;
    case State::Command:
        state_ = State::Text;
        if (byte == INTERPRET_AS_COMMAND) {
            return byte;
        }
        if (byte == SUB_NEGOTIATION) {
            state_ = State::Negotiation;
        } else if (byte >= WILL && byte <= DONT) {
            state_ = State::Option;
        }
        break;
    case State::Option:
        state_ = State::Text;
        break;
    case State::Negotiation:
        if (byte == INTERPRET_AS_COMMAND) {
            state_ = State::NegotiationByte;
        }
        break;
    case State::NegotiationByte:
        state_ = byte == SUB_NEGOTIATION_END ? State::Text : State::Negotiation;
        break;
    }
    return std::nullopt;
}

std::string TelnetText(std::string_view text) {
    std::string bytes;
    for (const char character : text) {
        bytes += character;
        if (character == INTERPRET_AS_COMMAND) {
            bytes += character;
        }
    }
    return bytes;
}

} // namespace logic
