#include "Controls/interfaces/sound/SoundListener.h"

#include "Panelhost/Trace.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace {

constexpr std::size_t BLOCKS = 16;
constexpr std::uint32_t BLOCK_LENGTH = 50; // milliseconds
constexpr DWORD NEXT_TRY = 1000;
constexpr DWORD HEADER_PERIOD = 1000;
// An input that gives nothing for so long is not there any more.
constexpr DWORD PATIENCE = 2000;

} // namespace

void SoundListener::Listen(const Settings& settings) {
    {
        const std::lock_guard guard(lock_);
        wishes_.settings = settings;
        wishes_.listens = true;
        wishes_.isNew = true;
    }
    wake_.Set();
}

void SoundListener::Rest() {
    {
        const std::lock_guard guard(lock_);
        wishes_.listens = false;
        wishes_.records = false;
        shown_.isListening = false;
    }
    wake_.Set();
}

bool SoundListener::Record(const RecordingOrder& order) {
    const std::lock_guard guard(lock_);
    if (!wishes_.listens) {
        return false;
    }
    wishes_.records = true;
    wishes_.order = order;
    ++wishes_.recording;
    return true;
}

void SoundListener::EndRecording() {
    {
        const std::lock_guard guard(lock_);
        wishes_.records = false;
    }
    wake_.Set();
}

bool SoundListener::IsListening() const {
    const SharedLock::Reading reading(lock_);
    return shown_.isListening;
}

bool SoundListener::IsRecording() const {
    const SharedLock::Reading reading(lock_);
    return wishes_.records;
}

std::string SoundListener::Recorded() const {
    const SharedLock::Reading reading(lock_);
    return shown_.recorded;
}

logic::BlockLevels SoundListener::Levels() const {
    const SharedLock::Reading reading(lock_);
    return shown_.levels;
}

std::vector<std::uint8_t> SoundListener::NewestBlock() const {
    const SharedLock::Reading reading(lock_);
    return shown_.block;
}

void SoundListener::Stop() {
    isStopping_ = true;
    wake_.Set();
}

void SoundListener::Run() {
    std::string told; // what was said of a device that is not there
    while (!isStopping_) {
        Settings settings;
        bool listens = false;
        {
            const std::lock_guard guard(lock_);
            listens = wishes_.listens;
            settings = wishes_.settings;
            if (std::exchange(wishes_.isNew, false)) {
                told.clear();
            }
        }
        const std::string fault = listens ? ListenTo(settings) : "";
        if (!fault.empty() && fault != told) {
            TRACE("Sound input: %s\n", fault.c_str());
        }
        told = fault;
        if (!fault.empty() || IsToRest()) {
            WaitForSingleObject(wake_.Get(), fault.empty() ? INFINITE : NEXT_TRY);
        }
    }
}

bool SoundListener::IsToRest() const {
    const SharedLock::Reading reading(lock_);
    return !isStopping_ && !wishes_.listens;
}

bool SoundListener::IsToListen() const {
    const SharedLock::Reading reading(lock_);
    return !isStopping_ && wishes_.listens && !wishes_.isNew;
}

std::string SoundListener::ListenTo(const Settings& settings) {
    Port port(blockDone_.Get());
    const std::size_t blockSize =
        std::size_t{settings.format.FramesIn(BLOCK_LENGTH)} * settings.format.FrameSize();
    MMRESULT result = port.Open(settings.device, logic::FormatRecord(settings.format), BLOCKS, blockSize);
    for (std::size_t i = 0; i < BLOCKS && result == MMSYSERR_NOERROR; ++i) {
        result = port.Pass(blockSize);
    }
    if (result == MMSYSERR_NOERROR) {
        result = port.Start();
    }
    if (result != MMSYSERR_NOERROR) {
        return "it cannot be listened to: " + SoundErrorText<InputCalls>(result);
    }
    const std::string fault = TakeBlocks(port, settings.format);
    CloseFile();
    const std::lock_guard guard(lock_);
    if (!fault.empty()) { // what comes when the device is back would not fit to what is in the file
        wishes_.records = false;
    }
    shown_.isListening = false;
    shown_.levels = {};
    shown_.block.clear();
    return fault;
}

