// The terminals on the network and on the telephone: who may connect, what they are sent, what they may set.
#include "logic/remote/RemoteValues.h"
#include "logic/remote/TelephoneTerminal.h"
#include "logic/remote/TelnetFilter.h"
#include "logic/remote/Terminal.h"
#include "logic/remote/TerminalAdmission.h"
#include "logic/remote/TerminalLine.h"
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
            if (step == Step::Abandon) {
                return seen + "^C";
            }
        }
        if (step == Step::None) {
            continue;
        }
        if (step == Step::Execute) {
            const TerminalAddress& address = terminal.Address();
            seen += "[" + address.Object() + "|" + address.Keyword() + "|" + address.Value() +
                    (address.IsQuestion() ? "?]" : "]");
            if (address.Object().empty() || address.Object() == "NONE") {
                terminal.ObjectMissing();
            } else if constexpr (std::is_same_v<Kind, TelephoneTerminal>) {
                if (address.Keyword() == "none") {
                    terminal.KeywordMissing();
                }
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
        {"??\r", "[KNOB1|c|?]\rKNOB1*c="},
        {"\b\b?\r", "[KNOB1||?]\rKNOB1*"},
    });
}

TEST_CASE("a caller's line of 4,095 bytes is taken whole, a longer one not at all") {
    const std::string longest(4095 - 4, 'v');
    CheckSession<TelephoneTerminal>({
        {"A*b=" + longest + "\r", "[A|b|" + longest + "]\rA*b="},
        {longest + "w\b\r", "!\rA*b="},
        {std::string(5000, '\b') + "C*d=1\r", "[C|d|1]\rC*d="},
    });
}

TEST_CASE("telnet's commands never become text, wherever a packet ends") {
    const std::string stream = "a\xFF\xFD\x01"
                               "b\xFF\xF4\xFF\xFD\x06"                 // Ctrl-C: interrupt, timing mark
                               "c\xFF\xFA\x18x\xFF\xFF\xF0y\n\xFF\xF0" // a sub-negotiation with a byte 255
                               "d\xFF\xFF"
                               "e\xFF\xFB\xFF"
                               "f\xFF\xFE\n"
                               "g\xFF\xF1\xFF\xFC\xFA"
                               "h\xFF\xFD"s;
    const std::string text = "abcd\xFF"
                             "efgh"s;
    for (std::size_t first = 0; first <= stream.size(); ++first) {
        for (std::size_t second = first; second <= stream.size(); ++second) {
            TelnetFilter filter;
            const std::string seen = filter.Text(stream.substr(0, first)) +
                                     filter.Text(stream.substr(first, second - first)) +
                                     filter.Text(stream.substr(second));
            REQUIRE(seen == text);
        }
    }
    CHECK(TelnetFilter().Text("\xFF\xFAnever ended\r\n"s).empty());
    CHECK(TelnetFilter().Text(TelnetText("a\xFF\xFF\xFA"s)) == "a\xFF\xFF\xFA");
}

TEST_CASE("a value is shown as one line") {
    CHECK(ValueLine("") == "\r\n");
    CHECK(ValueLine("-6.5 dB") == "-6.5 dB\r\n");
    CHECK(ValueLine("a\r\nb\x1B[2J\x7F") == "a  b [2J \r\n");
}

