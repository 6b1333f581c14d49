#include "logic/security/PinLock.h"

#include "logic/security/Sha256.h"

#include <algorithm>
#include <charconv>

namespace logic {

namespace {

constexpr std::string_view METHOD = "pbkdf2-sha256,";

template <std::size_t Size>
std::string Digits(const std::array<std::uint8_t, Size>& bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += "0123456789abcdef"[byte >> 4];
        text += "0123456789abcdef"[byte & 15];
    }
    return text;
}

template <std::size_t Size>
bool ReadDigits(std::string_view text, std::array<std::uint8_t, Size>& bytes) {
    if (text.size() != 2 * Size) {
        return false;
    }
    for (std::size_t i = 0; i < Size; ++i) {
        const char* start = text.data() + 2 * i;
        const auto [end, failure] = std::from_chars(start, start + 2, bytes[i], 16);
        if (failure != std::errc() || end != start + 2) {
            return false;
        }
    }
    return true;
}

std::string_view Bytes(const PinLock::Salt& salt) {
    return {reinterpret_cast<const char*>(salt.data()), salt.size()};
}

bool IsAllowed(std::uint32_t iterations) {
    return iterations >= PinLock::ITERATIONS / 10 && iterations <= PinLock::ITERATIONS * 10;
}

} // namespace

std::optional<PinLock> PinLock::Make(std::string_view pin, const Salt& salt, std::uint32_t iterations) {
    if (pin.size() < SHORTEST || pin.size() > LONGEST || !IsAllowed(iterations)) {
        return std::nullopt;
    }
    PinLock lock;
    lock.iterations_ = iterations;
    lock.salt_ = salt;
    lock.hash_ = Pbkdf2Sha256(pin, Bytes(salt), iterations);
    return lock;
}

std::optional<PinLock> PinLock::Parse(std::string_view text) {
    if (!text.starts_with(METHOD)) {
        return std::nullopt;
    }
    text.remove_prefix(METHOD.size());
    PinLock lock;
    const char* end = text.data() + text.size();
    const auto [rest, failure] = std::from_chars(text.data(), end, lock.iterations_);
    if (failure != std::errc() || rest == end || *rest != ',' || !IsAllowed(lock.iterations_)) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(rest - text.data()) + 1);
    const std::size_t comma = text.find(',');
    if (comma == std::string_view::npos || !ReadDigits(text.substr(0, comma), lock.salt_) ||
        !ReadDigits(text.substr(comma + 1), lock.hash_)) {
        return std::nullopt;
    }
    return lock;
}

std::string PinLock::Text() const {
    return std::string(METHOD) + std::to_string(iterations_) + "," + Digits(salt_) + "," + Digits(hash_);
}

bool PinLock::Opens(std::string_view pin) const {
    const Sha256Digest hash = Pbkdf2Sha256(pin, Bytes(salt_), iterations_);
    int differences = 0;
    for (std::size_t i = 0; i < hash.size(); ++i) {
        differences |= hash[i] ^ hash_[i];
    }
    return differences == 0;
}

void PinTries::Wrong(std::uint64_t now) {
    if (++wrong_ >= FREE) {
        until_ = now + wait_;
        wait_ = std::min(2 * wait_, LONGEST_WAIT);
    }
}

} // namespace logic
