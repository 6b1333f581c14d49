#include "Controls/interfaces/sound/WaveSource.h"

#include <algorithm>

namespace {

Handle OpenShared(const std::string& path, DWORD sharing) {
    return MakeFile(CreateFileA(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING,
                                FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
}

std::string OpeningFault(DWORD error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return "is not there";
    case ERROR_SHARING_VIOLATION:
        return "is being written";
    default:
        return "cannot be opened: error " + std::to_string(error);
    }
}

} // namespace

std::string WaveSource::Open(const std::string& path) {
    // Whoever writes it has it for himself, or else is found here; but he may begin while it is played.
    Handle alone = OpenShared(path, FILE_SHARE_READ);
    if (alone == nullptr) {
        return OpeningFault(GetLastError());
    }
    alone.reset();
    file_ = OpenShared(path, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
    if (file_ == nullptr) {
        return OpeningFault(GetLastError());
    }
    identity_ = Identify();
    logic::WaveReading reading = logic::ReadWave(
        [this](std::uint64_t place, std::span<std::uint8_t> into) { return ReadAt(place, into); },
        identity_.size);
    if (reading.fault != nullptr) {
        return reading.fault;
    }
    layout_ = std::move(reading.layout);
    frame_ = 0;
    return {};
}

std::size_t WaveSource::Read(std::span<std::uint8_t> into) {
    const std::uint32_t frameSize = layout_.format.FrameSize();
    const std::uint64_t left = layout_.Frames() - std::min(frame_, layout_.Frames());
    const auto frames = static_cast<std::size_t>(std::min<std::uint64_t>(left, into.size() / frameSize));
    const std::size_t read = ReadAt(layout_.begin + frame_ * frameSize, into.first(frames * frameSize));
    frame_ += read / frameSize;
    return read - read % frameSize;
}

bool WaveSource::IsRewritten() const {
    return !(Identify() == identity_);
}

WaveSource::Identity WaveSource::Identify() const {
    BY_HANDLE_FILE_INFORMATION information{};
    if (!GetFileInformationByHandle(file_.get(), &information)) {
        return {};
    }
    const auto join = [](DWORD high, DWORD low) { return static_cast<std::uint64_t>(high) << 32 | low; };
    return {join(information.nFileSizeHigh, information.nFileSizeLow),
            join(information.ftLastWriteTime.dwHighDateTime, information.ftLastWriteTime.dwLowDateTime)};
}

std::size_t WaveSource::ReadAt(std::uint64_t place, std::span<std::uint8_t> into) const {
    OVERLAPPED from{}; // the place, of a file that is read at once
    from.Offset = static_cast<DWORD>(place);
    from.OffsetHigh = static_cast<DWORD>(place >> 32);
    DWORD read = 0;
    return ReadFile(file_.get(), into.data(), static_cast<DWORD>(into.size()), &read, &from) ? read : 0;
}
