#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace logic {

// What a panel keeps of its PIN: "pbkdf2-sha256,ITERATIONS,SALT,HASH", the last two in hexadecimal digits.
class PinLock {
public:
    using Salt = std::array<std::uint8_t, 16>;
    static constexpr std::size_t SHORTEST = 4; // characters of a PIN
    static constexpr std::size_t LONGEST = 64;
    // What a new lock has; others may have from a tenth to ten times as many.
    static constexpr std::uint32_t ITERATIONS = 100000;

    // For a PIN of an allowed length; else nothing. The salt has to be another one each time.
    static std::optional<PinLock> Make(std::string_view pin, const Salt& salt,
                                       std::uint32_t iterations = ITERATIONS);
    // Nothing when the text is not of that form.
    static std::optional<PinLock> Parse(std::string_view text);

    std::string Text() const;
    // Takes some tenths of a second; as long for every PIN.
    bool Opens(std::string_view pin) const;

private:
    std::uint32_t iterations_ = ITERATIONS;
    Salt salt_{};
    std::array<std::uint8_t, 32> hash_{};
};

// How long whoever enters wrong PINs has to wait. Times are in milliseconds from any beginning.
class PinTries {
public:
    static constexpr int FREE = 3; // wrong ones that make nobody wait
    static constexpr std::uint64_t FIRST_WAIT = 5000;
    static constexpr std::uint64_t LONGEST_WAIT = 15 * 60 * 1000;

    // How much longer to wait before the next try; 0 when it may be now.
    std::uint64_t Wait(std::uint64_t now) const { return now < until_ ? until_ - now : 0; }
    void Wrong(std::uint64_t now);
    void Right() { *this = {}; }

private:
    int wrong_ = 0;
    std::uint64_t wait_ = FIRST_WAIT; // after the next one that is too many
    std::uint64_t until_ = 0;
};

} // namespace logic
