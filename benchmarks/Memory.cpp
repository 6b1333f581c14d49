// What a control holds beyond its window. Each count is taken in a process of its own: memory that was used
// and freed before would hide what is taken.

#include "Panelhost/Messages.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <psapi.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>

namespace {

constexpr int COUNT = 1000;
constexpr int COUNT_WHEN_QUICK = 500; // fewer, and the pages that the heaps grow by would show

constexpr const char* UNRELIABLE = "the system's counts do not follow what is taken";

struct Memory {
    double privateBytes;
    double heapBytes;
};

// Wine leaves PrivateUsage at 0 and reports the anonymous pages in use as page file usage.
double PrivateBytes() {
    PROCESS_MEMORY_COUNTERS_EX counters{};
    counters.cb = sizeof counters;
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                         sizeof counters);
    return static_cast<double>(counters.PrivateUsage != 0 ? counters.PrivateUsage : counters.PagefileUsage);
}

// Blocks in use on all heaps, with the heap's own bytes for each.
double HeapBytes() {
    HANDLE heaps[64];
    const DWORD count = GetProcessHeaps(64, heaps);
    double bytes = 0;
    for (DWORD i = 0; i < count && i < 64; ++i) {
        PROCESS_HEAP_ENTRY entry{};
        HeapLock(heaps[i]);
        while (HeapWalk(heaps[i], &entry)) {
            bytes += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? entry.cbData + entry.cbOverhead : 0;
        }
        HeapUnlock(heaps[i]);
    }
    return bytes;
}

Memory Held() {
    return {PrivateBytes(), HeapBytes()};
}

// Whether both counts follow what is really taken.
bool CountsReact() {
    constexpr int BLOCKS = 1000;
    constexpr std::size_t SIZE = 4000;
    constexpr double TAKEN = BLOCKS * static_cast<double>(SIZE);
    const auto follows = [](double change) { return change > TAKEN * 0.9 && change < TAKEN * 1.2; };
    const Memory before = Held();
    std::vector<void*> blocks;
    for (int i = 0; i < BLOCKS; ++i) {
        blocks.push_back(std::memset(std::malloc(SIZE), 1, SIZE));
    }
    const Memory after = Held();
    // They stay: what is freed would be used again by the windows.
    return follows(after.privateBytes - before.privateBytes) && follows(after.heapBytes - before.heapBytes);
}

class Pipe {
public:
    Pipe() {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        CreatePipe(&read, &write, &inherited, 0);
        SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);
    }
    ~Pipe() {
        CloseHandle(read);
        CloseWriting();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    void CloseWriting() {
        if (write != nullptr) {
            CloseHandle(write);
            write = nullptr;
        }
    }

    HANDLE read = nullptr;
    HANDLE write = nullptr;
};

// What this program prints when it is started with those arguments.
std::string OutputOfSelf(const std::string& arguments) {
    char program[MAX_PATH];
    GetModuleFileNameA(nullptr, program, MAX_PATH);
    std::string commandLine = "\"" + std::string(program) + "\" " + arguments;
    Pipe pipe;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = pipe.write;
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &process)) {
        return {};
    }
    CloseHandle(process.hThread);
    pipe.CloseWriting();
    std::string output;
    char block[256];
    DWORD length = 0;
    while (ReadFile(pipe.read, block, sizeof block, &length, nullptr) && length > 0) {
        output.append(block, length);
    }
    CloseHandle(process.hProcess);
    return output;
}

// Bytes for one window of that class that has loaded the line.
std::optional<Memory> MemoryOf(const std::string& className, const std::string& line, int count) {
    const std::string output =
        OutputOfSelf("--memory " + className + " " + std::to_string(count) + " \"" + line + "\"");
    Memory held{};
    if (std::sscanf(output.c_str(), "%lf %lf", &held.privateBytes, &held.heapBytes) != 2) {
        return std::nullopt;
    }
    return Memory{held.privateBytes / count, held.heapBytes / count};
}

void MeasureControl(Report& report, const std::vector<Memory>& bare, int count, const char* className,
                    const std::string& name, const std::string& line, int windows) {
    if (bare.empty()) {
        report.Fail("memory of a " + name, UNRELIABLE);
        return;
    }
    Samples beyondWindow;
    Samples onHeap;
    for (const Memory& plain : bare) {
        const auto control = MemoryOf(className, line, count / windows);
        if (!control) {
            report.Fail("memory of a " + name, UNRELIABLE);
            return;
        }
        beyondWindow.push_back(control->privateBytes - windows * plain.privateBytes);
        onHeap.push_back(control->heapBytes - windows * plain.heapBytes);
    }
    report.Add("memory of a " + name + " beyond its window", beyondWindow, "", {}, Unit::Bytes,
               windows == 1 ? Below(4096) : NO_AIM); // lists and fields hold what the system gives them
    report.Add("memory of a " + name + ", on the heap", onHeap, "", {}, Unit::Bytes, NO_AIM);
}

} // namespace

int PrintMemory(const char* className, int count, const char* line) {
    const BenchPanel panel(false);
    const auto add = [&](int number) {
        for (const HWND window : panel.AddMany(className, number)) {
            if (*line != '\0') {
                SendMessageA(window, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>(line));
            }
        }
    };
    add(100); // what all share is there already
    if (!CountsReact()) {
        return EXIT_FAILURE;
    }
    const Memory before = Held();
    add(count);
    const Memory after = Held();
    std::printf("%.0f %.0f\n", after.privateBytes - before.privateBytes, after.heapBytes - before.heapBytes);
    std::fflush(stdout);
    TerminateProcess(GetCurrentProcess(), EXIT_SUCCESS); // destroying them would only take time
    return EXIT_SUCCESS;
}

void MeasureMemory(Report& report) {
    const int count = report.IsQuick() ? COUNT_WHEN_QUICK : COUNT;
    const auto bareOnes = [&](const char* className) {
        std::vector<Memory> bare;
        for (int round = 0; round < report.Rounds(1); ++round) {
            if (const auto plain = MemoryOf(className, "", count)) {
                bare.push_back(*plain);
            }
        }
        return bare;
    };
    const std::vector<Memory> bare = bareOnes(BARE_CLASS);
    for (const auto& [className, name, bindings, windows, systemClass, isStrip, size] : Subjects()) {
        if (!report.WantsSubject(name)) {
            continue;
        }
        // Of one that stands on a control of the system, what it holds beyond that.
        const std::vector<Memory> plain = systemClass != nullptr ? bareOnes(systemClass) : bare;
        MeasureControl(report, plain, count, className, name, "", windows);
        if (!bindings.empty()) {
            MeasureControl(report, plain, count, className, "bound " + name, bindings, windows);
        }
    }
}
