#pragma once

#include "logic/sound/SampleFormat.h"

#include <windows.h>

#include <cstdint>
#include <memory>
#include <mmsystem.h>
#include <string>
#include <vector>

// An open sound device of the system and the blocks that it plays or fills. The system signals an event when
// it is done with one; nothing is called back. For a worker thread: each call may take its time.

// What outputs and inputs of the system are called by.
struct OutputCalls {
    using Handle = HWAVEOUT;
    static UINT Count();
    static std::string Name(UINT device); // empty when it cannot be had
    static MMRESULT Open(Handle* handle, UINT device, const WAVEFORMATEX* format, HANDLE event);
    static MMRESULT Prepare(Handle handle, WAVEHDR* header);
    static MMRESULT Pass(Handle handle, WAVEHDR* header);
    static MMRESULT Start(Handle) { return MMSYSERR_NOERROR; } // it plays as soon as it has something
    static MMRESULT Reset(Handle handle);
    static MMRESULT Unprepare(Handle handle, WAVEHDR* header);
    static MMRESULT Close(Handle handle);
    static MMRESULT ErrorText(MMRESULT error, char* text, UINT size);
};
struct InputCalls {
    using Handle = HWAVEIN;
    static UINT Count();
    static std::string Name(UINT device);
    static MMRESULT Open(Handle* handle, UINT device, const WAVEFORMATEX* format, HANDLE event);
    static MMRESULT Prepare(Handle handle, WAVEHDR* header);
    static MMRESULT Pass(Handle handle, WAVEHDR* header);
    static MMRESULT Start(Handle handle);
    static MMRESULT Reset(Handle handle);
    static MMRESULT Unprepare(Handle handle, WAVEHDR* header);
    static MMRESULT Close(Handle handle);
    static MMRESULT ErrorText(MMRESULT error, char* text, UINT size);
};

// In words.
template <class Calls>
std::string SoundErrorText(MMRESULT error);

template <class Calls>
class SoundPort {
public:
    // The event is signalled when a block is done; both live as long as the port.
    explicit SoundPort(HANDLE event) : event_(event) {}
    ~SoundPort() { Close(); }
    SoundPort(const SoundPort&) = delete;
    SoundPort& operator=(const SoundPort&) = delete;

    // The first device whose name contains the text, or the default one for an empty text; with that many
    // blocks of so many bytes. The record is that of FormatRecord or a longer one. After a failure it is
    // closed.
    MMRESULT Open(const std::string& device, const std::vector<std::uint8_t>& formatRecord, std::size_t count,
                  std::size_t size);
    MMRESULT Start() { return Calls::Start(handle_); }

    // The blocks are passed to the device, and come back, by turns.
    bool HasReturned() const; // the next one that was passed
    bool HasFree() const { return passed_ < Blocks().size(); }
    std::size_t Passed() const { return passed_; }                   // that the device has
    std::vector<char>& FreeBytes() { return Blocks()[next_].bytes; } // of the next one to be passed
    MMRESULT Pass(std::size_t length);
    // The bytes that came back with the next one, which is free again then.
    std::span<const std::uint8_t> TakeBack();
    // Has the device give all of them back.
    void Reset();
    // Gives everything back. A block that the device does not let go of is left to it.
    void Close();

private:
    struct Block {
        WAVEHDR header{};
        std::vector<char> bytes;
    };
    std::vector<Block>& Blocks() const { return *blocks_; }
    bool AllReturned() const;

    const HANDLE event_;
    typename Calls::Handle handle_ = nullptr;
    std::unique_ptr<std::vector<Block>> blocks_ = std::make_unique<std::vector<Block>>();
    std::size_t next_ = 0;   // to be passed
    std::size_t passed_ = 0; // those in front of it
};

extern template class SoundPort<OutputCalls>;
extern template class SoundPort<InputCalls>;
