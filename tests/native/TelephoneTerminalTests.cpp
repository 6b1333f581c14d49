#include "logic/TelephoneTerminal.h"

#include <doctest/doctest.h>

using namespace logic;
using namespace std::string_literals;

namespace {

// What a terminal does with the bytes: "[object|keyword|value]" for each line, "?" behind a value that is
// asked for, "!" for a line that is refused, and the answer. The object "NONE" is missing, and so is every
// keyword "none".
std::string Type(TelephoneTerminal& terminal, std::string_view bytes) {
    std::string seen;
    for (const char byte : bytes) {
        const TelephoneTerminal::Step step = terminal.Put(byte);
        if (step == TelephoneTerminal::Step::None)
            continue;
        if (step == TelephoneTerminal::Step::Refuse) {
            seen += "!" + terminal.Answer();
            continue;
        }
        const TerminalAddress& address = terminal.Address();
        seen += "[" + address.Object() + "|" + address.Keyword() + "|" + address.Value() +
                (address.IsQuestion() ? "?]" : "]");
        if (address.Object().empty() || address.Object() == "NONE")
            terminal.ObjectMissing();
        else if (address.Keyword() == "none")
            terminal.KeywordMissing();
        seen += terminal.Answer();
    }
    return seen;
}

} // namespace

TEST_CASE("a caller's lines begin with the prompt, which backspace takes away") {
    const struct {
        std::string typed, seen;
    } rows[] = {
        {"KNOB1*GAIN=3\n", ""},
        {"\r", "[KNOB1|GAIN|3]\rKNOB1*GAIN="},
        {"4\r\n", "[KNOB1|GAIN|4]\rKNOB1*GAIN="},
        {"-5x\b\r", "[KNOB1|GAIN|-5]\rKNOB1*GAIN="},
        {"\r", "[KNOB1|GAIN|]\rKNOB1*GAIN="},
        {"\b6\r", "[KNOB1||GAIN6]\rKNOB1*"}, // no "=" is left, and nothing is remembered beside the prompt
        {"Gain=x*y=z\r", "[KNOB1|Gain|x*y=z]\rKNOB1*Gain="},
        {std::string(9, '\b') + "2*Gain=7\r", "[KN2|Gain|7]\rKN2*Gain="},
        {std::string(9, '\b') + "..\r", "[||..]\r*"}, // no way up and no directory here
        {"dir\r", "[||dir]\r*"},
        {"knob1*\r", "[knob1||]\rknob1*"}, // as it was typed
        {"none=1\r", "[knob1|none|1]\rknob1*"},
        {"=2\r", "[knob1||2]\rknob1*"},
        {std::string(90, '\b') + "Strip*Fader*value=\x1b\x03-6\r",
         "[Strip*Fader|value|\x1b\x03-6]\rStrip*Fader*value="},
        {std::string(90, '\b') + "NONE*a=1\r", "[NONE|a|1]\r*"},
        {"b=2\r", "[|b|2]\r*"},
        {"KNOB1*c=3\r", "[KNOB1|c|3]\rKNOB1*c="}, // behind the star or in its place
        {std::string(90, '\b') + "*KNOB1*c=3\r", "[KNOB1|c|3]\rKNOB1*c="},
        {"\0004\r"s, "[KNOB1|c|]\rKNOB1*c="}, // a NUL ends the text
        {"?\r", "[KNOB1|c|?]\rKNOB1*c="},
        {"??\r", "[KNOB1|c|?]\rKNOB1*c="},
        {"\b\b?\r", "[KNOB1||?]\rKNOB1*"},
        {"none=?\r", "[KNOB1|none|?]\rKNOB1*"},
    };
    TelephoneTerminal terminal;
    for (const auto& row : rows) {
        CAPTURE(row.typed);
        CHECK(Type(terminal, row.typed) == row.seen);
    }
}

TEST_CASE("a caller's line of 4,095 bytes is taken whole, a longer one not at all") {
    TelephoneTerminal terminal;
    const std::string longest(4095 - 4, 'v');
    CHECK(Type(terminal, "A*b=" + longest + "\r") == "[A|b|" + longest + "]\rA*b=");
    CHECK(Type(terminal, longest + "\r") == "[A|b|" + longest + "]\rA*b=");
    CHECK(Type(terminal, longest + "w\b\r") == "!\rA*b=");
    CHECK(Type(terminal, "1\r") == "[A|b|1]\rA*b=");
    CHECK(Type(terminal, std::string(1'000'000, 'x') + "\r") == "!\rA*b=");
    CHECK(Type(terminal, std::string(5000, '\b') + "C*d=1\r") == "[C|d|1]\rC*d=");
}
