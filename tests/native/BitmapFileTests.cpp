#include "logic/BitmapFile.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <string>

using logic::IsSoundBitmapFile;

namespace {

// 4 x 3 pixels, with a palette where there is one.
std::string BitmapFile(int bits) {
    const int colours = bits <= 8 ? 1 << bits : 0;
    const std::uint32_t pixels = static_cast<std::uint32_t>(54 + colours * 4);
    std::string bytes(pixels + static_cast<std::uint32_t>((4 * bits + 31) / 32 * 4 * 3), '\0');
    const auto put = [&bytes](std::size_t place, std::uint32_t number) {
        for (std::size_t i = 0; i < 4; ++i)
            bytes[place + i] = static_cast<char>(number >> (8 * i));
    };
    bytes[0] = 'B';
    bytes[1] = 'M';
    put(10, pixels);
    put(14, 40);
    put(18, 4);
    put(22, 3);
    put(26, 1 | static_cast<std::uint32_t>(bits) << 16);
    return bytes;
}

std::string With(std::string bytes, std::size_t place, std::uint32_t number) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes[place + i] = static_cast<char>(number >> (8 * i));
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
        for (const std::uint32_t bad : {0U, 0x80000000U, 0x7FFFFFFFU, 16385U}) {
            CHECK_FALSE(IsSoundBitmapFile(With(bytes, 18, bad))); // width
            CHECK_FALSE(IsSoundBitmapFile(With(bytes, 22, bad))); // height
        }
        CHECK_FALSE(IsSoundBitmapFile(With(bytes, 10, 53)));           // the pixels begin in the header
        CHECK_FALSE(IsSoundBitmapFile(With(bytes, 10, 0xFFFFFFFFU)));  // or behind the end
        CHECK_FALSE(IsSoundBitmapFile(With(bytes, 14, 39)));           // size of the header
        CHECK_FALSE(IsSoundBitmapFile(With(bytes, 26, 1 | 7U << 16))); // bits a pixel
        CHECK_FALSE(IsSoundBitmapFile(With(bytes, 46, 257)));          // colours
        CHECK_FALSE(IsSoundBitmapFile(With(bytes, 46, 0xFFFFFFFFU)));
    }
    for (const char* other : {"", "B", "\x89PNG", "GIF89a"})
        CHECK(IsSoundBitmapFile(other));
}
