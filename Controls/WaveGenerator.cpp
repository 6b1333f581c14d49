// IWAVEGENERATOR: writes a sine tone into a stereo wave file on a thread of its own as soon as its length is
// set. Durations in seconds, frequencies and rates in Hz, phases in radians.

#include "Controls/framework/Controls.h"
#include "Controls/framework/InterfaceControl.h"
#include "Controls/framework/Keywords.h"
#include "Controls/framework/WorkerThread.h"
#include "Controls/wave/WaveFile.h"
#include "Panelhost/SharedLock.h"
#include "logic/TestTone.h"

#include <algorithm>
#include <atomic>
#include <list>
#include <utility>

namespace {

constexpr const char* WAVE_FILE = "Temp\\wave.wav";
constexpr int BUFFER_SIZE = 4096; // bytes
constexpr int CHANNELS = 2;
constexpr unsigned THREAD_EXIT_CODE = 14;

} // namespace

class WAVEGENERATORPROPERTIES : public INTERFACEPROPERTIES {
public:
    const KEYWORDROW* GetHostinfoTable() override;
    void Destroying() override;

    // Starts a generation. While one is running another follows it, of the length set last. False when no
    // thread can be started.
    bool Generate(int seconds);
    // The generator thread from its start to its end.
    void GenerateByTurns();

    std::atomic<int> duration = 0; // what was set last; 0 when all is generated
    int bitsPerSample = 16;        // in the header of the file; its samples always have 16
    float sampleRate = 44100.0F;
    double phase = 0.0;                  // of the next sample; belongs to the generator thread
    std::atomic<int> amplitude = 0x5FFF; // peak sample value
    std::atomic<float> frequency = 1000.0F;

private:
    bool BeginTurn();
    void EndTurn();
    void WriteTone();
    void LeaveQueue();

    WorkerThread thread_;
    std::atomic<bool> stopping_ = false; // the control goes: what is generated is cut short
    // Guarded by the lock of the queue:
    bool queued_ = false;    // the thread is or will be there
    bool requested_ = false; // a generation that has not begun
    int seconds_ = 0;        // length of the one that has
};

// Keyword handlers

namespace {

int DurationKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& generator = *static_cast<WAVEGENERATORPROPERTIES*>(object);
    if (record->command == COMMAND_GET) {
        return record->datatype == DATATYPE_TEXT
                   ? a_AnswerText(record, logic::FormatDuration(generator.duration).c_str())
                   : a_AnswerInteger(record, generator.duration);
    }
    if (record->command != COMMAND_SET) {
        return 0;
    }
    if (record->datatype == DATATYPE_TEXT) {
        const auto text = TextToSet(record);
        const auto seconds = text ? logic::ParseDuration(*text) : std::nullopt;
        return seconds && generator.Generate(*seconds) ? 1 : 0;
    }
    int seconds = 0;
    return a_ReadInteger(record, &seconds) != 0 && generator.Generate(std::max(seconds, 0)) ? 1 : 0;
}

int FilenameKeyword(VALUERECORD* record, HOSTINFO*) {
    return record->command == COMMAND_GET ? a_AnswerText(record, ".\\Temp\\wave.wav") : 0;
}

int FormatKeyword(VALUERECORD* record, HOSTINFO* object) {
    const auto& generator = *static_cast<WAVEGENERATORPROPERTIES*>(object);
    const std::string text = logic::FormatFloat(generator.sampleRate) + " Hz," +
                             std::to_string(generator.bitsPerSample) + "bit,Stereo";
    return record->command == COMMAND_GET ? a_AnswerText(record, text.c_str()) : 0;
}

int SignalKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& generator = *static_cast<WAVEGENERATORPROPERTIES*>(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, logic::FormatSignal({generator.frequency, generator.amplitude}).c_str());
    }
    const auto text = TextToSet(record);
    const auto signal = text ? logic::ParseSignal(*text, generator.amplitude) : std::nullopt;
    if (!signal) {
        return 0;
    }
    generator.frequency = signal->frequency;
    generator.amplitude = signal->amplitude;
    return 1;
}

