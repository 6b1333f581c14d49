#pragma once

#include "Controls/interfaces/sound/SoundPort.h"
#include "Controls/interfaces/sound/WaveSource.h"
#include "base/SharedLock.h"
#include "base/Threads.h"

#include <atomic>
#include <functional>
#include <string>

// Plays wave files, one at a time, on the thread that runs it. What it plays is told, and asked for, from the
// window's thread.
class WavePlayer {
public:
    struct Order {
        unsigned number = 0; // 0: nothing is to be played
        std::string name;    // of the file, for the trace
        std::string path;    // empty when there is no such file
        std::string device;  // a part of its name; empty for the default one
    };

    // ended: called on the window's thread, with the number of the order, when it has been played or cannot
    // be.
    WavePlayer(HWND window, std::function<void(unsigned number)> ended)
        : window_(window), ended_(std::move(ended)) {}

    // In place of what is being played.
    void Play(Order order);
    // Goes on from there; false when nothing is being played. Seconds.
    bool Seek(double seconds);
    // Of what is being played, 0 otherwise.
    double Position() const;
    double Length() const;

    // For Worker.
    void Run();
    void Stop();
    // On WorkerCalls::MESSAGE to the window.
    void ServeCalls() { calls_.Serve(); }

    std::atomic<float> gain = 1;
    std::atomic<bool> loops = false;

private:
    using Port = SoundPort<OutputCalls>;

    struct Progress {
        double position = 0; // seconds
        double length = 0;
        double wanted = -1; // where it is to go on; below 0: where it is
    };

    bool IsReplaced() const; // the order that is being carried out
    Order TakeOrder();
    // Empty, or why it ended early, in words that follow the name of the file.
    std::string PlayFile(const Order& order);
    std::string PlayAll(WaveSource& source, Port& port);
    // With the next frames, of which it notes where they end. False at the end.
    bool FillNext(WaveSource& source, Port& port);
    void Show(double position);

    const HWND window_;
    const std::function<void(unsigned)> ended_;
    WorkerCalls calls_;
    const Event stop_{Event::ManualReset};
    const Event wake_{Event::AutoReset};
    const Event blockDone_{Event::AutoReset};
    std::atomic<bool> isStopping_ = false;

    mutable SharedLock lock_;
    // Guarded by it:
    Order order_; // the newest
    bool isNew_ = false;
    Progress progress_;

    // The thread's own:
    bool converts_ = false;               // to 16 bits
    std::vector<std::uint8_t> frames_;    // as the file has them
    std::vector<std::uint64_t> ends_;     // frame behind each block that was passed, the first in front
    MMRESULT failure_ = MMSYSERR_NOERROR; // of passing a block
};
