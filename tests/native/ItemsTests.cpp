// Lists to choose from.
#include "logic/text/Items.h"
#include "tests/native/Tables.h"

using namespace logic;

namespace {

std::string Shown(const Items& items) {
    std::string text;
    for (std::size_t i = 0; i < items.Size(); ++i) {
        text += "<" + std::string(items.Caption(i)) + (items.HasValue(i) ? "|" : "/") +
                std::string(items.Value(i)) + "|" + std::to_string(items.Number(i)) + ">";
    }
    return text;
}

} // namespace

TEST_CASE("entries of a list have a caption, a value and a number") {
    const Row<std::string, const char*> lists[] = {
        {"", ""},
        {" ; ;", ""},
        {"Off=0;On=1", "<Off|0|0><On|1|1>"},
        {"one;;three; four = -4 ", "<one/one|1><three/three|2><four|-4|-4>"},
        {"E=m=c", "<E=m|c|1>"},
        {"a\\=b;a\\=b=2;a=b\\=2", "<a=b/a=b|1><a=b|2|2><a|b=2|3>"},
        {"a\\;b;c\\\\;d\\", "<a;b/a;b|1><c\\/c\\|2><d\\/d\\|3>"},
        {"C:\\dir\\n=\\\\x", "<C:\\dir\\n|\\x|1>"},
        {"\\\\=1;\\\\\\=1", "<\\|1|1><\\=1/\\=1|2>"},
        {"=5;=", "<|5|5><||2>"},
        {"x=2147483648;y=1.5;z=1 2", "<x|2147483648|1><y|1.5|2><z|1 2|3>"},
        {"a\nb=1", "<a\nb|1|1>"}};
    CheckRows([](const char* text) { return Shown(Items::OfList(text)); }, lists);
    const Row<std::string, const char*> files[] = {
        {"Opening=7\r\n\r\n \nA; b\\;c\nlast", "<Opening|7|7><A; b;c/A; b;c|2><last/last|3>"}, {"\n\n", ""}};
    CheckRows([](const char* text) { return Shown(Items::OfLines(text)); }, files);
}

TEST_CASE("an entry is found by its value, and what is written is read") {
    const Items items = Items::OfList("one=1;two;other=1;=two");
    CHECK(items.IndexOfValue("1") == 0U);
    CHECK(items.IndexOfValue("two") == 1U);
    CHECK_FALSE(items.IndexOfValue("one"));
    CHECK(items.IsNumbered(0));
    CHECK_FALSE(items.IsNumbered(1));
    CHECK(items.Text() == "one=1;two;other=1;=two");
    CHECK(ItemText("a;b=c\\n", "x=") == "a\\;b\\=c\\\\n=x\\=");
    CHECK(ItemText("", "") == "=");
}

TEST_CASE("a file of many entries is read in one piece") {
    std::string text;
    for (int i = 0; i < 100'000; ++i) {
        text += "Entry " + std::to_string(i) + "=" + std::to_string(2 * i) + "\r\n";
    }
    const Items items = Items::OfLines(text);
    CHECK(items.Size() == 100'000);
    CHECK(items.Caption(99'999) == "Entry 99999");
    CHECK(items.Number(99'999) == 199'998);
}
