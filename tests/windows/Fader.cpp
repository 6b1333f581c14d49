// What is particular to the fader.

#include "tests/windows/Buttons.h"
#include "tests/windows/PartedImage.h"

#include <commctrl.h>
#include <cstdlib>

TEST_SUITE_BEGIN("Fader");

namespace {

constexpr unsigned TRACK = 0x203040; // 0xrrggbb
constexpr unsigned KNOB = 0xC08040;
constexpr COLORREF TRACK_COLOUR = RGB(0x20, 0x30, 0x40);
constexpr COLORREF KNOB_COLOUR = RGB(0xC0, 0x80, 0x40);
constexpr COLORREF SIGN_COLOUR = RGB(0xFF, 0xB0, 0x00); // of the not-equal sign
constexpr POINT ON_SIGN{3, 4};
constexpr const char* DEVICES = "AMP1*device=simulated\n"
                                "AMP1*gain=float,-200,200,-20,dB\n"
                                "AMP1*low=float,-30,-10,-20,dB\n"
                                "AMP1*high=float,-200,200,5,dB\n";

HWND CreateFader(const TestPanel& panel, int width, int height, const char* name = "Fader") {
    HWND fader = panel.Create("FADER", name);
    SetWindowPos(fader, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
    return fader;
}

float Gain(const TestPanel& panel, const char* address = "AMP1*gain") {
    return std::stof(panel.Parameter(address));
}

void Key(HWND fader, WPARAM key) {
    SendMessageA(fader, WM_KEYDOWN, key, 0);
}

// The first row of the knob in the picture of a fader without an image; -1 when it shows none.
int KnobTop(HWND fader) {
    const Picture picture(fader);
    for (int y = 0; picture.At(0, y) != CLR_INVALID; ++y) {
        if (picture.At(0, y) == RGB(234, 144, 3)) {
            return y;
        }
    }
    return -1;
}

bool ShowsNotEqual(HWND fader) {
    return Picture(fader).At(ON_SIGN.x, ON_SIGN.y) == SIGN_COLOUR;
}

// The tooltip window that is shown at the moment, if any.
HWND ShownTip() {
    HWND tip = nullptr;
    do {
        tip = FindWindowExA(nullptr, tip, TOOLTIPS_CLASSA, nullptr);
    } while (tip != nullptr && !IsWindowVisible(tip));
    return tip;
}

POINT OnScreen(HWND window, int x, int y) {
    POINT point{x, y};
    ClientToScreen(window, &point);
    return point;
}

// The border of a tooltip may lie outside.
bool IsAt(HWND tip, POINT expected) {
    RECT place;
    GetWindowRect(tip, &place);
    return std::abs(place.left - expected.x) <= 1 && std::abs(place.top - expected.y) <= 1;
}

} // namespace

TEST_CASE("values are answered and taken by the rules of their datatype") {
    const TestPanel panel;
    HWND fader = CreateFader(panel, 20, 200);
    LoadLines(fader, "properties=-80,20|resolution=.5");
    const struct {
        const char* value;
        LRESULT taken;
        const char* held;
        bool isMarked = false;
    } rows[] = {
        {"-3.26", 1, "-3.5"},   {"-3.4", 0, "-3.5"},     // the same step
        {"20.1", 1, "20"},                               // the nearest step is within
        {"21", 0, "20", true},                           // beyond the range
        {"nan", 0, "20", true}, {"3.5", 1, "3.5", true}, // until the next poll
    };
    for (const auto& row : rows) {
        CAPTURE(row.value);
        CHECK(SetValue(fader, std::strtof(row.value, nullptr)) == row.taken);
        CHECK(Text(fader) == row.held);
        CHECK(ShowsNotEqual(fader) == row.isMarked);
    }
    int whole = 50;
    CHECK(Send(fader, COMMAND_SET, DATATYPE_INTEGER, &whole) == 1);
    CHECK(Text(fader) == "20");
    char text[TEXT_SIZE] = "-90";
    CHECK(Send(fader, COMMAND_SET, DATATYPE_TEXT, text) == 1);
    CHECK(text == std::string("-80.000000")); // learns the limit
    panel.Declare(DEVICES);
    LoadLines(fader, "value=-80|function=AMP1*gain");
    // Any part of a range sends. A value stays as it is, even beyond the new range, until it is set or the
    // device holds another one.
    for (const auto& [line, sent] : {std::pair("properties=-60", -80.0F), {"properties=-60,6,3", 3.0F}}) {
        CHECK(Load(fader, line) == 1);
        Poll(fader);
        CHECK(Gain(panel) == sent);
        CHECK(Value(fader) == sent);
        CHECK(!ShowsNotEqual(fader));
    }
}

TEST_CASE("the knob lies where the value is, whatever changes") {
    const TestPanel panel;
    HWND fader = CreateFader(panel, 20, 200);
    Load(fader, "value=-80");
    CHECK(KnobTop(fader) == 178);
    SetWindowPos(fader, nullptr, 0, 0, 20, 102, SWP_NOMOVE | SWP_NOZORDER);
    CHECK(KnobTop(fader) == 80);
    Load(fader, "knobheight=2");
    CHECK(KnobTop(fader) == 100);
    Load(fader, "properties=-80,-80");
    Picture{fader}; // an equal range is drawn like any other
    SetWindowPos(fader, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOZORDER);
    Picture{fader};
}

TEST_CASE("without an image both layouts show a slot and a shaded bar as if they were vertical") {
    const TestPanel panel;
    HWND vertical = CreateFader(panel, 20, 200);
    HWND horizontal = CreateFader(panel, 200, 40);
    Load(vertical, "value=-40");
    Load(horizontal, "value=-80");
    const std::tuple<HWND, int, int, COLORREF> pixels[] = {
        {vertical, 9, 11, RGB(0, 0, 0)},      {vertical, 10, 188, RGB(0, 0, 0)},
        {vertical, 0, 89, RGB(234, 144, 3)},  {vertical, 10, 100, RGB(234, 184, 3)},
        {horizontal, 0, 0, RGB(234, 184, 3)}, {horizontal, 199, 11, RGB(234, 224, 3)},
        {horizontal, 99, 22, RGB(0, 0, 0)}};
    for (const auto& [fader, x, y, colour] : pixels) {
        CHECK(Picture(fader).At(x, y) == colour);
    }
    const Picture picture(vertical);
    for (const POINT beside : {POINT{8, 11}, {11, 188}, {0, 88}, {0, 111}}) {
        CHECK(picture.At(beside.x, beside.y) == picture.At(0, 0));
    }
}

TEST_CASE("an image of two parts gives the size and is drawn as track and knob") {
    const TestPanel panel;
    const TestFolder folder;
    HWND fader = CreateFader(panel, 50, 60);
    const auto load = [&](const std::string& bytes) {
        CHECK(Load(fader, "bitmap=" + folder.Write("fader.bmp", bytes)) == 1);
        return SizeText(fader);
    };
    CHECK(load(PartedImage(28, 101, TRACK, KNOB)) == "14 x 101");
    Load(fader, "value=-40"); // travel 79: the knob from 39 on
    CHECK(Picture(fader).At(0, 38) == TRACK_COLOUR);
    CHECK(Picture(fader).At(0, 39) == KNOB_COLOUR);
    CHECK(Load(fader, "bitmap=") == 1);

    CHECK(load(PartedImage(200, 28, TRACK, KNOB, true)) == "200 x 14");
    Load(fader, "knobheight=9");
    Load(fader, "value=0");
    CHECK(Picture(fader).At(191, 13) == TRACK_COLOUR);
    CHECK(Picture(fader).At(192, 0) == KNOB_COLOUR); // one pixel beyond the fader's end
}

TEST_CASE("the knob is dragged, and the mouse is kept on it at the ends") {
    const TestPanel panel(TestPanel::Visible);
    panel.Declare(DEVICES);
    HWND fader = CreateFader(panel, 20, 200);
    LoadLines(fader, "function=AMP1*gain|resolution=1|value=-40"); // the knob from 89 to 111
    SendMessageA(fader, WM_LBUTTONDOWN, MK_LBUTTON, At(10, 88));   // beside the knob
    CHECK(GetCapture() == nullptr);
    SendMessageA(fader, WM_LBUTTONDOWN, MK_LBUTTON, At(10, 100));
    REQUIRE(GetCapture() == fader);
    CHECK(GetFocus() == fader);
    CHECK(Value(fader) == -40.0F);

    SendMessageA(fader, WM_MOUSEMOVE, MK_LBUTTON, At(10, 56)); // the knob to 45 of 179: -20.11
    CHECK(Value(fader) == -20.0F);
    CHECK(Gain(panel) == -20.0F);
    panel.Declare("AMP1*gain=float,-200,200,-60,dB\n");
    ObjectOf(fader).interval = 0;
    Sleep(20);
    CHECK(SendMessageA(fader, WM_TIMER, 0, 0) == 0); // no poll meanwhile
    CHECK(Value(fader) == -20.0F);

    SendMessageA(fader, WM_MOUSEMOVE, MK_LBUTTON, At(30, 5)); // 6 beyond the top and 10 beside the fader
    CHECK(Value(fader) == 0.0F);
    POINT cursor;
    GetCursorPos(&cursor);
    const POINT held = OnScreen(fader, 20, 11);
    CHECK((cursor.x == held.x && cursor.y == held.y));
    SendMessageA(fader, WM_MOUSEMOVE, MK_LBUTTON, At(10, 56)); // 45 from where it is held
    CHECK(Value(fader) == -20.0F);
    SendMessageA(fader, WM_LBUTTONUP, 0, At(10, 56));
    CHECK(GetCapture() == nullptr);
    CHECK(SendMessageA(fader, WM_TIMER, 0, 0) == 1);

    // A capture that is lost.
    SendMessageA(fader, WM_LBUTTONDOWN, MK_LBUTTON, At(10, 56));
    ReleaseCapture();
    CHECK(SendMessageA(fader, WM_TIMER, 0, 0) == 1); // not dragging any more
}

TEST_CASE("a horizontal fader is dragged over the same travel that it draws, by touch as well") {
    const TestPanel panel(TestPanel::Visible);
    HWND fader = CreateFader(panel, 200, 14);
    LoadLines(fader, "knobheight=9|properties=-50,50,-50|fmt=%.0f");
    constexpr UINT POINTER_UPDATE = 0x0245; // of Windows 8 and later
    constexpr UINT POINTER_DOWN = 0x0246;
    constexpr UINT POINTER_UP = 0x0247;
    const auto touch = [fader](UINT message, int x, int y) {
        const POINT point = OnScreen(fader, x, y);
        SendMessageA(fader, message, 0, At(point.x, point.y));
    };
    touch(POINTER_DOWN, 4, 7);
    REQUIRE(GetCapture() == fader);
    touch(POINTER_UPDATE, 4 + 96, 7);
    CHECK(Value(fader) == 0.0F);
    HWND tip = ShownTip();
    RECT place;
    GetWindowRect(tip, &place);
    CHECK(std::abs(place.top - OnScreen(fader, 0, 7).y) <= 1); // beside the finger
    touch(POINTER_UPDATE, 4 + 192, 7);
    CHECK(Value(fader) == 50.0F);
    touch(POINTER_UP, 4 + 192, 7);
    CHECK(GetCapture() == nullptr);
}

TEST_CASE("keys and the wheel step the value") {
    const struct {
        WPARAM key;
        float by, byNothing; // of a resolution of 0.5, and of none
    } keys[] = {{VK_PRIOR, 5, 0},    {VK_NEXT, -5, 0},    {VK_END, -90, -90}, {VK_HOME, 20, 20},
                {VK_DOWN, -0.5F, 0}, {VK_LEFT, -0.5F, 0}, {VK_UP, 0.5F, 0},   {VK_RIGHT, 0.5F, 0}};
    const TestPanel panel;
    HWND fader = CreateFader(panel, 20, 200);
    const auto turn = [fader](int delta) {
        SendMessageA(fader, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(delta)), 0);
    };
    Load(fader, "properties=-100,10");
    for (const auto& row : keys) {
        CAPTURE(row.key);
        for (const bool hasSteps : {true, false}) {
            LoadLines(fader, hasSteps ? "resolution=0.5|value=-10" : "resolution=0|value=-10");
            Key(fader, row.key);
            CHECK(Value(fader) == -10.0F + (hasSteps ? row.by : row.byNothing));
        }
    }
    LoadLines(fader, "value=8|setvalue=-34");
    turn(-120);
    CHECK(Value(fader) == 8.0F); // continuous
    Load(fader, "resolution=2");
    for (const auto& [delta, value] : {std::pair(1, 10.0F), {0, 8.0F}, {-120, 6.0F}}) {
        turn(delta);
        CHECK(Value(fader) == value);
    }
    Key(fader, VK_SPACE);
    CHECK(Value(fader) == -34.0F);
}

