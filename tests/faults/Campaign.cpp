// Runs the topics of the fault campaign and reports what goes wrong with all that is needed to repeat it.

#include "tests/faults/Campaign.h"

#include "tests/windows/FreedMemory.h"
#include "tests/windows/Resources.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <sstream>
#include <string_view>

std::string smallVolume;

namespace {

constexpr const char* USAGE =
    "Usage: faults [--seed NUMBER] [--seconds NUMBER | --minutes NUMBER] [--topic NAME [--round NUMBER]]\n"
    "              [--small-volume FOLDER] [--trap-freed-memory]\n";
constexpr const Topic* TOPICS[] = {&recordsTopic, &destructionTopic, &savingTopic,  &filesTopic,
                                   &memoryTopic,  &diskTopic,        &terminalTopic};
constexpr int WARM_UP = 4;                // rounds in which the system may make things that it keeps
constexpr int MOST_FAILURES = 20;         // of a topic, before it is given up
constexpr DWORD LONGEST_STEP = 60 * 1000; // milliseconds; what takes longer hangs

struct Options {
    unsigned seed = static_cast<unsigned>(std::time(nullptr));
    double seconds = 25;
    std::string_view topic;
    int round = -1;
    bool trapsFreedMemory = false;
} options;

const char* topicName = "";
int roundNumber = 0;
int failures = 0; // of the topic
int failuresInAll = 0;
char step[600] = "start";
std::atomic<DWORD> stepStart;

LONG CALLBACK ReportCrash(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    Expect(false, "crash: exception %08lx at %s", record.ExceptionCode, PlaceOf(record.ExceptionAddress));
    TerminateProcess(GetCurrentProcess(), 3);
    return EXCEPTION_EXECUTE_HANDLER;
}

void ReportAbort(int) {
    Expect(false, "the process was aborted");
    TerminateProcess(GetCurrentProcess(), 3);
}

DWORD WINAPI WatchForHang(void*) {
    for (;; Sleep(500)) {
        if (static_cast<int>(GetTickCount() - stepStart) > static_cast<int>(LONGEST_STEP)) {
            Expect(false, "hang");
            TerminateProcess(GetCurrentProcess(), 4);
        }
    }
}

// Nobody sits in front of the screen: questions are declined, menus left.
void CALLBACK Decline(HWND, UINT, UINT_PTR, DWORD) {
    GUITHREADINFO state{};
    state.cbSize = sizeof state;
    if (GetGUIThreadInfo(GetCurrentThreadId(), &state) && (state.flags & GUI_INMENUMODE) != 0) {
        EndMenu();
    }
    EnumThreadWindows(
        GetCurrentThreadId(), [](HWND window, LPARAM) __attribute__((stdcall))->BOOL {
            char name[16];
            GetClassNameA(window, name, sizeof name);
            const HWND owner = GetWindow(window, GW_OWNER);
            const bool isModal = owner == nullptr || !IsWindowEnabled(owner);
            if (std::string_view(name) == "#32770" && IsWindowVisible(window) && isModal) {
                PostMessageA(window, WM_COMMAND, GetDlgItem(window, IDNO) != nullptr ? IDNO : IDCANCEL, 0);
            }
            return TRUE;
        },
        0);
}

// What the project counts itself is back after each round; of what the system counts, and makes for itself
// now and then, less than one a round may be left.
class Ledger {
public:
    void Close(int rounds) {
        Count(rounds);
        // Threads of the system, and some of ours, end late on a busy machine.
        for (int i = 0; i < 300 && rounds > WARM_UP && !isFlat_; ++i) {
            Sleep(100);
            PumpAll();
            Count(rounds);
        }
        if (rounds > WARM_UP) {
            std::ostringstream text;
            text << now_ << " blocks " << blocks_ << ", at first: " << start_ << " blocks " << startBlocks_;
            Expect(isFlat_, "something is left: %s", text.str().c_str());
        }
        if (rounds == WARM_UP || !isFlat_) {
            start_ = now_;
            startBlocks_ = blocks_;
        }
    }

private:
    void Count(int rounds) {
        now_ = CountResources();
        blocks_ = CountHeapBlocks();
        const int slack = 120 + (rounds - WARM_UP) / 3;
        Resources most = start_;
        most.windows += 2;
        most.threads += 2;
        most.gdi += slack;
        most.handles += slack;
        isFlat_ = now_.IsAtMost(most) && blocks_ <= startBlocks_ + 40 * slack;
    }

