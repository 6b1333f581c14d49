// The sound functions of the double.

#define _WINMM_ // the functions are defined here, not imported
#include "tests/doubles/winmm/SoundDouble.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <deque>
#include <memory>
#include <mmsystem.h>
#include <thread>

namespace {

constexpr int PULSE = 5;                       // milliseconds
constexpr std::size_t MOST_PLAYED = 16U << 20; // bytes that are kept
constexpr std::size_t MOST_UNHEARD = 1U << 20;

struct Port {
    bool isInput = false;
    WAVEFORMATEX format{};
    HANDLE event = nullptr;
    bool isStarted = false;
    std::deque<WAVEHDR*> blocks{};
    std::size_t done = 0; // bytes of the first of them
    double credit = 0;    // bytes that the clock allows
    std::string heard{};  // by an input, and not yet delivered
};

class Sound final : public SoundDouble {
public:
    void Reset(const std::vector<std::string>& newInputs, const std::vector<std::string>& newOutputs,
               int newSpeed) override {
        Forget();
        const std::lock_guard guard(lock_);
        inputs_ = newInputs;
        outputs_ = newOutputs;
        speed_ = newSpeed;
        isUnplugged_ = isFrozen_ = knowsOnly16Bits_ = false;
        played_.clear();
        std::erase_if(ports_, [](const auto& port) { return port->blocks.empty(); });
        prepared_ = 0;
    }
    void Unplug(bool isUnplugged) override {
        const std::lock_guard guard(lock_);
        isUnplugged_ = isUnplugged;
        for (const auto& port : ports_) {
            while (isUnplugged && !port->blocks.empty()) {
                Return(*port);
            }
        }
    }
    void Freeze(bool isFrozen) override {
        const std::lock_guard guard(lock_);
        isFrozen_ = isFrozen;
    }
    void KnowOnly16Bits(bool isSo) override {
        const std::lock_guard guard(lock_);
        knowsOnly16Bits_ = isSo;
    }
    int OpenPorts() override {
        const std::lock_guard guard(lock_);
        return static_cast<int>(ports_.size());
    }
    int PreparedBlocks() override {
        const std::lock_guard guard(lock_);
        return prepared_;
    }
    std::string TakePlayed() override {
        const std::lock_guard guard(lock_);
        return std::exchange(played_, {});
    }
    unsigned LastBits() override {
        const std::lock_guard guard(lock_);
        return lastBits_;
    }

    UINT Count(bool isInput) {
        const std::lock_guard guard(lock_);
        return isUnplugged_ ? 0 : static_cast<UINT>((isInput ? inputs_ : outputs_).size());
    }
    template <class Capabilities>
    MMRESULT Describe(const char* function, bool isInput, UINT_PTR device, Capabilities* capabilities,
                      UINT size) {
        if (const auto failure = Begin(function)) {
            return failure;
        }
        const std::lock_guard guard(lock_);
        const auto& names = isInput ? inputs_ : outputs_;
        if (isUnplugged_ || device >= names.size()) {
            return MMSYSERR_BADDEVICEID;
        }
        Capabilities described{};
        std::memcpy(described.szPname, names[device].data(),
                    std::min(names[device].size(), sizeof described.szPname));
        std::memcpy(capabilities, &described, size);
        return MMSYSERR_NOERROR;
    }

