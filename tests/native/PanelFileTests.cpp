// What lies in and beside panel files: layers, pictures, copies for recovery, and values on opening.
#include "logic/controls/Layers.h"
#include "logic/devices/OpeningValues.h"
#include "logic/drawing/BitmapFile.h"
#include "logic/editing/RecoveryCopy.h"
#include "tests/native/Tables.h"

using namespace logic;

TEST_CASE("layer lists are read and written") {
    CHECK(ParseLayers("u1,u5") == 0x11U);
    CHECK(ParseLayers(" U64 ,, u1,u1") == 0x8000000000000001U);
    CHECK(ParseLayers("") == 0U);
    CHECK(ParseLayers(" , ") == 0U);
    CheckRefused(ParseLayers, "u", "u0", "u65", "u01", "u+1", "u-1", "v1", "1", "u1 u2", "u1;u2",
                 "u99999999999");
    CHECK(LayersText(0).empty());
    CHECK(LayersText(0x8000000000000010U) == "u5,u64");
}

namespace {

std::string With(std::string bytes, std::size_t place, std::uint32_t number) {
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[place + i] = static_cast<char>(number >> (8 * i));
    }
    return bytes;
}

// 4 x 3 pixels, with a palette where there is one.
std::string BitmapFile(int bits) {
    const int colours = bits <= 8 ? 1 << bits : 0;
    const std::uint32_t pixels = static_cast<std::uint32_t>(54 + colours * 4);
    std::string bytes(pixels + static_cast<std::uint32_t>((4 * bits + 31) / 32 * 4 * 3), '\0');
    bytes.replace(0, 2, "BM");
    const std::uint32_t depth = 1 | static_cast<std::uint32_t>(bits) << 16;
    for (const auto& [place, number] :
         {std::pair(10U, pixels), {14U, 40U}, {18U, 4U}, {22U, 3U}, {26U, depth}}) {
        bytes = With(bytes, place, number);
    }
    return bytes;
}

} // namespace

TEST_CASE("names of layers are read in any order and written in theirs") {
    const auto written = [](const char* text) {
        const auto names = ParseLayerNames(text);
        return names ? LayerNamesText(*names) : "refused";
    };
    CHECK(written("") == "");
    CHECK(written(" U64 = Last one ;; u1=a=b; u2= ;") == "u1=a=b;u64=Last one");
    for (const char* bad :
         {"u1", "Mix", "u0=Mix", "u65=Mix", "u1,u2=Mix", "=Mix", "u1=Mix;U1=EQ", "u1=;u1="}) {
        INFO(std::string(bad));
        CHECK(written(bad) == "refused");
    }
}

TEST_CASE("the headers of a bitmap file must fit the file") {
    for (const int bits : {1, 4, 8, 16, 24, 32}) {
        CAPTURE(bits);
        const std::string bytes = BitmapFile(bits);
        CHECK(IsSoundBitmapFile(bytes));
        CHECK(IsSoundBitmapFile(With(bytes, 22, static_cast<std::uint32_t>(-3)))); // from the top down
        CHECK_FALSE(IsSoundBitmapFile(bytes.substr(0, bytes.size() - 1)));
        for (std::size_t length = 2; length < 54; ++length) {
            CHECK_FALSE(IsSoundBitmapFile(bytes.substr(0, length)));
        }
        const struct {
            std::size_t place;
            std::vector<std::uint32_t> numbers;
        } bad[] = {{10, {53, 0xFFFFFFFF}}, // the pixels begin in the header or behind the end
                   {14, {39}},             // size of the header
                   {18, {0, 0x80000000, 0x7FFFFFFF, 16385}}, // width
                   {22, {0, 0x80000000, 0x7FFFFFFF, 16385}}, // height
                   {26, {1 | 7 << 16}},                      // bits a pixel
                   {46, {257, 0xFFFFFFFF}}};                 // colours
        for (const auto& field : bad) {
            for (const std::uint32_t number : field.numbers) {
                CHECK_FALSE(IsSoundBitmapFile(With(bytes, field.place, number)));
            }
        }
    }
    CheckTaken(IsSoundBitmapFile, "", "B", "\x89PNG", "GIF89a");
}

TEST_CASE("a copy for recovery is read as it was written, and no part of it is taken for one") {
    const RecoveryCopy copy{"C:\\shows\\a=b.panel", "", 12, "size=1,2\r\nfile=x\r\n"};
    const std::string text = RecoveryText(copy);
    const auto read = ParseRecoveryText(text);
    REQUIRE(read);
    CHECK(read->file == copy.file);
    CHECK(read->devices.empty());
    CHECK(read->changes == 12);
    CHECK(read->panel == copy.panel);
    CHECK(ParseRecoveryText(RecoveryText({"", "D", 1, ""}))->devices == "D");
    for (std::size_t length = 0; length < text.size(); ++length) {
        CHECK_FALSE(ParseRecoveryText(text.substr(0, length)));
        CHECK_FALSE(ParseRecoveryText(text.substr(0, length) + std::string(text.size() - length, '\0')));
    }
    CHECK_FALSE(ParseRecoveryText(text + "x"));
    CHECK_FALSE(ParseRecoveryText(RecoveryText({"", "", 0, ""})));
    std::string huge = text;
    huge.replace(huge.find("bytes=") + 6, 2, "99999999999");
    CHECK_FALSE(ParseRecoveryText(huge));
}

TEST_CASE("the last value of each address is kept in order, until its time is over") {
    OpeningValues values;
    const auto text = [&values] {
        std::string all;
        for (const auto& value : values.All()) {
            all += value.address + "=" + value.bytes + " ";
        }
        return all;
    };
    values.Keep({"A*x", 11, "1"});
    values.Keep({"A*X", 11, "2"}); // another keyword
    values.Keep({"B*x", 11, "3"});
    values.Keep({"a*x", 11, "4"}); // the first one again
    CHECK(text() == "A*X=2 B*x=3 a*x=4 ");
    CHECK(values.Has("A*x"));
    values.Drop("b*x");
    values.Drop("b*x");
    CHECK(text() == "A*X=2 a*x=4 ");

    OpeningValues others;
    others.Keep({"A*X", 11, "5"});
    others.Keep({"C*x", 11, "6"});
    values.Add(others);
    CHECK(text() == "a*x=4 A*X=5 C*x=6 ");

    constexpr std::uint64_t START = 0xFFFFFFF0; // beyond 32 bits there is no turn
    values.Start(START);
    CHECK(values.Expire(START + OpeningValues::patience - 1).empty());
    CHECK(values.Expire(START + OpeningValues::patience).size() == 3);
    CHECK(values.IsEmpty());
    CHECK_FALSE(values.Has("C*x"));
    values.Keep({"C*x", 11, "7"});
    CHECK(text() == "C*x=7 ");
}
