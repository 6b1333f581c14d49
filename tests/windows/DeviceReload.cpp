// Device files that are read anew while their devices are in use, and what is said of their lines.

#include "Panelhost/DeviceFiles.h"
#include "Panelhost/Devices.h"
#include "Panelhost/Root.h"
#include "Panelhost/Snapshots.h"
#include "tests/windows/Resources.h"
#include "tests/windows/TestPanel.h"

#include <algorithm>
#include <memory>

namespace {

constexpr const char* GAIN = "*gain=float,-80,18,-20,dB\n";

std::string Simulated(const std::string& name, const std::string& more = "") {
    return name + "*device=simulated\n" + name + GAIN + more;
}

class ReloadedPanel : public TestPanel {
public:
    int Reload(const std::string& lines) const {
        return ph_ReloadDevices(Root(), folder_.Write("test.devices", lines).c_str());
    }
    void Set(const char* address, const char* text) const {
        REQUIRE(ph_SetParameter(Root(), address, text) == 1);
    }
    std::string Names() const {
        std::string names;
        for (const auto& [name, status] : a_ListDevices(Root())) {
            names += name + " ";
        }
        return names;
    }
    HWND Bound(const char* className, const char* name, const std::string& function) const {
        HWND control = Create(className, name);
        Load(control, "interval=60000");
        Load(control, "function=" + function);
        return control;
    }
    std::string Path(const std::string& name) const { return folder_.Path(name); }
    const TestFolder& Folder() const { return folder_; }

private:
    TestFolder folder_;
};

// A device of the program itself, which does something when it is set.
class OwnDevice : public DEVICE {
public:
    OwnDevice(
        HOSTINFO* root, const char* ownName, std::function<void()> action = [] {})
        : action_(std::move(action)) {
        Register(root, ownName);
    }
    LRESULT OnRequestList(WPARAM, LPARAM item) override {
        auto& request = *reinterpret_cast<REQUESTITEM*>(item);
        request.context = this;
        request.handler = [](VALUERECORD*, void* context) {
            static_cast<OwnDevice*>(context)->action_();
            return 1;
        };
        return 1;
    }

private:
    std::function<void()> action_;
};

} // namespace

TEST_CASE("a reload leaves devices with the same lines alone, and makes the others anew or ends them") {
    const ReloadedPanel panel;
    const OwnDevice own(panel.Root(), "OWN");
    panel.Create("LED", "Taken");
    REQUIRE(panel.Declare(Simulated("SAME") + Simulated("CHANGED") + Simulated("GONE")) == 3);
    HWND same = panel.Bound("FADER", "Same", "SAME*gain");
    HWND changed = panel.Bound("FADER", "Changed", "CHANGED*gain");
    HWND gone = panel.Bound("FADER", "Gone", "GONE*gain");
    HWND awaited = panel.Bound("FADER", "Awaited", "NEW*gain");
    for (const char* address : {"SAME*gain", "CHANGED*gain", "GONE*gain"}) {
        panel.Set(address, "5");
    }
    const auto look = [&] {
        for (const HWND control : {same, changed, gone, awaited}) {
            SendMessageA(control, WM_TIMER, 0, 0); // long before its interval is over
        }
    };
    Poll(same);
    look();
    a_SetChanged(panel.Root(), false);
    const std::string lines = Simulated("NEW") + Simulated("CHANGED", "CHANGED*x=float,0,1,0\n") +
                              "SAME*y=flaot,0,1,0\n" + Simulated("SAME") + Simulated("Taken") +
                              "SAME*device=tin\n";
    CHECK(panel.Reload(lines) == 3);
    CHECK(panel.Names() == "OWN NEW CHANGED SAME ");
    CHECK(a_LoadErrorCount(panel.Root()) == 4); // with the line of the device that is not to be
    CHECK(a_DeviceFaults(panel.Root()) ==
          std::list<std::string>{"Taken: the name is taken", "SAME: the name is taken"});
    CHECK_FALSE(a_IsChanged(panel.Root()));
    CHECK(panel.Parameter("SAME*gain") == "-20"); // a line about it was added, though a refused one
    CHECK(panel.Parameter("CHANGED*gain") == "-20");
    CHECK(panel.Parameter("GONE*gain") == "(none)");
    look();
    CHECK(Value(changed) == -20.0F);
    CHECK(Value(awaited) == -20.0F);
    CHECK(a_WhyNotLive(&ObjectOf(gone)) == "GONE*gain: not there");
    CHECK(a_WhyNotLive(&ObjectOf(changed)).empty());
    SetValue(changed, -3);
    CHECK(panel.Parameter("CHANGED*gain") == "-3");

    panel.Set("SAME*gain", "7");
    CHECK(panel.Reload("# else the same\n" + Simulated("GONE") + Simulated("SAME") + "SAME*device=tin\n") ==
          2);
    CHECK(panel.Parameter("SAME*gain") == "7");
    look();
    CHECK(Value(gone) == -20.0F);

    for (const std::string& missing : {panel.Path("none"), panel.Path(""), std::string("?")}) {
        INFO(missing);
        CHECK(ph_ReloadDevices(panel.Root(), missing.c_str()) == -1);
        CHECK(panel.Names() == "OWN GONE SAME ");
        CHECK(panel.Parameter("SAME*gain") == "7");
    }
    CHECK(ph_ReloadDevices(panel.Root(), nullptr) == -1);
    CHECK(ph_ReloadDevices(nullptr, "x") == -1);
    CHECK(ph_ReloadDevices(panel.Root(), "") == 0);
    CHECK(panel.Names() == "OWN ");
    CHECK(a_DeviceFaults(panel.Root()).empty());
    look();
    CHECK(a_WhyNotLive(&ObjectOf(same)) == "SAME*gain: not there");
}

