// What is particular to the spin edit.

#include "tests/windows/Buttons.h"
#include "tests/windows/HeldKeys.h"

#include <commctrl.h>

TEST_SUITE_BEGIN("SpinEdit");

namespace {

constexpr const char* DEVICES = "AMP1*device=simulated\nAMP1*gain=float,-80,18,-20,dB\n";
constexpr COLORREF REFUSED = RGB(255, 188, 176);

// A field for a number of a device, with its children.
struct Fixture {
    Fixture() {
        panel.Declare(DEVICES);
        CHECK(LoadLines(spin, "properties=-60,12,-20|fmt=%.1f|unit=dB|function=AMP1*gain"));
        Poll(spin);
    }
    std::string Gain() const { return panel.Parameter("AMP1*gain"); }
    void Type(const char* text) const {
        SetFocus(spin);
        for (; *text != '\0'; ++text) { // over what is selected
            SendMessageA(field, WM_CHAR, static_cast<unsigned char>(*text), 1);
        }
    }
    void Press(WPARAM key) const {
        SendMessageA(field, WM_KEYDOWN, key, 1);
        SendMessageA(field, WM_CHAR, key, 1);
        PumpAll();
    }
    void Mouse(UINT message, int y) const {
        SendMessageA(arrows, message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, At(5, y));
        PumpAll();
    }
    bool IsRefused() const {
        const HDC dc = CreateCompatibleDC(nullptr);
        SendMessageA(spin, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(field));
        const COLORREF ground = GetBkColor(dc);
        DeleteDC(dc);
        CHECK((Picture(spin).At(1, 1) == REFUSED) == (ground == REFUSED));
        return ground == REFUSED;
    }

    TestPanel panel{TestPanel::Visible};
    HWND spin = panel.Create("SPINEDIT", "Spin");
    HWND field = FindWindowExA(spin, nullptr, "EDIT", nullptr);
    HWND arrows = FindWindowExA(spin, nullptr, UPDOWN_CLASSA, nullptr);
};

} // namespace

TEST_CASE_FIXTURE(Fixture, "what is typed is taken, or stays marked beside the old value") {
    CHECK(TextOf(field) == "-20.0 dB");
    const struct {
        const char* typed;
        const char* shown;
        const char* gain;
    } rows[] = {{"-6,25", "-6.2 dB", "-6.25"}, {"-3 dB", "-3.0 dB", "-3"}, {"0.005k", "5.0 dB", "5"}};
    for (const auto& row : rows) {
        CAPTURE(row.typed);
        Type(row.typed);
        CHECK(Gain() != row.gain);
        Press(VK_RETURN);
        CHECK(TextOf(field) == row.shown);
        CHECK(Gain() == row.gain);
        CHECK_FALSE(IsRefused());
    }
    for (const char* typed : {"loud", "13", "5 ms", "1.2.3"}) {
        CAPTURE(typed);
        Type(typed);
        Press(VK_RETURN);
        CHECK(TextOf(field) == typed); // to be corrected
        CHECK(IsRefused());
        CHECK(Gain() == "5");
        SendMessageA(field, EM_SETSEL, 9, 9);
        SendMessageA(field, WM_CHAR, '0', 1);
        CHECK_FALSE(IsRefused());
        SendMessageA(field, WM_KEYDOWN, VK_UP, 1); // from what is typed
        CHECK(IsRefused());
        Press(VK_ESCAPE);
        CHECK(TextOf(field) == "5.0 dB");
        CHECK_FALSE(IsRefused());
    }
    Type("loud");
    SetFocus(panel.Window());
    CHECK(TextOf(field) == "5.0 dB");
    CHECK(IsRefused()); // that it was not taken can still be seen
    SetValue(spin, 6.0F);
    CHECK_FALSE(IsRefused());
    Type("7");
    SetFocus(panel.Window());
    CHECK(Gain() == "7");
    // What was typed is sent even when it is the old value, what was not typed is not.
    ph_SetParameter(panel.Root(), "AMP1*gain", "-1");
    SetFocus(spin);
    SetFocus(panel.Window());
    CHECK(Gain() == "-1");
    Type("7");
    Press(VK_RETURN);
    CHECK(Gain() == "7");
}

