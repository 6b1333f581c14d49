#include "Panelhost/PropertyLines.h"
#include "Panelhost/Root.h"
#include "logic/controls/Crossover.h"
#include "tests/windows/FormPanels.h"

TEST_SUITE_BEGIN("CrossoverStrip");

namespace {

constexpr const char* DEVICES = "DSP*device=simulated\n"
                                "DSP*filters=xoverfilters,,,LINK24,80 Hz,BUTT12,1200 Hz\n"
                                "DSP*gain=float,-30,6,-3,dB\n"
                                "DSP*polarity=integer,0,1,0\n"
                                "DSP*delay=delay,,,0,2.5 ms\n"
                                "DSP*mute=integer,0,1,0\n"
                                "DSP*level=float,-80,18,-20,dB\n";
constexpr const char* BOUND = "function=DSP*filters|function1=DSP*gain|function2=DSP*polarity|"
                              "function3=DSP*delay|function4=DSP*mute|function5=DSP*level";

HWND ChildOf(const TestPanel& panel, const char* name) {
    return panel.Find((std::string("Way*") + name).c_str());
}

struct Held {
    const char* child;
    const char* shown;
    const char* set; // by the child
    const char* parameter;
    const char* sent; // what the device then holds
};
constexpr Held HELD[] = {
    {"HpType", "LINK24", "BESS18", "DSP*filters", "BESS18,80 Hz,BUTT12,1200 Hz"},
    {"HpFreq", "80.0 Hz", "1k2", "DSP*filters", "BESS18,1200 Hz,BUTT12,1200 Hz"},
    {"LpType", "BUTT12", "BUTT6", "DSP*filters", "BESS18,1200 Hz,BUTT6,1200 Hz"},
    {"LpFreq", "1200 Hz", "50000", "DSP*filters", "BESS18,1200 Hz,BUTT6,20000 Hz"},
    {"Fader", "-3", "-12.5", "DSP*gain", "-12.5"},
    {"Value", "-3", "4", "DSP*gain", "4"},
    {"Polarity", "0", "1", "DSP*polarity", "1"},
    {"Delay", "2.5 ms", "3,5 m", "DSP*delay", "0,3.5 m"},
    {"MUTE", "0", "1", "DSP*mute", "1"},
};

// Whether the line in the status bar says so.
bool IsLost(HWND control) {
    char text[TEXT_SIZE] = "";
    ObjectOf(control).OnGetTooltip(0, reinterpret_cast<LPARAM>(text));
    return std::string_view(text).ends_with(')');
}

void PollAll(const TestPanel& panel) {
    Poll(panel.Find("Way"));
    for (const Held& held : HELD) {
        Poll(ChildOf(panel, held.child));
    }
    Poll(ChildOf(panel, "Level"));
}

} // namespace

TEST_CASE("children show what the devices hold, and each sends its part") {
    const TestPanel panel;
    panel.Declare(DEVICES);
    const TraceCapture trace;
    HWND strip = panel.Create("CROSSOVER", "Way");
    CHECK(trace.All() == "");
    CHECK(a_GetRectString(ObjectOf(strip).rectangle) == "10,20,82,272");
    LoadLines(strip, BOUND);
    PollAll(panel);
    CHECK(Value(ChildOf(panel, "Level")) == -20.0F);
    for (const Held& held : HELD) {
        INFO(std::string(held.child));
        HWND child = ChildOf(panel, held.child);
        CHECK(Text(child) == held.shown);
        CHECK(Load(child, std::string("value=") + held.set) == 1);
        CHECK(panel.Parameter(held.parameter) == held.sent);
    }
    PollAll(panel);
    CHECK(Text(ChildOf(panel, "Fader")) == "4");
    CHECK(Text(ChildOf(panel, "Delay")) == "3.5 m");

    // What cannot be read goes nowhere, and the child shows again what is held.
    for (const char* text : {"loud", "", "5 s, 3"}) {
        for (const char* child : {"HpFreq", "Delay"}) {
            Load(ChildOf(panel, child), std::string("value=") + text);
            Poll(ChildOf(panel, child));
        }
        CHECK(Text(ChildOf(panel, "HpFreq")) == "1200 Hz");
        CHECK(Text(ChildOf(panel, "Delay")) == "3.5 m");
    }
    Load(ChildOf(panel, "Delay"), "value=off");
    CHECK(panel.Parameter("DSP*delay") == "1,3.5 m");
    ph_SetParameter(panel.Root(), "DSP*mute", "0");
    PollAll(panel);
    CHECK(Text(strip) == "0");
    CHECK(Text(ChildOf(panel, "MUTE")) == "0");
}

