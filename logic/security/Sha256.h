#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace logic {

using Sha256Digest = std::array<std::uint8_t, 32>;

Sha256Digest Sha256(std::string_view bytes);
Sha256Digest HmacSha256(std::string_view key, std::string_view bytes);
// PBKDF2 with HMAC-SHA256 and one block of output: as slow as there are iterations (at least one is done).
Sha256Digest Pbkdf2Sha256(std::string_view password, std::string_view salt, std::uint32_t iterations);

} // namespace logic
