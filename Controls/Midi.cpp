// IMIDI: eight panel values as pitch-bend messages on the MIDI channels 1 to 8. What the panel sets goes to
// the output port, at most one pass an interval; what the input port receives is taken by whoever is
// connected to the value when it next asks. Intervals in milliseconds, values from 0 to
// logic::HIGHEST_PITCH_BEND.

#include "Controls/framework/Controls.h"
#include "Controls/framework/InterfaceControl.h"
#include "Controls/framework/Keywords.h"
#include "Panelhost/Gdi.h"
#include "Panelhost/SharedLock.h"
#include "logic/PitchBend.h"

#include <mmsystem.h>

#include <array>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

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

// A port that takes longer for one message blocks the panel: it goes on with the others in its next pass.
constexpr DWORD BLOCKING_TIME = 250;

} // namespace

class MIDIPROPERTIES : public INTERFACEPROPERTIES {
public:
    ~MIDIPROPERTIES() override;
    const KEYWORDROW* GetHostinfoTable() override;
    void SetDefaults() override;
    SIZE SizeWithoutPicture() const override { return {300, 50}; }
    LRESULT OnTimer(WPARAM timer, LPARAM lParam) override;
    void Poll() override; // sends what has changed, lowest channel first
    void Draw(HDC dc, const RECT& client) const override;

    // "IN: name, OUT: name". Returns 0, and changes nothing, when the text is not of that form.
    int ChooseDevices(const char* text);
    std::string DeviceNames() const;
    void SetValue(unsigned channel, int value);
    // Other values than OPEN_PORTS and CLOSE_PORTS do nothing.
    void SwitchPorts(int action);

    // Of the channels, counted from 0. The driver stores here on a thread of its own.
    std::array<std::atomic<std::uint16_t>, logic::PITCH_BEND_CHANNELS> values{};
    unsigned changed = 0; // bit n: channel n has to be sent
    int running = 0;      // 1 while the input is open; the output can be open without it

    HMIDIIN input = nullptr; // deliberately, the handles stay when the ports are closed
    HMIDIOUT output = nullptr;
    UINT inputDevice = 0;
    UINT outputDevice = 0;
    MIDIINCAPSA inputCapabilities{}; // the names in them are shown and saved
    MIDIOUTCAPSA outputCapabilities{};

private:
    void OpenPorts();
    void ClosePorts();
    void CloseOutput();

    bool outputIsOpen_ = false;
    FontProperty font_;
};

// Callbacks of the driver

namespace {

// The objects whose input is open. A driver knows an object by its address only, calls on threads of its own
// and may call late: it reaches the object here or not at all.
class Receivers {
public:
    void Add(MIDIPROPERTIES* receiver) {
        const SharedLock::Writing writing(lock_);
        receivers_.push_back(receiver);
    }
    // No call is inside the object any more when it returns.
    void Remove(MIDIPROPERTIES* receiver) {
        const SharedLock::Writing writing(lock_);
        std::erase(receivers_, receiver);
    }
    void Store(DWORD_PTR receiver, const logic::PitchBend& received) {
        const SharedLock::Reading reading(lock_);
        for (MIDIPROPERTIES* known : receivers_) {
            if (reinterpret_cast<DWORD_PTR>(known) == receiver) {
                known->values[received.channel].store(received.value, std::memory_order_relaxed);
            }
        }
    }

private:
    SharedLock lock_;
    std::vector<MIDIPROPERTIES*> receivers_;
};
Receivers receivers;

void CALLBACK MidiInProc(HMIDIIN, UINT message, DWORD_PTR receiver, DWORD_PTR parameter, DWORD_PTR) {
    switch (message) {
    case MM_MIM_OPEN:
        TRACE("MM_MIM_OPEN\n");
        break;
    case MM_MIM_CLOSE:
        TRACE("MM_MIM_CLOSE\n");
        break;
    case MM_MIM_DATA: {
        TRACE("MM_MIM_DATA\n");
        const auto bytes = static_cast<std::uint32_t>(parameter);
        if (const auto received = logic::ReadPitchBend(bytes)) {
            receivers.Store(receiver, *received);
        }
        TRACE("0x%02x 0x%02x 0x%02x \n", static_cast<unsigned>(bytes & 0xFF),
              static_cast<unsigned>(bytes >> 8 & 0xFF), static_cast<unsigned>(bytes >> 16 & 0xFF));
        break;
    }
    case MM_MIM_LONGDATA:
        TRACE("MM_MIM_LONGDATA\n");
        break;
    case MM_MIM_ERROR:
        TRACE("MM_MIM_ERROR\n");
        break;
    case MM_MIM_MOREDATA:
        TRACE("MM_MIM_MOREDATA\n");
        break;
    default:
        TRACE("midiInProc %x\n", message);
        break;
    }
}

void CALLBACK MidiOutProc(HMIDIOUT, UINT message, DWORD_PTR, DWORD_PTR, DWORD_PTR) {
    switch (message) {
    case MM_MOM_OPEN:
        TRACE("MM_MOM_OPEN\n");
        break;
    case MM_MOM_CLOSE:
        TRACE("MM_MOM_CLOSE\n");
        break;
    case MM_MOM_DONE:
        TRACE("MM_MOM_DONE\n");
        break;
    default:
        TRACE("midiOutProc %x\n", message);
        break;
    }
}

} // namespace

