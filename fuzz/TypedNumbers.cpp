// Numbers as they are typed into a field with a unit and a format.
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "fuzz/Fuzzer.h"
#include "logic/controls/SpinLogic.h"
#include "logic/text/FloatFormat.h"
#include "logic/text/Numbers.h"
#include "logic/text/TypedNumber.h"

using namespace logic;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    // The unit, the format and the text, one a line.
    const std::size_t first = input.bytes.find('\n');
    const std::size_t second = first == std::string::npos ? first : input.bytes.find('\n', first + 1);
    const std::string unit = second == std::string::npos ? "Hz" : input.bytes.substr(0, first);
    const std::string format =
        second == std::string::npos ? "%.7g" : input.bytes.substr(first + 1, second - first - 1);
    // A copy of exactly this size, so that reading past the end is seen.
    const std::string text = second == std::string::npos ? input.bytes : input.bytes.substr(second + 1);
    ParseTypedNumber(text, unit, format);
    if (const auto number = ParseTypedNumber(text, unit)) {
        Require(std::isfinite(*number));
        // What is shown of it can be typed, with and without a comma.
        std::string shown = FormatExact(*number);
        Require(ParseTypedNumber(shown, "") == *number && ParseTypedNumber(shown + " dB", "dB") == *number);
        if (const std::size_t point = shown.find('.'); point != std::string::npos) {
            shown[point] = ',';
            Require(ParseTypedNumber(shown, "Hz") == *number);
        }
        const SpinRange range{-1000, static_cast<float>(input.choice)};
        Require(range.Contains(StepSpin(*number, input.choice - 128, *number, range)));
    }
    if (const auto read = ParseSpinProperties(text)) {
        const SpinRange range{read->minimum, read->maximum.value_or(0)};
        const auto again = ParseSpinProperties(SpinPropertiesText(range, range.minimum));
        Require(again && again->minimum == range.minimum && again->maximum == range.maximum);
    }
    return 0;
}