TEST_CASE("a poll limits what the device holds, shows that and sends nothing") {
    const TestPanel panel(TestPanel::Visible);
    panel.Declare(DEVICES);
    HWND fader = CreateFader(panel, 20, 200);
    LoadLines(fader, "properties=-80,0,-20|function=AMP1*gain|resolution=.5");
    for (const auto& [gain, value] : {std::pair("10", 0.0F), {"-12.3", -12.5F}, {"-90", -80.0F}}) {
        ph_SetParameter(panel.Root(), "AMP1*gain", gain);
        for (int poll = 0; poll < 2; ++poll) {
            Poll(fader);
            CHECK(Value(fader) == value);
            CHECK(ShowsNotEqual(fader) == (value != -12.5F));
            CHECK(
                (poll == 0 || !GetUpdateRect(fader, nullptr, FALSE))); // nothing changed, nothing is redrawn
            UpdateWindow(fader);
        }
        CHECK(panel.Parameter("AMP1*gain") == gain);
    }
}

TEST_CASE("in relative mode every connection keeps its offset") {
    const TestPanel panel(TestPanel::Visible);
    panel.Declare(DEVICES);
    HWND other = CreateFader(panel, 20, 200, "Other");
    Load(other, "properties=-80,0,-50");
    HWND fader = CreateFader(panel, 20, 200);
    LoadLines(fader,
              "properties=-80,20,-40|relative=1|function=AMP1*low;AMP1*high;AMP9*missing|connection=Other");
    CHECK(Text(fader, "values") == "20,,45,,0,,-10,");
    CHECK(Text(fader, "valuescopy") == "-20,,5,,0,,-50,");

    // A drag to where the first one stops at its own limit: its offset stays.
    SendMessageA(fader, WM_LBUTTONDOWN, MK_LBUTTON, At(10, 120)); // the knob from 107 to 129
    REQUIRE(GetCapture() == fader);
    SendMessageA(fader, WM_MOUSEMOVE, MK_LBUTTON, At(10, 0));
    CHECK(Value(fader) == 20.0F);
    CHECK(Gain(panel, "AMP1*low") == -10.0F);
    CHECK(Gain(panel, "AMP1*high") == 65.0F);
    CHECK(Value(other) == 0.0F);
    SendMessageA(fader, WM_LBUTTONUP, 0, At(10, 0));
    Poll(fader);
    CHECK(Text(fader, "values") == "20,,45,,0,,-10,");
    CHECK(ShowsNotEqual(fader)); // one of them is missing
    SetValue(fader, -40.0F);
    CHECK(Gain(panel, "AMP1*low") == -20.0F);
    CHECK(Value(other) == -50.0F);

    // One that somebody else moves gets a new offset.
    ph_SetParameter(panel.Root(), "AMP1*high", "-100");
    Poll(fader);
    CHECK(Text(fader, "values") == "20,,-60,,0,,-10,");
    CHECK(Value(fader) == -40.0F);
    DestroyWindow(other);
    SetValue(fader, -41.0F);
    CHECK(Gain(panel, "AMP1*high") == -101.0F);
}

