// Texts of several lines, and how they stand in one.
#include "logic/text/Lines.h"
#include "tests/native/Tables.h"

using namespace logic;

TEST_CASE("line ends and backslashes are escaped, and come back") {
    const Row<std::string, const char*> escaped[] = {
        {"", ""}, {"a\nb", "a\\nb"}, {"\n\\\n", "\\n\\\\\\n"}, {"\\n", "\\\\n"}, {"C:\\new", "C:\\\\new"}};
    CheckRows(EscapeLines, escaped);
    for (const auto& row : escaped) {
        CHECK(UnescapeLines(row.result) == std::get<0>(row.arguments));
    }
    const Row<std::string, const char*> read[] = {
        {"a\\tb", "a\\tb"}, {"a\\", "a\\"}, {"a\r\nb\nc\td\re", "a\nb\nc d e"}};
    CheckRows(UnescapeLines, read);
    CHECK(WithReturns("a\n\nb") == "a\r\n\r\nb");
    CHECK(WithoutReturns("a\r\n\r\nb") == "a\n\nb");
}

TEST_CASE("of a log the oldest lines go, of a text its end") {
    const Row<std::string_view, const char*, int, int> newest[] = {
        {{"one\ntwo\nthree", 15, 20}, "one\ntwo\nthree"},
        {{"one\ntwo\nthree", 14, 20}, "two\nthree"},
        {{"one\ntwo\nthree", 15, 14}, "two\nthree"},
        {{"one\ntwo\nthree", 4, 20}, "hree"},
        {{"a\\\\b", 9, 3}, "\\b"},
        {{"\n\n\n", 2, 9}, "\n"},
        {{"abc", 0, 9}, ""}};
    CheckRows(NewestLines, newest);
    const Row<std::string_view, const char*, int> front[] = {
        {{"abc", 3}, "abc"}, {{"a\nb", 3}, "a\n"}, {{"a\\", 2}, "a"}, {{"abc", 0}, ""}};
    CheckRows(FrontThatFits, front);
}