TEST_CASE("networks that may connect") {
    const std::uint32_t addresses[] = {0xC0A80709, 0xC0A90001, 0x0A010203, 0x0A010204,
                                       0xFFFFFFFF, 0x7F000001, 0};
    const auto allowed = [&addresses](const char* text) {
        std::string result;
        for (const std::uint32_t address : addresses) {
            result += TerminalNetworks::Parse(text).value().Contain(address) ? '1' : '0';
        }
        return result;
    };
    const Row<std::string, const char*> rows[] = {{"", "1111111"},
                                                  {"none", "0000000"},
                                                  {"192.168.0.0/16,10.1.2.3", "1010000"},
                                                  {" 10.1.2.3 , 192.168.255.255/16 ", "1010000"},
                                                  {"10.1.2.2/31", "0010000"},
                                                  {"10.1.2.3/30,10.1.2.4/32", "0011000"},
                                                  {"128.0.0.0/1", "1100100"},
                                                  {"0.0.0.0", "0000001"},
                                                  {"255.255.255.255", "0000100"}};
    CheckRows(allowed, rows);
    CheckRefused(TerminalNetworks::Parse, " ", ",", "10.1.2.3,", ",10.1.2.3", "None", "none,10.1.2.3", "all",
                 "10.1.2", "10.1.2.3.4", "10.1.2.256", "10.1.2.3/33", "10.1.2.3/", "10.1.2.3/-1",
                 "10.1.2.3/8/8", "10.1.2.3 /8", "010.1.2.3", "10.1.2.+3", "10.1..3", "0x0a.1.2.3",
                 "10.1.2.3;10.1.2.4", "10.1.2.3 10.1.2.4", "localhost", "::1", "*", "10.1.2.0000000003");
}

TEST_CASE("those who were turned away are reported once a minute, all together") {
    RefusalCount refusals;
    const std::uint32_t start = 0xFFFF'FF00; // the count of ticks runs over
    CHECK(refusals.Report(start) == 0);
    refusals.Add();
    CHECK(refusals.TimeToReport(start) == 0U);
    CHECK(refusals.Report(start) == 1);
    CHECK_FALSE(refusals.TimeToReport(start).has_value());
    for (int i = 0; i < 1000; ++i) {
        refusals.Add();
    }
    CHECK(refusals.Report(start + 59'999) == 0);
    CHECK(refusals.TimeToReport(start + 59'999) == 1U);
    CHECK(refusals.Report(start + 60'000) == 1000);
}

TEST_CASE("files below the folder, and no others") {
    CheckTaken(IsPathBelow, "", ".", "knob.bmp", ".\\Controls\\Knob.bmp", "./a/b.c", "a..b\\..c",
               "console.bmp", "com.bmp", "com10", "lpt", "nulls\\xnul.bmp", "0x00ff8800", "a b.bmp", "...a");
    CheckTaken(ArePathsBelow, "", "a.bmp;.\\Controls\\b.bmp", "a.bmp;");
    CheckRefused(ArePathsBelow, "a.bmp;..\\x.bmp", "a.bmp; \\server\\x", "c:\\x.bmp;b.bmp");
    CheckRefused(IsPathBelow, "\\x.bmp", "/x.bmp", "\\\\server\\share\\x.bmp", "//server/x", " \\\\server\\x",
                 "c:\\x.bmp", "c:x.bmp", "x.bmp:stream", "\\\\?\\c:\\x", "..", "..\\x.bmp", "a\\..\\..\\x",
                 "a/../x", ".. \\x", "... \\x", " ..\\x", ". . .\\..", "NUL", "nul.bmp", "Con", "a\\COM1",
                 "com1.x.bmp", "LPT9 .bmp", "prn", "aux\\x", "COM\xB9", "con ", "CONIN$", "nul .txt");
}

TEST_CASE("durations, and click templates whose keyword is certain") {
    CheckTaken(IsRemoteDuration, "60:00", "1", "3600:00 x", "", "-5", "60:00 min");
    CheckRefused(IsRemoteDuration, "60:01", "61", "35791394", "202:53 min");
    CheckTaken(HasFixedKeyword, "", "Knob*value=%l", "%n*value=1", "a*b=%l*%c=", "plain", "A%n*b=%");
    CheckRefused(HasFixedKeyword, "%l=1", "%l", "%c*can=1", "a*%l=1", "a*%n=1", "%n%c*b=1", "%n*a%=1", "%n",
                 "Net%l*b");
}
