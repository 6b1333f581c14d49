#include "logic/sound/SampleFormat.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "logic/sound/LittleEndian.h"
#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr std::int32_t LOWEST_RATE = 1000;
constexpr std::int32_t HIGHEST_RATE = 384000;
constexpr unsigned MOST_CHANNELS = 64;

// Kinds of format records.
constexpr unsigned WHOLE_NUMBERS = 1;
constexpr unsigned FLOATS = 3;
constexpr unsigned EXTENSIBLE = 0xFFFE; // the kind stands at the front of the last 16 bytes
constexpr std::size_t EXTENSIBLE_SIZE = 40;
constexpr std::size_t KIND_PLACE = 24;
// What follows the kind there.
constexpr std::array<std::uint8_t, 14> KIND_TAIL = {0, 0, 0,    0, 0x10, 0,    0x80,
                                                    0, 0, 0xAA, 0, 0x38, 0x9B, 0x71};

constexpr std::array<std::string_view, 5> SIZES = {"8bit", "16bit", "24bit", "32bit", "float"};
constexpr std::array<std::string_view, 2> CHANNELS = {"Mono", "Stereo"};

} // namespace

std::uint32_t SampleFormat::FramesIn(std::uint32_t milliseconds) const {
    return static_cast<std::uint32_t>(std::max<std::uint64_t>(std::uint64_t{rate} * milliseconds / 1000, 1));
}

std::optional<SampleFormat> ParseSampleFormat(std::string_view text) {
    const auto fields = SplitFields(text, ',');
    if (fields.size() != 3) {
        return std::nullopt;
    }
    const auto rate = ParseIntegerIn("Hz", fields[0]);
    const auto size = IndexOfWord(SIZES, fields[1]);
    const auto channels = IndexOfWord(CHANNELS, fields[2]);
    if (!rate || *rate < LOWEST_RATE || *rate > HIGHEST_RATE || !size || !channels) {
        return std::nullopt;
    }
    SampleFormat format;
    format.channels = static_cast<std::uint16_t>(*channels + 1);
    format.isFloat = *size == 4;
    format.bits = static_cast<std::uint16_t>(std::min(*size + 1, 4) * 8);
    format.rate = static_cast<std::uint32_t>(*rate);
    return format;
}

std::string SampleFormatText(const SampleFormat& format) {
    const std::string size = format.isFloat ? "float" : std::to_string(format.bits) + "bit";
    const std::string channels = format.channels <= 2 ? std::string(CHANNELS[format.channels == 2 ? 1 : 0])
                                                      : std::to_string(format.channels) + " channels";
    return std::to_string(format.rate) + " Hz," + size + "," + channels;
}

std::vector<std::uint8_t> FormatRecord(const SampleFormat& format) {
    std::vector<std::uint8_t> record;
    Append16(record, format.isFloat ? FLOATS : WHOLE_NUMBERS);
    Append16(record, format.channels);
    Append32(record, format.rate);
    Append32(record, format.rate * format.FrameSize());
    Append16(record, format.FrameSize());
    Append16(record, format.bits);
    return record;
}

std::optional<SampleFormat> ReadFormatRecord(std::span<const std::uint8_t> record) {
    if (record.size() < FORMAT_RECORD_SIZE) {
        return std::nullopt;
    }
    unsigned kind = Read16(record.data());
    if (kind == EXTENSIBLE) {
        if (record.size() < EXTENSIBLE_SIZE ||
            std::memcmp(record.data() + KIND_PLACE + 2, KIND_TAIL.data(), KIND_TAIL.size()) != 0) {
            return std::nullopt;
        }
        kind = Read16(record.data() + KIND_PLACE);
    }
    SampleFormat format;
    format.channels = Read16(record.data() + 2);
    format.rate = Read32(record.data() + 4);
    format.bits = Read16(record.data() + 14);
    format.isFloat = kind == FLOATS;
    const bool isKnown = kind == FLOATS ? format.bits == 32
                         : kind == WHOLE_NUMBERS
                             ? format.bits % 8 == 0 && format.bits >= 8 && format.bits <= 32
                             : false;
    const std::uint64_t bytesPerSecond = std::uint64_t{format.rate} * format.FrameSize();
    if (!isKnown || format.channels == 0 || format.channels > MOST_CHANNELS || format.rate == 0 ||
        bytesPerSecond > 0x7FFFFFFF || Read16(record.data() + 12) != format.FrameSize()) {
        return std::nullopt;
    }
    return format;
}

float ReadSample(const SampleFormat& format, const std::uint8_t* bytes) {
    if (format.isFloat) {
        float sample = 0;
        std::memcpy(&sample, bytes, sizeof sample);
        return std::isfinite(sample) ? sample : 0.0F;
    }
    switch (format.bits) {
    case 8:
        return static_cast<float>(*bytes - 128) / 128.0F;
    case 16:
        return static_cast<float>(static_cast<std::int16_t>(Read16(bytes))) / 32768.0F;
    case 24:
        return static_cast<float>(static_cast<std::int32_t>(std::uint32_t{Read16(bytes + 1)} << 16 |
                                                            std::uint32_t{bytes[0]} << 8)) /
               2147483648.0F;
    default:
        return static_cast<float>(static_cast<std::int32_t>(Read32(bytes))) / 2147483648.0F;
    }
}

void WriteSample(const SampleFormat& format, float sample, std::uint8_t* bytes) {
    if (format.isFloat) {
        std::memcpy(bytes, &sample, sizeof sample);
        return;
    }
    const double scale = std::ldexp(1.0, format.bits - 1);
    const double limited = std::clamp(std::round(static_cast<double>(sample) * scale), -scale, scale - 1);
    const auto number = static_cast<std::int32_t>(limited) + (format.bits == 8 ? 128 : 0);
    for (unsigned byte = 0; byte < format.bits / 8U; ++byte) {
        bytes[byte] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(number) >> 8 * byte);
    }
}

} // namespace logic
