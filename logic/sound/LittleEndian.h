// Numbers as wave files hold them: lowest byte first.
#pragma once

#include <cstdint>
#include <vector>

namespace logic {

inline std::uint16_t Read16(const std::uint8_t* bytes) {
    return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}
inline std::uint32_t Read32(const std::uint8_t* bytes) {
    return Read16(bytes) | static_cast<std::uint32_t>(Read16(bytes + 2)) << 16;
}
inline void Append16(std::vector<std::uint8_t>& bytes, std::uint32_t number) {
    bytes.push_back(static_cast<std::uint8_t>(number));
    bytes.push_back(static_cast<std::uint8_t>(number >> 8));
}
inline void Append32(std::vector<std::uint8_t>& bytes, std::uint32_t number) {
    Append16(bytes, number);
    Append16(bytes, number >> 16);
}

} // namespace logic
