#include "logic/remote/CanRecords.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>

namespace logic {

namespace {

constexpr char RECORD_START = 'S';
constexpr char RECORD_END = 'T';

constexpr std::size_t IDENTIFIER_PAIR = 11;
constexpr std::size_t COUNT_PAIR = 15;
constexpr std::size_t DATA_PAIR = 16;

constexpr unsigned FRAME_TYPE = 16; // the only one that is shown with identifier and data

// By type; nullptr for the types without a name, and for the frame.
constexpr const char* TYPE_NAMES[] = {
    "RESYNC", "CAN",   "BUSLOAD", "STRING",  "CONTI",    nullptr,   nullptr,     "MEM",
    "RTR",    "TXACK", "POWERUP", "CMD_NO",  "CAN_PRMS", "ABORTED", "CANSTATE",  "RESET",
    nullptr,  "XRTR",  "INFO",    "CONTROL", "CONFIRM",  "OVERRUN", "KEEPALIVE",
};

int DigitValue(char character) {
    if (character >= '0' && character <= '9') {
        return character - '0';
    }
    if (character >= 'a' && character <= 'f') {
        return character - 'a' + 10;
    }
    if (character >= 'A' && character <= 'F') {
        return character - 'A' + 10;
    }
    return -1;
}

unsigned PairValue(std::string_view record, std::size_t pair) {
    const auto digit = [&](std::size_t place) {
        return place < record.size() ? DigitValue(record[place]) : -1;
    };
    const int first = digit(1 + 2 * pair);
    const int second = digit(2 + 2 * pair);
    if (first < 0) {
        return second < 0 ? 0U : static_cast<unsigned>(second);
    }
    return second < 0 ? static_cast<unsigned>(first) : static_cast<unsigned>(16 * first + second);
}

std::string HexText(std::uint32_t value) {
    char digits[8];
    return {digits, std::to_chars(digits, digits + sizeof digits, value, 16).ptr};
}

std::string DescribeFrame(std::string_view record) {
    std::uint32_t identifier = 0;
    for (std::size_t byte = 0; byte < 4; ++byte) {
        identifier |= static_cast<std::uint32_t>(PairValue(record, IDENTIFIER_PAIR + byte)) << (8 * byte);
    }
    std::string text = HexText(identifier) + " (";
    const unsigned count = PairValue(record, COUNT_PAIR);
    for (unsigned i = 0; i < count; ++i) {
        const unsigned value = PairValue(record, DATA_PAIR + i);
        text += (value < 16 ? "0" : "") + HexText(value) + " ";
    }
    return text + ")\n";
}

} // namespace

std::string DescribeCanRecord(std::string_view record) {
    const unsigned type = PairValue(record, 0);
    if (type == FRAME_TYPE) {
        return DescribeFrame(record);
    }
    const char* name = type < std::size(TYPE_NAMES) ? TYPE_NAMES[type] : nullptr;
    return name == nullptr ? "CPC_MSG_T_UNKNOWN (" + std::to_string(type) + ")\n"
                           : "CPC_MSG_T_" + std::string(name) + "\n";
}

void CanRecordReader::Received(std::size_t count, const Trace& trace) {
    const std::span<char> bytes = Room().first(std::min(count, Room().size()));
    for (const char& byte : bytes) { // by reference: an overflow clears what is still to come
        Take(byte, trace);
    }
    position_ = (position_ + bytes.size()) % capacity;
}

void CanRecordReader::Take(char byte, const Trace& trace) {
    if (recordLength_ == 0) {
        if (byte != RECORD_START) {
            ++skipped_;
            return;
        }
        if (skipped_ != 0) {
            trace("skipped " + std::to_string(static_cast<std::int32_t>(skipped_)) + "\n");
        }
        skipped_ = 0;
    }
    record_[recordLength_++] = byte;
    if (byte == RECORD_END) {
        const std::size_t length = std::exchange(recordLength_, 0);
        trace(DescribeCanRecord({record_.data(), length}));
    } else if (recordLength_ == capacity) {
        trace("Receive Buffer Overflow\n");
        received_.fill('\0');
        recordLength_ = 0;
    }
}

} // namespace logic
