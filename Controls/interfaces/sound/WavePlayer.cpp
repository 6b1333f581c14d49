#include "Controls/interfaces/sound/WavePlayer.h"

#include "Panelhost/Trace.h"
#include "logic/sound/Levels.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <utility>

namespace {

constexpr std::size_t BLOCKS = 4;
constexpr std::uint32_t BLOCK_LENGTH = 50; // milliseconds
constexpr std::size_t LARGEST_BLOCK = 1U << 20;
// A device that gives no block back for so long does not play any more.
constexpr DWORD PATIENCE = 5000;

} // namespace

void WavePlayer::Play(Order order) {
    {
        const std::lock_guard guard(lock_);
        order_ = std::move(order);
        isNew_ = true;
        progress_ = {};
    }
    wake_.Set();
}

bool WavePlayer::Seek(double seconds) {
    {
        const std::lock_guard guard(lock_);
        if (progress_.length == 0) {
            return false;
        }
        progress_.wanted = std::clamp(seconds, 0.0, progress_.length);
        progress_.position = progress_.wanted;
    }
    wake_.Set();
    return true;
}

double WavePlayer::Position() const {
    const SharedLock::Reading reading(lock_);
    return progress_.position;
}

double WavePlayer::Length() const {
    const SharedLock::Reading reading(lock_);
    return progress_.length;
}

void WavePlayer::Stop() {
    isStopping_ = true;
    calls_.Close();
    stop_.Set();
    wake_.Set();
}

void WavePlayer::Run() {
    while (!isStopping_) {
        const Order order = TakeOrder();
        if (order.number == 0) {
            WaitForSingleObject(wake_.Get(), INFINITE);
            continue;
        }
        const std::string fault = order.path.empty() ? "is not in the list" : PlayFile(order);
        if (!fault.empty()) {
            TRACE("Sound output: %s %s\n", order.name.c_str(), fault.c_str());
        }
        {
            const std::lock_guard guard(lock_);
            progress_ = {}; // of whatever comes next nothing has been played yet
        }
        calls_.Run(window_, stop_.Get(), [ended = ended_, number = order.number] { ended(number); });
    }
}

bool WavePlayer::IsReplaced() const {
    const SharedLock::Reading reading(lock_);
    return isStopping_ || isNew_;
}

WavePlayer::Order WavePlayer::TakeOrder() {
    const std::lock_guard guard(lock_);
    progress_ = {};
    isNew_ = false;
    return std::exchange(order_, {});
}

std::string WavePlayer::PlayFile(const Order& order) {
    WaveSource source;
    if (const std::string fault = source.Open(order.path); !fault.empty()) {
        return fault;
    }
    const logic::WaveLayout& layout = source.Layout();
    if (layout.missing != 0) {
        TRACE("Sound output: %s is cut short\n", order.name.c_str());
    }
    const std::size_t blockFrames = std::min<std::size_t>(layout.format.FramesIn(BLOCK_LENGTH),
                                                          LARGEST_BLOCK / layout.format.FrameSize());
    frames_.resize(blockFrames * layout.format.FrameSize());
    Port port(blockDone_.Get());
    converts_ = false;
    MMRESULT opened = port.Open(order.device, layout.record, BLOCKS, frames_.size());
    if (opened == static_cast<MMRESULT>(WAVERR_BADFORMAT)) { // each device knows 16 bits
        converts_ = true;
        const logic::SampleFormat simple{layout.format.channels, 16, layout.format.rate, false};
        opened =
            port.Open(order.device, logic::FormatRecord(simple), BLOCKS, blockFrames * simple.FrameSize());
    }
    if (opened != MMSYSERR_NOERROR) {
        return "is not played: " + SoundErrorText<OutputCalls>(opened);
    }
    {
        const std::lock_guard guard(lock_);
        if (!isNew_) {
            progress_.length = static_cast<double>(layout.Frames()) / layout.format.rate;
        }
    }
    return PlayAll(source, port);
}

std::string WavePlayer::PlayAll(WaveSource& source, Port& port) {
    const HANDLE handles[] = {blockDone_.Get(), wake_.Get()};
    ends_.clear();
    failure_ = MMSYSERR_NOERROR;
    bool isAtEnd = false;
    while (!IsReplaced()) {
        double wanted = -1;
        {
            const std::lock_guard guard(lock_);
            wanted = std::exchange(progress_.wanted, -1);
        }
        if (wanted >= 0) {
            port.Reset();
            ends_.clear();
            source.Seek(static_cast<std::uint64_t>(wanted * source.Layout().format.rate));
            isAtEnd = false;
        }
        while (port.HasReturned()) {
            port.TakeBack();
            Show(static_cast<double>(ends_.front()) / source.Layout().format.rate);
            ends_.erase(ends_.begin());
        }
        if (source.IsRewritten()) {
            return "is being rewritten";
        }
        while (!isAtEnd && port.HasFree()) {
            isAtEnd = !FillNext(source, port);
        }
        if (failure_ != MMSYSERR_NOERROR) {
            return "is not played any more: " + SoundErrorText<OutputCalls>(failure_);
        }
        if (port.Passed() == 0) {
            return {};
        }
        if (!port.HasReturned() && WaitForMultipleObjects(2, handles, FALSE, PATIENCE) == WAIT_TIMEOUT &&
            !port.HasReturned()) {
            return "is not played any more: the device does nothing";
        }
    }
    return {};
}

bool WavePlayer::FillNext(WaveSource& source, Port& port) {
    const logic::SampleFormat& format = source.Layout().format;
    std::size_t length = source.Read(frames_);
    if (length == 0 && loops && source.Frame() != 0) {
        source.Seek(0);
        length = source.Read(frames_);
    }
    if (length == 0) {
        return false;
    }
    const std::span<std::uint8_t> read(frames_.data(), length);
    logic::ApplyGain(format, gain, read);
    std::vector<char>& bytes = port.FreeBytes();
    if (converts_) {
        std::vector<std::uint8_t> converted;
        logic::ConvertTo16Bits(format, read, converted);
        length = converted.size();
        std::memcpy(bytes.data(), converted.data(), length);
    } else {
        std::memcpy(bytes.data(), read.data(), length);
    }
    failure_ = port.Pass(length);
    ends_.push_back(source.Frame());
    return failure_ == MMSYSERR_NOERROR;
}

void WavePlayer::Show(double position) {
    const std::lock_guard guard(lock_);
    if (!isNew_ && progress_.wanted < 0) {
        progress_.position = position;
    }
}
