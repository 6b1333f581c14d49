#include "logic/remote/TelephoneTerminal.h"

#include "logic/remote/ControlCodes.h"

namespace logic {

TelephoneTerminal::Step TelephoneTerminal::Put(char byte) {
    switch (byte) {
    case BACKSPACE:
        text_.Erase();
        return Step::None;
    case LINE_FEED:
        return Step::None;
    case CARRIAGE_RETURN:
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
    if (line.starts_with('*')) { // the prompt without an object
        line.remove_prefix(1);
    }
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
