#include "logic/remote/Terminal.h"

#include "logic/remote/ControlCodes.h"
#include "logic/text/PropertyLine.h"

namespace logic {

Terminal::Step Terminal::Put(char byte) {
    switch (byte) {
    case ABANDON:
        text_.Clear();
        return Step::Abandon;
    case BACKSPACE:
        text_.Erase();
        return Step::None;
    case LINE_FEED:
        return EndLine();
    case CARRIAGE_RETURN:
    case ESCAPE:
        return Step::None;
    default:
        text_.Append(byte);
        return Step::None;
    }
}

Terminal::Step Terminal::EndLine() {
    if (text_.IsTooLong()) {
        return Step::Refuse;
    }
    address_.Read(text_.View());
    if (address_.Value() == "..") {
        address_.ForgetKeyword();
        return Step::Answer;
    }
    if (FoldName(address_.Value()) == "dir") {
        return Step::Answer;
    }
    address_.CapitaliseObject();
    return Step::Execute;
}

std::string Terminal::Answer() {
    std::string prompt = address_.Prompt();
    text_.Set(prompt);
    return prompt;
}

} // namespace logic
