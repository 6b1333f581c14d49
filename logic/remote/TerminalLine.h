// What the terminals on the network and on the telephone share: the text of the line that is being typed, and
// the address that a terminal remembers from line to line.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace logic {

// What a terminal on the network shows when it is connected. On the telephone the prompt follows.
constexpr std::string_view TERMINAL_WELCOME =
    "\r\n*********************\r\nWelcome to OSMIR\r\n*********************\r\n";
static_assert(TERMINAL_WELCOME.size() == 66);

// The characters since the last line end, behind the prompt that was sent in answer to it.
class TerminalText {
public:
    static constexpr std::size_t maximumLength = 4095; // bytes

    // What is full takes no more characters. It is then too long until it is cleared or set.
    void Append(char character);
    // Takes the last character away, one of the prompt too; nothing when there is none.
    void Erase();
    void Clear() { Set({}); }
    // Empties the text without forgetting how long it was: what is appended next stands behind the characters
    // that no longer count, so that the text stays empty until it is set or erased down to its start.
    void Blank() { characters_[0] = '\0'; }
    // Text that does not fit is cut.
    void Set(std::string_view text);
    // Something was dropped: what is left is not what was typed.
    bool IsTooLong() const { return isTooLong_; }
    // Up to the first NUL.
    std::string_view View() const;
    std::size_t Length() const { return length_; }

private:
    std::array<char, maximumLength + 1> characters_{}; // one for the end that Blank sets
    std::size_t length_ = 0;
    bool isTooLong_ = false;
};

// The object, the keyword and the value that a terminal addresses.
class TerminalAddress {
public:
    // Takes over the parts of a line NAME*KEYWORD=VALUE. An object or a keyword that it does not hold stays;
    // the value is always the line's, empty when it has none. A question mark alone asks for the value; two
    // are one that is set. An address whose prompt would leave no room in a line is forgotten.
    void Read(std::string_view line);
    void Forget(); // all three
    void ForgetKeyword() { keyword_.clear(); }
    void ForgetValue();
    void CapitaliseObject(); // a to z

    const std::string& Object() const { return object_; }
    const std::string& Keyword() const { return keyword_; }
    const std::string& Value() const { return value_; } // empty where it is asked for
    bool IsQuestion() const { return isQuestion_; }

    // "NAME*KEYWORD=", without the keyword "NAME*", without an object "KEYWORD=" or nothing.
    std::string Prompt() const;
    // The same, but the star stands there without an object too.
    std::string StarredPrompt() const;
    // "KEYWORD=VALUE"
    std::string KeywordLine() const { return keyword_ + "=" + value_; }

private:
    std::string KeywordPart() const { return keyword_.empty() ? "" : keyword_ + "="; }

    std::string object_;
    std::string keyword_;
    std::string value_;
    bool isQuestion_ = false;
};

// What a terminal shows of a value that was asked for: one line, control characters as blanks, and its end.
std::string ValueLine(std::string value);

} // namespace logic
