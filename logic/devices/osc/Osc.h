// Messages of Open Sound Control 1.0, in datagrams: addresses with typed arguments. What comes from outside
// is read without copying; what is sent is one message a datagram.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace logic {

// An argument of a message that was read. Its tag says which member counts.
struct OscArgument {
    char tag = 'N';         // i h f d s S b t T F N I
    std::int64_t whole = 0; // of i, h, t (as it is), T (1) and F (0)
    double number = 0;      // of f and d, and of i, h, T and F: the same; may be not finite
    std::string_view text;  // of s, S (without zeros) and of b (its bytes)

    bool IsNumber() const;
    bool IsText() const { return tag == 's' || tag == 'S'; }
    bool IsBlob() const { return tag == 'b'; }
};

struct OscMessage {
    std::string_view address; // from '/' on
    std::vector<OscArgument> arguments;
};

enum class OscFault {
    None,
    Size,     // empty, larger than a datagram may be, or no multiple of four
    Address,  // does not begin with '/', does not end, is too long, or holds control characters
    Tags,     // not ended, too many, or of an unknown type
    Argument, // ends behind the datagram, or is not filled up with zeros
    Bundle    // too deep, too many elements, or an element of a wrong length
};

constexpr std::size_t LARGEST_OSC_DATAGRAM = 8192; // that is read
constexpr std::size_t LARGEST_OSC_MESSAGE = 512;   // that is sent
constexpr std::size_t LONGEST_OSC_ADDRESS = 255;
constexpr std::size_t MOST_OSC_TAGS = 128;

// Reads a datagram: a message, or a bundle of up to four levels and 64 elements. All of it is well-formed, or
// nothing is given. A message without a tag string has no arguments. The views lie in the datagram.
OscFault ReadOsc(std::string_view datagram, std::vector<OscMessage>& messages);

// bool is sent as T or F, which have no bytes.
using OscValue = std::variant<std::int32_t, float, bool, std::string>;

// The datagram of one message. The tag string is always there. Nothing when the address or a text holds a
// zero, a number is not finite, or the whole is larger than LARGEST_OSC_MESSAGE.
std::optional<std::string> WriteOsc(std::string_view address, std::span<const OscValue> arguments = {});

// The values of a meter block: a blob that holds, low byte first, their count and then the values.
enum class MeterFormat {
    Float32, // amplitudes, 1 is full scale
    Int16    // 1/256 dB
};
// Nothing when there are more values than bytes.
std::optional<std::vector<float>> ReadMeterBlock(std::string_view blob, MeterFormat format);

} // namespace logic
