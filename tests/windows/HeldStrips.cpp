// Strips that hold what their children show: each child is connected to a keyword of the strip.

#include "Panelhost/PropertyLines.h"
#include "Panelhost/Root.h"
#include "tests/windows/FormPanels.h"

#include <span>

TEST_SUITE_BEGIN("HeldStrips");

namespace {

struct Held {
    const char* child;
    const char* shown;
    const char* set = nullptr; // by the child; null: it only shows
    const char* parameter = nullptr;
    const char* sent = nullptr; // what the device then holds
};
constexpr Held WAY[] = {
    {"HpType", "LINK24", "BESS18", "DSP*filters", "BESS18,80 Hz,BUTT12,1200 Hz"},
    {"HpFreq", "80.0 Hz", "1k2", "DSP*filters", "BESS18,1200 Hz,BUTT12,1200 Hz"},
    {"LpType", "BUTT12", "BUTT6", "DSP*filters", "BESS18,1200 Hz,BUTT6,1200 Hz"},
    {"LpFreq", "1200 Hz", "5k", "DSP*filters", "BESS18,1200 Hz,BUTT6,5000 Hz"},
    {"Fader", "-3", "-12.5", "DSP*gain", "-12.5"},
    {"Value", "-3", "4", "DSP*gain", "4"},
    {"Polarity", "0", "1", "DSP*polarity", "1"},
    {"Delay", "2.5 ms", "3,5 m", "DSP*delay", "0,3.5 m"},
    {"MUTE", "0", "1", "DSP*mute", "1"},
    {"Level", "-20"},
};
constexpr Held CHANNEL[] = {
    {"Fader", "-3", "-12.5", "MIX*level", "-12.5"},
    {"Value", "-3", "4", "MIX*level", "4"},
    {"PRIO", "0", "1", "MIX*priority", "1"},
    {"FREEZE GAIN", "1", "0", "MIX*freeze", "0"},
    {"MUTE", "0", "1", "MIX*mute", "1"},
    {"Weight", "2", "-4.5", "MIX*weight", "-4.5"},
    {"Threshold", "-40", "-33", "MIX*threshold", "-33"},
    {"Hold", "300", "1500", "MIX*hold", "1500"},
    {"VUMeterIn", "-24"},
    {"Gain", "-6.5"},
};

constexpr Held MONITOR[] = {
    {"Set1", "1"},
    {"Set3", "1", "3", "MON*speaker", "3"},
    {"Level", "-30", "-12.5", "MON*level", "-12.5"},
    {"DIM", "0", "1", "MON*dim", "1"},
    {"MONO", "1", "0", "MON*mono", "0"},
    {"MUTE", "0", "1", "MON*mute", "1"},
    {"TALK", "0"},
};

struct Kind {
    const char* className;
    SIZE size;
    const char* devices;
    const char* bound;
    std::span<const Held> held;
};
constexpr Kind KINDS[] = {
    {"CROSSOVER",
     {72, 252},
     "DSP*device=simulated\n"
     "DSP*filters=xoverfilters,,,LINK24,80 Hz,BUTT12,1200 Hz\n"
     "DSP*gain=float,-30,6,-3,dB\n"
     "DSP*polarity=integer,0,1,0\n"
     "DSP*delay=delay,,,0,2.5 ms\n"
     "DSP*mute=integer,0,1,0\n"
     "DSP*level=float,-80,18,-20,dB\n",
     "function=DSP*filters|function1=DSP*gain|function2=DSP*polarity|function3=DSP*delay|"
     "function4=DSP*mute|function5=DSP*level",
     WAY},
    {"AUTOMIXER",
     {64, 330},
     "MIX*device=simulated\n"
     "MIX*level=float,-80,10,-3,dB\n"
     "MIX*input=float,-80,18,-24,dB\n"
     "MIX*gain=float,-80,0,-6.5,dB\n"
     "MIX*priority=integer,0,1,0\n"
     "MIX*weight=float,-24,24,2,dB\n"
     "MIX*threshold=float,-80,0,-40,dB\n"
     "MIX*hold=float,0,10000,300,ms\n"
     "MIX*freeze=integer,0,1,1\n"
     "MIX*mute=integer,0,1,0\n",
     "function=MIX*level|function1=MIX*input|function2=MIX*gain|function3=MIX*priority|function4=MIX*weight|"
     "function5=MIX*threshold|function6=MIX*hold|function7=MIX*freeze|function8=MIX*mute",
     CHANNEL},
    {"SPEAKERCONTROL",
     {100, 64},
     "MON*device=simulated\n"
     "MON*speaker=integer,0,8,1\n"
     "MON*level=float,-80,10,-30,dB\n"
     "MON*dim=integer,0,1,0\n"
     "MON*mono=integer,0,1,1\n"
     "MON*mute=integer,0,1,0\n"
     "MON*talk=integer,0,1,0\n",
     "speakers=Main;Near;Mono|function=MON*speaker|function1=MON*level|function2=MON*dim|"
     "function3=MON*mono|function4=MON*mute|function5=MON*talk",
     MONITOR},
};
constexpr const Kind& CROSSOVER = KINDS[0];
constexpr const Kind& AUTOMIXER = KINDS[1];
constexpr const Kind& SPEAKERS = KINDS[2];

// A strip whose devices are there.
struct BoundStrip {
    explicit BoundStrip(const Kind& ofKind, TestPanel::Visibility visibility = TestPanel::Hidden)
        : kind(ofKind), panel(visibility) {
        panel.Declare(kind.devices);
        window = panel.Create(kind.className, "Strip");
        LoadLines(window, kind.bound);
    }

