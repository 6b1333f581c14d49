// The records of a CAN interface in any stream, divided in any way.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "fuzz/Fuzzer.h"
#include "logic/remote/CanRecords.h"

using namespace logic;

namespace {

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
    FuzzInput input(data, size);
    const std::string& bytes = input.bytes;
    DescribeCanRecord(bytes);
    if (input.choice % 4 == 1) {
        input.Lengthen('0');
    }
    const std::string lines = Read(bytes, BlockLengths(input.choice));
    // How the stream is divided matters only for what an overflow takes along.
    if (lines.find("Overflow") == std::string::npos) {
        Require(lines == Read(bytes, [&] { return bytes.size(); }));
    }
    return 0;
}
