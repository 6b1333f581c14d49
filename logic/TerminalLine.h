// What the terminals on the network and on the telephone share: the text of the line that is being typed, and
// the address that a terminal remembers from line to line.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace logic {

// What a terminal shows when it is connected.
constexpr std::string_view terminalWelcome =
    "\r\n*********************\r\nWelcome to OSMIR\r\n*********************\r\n";
static_assert(terminalWelcome.size() == 66);

// The characters since the last line end, behind the prompt that was sent in answer to it.
class TerminalText {
public:
    static constexpr std::size_t capacity = 4096; // bytes, one of them for the end of the text

    // What is full takes no more characters.
    void Append(char character);
    // Takes the last character away, one of the prompt too; nothing when there is none.
    void Erase();
    void Clear() { length_ = 0; }
    // Empties the text without forgetting how long it was: what is appended next stands behind the characters
    // that no longer count, so that the text stays empty until it is set or erased down to its start.
    void Blank() { characters_[0] = '\0'; }
    // Text that does not fit is cut.
    void Set(std::string_view text);
    // Up to the first NUL.
    std::string_view View() const;
    std::size_t Length() const { return length_; }

private:
    std::array<char, capacity> characters_{};
    std::size_t length_ = 0;
};

// The object, the keyword and the value that a terminal addresses. Each is cut at the maximum.
class TerminalAddress {
public:
    static constexpr std::size_t maximumLength = 127; // bytes

    // Takes over the parts of a line NAME*KEYWORD=VALUE. An object or a keyword that it does not hold stays;
    // the value is always the line's, empty when it has none.
    void Read(std::string_view line);
    void Forget(); // all three
    void ForgetKeyword() { keyword_.clear(); }
    void ForgetValue() { value_.clear(); }
    void CapitaliseObject(); // a to z

    const std::string& Object() const { return object_; }
    const std::string& Keyword() const { return keyword_; }
    const std::string& Value() const { return value_; }

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
};

} // namespace logic
