// The MIDI functions of the double. Outputs serve one client at a time, as those of most drivers do, and
// closing a port waits for the callbacks that are running.

#define _WINMM_ // the functions are defined here, not imported
#include "tests/doubles/winmm/MidiDouble.h"

#include <algorithm>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <deque>
#include <mutex>
#include <set>
#include <utility>

namespace {

using Callback = void(CALLBACK*)(UINT_PTR handle, UINT message, DWORD_PTR instance, DWORD_PTR, DWORD_PTR);

struct Port {
    bool isInput;
    UINT device;
    Callback callback;
    DWORD_PTR instance;
    UINT_PTR handle;
    bool isOpen = true;
    int calls = 0;               // of the callback, so far
    std::set<int> callsInside{}; // their numbers
};

class Driver final : public MidiDouble {
public:
    void Reset(const std::vector<std::string>& newInputs,
               const std::vector<std::string>& newOutputs) override {
        const std::lock_guard guard(lock_);
        inputs = newInputs;
        outputs = newOutputs;
        failures.clear();
        delays.clear();
        calls_.clear();
        ports_.clear();
        ResetEvent(goesOn_);
    }
    void EndDelays() override { SetEvent(goesOn_); }

    std::string TakeCalls() override {
        const std::lock_guard guard(lock_);
        return std::exchange(calls_, {});
    }
    int OpenPorts() const override {
        const std::lock_guard guard(lock_);
        int open = 0;
        for (const Port& port : ports_) {
            open += port.isOpen;
        }
        return open;
    }
    void CallInput(UINT message, DWORD_PTR parameter) override { Call(LastInput(), message, parameter); }

    // What the test wants of a call of that function.
    MMRESULT Begin(const char* function) {
        if (const auto delay = delays.find(function); delay != delays.end()) {
            WaitForSingleObject(goesOn_, delay->second);
        }
        const auto failure = failures.find(function);
        return failure == failures.end() ? MMRESULT{MMSYSERR_NOERROR} : failure->second;
    }

    MMRESULT Open(const char* function, bool isInput, void* handle, UINT device, DWORD_PTR callback,
                  DWORD_PTR instance, DWORD flags) {
        *static_cast<UINT_PTR*>(handle) = 0;
        Log(std::string(function) + " " + std::to_string(device));
        if (const MMRESULT result = Begin(function); result != MMSYSERR_NOERROR) {
            return result;
        }
        if (flags != CALLBACK_FUNCTION) {
            return MMSYSERR_INVALFLAG;
        }
        if (device >= (isInput ? inputs : outputs).size()) {
            return MMSYSERR_BADDEVICEID;
        }
        Port* opened = nullptr;
        {
            const std::lock_guard guard(lock_);
            for (const Port& port : ports_) {
                if (!isInput && !port.isInput && port.isOpen && port.device == device) {
                    return MMSYSERR_ALLOCATED;
                }
            }
            const UINT_PTR made = FIRST_HANDLE + ports_.size();
            ports_.push_back({isInput, device, reinterpret_cast<Callback>(callback), instance, made});
            *static_cast<UINT_PTR*>(handle) = made;
            opened = &ports_.back();
        }
        Call(opened, isInput ? MM_MIM_OPEN : MM_MOM_OPEN, 0);
        return MMSYSERR_NOERROR;
    }

    // A call with an open port, apart from its closing.
    MMRESULT Use(const char* function, bool isInput, const void* handle, const std::string& arguments = {}) {
        const Port* port = Find(isInput, handle);
        Log(std::string(function) + " " + (port == nullptr ? "invalid" : std::to_string(port->device)) +
            arguments);
        const MMRESULT result = Begin(function);
        return result == MMSYSERR_NOERROR && port == nullptr ? MMRESULT{MMSYSERR_INVALHANDLE} : result;
    }

    MMRESULT Close(const char* function, bool isInput, const void* handle) {
        if (const MMRESULT result = Use(function, isInput, handle); result != MMSYSERR_NOERROR) {
            return result;
        }
        Port* port = Find(isInput, handle);
        {
            std::unique_lock guard(lock_);
            port->isOpen = false;
            const int before = port->calls;
            idle_.wait(guard,
                       [&] { return port->callsInside.empty() || *port->callsInside.begin() >= before; });
        }
        Call(port, isInput ? MM_MIM_CLOSE : MM_MOM_CLOSE, 0);
        return MMSYSERR_NOERROR;
    }

    std::vector<std::string> inputs;
    std::vector<std::string> outputs;

private:
    static constexpr UINT_PTR FIRST_HANDLE = 0x1000;