    HWND Child(const char* name) const { return panel.Find((std::string("Strip*") + name).c_str()); }
    void PollAll() const {
        ::Poll(panel.Find("Strip")); // loaded again, perhaps
        for (const Held& held : kind.held) {
            ::Poll(Child(held.child));
        }
    }
    void CheckShown() const {
        for (const Held& held : kind.held) {
            INFO(std::string(held.child));
            CHECK(Text(Child(held.child), "value") == held.shown);
        }
    }
    void CheckSending() const {
        for (const Held& held : kind.held) {
            INFO(std::string(held.child));
            if (held.set != nullptr) {
                CHECK(::Load(Child(held.child), std::string("value=") + held.set) == 1);
                CHECK(panel.Parameter(held.parameter) == held.sent);
            }
        }
    }
    void Load(const char* child, const std::string& line) const { ::Load(Child(child), line); }

    const Kind& kind;
    TestPanel panel;
    HWND window;
};

// Whether the line in the status bar says so.
bool IsLost(HWND control) {
    char text[TEXT_SIZE] = "";
    ObjectOf(control).OnGetTooltip(0, reinterpret_cast<LPARAM>(text));
    return std::string_view(text).ends_with(')');
}

// What the device of a strip holds, by parameter.
std::string HeldBy(const BoundStrip& strip) {
    std::string all;
    for (const Held& held : strip.kind.held) {
        all += held.parameter != nullptr ? strip.panel.Parameter(held.parameter) + "|" : "";
    }
    return all;
}

// A control that is told anything of a strip, and then destroys it.
class Destroyer : public Recorder {
public:
    Destroyer(const TestPanel& panel, HWND& strip) : Recorder(panel, "Target"), strip_(strip) {}
    LRESULT OnMessage(WPARAM wParam, LPARAM lParam) override {
        const auto& record = *reinterpret_cast<const VALUERECORD*>(lParam);
        if (record.command == COMMAND_SET) {
            ++told;
            DestroyWindow(strip_);
            return 1;
        }
        return record.command == COMMAND_GET ? 0 : Recorder::OnMessage(wParam, lParam);
    }
    int told = 0;

private:
    HWND& strip_;
};

} // namespace

