// The text that panel files, device files and dialogs are made of: property lines, control headers,
// rectangles, lists and names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace logic {

// Bytes of the longest value that a keyword can have.
constexpr std::size_t MAXIMUM_VALUE = 4095;

// One line `[object*]keyword=value`. The views lie inside the line that was split, which must outlive them.
struct PropertyLine {
    std::string_view object;  // before the last '*' in front of the first '='; empty without one
    std::string_view keyword; // between that '*' and the first '='
    std::string_view value;   // all behind the first '=', further '*' and '=' included
    bool hasEquals;           // false: the keyword is empty and the value stands behind the last '*'
};

// Splits any text; nothing is trimmed, since the keyword of the default value is a single blank.
PropertyLine SplitPropertyLine(std::string_view line);

// Whether the line empties a list of bindings: `connection=`, `function=`, `function2=`. Every control is
// saved with such lines, those that know no such list as well.
bool IsEmptyBinding(std::string_view keyword, std::string_view value);

// Pixels. The order of the edges is not checked: whoever sizes a window by it deals with a reversed one.
struct Rectangle {
    std::int32_t left, top, right, bottom;
};

// Reads "left,top,right,bottom", blanks around the numbers allowed. Nothing when a number is missing,
// something follows, or a coordinate lies beyond +-32767, which is as far as window messages can express one.
std::optional<Rectangle> ParseRectangle(std::string_view text);
std::string RectangleText(const Rectangle& rectangle);

// The value of a control line: what is needed to create the control's window.
struct ControlHeader {
    std::uint32_t extendedStyle;
    std::string className; // 1 to 64 characters, no blanks
    std::string name;      // own name; may hold blanks and may be empty, but no '"' and no '*'
    std::uint32_t style;
    Rectangle rectangle; // in the parent's client area
};

// Reads `0x00000000 KNOB "Gain 1" 0x50010000 10,10,57,57`, fields separated by any number of blanks, blanks
// at the end allowed. Nothing when any field is missing or damaged or something follows.
std::optional<ControlHeader> ParseControlHeader(std::string_view value);

// The entries of a function or connection list: separated by ';', blanks around them trimmed, empty ones
// skipped.
std::vector<std::string> SplitList(std::string_view text);

// How many of the entries, from the front, a value has room for.
std::size_t EntriesThatFit(std::string_view text);

// The list text of a range of strings; empty entries are left out. SplitList gives the same entries back as
// long as they hold no ';' and have no blanks at their ends.
template <class Range>
std::string JoinList(const Range& entries) {
    std::string text;
    for (const auto& entry : entries) {
        const std::string_view piece(entry);
        if (piece.empty()) {
            continue;
        }
        if (!text.empty()) {
            text += ';';
        }
        text += piece;
    }
    return text;
}

// The form in which object names are compared: ASCII and Windows-1252 letters in lower case.
std::string FoldName(std::string_view name);
// That of an address OBJECT*keyword: keywords keep their case. Without a '*' all of it is a name.
std::string FoldAddress(std::string_view address);

// An own name that is safe in property text: blanks at both ends trimmed, control characters and * = ; " %
// replaced by '_', at most 63 characters. May be empty. Cleaning a clean name changes nothing.
std::string CleanName(std::string_view name);

// Cuts a stream of bytes into lines that end with "\r\n" or "\n"; a last line needs no end. A UTF-8
// byte-order mark at the start is skipped. How the bytes are divided among the calls of Feed makes no
// difference.
//
//     while (there are bytes) { reader.Feed(bytes); while (reader.Next(line, usable)) ...; }
//     reader.Finish(); while (reader.Next(line, usable)) ...;
//
// Used like this it never holds more than one fed block and one line.
class LineReader {
public:
    // Longest usable line in bytes, without its line end: the longest value, and as much again for what
    // stands in front of it.
    static constexpr std::size_t maximumLength = 2 * MAXIMUM_VALUE + 1;
    // What is left of a line that is not usable, for a message about it.
    static constexpr std::size_t excerptLength = 64;

    // What is left of a line that is not usable can be more, up to all of it.
    explicit LineReader(std::size_t left = excerptLength) : leftLength_(left) {}

    void Feed(std::string_view bytes);
    // There are no further bytes; later ones are ignored.
    void Finish();
    // The next complete line, false when more bytes are needed or all have been read. A line that is too long
    // or holds a NUL is not usable; the text is then its beginning.
    bool Next(std::string& line, bool& usable);
    // The number of the line that Next gave last, counting all lines from 1; 0 before the first.
    std::size_t LineNumber() const { return lineNumber_; }
    // The line that Next gave last was longer than what is left of it.
    bool WasCut() const { return wasCut_; }

private:
    bool SkipByteOrderMark();

    std::size_t leftLength_;
    bool wasCut_ = false;

    std::string buffer_;
    std::size_t position_ = 0; // start of the current line in the buffer
    std::size_t scanned_ = 0;  // up to here the current line is known to hold no line end
    std::string excerpt_;      // beginning of an overlong line of which the rest is being dropped
    bool dropping_ = false;
    bool started_ = false; // the place of a byte-order mark is passed
    bool finished_ = false;
    std::size_t lineNumber_ = 0;
};

} // namespace logic