TEST_CASE("the menu entry Apply sends the value once more") {
    for (const char* className : {"KNOB", "FADER", "BEDIT", "BTRISTATEBUTTON", "METER", "BBUTTON", "LED"}) {
        INFO(std::string(className));
        const TestPanel panel;
        panel.Declare("AMP1*device=simulated\nAMP1*gain=float,-200,200,5,dB\n");
        HWND control = panel.Create(className, "Control");
        const bool offers = std::string("METER BBUTTON LED").find(className) == std::string::npos;
        HMENU menu = CreatePopupMenu();
        SendMessageA(control, CWM_EXTENDMENU, 0, reinterpret_cast<LPARAM>(menu));
        REQUIRE(GetMenuItemCount(menu) == (offers ? 2 : 0));
        if (offers) {
            CHECK(GetMenuItemID(menu, 1) == 1);
        }
        DestroyMenu(menu);
        LoadLines(control, "function=AMP1*gain|datatype=f|value=0", LOAD_FROM_FILE);
        for (const bool isApplied : {false, true}) {
            ph_SetParameter(panel.Root(), "AMP1*gain", "7");
            SendMessageA(control, CWM_MENUCOMMAND, 0, isApplied ? 1 : 0);
            CHECK(Gain(panel) == (isApplied && offers ? 0.0F : 7.0F));
        }
    }
}