TEST_CASE("a profile that has changed makes its device anew") {
    const ReloadedPanel panel;
    const char* profile = "profile=osc,1\nhello=none\nport=9\nlaw*l=f,same\np=float,0,1,,/p,l\n";
    const auto reload = [&](const std::string& more) {
        panel.Folder().Write("p.profile", profile + more);
        CHECK(panel.Reload("D*device=osc,localhost,p\n") == 1);
        return a_LifeOf(a_FindHostinfo(panel.Root(), "D"));
    };
    const unsigned first = reload("");
    CHECK(reload("") == first);
    CHECK(reload("q=float,0,1,,/q,l\n") != first);
    CHECK(panel.Parameter("D*state") != "(none)");
}

TEST_CASE("devices can be reloaded in the middle of what is asked of them") {
    const ReloadedPanel panel;
    int round = 0;
    const auto lines = [&] {
        const std::string more = "*n=integer,0,9," + std::to_string(round % 10) + "\n";
        return Simulated("A", "A" + more) + Simulated("KEPT") + Simulated("B", "B" + more);
    };
    REQUIRE(panel.Reload(lines()) == 3);
    bool isReloading = true;
    const OwnDevice own(panel.Root(), "OWN", [&] {
        ++round;
        CHECK((!isReloading || panel.Reload(lines()) == 3));
    });
    HWND fader = panel.Bound("FADER", "Fader", "A*gain;OWN*x;KEPT*gain;B*gain");
    for (int i = 1; i <= 20; ++i) {
        int value = -30 + i;
        CHECK(a_SendRequest(ObjectOf(fader).requests, COMMAND_SET, DATATYPE_INTEGER, &value, nullptr) == 0);
        CHECK(panel.Parameter("A*gain") == "-20"); // was set before it was made anew
        CHECK(panel.Parameter("KEPT*gain") == std::to_string(value));
        CHECK(panel.Parameter("B*gain") == "-20"); // is not the one that was meant
        Poll(fader);
        ph_Tick(panel.Root());
    }
    isReloading = false;
    int value = 1;
    CHECK(a_SendRequest(ObjectOf(fader).requests, COMMAND_SET, DATATYPE_INTEGER, &value, nullptr) == 1);
    CHECK(panel.Parameter("B*gain") == "1");
}