// Keyword handlers

namespace {

MIDIPROPERTIES& Midi(HOSTINFO* object) {
    return *static_cast<MIDIPROPERTIES*>(object);
}

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

// Deliberately, a set answers 0 even when the value was taken, and texts are not taken, those of a panel file
// included: the values are what the present panel and the present input make them.
template <unsigned Channel>
int ChannelKeyword(VALUERECORD* record, HOSTINFO* object) {
    MIDIPROPERTIES& midi = Midi(object);
    if (record->command == COMMAND_GET) {
        return AnswerChannel(record, midi.values[Channel].load(std::memory_order_relaxed));
    }
    if (record->command != COMMAND_SET) {
        return 0;
    }
    int integer = 0;
    float number = 0;
    if (record->datatype == DATATYPE_INTEGER && a_ReadInteger(record, &integer) != 0) {
        midi.SetValue(Channel, integer);
    } else if (record->datatype == DATATYPE_FLOAT && a_ReadFloat(record, &number) != 0) {
        midi.SetValue(Channel, logic::RoundPitchBend(number));
    }
    return 0;
}

int DriverKeyword(VALUERECORD* record, HOSTINFO* object) {
    MIDIPROPERTIES& midi = Midi(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, midi.DeviceNames().c_str());
    }
    const auto text = TextToSet(record);
    return text ? midi.ChooseDevices(text->c_str()) : 0;
}

int RunKeyword(VALUERECORD* record, HOSTINFO* object) {
    MIDIPROPERTIES& midi = Midi(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerInteger(record, midi.running);
    }
    int action = 0;
    if (record->command != COMMAND_SET || record->datatype == DATATYPE_FLOAT ||
        a_ReadInteger(record, &action) == 0) {
        return 0;
    }
    if (midi.running != (action != 0 ? 1 : 0)) {
        midi.SwitchPorts(action);
    }
    return 1;
}

constexpr KEYWORDROW KEYWORDS[] = {
    {" ", nullptr, 0}, // no value of the control as a whole
    {"chan1value", ChannelKeyword<0>, KEYWORD_SAVED},
    {"chan2value", ChannelKeyword<1>, KEYWORD_SAVED},
    {"chan3value", ChannelKeyword<2>, KEYWORD_SAVED},
    {"chan4value", ChannelKeyword<3>, KEYWORD_SAVED},
    {"chan5value", ChannelKeyword<4>, KEYWORD_SAVED},
    {"chan6value", ChannelKeyword<5>, KEYWORD_SAVED},
    {"chan7value", ChannelKeyword<6>, KEYWORD_SAVED},
    {"chan8value", ChannelKeyword<7>, KEYWORD_SAVED},
    {"connection", RefusedKeyword, 0},
    {"driver", TextOnly<DriverKeyword>, KEYWORD_SAVED},
    {"interval", IntervalKeyword, KEYWORD_SAVED},
    {"layer", LayerKeyword, 0},
    {"run", RunKeyword, KEYWORD_SAVED}, // behind the driver: a panel chooses its devices, then opens them
    {},
};
static_assert(KeywordsAreUnique(KEYWORDS));

} // namespace

