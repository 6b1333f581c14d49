// Texts of several lines, as they stand in files and come from devices.
#include <cstddef>
#include <cstdint>

#include "fuzz/Fuzzer.h"
#include "logic/text/Lines.h"

using namespace logic;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const FuzzInput input(data, size);
    const std::string text = UnescapeLines(input.bytes);
    Require(UnescapeLines(EscapeLines(text)) == text);
    Require(WithoutReturns(WithReturns(text)) == text);
    Require(EscapeLines(text).find('\n') == std::string::npos);
    Require(EscapeLines(FrontThatFits(text, input.choice)).size() <= input.choice);
    const std::string newest(NewestLines(text, input.choice, 2 * input.choice));
    Require(text.ends_with(newest) && WithReturns(newest).size() <= input.choice);
    return 0;
}
