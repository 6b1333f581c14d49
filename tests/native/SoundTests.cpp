#include "logic/sound/Levels.h"
#include "logic/sound/LittleEndian.h"
#include "logic/sound/WaveFile.h"
#include "tests/native/Tables.h"

#include <cstring>

using namespace logic;

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes AllOf(const char* text, std::size_t length) {
    return {text, text + length};
}

WaveReading ReadBytes(const Bytes& file, std::uint64_t size) {
    return ReadWave(
        [&file](std::uint64_t place, std::span<std::uint8_t> into) {
            const std::size_t from = static_cast<std::size_t>(std::min<std::uint64_t>(place, file.size()));
            const std::size_t count = std::min(into.size(), file.size() - from);
            std::copy_n(file.begin() + static_cast<std::ptrdiff_t>(from), count, into.begin());
            return count;
        },
        size);
}

std::string FaultOf(const Bytes& file) {
    const char* fault = ReadBytes(file, file.size()).fault;
    return fault == nullptr ? "" : fault;
}

// A file of the chunks that follow.
Bytes Riff(std::initializer_list<Bytes> chunks) {
    Bytes file = AllOf("RIFFsizeWAVE", 12);
    for (const Bytes& chunk : chunks) {
        file.insert(file.end(), chunk.begin(), chunk.end());
    }
    return file;
}
Bytes Chunk(const char* name, const Bytes& content) {
    Bytes chunk = AllOf(name, 4);
    Append32(chunk, static_cast<std::uint32_t>(content.size()));
    chunk.insert(chunk.end(), content.begin(), content.end());
    chunk.resize(chunk.size() + content.size() % 2);
    return chunk;
}

Bytes Extensible(unsigned kind, char tail = '\x71') {
    Bytes record = FormatRecord({6, 24, 96000, false});
    record[0] = 0xFE;
    record[1] = 0xFF;
    record.resize(24);
    Append16(record, kind);
    const Bytes rest = AllOf("\0\0\0\0\x10\0\x80\0\0\xAA\0\x38\x9B", 13);
    record.insert(record.end(), rest.begin(), rest.end());
    record.push_back(static_cast<std::uint8_t>(tail));
    return record;
}

constexpr SampleFormat FORMATS[] = {{1, 8, 8000, false},   {2, 16, 44100, false}, {2, 24, 48000, false},
                                    {6, 32, 96000, false}, {2, 32, 44100, true},  {1, 32, 1, true}};

} // namespace

TEST_CASE("the text of a format") {
    const Row<std::optional<SampleFormat>, const char*> rows[] = {
        {{"44100 Hz,16bit,Stereo"}, {{2, 16, 44100, false}}},
        {{" 48000hz , 24BIT,mono "}, {{1, 24, 48000, false}}},
        {{"1000,8bit,Mono"}, {{1, 8, 1000, false}}},
        {{"384000 Hz,float,Stereo"}, {{2, 32, 384000, true}}},
    };
    CheckRows(ParseSampleFormat, rows);
    CheckRefused(ParseSampleFormat, "", "44100 Hz", "44100 Hz,16,Stereo", "999 Hz,16bit,Mono",
                 "384001 Hz,16bit,Mono", "44100.5 Hz,16bit,Mono", "44100 Hz,16bit,Stereo,",
                 "44100 Hz,16bit,5.1");
    for (const SampleFormat& format : FORMATS) {
        const auto read = ParseSampleFormat(SampleFormatText(format));
        CHECK((!read || *read == format));
        CHECK(ReadFormatRecord(FormatRecord(format)) == format);
    }
    CHECK(SampleFormatText(FORMATS[3]) == "96000 Hz,32bit,6 channels");
    CHECK(FORMATS[1].FramesIn(50) == 2205);
    CHECK(FORMATS[5].FramesIn(50) == 1);
}