TEST_CASE("children show what the devices hold, and each sends its part, from a file as well") {
    for (const Kind& kind : KINDS) {
        INFO(std::string(kind.className));
        std::string saved;
        {
            const TraceCapture trace;
            const BoundStrip strip(kind);
            CHECK(trace.All() == "");
            const RECT& place = ObjectOf(strip.window).rectangle;
            CHECK(place.right - place.left == kind.size.cx);
            CHECK(place.bottom - place.top == kind.size.cy);
            strip.PollAll();
            strip.CheckShown();
            strip.Load("Label", "caption=Low");
            saved = strip.panel.Saved();
            strip.CheckSending();
            strip.PollAll();
            for (const Held& held : kind.held) { // in what the device says
                CHECK_FALSE(IsLost(strip.Child(held.child)));
            }
        }
        const BoundStrip strip(kind);
        DestroyWindow(strip.window);
        const TraceCapture trace;
        CHECK(strip.panel.Open(saved) == 1);
        CHECK(trace.All() == "");
        CHECK(strip.panel.Saved() == saved);
        const std::string before = HeldBy(strip);
        strip.PollAll();
        strip.CheckShown();
        CHECK(HeldBy(strip) == before);
        strip.CheckSending();
    }
}

TEST_CASE("a device that goes is shown by every child, which sends nothing, and comes back") {
    for (const Kind& kind : KINDS) {
        INFO(std::string(kind.className));
        const BoundStrip strip(kind);
        strip.PollAll();
        const std::string before = HeldBy(strip);
        const std::string device(kind.devices, 3);
        for (const bool isThere : {true, false, true}) {
            INFO(isThere);
            ph_SetParameter(strip.panel.Root(), (device + "*online").c_str(), isThere ? "1" : "0");
            strip.PollAll();
            CHECK(IsLost(strip.window) == !isThere);
            for (const Held& held : kind.held) {
                INFO(std::string(held.child));
                CHECK(IsLost(strip.Child(held.child)) == !isThere);
                if (!isThere && held.set != nullptr) {
                    strip.Load(held.child, std::string("value=") + held.set);
                }
            }
        }
        CHECK(HeldBy(strip) == before);
        strip.CheckShown();
    }
}

TEST_CASE("a strip that is destroyed by what its child sends leaves nothing") {
    for (const Kind& kind : KINDS) {
        for (const Held& held : kind.held) {
            if (held.set == nullptr) {
                continue;
            }
            INFO(std::string(kind.className), " ", std::string(held.child));
            const TestPanel panel;
            HWND strip = panel.Create(kind.className, "Strip");
            Destroyer target(panel, strip);
            std::string bound = kind.bound; // each function to the one target
            for (std::size_t i = 0; (i = bound.find('=', i)) != std::string::npos; ++i) {
                bound.replace(i + 1, bound.find('|', i) - i - 1, "Target");
            }
            LoadLines(strip, bound);
            HWND child = panel.Find((std::string("Strip*") + held.child).c_str());
            Load(child, std::string("value=") + (held.shown == std::string_view("1") ? "1" : held.set));
            CHECK(target.told == 1);
            CHECK_FALSE(IsWindow(child));
            CHECK_FALSE(IsWindow(strip));
        }
    }
}

TEST_CASE("what stays the same is not painted again") {
    for (const Kind& kind : KINDS) {
        INFO(std::string(kind.className));
        const BoundStrip strip(kind, TestPanel::Visible);
        std::vector<HWND> windows = ChildrenOf(strip.window);
        windows.push_back(strip.window);
        strip.PollAll();
        strip.PollAll();
        for (HWND window : windows) {
            UpdateWindow(window);
        }
        strip.PollAll();
        for (HWND window : windows) {
            INFO(ObjectOf(strip.window).name);
            CHECK(GetUpdateRect(window, nullptr, FALSE) == 0);
        }
    }
}

// Crossover

TEST_CASE("what cannot be read as a corner or a delay goes nowhere") {
    const BoundStrip strip(CROSSOVER);
    strip.PollAll();
    const std::string before = HeldBy(strip);
    for (const char* text : {"loud", "", "5 s, 3"}) {
        for (const char* child : {"HpFreq", "Delay"}) {
            strip.Load(child, std::string("value=") + text);
            Poll(strip.Child(child));
        }
        strip.CheckShown(); // again
    }
    CHECK(HeldBy(strip) == before);
    strip.Load("Delay", "value=off");
    CHECK(strip.panel.Parameter("DSP*delay") == "1,2.5 ms");
}