TEST_CASE("a double click on the label bypasses both filters, another one brings them back") {
    const TestPanel panel(TestPanel::Visible);
    panel.Declare(DEVICES);
    HWND strip = panel.Create("CROSSOVER", "Way");
    LoadLines(strip, BOUND);
    const auto press = [&](const char* child) {
        SendMessageA(ChildOf(panel, child), WM_LBUTTONDOWN, MK_LBUTTON, At(2, 2));
    };
    const std::string before = panel.Parameter("DSP*filters");
    const std::string after = "OFF,80 Hz,OFF,1200 Hz";
    press("Label");
    press("Scale"); // another child
    CHECK(panel.Parameter("DSP*filters") == before);
    press("Label");
    CHECK(panel.Parameter("DSP*filters") == after);
    CHECK(Text(strip, "bypass") == "1");
    press("Label"); // the first of two
    CHECK(panel.Parameter("DSP*filters") == after);
    press("Label");
    CHECK(panel.Parameter("DSP*filters") == before);
    ph_SetMode(panel.Root(), 1); // the panel's
    press("Label");
    press("Label");
    CHECK(panel.Parameter("DSP*filters") == before);
}

TEST_CASE("a device that goes is shown by every child, which sends nothing, and comes back") {
    const TestPanel panel;
    panel.Declare(DEVICES);
    HWND strip = panel.Create("CROSSOVER", "Way");
    LoadLines(strip, BOUND);
    PollAll(panel);
    for (const bool isThere : {true, false, true}) {
        INFO(isThere);
        ph_SetParameter(panel.Root(), "DSP*online", isThere ? "1" : "0");
        PollAll(panel);
        CHECK(IsLost(strip) == !isThere);
        CHECK(IsLost(ChildOf(panel, "Level")) == !isThere);
        for (const Held& held : HELD) {
            INFO(std::string(held.child));
            CHECK(IsLost(ChildOf(panel, held.child)) == !isThere);
            if (!isThere) {
                Load(ChildOf(panel, held.child), std::string("value=") + held.set);
            }
        }
    }
    CHECK(panel.Parameter("DSP*filters") == "LINK24,80 Hz,BUTT12,1200 Hz");
    for (const Held& held : HELD) {
        CHECK(Text(ChildOf(panel, held.child)) == held.shown);
    }
}

TEST_CASE("a strip that is destroyed by what its child sends leaves nothing") {
    for (const Held& held : HELD) {
        INFO(std::string(held.child));
        const TestPanel panel;
        HWND strip = panel.Create("CROSSOVER", "Way");
        std::vector<std::string> sent;
        ValueTarget<logic::CrossoverFilters> filters{panel, "Filters", DATATYPE_CROSSOVER,
                                                     [](const auto&) { return std::string(); }, sent};
        ValueTarget<float> gain{panel, "Gain", DATATYPE_FLOAT, [](const auto&) { return std::string(); },
                                sent};
        ValueTarget<logic::DelaySetting> delay{panel, "Delay", DATATYPE_DELAY,
                                               [](const auto&) { return std::string(); }, sent};
        ValueTarget<int> numbers{panel, "Numbers", DATATYPE_INTEGER,
                                 [](const auto&) { return std::string(); }, sent};
        for (Recorder* target : std::initializer_list<Recorder*>{&filters, &gain, &delay, &numbers}) {
            target->onSet = [&] { DestroyWindow(strip); };
        }
        LoadLines(strip,
                  "function=Filters|function1=Gain|function2=Numbers|function3=Delay|function4=Numbers");
        HWND child = ChildOf(panel, held.child);
        Load(child, std::string("value=") + held.set);
        CHECK(sent.size() == 1);
        CHECK_FALSE(IsWindow(child));
        CHECK_FALSE(IsWindow(strip));
    }
}

TEST_CASE("a strip is saved with what was set inside it, and restored") {
    std::string saved;
    {
        const TestPanel panel;
        HWND strip = panel.Create("CROSSOVER", "Way");
        LoadLines(strip, BOUND);
        Load(ChildOf(panel, "Label"), "caption=Low");
        saved = panel.Saved();
    }
    const TestPanel panel;
    const TraceCapture trace;
    panel.Declare(DEVICES);
    CHECK(panel.Open(saved) == 1);
    CHECK(trace.All() == "");
    CHECK(panel.Saved() == saved);
    PollAll(panel);
    CHECK(Text(ChildOf(panel, "HpFreq")) == "80.0 Hz");
    CHECK(panel.Parameter("DSP*filters") == "LINK24,80 Hz,BUTT12,1200 Hz");
}

TEST_CASE("the panel of the strips is live") {
    const TestPanel panel(TestPanel::Visible);
    REQUIRE(ph_LoadDevices(panel.Root(), (ProgramFolder() + "Strips.devices").c_str()) == 1);
    REQUIRE(ph_LoadPanel(panel.Root(), (ProgramFolder() + "Strips.panel").c_str()) == 4);
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
}

TEST_SUITE_END();
