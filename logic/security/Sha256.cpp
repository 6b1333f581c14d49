#include "logic/security/Sha256.h"

#include <algorithm>
#include <bit>
#include <string>

namespace logic {

namespace {

constexpr std::size_t BLOCK = 64; // bytes
using State = std::array<std::uint32_t, 8>;
using Block = std::array<std::uint8_t, BLOCK>;

constexpr State START{0x6A09E667, 0xBB67AE85, 0x3C6EF372, 0xA54FF53A,
                      0x510E527F, 0x9B05688C, 0x1F83D9AB, 0x5BE0CD19};

constexpr std::uint32_t ROUNDS[] = {
    0x428A2F98, 0x71374491, 0xB5C0FBCF, 0xE9B5DBA5, 0x3956C25B, 0x59F111F1, 0x923F82A4, 0xAB1C5ED5,
    0xD807AA98, 0x12835B01, 0x243185BE, 0x550C7DC3, 0x72BE5D74, 0x80DEB1FE, 0x9BDC06A7, 0xC19BF174,
    0xE49B69C1, 0xEFBE4786, 0x0FC19DC6, 0x240CA1CC, 0x2DE92C6F, 0x4A7484AA, 0x5CB0A9DC, 0x76F988DA,
    0x983E5152, 0xA831C66D, 0xB00327C8, 0xBF597FC7, 0xC6E00BF3, 0xD5A79147, 0x06CA6351, 0x14292967,
    0x27B70A85, 0x2E1B2138, 0x4D2C6DFC, 0x53380D13, 0x650A7354, 0x766A0ABB, 0x81C2C92E, 0x92722C85,
    0xA2BFE8A1, 0xA81A664B, 0xC24B8B70, 0xC76C51A3, 0xD192E819, 0xD6990624, 0xF40E3585, 0x106AA070,
    0x19A4C116, 0x1E376C08, 0x2748774C, 0x34B0BCB5, 0x391C0CB3, 0x4ED8AA4A, 0x5B9CCA4F, 0x682E6FF3,
    0x748F82EE, 0x78A5636F, 0x84C87814, 0x8CC70208, 0x90BEFFFA, 0xA4506CEB, 0xBEF9A3F7, 0xC67178F2};

void Compress(State& state, const std::uint8_t* block) {
    std::uint32_t words[64];
    for (std::size_t i = 0; i < 16; ++i, block += 4) {
        words[i] = static_cast<std::uint32_t>(block[0]) << 24 | static_cast<std::uint32_t>(block[1]) << 16 |
                   static_cast<std::uint32_t>(block[2]) << 8 | block[3];
    }
    for (std::size_t i = 16; i < 64; ++i) {
        const std::uint32_t near = words[i - 2];
        const std::uint32_t far = words[i - 15];
        words[i] = words[i - 16] + words[i - 7] + (std::rotr(far, 7) ^ std::rotr(far, 18) ^ (far >> 3)) +
                   (std::rotr(near, 17) ^ std::rotr(near, 19) ^ (near >> 10));
    }
    auto [a, b, c, d, e, f, g, h] = state;
    for (std::size_t i = 0; i < 64; ++i) {
        const std::uint32_t first = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) +
                                    ((e & f) ^ (~e & g)) + ROUNDS[i] + words[i];
        const std::uint32_t second =
            (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + first;
        d = c;
        c = b;
        b = a;
        a = first + second;
    }
    const State added{a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < added.size(); ++i) {
        state[i] += added[i];
    }
}

// What comes after the state has taken in a number of whole blocks.
Sha256Digest Finish(State state, std::string_view rest, std::uint64_t blocksBefore) {
    const std::uint64_t bits = (blocksBefore * BLOCK + rest.size()) * 8;
    for (; rest.size() >= BLOCK; rest.remove_prefix(BLOCK)) {
        Compress(state, reinterpret_cast<const std::uint8_t*>(rest.data()));
    }
    std::array<std::uint8_t, 2 * BLOCK> tail{};
    std::copy(rest.begin(), rest.end(), tail.begin());
    tail[rest.size()] = 0x80;
    const std::size_t length = rest.size() + 9 <= BLOCK ? BLOCK : 2 * BLOCK;
    for (std::size_t i = 0; i < 8; ++i) {
        tail[length - 1 - i] = static_cast<std::uint8_t>(bits >> (8 * i));
    }
    for (std::size_t at = 0; at < length; at += BLOCK) {
        Compress(state, tail.data() + at);
    }
    Sha256Digest digest;
    for (std::size_t i = 0; i < digest.size(); ++i) {
        digest[i] = static_cast<std::uint8_t>(state[i / 4] >> (24 - 8 * (i % 4)));
    }
    return digest;
}

std::string_view Bytes(const Sha256Digest& digest) {
    return {reinterpret_cast<const char*>(digest.data()), digest.size()};
}

// With one key for many texts.
class Hmac {
public:
    explicit Hmac(std::string_view key) {
        Block block{};
        if (key.size() > BLOCK) {
            const Sha256Digest digest = Sha256(key);
            std::copy(digest.begin(), digest.end(), block.begin());
        } else {
            std::copy(key.begin(), key.end(), block.begin());
        }
        inner_ = Begin(block, 0x36);
        outer_ = Begin(block, 0x5C);
    }
    Sha256Digest Of(std::string_view bytes) const {
        return Finish(outer_, Bytes(Finish(inner_, bytes, 1)), 1);
    }

private:
    static State Begin(Block block, std::uint8_t pad) {
        for (std::uint8_t& byte : block) {
            byte ^= pad;
        }
        State state = START;
        Compress(state, block.data());
        return state;
    }

    State inner_;
    State outer_;
};

} // namespace

Sha256Digest Sha256(std::string_view bytes) {
    return Finish(START, bytes, 0);
}

Sha256Digest HmacSha256(std::string_view key, std::string_view bytes) {
    return Hmac(key).Of(bytes);
}

Sha256Digest Pbkdf2Sha256(std::string_view password, std::string_view salt, std::uint32_t iterations) {
    const Hmac hmac(password);
    Sha256Digest last = hmac.Of(std::string(salt) + std::string("\0\0\0\1", 4)); // number of the block
    Sha256Digest result = last;
    for (std::uint32_t i = 1; i < iterations; ++i) {
        last = hmac.Of(Bytes(last));
        for (std::size_t k = 0; k < result.size(); ++k) {
            result[k] ^= last[k];
        }
    }
    return result;
}

} // namespace logic
