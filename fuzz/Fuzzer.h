// What the fuzzers share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

inline void Require(bool condition) {
    if (!condition) {
        __builtin_trap();
    }
}

// The first byte chooses what a run does with the rest.
struct FuzzInput {
    FuzzInput(const std::uint8_t* data, std::size_t size) {
        if (size > 0) {
            choice = data[0];
            bytes.assign(data + 1, data + size);
        }
    }

    // Makes it longer than any line may be.
    void Lengthen(char filler) { bytes.insert(bytes.size() / 2, 4000U + choice, filler); }

    std::uint8_t choice = 0;
    std::string bytes;
};

// Lengths of blocks that a stream is divided into, the same for the same seed.
class BlockLengths {
public:
    explicit BlockLengths(std::uint8_t seed) : seed_(seed), state_(seed) {}

    std::size_t operator()() {
        state_ = state_ * 1664525 + 1013904223;
        return 1 + (state_ >> 24) % (1U + seed_);
    }

private:
    std::uint8_t seed_;
    std::uint32_t state_;
};
