#include "Controls/interfaces/sound/WaveRecording.h"

#include "Panelhost/ApplicationPaths.h"

#include <algorithm>

namespace {

constexpr int HIGHEST_NUMBER = 9999;

// "name.wav", "name2.wav", "name3.wav".
std::string Numbered(const std::string& name, int number) {
    if (number == 1) {
        return name;
    }
    const std::size_t folder = name.find_last_of("\\/");
    const std::size_t point = name.rfind('.');
    const bool hasType = point != std::string::npos && (folder == std::string::npos || point > folder);
    const std::size_t place = hasType ? point : name.size();
    return name.substr(0, place) + std::to_string(number) + name.substr(place);
}

} // namespace

std::string WaveRecording::Open(const std::string& name, const logic::SampleFormat& format) {
    Close();
    for (int number = 1; number <= HIGHEST_NUMBER; ++number) {
        name_ = Numbered(name, number);
        char path[MAX_PATH];
        if (a_MakeFullPathName(name_.c_str(), path) == 0) {
            return "has too long a name";
        }
        file_ = MakeFile(CreateFileA(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                                     FILE_ATTRIBUTE_NORMAL, nullptr));
        if (file_ != nullptr) {
            format_ = format;
            size_ = 0;
            begin_ = logic::WaveHeader(format_, 0).size();
            const bool isBegun = UpdateHeader();
            if (!isBegun) {
                file_.reset();
            }
            return isBegun ? "" : "cannot be written: error " + std::to_string(GetLastError());
        }
        if (const DWORD error = GetLastError(); error != ERROR_FILE_EXISTS) {
            return error == ERROR_PATH_NOT_FOUND ? "has no folder"
                                                 : "cannot be written: error " + std::to_string(error);
        }
    }
    return "has used all its numbers";
}

bool WaveRecording::Write(std::span<const std::uint8_t> frames) {
    const std::uint32_t frameSize = format_.FrameSize();
    const auto room =
        static_cast<std::size_t>(std::min<std::uint64_t>(logic::LONGEST_WAVE - size_, frames.size()));
    const auto fitting = frames.first(room - room % frameSize);
    if (!WriteAt(begin_ + size_, fitting)) {
        return false;
    }
    size_ += fitting.size();
    return fitting.size() + frameSize > frames.size();
}

bool WaveRecording::UpdateHeader() {
    return WriteAt(0, logic::WaveHeader(format_, static_cast<std::uint32_t>(size_)));
}

bool WaveRecording::Close() {
    if (file_ == nullptr) {
        return true;
    }
    constexpr std::uint8_t FILLER[1] = {};
    const bool isWhole = size_ % 2 == 0 || WriteAt(begin_ + size_, FILLER);
    const bool isClosed = UpdateHeader() && isWhole;
    file_.reset();
    return isClosed;
}

bool WaveRecording::WriteAt(std::uint64_t place, std::span<const std::uint8_t> bytes) const {
    OVERLAPPED at{};
    at.Offset = static_cast<DWORD>(place);
    at.OffsetHigh = static_cast<DWORD>(place >> 32);
    DWORD written = 0;
    return WriteFile(file_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, &at) &&
           written == bytes.size();
}
