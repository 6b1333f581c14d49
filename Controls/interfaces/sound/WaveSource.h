#pragma once

#include "base/Handles.h"
#include "logic/sound/WaveFile.h"

#include <string>

// A wave file that is played: read piece by piece, never as a whole. For a worker thread.
class WaveSource {
public:
    // Empty, or why it cannot be played, in words that follow its name.
    std::string Open(const std::string& path);

    const logic::WaveLayout& Layout() const { return layout_; }
    // The next frame that is read.
    void Seek(std::uint64_t frame) { frame_ = frame; }
    std::uint64_t Frame() const { return frame_; }
    // Reads whole frames; how many bytes there were, none at the end.
    std::size_t Read(std::span<std::uint8_t> into);
    // Whether somebody has changed the file since it was opened.
    bool IsRewritten() const;

private:
    struct Identity {
        std::uint64_t size = 0;
        std::uint64_t written = 0; // when, as the system counts
        bool operator==(const Identity&) const = default;
    };
    Identity Identify() const;
    std::size_t ReadAt(std::uint64_t place, std::span<std::uint8_t> into) const;

    Handle file_;
    Identity identity_;
    logic::WaveLayout layout_;
    std::uint64_t frame_ = 0;
};
