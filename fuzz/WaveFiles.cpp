// Any file as a wave file: what is found lies in it, and is measured, made softer and converted.
#include <algorithm>
#include <cmath>

#include "fuzz/Fuzzer.h"
#include "logic/sound/Levels.h"
#include "logic/sound/WaveFile.h"

using namespace logic;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ByteSource read = [data, size](std::uint64_t place, std::span<std::uint8_t> into) {
        const auto from = static_cast<std::size_t>(std::min<std::uint64_t>(place, size));
        const std::size_t count = std::min(into.size(), size - from);
        std::copy_n(data + from, count, into.begin());
        return count;
    };
    const std::uint64_t claimed = size > 0 && data[size - 1] % 2 == 0 ? size : size * 3; // it may shrink
    const WaveReading reading = ReadWave(read, claimed);
    if (reading.fault != nullptr) {
        return 0;
    }
    const WaveLayout& layout = reading.layout;
    Require(layout.size > 0 && layout.begin + layout.size <= claimed);
    Require(layout.size % layout.format.FrameSize() == 0 && layout.record.size() >= FORMAT_RECORD_SIZE);
    Require(ReadFormatRecord(FormatRecord(layout.format)) == layout.format);
    std::vector<std::uint8_t> samples(static_cast<std::size_t>(layout.size));
    samples.resize(read(layout.begin, samples));
    const BlockLevels levels = MeasureLevels(layout.format, samples);
    for (const ChannelLevel& level : levels.channels) {
        Require(std::isfinite(PeakDecibels(level)) && std::isfinite(PowerDecibels(level)));
    }
    std::vector<std::uint8_t> converted;
    ConvertTo16Bits(layout.format, samples, converted);
    ApplyGain(layout.format, 0.5F, samples);
    const std::string text = SampleFormatText(layout.format);
    Require(!ParseSampleFormat(text) || *ParseSampleFormat(text) == layout.format);
    return 0;
}
