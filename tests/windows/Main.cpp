// Loads the control library, as a host does, and runs the test cases.

#include "tests/windows/TerminalClient.h"

#define DOCTEST_CONFIG_IMPLEMENT
#include "tests/windows/TestPanel.h"

#include <cstdio>
#include <cstring>

int main(int argc, char** argv) {
    if (argc > 1 && std::strcmp(argv[1], TERMINAL_CLIENT_SWITCH) == 0) {
        return RunTerminalClient(argc - 2, argv + 2);
    }
    if (LoadLibraryA(CONTROL_LIBRARY) == nullptr) {
        std::fprintf(stderr, "%s cannot be loaded: error %lu\n", CONTROL_LIBRARY, GetLastError());
        return 1;
    }
    return doctest::Context(argc, argv).run();
}