TEST_CASE_FIXTURE(Fixture, "polls and records leave a text alone that is being typed") {
    Type("-1");
    ph_SetParameter(panel.Root(), "AMP1*gain", "3");
    Poll(spin);
    CHECK(TextOf(field) == "-1");
    CHECK(Text(spin) == "3");
    SetValue(spin, 4.0F);
    CHECK(TextOf(field) == "-1");
    Press(VK_ESCAPE);
    CHECK(TextOf(field) == "4.0 dB");
    ph_SetParameter(panel.Root(), "AMP1*gain", "15"); // beyond what can be set here
    Poll(spin);
    CHECK(TextOf(field) == "15.0 dB");
}

TEST_CASE_FIXTURE(Fixture, "keys and the wheel step, unless the field is read-only") {
    LoadLines(spin, "resolution=0.5|value=1");
    const struct {
        WPARAM key;
        bool withControl;
        const char* gain;
    } rows[] = {{VK_UP, false, "1.5"}, {VK_PRIOR, false, "6.5"}, {VK_NEXT, false, "1.5"},
                {VK_DOWN, false, "1"}, {VK_HOME, false, "1"},    {VK_HOME, true, "12"},
                {VK_UP, false, "12"},  {VK_END, true, "-60"},    {VK_DOWN, false, "-60"}};
    for (const bool isReadOnly : {true, false}) {
        Load(spin, isReadOnly ? "readonly=1" : "readonly=0");
        CHECK((IsWindowEnabled(arrows) == 0) == isReadOnly);
        for (HWND target : {spin, field}) {
            SetValue(spin, 1.0F);
            for (const auto& row : rows) {
                CAPTURE(row.key);
                const HeldKeys held(row.withControl ? "Ctrl" : "");
                SendMessageA(target, WM_KEYDOWN, row.key, 1);
                CHECK(Gain() == (isReadOnly ? "1" : row.gain));
            }
        }
        SetValue(spin, 1.0F);
        for (HWND target : {spin, field, arrows}) {
            SendMessageA(target, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
            CHECK(Gain() == (isReadOnly ? "1" : "1.5"));
            SendMessageA(target, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-120)), 0);
            CHECK(Gain() == "1");
            SendMessageA(target, WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, 120), 0);
            CHECK(Gain() == (isReadOnly ? "1" : "1.05"));
            SendMessageA(target, WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, static_cast<WORD>(-120)), 0);
            CHECK(Gain() == "1");
        }
    }
    Type("2,25");
    SendMessageA(field, WM_KEYDOWN, VK_UP, 1);
    CHECK(Gain() == "2.75");
}

TEST_CASE_FIXTURE(Fixture,
                  "an arrow steps, repeats while it is held, and turns the value when it is dragged") {
    RECT area;
    GetClientRect(arrows, &area);
    const int up = area.bottom / 4;
    const int down = area.bottom - 1 - up;
    const auto pointAt = [&](int y) {
        POINT place{5, y};
        MapWindowPoints(arrows, panel.Window(), &place, 1);
        MoveCursor(panel, place.x, place.y);
    };
    pointAt(up);
    Mouse(WM_LBUTTONDOWN, up);
    Mouse(WM_LBUTTONUP, up);
    CHECK(Gain() == "-19");
    CHECK(GetFocus() == field);
    pointAt(down);
    Mouse(WM_LBUTTONDOWN, down);
    CHECK(Gain() == "-20");
    CHECK(Await([&] { return Value(spin) <= -25.0F; })); // held
    Mouse(WM_LBUTTONUP, down);

    SetValue(spin, -20.0F);
    Mouse(WM_LBUTTONDOWN, up);
    Mouse(WM_MOUSEMOVE, up - 3);
    CHECK(Gain() == "-19");
    Mouse(WM_MOUSEMOVE, up - 10);
    CHECK(Gain() == "-14");
    ph_SetParameter(panel.Root(), "AMP1*gain", "3");
    Poll(spin);
    CHECK(Text(spin) == "-14"); // the hand has it
    Mouse(WM_MOUSEMOVE, up + 200);
    CHECK(Gain() == "-60");
    Mouse(WM_LBUTTONUP, up);
    CHECK(GetCapture() == nullptr);
    Mouse(WM_MOUSEMOVE, up - 100);
    CHECK(Gain() == "-60");

    Mouse(WM_LBUTTONDOWN, up);
    Mouse(WM_MOUSEMOVE, up - 4);
    CHECK(Gain() == "-57");
    SetCapture(panel.Window()); // somebody else takes it
    Mouse(WM_MOUSEMOVE, up - 40);
    ReleaseCapture();
    CHECK(Gain() == "-57");
}