TEST_CASE("format records of the extensible kind, and those that contradict themselves") {
    CHECK(ReadFormatRecord(Extensible(1)) == SampleFormat{6, 24, 96000, false});
    CHECK_FALSE(ReadFormatRecord(Extensible(3))); // floats of 24 bits
    CHECK_FALSE(ReadFormatRecord(Extensible(2)));
    CHECK_FALSE(ReadFormatRecord(Extensible(1, '\x70')));
    Bytes cut = Extensible(1);
    cut.pop_back();
    CHECK_FALSE(ReadFormatRecord(cut));
    CHECK_FALSE(ReadFormatRecord(Bytes(15, 1)));
    const std::pair<std::size_t, std::uint8_t> faults[] = {
        {0, 2},   {0, 3},   {2, 0},  {2, 65}, {12, 3},
        {14, 12}, {14, 64}, {14, 0}, {7, 128}}; // a rate beyond all bounds
    for (const auto& fault : faults) {
        Bytes record = FormatRecord({});
        record[fault.first] = fault.second;
        CAPTURE(fault.first);
        CHECK_FALSE(ReadFormatRecord(record));
    }
}

TEST_CASE("what is written as a wave file is read as such, bit for bit") {
    for (const SampleFormat& format : FORMATS) {
        CAPTURE(SampleFormatText(format));
        Bytes file = WaveHeader(format, 3 * format.FrameSize());
        CHECK(file.size() == (format.isFloat ? 58 : 44));
        const std::size_t begin = file.size();
        file.resize(begin + 3 * format.FrameSize() + format.FrameSize() % 2, 7);
        CHECK(Read32(file.data() + 4) == file.size() - 8);
        const WaveReading reading = ReadBytes(file, file.size());
        CHECK(reading.fault == nullptr);
        CHECK(reading.layout.format == format);
        CHECK(reading.layout.begin == begin);
        CHECK(reading.layout.Frames() == 3);
        CHECK(reading.layout.missing == 0);
    }
}

TEST_CASE("chunks stand in any order, and a file can end anywhere") {
    const Bytes format = Chunk("fmt ", FormatRecord({}));
    const Bytes other = Chunk("LIST", Bytes(5, 1));
    const Bytes samples = Chunk("data", Bytes(10, 2));
    Bytes file = Riff({other, format, other, samples, other});
    const WaveReading whole = ReadBytes(file, file.size());
    CHECK(whole.layout.begin == 12 + 14 + 24 + 14 + 8);
    CHECK(whole.layout.size == 8); // whole frames
    // Cut short among its samples it is played as far as it goes.
    const WaveReading cut = ReadBytes(file, whole.layout.begin + 5);
    CHECK(cut.fault == nullptr);
    CHECK(cut.layout.size == 4);
    CHECK(cut.layout.missing == 5);
    const std::pair<Bytes, const char*> faults[] = {
        {{}, "is no wave file"},
        {AllOf("RIFFsizeAVI ", 12), "is no wave file"},
        {Riff({}), "has no samples"},
        {Riff({format, other}), "has no samples"},
        {Riff({format, Chunk("data", Bytes(3, 1))}), "has no samples"},
        {Riff({samples, format}), "does not say of what kind its samples are"},
        {Riff({Chunk("fmt ", Bytes(16, 9)), samples}), "has samples of a kind that is not known"},
        {Riff({AllOf("fmt \x10\0\0\0\1\0", 10)}), "ends in its header"},
    };
    for (const auto& [bytes, fault] : faults) {
        CHECK(FaultOf(bytes) == fault);
    }
    // A chunk of nothing after the other is not looked through to the end.
    int reads = 0;
    const auto endless = [&](std::uint64_t place, std::span<std::uint8_t> into) {
        ++reads;
        std::fill(into.begin(), into.end(), std::uint8_t{0});
        std::memcpy(into.data(), place == 0 ? "RIFFsizeWAVE" : "none", place == 0 ? 12 : 4);
        return into.size();
    };
    CHECK(ReadWave(endless, 0x80000000U).fault == std::string("has no samples"));
    CHECK(reads <= 1001);
}