const KEYWORDROW* MIDIPROPERTIES::GetHostinfoTable() {
    return KEYWORDS;
}

// Devices

namespace {

// Deliberately, every device is asked, so that the capabilities are in the end those of the last one,
// whichever of them has been found; and its name is looked for in the whole text, which names input and
// output.
template <class Capabilities>
void ChooseDevice(const char* text, UINT count,
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
        if (std::strstr(text, name) != nullptr) {
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

// An input that cannot be closed goes on calling.
void KeepLibraryLoaded() {
    HMODULE library = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<const char*>(&MidiInProc), &library);
}

} // namespace

int MIDIPROPERTIES::ChooseDevices(const char* text) {
    int end = 0;
    std::sscanf(text, "IN: %*[^,], OUT: %*s%n", &end);
    if (end == 0) {
        return 0;
    }
    ChooseDevice(text, midiOutGetNumDevs(), midiOutGetDevCapsA, "midiOutGetDevCaps", outputDevice,
                 outputCapabilities);
    ChooseDevice(text, midiInGetNumDevs(), midiInGetDevCapsA, "midiInGetDevCaps", inputDevice,
                 inputCapabilities);
    Redraw();
    return 1;
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
    const auto instance = reinterpret_cast<DWORD_PTR>(this);
    receivers.Add(this);
    if (Succeeded(midiInOpen(&input, inputDevice, reinterpret_cast<DWORD_PTR>(MidiInProc), instance,
                             CALLBACK_FUNCTION),
                  FAILED_OPEN)) {
        running = 1;
        changed = ALL_CHANNELS;
        Succeeded(midiInStart(input), FAILED_OPEN);
    } else {
        receivers.Remove(this);
    }
    if (outputIsOpen_) { // left open by an attempt whose input failed
        CloseOutput();
    }
    outputIsOpen_ = Succeeded(midiOutOpen(&output, outputDevice, reinterpret_cast<DWORD_PTR>(MidiOutProc),
                                          instance, CALLBACK_FUNCTION),
                              FAILED_OPEN);
}

void MIDIPROPERTIES::ClosePorts() {
    running = 0;
    Succeeded(midiInStop(input), FAILED_OPEN);
    Succeeded(midiInReset(input), FAILED_INPUT_RESET);
    if (!Succeeded(midiInClose(input), FAILED_INPUT_CLOSE)) {
        KeepLibraryLoaded();
    }
    receivers.Remove(this);
    CloseOutput();
}

void MIDIPROPERTIES::CloseOutput() {
    outputIsOpen_ = false;
    Succeeded(midiOutReset(output), FAILED_OUTPUT_RESET);
    Succeeded(midiOutClose(output), FAILED_OUTPUT_CLOSE);
}

// Values

void MIDIPROPERTIES::SetValue(unsigned channel, int value) {
    a_CheckIntRange(&value, 0, logic::HIGHEST_PITCH_BEND);
    values[channel].store(static_cast<std::uint16_t>(value), std::memory_order_relaxed);
    changed |= 1U << channel;
}

LRESULT MIDIPROPERTIES::OnTimer(WPARAM timer, LPARAM lParam) {
    if (GetCapture() == window) {
        return 0;
    }
    return INTERFACEPROPERTIES::OnTimer(timer, lParam);
}

void MIDIPROPERTIES::Poll() {
    if (output == nullptr) {
        return;
    }
    for (unsigned channel = 0; channel < logic::PITCH_BEND_CHANNELS; ++channel) {
        if ((changed & 1U << channel) == 0) {
            continue;
        }
        changed &= ~(1U << channel);
        const std::uint16_t value = values[channel].load(std::memory_order_relaxed);
        const DWORD start = GetTickCount();
        const bool sent =
            Succeeded(midiOutShortMsg(output, logic::PitchBendMessage(channel, value)), FAILED_OPEN);
        const DWORD now = GetTickCount();
        const bool blocked = now - start > BLOCKING_TIME;
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
    interval = 1000;
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

const ControlImplementation midiControl{CreateProperties<MIDIPROPERTIES>, InterfaceProc};