TEST_CASE_FIXTURE(Fixture, "a control that ends by what it sends is touched no more") {
    for (int way = 0; way < 5; ++way) {
        CAPTURE(way);
        const TestPanel ending(TestPanel::Visible);
        Recorder recorder(ending, "Recorder");
        HWND control = ending.Create("SPINEDIT", "Spin");
        Load(control, "connection=Recorder");
        HWND inner = FindWindowExA(control, nullptr, "EDIT", nullptr);
        HWND spinner = FindWindowExA(control, nullptr, UPDOWN_CLASSA, nullptr);
        recorder.onSet = [&] { DestroyWindow(control); };
        SetFocus(control);
        if (way < 2) {
            SendMessageA(inner, WM_CHAR, '7', 1);
            if (way == 0) {
                SendMessageA(inner, WM_KEYDOWN, VK_RETURN, 1);
            } else {
                SetFocus(ending.Window());
            }
        } else if (way == 2) {
            SendMessageA(inner, WM_KEYDOWN, VK_UP, 1);
        } else {
            SendMessageA(spinner, WM_LBUTTONDOWN, MK_LBUTTON, At(5, 5));
            if (way == 3) { // before its press is answered
                SendMessageA(spinner, WM_MOUSEMOVE, MK_LBUTTON, At(5, -20));
            }
        }
        PumpAll();
        CHECK_FALSE(IsWindow(control));
    }
}

TEST_CASE_FIXTURE(Fixture, "the children are the panel's while it is edited, and of any size") {
    MSG posted;
    ph_SetMode(panel.Root(), 1);
    for (HWND child : {field, arrows}) {
        SendMessageA(child, WM_LBUTTONDOWN, MK_LBUTTON, At(2, 2));
        CHECK(TakePosted(panel.Window(), WM_LBUTTONDOWN, posted));
        SendMessageA(child, WM_KEYDOWN, VK_UP, 1);
        CHECK(TakePosted(panel.Window(), WM_KEYDOWN, posted));
        SendMessageA(child, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    }
    CHECK(Gain() == "-20");
    ph_SetMode(panel.Root(), 0);
    for (HWND child : {field, arrows}) {
        SendMessageA(child, WM_MOUSEMOVE, 0, At(2, 2));
        CHECK(TakePosted(panel.Window(), WM_MOUSEMOVE, posted)); // the status bar shows what it is
        SendMessageA(child, WM_RBUTTONDOWN, MK_RBUTTON, At(2, 2));
        CHECK(TakePosted(panel.Window(), WM_RBUTTONDOWN, posted));
    }
    for (const auto& [width, height] : {std::pair(0, 0), {1, 1}, {4000, 1}, {1, 4000}, {80, 24}}) {
        SetWindowPos(spin, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
        const Picture picture(spin);
    }
    RECT place;
    GetWindowRect(field, &place);
    const LONG width = place.right - place.left;
    CHECK(width == 80 - 2 - 16);
    ph_SetParameter(panel.Root(), "AMP1*online", "0");
    CHECK(IsMarked(spin));
    GetWindowRect(field, &place);
    CHECK(place.right - place.left < width - 10); // the sign has room
    ph_SetParameter(panel.Root(), "AMP1*online", "1");
    CHECK_FALSE(IsMarked(spin));
    GetWindowRect(field, &place);
    CHECK(place.right - place.left == width);
    Load(spin, "alignment=right");
    CHECK(LOWORD(SendMessageA(field, EM_POSFROMCHAR, 0, 0)) > 5);
    SetFocus(panel.Window());
    SetFocus(spin);
    CHECK(GetFocus() == field);
    CHECK(GetNextDlgTabItem(panel.Window(), field, FALSE) != field);
}

TEST_SUITE_END();
