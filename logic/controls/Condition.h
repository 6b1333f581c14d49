// A condition over numbers, "a > -6 and not (b = 1 or c < min(a, 2))", compiled once and evaluated often.
//
// In the order in which they bind: brackets, numbers, the letters a to z, min(...), max(...) and abs(...);
// signs; * /; + -; = (or ==) <> < <= > >=, one of them at most without brackets; not; and; or. Words and
// letters may be capitals. A comparison gives 1 or 0, and what is not 0 holds. Two numbers are equal when
// they differ by no more than a millionth of the greater one; then neither is above the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace logic {

class Condition {
public:
    // The letters, each for a value.
    static constexpr std::size_t LETTERS = 26;

    // Where the text cannot be read, from 1 on, and what is the matter there.
    struct Fault {
        std::size_t place;
        const char* reason;
    };

    Condition(); // "a"

    // Replaces the condition. With a fault nothing changes.
    std::optional<Fault> Read(std::string_view text);

    // The number that it gives with the first value for a, the next for b and so on. Nothing when it uses a
    // letter without a value. What cannot be reckoned (a division by 0, what is too large, a value that is
    // not finite) is nothing either, unless the result is the same whatever it may be: "b <> 0 and a / b > 2"
    // does not hold while b is 0. Takes no memory.
    std::optional<double> Evaluate(std::span<const float> values) const;

private:
    enum class Operation : std::uint8_t {
        Number,
        Letter,
        Negate,
        Absolute,
        Multiply,
        Divide,
        Add,
        Subtract,
        Minimum,
        Maximum,
        Equal,
        Different,
        Less,
        AtMost,
        Greater,
        AtLeast,
        Not,
        And,
        Or,
    };
    struct Step {
        Operation operation;
        float operand; // a number, or that of a letter
    };
    class Reader;

    static double Combine(Operation operation, double left, double right);

    std::vector<Step> steps_; // for a stack of numbers
    std::size_t letters_ = 1; // it uses at most so many
};

// The fault in words, for people: "at 5: a value is missing".
std::string FaultText(const Condition::Fault& fault);
// Why a text is no condition: "cannot be read at 5: a value is missing"; empty when it is one.
std::string ConditionObjection(std::string_view text);

} // namespace logic
