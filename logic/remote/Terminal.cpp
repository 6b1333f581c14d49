#include "logic/remote/Terminal.h"

#include "logic/text/PropertyLine.h"

namespace logic {

namespace {

constexpr char abandon = 3; // Ctrl-C
constexpr char backspace = 8;
constexpr char lineFeed = 10;
constexpr char carriageReturn = 13;
constexpr char escape = 27;

} // namespace

Terminal::Step Terminal::Put(char byte) {
    switch (byte) {
    case abandon:
        text_.Clear();
        return Step::Abandon;
    case backspace:
        text_.Erase();
        return Step::None;
    case lineFeed:
        return EndLine();
    case carriageReturn:
    case escape:
        return Step::None;
    default:
        text_.Append(byte);
        return Step::None;
    }
}

Terminal::Step Terminal::EndLine() {
    if (text_.IsTooLong())
        return Step::Refuse;
    address_.Read(text_.View());
    if (address_.Value() == "..") {
        address_.ForgetKeyword();
        return Step::Answer;
    }
    if (FoldName(address_.Value()) == "dir")
        return Step::Answer;
    address_.CapitaliseObject();
    return Step::Execute;
}

std::string Terminal::Answer() {
    std::string prompt = address_.Prompt();
    text_.Set(prompt);
    return prompt;
}

} // namespace logic
