#pragma once

#include "base/Handles.h"
#include "logic/sound/WaveFile.h"

#include <string>

// A wave file that grows. Its header is right as of the last time it was brought up to date, whatever happens
// to the program afterwards. For a worker thread.
class WaveRecording {
public:
    ~WaveRecording() { Close(); }

    // Below the application folder. A file that is there already is kept: the new one then has the next free
    // number behind its name. Empty, or why there is none, in words.
    std::string Open(const std::string& name, const logic::SampleFormat& format);
    bool IsOpen() const { return file_ != nullptr; }
    const std::string& Name() const { return name_; } // with the number
    std::uint64_t Frames() const { return size_ / format_.FrameSize(); }

    // Appends whole frames, as many as the file has room for. False when they are not all in it.
    bool Write(std::span<const std::uint8_t> frames);
    bool UpdateHeader();
    // False when not everything was written.
    bool Close();

private:
    bool WriteAt(std::uint64_t place, std::span<const std::uint8_t> bytes) const;

    Handle file_;
    std::string name_;
    logic::SampleFormat format_;
    std::size_t begin_ = 0;  // of the samples
    std::uint64_t size_ = 0; // of them, bytes
};