std::string SoundListener::TakeBlocks(Port& port, const logic::SampleFormat& format) {
    const HANDLE handles[] = {blockDone_.Get(), wake_.Get()};
    const std::size_t blockSize = std::size_t{format.FramesIn(BLOCK_LENGTH)} * format.FrameSize();
    previous_ = {};
    {
        const std::lock_guard guard(lock_);
        shown_.isListening = wishes_.listens && !wishes_.isNew;
    }
    DWORD lastBlock = GetTickCount();
    while (IsToListen()) {
        while (port.HasReturned()) {
            lastBlock = GetTickCount();
            TakeBlock(port.TakeBack(), format);
            const MMRESULT passed = port.Pass(blockSize);
            if (passed != MMSYSERR_NOERROR) {
                return "it is gone: " + SoundErrorText<InputCalls>(passed);
            }
        }
        if (GetTickCount() - lastBlock > PATIENCE) {
            return "it is gone: nothing comes in any more";
        }
        if (!IsRecording()) {
            CloseFile();
        }
        WaitForMultipleObjects(2, handles, FALSE, PATIENCE);
    }
    return {};
}

void SoundListener::TakeBlock(std::span<const std::uint8_t> frames, const logic::SampleFormat& format) {
    if (frames.empty()) {
        return;
    }
    const logic::BlockLevels levels = logic::MeasureLevels(format, frames);
    const std::size_t newest = std::min(frames.size(), LONGEST_BLOCK);
    const auto block = frames.last(newest - newest % format.FrameSize());
    {
        const std::lock_guard guard(lock_);
        shown_.levels = logic::Joined(previous_, levels);
        shown_.block.assign(block.begin(), block.end());
    }
    previous_ = levels;
    WriteBlock(frames, format);
}

void SoundListener::WriteBlock(std::span<const std::uint8_t> frames, const logic::SampleFormat& format) {
    RecordingOrder order;
    unsigned recording = 0;
    {
        const SharedLock::Reading reading(lock_);
        if (wishes_.records) {
            order = wishes_.order;
            recording = wishes_.recording;
        }
    }
    if (recording != recording_) {
        CloseFile();
        recording_ = recording;
        if (recording == 0) {
            return;
        }
        if (const std::string fault = file_.Open(order.file, format); !fault.empty()) {
            StopRecording(recording, file_.Name() + " " + fault);
            return;
        }
        mostFrames_ = std::uint64_t{format.rate} * 60 * static_cast<unsigned>(order.minutes);
        headerTime_ = GetTickCount();
        const std::lock_guard guard(lock_);
        shown_.recorded = file_.Name();
    }
    if (!file_.IsOpen()) {
        return;
    }
    const std::uint64_t room = (mostFrames_ - file_.Frames()) * format.FrameSize();
    const auto fitting = frames.first(static_cast<std::size_t>(std::min<std::uint64_t>(room, frames.size())));
    bool isWritten = file_.Write(fitting);
    if (isWritten && GetTickCount() - headerTime_ >= HEADER_PERIOD) {
        headerTime_ = GetTickCount();
        isWritten = file_.UpdateHeader();
    }
    if (!isWritten) {
        StopRecording(recording_, file_.Name() + " cannot be written any further");
        CloseFile();
    } else if (file_.Frames() == mostFrames_) {
        StopRecording(recording_, file_.Name() + " is as long as it may get");
        CloseFile();
    }
}

void SoundListener::CloseFile() {
    if (file_.IsOpen() && !file_.Close()) {
        TRACE("Sound input: %s is not complete\n", file_.Name().c_str());
    }
}

void SoundListener::StopRecording(unsigned recording, const std::string& reason) {
    TRACE("Sound input: %s\n", reason.c_str());
    const std::lock_guard guard(lock_);
    if (wishes_.recording == recording) {
        wishes_.records = false;
    }
}
