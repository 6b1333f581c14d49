// The terminal that a caller on the telephone types at, apart from its line.
#pragma once

#include <string>

#include "logic/remote/TerminalLine.h"

namespace logic {

// Carriage return ends a line, backspace takes the last character away, one of the prompt too. Line feeds,
// which many terminals send behind the carriage return, are dropped. Nothing but the prompt is remembered
// from line to line. The value "?" asks for the value.
class TelephoneTerminal {
public:
    enum class Step {
        None,
        Execute, // a line is complete: carry out Address(), then Answer
        Refuse,  // a line is complete that was too long: nothing of it counts, then Answer
    };

    Step Put(char byte);
    const TerminalAddress& Address() const { return address_; }
    // The object of the line does not have the keyword.
    void KeywordMissing();
    void ObjectMissing() { address_.Forget(); }
    // A carriage return and the prompt, which then stands at the start of the next line.
    std::string Answer();

private:
    TerminalText text_;
    TerminalAddress address_;
};

} // namespace logic
