// The wave generator and its file: what is written, in which order, and what happens when it cannot be.

#include "Panelhost/Trace.h"
#include "tests/windows/ImportHook.h"
#include "tests/windows/Resources.h"
#include "tests/windows/TestPanel.h"

#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <mmsystem.h>

TEST_SUITE_BEGIN("WaveGenerator");

namespace {

std::string WavePath() {
    return ProgramFolder() + "Temp\\wave.wav";
}

constexpr const char* IDLE = "0:00 min";

bool AwaitIdle(HWND generator) {
    return Await([generator] { return Text(generator, "duration") == IDLE; }, 30000);
}

// A short one, from its beginning to its end.
void Generate(HWND generator, const char* duration = "duration=0:01") {
    CHECK(Load(generator, duration) == 1);
    CHECK(AwaitIdle(generator));
}

// The file as it has to be: 16-bit stereo, the sizes in its header being those of what it holds.
struct Wave {
    Wave() {
        const std::string bytes = ReadBytes(WavePath());
        REQUIRE(bytes.size() >= 44);
        std::string header = bytes.substr(0, 44);
        const auto size = static_cast<std::uint32_t>(bytes.size());
        CHECK(Number(header, 4) == size - 8);
        CHECK(Number(header, 40) == size - 44);
        header.replace(4, 4, "size").replace(40, 4, "size");
        CHECK(
            header ==
            std::string("RIFFsizeWAVEfmt \x10\0\0\0\1\0\2\0\x44\xAC\0\0\x10\xB1\2\0\4\0\x10\0datasize", 44));
        CHECK((bytes.size() - 44) % 4 == 0);
        int differing = 0;
        for (std::size_t at = 44; at + 4 <= bytes.size(); at += 4) {
            const std::uint32_t pair = Number(bytes, at);
            differing += (pair & 0xFFFF) != pair >> 16 ? 1 : 0;
            samples.push_back(static_cast<std::int16_t>(pair & 0xFFFF));
        }
        CHECK(differing == 0);
    }

    // Whether there is a complete file without samples.
    static bool IsEmpty() {
        const std::string bytes = ReadBytes(WavePath());
        return bytes.size() == 44 && bytes[4] != 0;
    }

    static std::uint32_t Number(const std::string& bytes, std::size_t at) {
        std::uint32_t number = 0;
        std::memcpy(&number, bytes.data() + at, sizeof number);
        return number;
    }

    // The samples of a sine from one sample of it to another, those left out that find the buffer full.
    void CheckSine(double frequency, int amplitude, int first, int last) const {
        std::size_t stored = 0;
        int wrong = 0;
        for (int i = first; i < last; ++i) {
            if ((i - first) % 1025 == 1024) {
                continue;
            }
            if (stored == samples.size()) {
                break;
            }
            const double expected = std::sin(6.283185307179586 * frequency * i / 44100) * amplitude;
            wrong += std::abs(samples[stored++] - static_cast<int>(expected)) > 1;
        }
        CHECK(wrong == 0);
        CHECK(stored == samples.size());
    }

    std::vector<std::int16_t> samples; // of both channels
};

// Until it goes on, whoever has filled a buffer waits. A faulty one takes nothing then.
class StalledDrive {
public:
    explicit StalledDrive(bool isFaulty) : hook_(CONTROL_LIBRARY, "mmioAdvance", Advance) {
        fails = isFaulty;
        stalled = 0;
        original = hook_.Original<decltype(mmioAdvance)>();
        ResetEvent(goesOn);
    }
    void GoOn() const { SetEvent(goesOn); }

    static inline std::atomic<int> stalled; // how often somebody came to wait

private:
    static MMRESULT WINAPI Advance(HMMIO file, LPMMIOINFO info, UINT flags) {
        ++stalled;
        WaitForSingleObject(goesOn, INFINITE);
        return fails ? MMIOERR_CANNOTWRITE : original(file, info, flags);
    }

