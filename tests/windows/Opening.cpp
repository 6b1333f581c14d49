// Opening a panel, pasting and going back: what of it reaches the devices.

#include "Panelhost/Editing.h"
#include "Panelhost/Operating.h"
#include "tests/windows/TestPanel.h"

#include <list>
#include <map>

TEST_SUITE_BEGIN("Opening");

namespace {

// Every kind of line that sends. The strip sends at a tick only.
constexpr const char* PANEL = "control=0x00000000 KNOB \"Knob\" 0x50010000 10,10,57,57\r\n"
                              "Knob*function=DEV*knob;LATE*knob\r\n"
                              "Knob*properties=-80,18,-50\r\n"
                              "Knob*properties=-80,18,-30\r\n"
                              "control=0x00000000 FADER \"Fader\" 0x50010000 70,10,94,160\r\n"
                              "Fader*function=LATE*fader\r\n"
                              "Fader*properties=-80,18,-31\r\n"
                              "control=0x00000000 EQ \"Band\" 0x50010000 100,10,225,180\r\n"
                              "Band*datatype=channeleq\r\n"
                              "Band*function=LATE*band\r\n"
                              "Band*properties=0,Hishelv,6 dB,4000 Hz,3 dB,0.5\r\n"
                              "control=0x00000000 LED \"Lamp\" 0x50010000 10,80,26,96\r\n"
                              "control=0x00000000 KNOB \"Inner\" 0x50010000 10,100,57,147\r\n"
                              "Inner*function=DEV*inner\r\n"
                              "control=0x00000000 MIXER \"Strip\" 0x50010000 240,10,288,262\r\n"
                              "Strip*function=DEV*strip\r\n"
                              "Strip*Fader*properties=-80,0,-12\r\n"
                              "Lamp*connection=Inner\r\n";
// Changes what is there: by the lamp a control that sends on.
constexpr const char* AGAIN = "Lamp*value=7\r\nStrip*Fader*properties=-80,0,-13\r\n"
                              "Knob*properties=-80,18,-60\r\n";

std::string Device(const std::string& name) {
    return name + "*device=simulated\n" + name + "*knob=float,-80,18,-1,dB\n" + name +
           "*fader=float,-80,18,-2,dB\n" + name + "*band=channeleq,,,0,PEQ,12 dB,100 Hz,1 dB,1\n" + name +
           "*inner=float,-80,18,-3,dB\n" + name + "*strip=float,-80,0,-4,dB\n";
}

using Values = std::map<std::string, std::string>;

Values ParametersOf(const TestPanel& panel) {
    Values values;
    for (HOSTINFO* object : a_ListHostinfos(panel.Root())) {
        std::list<std::string> names;
        if (object->kind == KIND_DEVICE) {
            object->OnGetKeywords(0, reinterpret_cast<LPARAM>(&names));
        }
        for (const std::string& name : names) {
            const std::string address = object->name + "*" + name;
            values[address] = panel.Parameter(address.c_str());
        }
    }
    return values;
}

void PollAll(const TestPanel& panel) {
    for (HOSTINFO* object : a_ListHostinfos(panel.Root())) {
        if (object->HasHostinfoTable() != 0) {
            Poll(object->window);
        }
    }
}

// Gives every parameter another value than its device file.
void MoveParameters(const TestPanel& panel) {
    for (const auto& [address, before] : ParametersOf(panel)) {
        if (address.ends_with("*online")) {
            continue;
        }
        for (const char* text : {"1", "2", "0", "-1", "Hishelv,123 Hz", "0,123 Hz", ",123 Hz", "Moved"}) {
            ph_SetParameter(panel.Root(), address.c_str(), text);
            if (panel.Parameter(address.c_str()) != before) {
                break;
            }
        }
        INFO(address, " ", before);
        CHECK(panel.Parameter(address.c_str()) != before);
    }
}

} // namespace

TEST_CASE("the demo panels move nothing") {
    for (const std::string name : {"Demo", "Buttons", "Mixer", "Interfaces", "Levels", "Stage"}) {
        INFO(name);
        const TestPanel panel;
        const std::string file = ProgramFolder() + name;
        ph_LoadDevices(panel.Root(), (file + ".devices").c_str());
        MoveParameters(panel);
        const Values before = ParametersOf(panel);
        REQUIRE(ph_LoadPanel(panel.Root(), (file + ".panel").c_str()) > 0);
        CHECK(ParametersOf(panel) == before);
        PollAll(panel);
        CHECK(ParametersOf(panel) == before);
    }
}