    template <class Handle>
    MMRESULT Open(const char* function, bool isInput, Handle* handle, UINT device, const WAVEFORMATEX* format,
                  DWORD_PTR callback, DWORD flags) {
        const std::string name = device == WAVE_MAPPER ? "default" : std::to_string(device);
        if (const auto failure = Begin(function, name)) {
            return failure;
        }
        const std::lock_guard guard(lock_);
        const auto& names = isInput ? inputs_ : outputs_;
        if (flags != CALLBACK_EVENT) {
            return MMSYSERR_INVALFLAG;
        }
        if (isUnplugged_ || names.empty() || (device != WAVE_MAPPER && device >= names.size())) {
            return MMSYSERR_BADDEVICEID;
        }
        if (!isInput && knowsOnly16Bits_ && format->wBitsPerSample != 16) {
            return WAVERR_BADFORMAT;
        }
        ports_.push_back(std::make_unique<Port>());
        Port& port = *ports_.back();
        port.isInput = isInput;
        port.format = *format;
        port.event = reinterpret_cast<HANDLE>(callback);
        port.isStarted = !isInput;
        if (!isInput) {
            lastBits_ = format->wBitsPerSample;
        }
        *handle = reinterpret_cast<Handle>(&port);
        if (!isTicking_) {
            isTicking_ = true;
            std::thread([this] { Tick(); }).detach();
        }
        SetEvent(port.event); // as it is told that the port is open
        return MMSYSERR_NOERROR;
    }

    MMRESULT Prepare(const char* function, const void* handle, WAVEHDR* header, bool isPrepared) {
        if (const auto failure = Begin(function)) {
            return failure;
        }
        const std::lock_guard guard(lock_);
        if (Find(handle) == nullptr) {
            return MMSYSERR_INVALHANDLE;
        }
        if ((header->dwFlags & WHDR_INQUEUE) != 0) {
            return WAVERR_STILLPLAYING;
        }
        if (((header->dwFlags & WHDR_PREPARED) != 0) != isPrepared) {
            header->dwFlags ^= WHDR_PREPARED;
            prepared_ += isPrepared ? 1 : -1;
        }
        return MMSYSERR_NOERROR;
    }

    MMRESULT Pass(const char* function, const void* handle, WAVEHDR* header) {
        if (const auto failure = Begin(function)) {
            return failure;
        }
        const std::lock_guard guard(lock_);
        Port* port = Find(handle);
        if (port == nullptr) {
            return MMSYSERR_INVALHANDLE;
        }
        if (isUnplugged_) {
            return MMSYSERR_NODRIVER;
        }
        if ((header->dwFlags & WHDR_PREPARED) == 0) {
            return WAVERR_UNPREPARED;
        }
        header->dwFlags = (header->dwFlags & ~static_cast<DWORD>(WHDR_DONE)) | WHDR_INQUEUE;
        header->dwBytesRecorded = 0;
        port->blocks.push_back(header);
        return MMSYSERR_NOERROR;
    }

    MMRESULT Start(const char* function, const void* handle) {
        if (const auto failure = Begin(function)) {
            return failure;
        }
        const std::lock_guard guard(lock_);
        Port* port = Find(handle);
        if (port == nullptr) {
            return MMSYSERR_INVALHANDLE;
        }
        port->isStarted = true;
        return MMSYSERR_NOERROR;
    }

    MMRESULT Reset(const char* function, const void* handle) {
        if (const auto failure = Begin(function)) {
            return failure;
        }
        const std::lock_guard guard(lock_);
        Port* port = Find(handle);
        if (port == nullptr) {
            return MMSYSERR_INVALHANDLE;
        }
        while (!port->blocks.empty()) {
            Return(*port);
        }
        return MMSYSERR_NOERROR;
    }

    MMRESULT Close(const char* function, const void* handle) {
        if (const auto failure = Begin(function, "port")) {
            return failure;
        }
        const std::lock_guard guard(lock_);
        Port* port = Find(handle);
        if (port == nullptr) {
            return MMSYSERR_INVALHANDLE;
        }
        if (!port->blocks.empty()) {
            return WAVERR_STILLPLAYING;
        }
        std::erase_if(ports_, [port](const auto& one) { return one.get() == port; });
        return MMSYSERR_NOERROR;
    }

    MMRESULT Text(const char* function, MMRESULT error, char* text, UINT size) {
        std::snprintf(text, size, "error %u of %u", error, size);
        return Begin(function);
    }

private:
    Port* Find(const void* handle) {
        const auto found = std::find_if(ports_.begin(), ports_.end(),
                                        [handle](const auto& one) { return one.get() == handle; });
        return found == ports_.end() ? nullptr : found->get();
    }

