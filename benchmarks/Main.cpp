// bench: the speed and the memory of the controls beside those of plain windows.

#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <windows.h>
#include <commctrl.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>

namespace {

constexpr const char* USAGE = "Usage: bench [--rounds N] [GROUP]\n"
                              "\n"
                              "Measures by turns a figure of ours and its yardstick and prints the medians.\n"
                              "  --rounds N   samples of each (default: between 3 and 15)\n"
                              "  GROUP        one of create, paint, record, memory, file, work, wave, strip, "
                              "network, panel (default: all)\n";

struct Group {
    const char* name;
    void (*measure)(Report&);
};
constexpr Group GROUPS[] = {
    {"create", MeasureCreation}, {"paint", MeasurePainting},  {"record", MeasureRecords},
    {"memory", MeasureMemory},   {"file", MeasurePanelFiles}, {"work", MeasureWork},
    {"wave", MeasureWaveFiles},  {"strip", MeasureStrips},    {"network", MeasureNetwork},
    {"panel", MeasurePanels},
};

int Run(int count, char** arguments) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    RegisterYardsticks();
    if (LoadLibraryA("OSMIRControlLib.dll") == nullptr) {
        std::fprintf(stderr, "bench: OSMIRControlLib.dll cannot be loaded: error %lu\n", GetLastError());
        return EXIT_FAILURE;
    }
    if (count == 5 && std::strcmp(arguments[1], "--memory") == 0) {
        return PrintMemory(arguments[2], std::atoi(arguments[3]), arguments[4]);
    }
    int rounds = 0;
    std::string filter;
    for (int i = 1; i < count; ++i) {
        if (std::strcmp(arguments[i], "--rounds") == 0 && i + 1 < count) {
            rounds = std::atoi(arguments[++i]);
        } else if (arguments[i][0] == '-') {
            std::fputs(USAGE, std::strcmp(arguments[i], "--help") == 0 ? stdout : stderr);
            return std::strcmp(arguments[i], "--help") == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
        } else {
            filter = arguments[i];
        }
    }
    Report report(rounds, filter);
    for (const Group& group : GROUPS) {
        if (report.Wants(group.name)) {
            group.measure(report);
        }
    }
    std::printf("\n%s\n", report.Missed() == 0 ? "All aims met." : "Some aims were missed.");
    return report.HasFailed() ? EXIT_FAILURE : EXIT_SUCCESS;
}

} // namespace

int main(int count, char** arguments) {
    try {
        return Run(count, arguments);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench: %s\n", failure.what());
        return EXIT_FAILURE;
    }
}