TEST_CASE("a double click on the label bypasses both filters, another one brings them back") {
    const BoundStrip strip(CROSSOVER, TestPanel::Visible);
    const auto press = [&](const char* child) {
        SendMessageA(strip.Child(child), WM_LBUTTONDOWN, MK_LBUTTON, At(2, 2));
    };
    const auto filters = [&] { return strip.panel.Parameter("DSP*filters"); };
    const std::string before = filters();
    const std::string after = "OFF,80 Hz,OFF,1200 Hz";
    press("Label");
    press("Scale"); // another child
    CHECK(filters() == before);
    press("Label");
    CHECK(filters() == after);
    CHECK(Text(strip.window, "bypass") == "1");
    press("Label"); // the first of two
    CHECK(filters() == after);
    press("Label");
    CHECK(filters() == before);
    ph_SetMode(strip.panel.Root(), 1); // the panel's
    press("Label");
    press("Label");
    CHECK(filters() == before);
}

// Automatic mixer

TEST_CASE("the settings of an automatic mixer stand in the place of its fader, and are saved so") {
    const BoundStrip strip(AUTOMIXER, TestPanel::Visible);
    const auto shown = [](const BoundStrip& of) {
        std::string names;
        for (const char* name : {"Fader", "Scale", "Weight", "Threshold", "Hold", "Value"}) {
            names += IsShown(of.Child(name)) ? std::string(name) + " " : "";
        }
        return names;
    };
    CHECK(shown(strip) == "Fader Scale Value ");
    strip.Load("ADVANCED", "value=1");
    CHECK(shown(strip) == "Weight Threshold Hold Value ");
    CHECK(Text(strip.window, "advanced") == "1");
    const std::string saved = strip.panel.Saved();
    CHECK(saved.find("Strip*advanced=1\r\n") != std::string::npos);
    DestroyWindow(strip.window);
    CHECK(strip.panel.Open(saved) == 1);
    CHECK(shown(strip) == "Weight Threshold Hold Value ");
    Poll(strip.Child("ADVANCED"));
    CHECK(Text(strip.Child("ADVANCED")) == "1");
    Load(strip.panel.Find("Strip"), "advanced=0");
    Poll(strip.Child("ADVANCED"));
    CHECK(Text(strip.Child("ADVANCED")) == "0");
    CHECK(shown(strip) == "Fader Scale Value ");
}

TEST_CASE("what a device holds that is no state or no number is shown by the child that has it") {
    const BoundStrip strip(AUTOMIXER);
    strip.panel.Declare("MIX*priority=integer,0,9,5\n");
    strip.PollAll();
    for (const Held& held : CHANNEL) {
        INFO(std::string(held.child));
        CHECK(IsLost(strip.Child(held.child)) == (held.child == std::string_view("PRIO")));
    }
    CHECK(strip.panel.Parameter("MIX*priority") == "5");
    for (const char* line : {"value=nan", "weighting=inf", "holdtime=loud", "input=-3", "share=-3"}) {
        CHECK(Load(strip.window, line) == 0);
    }
    strip.PollAll();
    CHECK(strip.panel.Parameter("MIX*level") == "-3");
    CHECK(Load(strip.window, "value=99") == 1);
    CHECK(strip.panel.Parameter("MIX*level") == "10");
}

// Loudspeakers

namespace {

void Push(const BoundStrip& strip, const char* child, bool isDown = true) {
    HWND window = strip.Child(child);
    SetFocus(window);
    SendMessageA(window, isDown ? WM_KEYDOWN : WM_KEYUP, VK_SPACE, 1);
}

} // namespace