    static void Return(Port& port) {
        WAVEHDR& header = *port.blocks.front();
        if (port.isInput) {
            header.dwBytesRecorded = static_cast<DWORD>(port.done);
        }
        port.blocks.pop_front();
        port.done = 0;
        header.dwFlags = (header.dwFlags & ~static_cast<DWORD>(WHDR_INQUEUE)) | WHDR_DONE;
        SetEvent(port.event);
    }

    // Until no port is left.
    void Tick() {
        LARGE_INTEGER frequency;
        LARGE_INTEGER last;
        QueryPerformanceFrequency(&frequency);
        QueryPerformanceCounter(&last);
        for (;;) {
            Sleep(PULSE);
            LARGE_INTEGER now;
            QueryPerformanceCounter(&now);
            const double passed =
                static_cast<double>(now.QuadPart - last.QuadPart) / static_cast<double>(frequency.QuadPart);
            last = now;
            const std::lock_guard guard(lock_);
            if (ports_.empty()) {
                isTicking_ = false;
                return;
            }
            for (const bool isInput : {false, true}) { // what is played is heard at once
                for (const auto& port : ports_) {
                    if (port->isInput == isInput && port->isStarted) {
                        Advance(*port, passed);
                    }
                }
            }
        }
    }

    void Advance(Port& port, double seconds) {
        if (isUnplugged_ || isFrozen_) {
            return;
        }
        port.credit += seconds * speed_ * port.format.nAvgBytesPerSec;
        if (port.blocks.empty()) {
            port.credit = 0;
        }
        while (!port.blocks.empty()) {
            WAVEHDR& header = *port.blocks.front();
            std::size_t count = std::min<std::size_t>(header.dwBufferLength - port.done,
                                                      static_cast<std::size_t>(port.credit));
            if (port.isInput && HasSource(port)) {
                count = std::min(count, port.heard.size());
            }
            count -= count % port.format.nBlockAlign;
            if (count > 0) {
                port.isInput ? Hear(port, header.lpData + port.done, count)
                             : PlayBytes(port, header.lpData + port.done, count);
            }
            port.done += count;
            port.credit -= static_cast<double>(count);
            if (port.done < header.dwBufferLength) {
                port.credit = std::min(port.credit, double{MOST_UNHEARD});
                return;
            }
            Return(port);
        }
    }

    static bool IsAlike(const Port& one, const Port& other) {
        return std::memcmp(&one.format, &other.format, offsetof(WAVEFORMATEX, cbSize)) == 0;
    }
    // While an output of its format is open an input goes by its clock: nothing comes between.
    bool HasSource(const Port& input) const {
        return std::any_of(ports_.begin(), ports_.end(),
                           [&](const auto& port) { return !port->isInput && IsAlike(*port, input); });
    }

    void PlayBytes(const Port& from, const char* bytes, std::size_t count) {
        played_.append(bytes, count);
        if (played_.size() > MOST_PLAYED) {
            played_.erase(0, played_.size() - MOST_PLAYED / 2);
        }
        for (const auto& port : ports_) {
            if (port->isInput && port->isStarted && IsAlike(*port, from)) {
                port->heard.append(bytes, count);
                if (port->heard.size() > MOST_UNHEARD) {
                    const std::size_t surplus = port->heard.size() - MOST_UNHEARD;
                    port->heard.erase(0, surplus - surplus % port->format.nBlockAlign);
                }
            }
        }
    }

    static void Hear(Port& port, char* into, std::size_t count) {
        const std::size_t heard = std::min(count, port.heard.size());
        std::memcpy(into, port.heard.data(), heard);
        std::memset(into + heard, port.format.wBitsPerSample == 8 ? 128 : 0, count - heard);
        port.heard.erase(0, heard);
    }

