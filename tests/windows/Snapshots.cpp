// Snapshots of a simulated device: their files, and what a recall sets, over a time or at once.
#include "Panelhost/Snapshots.h"
#include "Panelhost/Devices.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/TestPanel.h"

#include <cmath>
#include <cstdlib>
#include <map>

namespace {

constexpr const char* DEVICES = "AMP*device=simulated\n"
                                "AMP*gain=float,-80,20,-20,dB\n"
                                "AMP*volume=integer,0,127,10\n"
                                "AMP*mute=integer,0,1,0\n"
                                "AMP*name=text,,,Kick,\n"
                                "AMP*band=channeleq,,,0,PEQ,12 dB,1000 Hz,0 dB,1\n"
                                "AMP*level=float,-80,20,-80,dB\n"
                                "AMP*level=follow,gain,0,0\n"
                                "AMP*free=float,0,1,0.5\n"
                                "OFF*device=simulated\n"
                                "OFF*gain=float,0,1,0.25\n";

// A panel with a file, whose controls are bound to the devices above.
class Scene : public TestPanel {
public:
    Scene() {
        Declare(DEVICES);
        for (const char* function : {"AMP*gain", "amp*gain", "AMP*volume;AMP*mute", "AMP*name", "AMP*level",
                                     "AMP*online;OFF*gain", "AMP*none;NONE*x"}) {
            Load(Create("LED", "Led"), std::string("function=") + function);
        }
        REQUIRE(ph_SavePanel(Root(), Path("Hall.panel").c_str()) == 1);
    }

    std::string Path(const std::string& name) const { return folder_.Path(name); }
    std::string Snapshot(const std::string& name) const { return Path(name + ".snapshot"); }
    void Write(const std::string& name, const std::string& values) const {
        folder_.Write(name + ".snapshot", "snapshot=1\n" + values);
    }
    bool Set(const char* address, const char* text) const {
        return ph_SetParameter(Root(), address, text) == 1;
    }
    int Recall(const std::string& name, int milliseconds = 0) const {
        return ph_RecallSnapshot(Root(), Snapshot(name).c_str(), milliseconds);
    }
    std::map<std::string, RECALLEDVALUE> Report() const {
        std::map<std::string, RECALLEDVALUE> report;
        for (const RECALLEDVALUE& value : a_ListRecall(Root())) {
            report[value.address] = value;
        }
        return report;
    }
    bool Ends() const {
        return Await([this] {
            ph_Tick(Root());
            return ph_ListRecall(Root(), nullptr, nullptr) == 0;
        });
    }
    LRESULT Line(std::string text) const {
        return Send(Window(), COMMAND_SET, DATATYPE_TEXT, text.data(), "snapshot");
    }

private:
    TestFolder folder_;
};

} // namespace

TEST_CASE("a snapshot holds what controls are bound to and can be set, and a recall brings it back") {
    const Scene scene;
    CHECK(a_ListRecallable(scene.Root()) ==
          std::list<std::string>{"AMP*gain", "AMP*volume", "AMP*mute", "AMP*name", "OFF*gain"});
    CHECK(ph_TakeSnapshot(scene.Root(), scene.Snapshot("All").c_str(), nullptr) == 5);
    SNAPSHOT all;
    REQUIRE(a_ReadSnapshot(scene.Snapshot("All").c_str(), &all));
    CHECK(all.panel == "Hall.panel");
    CHECK(all.time.size() == 19);
    CHECK(all.program.find("Panelhost") != std::string::npos);
    CHECK(all.values.size() == 5);
    CHECK(ReadBytes(scene.Snapshot("All")).find("\r\nAMP*gain=-20\r\n") != std::string::npos);

    CHECK(ph_TakeSnapshot(scene.Root(), scene.Snapshot("Some").c_str(),
                          "AMP*free; amp*free;AMP*band;AMP*level;AMP*online;NONE*x;x;") == 2);
    CHECK(ph_TakeSnapshot(scene.Root(), scene.Snapshot("None").c_str(), "") == 0);
    CHECK(ph_TakeSnapshot(scene.Root(), scene.Path("none\\All.snapshot").c_str(), nullptr) == -1);
    CHECK(ph_TakeSnapshot(scene.Root(), nullptr, nullptr) == -1);
    CHECK(ph_TakeSnapshot(nullptr, scene.Snapshot("All").c_str(), nullptr) == -1);
    CHECK(a_ListSnapshots(scene.Root()) == std::list<std::string>{"All", "None", "Some"});

    for (const char* change : {"AMP*gain=6", "AMP*volume=100", "AMP*mute=1", "AMP*name=Snare",
                               "AMP*band=0,PEQ,12 dB,500 Hz,3 dB,2", "AMP*free=1"}) {
        const std::string line = change;
        REQUIRE(scene.Set(line.substr(0, line.find('=')).c_str(), line.substr(line.find('=') + 1).c_str()));
    }
    std::string now;
    CHECK(a_CompareWithNow(scene.Root(), {"AMP*gain", "-20"}, &now) == SNAPSHOT_DIFFERS);
    CHECK(now == "6");
    CHECK(a_CompareWithNow(scene.Root(), {"AMP*gain", "6.0"}, &now) == SNAPSHOT_EQUAL);
    CHECK(a_CompareWithNow(scene.Root(), {"AMP*none", "6"}, &now) == SNAPSHOT_UNKNOWN);
    CHECK(a_RecallSnapshot(scene.Root(), scene.Snapshot("All").c_str(), {"amp*volume"}, 0) == 1);
    CHECK(scene.Parameter("AMP*volume") == "10");
    CHECK(scene.Parameter("AMP*gain") == "6");
    CHECK(scene.Recall("All") == 5);
    CHECK(scene.Recall("Some") == 2);
    CHECK(ph_ListRecall(scene.Root(), nullptr, nullptr) == 0); // all done, without a tick
    CHECK(scene.Parameter("AMP*gain") == "-20");
    CHECK(scene.Parameter("AMP*mute") == "0");
    CHECK(scene.Parameter("AMP*name") == "Kick");
    CHECK(scene.Parameter("AMP*free") == "0.5");
    CHECK(scene.Parameter("AMP*band").find("1000 Hz") != std::string::npos);
}

