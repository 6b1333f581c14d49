// The wave generator and its file: what is written, in which order, and what happens when it cannot be.

#include "Controls/wave/WaveFile.h"
#include "tests/windows/ImportHook.h"
#include "tests/windows/Resources.h"
#include "tests/windows/TestPanel.h"

#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <mmsystem.h>

TEST_SUITE_BEGIN("WaveGenerator");

// A disk that can be full. The writer that is built into this program calls these in place of the system's
// functions.

namespace {

bool diskIsFull = false;

template <class Function>
Function* SystemFunction(const char* name) {
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("winmm.dll"), name)));
}

MMRESULT WINAPI Advance(HMMIO file, LPMMIOINFO info, UINT flags) {
    return diskIsFull ? MMIOERR_CANNOTWRITE
                      : SystemFunction<decltype(Advance)>("mmioAdvance")(file, info, flags);
}

// Fails at first, the file staying open: there is something in its buffer.
MMRESULT WINAPI Close(HMMIO file, UINT flags) {
    static bool hasFailed = false;
    hasFailed = diskIsFull && !hasFailed;
    return hasFailed ? MMIOERR_CANNOTWRITE : SystemFunction<decltype(Close)>("mmioClose")(file, flags);
}

} // namespace

extern "C" {
extern decltype(Advance)* const advanceImport asm("__imp__mmioAdvance@12");
extern decltype(Close)* const closeImport asm("__imp__mmioClose@8");
decltype(Advance)* const advanceImport = Advance;
decltype(Close)* const closeImport = Close;
}

