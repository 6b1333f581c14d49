#include "logic/Terminal.h"

#include <doctest/doctest.h>

using namespace logic;
using namespace std::string_literals;

namespace {

// What a terminal does with blocks of bytes: "[object|keyword|value]" for each line that is carried out and
// the prompt behind each line. The object "NONE" is missing.
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
                seen += "[" + address.Object() + "|" + address.Keyword() + "|" + address.Value() + "]";
                if (address.Object().empty() || address.Object() == "NONE")
                    terminal.ObjectMissing();
            }
                [[fallthrough]];
            case Terminal::Step::Answer:
                seen += terminal.Answer();
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

TEST_CASE("a full line drops what follows and ends all the same") {
    Session session;
    CHECK(session.Type("A*" + std::string(5000, 'k') + "=1\n").size() == "[A||]A*"s.size() + 127);
    CHECK(session.Type("\x03") == "^C");
    CHECK(session.Type("A*b=" + std::string(9000, 'v') + "\bw\n") ==
          "[A|b|" + std::string(127, 'v') + "]A*b=");
    Terminal terminal;
    for (int i = 0; i < 10'000'000; ++i)
        terminal.Put('x');
    CHECK(terminal.Put('\n') == Terminal::Step::Execute);
    CHECK(terminal.Address().Value() == std::string(127, 'x'));
}

TEST_CASE("names and keywords that are too long are cut") {
    Session session;
    const std::string n(127, 'N'), k(127, 'k'), v(127, 'v');
    CHECK(session.Type(n + "n*" + k + "k=" + v + "v\n") ==
          "[" + n + "|" + k + "|" + v + "]" + n + "*" + k + "=");
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