TEST_CASE("where no device dims the level is lowered once, and comes back as it was") {
    const BoundStrip strip(SPEAKERS, TestPanel::Visible);
    const auto level = [&] { return strip.panel.Parameter("MON*level"); };
    LoadLines(strip.window, "function2=");
    strip.PollAll();
    strip.Load("DIM", "value=1");
    CHECK(level() == "-50");
    strip.PollAll();
    CHECK(Value(strip.Child("Level")) == -30);
    CHECK(Text(strip.Child("DIM")) == "1");
    Push(strip, "TALK");
    CHECK(strip.panel.Parameter("MON*talk") == "1");
    CHECK(level() == "-50"); // once
    strip.Load("DIM", "value=0");
    CHECK(level() == "-50");
    Push(strip, "TALK", false);
    CHECK(strip.panel.Parameter("MON*talk") == "0");
    CHECK(level() == "-30");
    LoadLines(strip.window, "talkdim=0");
    Push(strip, "TALK");
    CHECK(level() == "-30");
    Push(strip, "TALK", false);

    strip.Load("Level", "value=-70"); // dimmed, it is below what there is
    strip.Load("DIM", "value=1");
    CHECK(level() == "-80");
    strip.PollAll();
    CHECK(Value(strip.Child("Level")) == -70);
    strip.Load("Level", "value=-75");
    CHECK(level() == "-80");
    LoadLines(strip.window, "dim=-10"); // from the next time on
    strip.Load("DIM", "value=0");
    CHECK(level() == "-75");
    strip.Load("Level", "value=0");
    strip.Load("DIM", "value=1");
    CHECK(level() == "-10");
    ph_SetParameter(strip.panel.Root(), "MON*level", "-18"); // by somebody who hears it
    strip.PollAll();
    CHECK(Text(strip.Child("DIM")) == "0");
    CHECK(Value(strip.Child("Level")) == -18);
    strip.Load("DIM", "value=0");
    CHECK(level() == "-18");
}

TEST_CASE("what cannot be dimmed is not, and is never louder afterwards") {
    const BoundStrip strip(SPEAKERS);
    LoadLines(strip.window, "function2=");
    strip.PollAll();
    const auto setOnline = [&](const char* isThere) {
        ph_SetParameter(strip.panel.Root(), "MON*online", isThere);
        strip.PollAll();
    };
    setOnline("0");
    strip.Load("DIM", "value=1");
    setOnline("1");
    CHECK(strip.panel.Parameter("MON*level") == "-30");
    CHECK(Text(strip.Child("DIM")) == "0");
    strip.Load("DIM", "value=1");
    setOnline("0");
    strip.Load("DIM", "value=0");
    setOnline("1");
    CHECK(strip.panel.Parameter("MON*level") == "-50");
    CHECK(Text(strip.Child("DIM")) == "1");
    strip.Load("DIM", "value=0");
    CHECK(strip.panel.Parameter("MON*level") == "-30");
}

TEST_CASE("a talkback dims where a device does it, and its end arrives") {
    const BoundStrip strip(SPEAKERS, TestPanel::Visible);
    strip.PollAll();
    const auto held = [&] { return strip.panel.Parameter("MON*talk") + strip.panel.Parameter("MON*dim"); };
    Push(strip, "TALK");
    strip.PollAll();
    CHECK(held() == "11");
    CHECK(Text(strip.Child("DIM")) == "0");
    ph_SetParameter(strip.panel.Root(), "MON*online", "0");
    Push(strip, "TALK", false);
    ph_SetParameter(strip.panel.Root(), "MON*online", "1");
    CHECK(Await([&] {
        strip.PollAll();
        ph_Tick(strip.panel.Root());
        return held() == "00";
    }));
    Push(strip, "TALK");
    CHECK(strip.panel.Parameter("MON*talk") == "1");
    DestroyWindow(strip.window);
    CHECK(held() == "00");
}

