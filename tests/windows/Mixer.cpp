#include "Panelhost/PropertyLines.h"
#include "tests/windows/Buttons.h"

TEST_SUITE_BEGIN("Mixer");

namespace {

constexpr COLORREF GROUND = RGB(153, 153, 153);
constexpr const char* DEVICES = "MIX*device=simulated\n"
                                "MIX*gain=float,-80,18,-20,dB\n"
                                "MIX*mute=integer,0,1,0\n";

struct Child {
    const char* name;
    const char* className;
    const char* place;
    bool isTabStop = true;
};
// Switches and faders take the size of their images.
constexpr Child CHILDREN[] = {
    {"MUTE", "BTRISTATEBUTTON", "11,87,37,103"}, {"INV", "BTRISTATEBUTTON", "11,49,37,65"},
    {"SOLO", "BTRISTATEBUTTON", "11,68,37,84"},  {"Fader", "FADER", "15,108,29,209"},
    {"Led0db", "LED", "35,119,43,127", false},   {"LedSig", "LED", "35,137,43,145", false},
    {"Value", "BEDIT", "9,215,39,230"},          {"Edit", "BEDIT", "4,236,44,251"},
    {"Label", "BSTATIC", "9,3,39,18", false},    {"Stereo", "FADER", "1,33,45,47"},
};

HWND ChildOf(const TestPanel& panel, const char* name) {
    return panel.Find((std::string("Strip1*") + name).c_str());
}

// The rows between top and bottom in which the column is not the ground.
int MarkedRows(HWND strip, int x, int top, int bottom) {
    const Picture picture(strip);
    int rows = 0;
    for (int y = top; y < bottom; ++y) {
        rows += picture.At(x, y) != GROUND ? 1 : 0;
    }
    return rows;
}

} // namespace

TEST_CASE("a strip makes its children and configures them") {
    const TestPanel panel;
    const TraceCapture trace;
    HWND strip = panel.Create("MIXER", "Strip1");
    CHECK(trace.All() == "");
    CHECK(a_GetRectString(ObjectOf(strip).rectangle) == "10,20,58,272");
    CHECK((GetWindowLongA(strip, GWL_EXSTYLE) & WS_EX_CONTROLPARENT) != 0); // for the Tab key
    for (const Child& expected : CHILDREN) {
        INFO(std::string(expected.name));
        HWND child = ChildOf(panel, expected.name);
        REQUIRE(child != nullptr);
        char className[64] = "";
        GetClassNameA(child, className, sizeof className);
        CHECK(className == std::string(expected.className));
        CHECK(GetParent(child) == strip);
        CHECK(a_GetRectString(ObjectOf(child).rectangle) == expected.place);
        CHECK(((GetWindowLongA(child, GWL_STYLE) & WS_TABSTOP) != 0) == expected.isTabStop);
        CHECK(IsShown(child) == (child != ChildOf(panel, "Stereo")));
    }
    CHECK(Picture(ChildOf(panel, "Fader")).At(6, 100) == GROUND); // beside its track

    // The value follows the fader, and the other way round.
    HWND fader = ChildOf(panel, "Fader");
    HWND value = ChildOf(panel, "Value");
    SetValue(fader, -12.5F);
    Poll(value);
    CHECK(Text(value) == "-12.5");
    Load(value, " =-30");
    CHECK(Value(fader) == -30.0F);
}

TEST_CASE("mode changes range and scale, once") {
    const TestPanel panel;
    HWND strip = panel.Create("MIXER", "Strip1");
    HWND fader = ChildOf(panel, "Fader");
    CHECK(Picture(strip).At(46, 100) == GROUND);
    CHECK(MarkedRows(strip, 26, 112, 212) == 5);
    Load(strip, "mode=output");
    CHECK(Text(fader, "properties") == "-80,18,0");
    CHECK(MarkedRows(strip, 26, 112, 212) == 6);

    Load(fader, "properties=-60,6");
    Load(strip, "mode=output"); // no change: the range stays as it was set
    CHECK(Text(fader, "properties").substr(0, 6) == "-60,6,");
    Load(strip, "mode=Input");
    CHECK(Text(fader, "properties").substr(0, 6) == "-80,0,");
}

