#include "Panel/start/DemoPanels.h"

#include "Panel/common/Paths.h"
#include "base/FileNames.h"

namespace {

struct Row {
    const char* file; // without extension
    const wchar_t* name;
    const wchar_t* note;
};
constexpr Row DEMOS[] = {
    {"Mixer", L"Mixer", L"Strips, equaliser and crossover"},
    {"Processor", L"Processor", L"Curves that are dragged, a matrix"},
    {"Console", L"Console", L"A mixing console on the network"},
    {"Stage", L"Stage", L"Scenes, a curtain, warnings"},
    {"Strips", L"Strips", L"Crossover, automatic mixer, monitors"},
    {"Levels", L"Levels", L"Bars, meters, faders with scales"},
    {"Layers", L"Layers", L"Pages switched by buttons"},
    {"Buttons", L"Buttons", L"Push buttons, switches, rockers"},
    {"Interfaces", L"Interfaces", L"Terminal, MIDI, telephone, waves"},
    {"Demo", L"Controls", L"Knobs, groups, conditions"},
};

} // namespace

std::vector<DemoPanel> DemoPanels() {
    const std::string folder = ModuleFolder(nullptr);
    std::vector<DemoPanel> demos;
    for (const Row& row : DEMOS) {
        const std::string file = folder + row.file + ".panel";
        if (FileExists(file)) {
            demos.push_back({file, row.name, row.note, folder + "Start\\" + row.file + ".png"});
        }
    }
    return demos;
}