constexpr KEYWORDROW KEYWORDS[] = {
    {" ", nullptr, 0},
    {"connection", RefusedKeyword, 0},
    {"duration", DurationKeyword, KEYWORD_SAVED},
    {"filename", TextOnly<FilenameKeyword>, KEYWORD_SAVED},
    {"format", TextOnly<FormatKeyword>, KEYWORD_SAVED},
    {"interval", IntervalKeyword, KEYWORD_SAVED},
    {"layer", LayerKeyword, 0},
    {"signal", TextOnly<SignalKeyword>, KEYWORD_SAVED},
    {"value", RefusedKeyword, 0},
    {},
};
static_assert(KeywordsAreUnique(KEYWORDS));

} // namespace

const KEYWORDROW* WAVEGENERATORPROPERTIES::GetHostinfoTable() {
    return KEYWORDS;
}

// Generation. There is one file and one writer for it, so the threads of all generators write by turns, in
// the order of their requests.

namespace {

SharedLock queueLock;
CONDITION_VARIABLE queueMoved = CONDITION_VARIABLE_INIT;
std::list<WAVEGENERATORPROPERTIES*> queue; // the first one writes

unsigned __stdcall GeneratorThread(void* generator) noexcept {
    static_cast<WAVEGENERATORPROPERTIES*>(generator)->GenerateByTurns();
    return THREAD_EXIT_CODE;
}

} // namespace

bool WAVEGENERATORPROPERTIES::Generate(int seconds) {
    {
        const SharedLock::Writing lock(queueLock);
        if (stopping_) {
            return false;
        }
        if (!queued_) {
            queue.push_back(this);
        }
        duration = seconds;
        requested_ = true;
        if (std::exchange(queued_, true)) {
            return true; // the thread goes on with it
        }
    }
    if (thread_.Start(GeneratorThread, this)) {
        return true;
    }
    TRACE("WaveGenerator: no thread can be started\n");
    const SharedLock::Writing lock(queueLock);
    LeaveQueue();
    return false;
}

void WAVEGENERATORPROPERTIES::Destroying() {
    {
        const SharedLock::Writing lock(queueLock);
        stopping_ = true;
        WakeAllConditionVariable(&queueMoved);
    }
    thread_.Join();
}

void WAVEGENERATORPROPERTIES::GenerateByTurns() {
    while (BeginTurn()) {
        WriteTone();
        EndTurn();
    }
}

// Waits for the file. False when there is nothing to generate any more: the thread has then left the queue
// and ends.
bool WAVEGENERATORPROPERTIES::BeginTurn() {
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
void WAVEGENERATORPROPERTIES::EndTurn() {
    const SharedLock::Writing lock(queueLock);
    queue.splice(queue.end(), queue, queue.begin());
    WakeAllConditionVariable(&queueMoved);
}

void WAVEGENERATORPROPERTIES::LeaveQueue() {
    queue.remove(this);
    queued_ = false;
    requested_ = false;
    duration = 0;
    WakeAllConditionVariable(&queueMoved);
}

void WAVEGENERATORPROPERTIES::WriteTone() {
    const std::int64_t count = logic::SampleCount(sampleRate, seconds_, MAXIMUM_WAVE_PAIRS);
    if (count == MAXIMUM_WAVE_PAIRS) {
        TRACE("WaveGenerator: %d seconds do not fit a wave file and are cut to %d\n", seconds_,
              static_cast<int>(count / static_cast<int>(sampleRate)));
    }
    char path[MAX_PATH];
    a_MakeFullPathName(WAVE_FILE, path);
    WaveFileOpen(path, BUFFER_SIZE, CHANNELS, static_cast<int>(sampleRate), bitsPerSample);
    logic::SineOscillator sine(frequency, sampleRate, phase);
    for (std::int64_t i = 0; i < count && !stopping_; ++i) {
        const std::int16_t sample = sine.Next(amplitude);
        WaveFileWriteSample(sample, sample);
    }
    WaveFileClose();
    phase = sine.Phase();
}

const ControlImplementation waveGeneratorControl{CreateProperties<WAVEGENERATORPROPERTIES>, InterfaceProc};