    static inline const HANDLE goesOn = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    static inline std::atomic<bool> fails;
    static inline decltype(mmioAdvance)* original;
    ImportHook hook_;
};

} // namespace

TEST_CASE("a tone is written, less the pair that finds the buffer full, and the next one goes on from it") {
    TestPanel panel;
    HWND generator = panel.Create("IWAVEGENERATOR", "W");
    CHECK(Load(generator, "signal=1000.3 Hz,20000") == 1);
    Generate(generator, "duration=0:02");
    const Wave first;
    CHECK(first.samples.size() == 88200 - 86);
    first.CheckSine(1000.3F, 20000, 0, 88200);
    // For a reader that is not ours: a test of its own.
    CHECK(CopyFileA(WavePath().c_str(), (ProgramFolder() + "Temp\\tone.wav").c_str(), FALSE));

    int seconds = 1; // as a number
    CHECK(Send(generator, COMMAND_SET, DATATYPE_INTEGER, &seconds, "duration") == 1);
    CHECK(AwaitIdle(generator));
    const Wave second;
    CHECK(second.samples.size() == 44100 - 43);
    second.CheckSine(1000.3F, 20000, 88200, 132300);
}

TEST_CASE("generators write one after the other, and show their length until their file is complete") {
    TestPanel panel;
    const int threads = CountResources().threads;
    HWND generators[3];
    for (HWND& generator : generators) {
        generator = panel.Create("IWAVEGENERATOR", "W");
        CHECK(Load(generator, "signal=1250 Hz,40000") == 1);
        CHECK(Text(generator, "signal") == "1250 Hz,32767");
    }
    {
        const StalledDrive drive(false);
        for (HWND generator : generators) { // the first writes, the others wait for their turn
            CHECK(Load(generator, "duration=0:75") == 1);
            CHECK(Text(generator, "duration") == "1:00 min");
            CHECK(Await([&drive] { return drive.stalled == 1; }));
        }
        for (HWND generator :
             {generators[0], generators[1]}) { // and get other lengths, the last of which remains
            for (int length = 20; length >= 2; --length) {
                CHECK(Load(generator, "duration=0:" + std::to_string(length)) == 1);
            }
            CHECK(Text(generator, "duration") == "0:02 min");
        }
        DestroyWindow(generators[2]);
        CHECK(Await([threads] { return CountResources().threads <= threads + 2; }));
        CHECK(drive.stalled == 1);
        drive.GoOn();
        CHECK(AwaitIdle(generators[0]));
        CHECK(AwaitIdle(generators[1]));
    }
    const Wave wave;
    CHECK(wave.samples.size() == 88200 - 86);
    CHECK(Await([threads] { return CountResources().threads <= threads; }));
}

TEST_CASE("a loaded panel writes the file as an empty one") {
    const TestPanel first;
    first.Create("IWAVEGENERATOR", "W");
    const std::string saved = first.Saved();
    DeleteFileA(WavePath().c_str());
    TestPanel panel;
    const TraceCapture trace;
    CHECK(panel.Open(saved) == 1);
    CHECK(trace.CountContaining("Error reading line ") == 0); // filename and format are passed over
    CHECK(Await(Wave::IsEmpty));
    CHECK(Wave().samples.empty());
}

TEST_CASE("a generator that goes cuts its file short and leaves it in order") {
    TestPanel panel;
    const int threads = CountResources().threads;
    HWND first = panel.Create("IWAVEGENERATOR", "A");
    DeleteFileA(WavePath().c_str());
    CHECK(Load(first, "duration=150:00") == 1);
    WIN32_FILE_ATTRIBUTE_DATA file{};
    CHECK(Await([&file] {
        return GetFileAttributesExA(WavePath().c_str(), GetFileExInfoStandard, &file) &&
               file.nFileSizeLow > 5000;
    }));
    DestroyWindow(first);
    CHECK(Await([threads] { return CountResources().threads <= threads; }));
    const Wave wave;
    CHECK(wave.samples.size() > 1000);
    wave.CheckSine(1000.0, 24575, 0, 150 * 60 * 44100);
}

