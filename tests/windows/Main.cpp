// Loads the control library, as a host does, and runs the test cases.

#define DOCTEST_CONFIG_IMPLEMENT
#include "tests/windows/TestPanel.h"

#include <cstdio>

int main(int argc, char** argv) {
    if (LoadLibraryA(CONTROL_LIBRARY) == nullptr) {
        std::fprintf(stderr, "%s cannot be loaded: error %lu\n", CONTROL_LIBRARY, GetLastError());
        return 1;
    }
    return doctest::Context(argc, argv).run();
}
