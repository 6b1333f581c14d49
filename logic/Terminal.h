// The terminal on the network, without its network: bytes that are typed become addressed values, and prompts
// come back.
#pragma once

#include <string>

#include "logic/TerminalLine.h"

namespace logic {

// Line feed ends a line; carriage return and escape are dropped, backspace takes the last character away,
// Ctrl-C abandons the line. The value ".." leaves the keyword, "dir" does nothing.
//
//     for (const char byte : block) {
//         switch (terminal.Put(byte)) {
//         case Terminal::Step::Execute: ... the value goes to the object; terminal.ObjectMissing() without
//         one case Terminal::Step::Answer: ... send terminal.Answer() case Terminal::Step::Abandon: ... drop
//         the rest of the block
class Terminal {
public:
    enum class Step {
        None,
        Execute, // a line is complete: carry out Address(), then Answer
        Answer,  // a line is complete that reaches no object
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