TEST_CASE("stereo shows the pan fader and its scale") {
    const TestPanel panel;
    HWND strip = panel.Create("MIXER", "Strip1");
    HWND other = panel.Create("MIXER", "Strip2");
    HWND pan = ChildOf(panel, "Stereo");
    CHECK(Text(strip, "stereo") == "no");
    for (const char* text : {"yes", "Y", "no", "Yes", "maybe"}) {
        const bool shown = text[0] == 'y' || text[0] == 'Y';
        Load(strip, std::string("stereo=") + text);
        CHECK(Text(strip, "stereo") == (shown ? "yes" : "no"));
        CHECK(IsShown(pan) == shown);
        const Picture picture(strip);
        for (const int x : {5, 14, 23, 32, 41}) {
            CHECK((picture.At(x, 32) == RGB(0, 0, 0)) == shown);
        }
        CHECK(Picture(other).At(5, 32) == GROUND); // looks are shared, states are not
    }
}

TEST_CASE("what is bound to the strip goes through its fader") {
    const TestPanel panel;
    panel.Declare(DEVICES);
    HWND strip = panel.Create("MIXER", "Strip1");
    HWND fader = ChildOf(panel, "Fader");
    Load(strip, "function=MIX*gain");
    Poll(strip);
    CHECK(Value(fader) == -20.0F);
    SetValue(fader, -6.0F);
    CHECK(Text(strip, "value") == "-6");
    Poll(strip);
    CHECK(panel.Parameter("MIX*gain") == "-6");
    ph_SetParameter(panel.Root(), "MIX*gain", "10"); // beyond the input's range
    Poll(strip);
    CHECK(Value(fader) == 0.0F);
    Poll(strip);
    CHECK(panel.Parameter("MIX*gain") == "10"); // the limit is not forced upon the device
    SetCapture(fader);                          // it is being dragged
    ph_SetParameter(panel.Root(), "MIX*gain", "-30");
    Poll(strip);
    CHECK(Value(fader) == 0.0F);
    ReleaseCapture();
    Poll(strip);
    CHECK(Value(fader) == -30.0F);
    ph_SetParameter(panel.Root(), "MIX*online", "0");
    CHECK(IsMarked(strip));
}

TEST_CASE("a strip is saved with what was set inside it, and restored") {
    std::string saved;
    {
        const TestPanel panel;
        HWND strip = panel.Create("MIXER", "Strip1");
        LoadLines(strip, "mode=output|stereo=yes");
        LoadLines(ChildOf(panel, "Fader"), "function=MIX*gain|properties=-80,18,-7.5");
        Load(ChildOf(panel, "MUTE"), "function=MIX*mute");
        Load(ChildOf(panel, "Label"), "caption=Bass");
        SetWindowPos(ChildOf(panel, "LedSig"), nullptr, 36, 140, 8, 8, SWP_NOZORDER);
        saved = panel.Saved();
    }
    const TestPanel panel;
    const TraceCapture trace;
    panel.Declare(DEVICES);
    CHECK(panel.Open(saved) == 1);
    CHECK(trace.All() == "");
    CHECK(Value(ChildOf(panel, "Fader")) == -7.5F);
    CHECK(ObjectOf(ChildOf(panel, "LedSig")).rectangle.top == 140);
    CHECK(a_BuildString(ObjectOf(ChildOf(panel, "Value")).connections) == "%n*Fader");
    CHECK(panel.Parameter("MIX*gain") == "-20"); // it is not moved
    ph_SetParameter(panel.Root(), "MIX*mute", "1");
    Poll(ChildOf(panel, "MUTE"));
    CHECK(Text(ChildOf(panel, "MUTE")) == "1");
    CHECK(panel.Saved() == saved);
}

TEST_CASE("a child that goes first is missed by nobody") {
    const TestPanel panel(TestPanel::Visible);
    HWND strip = panel.Create("MIXER", "Strip1");
    DestroyWindow(ChildOf(panel, "Fader"));
    Load(strip, "mode=output");
    float level = 3.0F;
    CHECK(Send(strip, COMMAND_GET, DATATYPE_FLOAT, &level) == 0);
    Poll(strip);
}

TEST_SUITE_END();
