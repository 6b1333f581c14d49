#include "logic/BitmapFile.h"
#include "tests/native/Tables.h"

using logic::IsSoundBitmapFile;

namespace {

std::string With(std::string bytes, std::size_t place, std::uint32_t number) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes[place + i] = static_cast<char>(number >> (8 * i));
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
         {std::pair(10U, pixels), {14U, 40U}, {18U, 4U}, {22U, 3U}, {26U, depth}})
        bytes = With(bytes, place, number);
    return bytes;
}

} // namespace

TEST_CASE("the headers of a bitmap file must fit the file") {
    for (const int bits : {1, 4, 8, 16, 24, 32}) {
        CAPTURE(bits);
        const std::string bytes = BitmapFile(bits);
        CHECK(IsSoundBitmapFile(bytes));
        CHECK(IsSoundBitmapFile(With(bytes, 22, static_cast<std::uint32_t>(-3)))); // from the top down
        CHECK_FALSE(IsSoundBitmapFile(bytes.substr(0, bytes.size() - 1)));
        for (std::size_t length = 2; length < 54; ++length)
            CHECK_FALSE(IsSoundBitmapFile(bytes.substr(0, length)));
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
            for (const std::uint32_t number : field.numbers)
                CHECK_FALSE(IsSoundBitmapFile(With(bytes, field.place, number)));
        }
    }
    CheckTaken(IsSoundBitmapFile, "", "B", "\x89PNG", "GIF89a");
}
