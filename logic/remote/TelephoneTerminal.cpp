#include "logic/remote/TelephoneTerminal.h"

namespace logic {

namespace {

constexpr char backspace = 8;
constexpr char lineFeed = 10;
constexpr char carriageReturn = 13;

} // namespace

TelephoneTerminal::Step TelephoneTerminal::Put(char byte) {
    switch (byte) {
    case backspace:
        text_.Erase();
        return Step::None;
    case lineFeed:
        return Step::None;
    case carriageReturn:
        break;
    default:
        text_.Append(byte);
        return Step::None;
    }
    if (text_.IsTooLong()) {
        address_.ForgetValue();
        return Step::Refuse;
    }
    std::string_view line = text_.View();
    if (line.starts_with('*')) // the prompt without an object
        line.remove_prefix(1);
    address_.Forget();
    address_.Read(line);
    return Step::Execute;
}

void TelephoneTerminal::KeywordMissing() {
    address_.ForgetKeyword();
    address_.ForgetValue();
}

std::string TelephoneTerminal::Answer() {
    const std::string prompt = address_.StarredPrompt();
    text_.Set(prompt);
    return "\r" + prompt;
}

} // namespace logic
