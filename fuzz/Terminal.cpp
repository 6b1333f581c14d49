// The terminal: any bytes, whatever the objects are that its lines name.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Fuzzer.h"
#include "logic/HostPort.h"
#include "logic/PropertyLine.h"
#include "logic/Terminal.h"

using namespace logic;

namespace {

void CheckAddress(const TerminalAddress& address) {
    constexpr std::size_t maximum = TerminalAddress::maximumLength;
    Require(address.Object().size() <= maximum && address.Keyword().size() <= maximum &&
            address.Value().size() <= maximum);
    for (const std::string& part : {address.Object(), address.Keyword(), address.Value()})
        Require(part.find_first_of("\n\r\x1b\x03\b") == std::string::npos &&
                part.find('\0') == std::string::npos);
    Require(address.Keyword().find_first_of("*=") == std::string::npos);
    Require(address.Object().find('=') == std::string::npos);
    // The prompt alone addresses the same again.
    TerminalAddress again;
    again.Read(address.Prompt());
    Require(again.Object() == address.Object() && again.Keyword() == address.Keyword());
    Require(address.StarredPrompt().ends_with(address.Prompt()) || address.Object().empty());
    Require(SplitPropertyLine(address.KeywordLine()).value == address.Value());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    FuzzInput input(data, size);
    const auto& [choice, bytes] = input;
    if (choice % 4 == 1)
        input.Lengthen(static_cast<char>('0' + choice % 3));
    Terminal terminal;
    std::size_t number = 0;
    for (const char byte : bytes) {
        if (choice % 8 == 2 && ++number % (1 + choice) == 0)
            terminal.Restart();
        switch (terminal.Put(byte)) {
        case Terminal::Step::None:
            break;
        case Terminal::Step::Execute:
            Require(byte == '\n');
            CheckAddress(terminal.Address());
            if (terminal.Address().Object().size() % 2 == choice % 2)
                terminal.ObjectMissing();
            [[fallthrough]];
        case Terminal::Step::Answer:
            Require(byte == '\n');
            CheckAddress(terminal.Address());
            Require(terminal.Answer() == terminal.Address().Prompt());
            break;
        case Terminal::Step::Abandon:
            Require(byte == 3);
            break;
        }
    }
    if (const auto address = ParseHostPort(bytes))
        Require(ParseHostPort(address->host + ":" + std::to_string(address->port)) == address);
    return 0;
}
