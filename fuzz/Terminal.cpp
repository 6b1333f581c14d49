// The terminal: any bytes, whatever the objects are that its lines name.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Fuzzer.h"
#include "logic/remote/HostPort.h"
#include "logic/remote/TelnetFilter.h"
#include "logic/remote/Terminal.h"
#include "logic/text/PropertyLine.h"

using namespace logic;

namespace {

void CheckAddress(const TerminalAddress& address) {
    constexpr std::size_t maximum = TerminalText::maximumLength;
    Require(address.StarredPrompt().size() <= maximum && address.Value().size() <= maximum);
    Require(!address.IsQuestion() || address.Value().empty());
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
    // However a stream is divided, telnet's own bytes are taken out of it and no others.
    std::string text;
    TelnetFilter filter;
    BlockLengths lengths(choice);
    for (std::size_t start = 0; start < bytes.size();) {
        const std::string block = bytes.substr(start, lengths());
        text += filter.Text(block);
        start += block.size();
    }
    Require(text == TelnetFilter().Text(bytes));
    Require(TelnetFilter().Text(TelnetText(bytes)) == bytes);

    Terminal terminal;
    std::size_t number = 0;
    std::size_t typed = 0; // since the last line end, the prompt included
    for (const char byte : text) {
        ++typed;
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
            typed = terminal.Address().Prompt().size();
            break;
        case Terminal::Step::Refuse:
            Require(byte == '\n' && typed > TerminalText::maximumLength);
            typed = terminal.Answer().size();
            break;
        case Terminal::Step::Abandon:
            typed = 0;
            Require(byte == 3);
            break;
        }
    }
    if (const auto address = ParseHostPort(bytes))
        Require(ParseHostPort(address->host + ":" + std::to_string(address->port)) == address);
    return 0;
}
