// Telnet's own bytes, who may connect, and what values may come from another machine.
#include "logic/RemoteValues.h"
#include "logic/TelnetFilter.h"
#include "logic/TerminalAdmission.h"
#include "logic/TerminalLine.h"
#include "tests/native/Tables.h"

using namespace logic;
using namespace std::string_literals;

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
        for (const std::uint32_t address : addresses)
            result += TerminalNetworks::Parse(text).value().Contain(address) ? '1' : '0';
        return result;
    };
    const Row<std::string, const char*> rows[] = {
        {"", "1111111"},
        {"none", "0000000"},
        {" none ", "0000000"},
        {"192.168.0.0/16,10.1.2.3", "1010000"},
        {" 10.1.2.3 , 192.168.255.255/16 ", "1010000"},
        {"10.1.2.2/31", "0010000"},
        {"10.1.2.3/30,10.1.2.4/32", "0011000"},
        {"128.0.0.0/1", "1100100"},
        {"0.0.0.0/0", "1111111"},
        {"0.0.0.0", "0000001"},
        {"255.255.255.255", "0000100"},
    };
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
    CHECK_FALSE(refusals.TimeToReport(start).has_value());
    refusals.Add();
    CHECK(refusals.TimeToReport(start) == 0U);
    CHECK(refusals.Report(start) == 1);
    CHECK_FALSE(refusals.TimeToReport(start).has_value());
    for (int i = 0; i < 1000; ++i)
        refusals.Add();
    CHECK(refusals.Report(start + 59'999) == 0);
    CHECK(refusals.TimeToReport(start + 59'999) == 1U);
    CHECK(refusals.Report(start + 60'000) == 1000);
    CHECK(refusals.Report(start + 500'000) == 0);
    refusals.Add();
    CHECK(refusals.Report(start + 500'001) == 1);
}

TEST_CASE("files below the folder, and no others") {
    CheckTaken(IsPathBelow, "", ".", "knob.bmp", ".\\Controls\\Knob.bmp", "./a/b.c", "a..b\\..c",
               "console.bmp", "com.bmp", "com10", "lpt", "nulls\\xnul.bmp", "0x00ff8800", "a b.bmp", "...a");
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
