// IMIDI: eight panel values as pitch-bend messages on the MIDI channels 1 to 8. What the panel sets goes to
// the output port, at most one pass an interval; what the input port receives is taken by whoever is
// connected to the value when it next asks. Intervals in milliseconds, values from 0 to
// logic::HIGHEST_PITCH_BEND.

#include "Controls/families/InterfaceControl.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "Controls/interfaces/midi/MidiDriver.h"
#include "Panelhost/Trace.h"
#include "base/Gdi.h"
#include "base/Threads.h"
#include "logic/controls/PitchBend.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

constexpr unsigned ALL_CHANNELS = (1U << logic::PITCH_BEND_CHANNELS) - 1;
constexpr int CLOSE_PORTS = 0;
constexpr int OPEN_PORTS = 1;

// What failed, as the trace numbers it.
constexpr int FAILED_OPEN = 7; // also a failed start, stop or send
constexpr int FAILED_INPUT_RESET = 11;
constexpr int FAILED_INPUT_CLOSE = 13;
constexpr int FAILED_OUTPUT_RESET = 14;
constexpr int FAILED_OUTPUT_CLOSE = 15;

// What a pass may take: a port that takes its time for each message blocks the panel, and gets the others in
// the next pass.
constexpr DWORD LONGEST_PASS = 250;

} // namespace

class MIDIPROPERTIES : public INTERFACEPROPERTIES {
public:
    ~MIDIPROPERTIES() override;
    KeywordList Keywords() const override;
    void SetDefaults() override;
    SIZE SizeWithoutPicture() const override { return {300, 50}; }
    void Poll() override; // sends what has changed, lowest channel first
    void Draw(HDC dc, const RECT& client) const override;

    template <unsigned Channel>
    int ChannelKeyword(VALUERECORD& record) {
        return HandleChannel(Channel, record);
    }
    int RunKeyword(VALUERECORD& record);
    // "IN: name, OUT: name". False, and nothing changed, when the text is not of that form.
    bool ChooseDevices(const std::string& text);
    std::string DeviceNames() const;
    void SetValue(unsigned channel, int value);
    // Other values than OPEN_PORTS and CLOSE_PORTS do nothing.
    void SwitchPorts(int action);

    // The driver stores here on a thread of its own.
    MidiValues values{};
    unsigned changed = 0; // bit n: channel n has to be sent
    int running = 0;      // 1 while the input is open; the output can be open without it

    HMIDIIN input = nullptr; // deliberately, the handles stay when the ports are closed
    HMIDIOUT output = nullptr;
    UINT inputDevice = 0;
    UINT outputDevice = 0;
    MIDIINCAPSA inputCapabilities{}; // the names in them are shown and saved
    MIDIOUTCAPSA outputCapabilities{};

private:
    int HandleChannel(unsigned channel, VALUERECORD& record);
    DWORD_PTR Instance() { return reinterpret_cast<DWORD_PTR>(this); } // by which drivers know it
    void OpenPorts();
    // Both may end with the control destroyed.
    void ClosePorts();
    void CloseOutput();

    bool outputIsOpen_ = false;
    FontProperty font_;
};

// Keywords

namespace {

template <unsigned Channel>
constexpr Keyword ChannelValue(const char* name) {
    return Handled<&MIDIPROPERTIES::ChannelKeyword<Channel>>(name, KeywordKind::Integer)
        .Saved()
        .OnlyWritten();
}

constexpr KeywordTable KEYWORDS({
    NO_VALUE_KEYWORD,
    ChannelValue<0>("chan1value")
        .Says("Value of channel 1, 0 to 2039, rounded and limited to that. Set as a number by whoever is "
              "connected to it; a text is refused, and so is the line of a panel file."),
    ChannelValue<1>("chan2value").Says("Value of channel 2, as `chan1value`."),
    ChannelValue<2>("chan3value").Says("Value of channel 3, as `chan1value`."),
    ChannelValue<3>("chan4value").Says("Value of channel 4, as `chan1value`."),
    ChannelValue<4>("chan5value").Says("Value of channel 5, as `chan1value`."),
    ChannelValue<5>("chan6value").Says("Value of channel 6, as `chan1value`."),
    ChannelValue<6>("chan7value").Says("Value of channel 7, as `chan1value`."),
    ChannelValue<7>("chan8value").Says("Value of channel 8, as `chan1value`."),
    Refused("connection").Says("Refused: others connect to the values."),
    TextProperty<&MIDIPROPERTIES::DeviceNames, &MIDIPROPERTIES::ChooseDevices>("driver").Saved().Says(
        "Names of the input and the output port. Every device whose name occurs in the text is chosen, the "
        "last one counts; shown is the name of the last device there is, or none when none was chosen. "
        "Counts when the ports are opened next."),
    INTERVAL_KEYWORD.Says(
        "Least number of milliseconds from one pass that sends changed values to the next."),
    LAYER_KEYWORD,
    // Behind the driver: a panel chooses its devices, then opens them.
    Handled<&MIDIPROPERTIES::RunKeyword>("run", KeywordKind::Integer)
        .Saved()
        .Says("1 opens the ports, 0 closes them; 0 after an input that could not be opened."),
});

int AnswerChannel(VALUERECORD* record, std::uint16_t value) {
    if (record->data == nullptr) {
        return 0;
    }
    switch (record->datatype) {
    case DATATYPE_INTEGER:
        return a_AnswerInteger(record, value);
    case DATATYPE_FLOAT: { // what a knob holds between two whole numbers is not new to it
        auto& held = *static_cast<float*>(record->data);
        if (std::isfinite(held) && logic::RoundPitchBend(held) == value) {
            return 0;
        }
        held = value;
        return 1;
    }
    case DATATYPE_TEXT:
        a_AnswerInteger(record, value);
        return 1;
    default:
        return 0;
    }
}

} // namespace

