#include "Controls/interfaces/midi/MidiDriver.h"

#include "Panelhost/Trace.h"
#include "base/SharedLock.h"

#include <cstdint>
#include <vector>

namespace {

// A driver knows a receiver by its instance data only, and may call late: it reaches the values here or not
// at all.
struct Receiver {
    DWORD_PTR instance;
    MidiValues* values;
};
SharedLock receiversLock;
std::vector<Receiver> receivers;

void Store(DWORD_PTR instance, const logic::PitchBend& received) {
    const SharedLock::Reading reading(receiversLock);
    for (const Receiver& receiver : receivers) {
        if (receiver.instance == instance) {
            (*receiver.values)[received.channel].store(received.value, std::memory_order_relaxed);
        }
    }
}

} // namespace

void CALLBACK MidiInProc(HMIDIIN, UINT message, DWORD_PTR instance, DWORD_PTR parameter, DWORD_PTR) {
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
            Store(instance, *received);
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

void AddMidiReceiver(DWORD_PTR instance, MidiValues& values) {
    const SharedLock::Writing writing(receiversLock);
    receivers.push_back({instance, &values});
}

void RemoveMidiReceiver(DWORD_PTR instance) {
    const SharedLock::Writing writing(receiversLock);
    std::erase_if(receivers, [instance](const Receiver& receiver) { return receiver.instance == instance; });
}

void KeepMidiProcsLoaded() {
    HMODULE library = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<const char*>(&MidiInProc), &library);
}