TEST_CASE("a fade goes on where its device stays, and has failed where that was made anew") {
    const ReloadedPanel panel;
    REQUIRE(panel.Reload(Simulated("STAYS") + Simulated("GOES")) == 2);
    const std::string file = panel.Folder().Write("a.snapshot", "snapshot=1\nSTAYS*gain=10\nGOES*gain=10\n");
    REQUIRE(ph_RecallSnapshot(panel.Root(), file.c_str(), 400) == 2);
    ph_Tick(panel.Root());
    CHECK(panel.Reload(Simulated("GOES", "GOES*x=float,0,1,0\n") + Simulated("STAYS")) == 2);
    CHECK(ph_ListRecall(panel.Root(), nullptr, nullptr) == 1);
    CHECK(Await([&] {
        ph_Tick(panel.Root());
        return ph_ListRecall(panel.Root(), nullptr, nullptr) == 0;
    }));
    CHECK(panel.Parameter("STAYS*gain") == "10");
    CHECK(panel.Parameter("GOES*gain") == "-20");
    for (const RECALLEDVALUE& value : a_ListRecall(panel.Root())) {
        CHECK(value.state == (value.address == "GOES*gain" ? RECALL_FAILED : RECALL_DONE));
    }
}

TEST_CASE("fifty reloads leave nothing behind") {
    const ReloadedPanel panel;
    panel.Folder().Write("p.profile", "profile=osc,1\nhello=/hi,/hi\nlaw*l=f,same\np=float,0,1,,/p,l\n");
    panel.Bound("LED", "Led", "REAL*p;A*gain;OTHER*p");
    int round = 0;
    const auto reload = [&] {
        const std::string port = std::to_string(9000 + ++round % 7);
        CHECK(panel.Reload("REAL*device=osc,127.0.0.1:" + port + ",p\n" +
                           (round % 3 == 0 ? "OTHER*device=osc,127.0.0.1:9,p\n" : "") +
                           Simulated("A", "A*n=integer,0,9," + port.substr(3) + "\n")) ==
              (round % 3 == 0 ? 3 : 2));
        for (int i = 0; i < 3; ++i) {
            ph_Tick(panel.Root());
            PumpAll();
        }
    };
    const auto empty = [&] { CHECK(ph_ReloadDevices(panel.Root(), "") == 0); };
    CHECK(LeftBehind(3, [&] {
              for (int i = 0; i < 17; ++i) {
                  reload();
              }
              empty();
          }) == "");
}

TEST_CASE("what is wrong with lines of a device file is said as a reload of it would find it") {
    const ReloadedPanel panel;
    panel.Create("LED", "Led");
    REQUIRE(panel.Declare(Simulated("AMP1")) == 1);
    struct Row {
        const char* line;
        const char* why; // null: nothing
    };
    for (const Row& row : std::initializer_list<Row>{
             {"", nullptr},
             {"# nothing", nullptr},
             {"AMP1*device=simulated", nullptr}, // which a reload takes away
             {"D*device=simulated", "the name is taken"},
             {"d*device=simulated", "the name is taken"},
             {"Led*device=simulated", "the name is taken"},
             {"a%*device=simulated", "the name is none"},
             {"*device=simulated", "the name is none"},
             {"E*device=tin can", "there is no kind of device \"tin can\""},
             {"E*device=simulated,x", "nothing stands behind \"simulated\""},
             {"E*device=osc,1.2.3.4:5,none", "the profile none.profile cannot be read"},
             {"nonsense", "it does not read DEVICE*parameter=..."},
             {"x=float,0,1,0", "no device  is declared above this line"},
             {"AMP2*x=float,0,1,0", "no device AMP2 is declared above this line"},
             {"D*=float,0,1,0", "no parameter is named"},
             {"D*y=float,0,1,0", nullptr},
             {"D*y=flaot,0,1,0", "\"flaot\" is no type, and nothing that moves a value"},
             {"D*y=float,1,0,0", "it does not read float,minimum,maximum,value,unit"},
             {"D*y=text,1,0,0", "it does not read text,,,value"},
             {"D*y=delay,,,x", "it does not read delay,,,value"},
             {"D*x=wave,sine,0,1,1000", nullptr},
             {"D*z=wave,sine,0,1,1000", "z is not declared as a number above this line"},
             {"D*x=wave,sine,0,1", "it does not read wave,shape,low,high,period"},
             {"D*m%i=matrix,2", "it does not read matrix,inputs,outputs,input,output"}}) {
        INFO(std::string(row.line));
        const std::string text = Simulated("D", "D*x=float,0,1,0\n") + row.line;
        const std::list<DEVICELINEFAULT> faults =
            a_CheckDeviceText(panel.Root(), panel.Path("x.devices").c_str(), text);
        REQUIRE(faults.size() == (row.why == nullptr ? 0 : 1));
        if (row.why != nullptr) {
            CHECK(faults.front().why == row.why);
            CHECK(faults.front().line == 4);
            CHECK(faults.front().text == row.line);
        }
        CHECK(panel.Names() == "AMP1 "); // nothing was declared
    }
    for (const auto& [text, faults] : {std::pair("AMP1*gain=x\nAMP1*device=tin\n", 2), {"", 0}}) {
        CHECK(a_CheckDeviceText(panel.Root(), "", text).size() == static_cast<std::size_t>(faults));
        panel.Reload(text);
        CHECK(a_LoadErrorCount(panel.Root()) == faults);
    }
}