TEST_CASE("what cannot be set is reported, and sets nothing") {
    const Scene scene;
    REQUIRE(scene.Set("OFF*online", "0"));
    scene.Write("Mixed", "AMP*gain=loud\nAMP*volume=300\nAMP*level=0\nAMP*online=0\nOFF*gain=1\nNONE*x=1\n"
                         "AMP*none=1\nAMP*mute=1\namp*MUTE=0\nAMP*mute=0\nAMP*band=0,Tilt\nnonsense\n");
    const TraceCapture trace;
    CHECK(scene.Recall("Mixed") == 2);
    CHECK(scene.Ends());
    struct Row {
        const char* address;
        int state;
        const char* why;
    };
    auto report = scene.Report();
    for (const Row& row :
         std::initializer_list<Row>{{"AMP*gain", RECALL_FAILED, "refused"},
                                    {"AMP*volume", RECALL_DONE, ""}, // as far as it goes
                                    {"AMP*level", RECALL_FAILED, "cannot be set"},
                                    {"AMP*online", RECALL_FAILED, "cannot be set"},
                                    {"OFF*gain", RECALL_FAILED, "nothing heard for 0 s"},
                                    {"NONE*x", RECALL_FAILED, "not there"},
                                    {"AMP*none", RECALL_FAILED, "not there"},
                                    {"amp*MUTE", RECALL_FAILED, "not there"},
                                    {"AMP*mute", RECALL_FAILED, "stands twice in the snapshot"},
                                    {"AMP*band", RECALL_FAILED, "refused"}}) {
        INFO(row.address);
        CHECK(report[row.address].state == row.state);
        CHECK(report[row.address].why.substr(0, 13) == std::string(row.why).substr(0, 13));
    }
    CHECK(trace.CountContaining("Not all of a snapshot could be set: Mixed, 9 of 11 values") == 1);
    CHECK(scene.Parameter("AMP*mute") == "1");
    CHECK(scene.Parameter("OFF*gain") == "0.25");
    for (const char* bytes : {"", "control=0x0 KNOB \"K\" 0x0 0,0,1,1", "snapshot=2\nAMP*mute=0\n"}) {
        WriteBytes(scene.Snapshot("Bad"), bytes);
        CHECK(scene.Recall("Bad") == -1);
    }
    CHECK(scene.Recall("Missing") == -1);
    CHECK(ph_RecallSnapshot(nullptr, scene.Snapshot("Mixed").c_str(), 0) == -1);
    CHECK(ph_ListRecall(nullptr, nullptr, nullptr) == -1);
}

