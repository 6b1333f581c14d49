// The terminal on the network, without its network: bytes that are typed become addressed values, and prompts
// come back.
#pragma once

#include <string>

#include "logic/remote/TerminalLine.h"

namespace logic {

// Line feed ends a line; carriage return and escape are dropped, backspace takes the last character away,
// Ctrl-C abandons the line. The value ".." leaves the keyword, "dir" does nothing, "?" asks for the value.
class Terminal {
public:
    enum class Step {
        None,
        Execute, // a line is complete: carry out Address(), then Answer
        Answer,  // a line is complete that reaches no object
        Refuse,  // a line is complete that was too long: nothing of it counts, then Answer
        Abandon, // the line and the rest of the received block are to be forgotten
    };

    Step Put(char byte);
    const TerminalAddress& Address() const { return address_; }
    // The prompt goes back to its start.
    void ObjectMissing() { address_.Forget(); }
    // The prompt, which then stands at the start of the next line. May be empty.
    std::string Answer();
    // Another terminal took over: the line that was begun does not count, up to its end; the address stays.
    void Restart() { text_.Blank(); }

private:
    Step EndLine();

    TerminalText text_;
    TerminalAddress address_;
};

} // namespace logic
