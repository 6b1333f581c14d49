// Plays and records for so many seconds on a double of winmm.dll and writes the processor time that it took
// into Temp\sound-load.txt: by the controls, or by doing no more with the bytes than they must.
//
//     sound_load.exe controls|bytes SECONDS

#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/HostInterface.h"
#include "Panelhost/Messages.h"
#include "logic/sound/WaveFile.h"
#include "tests/doubles/winmm/SoundDouble.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <mmsystem.h>

namespace {

constexpr const char* PLAYED = "Temp\\sound-load.wav";
constexpr const char* RECORDED = "Temp\\sound-load2.wav";
constexpr std::size_t BLOCK = 2205 * 4; // a twentieth of a second
constexpr std::size_t BLOCKS = 4;

std::string FullPath(const char* name) {
    char path[MAX_PATH];
    a_MakeFullPathName(name, path);
    return path;
}

double ProcessorTime() {
    FILETIME ignored;
    FILETIME kernel;
    FILETIME user;
    GetProcessTimes(GetCurrentProcess(), &ignored, &ignored, &kernel, &user);
    const auto seconds = [](const FILETIME& time) {
        return (static_cast<double>(time.dwHighDateTime) * 4294967296.0 + time.dwLowDateTime) * 1e-7;
    };
    return seconds(kernel) + seconds(user);
}

void WriteTone(int seconds) {
    const std::uint32_t size = 44100 * 4 * static_cast<std::uint32_t>(seconds + 2);
    const auto header = logic::WaveHeader({}, size);
    std::string bytes(header.begin(), header.end());
    for (std::uint32_t i = 0; i < size; ++i) {
        bytes += static_cast<char>(i * 31);
    }
    std::FILE* file = std::fopen(FullPath(PLAYED).c_str(), "wb");
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    std::fclose(file);
}

void Wait(int seconds) {
    const DWORD start = GetTickCount();
    while (GetTickCount() - start < static_cast<DWORD>(seconds) * 1000) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 100, QS_ALLINPUT);
        for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) {
            DispatchMessageA(&message);
        }
    }
}

double ByControls(int seconds) {
    LoadLibraryA("OSMIRControlLib.dll");
    const HWND window =
        CreateWindowExA(0, "STATIC", "", WS_OVERLAPPED, 0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr);
    HOSTINFO* root = ph_CreateRoot(window, "Load");
    const auto make = [&](const char* className, std::initializer_list<const char*> lines) {
        const HWND control =
            CreateWindowExA(0, className, className, WS_CHILD, 0, 0, 10, 10, window, nullptr, nullptr, root);
        for (const char* line : lines) {
            SendMessageA(control, CWM_LOAD, LOAD_FROM_DIALOG, reinterpret_cast<LPARAM>(line));
        }
        return control;
    };
    const HWND input = make("IWAVEIN", {"file=Temp\\sound-load2.wav", "run=1", "record=1"});
    const double start = ProcessorTime();
    make("IWAVEOUT", {"files=Temp\\sound-load.wav", "value=1"});
    Wait(seconds);
    const double taken = ProcessorTime() - start;
    SendMessageA(input, CWM_LOAD, LOAD_FROM_DIALOG, reinterpret_cast<LPARAM>("run=0"));
    Wait(1);
    ph_DestroyRoot(root);
    DestroyWindow(window);
    return taken;
}

// As a thread of its own for each direction does it.
struct Block {
    WAVEHDR header{};
    std::vector<char> bytes = std::vector<char>(BLOCK);
};

template <class Pass, class Use>
void Turn(std::vector<Block>& blocks, HANDLE event, const volatile bool& stops, Use use, Pass pass) {
    while (!stops) {
        WaitForSingleObject(event, 200);
        for (Block& block : blocks) {
            if ((block.header.dwFlags & WHDR_DONE) != 0) {
                use(block);
                block.header.dwFlags &= ~static_cast<DWORD>(WHDR_DONE);
                pass(&block.header);
            }
        }
    }
}

volatile bool stops = false;