KeywordList MIDIPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

// Deliberately, a set answers 0 even when the value was taken, and texts are not taken, those of a panel file
// included: the values are what the present panel and the present input make them.
int MIDIPROPERTIES::HandleChannel(unsigned channel, VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return AnswerChannel(&record, values[channel].load(std::memory_order_relaxed));
    }
    if (record.command != COMMAND_SET) {
        return 0;
    }
    int integer = 0;
    float number = 0;
    if (record.datatype == DATATYPE_INTEGER && a_ReadInteger(&record, &integer) != 0) {
        SetValue(channel, integer);
    } else if (record.datatype == DATATYPE_FLOAT && a_ReadFloat(&record, &number) != 0) {
        SetValue(channel, logic::RoundPitchBend(number));
    }
    return 0;
}

int MIDIPROPERTIES::RunKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return a_AnswerInteger(&record, running);
    }
    int action = 0;
    if (record.command != COMMAND_SET || record.datatype == DATATYPE_FLOAT ||
        a_ReadInteger(&record, &action) == 0) {
        return 0;
    }
    if (running != (action != 0 ? 1 : 0)) {
        SwitchPorts(action);
    }
    return 1;
}

// Devices

namespace {

// Deliberately, every device is asked, so that the capabilities are in the end those of the last one,
// whichever of them has been found; and its name is looked for in the whole text, which names input and
// output.
template <class Capabilities>
void ChooseDevice(const std::string& text, UINT count,
                  MMRESULT(WINAPI* fetch)(UINT_PTR device, Capabilities* capabilities, UINT size),
                  const char* function, UINT& chosen, Capabilities& capabilities) {
    bool found = false;
    for (UINT device = 0; device < count; ++device) {
        const MMRESULT result = fetch(device, &capabilities, sizeof capabilities);
        if (result != MMSYSERR_NOERROR) {
            TRACE("%s error %d for device %d\n", function, static_cast<int>(result),
                  static_cast<int>(device));
            continue;
        }
        char* name = capabilities.szPname;
        name[sizeof capabilities.szPname - 1] = '\0';
        TRACE("%d %s\n", static_cast<int>(device), name);
        if (text.find(name) != std::string::npos) {
            chosen = device;
            found = true;
        }
    }
    if (!found) {
        capabilities.szPname[0] = '\0';
    }
}

bool Succeeded(MMRESULT result, int code) {
    if (result == MMSYSERR_NOERROR) {
        return true;
    }
    char text[256] = "";
    // Knows the errors of outputs too. The number in the trace is its own result: not 0 when there is no
    // text.
    const MMRESULT found = midiInGetErrorTextA(result, text, sizeof text);
    TRACE("Midi %d: %s (%d)\n", code, text, static_cast<int>(found));
    return false;
}

// "IN: name, OUT: name", each name of one letter at least. By hand: the compiler's sscanf needs memory and
// does not say when there is none.
bool NamesDevices(std::string_view text) {
    const auto take = [&text](std::string_view word) {
        const bool isThere = text.substr(0, word.size()) == word;
        text.remove_prefix(isThere ? word.size() : 0);
        text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n\v\f"), text.size()));
        return isThere;
    };
    if (!take("IN:") || text.find(',') == 0 || text.find(',') == text.npos) {
        return false;
    }
    text.remove_prefix(text.find(','));
    return take(",") && take("OUT:") && !text.empty();
}

} // namespace

bool MIDIPROPERTIES::ChooseDevices(const std::string& text) {
    if (!NamesDevices(text)) {
        return false;
    }
    ChooseDevice(text, midiOutGetNumDevs(), midiOutGetDevCapsA, "midiOutGetDevCaps", outputDevice,
                 outputCapabilities);
    ChooseDevice(text, midiInGetNumDevs(), midiInGetDevCapsA, "midiInGetDevCaps", inputDevice,
                 inputCapabilities);
    Redraw();
    return true;
}

