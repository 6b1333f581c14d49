// Sound: what playing and recording cost beyond the copy of the bytes, on a double of the system's sound, in
// a program beside this one; and the level of a block beside reading it once.

#include "benchmarks/Suites.h"
#include "logic/sound/Levels.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr int SECONDS = 10;
constexpr int SECONDS_WHEN_QUICK = 3;
constexpr std::size_t FRAMES = 4096;
constexpr int REPETITIONS = 2000;

volatile double kept = 0; // so that nothing is left out

// Seconds of processor time that the other program takes for so many seconds of sound.
std::optional<double> RunBeside(const std::string& mode, int seconds) {
    char folder[MAX_PATH];
    GetModuleFileNameA(nullptr, folder, MAX_PATH);
    const std::string own = folder;
    const std::string root =
        own.substr(0, own.find_last_of('\\')); // the application folder, which it runs in
    const std::string output = root + "\\Temp\\sound-load.txt";
    std::string command =
        "\"" + root + "\\..\\benchmarks\\sound\\sound_load.exe\" " + mode + " " + std::to_string(seconds);
    DeleteFileA(output.c_str());
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, root.c_str(), &startup,
                        &process)) {
        return std::nullopt;
    }
    CloseHandle(process.hThread);
    WaitForSingleObject(process.hProcess, 60000);
    CloseHandle(process.hProcess);
    std::FILE* file = std::fopen(output.c_str(), "r");
    if (file == nullptr) {
        return std::nullopt;
    }
    double taken = 0;
    const bool isRead = std::fscanf(file, "%lf", &taken) == 1;
    std::fclose(file);
    DeleteFileA(output.c_str());
    return isRead ? std::optional(taken) : std::nullopt;
}

void MeasurePlaying(Report& report) {
    const int seconds = report.IsQuick() ? SECONDS_WHEN_QUICK : SECONDS;
    Samples beyond;
    Samples copying;
    for (int round = 0; round < report.Rounds(3); ++round) {
        const auto ours = RunBeside("controls", seconds);
        const auto bytes = RunBeside("bytes", seconds);
        if (!ours || !bytes) {
            report.Fail("playing and recording",
                        "the double of winmm.dll is not used (WINEDLLOVERRIDES=winmm=n,b)");
            return;
        }
        beyond.push_back((*ours - *bytes) / seconds);
        copying.push_back(*bytes / seconds);
    }
    report.Add("processor time of a second of playing and recording, beyond its bytes", beyond, "", {},
               Unit::Seconds, Below(0.010));
    report.Add("the same of reading, copying and writing its bytes", copying, "", {}, Unit::Seconds, NO_AIM);
}

std::uint32_t ReadOnce(std::span<const std::uint8_t> bytes) {
    constexpr std::size_t LANES = 16;
    std::uint32_t sums[LANES] = {};
    for (std::size_t at = 0; at + sizeof sums <= bytes.size(); at += sizeof sums) {
        std::uint32_t words[LANES];
        std::memcpy(words, bytes.data() + at, sizeof words);
        for (std::size_t i = 0; i < LANES; ++i) {
            sums[i] += words[i];
        }
    }
    return std::accumulate(std::begin(sums), std::end(sums), std::uint32_t{0});
}

void MeasureLevel(Report& report) {
    std::vector<std::int16_t> samples(FRAMES * 2);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = static_cast<std::int16_t>(i * 7919);
    }
    const std::span<const std::uint8_t> bytes(reinterpret_cast<const std::uint8_t*>(samples.data()),
                                              samples.size() * 2);
    report.Measure(
        "the levels of a block of 4,096 stereo frames",
        [&] {
            const double start = Now();
            double sum = 0;
            for (int i = 0; i < REPETITIONS; ++i) {
                sum += logic::MeasureLevels({}, bytes).channels[i % 2].power;
            }
            kept = sum;
            return (Now() - start) / REPETITIONS;
        },
        "its words added up, 16 at a time",
        [&] {
            const double start = Now();
            double sum = 0;
            for (int i = 0; i < REPETITIONS; ++i) {
                const std::uint8_t* const volatile begin = bytes.data(); // each time anew
                sum += ReadOnce({begin, bytes.size()});
            }
            kept = sum;
            return (Now() - start) / REPETITIONS;
        },
        Unit::Seconds, RatioUpTo(2), 25);
}

} // namespace

void MeasureSound(Report& report) {
    MeasureLevel(report);
    MeasurePlaying(report);
}
