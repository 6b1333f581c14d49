// The records of a CAN interface: hexadecimal text between "S" and "T", found in a stream and described in
// words.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace logic {

// One line, ended by a line feed. The record is "S", pairs of hexadecimal digits, "T": pair 0 the type of the
// message, pairs 11 to 14 the identifier (lowest byte first), pair 15 the number of data bytes, the data from
// pair 16 on. A digit that is none is left out of its pair; what the record does not hold is 0.
std::string DescribeCanRecord(std::string_view record);

// Cuts a stream into records and describes them. Bytes between records are counted and reported when the next
// one starts; a record that does not end within its 4096 bytes is dropped with all that is in the receive
// buffer.
class CanRecordReader {
public:
    static constexpr std::size_t capacity = 4096;
    using Trace = std::function<void(const std::string& line)>;

    // Where the next bytes belong: from the receive position to the end of the buffer, never empty.
    std::span<char> Room() { return std::span(received_).subspan(position_); }
    // That many bytes were put there.
    void Received(std::size_t count, const Trace& trace);
    // The stream is another one: what was begun does not count.
    void Restart() { *this = {}; }

private:
    void Take(char byte, const Trace& trace);

    std::array<char, capacity> received_{};
    std::size_t position_ = 0;
    std::array<char, capacity> record_{};
    std::size_t recordLength_ = 0; // 0: between records
    std::uint32_t skipped_ = 0;
};

} // namespace logic
