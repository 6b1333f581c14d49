#include "benchmarks/Load.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <thread>

bool Load::Start() {
    SYSTEM_INFO system;
    GetSystemInfo(&system);
    char program[MAX_PATH];
    GetModuleFileNameA(nullptr, program, MAX_PATH);
    for (DWORD i = 0; i < system.dwNumberOfProcessors; ++i) {
        std::string line =
            "\"" + std::string(program) + "\" --calculate-beside " + std::to_string(GetCurrentProcessId());
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process{};
        if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                            &process)) {
            return false;
        }
        CloseHandle(process.hThread);
        programs_.push_back(process.hProcess);
    }
    return true;
}

Load::~Load() {
    for (const HANDLE program : programs_) {
        TerminateProcess(program, EXIT_SUCCESS);
        WaitForSingleObject(program, INFINITE);
        CloseHandle(program);
    }
}

int Load::Calculate(DWORD processId) {
    const HANDLE measuring = OpenProcess(SYNCHRONIZE, FALSE, processId);
    if (measuring == nullptr) {
        return EXIT_FAILURE;
    }
    std::thread([] {
        for (volatile std::uint32_t number = 1;;) {
            number = number * 1664525 + 1013904223;
        }
    }).detach();
    WaitForSingleObject(measuring, INFINITE);
    ExitProcess(EXIT_SUCCESS); // with the thread in the middle of its calculation
}