TEST_CASE("while the knob is held a tooltip shows the value below the mouse") {
    const TestPanel panel(TestPanel::Visible);
    HWND fader = CreateFader(panel, 20, 200);
    LoadLines(fader, "resolution=1|value=-40");
    SendMessageA(fader, WM_LBUTTONDOWN, MK_LBUTTON, At(10, 100));
    CHECK(ShownTip() == nullptr); // without a format there is none
    SendMessageA(fader, WM_LBUTTONUP, 0, At(10, 100));

    Load(fader, "fmt=%.1f dB");
    SendMessageA(fader, WM_LBUTTONDOWN, MK_LBUTTON, At(10, 100));
    HWND tip = ShownTip();
    REQUIRE(tip != nullptr);
    CHECK(TipOf(fader) == "-40.0 dB");
    CHECK(IsAt(tip, OnScreen(fader, 10, 121)));
    SendMessageA(fader, WM_MOUSEMOVE, MK_LBUTTON, At(12, 56));
    CHECK(TipOf(fader) == "-20.0 dB");
    CHECK(IsAt(tip, OnScreen(fader, 12, 77)));
    ReleaseCapture();
    CHECK(ShownTip() == nullptr);
    SendMessageA(fader, WM_MOUSEMOVE, 0, At(12, 56)); // resting there would show it
    SendMessageA(fader, WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    CHECK(TipOf(fader) == "-19.0 dB");

    SendMessageA(fader, WM_LBUTTONDOWN, MK_LBUTTON, At(10, 56));
    CHECK(ShownTip() == tip);
    DestroyWindow(fader); // in the middle of a drag
    CHECK(ShownTip() == nullptr);
}

TEST_SUITE_END();
