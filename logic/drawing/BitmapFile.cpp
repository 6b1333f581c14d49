#include "logic/drawing/BitmapFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace logic {

namespace {

constexpr std::size_t FILE_HEADER_SIZE = 14;
constexpr std::uint32_t CORE_HEADER_SIZE = 12; // of OS/2, with 16-bit sides
constexpr std::uint32_t INFO_HEADER_SIZE = 40;
constexpr std::uint32_t LARGEST_HEADER_SIZE = 124;
constexpr std::int64_t MAXIMUM_SIDE = 16384;
constexpr std::uint32_t UNCOMPRESSED = 0;
constexpr std::uint32_t BIT_FIELDS = 3;
constexpr std::uint32_t LAST_COMPRESSION = 3;

std::uint32_t ReadNumber(std::string_view bytes, std::size_t place, std::size_t size) {
    std::uint32_t number = 0;
    for (std::size_t i = size; i-- > 0;) {
        number = number << 8 | static_cast<unsigned char>(bytes[place + i]);
    }
    return number;
}

bool IsDepth(std::uint32_t bits) {
    return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
}

} // namespace

bool IsSoundBitmapFile(std::string_view bytes) {
    if (!bytes.starts_with("BM")) {
        return true;
    }
    if (bytes.size() < FILE_HEADER_SIZE + CORE_HEADER_SIZE) {
        return false;
    }
    const std::uint32_t pixels = ReadNumber(bytes, 10, 4);
    const std::uint32_t headerSize = ReadNumber(bytes, 14, 4);
    const bool isCore = headerSize == CORE_HEADER_SIZE;
    if (!isCore && (headerSize < INFO_HEADER_SIZE || headerSize > LARGEST_HEADER_SIZE ||
                    bytes.size() < FILE_HEADER_SIZE + headerSize)) {
        return false;
    }
    const std::int64_t width =
        isCore ? ReadNumber(bytes, 18, 2) : static_cast<std::int32_t>(ReadNumber(bytes, 18, 4));
    const std::int64_t height =
        std::abs(isCore ? std::int64_t{ReadNumber(bytes, 20, 2)}
                        : std::int64_t{static_cast<std::int32_t>(ReadNumber(bytes, 22, 4))});
    const std::uint32_t bits = ReadNumber(bytes, isCore ? 24 : 28, 2);
    const std::uint32_t compression = isCore ? UNCOMPRESSED : ReadNumber(bytes, 30, 4);
    if (width < 1 || height < 1 || width > MAXIMUM_SIDE || height > MAXIMUM_SIDE || !IsDepth(bits) ||
        compression > LAST_COMPRESSION || (compression == BIT_FIELDS && bits != 16 && bits != 32)) {
        return false;
    }
    const std::uint32_t most = bits <= 8 ? 1U << bits : 0;
    std::uint32_t colours = isCore ? most : ReadNumber(bytes, 46, 4);
    if (bits <= 8 && (colours > most || colours == 0)) {
        if (colours > most) {
            return false;
        }
        colours = most;
    }
    if (colours > 256) {
        return false;
    }
    const std::size_t palette = std::size_t{colours} * (isCore ? 3 : 4);
    if (pixels < FILE_HEADER_SIZE + headerSize + palette || pixels > bytes.size()) {
        return false;
    }
    if (compression != UNCOMPRESSED && compression != BIT_FIELDS) {
        return true; // how long packed pixels are, they alone say
    }
    const std::int64_t row = (width * bits + 31) / 32 * 4;
    return static_cast<std::int64_t>(bytes.size() - pixels) >= row * height;
}

} // namespace logic
