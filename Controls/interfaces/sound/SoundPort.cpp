#include "Controls/interfaces/sound/SoundPort.h"

#include "Panelhost/Trace.h"

#include <algorithm>
#include <cstring>

UINT OutputCalls::Count() {
    return waveOutGetNumDevs();
}
std::string OutputCalls::Name(UINT device) {
    WAVEOUTCAPSA capabilities{};
    const bool isKnown = waveOutGetDevCapsA(device, &capabilities, sizeof capabilities) == MMSYSERR_NOERROR;
    return isKnown ? std::string(capabilities.szPname, strnlen(capabilities.szPname, MAXPNAMELEN)) : "";
}
MMRESULT OutputCalls::Open(Handle* handle, UINT device, const WAVEFORMATEX* format, HANDLE event) {
    return waveOutOpen(handle, device, format, reinterpret_cast<DWORD_PTR>(event), 0, CALLBACK_EVENT);
}
MMRESULT OutputCalls::Prepare(Handle handle, WAVEHDR* header) {
    return waveOutPrepareHeader(handle, header, sizeof *header);
}
MMRESULT OutputCalls::Pass(Handle handle, WAVEHDR* header) {
    return waveOutWrite(handle, header, sizeof *header);
}
MMRESULT OutputCalls::Reset(Handle handle) {
    return waveOutReset(handle);
}
MMRESULT OutputCalls::Unprepare(Handle handle, WAVEHDR* header) {
    return waveOutUnprepareHeader(handle, header, sizeof *header);
}
MMRESULT OutputCalls::Close(Handle handle) {
    return waveOutClose(handle);
}
MMRESULT OutputCalls::ErrorText(MMRESULT error, char* text, UINT size) {
    return waveOutGetErrorTextA(error, text, size);
}

UINT InputCalls::Count() {
    return waveInGetNumDevs();
}
std::string InputCalls::Name(UINT device) {
    WAVEINCAPSA capabilities{};
    const bool isKnown = waveInGetDevCapsA(device, &capabilities, sizeof capabilities) == MMSYSERR_NOERROR;
    return isKnown ? std::string(capabilities.szPname, strnlen(capabilities.szPname, MAXPNAMELEN)) : "";
}
MMRESULT InputCalls::Open(Handle* handle, UINT device, const WAVEFORMATEX* format, HANDLE event) {
    return waveInOpen(handle, device, format, reinterpret_cast<DWORD_PTR>(event), 0, CALLBACK_EVENT);
}
MMRESULT InputCalls::Prepare(Handle handle, WAVEHDR* header) {
    return waveInPrepareHeader(handle, header, sizeof *header);
}
MMRESULT InputCalls::Pass(Handle handle, WAVEHDR* header) {
    return waveInAddBuffer(handle, header, sizeof *header);
}
MMRESULT InputCalls::Start(Handle handle) {
    return waveInStart(handle);
}
MMRESULT InputCalls::Reset(Handle handle) {
    return waveInReset(handle);
}
MMRESULT InputCalls::Unprepare(Handle handle, WAVEHDR* header) {
    return waveInUnprepareHeader(handle, header, sizeof *header);
}
MMRESULT InputCalls::Close(Handle handle) {
    return waveInClose(handle);
}
MMRESULT InputCalls::ErrorText(MMRESULT error, char* text, UINT size) {
    return waveInGetErrorTextA(error, text, size);
}

template <class Calls>
std::string SoundErrorText(MMRESULT error) {
    char text[MAXERRORLENGTH] = "";
    const bool isKnown = Calls::ErrorText(error, text, sizeof text) == MMSYSERR_NOERROR && *text != '\0';
    return isKnown ? text : "error " + std::to_string(error);
}
template std::string SoundErrorText<OutputCalls>(MMRESULT error);
template std::string SoundErrorText<InputCalls>(MMRESULT error);

namespace {

// What a device may take to give back what it was told to.
constexpr DWORD LONGEST_RETURN = 1000; // milliseconds
constexpr DWORD LOOK_AGAIN = 20;

template <class Calls>
UINT FindDevice(const std::string& name) {
    if (name.empty()) {
        return WAVE_MAPPER;
    }
    const UINT count = Calls::Count();
    UINT device = 0;
    while (device < count && Calls::Name(device).find(name) == std::string::npos) {
        ++device;
    }
    return device;
}

// With the length of what follows the fixed part.
std::vector<std::uint8_t> SystemFormat(std::vector<std::uint8_t> record) {
    record.resize(std::max(record.size(), sizeof(WAVEFORMATEX)));
    const auto behind = static_cast<WORD>(record.size() - sizeof(WAVEFORMATEX));
    std::memcpy(record.data() + offsetof(WAVEFORMATEX, cbSize), &behind, sizeof behind);
    return record;
}

} // namespace