TEST_CASE("a drive that stalls holds up no generator's end, and the library stays until it comes back") {
    const Resources before = CountResources();
    for (const bool unloads : {false, true}) {
        CAPTURE(unloads);
        TestPanel panel;
        const StalledDrive drive(true);
        HWND first = panel.Create("IWAVEGENERATOR", "A");
        HWND second = panel.Create("IWAVEGENERATOR", "B");
        CHECK(Load(first, "duration=0:01") == 1);
        CHECK(Await([&drive] { return drive.stalled == 1; }));
        CHECK(Load(second, "duration=0:01") == 1); // waits for its turn
        DestroyWindow(second);
        DestroyWindow(first);
        CHECK(Await([&before] { return CountResources().threads <= before.threads + 1; }));
        if (unloads) {
            FreeLibrary(GetModuleHandleA(CONTROL_LIBRARY));
            CHECK(GetModuleHandleA(CONTROL_LIBRARY) != nullptr);
            drive.GoOn();
            CHECK(Await([] { return GetModuleHandleA(CONTROL_LIBRARY) == nullptr; }));
            REQUIRE(LoadLibraryA(CONTROL_LIBRARY) != nullptr);
        } else { // the next one has its turn when the first one's thread has ended by itself
            HWND next = panel.Create("IWAVEGENERATOR", "C");
            CHECK(Load(next, "duration=0:00") == 1);
            CHECK(Text(next, "duration") == IDLE);
            drive.GoOn();
            CHECK(AwaitIdle(next));
            CHECK(Await(Wave::IsEmpty));
        }
        CHECK(drive.stalled == 1);
    }
    CHECK(Await([&before] { return CountResources().threads <= before.threads; }));
}

TEST_CASE("a file that cannot be opened is reported, and the next one is written") {
    TestPanel panel;
    HWND generator = panel.Create("IWAVEGENERATOR", "W");
    Generate(generator);
    HANDLE player = CreateFileA(WavePath().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    REQUIRE(player != INVALID_HANDLE_VALUE);
    const TraceCapture trace;
    Generate(generator);
    CHECK(trace.Count(TRACE_DEBUG, "Error: mmioOpen\n") == 1);
    CloseHandle(player);
    Generate(generator, "duration=0:02");
    CHECK(Wave().samples.size() == 88200 - 86);
}

TEST_CASE("a full disk is reported once and keeps no file open") {
    TestPanel panel;
    HWND generator = panel.Create("IWAVEGENERATOR", "W");
    Generate(generator);
    static std::atomic<int> failures; // to come: with something in its buffer the file stays open at first
    static decltype(mmioClose)* close;
    const auto advance = [](HMMIO, LPMMIOINFO, UINT) __attribute__((stdcall))->MMRESULT {
        return MMIOERR_CANNOTWRITE;
    };
    const auto closeLater = [](HMMIO file, UINT flags) __attribute__((stdcall))->MMRESULT {
        return failures-- > 0 ? MMIOERR_CANNOTWRITE : close(file, flags);
    };
    {
        const ImportHook advanceHook(CONTROL_LIBRARY, "mmioAdvance", +advance);
        const ImportHook closeHook(CONTROL_LIBRARY, "mmioClose", +closeLater);
        close = closeHook.Original<decltype(mmioClose)>();
        const std::string left = LeftBehind(10, [generator] {
            const TraceCapture trace;
            failures = 1;
            Generate(generator);
            CHECK(failures < 1);
            CHECK(trace.Count(TRACE_DEBUG, "Error: mmioAdvance\n") == 1);
            CHECK(trace.CountContaining("Error") == 1);
            CHECK(DeleteFileA(WavePath().c_str()));
        });
        CHECK(left == "");
    }
    Generate(generator);
    CHECK(Wave().samples.size() == 44100 - 43);
}

TEST_SUITE_END();
