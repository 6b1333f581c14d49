#pragma once

#include "Controls/interfaces/sound/SoundPort.h"
#include "Controls/interfaces/sound/WaveRecording.h"
#include "base/SharedLock.h"
#include "base/Threads.h"
#include "logic/sound/Levels.h"

#include <atomic>
#include <string>

// Listens to a sound input on the thread that runs it: levels, the newest block, and a file that what comes
// in is written into. A device that is not there, or goes, is looked for once a second.
class SoundListener {
public:
    struct Settings {
        std::string device; // a part of its name; empty for the default one
        logic::SampleFormat format;
    };
    struct RecordingOrder {
        std::string file;
        int minutes = 0; // at most
    };
    static constexpr std::size_t LONGEST_BLOCK = 4092; // bytes

    // From the window's thread.
    void Listen(const Settings& settings);
    void Rest();
    // False while it rests.
    bool Record(const RecordingOrder& order);
    void EndRecording();
    // What goes on at the moment.
    bool IsListening() const;
    bool IsRecording() const;          // or about to
    std::string Recorded() const;      // the newest file; empty for none
    logic::BlockLevels Levels() const; // of the newest tenth of a second
    std::vector<std::uint8_t> NewestBlock() const;

    // For Worker.
    void Run();
    void Stop();

private:
    using Port = SoundPort<InputCalls>;

    struct Wishes {
        Settings settings;
        bool listens = false;
        bool isNew = false; // since the thread took the settings
        bool records = false;
        unsigned recording = 0; // number of the order
        RecordingOrder order;
    };
    struct Shown {
        bool isListening = false;
        std::string recorded;
        logic::BlockLevels levels;
        std::vector<std::uint8_t> block;
    };

    bool IsToListen() const; // by the settings that the thread took
    bool IsToRest() const;   // until it is woken
    // Why it ended, in words; empty when it was told to.
    std::string ListenTo(const Settings& settings);
    std::string TakeBlocks(Port& port, const logic::SampleFormat& format);
    void TakeBlock(std::span<const std::uint8_t> frames, const logic::SampleFormat& format);
    void WriteBlock(std::span<const std::uint8_t> frames, const logic::SampleFormat& format);
    void CloseFile();
    // Of that order, unless another one has come. Why, in words; empty without a reason to be told.
    void StopRecording(unsigned recording, const std::string& reason);

    const Event wake_{Event::AutoReset};
    const Event blockDone_{Event::AutoReset};
    std::atomic<bool> isStopping_ = false;

    mutable SharedLock lock_;
    Wishes wishes_; // guarded by it
    Shown shown_;   // guarded by it

    // The thread's own:
    WaveRecording file_;
    unsigned recording_ = 0; // what the file was opened for
    std::uint64_t mostFrames_ = 0;
    DWORD headerTime_ = 0; // tick count
    logic::BlockLevels previous_;
};
