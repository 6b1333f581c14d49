#include "logic/sound/WaveFile.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "logic/sound/LittleEndian.h"

namespace logic {

namespace {

constexpr std::size_t CHUNK_HEADER = 8;
constexpr std::size_t FIRST_CHUNK = 12;
constexpr int MOST_CHUNKS = 1000; // in front of the samples; nobody is kept busy by a file of nothing else
constexpr std::size_t LONGEST_RECORD = 256;

bool IsNamed(const std::uint8_t* bytes, std::string_view name) {
    return std::memcmp(bytes, name.data(), name.size()) == 0;
}

void AppendName(std::vector<std::uint8_t>& bytes, std::string_view name) {
    bytes.insert(bytes.end(), name.begin(), name.end());
}

} // namespace

WaveReading ReadWave(const ByteSource& read, std::uint64_t fileSize) {
    WaveReading reading;
    const auto fail = [&reading](const char* fault) {
        reading.fault = fault;
        return reading;
    };
    std::array<std::uint8_t, FIRST_CHUNK> start{};
    if (fileSize < start.size() || read(0, start) != start.size() || !IsNamed(start.data(), "RIFF") ||
        !IsNamed(start.data() + 8, "WAVE")) {
        return fail("is no wave file");
    }
    WaveLayout& layout = reading.layout;
    std::uint64_t place = FIRST_CHUNK;
    for (int chunk = 0; chunk < MOST_CHUNKS && place + CHUNK_HEADER <= fileSize; ++chunk) {
        std::array<std::uint8_t, CHUNK_HEADER> header{};
        if (read(place, header) != header.size()) {
            break;
        }
        const std::uint32_t size = Read32(header.data() + 4);
        place += CHUNK_HEADER;
        if (IsNamed(header.data(), "fmt ")) {
            layout.record.resize(std::min<std::size_t>(size, LONGEST_RECORD));
            const bool isThere = read(place, layout.record) == layout.record.size();
            const auto format = isThere ? ReadFormatRecord(layout.record) : std::nullopt;
            if (!format) {
                return fail(isThere ? "has samples of a kind that is not known" : "ends in its header");
            }
            layout.format = *format;
        } else if (IsNamed(header.data(), "data")) {
            if (layout.record.empty()) {
                return fail("does not say of what kind its samples are");
            }
            const std::uint64_t available = std::min<std::uint64_t>(size, fileSize - place);
            layout.begin = place;
            layout.missing = size - available;
            layout.size = available - available % layout.format.FrameSize();
            return layout.size == 0 ? fail("has no samples") : reading;
        }
        place += std::uint64_t{size} + size % 2;
    }
    return fail("has no samples");
}

std::vector<std::uint8_t> WaveHeader(const SampleFormat& format, std::uint32_t size) {
    std::vector<std::uint8_t> body;
    AppendName(body, "WAVEfmt ");
    std::vector<std::uint8_t> record = FormatRecord(format);
    if (format.isFloat) {
        Append16(record, 0); // nothing more to be said of the format
    }
    Append32(body, static_cast<std::uint32_t>(record.size()));
    body.insert(body.end(), record.begin(), record.end());
    if (format.isFloat) {
        AppendName(body, "fact");
        Append32(body, 4);
        Append32(body, size / format.FrameSize());
    }
    AppendName(body, "data");
    Append32(body, size);

    std::vector<std::uint8_t> header;
    AppendName(header, "RIFF");
    Append32(header, static_cast<std::uint32_t>(body.size()) + size + size % 2);
    header.insert(header.end(), body.begin(), body.end());
    return header;
}

} // namespace logic