TEST_CASE("there is a button for each set of loudspeakers, in a window of any size") {
    const BoundStrip strip(SPEAKERS, TestPanel::Visible);
    const auto shown = [&] {
        int count = 0;
        for (int i = 1; i <= 8; ++i) {
            count += IsShown(strip.Child(("Set" + std::to_string(i)).c_str())) ? 1 : 0;
        }
        return count;
    };
    CHECK(shown() == 3);
    CHECK(Load(strip.window, "speakers=1;2;3;4;5;6;7;8;9") == 0);
    CHECK(Load(strip.window, "speakers=A; B;C;D;E;F;G;H") == 1);
    CHECK(Text(strip.window, "speakers") == "A;B;C;D;E;F;G;H");
    CHECK(shown() == 8);
    CHECK(Text(strip.Child("Set2"), "caption") == "B");
    SetWindowPos(strip.window, nullptr, 0, 0, 400, 300, SWP_NOMOVE | SWP_NOZORDER);
    std::vector<RECT> places;
    for (HWND child : ChildrenOf(strip.window)) {
        RECT place;
        GetWindowRect(child, &place);
        MapWindowPoints(nullptr, strip.window, reinterpret_cast<POINT*>(&place), 2);
        INFO(ObjectOf(child).name);
        CHECK(place.left >= 4);
        CHECK(place.top >= 4);
        CHECK(place.right <= 396);
        CHECK(place.bottom <= 296);
        for (const RECT& other : places) {
            RECT common;
            CHECK_FALSE(IntersectRect(&common, &place, &other));
        }
        places.push_back(place);
    }
    CHECK(Load(strip.window, "speakers=") == 1);
    CHECK(shown() == 0);
    CHECK(Load(strip.window, "value=3") == 1); // none is left
    CHECK(strip.panel.Parameter("MON*speaker") == "0");
}

TEST_CASE("the panel of the strips is live") {
    const TestPanel panel(TestPanel::Visible);
    REQUIRE(ph_LoadDevices(panel.Root(), (ProgramFolder() + "Strips.devices").c_str()) == 3);
    REQUIRE(ph_LoadPanel(panel.Root(), (ProgramFolder() + "Strips.panel").c_str()) == 21);
    CHECK(a_LoadErrorCount(panel.Root()) == 0);
    const auto becomes = [&](const char* control, const std::string& text) {
        return Await(
            [&] {
                PumpAll();
                ph_Tick(panel.Root());
                return Text(panel.Find(control), "value").find(text) != std::string::npos;
            },
            30'000);
    };
    CHECK(becomes("Low*HpType", "BUTT24"));
    CHECK(becomes("High*Delay", "0.35 ms"));
    CHECK(Load(panel.Find("Curves"), "value=;BESS24,900 Hz") == 1);
    CHECK(becomes("High*HpType", "BESS24"));
    CHECK(becomes("High*HpFreq", "900 Hz"));
    CHECK(becomes("High*Level", "-1"));
    Load(panel.Find("High*MUTE"), "value=1");
    CHECK(becomes("High*Level", "-60"));
    // The chair talks and comes before the others, then one of them has all of the gain.
    const auto gets = [&](const char* control, float value) {
        return Await(
            [&] {
                PumpAll();
                ph_Tick(panel.Root());
                return Value(panel.Find(control)) == value;
            },
            30'000);
    };
    CHECK(gets("Chair*PRIO", 1));
    CHECK(gets("Chair*VUMeterIn", -20));
    CHECK(gets("Chair*Gain", 0));
    CHECK(gets("Talker1*Gain", -60));
    for (const char* other : {"Chair*MUTE", "Talker2*MUTE", "Talker3*MUTE"}) {
        Load(panel.Find(other), "value=1");
    }
    Load(panel.Find("Talker1*Threshold"), "value=-80");
    CHECK(gets("Chair*Gain", -60));
    CHECK(gets("Talker1*Gain", 0));
    // One of the loudspeakers plays.
    Load(panel.Find("Monitor*Set2"), "value=2");
    CHECK(gets("MAIN left", -60));
    CHECK(Await([&] {
        PumpAll();
        ph_Tick(panel.Root());
        return Value(panel.Find("NEAR left")) > -60;
    }));
    Load(panel.Find("Monitor*MUTE"), "value=1");
    CHECK(gets("NEAR left", -60));
}

TEST_SUITE_END();