std::string MIDIPROPERTIES::DeviceNames() const {
    return std::string("IN: ") + inputCapabilities.szPname + ", OUT: " + outputCapabilities.szPname;
}

// Ports

MIDIPROPERTIES::~MIDIPROPERTIES() {
    if (running != 0) {
        ClosePorts();
    } else if (outputIsOpen_) {
        CloseOutput();
    }
}

void MIDIPROPERTIES::SwitchPorts(int action) {
    if (action == OPEN_PORTS) {
        OpenPorts();
    } else if (action == CLOSE_PORTS && running != 0) {
        ClosePorts();
    }
}

void MIDIPROPERTIES::OpenPorts() {
    AddMidiReceiver(Instance(), values);
    if (Succeeded(midiInOpen(&input, inputDevice, reinterpret_cast<DWORD_PTR>(MidiInProc), Instance(),
                             CALLBACK_FUNCTION),
                  FAILED_OPEN)) {
        running = 1;
        changed = ALL_CHANNELS;
        Succeeded(midiInStart(input), FAILED_OPEN);
    } else {
        RemoveMidiReceiver(Instance());
    }
    if (outputIsOpen_) { // left open by an attempt whose input failed
        CloseOutput();
        if (!a_IsAlive(this)) { // a control that ended meanwhile opens no port
            return;
        }
    }
    outputIsOpen_ = Succeeded(midiOutOpen(&output, outputDevice, reinterpret_cast<DWORD_PTR>(MidiOutProc),
                                          Instance(), CALLBACK_FUNCTION),
                              FAILED_OPEN);
}

namespace {

// A driver may take its time to close a port, or hang.
void CloseAside(HMIDIIN input, HMIDIOUT output) {
    RunAsideAndAwait([input, output] {
        if (input != nullptr) {
            Succeeded(midiInStop(input), FAILED_OPEN);
            Succeeded(midiInReset(input), FAILED_INPUT_RESET);
            if (!Succeeded(midiInClose(input), FAILED_INPUT_CLOSE)) {
                KeepMidiProcsLoaded();
            }
        }
        Succeeded(midiOutReset(output), FAILED_OUTPUT_RESET);
        Succeeded(midiOutClose(output), FAILED_OUTPUT_CLOSE);
    });
}

} // namespace

void MIDIPROPERTIES::ClosePorts() {
    running = 0;
    outputIsOpen_ = false;
    RemoveMidiReceiver(Instance()); // nothing reaches the values from now on
    CloseAside(input, output);
}

void MIDIPROPERTIES::CloseOutput() {
    outputIsOpen_ = false;
    CloseAside(nullptr, output);
}

// Values

void MIDIPROPERTIES::SetValue(unsigned channel, int value) {
    a_CheckIntRange(&value, 0, logic::HIGHEST_PITCH_BEND);
    values[channel].store(static_cast<std::uint16_t>(value), std::memory_order_relaxed);
    changed |= 1U << channel;
}

void MIDIPROPERTIES::Poll() {
    if (output == nullptr) {
        return;
    }
    const DWORD start = GetTickCount();
    for (unsigned channel = 0; channel < logic::PITCH_BEND_CHANNELS; ++channel) {
        if ((changed & 1U << channel) == 0) {
            continue;
        }
        changed &= ~(1U << channel);
        const std::uint16_t value = values[channel].load(std::memory_order_relaxed);
        const bool sent =
            Succeeded(midiOutShortMsg(output, logic::PitchBendMessage(channel, value)), FAILED_OPEN);
        const DWORD now = GetTickCount();
        const bool blocked = now - start > LONGEST_PASS;
        if (blocked) {
            lastPoll = now; // the panel gets an interval without
        }
        if (!sent || blocked) {
            return;
        }
    }
}

// Creation and drawing

void MIDIPROPERTIES::SetDefaults() {
    INTERFACEPROPERTIES::SetDefaults();
    font_.Load("Arial,8");
}

void MIDIPROPERTIES::Draw(HDC dc, const RECT& client) const {
    INTERFACEPROPERTIES::Draw(dc, client);
    const Selected font(dc, font_.Get());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, RGB(0, 0, 0));
    RECT place = client;
    DrawTextA(dc, DeviceNames().c_str(), -1, &place, DT_CENTER | DT_TOP | DT_SINGLELINE | DT_NOPREFIX);
}

namespace {

class MidiPicture : public SharedPicture {
public:
    explicit MidiPicture(const ControlClass& controlClass) : SharedPicture(controlClass) {
        if (Get() == nullptr) {
            TRACE("Midi Bitmap %d\n", static_cast<int>(GetLastError()));
        }
    }
};

} // namespace

extern const ControlImplementation midiControl = Implement<MIDIPROPERTIES>(
    InterfaceProc, NO_DIALOG,
    "Eight values that are sent to, and received from, MIDI ports as pitch bends on the channels 1 to "
    "8. See [interface controls](interface-controls.md#midi).",
    SharePicture<MidiPicture>);
