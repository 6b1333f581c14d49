// Writing wave files: the writer alone, and a tone from the setting of its length to the end of its
// generation. The yardstick writes as many bytes into the same folder with the system's plain function.

#include "Controls/interfaces/wave/WaveFile.h"
#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/Messages.h"
#include "Panelhost/ValueRecord.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr const char* DURATION = "duration=0:12";
constexpr int PAIRS = 529200;    // of twelve seconds
constexpr DWORD BYTES = 2114780; // of those that are stored, with 44 of header
constexpr DWORD BLOCK_SIZE = 4096;

std::string InWaveFolder(const char* name) {
    char path[MAX_PATH];
    a_MakeFullPathName((std::string("Temp\\") + name).c_str(), path);
    return path;
}

double WriteBlocks(const std::string& path) {
    const std::vector<char> block(BLOCK_SIZE, 1);
    const double start = Now();
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    for (DWORD left = BYTES; left > 0;) {
        DWORD written = 0;
        if (!WriteFile(file, block.data(), std::min(left, BLOCK_SIZE), &written, nullptr) || written == 0) {
            break;
        }
        left -= written;
    }
    CloseHandle(file);
    return Now() - start;
}

double WritePairs(const std::string& path) {
    const double start = Now();
    WaveFileOpen(path.c_str(), BLOCK_SIZE, 2, 44100, 16);
    for (int i = 0; i < PAIRS; ++i) {
        WaveFileWriteSample(static_cast<std::int16_t>(i), static_cast<std::int16_t>(i));
    }
    WaveFileClose();
    return Now() - start;
}

bool IsGenerating(HWND generator) {
    char text[TEXT_SIZE] = "";
    VALUERECORD record = VALUERECORD::GetText(text).Named("duration");
    SendMessageA(generator, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
    return std::strcmp(text, "0:00 min") != 0;
}

double Generate(HWND generator) {
    const double start = Now();
    SendMessageA(generator, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>(DURATION));
    while (IsGenerating(generator)) {
        Sleep(1);
    }
    return Now() - start;
}

DWORD SizeOf(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data);
    return data.nFileSizeLow;
}

} // namespace

void MeasureWaveFiles(Report& report) {
    const std::string plain = InWaveFolder("bench.bin");
    const std::string wave = InWaveFolder("bench.wav");
    const Workload blocks = [&plain] { return WriteBlocks(plain); };
    report.Measure(
        "write 529,200 sample pairs", [&wave] { return WritePairs(wave); }, "WriteFile of 4 KiB at a time",
        blocks, Unit::Seconds, RatioUpTo(1.2), 75);
    const DWORD written = SizeOf(wave);
    DeleteFileA(wave.c_str());
    const BenchPanel panel(false);
    const HWND generator = panel.Add("IWAVEGENERATOR", 1);
    report.Measure(
        "generate a tone of 529,200 sample pairs", [generator] { return Generate(generator); },
        "WriteFile of 4 KiB at a time", blocks, Unit::Seconds, NO_AIM);
    DeleteFileA(plain.c_str());
    if (written != BYTES || SizeOf(InWaveFolder("wave.wav")) != BYTES) {
        report.Fail("wave files", "they do not have the size they should have");
    }
}
