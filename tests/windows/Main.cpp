// Loads the control library, as a host does, and runs the test cases.

#include "tests/windows/FreedMemory.h"

#define DOCTEST_CONFIG_IMPLEMENT
#include "tests/windows/TestPanel.h"
#include <doctest/doctest.h> // makes the implementation, which headers that are precompiled have not

#include <cstdio>
#include <cstring>

namespace {

// A double of a system library stands beside the program. What it does not replace it passes on to
// NAME_real.dll.
void CopyReplacedLibraries() {
    char system[MAX_PATH];
    GetSystemDirectoryA(system, sizeof system);
    WIN32_FIND_DATAA entry;
    HANDLE search = FindFirstFileA((ProgramFolder() + "*.dll").c_str(), &entry);
    for (BOOL found = search != INVALID_HANDLE_VALUE; found; found = FindNextFileA(search, &entry)) {
        const std::string name = entry.cFileName;
        const std::string copy = ProgramFolder() + name.substr(0, name.rfind('.')) + "_real.dll";
        CopyFileA((std::string(system) + "\\" + name).c_str(), copy.c_str(), FALSE);
    }
    FindClose(search);
}

// Without it a crash inside a window procedure can end the process with exit code 0 under Wine.
LONG CALLBACK FailAtCrash(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    std::printf("the program crashed: exception %08lx at %s\n", record.ExceptionCode,
                PlaceOf(record.ExceptionAddress));
    std::fflush(stdout);
    TerminateProcess(GetCurrentProcess(), 3);
    return EXCEPTION_EXECUTE_HANDLER;
}

// Wine goes on after an exception in a procedure that it called back, so a crash is seen when it happens: at
// an instruction of one of our programs and libraries.
LONG CALLBACK FailAtOwnCrash(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    const char* place = PlaceOf(record.ExceptionAddress);
    if (record.ExceptionCode == EXCEPTION_ACCESS_VIOLATION && *place != '\0' &&
        std::strstr(place, "\\system32\\") == nullptr) {
        return FailAtCrash(exception);
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

} // namespace

int main(int argc, char** argv) {
    SetUnhandledExceptionFilter(FailAtCrash);
    AddVectoredExceptionHandler(1, FailAtOwnCrash);
    CopyReplacedLibraries();
    if (argc > 1 && std::strcmp(argv[1], TRAP_SWITCH) == 0 && !TrapFreedMemory()) {
        std::fputs("freed memory cannot be trapped on this system\n", stderr);
        return 1;
    }
    if (LoadLibraryA(CONTROL_LIBRARY) == nullptr) {
        std::fprintf(stderr, "%s cannot be loaded: error %lu\n", CONTROL_LIBRARY, GetLastError());
        return 1;
    }
    return doctest::Context(argc, argv).run();
}
