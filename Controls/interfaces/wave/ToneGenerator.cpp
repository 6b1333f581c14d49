#include "Controls/interfaces/wave/ToneGenerator.h"

#include "Controls/interfaces/wave/WaveFile.h"
#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/Trace.h"
#include "base/SharedLock.h"
#include "logic/controls/TestTone.h"

#include <list>
#include <utility>

namespace {

constexpr const char* WAVE_FILE = "Temp\\wave.wav";
constexpr int BUFFER_SIZE = 4096; // bytes
constexpr int CHANNELS = 2;

SharedLock queueLock;
CONDITION_VARIABLE queueMoved = CONDITION_VARIABLE_INIT;
std::list<ToneGenerator*> queue; // the first one writes; each is kept by its thread

} // namespace

ToneGenerator::Requested ToneGenerator::Request(int seconds) {
    const SharedLock::Writing lock(queueLock);
    if (stopping_) {
        return Requested::Refused;
    }
    if (!queued_) {
        queue.push_back(this);
    }
    duration = seconds;
    requested_ = true;
    return std::exchange(queued_, true) ? Requested::GoesOn : Requested::NeedsThread;
}

void ToneGenerator::Withdraw() {
    const SharedLock::Writing lock(queueLock);
    LeaveQueue();
}

void ToneGenerator::Stop() {
    const SharedLock::Writing lock(queueLock);
    stopping_ = true;
    WakeAllConditionVariable(&queueMoved);
}

void ToneGenerator::Run() {
    while (BeginTurn()) {
        WriteTone();
        EndTurn();
    }
}

// Waits for the file. False when there is nothing to generate any more: the thread has then left the queue
// and ends.
bool ToneGenerator::BeginTurn() {
    SharedLock::Writing lock(queueLock);
    while (requested_ && !stopping_ && queue.front() != this) {
        lock.Wait(queueMoved);
    }
    if (!requested_ || stopping_) {
        LeaveQueue();
        return false;
    }
    requested_ = false;
    seconds_ = duration;
    return true;
}

// A generator that has more to do lets the others go first.
void ToneGenerator::EndTurn() {
    const SharedLock::Writing lock(queueLock);
    queue.splice(queue.end(), queue, queue.begin());
    WakeAllConditionVariable(&queueMoved);
}

void ToneGenerator::LeaveQueue() {
    queue.remove(this);
    queued_ = false;
    requested_ = false;
    duration = 0;
    WakeAllConditionVariable(&queueMoved);
}

void ToneGenerator::WriteTone() {
    const std::int64_t count = logic::SampleCount(sampleRate, seconds_, MAXIMUM_WAVE_PAIRS);
    if (count == MAXIMUM_WAVE_PAIRS) {
        TRACE("WaveGenerator: %d seconds do not fit a wave file and are cut to %d\n", seconds_,
              static_cast<int>(count / static_cast<int>(sampleRate)));
    }
    char path[MAX_PATH];
    a_MakeFullPathName(WAVE_FILE, path);
    WaveFileOpen(path, BUFFER_SIZE, CHANNELS, static_cast<int>(sampleRate), bitsPerSample);
    logic::SineOscillator sine(frequency, sampleRate, phase_);
    for (std::int64_t i = 0; i < count && !stopping_; ++i) {
        const std::int16_t sample = sine.Next(amplitude);
        WaveFileWriteSample(sample, sample);
    }
    WaveFileClose();
    phase_ = sine.Phase();
}