    void Log(const std::string& call) {
        const std::lock_guard guard(lock_);
        calls_ += (calls_.empty() ? "" : "; ") + call;
    }

    Port* Find(bool isInput, const void* handle) {
        const std::lock_guard guard(lock_);
        const UINT_PTR index = reinterpret_cast<UINT_PTR>(handle) - FIRST_HANDLE;
        return index < ports_.size() && ports_[index].isInput == isInput && ports_[index].isOpen
                   ? &ports_[index]
                   : nullptr;
    }

    Port* LastInput() {
        const std::lock_guard guard(lock_);
        for (auto port = ports_.rbegin(); port != ports_.rend(); ++port) {
            if (port->isInput) {
                return &*port;
            }
        }
        return nullptr;
    }

    void Call(Port* port, UINT message, DWORD_PTR parameter) {
        int number = 0;
        {
            const std::lock_guard guard(lock_);
            number = port->calls++;
            port->callsInside.insert(number);
        }
        port->callback(port->handle, message, port->instance, parameter, 0);
        const std::lock_guard guard(lock_);
        port->callsInside.erase(number);
        idle_.notify_all();
    }

    HANDLE goesOn_ = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    mutable std::mutex lock_;
    std::condition_variable idle_;
    std::string calls_;
    std::deque<Port> ports_; // stay where they are
};
Driver driver;

template <class Capabilities>
MMRESULT Describe(const char* function, const std::vector<std::string>& devices, UINT_PTR device,
                  Capabilities* capabilities, UINT size) {
    if (const MMRESULT result = driver.Begin(function); result != MMSYSERR_NOERROR) {
        return result;
    }
    if (device >= devices.size()) {
        return MMSYSERR_BADDEVICEID;
    }
    Capabilities described{};
    // No zero behind a name that fills it.
    std::memcpy(described.szPname, devices[device].data(),
                std::min(devices[device].size(), sizeof described.szPname));
    std::memcpy(capabilities, &described, size);
    return MMSYSERR_NOERROR;
}

} // namespace

extern "C" {

MidiDouble* GetMidiDouble() {
    return &driver;
}

UINT WINAPI midiInGetNumDevs() {
    return driver.inputs.size();
}
UINT WINAPI midiOutGetNumDevs() {
    return driver.outputs.size();
}
MMRESULT WINAPI midiInGetDevCapsA(UINT_PTR device, LPMIDIINCAPSA capabilities, UINT size) {
    return Describe("midiInGetDevCapsA", driver.inputs, device, capabilities, size);
}
MMRESULT WINAPI midiOutGetDevCapsA(UINT_PTR device, LPMIDIOUTCAPSA capabilities, UINT size) {
    return Describe("midiOutGetDevCapsA", driver.outputs, device, capabilities, size);
}
MMRESULT WINAPI midiInGetErrorTextA(MMRESULT error, LPSTR text, UINT size) {
    std::snprintf(text, size, "error %u of %u", error, size);
    return driver.Begin("midiInGetErrorTextA");
}

MMRESULT WINAPI midiInOpen(LPHMIDIIN handle, UINT device, DWORD_PTR callback, DWORD_PTR instance,
                           DWORD flags) {
    return driver.Open("midiInOpen", true, handle, device, callback, instance, flags);
}
MMRESULT WINAPI midiInStart(HMIDIIN handle) {
    return driver.Use("midiInStart", true, handle);
}
MMRESULT WINAPI midiInStop(HMIDIIN handle) {
    return driver.Use("midiInStop", true, handle);
}
MMRESULT WINAPI midiInReset(HMIDIIN handle) {
    return driver.Use("midiInReset", true, handle);
}
MMRESULT WINAPI midiInClose(HMIDIIN handle) {
    return driver.Close("midiInClose", true, handle);
}

MMRESULT WINAPI midiOutOpen(LPHMIDIOUT handle, UINT device, DWORD_PTR callback, DWORD_PTR instance,
                            DWORD flags) {
    return driver.Open("midiOutOpen", false, handle, device, callback, instance, flags);
}
MMRESULT WINAPI midiOutShortMsg(HMIDIOUT handle, DWORD message) {
    char word[16];
    std::snprintf(word, sizeof word, " %08lx", message);
    return driver.Use("midiOutShortMsg", false, handle, word);
}
MMRESULT WINAPI midiOutReset(HMIDIOUT handle) {
    return driver.Use("midiOutReset", false, handle);
}
MMRESULT WINAPI midiOutClose(HMIDIOUT handle) {
    return driver.Close("midiOutClose", false, handle);
}

} // extern "C"