    bool isFlat_ = true;
    Resources now_{};
    int blocks_ = 0;
    Resources start_{};
    int startBlocks_ = 0;
};

// The system keeps device contexts of windows for later, more and more of them up to a limit: here it comes
// to that limit at once.
void FillContextCache() {
    const TestPanel panel(TestPanel::Visible);
    std::vector<HDC> contexts;
    for (int i = 0; i < 100; ++i) {
        contexts.push_back(GetDC(panel.Window()));
    }
    for (HDC context : contexts) {
        ReleaseDC(panel.Window(), context);
    }
}

void RunRound(const Topic& topic, int round) {
    roundNumber = round;
    std::uint32_t seed = options.seed;
    for (const char* letter = topic.name; *letter != '\0'; ++letter) {
        seed = seed * 31 + static_cast<unsigned char>(*letter);
    }
    Random random(seed * 7919 + static_cast<unsigned>(round));
    topic.round(random, round);
    Doing("the end of the round");
    PumpAll();
}

void RunTopic(const Topic& topic, double seconds) {
    topicName = topic.name;
    failures = 0;
    Ledger ledger;
    int rounds = 0;
    const ULONGLONG start = GetTickCount64();
    if (options.round >= 0) {
        RunRound(topic, options.round);
        return;
    }
    do {
        RunRound(topic, rounds);
        ledger.Close(++rounds);
    } while ((GetTickCount64() - start < seconds * 1000 || rounds <= WARM_UP) && failures < MOST_FAILURES);
    std::printf("faults: %s: %d rounds in %.1f s, %d failures\n", topic.name, rounds,
                static_cast<double>(GetTickCount64() - start) / 1000, failures);
    std::fflush(stdout);
}

bool ReadOptions(int count, char** arguments) {
    for (int i = 1; i < count; i += 2) {
        const std::string_view name = arguments[i];
        const char* value = i + 1 < count ? arguments[i + 1] : "";
        if (name == "--trap-freed-memory") {
            options.trapsFreedMemory = true;
            --i;
        } else if (i + 1 == count) {
            return false;
        } else if (name == "--seed") {
            options.seed = std::strtoul(value, nullptr, 10);
        } else if (name == "--seconds" || name == "--minutes") {
            options.seconds = std::atof(value) * (name == "--minutes" ? 60 : 1);
        } else if (name == "--topic") {
            options.topic = value;
        } else if (name == "--round") {
            options.round = std::atoi(value);
        } else if (name == "--small-volume") {
            smallVolume = value;
        } else {
            return false;
        }
    }
    return true;
}

} // namespace

void Doing(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(step, sizeof step, format, arguments);
    va_end(arguments);
    stepStart = GetTickCount();
    if (options.round >= 0) { // a repetition shows how it came to the fault
        std::printf("  %s\n", step);
        std::fflush(stdout);
    }
}

void Expect(bool holds, const char* format, ...) {
    if (holds) {
        return;
    }
    char text[2000];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    std::printf("faults: %s\n  while: %s\n  repeat: faults --seed %u --topic %s --round %d\n", text, step,
                options.seed, topicName, roundNumber);
    std::fflush(stdout);
    ++failures;
    ++failuresInAll;
}

std::string Shown(const std::string& text, std::size_t limit) {
    std::string shown = text.substr(0, limit);
    std::replace_if(
        shown.begin(), shown.end(), [](unsigned char c) { return c < 32 || c > 126; }, '.');
    return text.size() > limit ? shown + "... (" + std::to_string(text.size()) + " bytes)" : shown;
}

int main(int argc, char** argv) {
    if (!ReadOptions(argc, argv)) {
        std::fputs(USAGE, stderr);
        return 2;
    }
    SetUnhandledExceptionFilter(ReportCrash);
    std::signal(SIGABRT, ReportAbort);
    if (options.trapsFreedMemory && !TrapFreedMemory()) {
        std::fputs("freed memory cannot be trapped on this system\n", stderr);
        return 1;
    }
    if (LoadLibraryA(CONTROL_LIBRARY) == nullptr) {
        std::fprintf(stderr, "%s cannot be loaded: error %lu\n", CONTROL_LIBRARY, GetLastError());
        return 1;
    }
    std::printf("faults: seed %u, %s\n", options.seed,
                smallVolume.empty() ? "no small volume given: disks are full in the program's eyes only"
                                    : smallVolume.c_str());
    stepStart = GetTickCount();
    CloseHandle(CreateThread(nullptr, 0, WatchForHang, nullptr, 0, nullptr));
    SetTimer(nullptr, 0, 20, Decline);
    FillContextCache();
    std::vector<const Topic*> chosen;
    std::copy_if(std::begin(TOPICS), std::end(TOPICS), std::back_inserter(chosen),
                 [](const Topic* topic) { return options.topic.empty() || options.topic == topic->name; });
    for (const Topic* topic : chosen) {
        RunTopic(*topic, options.seconds / static_cast<double>(chosen.size()));
    }
    std::printf("faults: %d failures\n", failuresInAll);
    return chosen.empty() || failuresInAll > 0 ? 1 : 0;
}