TEST_CASE("a first device of each kind can be declared as it is proposed") {
    const ReloadedPanel panel;
    const std::string file = panel.Path("x.devices");
    panel.Folder().Write("here.profile", "# a desk\nprofile=osc,1\ntitle=A desk\nport=7\nhello=none\n");
    panel.Folder().Write("other.profile", "profile=tin,1\n");
    panel.Folder().Write("no.profile", "text\nprofile=osc,1\n");
    int kinds = 0;
    for (const DEVICEKINDINFO& kind : a_ListDeviceKinds()) {
        const bool isReal = kind.example.find("{profile}") != std::string::npos;
        const auto profiles = a_ListProfiles(kind.word.c_str(), file.c_str());
        CHECK(profiles.size() == (isReal ? 2 : 0)); // and the one of the program
        std::string lines = "N*" + kind.example;
        const auto replace = [&](const std::string& what, const std::string& by) {
            for (auto place = lines.find(what); place != std::string::npos;
                 place = lines.find(what, place + by.size())) {
                lines.replace(place, what.size(), by);
            }
        };
        replace("{address}", "127.0.0.1");
        if (isReal) {
            CHECK(profiles.front().name == "here");
            CHECK(profiles.front().title == "A desk");
            CHECK(profiles.front().port == 7);
            CHECK(profiles.back().name == "x32");
            replace("{profile}", profiles.front().name);
            replace("{port}", std::to_string(profiles.front().port));
        }
        replace("\n", "\nN*");
        lines.erase(lines.size() - 2);
        INFO(lines);
        CHECK(a_CheckDeviceText(nullptr, file.c_str(), lines).empty());
        ++kinds;
    }
    CHECK(kinds >= 2);
}

TEST_CASE("the device file that a panel names is known before it is loaded") {
    const TestFolder folder;
    const std::string lines = "title=x\ndevices=hall.devices\nK*devices=y\n";
    CHECK(a_RootValueIn(lines, "devices") == "hall.devices");
    CHECK(a_RootValueOf(folder.Write("a.panel", lines).c_str(), "devices") == "hall.devices");
    CHECK(a_RootValueOf(folder.Write("b.panel", "title=x\n").c_str(), "devices") == "");
    CHECK(a_RootValueOf(folder.Path("c.panel").c_str(), "devices") == "");
    const TestPanel panel;
    CHECK(panel.Saved().find("devices") == std::string::npos);
    Load(panel.Window(), "devices=..\\hall.devices");
    CHECK(panel.Saved().find("devices=..\\hall.devices\r\n") != std::string::npos);
}