template <class Calls>
MMRESULT SoundPort<Calls>::Open(const std::string& device, const std::vector<std::uint8_t>& formatRecord,
                                std::size_t count, std::size_t size) {
    const UINT found = FindDevice<Calls>(device);
    if (found != WAVE_MAPPER && found >= Calls::Count()) {
        return MMSYSERR_NODRIVER;
    }
    const std::vector<std::uint8_t> format = SystemFormat(formatRecord);
    MMRESULT result =
        Calls::Open(&handle_, found, reinterpret_cast<const WAVEFORMATEX*>(format.data()), event_);
    if (result != MMSYSERR_NOERROR) {
        handle_ = nullptr;
        return result;
    }
    Blocks().resize(count);
    for (Block& block : Blocks()) {
        block.bytes.resize(size);
        block.header.lpData = block.bytes.data();
        block.header.dwBufferLength = static_cast<DWORD>(size);
        result = Calls::Prepare(handle_, &block.header);
        if (result != MMSYSERR_NOERROR) {
            Close();
            return result;
        }
    }
    return MMSYSERR_NOERROR;
}

template <class Calls>
bool SoundPort<Calls>::HasReturned() const {
    const std::vector<Block>& blocks = Blocks();
    return passed_ > 0 &&
           (blocks[(next_ + blocks.size() - passed_) % blocks.size()].header.dwFlags & WHDR_DONE) != 0;
}

template <class Calls>
MMRESULT SoundPort<Calls>::Pass(std::size_t length) {
    WAVEHDR& header = Blocks()[next_].header;
    header.dwBufferLength = static_cast<DWORD>(length);
    header.dwBytesRecorded = 0;
    header.dwFlags &= ~static_cast<DWORD>(WHDR_DONE);
    const MMRESULT result = Calls::Pass(handle_, &header);
    if (result == MMSYSERR_NOERROR) {
        next_ = (next_ + 1) % Blocks().size();
        ++passed_;
    }
    return result;
}

template <class Calls>
std::span<const std::uint8_t> SoundPort<Calls>::TakeBack() {
    const std::vector<Block>& blocks = Blocks();
    const Block& block = blocks[(next_ + blocks.size() - passed_) % blocks.size()];
    --passed_;
    const std::size_t length = std::min<std::size_t>(block.header.dwBytesRecorded, block.bytes.size());
    return {reinterpret_cast<const std::uint8_t*>(block.bytes.data()), length};
}

template <class Calls>
bool SoundPort<Calls>::AllReturned() const {
    return std::none_of(Blocks().begin(), Blocks().end(),
                        [](const Block& block) { return (block.header.dwFlags & WHDR_INQUEUE) != 0; });
}

template <class Calls>
void SoundPort<Calls>::Reset() {
    const MMRESULT result = Calls::Reset(handle_);
    if (result != MMSYSERR_NOERROR) {
        TRACE("Sound device: it does not stop: %s\n", SoundErrorText<Calls>(result).c_str());
    }
    const DWORD start = GetTickCount();
    while (!AllReturned() && GetTickCount() - start < LONGEST_RETURN) {
        WaitForSingleObject(event_, LOOK_AGAIN);
    }
    next_ = 0;
    passed_ = 0;
}

template <class Calls>
void SoundPort<Calls>::Close() {
    if (handle_ == nullptr) {
        return;
    }
    Reset();
    MMRESULT result = MMSYSERR_NOERROR;
    for (Block& block : Blocks()) {
        if ((block.header.dwFlags & WHDR_PREPARED) != 0) {
            const MMRESULT released = Calls::Unprepare(handle_, &block.header);
            result = released != MMSYSERR_NOERROR ? released : result;
        }
    }
    const MMRESULT closed = Calls::Close(handle_);
    result = closed != MMSYSERR_NOERROR ? closed : result;
    handle_ = nullptr;
    if (result != MMSYSERR_NOERROR) {
        TRACE("Sound device: it cannot be closed: %s\n", SoundErrorText<Calls>(result).c_str());
    }
    if (AllReturned()) {
        Blocks().clear();
    } else { // the device may still read or write it
        blocks_.release();
        blocks_ = std::make_unique<std::vector<Block>>();
    }
}

template class SoundPort<OutputCalls>;
template class SoundPort<InputCalls>;
