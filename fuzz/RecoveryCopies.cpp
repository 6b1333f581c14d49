// Copies for recovery: any bytes in place of one, and any bytes as its panel.
#include "fuzz/Fuzzer.h"
#include "logic/editing/RecoveryCopy.h"

using namespace logic;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const FuzzInput input(data, size);
    if (const auto copy = ParseRecoveryText(input.bytes)) {
        const auto again = ParseRecoveryText(RecoveryText(*copy));
        Require(again && again->file == copy->file && again->panel == copy->panel);
    }
    const std::string text = RecoveryText({"a.panel", "", 1 + input.choice, input.bytes});
    const auto copy = ParseRecoveryText(text);
    Require(copy && copy->changes == 1 + input.choice && copy->panel == input.bytes);
    Require(!ParseRecoveryText(text.substr(0, text.size() - 1)));
    return 0;
}