TEST_CASE("what is loaded, pasted or brought back moves no device, but other controls") {
    const TestPanel panel;
    panel.Declare(Device("DEV"));
    const Values before = ParametersOf(panel);
    CHECK(panel.Open(PANEL) == 6);
    CHECK(ParametersOf(panel) == before);
    CHECK(Value(panel.Find("Knob")) == -30.0F);
    PollAll(panel);
    CHECK(ParametersOf(panel) == before);
    CHECK(Value(panel.Find("Strip*Fader")) == -4.0F);
    CHECK(Value(panel.Find("Inner")) == -3.0F);

    for (const bool isFile : {true, false}) {
        Load(panel.Find("Lamp"), "value=1");
        Load(panel.Find("Lamp"), "value=0"); // moves the knob, and by it the device
        CHECK(panel.Parameter("DEV*inner") == "0");
        const Values held = ParametersOf(panel);
        isFile ? panel.Open(AGAIN) : a_LoadText(panel.Root(), AGAIN, "Test");
        CHECK(Value(panel.Find("Inner")) == 7.0F); // between controls all goes on
        PollAll(panel);
        CHECK(ParametersOf(panel) == held);
    }

    SetValue(panel.Find("Strip*Fader"), -21.0F); // not passed on yet
    panel.Open("title=x\r\nno such thing\r\n");
    CHECK(panel.Parameter("DEV*strip") == "-21");
    Load(panel.Find("Knob"), "properties=-80,18,-9", LOAD_FROM_FILE);
    CHECK(panel.Parameter("DEV*knob") == "-9");
}

TEST_CASE("a record to the window of a device waits for the end of the loading, too") {
    const TestPanel panel;
    panel.Declare(Device("DEV"));
    const auto set = [](int, int, void* device) {
        float value = -7.0F;
        Send(static_cast<HWND>(device), COMMAND_SET, DATATYPE_FLOAT, &value, "knob");
        return 1;
    };
    ph_SetLoadProgress(panel.Root(), set, panel.Find("DEV"));
    panel.Open("title=x\r\n");
    CHECK(panel.Parameter("DEV*knob") == "-1");
    panel.Open("onopen=send\r\n");
    CHECK(panel.Parameter("DEV*knob") == "-7");
}

TEST_CASE("with onopen=send what is saved goes once to each device, when that is there") {
    const TestPanel panel;
    panel.Declare(Device("DEV"));
    const std::string send = "onopen=send\r\n";
    for (const auto& [lines, created] : {std::pair{send + PANEL, 6}, {PANEL + send, 0}}) {
        CAPTURE(created);
        CHECK(panel.Open(lines) == created);
        CHECK(panel.Parameter("DEV*knob") == "-30"); // of two lines the last
        CHECK(panel.Parameter("DEV*strip") == "-12");
        ph_SetParameter(panel.Root(), "DEV*knob", "-5");
        ph_SetParameter(panel.Root(), "DEV*strip", "-6");
        ph_Tick(panel.Root());
        PollAll(panel);
        CHECK(panel.Parameter("DEV*knob") == "-5");
        CHECK(panel.Parameter("DEV*strip") == "-6");
    }
    CHECK(panel.Parameter("DEV*inner") == "-3"); // of which nothing is saved
    a_LoadText(panel.Root(), AGAIN, "Test");
    ph_Tick(panel.Root());
    CHECK(panel.Parameter("DEV*knob") == "-5");

    SetValue(panel.Find("Fader"), -44.0F); // later than what was saved
    std::string late = Device("late");     // names have no case
    panel.Declare(late + "late*online=integer,0,1,0\n");
    ph_Tick(panel.Root());
    CHECK(panel.Parameter("LATE*knob") == "-1");
    ph_SetParameter(panel.Root(), "LATE*online", "1");
    ph_Tick(panel.Root());
    CHECK(panel.Parameter("LATE*knob") == "-30");
    CHECK(panel.Parameter("LATE*band") == "0,Hishelv,6 dB,4000 Hz,3 dB,0.5");
    CHECK(panel.Parameter("LATE*fader") == "-2");

    a_SetNeverSendsOnOpen(panel.Root());
    CHECK(panel.Open(send + "Knob*properties=-80,18,-17\r\n") == 0);
    ph_Tick(panel.Root());
    CHECK(panel.Parameter("DEV*knob") == "-5");

    CHECK(Load(panel.Window(), "onopen=yes") == 0);
    CHECK(panel.Saved().starts_with(send));
    CHECK(Load(panel.Window(), "onopen=") == 1);
    CHECK(panel.Saved().starts_with("control="));
}

TEST_SUITE_END();