namespace {

std::string WavePath() {
    return ProgramFolder() + "Temp\\wave.wav";
}

constexpr const char* IDLE = "0:00 min";

bool AwaitIdle(HWND generator) {
    return Await([generator] { return Text(generator, "duration") == IDLE; });
}

// The file as it has to be: 16-bit stereo, the sizes in its header being those of what it holds.
struct Wave {
    explicit Wave(const std::string& path = WavePath()) {
        const std::string bytes = ReadBytes(path);
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
        for (std::size_t at = 44; at + 4 <= bytes.size(); at += 4) {
            const auto left = static_cast<std::int16_t>(Number(bytes, at) & 0xFFFF);
            const auto right = static_cast<std::int16_t>(Number(bytes, at) >> 16);
            differing += left != right;
            samples.push_back(left);
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

    std::vector<std::int16_t> samples; // of the left channel
    int differing = 0;                 // from those of the right one
};

// The application folder without its folder for wave files.
class NoTempFolder {
public:
    NoTempFolder() { REQUIRE(MoveFileA(folder_.c_str(), away_.c_str())); }
    ~NoTempFolder() { MoveFileA(away_.c_str(), folder_.c_str()); }
    NoTempFolder(const NoTempFolder&) = delete;
    NoTempFolder& operator=(const NoTempFolder&) = delete;

private:
    std::string folder_ = ProgramFolder() + "Temp";
    std::string away_ = folder_ + "-" + std::to_string(GetCurrentProcessId());
};

} // namespace

TEST_CASE("keywords are answered, taken and refused") {
    TestPanel panel;
    TraceCapture trace;
    HWND generator = panel.Create("IWAVEGENERATOR", "W");
    const struct {
        const char* keyword;
        std::string initial;
        std::vector<std::pair<const char*, std::string>> taken; // and what is shown then
        std::vector<const char*> refused;
    } rows[] = {
        {"connection", "", {}, {"", "W"}},
        {"filename", ".\\Temp\\wave.wav", {}, {"", ".\\Temp\\wave.wav", "other.wav"}},
        {"format", "44100 Hz,16bit,Stereo", {}, {"", "44100 Hz,16bit,Stereo", "8000 Hz,8bit,Stereo"}},
        {"interval", "1000", {{"250", "250"}}, {"", "-1", "x"}},
        {"layer", "", {{"u2", "u2"}, {"", ""}}, {"u99"}},
        {"signal",
         "1000 Hz,24575",
         {{"440 Hz", "440 Hz,24575"}, {"440 Hz,40000", "440 Hz,32767"}, {"62.5 Hz,-1", "62.5 Hz,0"}},
         {"", "Hz,1", "loud", "nan Hz,1"}},
        {"value", "", {}, {"", "1"}},
    };
    for (const auto& row : rows) {
        CAPTURE(row.keyword);
        const std::string line = row.keyword + std::string("=");
        std::string shown = row.initial;
        CHECK(Text(generator, row.keyword) == shown);
        for (const auto& [value, result] : row.taken) {
            CHECK(Load(generator, line + value) == 1);
            shown = result;
            CHECK(Text(generator, row.keyword) == shown);
        }
        for (const char* value : row.refused) {
            trace.Clear();
            CHECK(Load(generator, line + value) == 0);
            CHECK(trace.Count(TRACE_EDIT, "Error reading line " + line + value) == 1);
            CHECK(Text(generator, row.keyword) == shown);
        }
    }
    trace.Clear();
    CHECK(Load(generator, "nosuch=1") == 0);
    CHECK(trace.Count(TRACE_DEBUG, "WaveGenerator Keyword not found: nosuch\n") == 1);
    CHECK(trace.Count(TRACE_EDIT, "Not implemented nosuch=1") == 1);
    CHECK(SendMessageA(generator, CWM_GETCONTROLTYPE, 0, 0) == 5);
}

TEST_CASE("a tone is written, less the pair that finds the buffer full, and the next one goes on from it") {
    TestPanel panel;
    HWND generator = panel.Create("IWAVEGENERATOR", "W");
    CHECK(Load(generator, "signal=1000.3 Hz,20000") == 1);
    CHECK(Load(generator, "duration=0:02") == 1);
    CHECK(AwaitIdle(generator));
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

TEST_CASE("a frequency that does not fit the file makes a sound file all the same") {
    TestPanel panel;
    HWND generator = panel.Create("IWAVEGENERATOR", "W");
    for (const char* signal : {"3e38 Hz,32767", "-3e38 Hz,32767", "-1000 Hz,32767"}) {
        CAPTURE(signal);
        CHECK(Load(generator, std::string("signal=") + signal) == 1);
        CHECK(Load(generator, "duration=0:01") == 1);
        CHECK(AwaitIdle(generator));
        CHECK(Wave().samples.size() == 44100 - 43);
    }
}

TEST_CASE("the length is shown until the file is complete") {
    TestPanel panel;
    HWND other = panel.Create("IWAVEGENERATOR", "V");
    HWND generator = panel.Create("IWAVEGENERATOR", "W");
    CHECK(Load(other, "duration=150:00") == 1); // the file is busy
    CHECK(Load(generator, "duration=0:75") == 1);
    CHECK(Text(generator, "duration") == "1:00 min");
    int seconds = 0;
    CHECK(Send(generator, COMMAND_GET, DATATYPE_INTEGER, &seconds, "duration") == 1);
    CHECK(seconds == 60);
    CHECK(Load(generator, "duration=x") == 0);
    CHECK(Text(generator, "duration") == "1:00 min");
    DestroyWindow(other);
    CHECK(AwaitIdle(generator));
    CHECK(Wave().samples.size() == 2646000 - 2581);
}

TEST_CASE("a loaded panel writes the file as an empty one") {
    const TestFolder folder;
    const std::string path = folder.Path("wave.panel");
    {
        TestPanel panel;
        panel.Create("IWAVEGENERATOR", "W");
        CHECK(ph_SavePanel(panel.Root(), path.c_str()) == 1);
    }
    CHECK(ReadBytes(path).find("W*duration=0:00 min\r\nW*filename=.\\Temp\\wave.wav\r\n"
                               "W*format=44100 Hz,16bit,Stereo\r\nW*interval=1000\r\n"
                               "W*signal=1000 Hz,24575\r\nW*connection=\r\n") != std::string::npos);
    DeleteFileA(WavePath().c_str());
    TestPanel panel;
    const TraceCapture trace;
    CHECK(ph_LoadPanel(panel.Root(), path.c_str()) == 1);
    CHECK(trace.CountContaining("Error reading line ") == 0); // filename and format are passed over
    for (const char* line : {"filename=x.wav", "format=48000 Hz,16bit,Stereo"}) {
        CHECK(Load(panel.Find("W"), line, LOAD_FROM_FILE) == 0);
        CHECK(Load(panel.Find("W"), line) == 0);
        CHECK(trace.Count(TRACE_EDIT, std::string("Error reading line ") + line) == 1); // when it is typed
    }
    CHECK(Await(Wave::IsEmpty));
    CHECK(Wave().samples.empty());
}

TEST_CASE("a generator that goes cuts its file short and leaves it in order, within a moment") {
    TestPanel panel;
    const int threads = CountResources().threads;
    HWND first = panel.Create("IWAVEGENERATOR", "A");
    HWND second = panel.Create("IWAVEGENERATOR", "B");
    DeleteFileA(WavePath().c_str());
    CHECK(Load(first, "duration=150:00") == 1);
    CHECK(Load(second, "duration=1:00") == 1);
    CHECK(Await([] { return GetFileAttributesA(WavePath().c_str()) != INVALID_FILE_ATTRIBUTES; }));
    Sleep(50);
    CHECK(Text(first, "duration") == "150:00 min");
    const auto destroy = [](HWND generator) {
        const DWORD start = GetTickCount();
        DestroyWindow(generator);
        CHECK(GetTickCount() - start < 500);
    };
    destroy(second); // waits for its turn
    CHECK(CountResources().threads == threads + 1);
    destroy(first);
    CHECK(CountResources().threads == threads);
    const Wave wave;
    CHECK(wave.samples.size() > 1000);
    wave.CheckSine(1000.0, 24575, 0, 150 * 60 * 44100);
}

TEST_CASE("a generator goes while its thread waits for the one of the windows to take a trace line") {
    TestPanel panel;
    HWND generator = panel.Create("IWAVEGENERATOR", "W");
    const NoTempFolder missing; // gives something to trace
    static HANDLE tracing;
    tracing = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    const auto show = [](int, const char*, void* window) {
        SetEvent(tracing);
        Sleep(5);
        SendMessageA(static_cast<HWND>(window), WM_NULL, 0, 0);
    };
    ph_SetTraceSink(show, panel.Window());
    CHECK(Load(generator, "duration=1:00") == 1);
    CHECK(WaitForSingleObject(tracing, 10000) == WAIT_OBJECT_0);
    DestroyWindow(generator);
    ph_SetTraceSink(nullptr, nullptr);
    CloseHandle(tracing);
}

TEST_CASE("generators write one after the other") {
    TestPanel panel;
    struct {
        HWND window;
        double frequency;
    } generators[3] = {{nullptr, 500.0}, {nullptr, 750.0}, {nullptr, 1250.0}};
    for (auto& generator : generators) {
        const std::string frequency = std::to_string(static_cast<int>(generator.frequency));
        generator.window = panel.Create("IWAVEGENERATOR", "W");
        CHECK(Load(generator.window, "signal=" + frequency + " Hz,32767") == 1);
        CHECK(Load(generator.window, "duration=0:03") == 1);
    }
    for (const auto& generator : generators) {
        CHECK(AwaitIdle(generator.window));
    }
    const Wave wave;
    CHECK(wave.samples.size() == 132300 - 129);
    wave.CheckSine(1250.0, 32767, 0, 132300);
}

TEST_CASE("of lengths set in quick succession the last one remains") {
    TestPanel panel;
    const int threads = CountResources().threads;
    HWND generator = panel.Create("IWAVEGENERATOR", "W");
    DeleteFileA(WavePath().c_str());
    CHECK(Load(generator, "duration=5:00") == 1);
    CHECK(Await([] { return GetFileAttributesA(WavePath().c_str()) != INVALID_FILE_ATTRIBUTES; }));
    for (int length = 20; length >= 1; --length) {
        CHECK(Load(generator, "duration=0:" + std::to_string(length)) == 1);
    }
    CHECK(Text(generator, "duration") == "0:01 min");
    CHECK(CountResources().threads == threads + 1);
    CHECK(AwaitIdle(generator));
    CHECK(Wave().samples.size() == 44100 - 43);
    DestroyWindow(generator);
    CHECK(CountResources().threads == threads);
}

TEST_CASE("a drive that stalls holds up no generator's end, and the library stays until it comes back") {
    static HANDLE goesOn;
    goesOn = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    static std::atomic<int> stalled;
    const auto advance = [](HMMIO, LPMMIOINFO, UINT) __attribute__((stdcall))->MMRESULT {
        ++stalled;
        WaitForSingleObject(goesOn, INFINITE);
        return MMIOERR_CANNOTWRITE;
    };
    const auto destroy = [](HWND generator) {
        const DWORD start = GetTickCount();
        DestroyWindow(generator);
        CHECK(GetTickCount() - start < 1000);
    };
    const Resources before = CountResources();
    for (const bool unloads : {false, true}) {
        CAPTURE(unloads);
        TestPanel panel;
        ResetEvent(goesOn);
        stalled = 0;
        const ImportHook hook(CONTROL_LIBRARY, "mmioAdvance", +advance);
        HWND first = panel.Create("IWAVEGENERATOR", "A");
        HWND second = panel.Create("IWAVEGENERATOR", "B");
        CHECK(Load(first, "duration=0:01") == 1);
        CHECK(Await([] { return stalled == 1; }));
        CHECK(Load(second, "duration=0:01") == 1); // waits for its turn
        destroy(second);
        destroy(first);
        CHECK(CountResources().threads == before.threads + 1);
        if (unloads) {
            FreeLibrary(GetModuleHandleA(CONTROL_LIBRARY));
            CHECK(GetModuleHandleA(CONTROL_LIBRARY) != nullptr);
            SetEvent(goesOn);
            CHECK(Await([] { return GetModuleHandleA(CONTROL_LIBRARY) == nullptr; }));
            REQUIRE(LoadLibraryA(CONTROL_LIBRARY) != nullptr);
        } else { // the next one has its turn when the first one's thread has ended by itself
            HWND next = panel.Create("IWAVEGENERATOR", "C");
            CHECK(Load(next, "duration=0:00") == 1);
            CHECK(Text(next, "duration") == IDLE);
            SetEvent(goesOn);
            CHECK(AwaitIdle(next));
            CHECK(Await(Wave::IsEmpty));
        }
        CHECK(stalled == 1);
    }
    CloseHandle(goesOn);
    Resources after{};
    Await([&] {
        after = CountResources();
        after.handles = before.handles; // the compiler's runtime keeps two for each module it was in
        return after == before;
    });
    CHECK(after == before);
}

TEST_CASE("without the folder every step reports that it failed, and no file is written") {
    TestPanel panel;
    HWND generator = panel.Create("IWAVEGENERATOR", "W");
    DeleteFileA(WavePath().c_str());
    {
        const NoTempFolder missing;
        const TraceCapture trace;
        CHECK(Load(generator, "duration=0:01") == 1);
        CHECK(AwaitIdle(generator));
        const struct {
            const char* line;
            int count;
        } rows[] = {{"Error: mmioOpen\n", 1},       {"Error: mmioCreateChunk\n", 2},
                    {"Error: mmioFOURCC\n", 1},     {"Error: mmioWrite\n", 1},
                    {"Error: mmioAscend\n", 2},     {"Error 0009\n", 1},
                    {"Error: mmioGetInfo\n", 1},    {"Error: mmioSetInfo\n", 2},
                    {"Error: mmioAscend ???\n", 1}, {"Error: mmioAdvance\n", 0}};
        for (const auto& row : rows) {
            CAPTURE(row.line);
            CHECK(trace.Count(TRACE_DEBUG, row.line) == row.count);
        }
        CHECK(trace.CountContaining("Error") == 12);
    }
    CHECK(GetFileAttributesA(WavePath().c_str()) == INVALID_FILE_ATTRIBUTES);
    CHECK(Load(generator, "duration=0:01") == 1);
    CHECK(AwaitIdle(generator));
    CHECK(Wave().samples.size() == 44100 - 43);
}

TEST_CASE("a full disk is reported once and keeps no file open") {
    const TestFolder folder;
    const auto write = [&folder](const char* name) {
        CHECK(WaveFileOpen(folder.Path(name).c_str(), 4096, 2, 44100, 16) == 1);
        for (int i = 0; i < 10000; ++i) {
            CHECK(WaveFileWriteSample(1, 1) == 1);
        }
        CHECK(WaveFileClose() == 1);
        CHECK(WaveFileWriteSample(1, 1) == 1); // into nothing
    };
    write("first.wav");
    const Resources before = CountResources();
    for (int i = 0; i < 10; ++i) {
        const TraceCapture trace;
        diskIsFull = true;
        write("full.wav");
        diskIsFull = false;
        CHECK(trace.Count(TRACE_DEBUG, "Error: mmioAdvance\n") == 1);
        CHECK(trace.CountContaining("Error") == 1);
        CHECK(DeleteFileA(folder.Path("full.wav").c_str()));
    }
    CHECK(CountResources().Settled(before) == before);
    write("next.wav");
    CHECK(Wave(folder.Path("next.wav")).samples.size() == 10000 - 9);
}

TEST_CASE("generations leave nothing behind") {
    TestPanel panel;
    const auto live = [&panel] {
        HWND generator = panel.Create("IWAVEGENERATOR", "W");
        CHECK(Load(generator, "duration=0:01") == 1);
        CHECK(AwaitIdle(generator));
        CHECK(Load(generator, "duration=0:00") == 1);
        DestroyWindow(generator);
    };
    live();
    const Resources before = CountResources();
    const int blocks = CountHeapBlocks();
    for (int i = 0; i < 20; ++i) {
        live();
    }
    CHECK(CountResources().Settled(before) == before);
    CHECK(CountHeapBlocks() < blocks + 20);
}
