#include "Panel/operating/Watch.h"

#include "Panel/common/Paths.h"
#include "Panelhost/Trace.h"
#include "base/Handles.h"
#include "logic/text/Arguments.h"

#include <windows.h>

#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace {

constexpr ULONGLONG MINUTE = 60000; // milliseconds
constexpr std::size_t MOST_CRASHES = 3;

std::wstring ProgramFile() {
    std::wstring file(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()));
        if (length < file.size()) {
            file.resize(length);
            return file;
        }
        file.resize(2 * file.size());
    }
}

std::wstring CommandFor(const std::wstring& program, int count, wchar_t** arguments, bool again) {
    std::wstring command = logic::QuotedArgument(program);
    for (int i = 0; i < count; ++i) {
        if (std::wstring_view(arguments[i]) != WATCH_OPTION) { // else it would watch in its turn
            command += L" " + logic::QuotedArgument(arguments[i]);
        }
    }
    return command + (again ? L" " + std::wstring(FOLLOW_OPTION) : L"");
}

// The exit code, or nothing when it could not be started.
std::optional<DWORD> RunOnce(const std::wstring& program, std::wstring command) {
    STARTUPINFOW start{};
    GetStartupInfoW(&start);
    start.lpReserved = nullptr;
    start.cbReserved2 = 0;
    start.lpReserved2 = nullptr;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                        &process)) {
        return std::nullopt;
    }
    const Handle thread(process.hThread);
    const Handle running(process.hProcess);
    AllowSetForegroundWindow(process.dwProcessId);
    DWORD code = 0;
    WaitForSingleObject(running.get(), INFINITE);
    GetExitCodeProcess(running.get(), &code);
    return code;
}

std::string Number(DWORD code) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08lX", code);
    return text;
}

} // namespace

bool IsWatched() {
    return (GetErrorMode() & SEM_NOGPFAULTERRORBOX) != 0;
}

int Watch(const CommandLine& commandLine, int count, wchar_t** arguments, const Reporter& reporter) {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX); // of the other one, too
    const std::wstring program = ProgramFile();
    std::array<ULONGLONG, MOST_CRASHES> crashes{}; // their times, from any one on in turn
    for (std::size_t number = 0;; ++number) {
        const auto code = RunOnce(program, CommandFor(program, count, arguments, number > 0));
        if (!code) {
            reporter.Fail("cannot start the program once more: " + ErrorText(GetLastError()));
            return EXIT_NOT_DONE;
        }
        if (*code == EXIT_DONE || *code == EXIT_NOT_DONE) {
            return static_cast<int>(*code);
        }
        const ULONGLONG now = GetTickCount64();
        crashes[number % MOST_CRASHES] = now;
        if (number + 1 >= MOST_CRASHES && now - crashes[(number + 1) % MOST_CRASHES] < MINUTE) {
            reporter.Fail("the program has crashed three times within a minute and is not started again "
                          "(last exit code " +
                          Number(*code) + ")");
            return EXIT_NOT_DONE;
        }
        if (!commandLine.traceFile.empty() && a_SetTraceFile(commandLine.traceFile.c_str()) != 0) {
            TRACE("Panel has ended with exit code %s and is started again\n", Number(*code).c_str());
            a_SetTraceFile(nullptr); // the other one writes it now
        }
    }
}
