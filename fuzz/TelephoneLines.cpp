// The terminal on the telephone: any bytes, whatever the objects are that its lines name.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Fuzzer.h"
#include "logic/remote/TelephoneTerminal.h"

using namespace logic;

namespace {

void CheckAddress(const TerminalAddress& address) {
    for (const std::string& part : {address.Object(), address.Keyword(), address.Value()}) {
        Require(part.size() <= TerminalText::maximumLength);
        Require(part.find_first_of(std::string_view("\n\r\b\0", 4)) == std::string::npos);
    }
    Require(address.Keyword().find_first_of("*=") == std::string::npos);
    Require(address.Object().find('=') == std::string::npos);
    Require(!address.IsQuestion() || address.Value().empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    FuzzInput input(data, size);
    const auto& [choice, bytes] = input;
    if (choice % 4 == 1)
        input.Lengthen(static_cast<char>('0' + choice % 3));
    TelephoneTerminal terminal;
    std::size_t typed = 0; // since the last line end, the prompt included
    for (const char byte : bytes) {
        const TelephoneTerminal::Step step = terminal.Put(byte);
        ++typed;
        if (step == TelephoneTerminal::Step::None)
            continue;
        Require(byte == '\r');
        Require(step == TelephoneTerminal::Step::Execute || typed > TerminalText::maximumLength);
        CheckAddress(terminal.Address());
        if (terminal.Address().Object().size() % 2 == choice % 2)
            terminal.ObjectMissing();
        else if (terminal.Address().Keyword().size() % 2 == choice / 2 % 2)
            terminal.KeywordMissing();
        const std::string prompt = terminal.Answer();
        Require(prompt == "\r" + terminal.Address().StarredPrompt());
        typed = prompt.size();
    }
    // Each line begins with the prompt: an empty one addresses the same again, or without the star as it is
    // typed.
    terminal.Put('\r');
    terminal.Answer();
    const TerminalAddress address = terminal.Address();
    terminal.Put('\r');
    if (!address.Object().starts_with('*'))
        Require(terminal.Address().Object() == address.Object());
    Require(terminal.Address().Keyword() == address.Keyword() && terminal.Address().Value().empty());
    return 0;
}
