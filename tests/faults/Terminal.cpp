// Bytes of every sort and in fragments to the terminal of a network interface, which serves the next one.

#include "tests/windows/TerminalClient.h"

#include "tests/faults/Scenery.h"

namespace {

std::string Bytes(Random& random, const Scenery& scenery) {
    constexpr const char* LINES[] = {"\n",     "..\n",    "dir\n",          "AMP1*gain=1\n", "AMP1*nosuch=\n",
                                     "?\n",    "??\n",    "C1*value=?\r\n", "nobody*\n",     "*=\n",
                                     "\x03\n", "\b\b\b\n"};
    // Of options, whole and broken off.
    constexpr const char* NEGOTIATION[] = {"\xFF\xFD\x01", "\xFF\xFA\x18\x01\xFF\xF0", "\xFF\xFF",
                                           "\xFF\xFB",     "\xFF\xFA\x18\xFF",         "\xFF"};
    std::string bytes;
    for (int i = random.Below(12); i >= 0; --i) {
        HWND control = scenery.Control(random);
        const std::string line =
            control == nullptr ? "" : ObjectOf(control).name + "*" + Scenery::Line(random, control) + "\r\n";
        const std::string sent[] = {
            line, line, line, random.Pick(LINES), random.Pick(NEGOTIATION), random.Bytes(300)};
        bytes += random.Pick(sent);
    }
    return bytes;
}

void Round(Random& random, int) {
    Scenery scenery(random, 5);
    HWND network = scenery.panel.Create("INETWORK", "Net");
    HWND knob = scenery.panel.Create("KNOB", "Level");
    for (int i = 0; i < 3; ++i) {
        const TestSocket terminal = TestSocket::Connected(TERMINAL_PORT);
        const std::string bytes = Bytes(random, scenery);
        Doing("terminal bytes: %s", Shown(bytes, 400).c_str());
        for (std::size_t sent = 0; sent < bytes.size();) {
            const auto count = static_cast<std::size_t>(1 + random.Below(random.OneIn(3) ? 3 : 600));
            terminal.Send(bytes.substr(sent, count));
            sent += count;
            PumpAll();
        }
    }
    // What was sent may have changed or closed anything else, this must still be so.
    if (IsWindow(network) && IsWindow(knob) && scenery.panel.Find("Level") == knob) {
        Doing("a terminal afterwards");
        const TestSocket terminal = TestSocket::Connected(TERMINAL_PORT);
        terminal.Receive(66);
        Load(knob, "properties=0,100,0");
        terminal.Send("\x03");
        terminal.Receive(1, 60); // what arrives together with it is dropped
        terminal.Send("Level*value=7\n");
        const std::string answer = terminal.Receive(12);
        Expect(answer == "LEVEL*value=", "the terminal answers %s", Shown(answer).c_str());
        Expect(Value(knob) == 7.0F, "the terminal sets %g", static_cast<double>(Value(knob)));
    }
    Doing("close the panel");
}

} // namespace

const Topic terminalTopic{"terminal", Round};