TEST_CASE("samples of every kind are read and written, and limited") {
    for (const SampleFormat& format : FORMATS) {
        CAPTURE(SampleFormatText(format));
        std::uint8_t bytes[4] = {};
        for (const float sample : {0.0F, 0.5F, -0.25F, -1.0F}) {
            WriteSample(format, sample, bytes);
            CHECK(ReadSample(format, bytes) == sample);
        }
        WriteSample(format, 2, bytes);
        CHECK(ReadSample(format, bytes) == doctest::Approx(format.isFloat ? 2 : 1).epsilon(0.01));
        WriteSample(format, -2, bytes);
        CHECK(ReadSample(format, bytes) == (format.isFloat ? -2 : -1));
    }
    std::uint8_t bytes[4];
    std::memcpy(bytes, &notANumber, 4);
    CHECK(ReadSample(FORMATS[4], bytes) == 0);
}

TEST_CASE("levels of a sine, of one channel and of silence") {
    for (const SampleFormat& format : FORMATS) {
        CAPTURE(SampleFormatText(format));
        const std::size_t step = format.bits / 8U;
        for (const std::size_t frames : {std::size_t{44100}, std::size_t{441}}) { // whole periods
            Bytes block(frames * format.FrameSize() + step - 1, 0);               // and a piece of a frame
            for (std::size_t frame = 0; frame < frames; ++frame) {
                const double turn = 6.283185307179586 * static_cast<double>(frame) / 44.1;
                for (std::size_t channel = 0; channel < format.channels; ++channel) {
                    WriteSample(format, static_cast<float>(std::sin(turn) * (channel == 0 ? 0.5 : 0.125)),
                                block.data() + frame * format.FrameSize() + channel * step);
                }
            }
            const double tolerance = format.bits == 8 ? 0.3 : 0.02;
            const BlockLevels levels = MeasureLevels(format, block);
            const double second = format.channels == 1 ? -6.02 : -18.06;
            CHECK(std::abs(PeakDecibels(levels.channels[0]) + 6.02) < tolerance);
            CHECK(std::abs(PowerDecibels(levels.channels[0]) + 9.03) < tolerance);
            CHECK(std::abs(PeakDecibels(levels.channels[1]) - second) < tolerance * 2);
            CHECK(std::abs(PowerDecibels(levels.channels[1]) - second + 3.01) < tolerance * 2);
        }
        CHECK(PeakDecibels(MeasureLevels(format, {}).channels[0]) == SILENCE);
    }
    const BlockLevels joined = Joined({{{0.5F, 0.2}, {0, 0}}}, {{{0.25F, 0.4}, {1, 1}}});
    CHECK(joined.channels[0].peak == 0.5F);
    CHECK(joined.channels[0].power == doctest::Approx(0.3));
    CHECK(PowerDecibels(joined.channels[1]) == doctest::Approx(-3.01).epsilon(0.001));
    // The quick way and the slow one agree, at each length.
    std::mt19937 random(7);
    for (std::size_t frames = 0; frames < 40; ++frames) {
        Bytes block;
        for (std::size_t i = 0; i < frames * 4; ++i) {
            block.push_back(static_cast<std::uint8_t>(Any(random, 0, 255)));
        }
        float peak = 0;
        double power = 0;
        for (std::size_t i = 0; i < frames; ++i) {
            const float right = ReadSample({}, block.data() + i * 4 + 2);
            peak = std::max(peak, std::abs(right));
            power += static_cast<double>(right * right) / static_cast<double>(frames);
        }
        const BlockLevels levels = MeasureLevels({}, block);
        CHECK(levels.channels[1].peak == doctest::Approx(peak));
        CHECK(levels.channels[1].power == doctest::Approx(power));
    }
}

TEST_CASE("sound is made softer, and 16 bits of any other") {
    for (const SampleFormat& format : FORMATS) {
        CAPTURE(SampleFormatText(format));
        Bytes block(format.FrameSize(), 0);
        WriteSample(format, -0.5F, block.data());
        const Bytes before = block;
        ApplyGain(format, 1, block);
        CHECK(block == before);
        ApplyGain(format, GainOf(-6.0206F), block);
        CHECK(ReadSample(format, block.data()) == doctest::Approx(-0.25));
        Bytes converted;
        ConvertTo16Bits(format, block, converted);
        CHECK(converted.size() == format.channels * 2U);
        CHECK(ReadSample({}, converted.data()) == doctest::Approx(-0.25));
    }
}
