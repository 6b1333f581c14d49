#include "logic/text/PropertyLine.h"
#include "tests/native/Tables.h"

using namespace logic;
using namespace std::string_literals;

TEST_CASE("property lines are split at the first equals sign and the last star in front of it") {
    using Parts = std::tuple<std::string, std::string, std::string, bool>; // object, keyword, value, has "="
    const auto split = [](const char* text) {
        const PropertyLine line = SplitPropertyLine(text);
        return Parts(line.object, line.keyword, line.value, line.hasEquals);
    };
    const Row<Parts, const char*> rows[] = {
        {"bitmap=", {"", "bitmap", "", true}},
        {"Strip1*Fader*value=-3.5", {"Strip1*Fader", "value", "-3.5", true}},
        {"Gain*function=AMP1*gain1;AMP2*gain=2", {"Gain", "function", "AMP1*gain1;AMP2*gain=2", true}},
        {"* =0.0", {"", " ", "0.0", true}},
        {"hello", {"", "", "hello", false}},
        {"Strip1*Fader*12", {"Strip1*Fader", "", "12", false}},
        {"", {"", "", "", false}},
        {"Gain 1* value = 2 ", {"Gain 1", " value ", " 2 ", true}}};
    CheckRows(split, rows);
}

TEST_CASE("a control header is read whole or not at all") {
    const std::optional<ControlHeader> header =
        ParseControlHeader("0x00000200  KNOB \"Gain 1\" 0x50010000 -32767,10,57,32767 \r");
    REQUIRE(header);
    CHECK(header->extendedStyle == 0x200);
    CHECK(header->className == "KNOB");
    CHECK(header->name == "Gain 1");
    CHECK(header->style == 0x50010000);
    CHECK(RectangleText(header->rectangle) == "-32767,10,57,32767");
    CHECK(ParseControlHeader("0x0 "s + std::string(64, 'K') + " \"\" 0xFFFFFFFF 0,0,0,0"));

    CheckRefused(
        ParseControlHeader, "", "0x00000000 KNOB Gain 0x50010000 10,10,57,57",
        "0x00000000 KNOB \"Gain 0x50010000 10,10,57,57", "0x00000000 KNOB \"Gain\"0x50010000 10,10,57,57",
        "0x00000000 KNOB \"Strip*Gain\" 0x50010000 10,10,57,57", "0x00000000 \"Gain\" 0x50010000 10,10,57,57",
        "0x00000000 KNOB \"Gain\" 0x150010000 10,10,57,57", "0x KNOB \"Gain\" 0x50010000 10,10,57,57",
        "0x00000000 KNOB \"Gain\" 0x50010000 10,10,57,57,57",
        "0x00000000 KNOB \"Gain\" 0x50010000 10,10,57,32768",
        "0x00000000 KNOB \"Gain\" 0x50010000 10,10,57,57 more",
        "0x00000000 " + std::string(65, 'K') + " \"Gain\" 0x50010000 10,10,57,57");
}

TEST_CASE("lists lose blanks and empty entries") {
    CHECK(SplitList(" AMP1*gain1 ;;AMP2*gain; ;") == std::vector<std::string>{"AMP1*gain1", "AMP2*gain"});
    CHECK(SplitList("").empty());
    CHECK(JoinList(std::vector<std::string>{"a", "", "b c"}) == "a;b c");
}

TEST_CASE("names are folded and cleaned") {
    CHECK(FoldName("AZ az 09 [\x8A\x8C\x8E\x9F \xC4\xD7\xDE \xDF\xF7") ==
          "az az 09 [\x9A\x9C\x9E\xFF \xE4\xD7\xFE \xDF\xF7");
    CHECK(CleanName("  Gain 1\t") == "Gain 1");
    CHECK(CleanName("a*b=c;d\"e%f\x01g\x7F") == "a_b_c_d_e_f_g_");
    CHECK(CleanName(" \t ").empty());
    CHECK(CleanName(std::string(62, 'a') + " bc") == std::string(62, 'a'));
}

namespace {

using Line = std::tuple<std::string, bool, std::size_t>; // its text, whether it is usable, its number

std::vector<Line> ReadBlocks(const std::vector<std::string>& blocks) {
    LineReader reader;
    std::vector<Line> lines;
    const auto read = [&] {
        std::string text;
        for (bool isUsable = false; reader.Next(text, isUsable);) {
            lines.emplace_back(text, isUsable, reader.LineNumber());
        }
    };
    for (const std::string& block : blocks) {
        reader.Feed(block);
        read();
    }
    reader.Finish();
    reader.Feed("late\n");
    read();
    return lines;
}

} // namespace

TEST_CASE("as many entries of a list fit as a value has room for") {
    std::string list(MAXIMUM_VALUE - 4, 'x');
    CHECK(EntriesThatFit("") == 0);
    CHECK(EntriesThatFit(list + "; a ;b") == 3); // blanks are not kept
    CHECK(EntriesThatFit(list + ";a;bc") == 2);
    CHECK(EntriesThatFit(list + "12345;a") == 0);
}

TEST_CASE("the line reader gives the same lines wherever the blocks are divided") {
    const std::string longest(LineReader::maximumLength, 'x');
    const std::string excerpt(LineReader::excerptLength, 'x');
    const struct {
        std::string bytes;
        std::vector<Line> lines;
    } rows[] = {
        {"", {}},
        {"\xEF\xBB\xBF", {}},
        {"\xEF\xBB", {{"\xEF\xBB", true, 1}}},
        {"\xEF\xBB\xBF"
         "a=1\r\n\nb\rc\nlast",
         {{"a=1", true, 1}, {"", true, 2}, {"b\rc", true, 3}, {"last", true, 4}}},
        {"a\n\xEF\xBB\xBF\r\n", {{"a", true, 1}, {"\xEF\xBB\xBF", true, 2}}},
        {"a\0b\nc\n"s, {{"a\0b"s, false, 1}, {"c", true, 2}}},
        {longest + "\r\n" + longest, {{longest, true, 1}, {longest, true, 2}}},
        {longest + "x\n" + longest + "x", {{excerpt, false, 1}, {excerpt, false, 2}}},
        {"\xEF\xBB\xBF" + longest + "\r\n" + longest + longest + "\r\ny\r\n",
         {{longest, true, 1}, {excerpt, false, 2}, {"y", true, 3}}},
    };
    for (const auto& row : rows) {
        const std::string& bytes = row.bytes;
        CAPTURE(bytes.size());
        CHECK(ReadBlocks({bytes}) == row.lines);
        bool same = true;
        for (std::size_t split = 0; split <= bytes.size(); ++split) {
            same = same && ReadBlocks({bytes.substr(0, split), bytes.substr(split)}) == row.lines;
        }
        CHECK(same);
    }
}
