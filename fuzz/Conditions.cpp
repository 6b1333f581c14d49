// Conditions as they stand in files and are typed, over any values.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "fuzz/Fuzzer.h"
#include "logic/controls/Condition.h"

using namespace logic;

namespace {

struct Outcome {
    bool isRead;
    std::optional<double> number;
};

Outcome Try(const std::string& text, std::span<const float> values) {
    Condition condition;
    const auto fault = condition.Read(text);
    Require(!fault || (fault->place >= 1 && fault->place <= text.size() + 1));
    Require(ConditionObjection(text) == (fault ? "cannot be read " + FaultText(*fault) : ""));
    return {!fault, condition.Evaluate(values)};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    float values[Condition::LETTERS];
    for (std::size_t i = 0; i < std::size(values); ++i) {
        values[i] = static_cast<float>((input.choice * (i + 3)) % 11) - 4.0F;
    }
    // The first few are any bytes.
    std::memcpy(values, input.bytes.data(), std::min(input.bytes.size(), 2 * sizeof(float)));
    const std::span<const float> given(values, input.choice % 8U == 0 ? 3 : std::size(values));

    const Outcome plain = Try(input.bytes, given);
    Require(!plain.number || std::isfinite(*plain.number));
    const Outcome bracketed = Try("(" + input.bytes + ")", given);
    const Outcome reversed = Try("not (" + input.bytes + ")", given);
    if (plain.isRead && bracketed.isRead && reversed.isRead) { // not nested too deep
        Require(bracketed.number == plain.number);
        Require(reversed.number.has_value() == plain.number.has_value());
        Require(!plain.number || *reversed.number == (*plain.number == 0 ? 1 : 0));
    }
    if (!plain.isRead) { // the condition stays as it was
        Condition kept;
        Require(!kept.Read("a + 1"));
        const auto before = kept.Evaluate(given);
        Require(kept.Read(input.bytes).has_value() && kept.Evaluate(given) == before);
    }
    return 0;
}