DWORD WINAPI PlayBytes(void* format) {
    const HANDLE event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    std::FILE* file = std::fopen(FullPath(PLAYED).c_str(), "rb");
    HWAVEOUT handle = nullptr;
    waveOutOpen(&handle, WAVE_MAPPER, static_cast<WAVEFORMATEX*>(format), reinterpret_cast<DWORD_PTR>(event),
                0, CALLBACK_EVENT);
    std::vector<Block> blocks(BLOCKS);
    const auto pass = [handle](WAVEHDR* header) { waveOutWrite(handle, header, sizeof *header); };
    for (Block& block : blocks) {
        block.header.lpData = block.bytes.data();
        block.header.dwBufferLength = BLOCK;
        waveOutPrepareHeader(handle, &block.header, sizeof block.header);
        pass(&block.header);
    }
    Turn(
        blocks, event, stops, [file](Block& block) { std::fread(block.bytes.data(), 1, BLOCK, file); }, pass);
    waveOutReset(handle);
    waveOutClose(handle);
    std::fclose(file);
    CloseHandle(event);
    return 0;
}

DWORD WINAPI RecordBytes(void* format) {
    const HANDLE event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    std::FILE* file = std::fopen(FullPath(RECORDED).c_str(), "wb");
    HWAVEIN handle = nullptr;
    waveInOpen(&handle, WAVE_MAPPER, static_cast<WAVEFORMATEX*>(format), reinterpret_cast<DWORD_PTR>(event),
               0, CALLBACK_EVENT);
    std::vector<Block> blocks(BLOCKS);
    const auto pass = [handle](WAVEHDR* header) { waveInAddBuffer(handle, header, sizeof *header); };
    for (Block& block : blocks) {
        block.header.lpData = block.bytes.data();
        block.header.dwBufferLength = BLOCK;
        waveInPrepareHeader(handle, &block.header, sizeof block.header);
        pass(&block.header);
    }
    waveInStart(handle);
    Turn(
        blocks, event, stops, [file](Block& block) { std::fwrite(block.bytes.data(), 1, BLOCK, file); },
        pass);
    waveInReset(handle);
    waveInClose(handle);
    std::fclose(file);
    CloseHandle(event);
    return 0;
}

double ByBytes(int seconds) {
    WAVEFORMATEX format{WAVE_FORMAT_PCM, 2, 44100, 44100 * 4, 4, 16, 0};
    const double start = ProcessorTime();
    const HANDLE threads[] = {CreateThread(nullptr, 0, PlayBytes, &format, 0, nullptr),
                              CreateThread(nullptr, 0, RecordBytes, &format, 0, nullptr)};
    Wait(seconds);
    const double taken = ProcessorTime() - start;
    stops = true;
    WaitForMultipleObjects(2, threads, TRUE, 5000);
    for (const HANDLE thread : threads) {
        CloseHandle(thread);
    }
    return taken;
}

// What the double does not replace it passes on to winmm_real.dll.
void CopyReplacedLibrary() {
    char system[MAX_PATH];
    char own[MAX_PATH];
    GetSystemDirectoryA(system, sizeof system);
    GetModuleFileNameA(nullptr, own, sizeof own);
    const std::string program = own;
    CopyFileA((std::string(system) + "\\winmm.dll").c_str(),
              (program.substr(0, program.rfind('\\')) + "\\winmm_real.dll").c_str(), FALSE);
}

} // namespace

int main(int count, char** arguments) {
    CopyReplacedLibrary();
    auto* const get = reinterpret_cast<decltype(GetSoundDouble)*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("winmm.dll"), "GetSoundDouble")));
    if (count != 3 || get == nullptr) {
        std::fputs("sound_load: it needs the double of winmm.dll, a mode and seconds\n", stderr);
        return EXIT_FAILURE;
    }
    const int seconds = std::atoi(arguments[2]);
    get()->Reset({"Line"}, {"Line"}, 1);
    WriteTone(seconds);
    DeleteFileA(FullPath(RECORDED).c_str());
    const double taken = std::strcmp(arguments[1], "controls") == 0 ? ByControls(seconds) : ByBytes(seconds);
    const bool isRecorded = GetFileAttributesA(FullPath(RECORDED).c_str()) != INVALID_FILE_ATTRIBUTES;
    DeleteFileA(FullPath(PLAYED).c_str());
    DeleteFileA(FullPath(RECORDED).c_str());
    if (!isRecorded) {
        return EXIT_FAILURE;
    }
    std::FILE* file = std::fopen(FullPath("Temp\\sound-load.txt").c_str(), "w");
    std::fprintf(file, "%f\n", taken);
    std::fclose(file);
    return EXIT_SUCCESS;
}
