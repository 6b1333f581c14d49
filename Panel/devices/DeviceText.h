#pragma once

#include <optional>
#include <string>

// The text of a device file as it is edited: with "\r\n" at the end of each line, whatever the file has
// there.
class DeviceText {
public:
    static constexpr std::size_t LONGEST = 1 << 20; // bytes

    // Reads the file; an empty name begins an empty text. Why it cannot be edited, or empty.
    std::string Read(const std::string& file);
    // Whether the file holds anything else than when it was read or written.
    bool IsOtherOutside() const;
    // Puts the text in place of what the file holds, all of it or nothing. Why that failed, or empty.
    std::string Write(const std::string& file, const std::string& text);

    const std::string& File() const { return file_; }
    const std::string& Text() const { return text_; } // as it was read or written

private:
    std::string file_;
    std::string text_;
    std::optional<std::string> bytes_; // of the file; nothing when there was none
    bool hasReturns_ = true;           // its lines end with "\r\n"
};
