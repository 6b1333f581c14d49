// The terminals on the network and on the telephone.
#include "logic/TelephoneTerminal.h"
#include "logic/Terminal.h"
#include "tests/native/Tables.h"

using namespace logic;
using namespace std::string_literals;

namespace {

// What a terminal does with the bytes: "[object|keyword|value]" for each line that is carried out, the value
// followed by "?" when it is asked for, "!" for one that is refused, and the answer behind each line. The
// object "NONE" is missing, and on the telephone every keyword "none".
template <class Kind>
std::string Type(Kind& terminal, std::string_view bytes) {
    using Step = typename Kind::Step;
    std::string seen;
    for (const char byte : bytes) {
        const Step step = terminal.Put(byte);
        if constexpr (std::is_same_v<Kind, Terminal>) {
            if (step == Step::Abandon)
                return seen + "^C";
        }
        if (step == Step::None)
            continue;
        if (step == Step::Execute) {
            const TerminalAddress& address = terminal.Address();
            seen += "[" + address.Object() + "|" + address.Keyword() + "|" + address.Value() +
                    (address.IsQuestion() ? "?]" : "]");
            if (address.Object().empty() || address.Object() == "NONE")
                terminal.ObjectMissing();
            else if constexpr (std::is_same_v<Kind, TelephoneTerminal>) {
                if (address.Keyword() == "none")
                    terminal.KeywordMissing();
            }
        }
        seen += (step == Step::Refuse ? "!" : "") + terminal.Answer();
    }
    return seen;
}

// One terminal is given all texts; what it does with each.
template <class Kind>
void CheckSession(std::initializer_list<std::pair<std::string, std::string>> rows) {
    Kind terminal;
    for (const auto& row : rows) {
        INFO("typed: ", row.first.substr(0, 80));
        CHECK(Type(terminal, row.first) == row.second);
    }
}

} // namespace

TEST_CASE("a terminal remembers object and keyword and answers each line with them") {
    CheckSession<Terminal>({
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
    });
}

TEST_CASE("backspace takes characters of the prompt too and stops at the start of the line") {
    CheckSession<Terminal>({
        {"\b\bA*b=1x\b\n", "[A|b|1]A*b="},
        {"\b\bc=2\n", "[A|c|2]A*c="},
        {std::string(5000, '\b') + "B*d=3\n", "[B|d|3]B*d="},
    });
}

TEST_CASE("a line of 4,095 bytes is taken whole, a longer one not at all") {
    const std::string longest(4095 - 4, 'v'); // behind the prompt
    const std::string object(4000, 'o');
    CheckSession<Terminal>({
        {"A*b=" + longest + "\n", "[A|b|" + longest + "]A*b="},
        {longest + "\n", "[A|b|" + longest + "]A*b="},
        {longest + "w\n", "!A*b="},
        {"1\n", "[A|b|1]A*b="},
        {longest + "w\b\bx\n", "!A*b="}, // what was dropped cannot be taken back
        {longest + "w\x03", "^C"},
        {"C*d=2\n", "[C|d|2]C*d="},
        // A prompt that is longer than any line is forgotten: nothing is addressed by a part of it.
        {"\x03", "^C"},
        {object + "*=..\n", object + "*"},
        {"\x03", "^C"},
        {std::string(94, 'k') + "=dir\n", "[||]"},
        {"1\n", "[||1]"},
        {std::string(10'000'000, 'x') + "\x03", "^C"},
        {"e*f=3\n", "[E|f|3]E*f="},
    });
}

TEST_CASE("a line that another terminal began does not count") {
    Terminal terminal;
    CHECK(Type(terminal, "A*b=1\n") == "[A|b|1]A*b=");
    terminal.Restart();
    CHECK(Type(terminal, "C*d=2\n") == "[A|b|]A*b="); // behind the prompt of the terminal before
    CHECK(Type(terminal, "3\n") == "[A|b|3]A*b=");
    terminal.Restart();
    CHECK(Type(terminal, "\x03") == "^C");
    CHECK(Type(terminal, "C*d=2\n") == "[C|d|2]C*d=");
    terminal.Restart();
    CHECK(Type(terminal, std::string(4, '\b') + "E*f=4\n") == "[E|f|4]E*f=");
    CHECK(Type(terminal, "a\0b\n"s) == "[E|f|a]E*f="); // a NUL ends the text
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

TEST_CASE("a caller's lines begin with the prompt, which backspace takes away") {
    CheckSession<TelephoneTerminal>({
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
    });
}

TEST_CASE("a caller's line of 4,095 bytes is taken whole, a longer one not at all") {
    const std::string longest(4095 - 4, 'v');
    CheckSession<TelephoneTerminal>({
        {"A*b=" + longest + "\r", "[A|b|" + longest + "]\rA*b="},
        {longest + "\r", "[A|b|" + longest + "]\rA*b="},
        {longest + "w\b\r", "!\rA*b="},
        {"1\r", "[A|b|1]\rA*b="},
        {std::string(1'000'000, 'x') + "\r", "!\rA*b="},
        {std::string(5000, '\b') + "C*d=1\r", "[C|d|1]\rC*d="},
    });
}
