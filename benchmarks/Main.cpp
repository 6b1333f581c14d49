// bench: the speed and the memory of the controls beside those of plain windows.

#include "benchmarks/Load.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <windows.h>
#include <commctrl.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string_view>

namespace {

constexpr const char* USAGE =
    "Usage: bench [--quick] [--busy] [--rounds N] [--only NAME] [--json FILE] [GROUP]\n"
    "\n"
    "Measures by turns a figure of ours and its yardstick and prints the medians.\n"
    "  --quick      the same figures in a fifth of the time, less exact\n"
    "  --busy       with a program beside it for each processor that keeps it busy\n"
    "  --rounds N   samples of each (default: between 3 and 125)\n"
    "  --only NAME  of the figures that are taken of each class only those of the control of that name\n"
    "  --json FILE  writes the results there as well (tools/compare-benchmarks compares two of them)\n"
    "  GROUP        one of create, paint, record, memory, file, work, wave, sound, strip, network, panel, "
    "content, device, view, edit, bindings (default: all)\n";

struct Group {
    const char* name;
    void (*measure)(Report&);
};
constexpr Group GROUPS[] = {
    {"create", MeasureCreation},   {"paint", MeasurePainting},  {"record", MeasureRecords},
    {"memory", MeasureMemory},     {"file", MeasurePanelFiles}, {"work", MeasureWork},
    {"wave", MeasureWaveFiles},    {"sound", MeasureSound},     {"strip", MeasureStrips},
    {"network", MeasureNetwork},   {"panel", MeasurePanels},    {"content", MeasureContent},
    {"device", MeasureDevices},    {"view", MeasureViews},      {"edit", MeasureEditing},
    {"bindings", MeasureBindings},
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
    if (count == 3 && std::strcmp(arguments[1], "--calculate-beside") == 0) {
        return Load::Calculate(std::strtoul(arguments[2], nullptr, 10));
    }
    RunSettings settings;
    for (int i = 1; i < count; ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--rounds" && i + 1 < count) {
            settings.rounds = std::atoi(arguments[++i]);
        } else if (argument == "--only" && i + 1 < count) {
            settings.subject = arguments[++i];
        } else if (argument == "--json" && i + 1 < count) {
            settings.jsonFile = arguments[++i];
        } else if (argument == "--quick") {
            settings.isQuick = true;
        } else if (argument == "--busy") {
            settings.isBusy = true;
        } else if (argument.starts_with('-')) {
            const bool isHelp = argument == "--help";
            std::fputs(USAGE, isHelp ? stdout : stderr);
            return isHelp ? EXIT_SUCCESS : EXIT_FAILURE;
        } else {
            settings.group = argument;
        }
    }
    Load load;
    if (settings.isBusy && !load.Start()) {
        std::fputs("bench: the processors cannot be kept busy\n", stderr);
        return EXIT_FAILURE;
    }
    Report report(settings);
    for (const Group& group : GROUPS) {
        if (report.Wants(group.name)) {
            group.measure(report);
        }
    }
    if (!report.Finish()) {
        std::fprintf(stderr, "bench: %s cannot be written\n", settings.jsonFile.c_str());
        return EXIT_FAILURE;
    }
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
