// The records of a CAN interface in any stream, divided in any way.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "logic/CanRecords.h"

using namespace logic;

namespace {

void Require(bool condition) {
    if (!condition)
        __builtin_trap();
}

std::string Read(std::string_view bytes, const std::function<std::size_t()>& blockLength) {
    CanRecordReader reader;
    std::string lines;
    while (!bytes.empty()) {
        const auto room = reader.Room();
        Require(!room.empty() && room.size() <= CanRecordReader::capacity);
        const std::size_t count = std::min({bytes.size(), room.size(), blockLength()});
        std::copy_n(bytes.begin(), count, room.begin());
        reader.Received(count, [&](const std::string& line) {
            Require(line.ends_with('\n') && line.size() < 1000);
            lines += line;
        });
        bytes.remove_prefix(count);
    }
    return lines;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::uint8_t choice = data[0];
    std::string bytes(data + 1, data + size);
    DescribeCanRecord(bytes);
    const bool isLong = choice % 4 == 1;
    if (isLong)
        bytes.insert(bytes.size() / 2, 4000 + choice, '0');
    std::uint32_t state = choice;
    const std::string lines = Read(bytes, [&] {
        state = state * 1664525 + 1013904223;
        return 1 + (state >> 24) % (1 + choice);
    });
    // How the stream is divided matters only for what an overflow takes along.
    if (lines.find("Overflow") == std::string::npos)
        Require(lines == Read(bytes, [&] { return bytes.size(); }));
    return 0;
}