    std::mutex lock_;
    std::vector<std::string> inputs_;
    std::vector<std::string> outputs_;
    int speed_ = 1;
    bool isUnplugged_ = false;
    bool isFrozen_ = false;
    bool knowsOnly16Bits_ = false;
    bool isTicking_ = false;
    int prepared_ = 0;
    unsigned lastBits_ = 0;
    std::string played_;
    std::vector<std::unique_ptr<Port>> ports_;
};
Sound sound;

} // namespace

extern "C" {

SoundDouble* GetSoundDouble() {
    return &sound;
}

UINT WINAPI waveOutGetNumDevs() {
    return sound.Count(false);
}
UINT WINAPI waveInGetNumDevs() {
    return sound.Count(true);
}
MMRESULT WINAPI waveOutGetDevCapsA(UINT_PTR device, LPWAVEOUTCAPSA capabilities, UINT size) {
    return sound.Describe("waveOutGetDevCapsA", false, device, capabilities, size);
}
MMRESULT WINAPI waveInGetDevCapsA(UINT_PTR device, LPWAVEINCAPSA capabilities, UINT size) {
    return sound.Describe("waveInGetDevCapsA", true, device, capabilities, size);
}
MMRESULT WINAPI waveOutGetErrorTextA(MMRESULT error, LPSTR text, UINT size) {
    return sound.Text("waveOutGetErrorTextA", error, text, size);
}
MMRESULT WINAPI waveInGetErrorTextA(MMRESULT error, LPSTR text, UINT size) {
    return sound.Text("waveInGetErrorTextA", error, text, size);
}
MMRESULT WINAPI waveOutOpen(LPHWAVEOUT handle, UINT device, LPCWAVEFORMATEX format, DWORD_PTR callback,
                            DWORD_PTR, DWORD flags) {
    return sound.Open("waveOutOpen", false, handle, device, format, callback, flags);
}
MMRESULT WINAPI waveInOpen(LPHWAVEIN handle, UINT device, LPCWAVEFORMATEX format, DWORD_PTR callback,
                           DWORD_PTR, DWORD flags) {
    return sound.Open("waveInOpen", true, handle, device, format, callback, flags);
}
MMRESULT WINAPI waveOutPrepareHeader(HWAVEOUT handle, LPWAVEHDR header, UINT) {
    return sound.Prepare("waveOutPrepareHeader", handle, header, true);
}
MMRESULT WINAPI waveInPrepareHeader(HWAVEIN handle, LPWAVEHDR header, UINT) {
    return sound.Prepare("waveInPrepareHeader", handle, header, true);
}
MMRESULT WINAPI waveOutUnprepareHeader(HWAVEOUT handle, LPWAVEHDR header, UINT) {
    return sound.Prepare("waveOutUnprepareHeader", handle, header, false);
}
MMRESULT WINAPI waveInUnprepareHeader(HWAVEIN handle, LPWAVEHDR header, UINT) {
    return sound.Prepare("waveInUnprepareHeader", handle, header, false);
}
MMRESULT WINAPI waveOutWrite(HWAVEOUT handle, LPWAVEHDR header, UINT) {
    return sound.Pass("waveOutWrite", handle, header);
}
MMRESULT WINAPI waveInAddBuffer(HWAVEIN handle, LPWAVEHDR header, UINT) {
    return sound.Pass("waveInAddBuffer", handle, header);
}
MMRESULT WINAPI waveInStart(HWAVEIN handle) {
    return sound.Start("waveInStart", handle);
}
MMRESULT WINAPI waveOutReset(HWAVEOUT handle) {
    return sound.Reset("waveOutReset", handle);
}
MMRESULT WINAPI waveInReset(HWAVEIN handle) {
    return sound.Reset("waveInReset", handle);
}
MMRESULT WINAPI waveOutClose(HWAVEOUT handle) {
    return sound.Close("waveOutClose", handle);
}
MMRESULT WINAPI waveInClose(HWAVEIN handle) {
    return sound.Close("waveInClose", handle);
}

} // extern "C"