TEST_CASE(
    "a fade moves numbers in time, everything else at its start, and leaves the way to whoever takes it") {
    const Scene scene;
    scene.Write("Up", "AMP*gain=0\nAMP*volume=120\nAMP*mute=1\nAMP*name=Snare\nAMP*free=0.75\n");
    CHECK(scene.Recall("Up", 3'600'000) == 5); // so long that it certainly is under way
    CHECK(scene.Parameter("AMP*mute") == "1");
    CHECK(scene.Parameter("AMP*name") == "Snare");
    CHECK(scene.Parameter("AMP*gain") == "-20");
    CHECK(ph_ListRecall(scene.Root(), nullptr, nullptr) == 3);

    // A control that is moved, and a change at the device itself.
    HWND fader = scene.Create("FADER", "Fader");
    Load(fader, "properties=-80,20,-20");
    Load(fader, "function=AMP*gain");
    SetValue(fader, -50);
    CHECK(scene.Set("AMP*volume", "64"));
    CHECK(ph_StopRecall(scene.Root()) == 1);
    CHECK(ph_StopRecall(scene.Root()) == 0);
    auto report = scene.Report();
    CHECK(report["AMP*gain"].state == RECALL_OVERTAKEN);
    CHECK(report["AMP*volume"].state == RECALL_OVERTAKEN);
    CHECK(report["AMP*free"].state == RECALL_STOPPED);
    CHECK(report["AMP*mute"].state == RECALL_DONE);
    ph_Tick(scene.Root());
    CHECK(scene.Parameter("AMP*gain") == "-50");
    CHECK(scene.Parameter("AMP*volume") == "64");

    // One recall takes over from another what both name; the rest goes on.
    scene.Write("Half", "AMP*gain=-30\nAMP*free=0\n");
    scene.Write("Down", "AMP*gain=-80\n");
    CHECK(scene.Recall("Half", 200) == 2);
    CHECK(scene.Recall("Down", 400) == 1);
    CHECK(scene.Report().size() == 2);
    float last = -50;
    int steps = 0;
    CHECK(Await([&] {
        ph_Tick(scene.Root());
        const float now = std::strtof(scene.Parameter("AMP*gain").c_str(), nullptr);
        CHECK(now <= last);
        steps += now != last ? 1 : 0;
        last = now;
        return ph_ListRecall(scene.Root(), nullptr, nullptr) == 0;
    }));
    CHECK(steps > 1);
    CHECK(scene.Parameter("AMP*gain") == "-80");
    CHECK(scene.Parameter("AMP*free") == "0");

    // A device that goes takes its values out, a root that is destroyed all.
    scene.Write("Both", "AMP*gain=0\nOFF*gain=1\n");
    CHECK(scene.Recall("Both", 3'600'000) == 2);
    CHECK(scene.Set("OFF*online", "0"));
    ph_Tick(scene.Root());
    CHECK(scene.Report()["OFF*gain"].state == RECALL_FAILED);
    CHECK(scene.Report()["AMP*gain"].state == RECALL_UNDER_WAY);
}

TEST_CASE(
    "a line to the panel recalls a snapshot beside it by name, from a click, not from a file or terminal") {
    const Scene scene;
    scene.Write("Evening", "AMP*mute=1\n");
    const auto isRecalled = [&] {
        const bool isSet = scene.Parameter("AMP*mute") == "1";
        scene.Set("AMP*mute", "0");
        return isSet;
    };
    CHECK(scene.Line("Evening") == 1);
    CHECK(isRecalled());
    CHECK(Text(scene.Window(), "snapshot") == "Evening");
    CHECK(Load(scene.Window(), "snapshot=Evening,0") == 1);
    CHECK(isRecalled());
    CHECK_FALSE(IsChanged(scene.Window()));
    for (const char* text : {"Nothing", "..\\Evening", "Evening,-1", "Evening,0.5", "", ",5"}) {
        CHECK(scene.Line(text) == 0);
    }
    CHECK_FALSE(isRecalled());
    {
        const RemoteSetting terminal;
        CHECK(Load(scene.Window(), "snapshot=Evening") == 0);
    }
    CHECK_FALSE(isRecalled());

    HWND button = scene.Create("BBUTTON", "Go");
    CHECK(Load(button, "click=snapshot=Evening,20") == 1);
    Click(button);
    CHECK(scene.Ends());
    CHECK(isRecalled());
    {
        const RemoteSetting terminal;
        CHECK(Load(button, "click=snapshot=Evening") == 0);
    }
    WriteBytes(scene.Path("Line.panel"), "snapshot=Evening\r\n");
    CHECK(ph_LoadPanel(scene.Root(), scene.Path("Line.panel").c_str()) == 0);
    CHECK_FALSE(isRecalled());
    CHECK(ph_ListUnread(scene.Root(), nullptr, nullptr) == 1);
    const TestPanel without;
    std::string text = "Evening";
    CHECK(Send(without.Window(), COMMAND_SET, DATATYPE_TEXT, text.data(), "snapshot") == 0);
}
