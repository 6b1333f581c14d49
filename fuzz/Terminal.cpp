// The terminals on the network and on the telephone: any bytes, whatever the objects are that their lines
// name.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Fuzzer.h"
#include "logic/remote/HostPort.h"
#include "logic/remote/TelephoneTerminal.h"
#include "logic/remote/TelnetFilter.h"
#include "logic/remote/Terminal.h"
#include "logic/text/PropertyLine.h"

using namespace logic;

namespace {

void CheckAddress(const TerminalAddress& address, std::string_view never) {
    for (const std::string& part : {address.Object(), address.Keyword(), address.Value()}) {
        Require(part.size() <= TerminalText::maximumLength);
        Require(part.find_first_of(never) == std::string::npos);
    }
    Require(address.Keyword().find_first_of("*=") == std::string::npos);
    Require(address.Object().find('=') == std::string::npos);
    Require(!address.IsQuestion() || address.Value().empty());
}

void CheckNetworkAddress(const TerminalAddress& address) {
    CheckAddress(address, std::string_view("\n\r\x1b\x03\b\0", 6));
    Require(address.StarredPrompt().size() <= TerminalText::maximumLength);
    // The prompt alone addresses the same again.
    TerminalAddress again;
    again.Read(address.Prompt());
    Require(again.Object() == address.Object() && again.Keyword() == address.Keyword());
    Require(address.StarredPrompt().ends_with(address.Prompt()) || address.Object().empty());
    Require(SplitPropertyLine(address.KeywordLine()).value == address.Value());
}

// However a stream is divided, telnet's own bytes are taken out of it and no others.
std::string TextOf(std::uint8_t choice, const std::string& bytes) {
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
    return text;
}

void CheckNetwork(std::uint8_t choice, const std::string& text) {
    Terminal terminal;
    std::size_t number = 0;
    std::size_t typed = 0; // since the last line end, the prompt included
    for (const char byte : text) {
        ++typed;
        if (choice % 8 == 2 && ++number % (1 + choice) == 0) {
            terminal.Restart();
        }
        switch (terminal.Put(byte)) {
        case Terminal::Step::None:
            break;
        case Terminal::Step::Execute:
            Require(byte == '\n');
            CheckNetworkAddress(terminal.Address());
            if (terminal.Address().Object().size() % 2 == choice % 2) {
                terminal.ObjectMissing();
            }
            [[fallthrough]];
        case Terminal::Step::Answer:
            Require(byte == '\n');
            CheckNetworkAddress(terminal.Address());
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
}

void CheckTelephone(std::uint8_t choice, const std::string& bytes) {
    TelephoneTerminal terminal;
    std::size_t typed = 0; // since the last line end, the prompt included
    for (const char byte : bytes) {
        const TelephoneTerminal::Step step = terminal.Put(byte);
        ++typed;
        if (step == TelephoneTerminal::Step::None) {
            continue;
        }
        Require(byte == '\r');
        Require(step == TelephoneTerminal::Step::Execute || typed > TerminalText::maximumLength);
        CheckAddress(terminal.Address(), std::string_view("\n\r\b\0", 4));
        if (terminal.Address().Object().size() % 2 == choice % 2) {
            terminal.ObjectMissing();
        } else if (terminal.Address().Keyword().size() % 2 == choice / 2 % 2) {
            terminal.KeywordMissing();
        }
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
    if (!address.Object().starts_with('*')) {
        Require(terminal.Address().Object() == address.Object());
    }
    Require(terminal.Address().Keyword() == address.Keyword() && terminal.Address().Value().empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const auto& [choice, bytes] = input;
    if (choice % 4 == 1) {
        input.Lengthen(static_cast<char>('0' + choice % 3));
    }
    CheckNetwork(choice, TextOf(choice, bytes));
    CheckTelephone(choice, bytes);
    if (const auto address = ParseHostPort(bytes)) {
        Require(ParseHostPort(address->host + ":" + std::to_string(address->port)) == address);
    }
    return 0;
}
