// Damaged files: panels, devices, pictures and crossover configurations.

#include "tests/faults/Scenery.h"

#include <algorithm>

namespace {

// One to eight damages: bytes changed, cut out, repeated or put in, or the end missing.
std::string Damaged(Random& random, std::string bytes) {
    for (int i = 1 + random.Below(8); i > 0 && !bytes.empty(); --i) {
        const auto place = static_cast<std::size_t>(random.Below(static_cast<int>(bytes.size())));
        const auto count = static_cast<std::size_t>(1 + random.Below(200));
        // A number in a header, or a letter that splits lines otherwise.
        constexpr char BYTES[] = {'\0', '\xFF', '\x7F', '*', '=', '"', ';', '\n', ','};
        const std::string put[] = {"", bytes.substr(bytes.size() - std::min(count, bytes.size())),
                                   std::string(random.OneIn(2) ? 5000 : count, 'y')};
        if (random.OneIn(24)) {
            bytes.resize(place);
        } else if (random.OneIn(3)) {
            bytes.replace(place, random.OneIn(2) ? count : 0, random.Pick(put));
        } else {
            bytes[random.OneIn(2) ? place % 64 % bytes.size() : place] =
                random.OneIn(2) ? random.Byte() : random.Pick(BYTES);
        }
    }
    return bytes;
}

void Round(Random& random, int) {
    constexpr const char* PANELS[] = {"Demo", "Buttons", "Mixer", "Interfaces"};
    constexpr const char* PICTURES[] = {"KNOB_blue.bmp", "METER_8x100.bmp", "Panel_dark.png",
                                        "Telephone.ico"};
    constexpr const char* SHOWN_IN[] = {"KNOB", "FADER", "METER", "BBUTTON", "SWITCH", "LED", "CLOCK"};
    const TestFolder folder;
    const TestPanel panel;
    switch (random.Below(3)) {
    case 0: {
        const std::string name = random.Pick(PANELS);
        const auto damage = [&](const std::string& file) {
            return folder.Write(file, Damaged(random, ReadBytes(ProgramFolder() + file)));
        };
        if (name != "Interfaces") {
            Doing("load damaged %s.devices", name.c_str());
            ph_LoadDevices(panel.Root(), damage(name + ".devices").c_str());
        }
        Doing("load damaged %s.panel", name.c_str());
        ph_LoadPanel(panel.Root(), damage(name + ".panel").c_str());
        Doing("use what was loaded");
        ph_Tick(panel.Root());
        ph_SavePanel(panel.Root(), folder.Path("saved.panel").c_str());
        break;
    }
    case 1: {
        const char* picture = random.Pick(PICTURES);
        const char* className = random.Pick(SHOWN_IN);
        Doing("show damaged %s in %s", picture, className);
        HWND control = panel.Create(className, "C");
        const std::string path =
            folder.Write(picture, Damaged(random, ReadBytes(ProgramFolder() + "Controls\\" + picture)));
        Load(control, "bitmap=" + path);
        const Picture painted(control);
        Load(panel.Window(), "background=" + path);
        break;
    }
    default: {
        Doing("load a damaged crossover configuration");
        const std::string name = "fault-" + std::to_string(GetCurrentProcessId());
        const std::string path = ProgramFolder() + "Controls\\" + name + ".cfg";
        WriteBytes(path, Damaged(random, ReadBytes(ProgramFolder() + "Controls\\TwoWayLow.cfg")));
        HWND control = panel.Create("XOVER", "X");
        for (const KEYWORDROW* row = ObjectOf(control).GetHostinfoTable(); row->keyword != nullptr; ++row) {
            Load(control, std::string(row->keyword) + "=" + name);
        }
        DeleteFileA(path.c_str());
    }
    }
    Doing("close the panel");
}

} // namespace

const Topic filesTopic{"files", Round};
