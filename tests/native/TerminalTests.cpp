#include "logic/Terminal.h"

#include <doctest/doctest.h>

using namespace logic;
using namespace std::string_literals;

namespace {

// What a terminal does with blocks of bytes: "[object|keyword|value]" for each line that is carried out, the
// value followed by "?" when it is asked for, "!" for one that is refused, and the prompt behind each line.
// The object "NONE" is missing.
class Session {
public:
    std::string Type(std::string_view block) {
        std::string seen;
        for (const char byte : block) {
            switch (terminal.Put(byte)) {
            case Terminal::Step::None:
                break;
            case Terminal::Step::Execute: {
                const TerminalAddress& address = terminal.Address();
                seen += "[" + address.Object() + "|" + address.Keyword() + "|" + address.Value() +
                        (address.IsQuestion() ? "?]" : "]");
                if (address.Object().empty() || address.Object() == "NONE")
                    terminal.ObjectMissing();
            }
                [[fallthrough]];
            case Terminal::Step::Answer:
                seen += terminal.Answer();
                break;
            case Terminal::Step::Refuse:
                seen += "!" + terminal.Answer();
                break;
            case Terminal::Step::Abandon:
                return seen + "^C";
            }
        }
        return seen;
    }

    Terminal terminal;
};

} // namespace

TEST_CASE("a terminal remembers object and keyword and answers each line with them") {
    const struct {
        std::string typed, seen;
    } rows[] = {
        {"KNOB1*GAIN=3\n", "[KNOB1|GAIN|3]KNOB1*GAIN="},
        {"4\r\n", "[KNOB1|GAIN|4]KNOB1*GAIN="},
        {"\n", "[KNOB1|GAIN|]KNOB1*GAIN="}, // an empty value is one
        {"..\n", "KNOB1*"},
        {"..\n", "KNOB1*"},
        {"\n", "[KNOB1||]KNOB1*"},
        {"value=-3.5 dB=x*y\n", "[KNOB1|value|-3.5 dB=x*y]KNOB1*value="},
        {"DiR\n", "KNOB1*value="},
        {"\x03rest\n", "^C"},
        {"7\n", "[KNOB1|value|7]KNOB1*value="}, // the address outlives the line
        {"\x03", "^C"},
        {"strip1*fader*value=\x1b-\r6\n", "[STRIP1*FADER|value|-6]STRIP1*FADER*value="},
        {"\x03", "^C"},
        {"knob\xE4*value=..\n", "knob\xE4*"},
        {"1\n", "[KNOB\xE4||1]KNOB\xE4*"},
        {"\x03", "^C"},
        {"none*value=1\n", "[NONE|value|1]"},
        {"2\n", "[||2]"},
        {"keyword=3\n", "[|keyword|3]"},
        {"keyword=..\n", ""},
        {"a*b=dir\n", "a*b="},
        {"?\n", "[A|b|?]A*b="}, // a lone question mark asks
        {"??\n", "[A|b|?]A*b="},
        {"???\n", "[A|b|???]A*b="},
        {" ?\n", "[A|b| ?]A*b="},
        {"..\n", "A*"},
        {"?\n", "[A||?]A*"},
    };
    Session session;
    for (const auto& row : rows) {
        CAPTURE(row.typed);
        CHECK(session.Type(row.typed) == row.seen);
    }
}

TEST_CASE("backspace takes characters of the prompt too and stops at the start of the line") {
    Session session;
    CHECK(session.Type("\b\bA*b=1x\b\n") == "[A|b|1]A*b=");
    CHECK(session.Type("\b\bc=2\n") == "[A|c|2]A*c=");
    CHECK(session.Type(std::string(5000, '\b') + "B*d=3\n") == "[B|d|3]B*d=");
}

TEST_CASE("a line of 4,095 bytes is taken whole, a longer one not at all") {
    Session session;
    const std::string longest(4095 - 4, 'v'); // behind the prompt
    CHECK(session.Type("A*b=" + longest + "\n") == "[A|b|" + longest + "]A*b=");
    CHECK(session.Type(longest + "\n") == "[A|b|" + longest + "]A*b=");
    CHECK(session.Type(longest + "w\n") == "!A*b=");
    CHECK(session.Type("1\n") == "[A|b|1]A*b=");
    CHECK(session.Type(longest + "w\b\bx\n") == "!A*b="); // what was dropped cannot be taken back
    CHECK(session.Type(longest + "w\x03") == "^C");
    CHECK(session.Type("C*d=2\n") == "[C|d|2]C*d=");
    // A prompt that is longer than any line is forgotten: nothing is addressed by a part of it.
    CHECK(session.Type("\x03") == "^C");
    CHECK(session.Type(std::string(4000, 'o') + "*=..\n").size() == 4001);
    CHECK(session.Type("\x03") == "^C");
    CHECK(session.Type(std::string(94, 'k') + "=dir\n") == "[||]");
    CHECK(session.Type("1\n") == "[||1]");
    for (int i = 0; i < 10'000'000; ++i)
        session.terminal.Put('x');
    CHECK(session.Type("\x03") == "^C");
    CHECK(session.Type("e*f=3\n") == "[E|f|3]E*f=");
}

TEST_CASE("a line that another terminal began does not count") {
    Session session;
    CHECK(session.Type("A*b=1\n") == "[A|b|1]A*b=");
    session.terminal.Restart();
    CHECK(session.Type("C*d=2\n") == "[A|b|]A*b="); // behind the prompt of the terminal before
    CHECK(session.Type("3\n") == "[A|b|3]A*b=");
    session.terminal.Restart();
    CHECK(session.Type("\x03") == "^C");
    CHECK(session.Type("C*d=2\n") == "[C|d|2]C*d=");
    session.terminal.Restart();
    CHECK(session.Type(std::string(4, '\b') + "E*f=4\n") == "[E|f|4]E*f=");
    CHECK(session.Type("a\0b\n"s) == "[E|f|a]E*f="); // a NUL ends the text
}

TEST_CASE("the prompt of a telephone always has a star") {
    TerminalAddress address;
    CHECK(address.StarredPrompt() == "*");
    CHECK(address.Prompt() == "");
    address.Read("knob*value=1");
    CHECK(address.StarredPrompt() == "knob*value=");
    CHECK(address.KeywordLine() == "value=1");
    address.ForgetKeyword();
    address.ForgetValue();
    CHECK(address.StarredPrompt() == "knob*");
    CHECK(address.Value() == "");
}
