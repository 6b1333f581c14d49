// What is particular to the fader.

#include "tests/windows/PartedImage.h"

#include <commctrl.h>
#include <cstdlib>
#include <cstring>

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

// The keywords that the control lists, each with a semicolon behind it.
std::string Listed(HWND control) {
    HWND list =
        CreateWindowExA(0, WC_LISTVIEWA, "", LVS_REPORT, 0, 0, 300, 300, nullptr, nullptr, nullptr, nullptr);
    LVCOLUMNA header{};
    SendMessageA(list, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&header));
    SendMessageA(control, CWM_SAVETOLISTCTRL, 0, reinterpret_cast<LPARAM>(list));
    std::string keywords;
    char text[TEXT_SIZE];
    LVITEMA item{};
    item.pszText = text;
    item.cchTextMax = sizeof text;
    for (WPARAM row = 0; SendMessageA(list, LVM_GETITEMTEXTA, row, reinterpret_cast<LPARAM>(&item)) > 0;
         ++row) {
        keywords += text + std::string(";");
    }
    DestroyWindow(list);
    return keywords;
}

BOOL CALLBACK FindShownTip(HWND window, LPARAM found) {
    char name[64];
    GetClassNameA(window, name, sizeof name);
    if (std::string(name) != TOOLTIPS_CLASSA || !IsWindowVisible(window)) {
        return TRUE;
    }
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

// The tooltip window that is shown at the moment, if any.
HWND ShownTip() {
    HWND shown = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), FindShownTip, reinterpret_cast<LPARAM>(&shown));
    return shown;
}

TOOLINFOA ToolOf(HWND tip, HWND control, char* text) {
    TOOLINFOA tool{};
    tool.cbSize = TTTOOLINFOA_V2_SIZE;
    tool.hwnd = control;
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = text;
    SendMessageA(tip, TTM_GETTOOLINFOA, 0, reinterpret_cast<LPARAM>(&tool));
    return tool;
}

std::string TipText(HWND tip, HWND control) {
    char text[256] = "";
    ToolOf(tip, control, text);
    return text;
}

POINT OnScreen(HWND window, int x, int y) {
    POINT point{x, y};
    ClientToScreen(window, &point);
    return point;
}

} // namespace

TEST_CASE("values are answered and taken by the rules of their datatype") {
    const TestPanel panel;
    HWND fader = CreateFader(panel, 20, 200);
    Load(fader, "properties=-80,20");
    Load(fader, "resolution=.5");
    CHECK(SetValue(fader, -3.26F) == 1);
    CHECK(Value(fader) == -3.5F);
    CHECK(SetValue(fader, -3.4F) == 0); // the same step
    CHECK(SetValue(fader, 3.24F) == 1);
    CHECK(Text(fader) == "3");
    CHECK(SetValue(fader, 3.5F) == 1);

    int integer = 3;
    CHECK(Send(fader, COMMAND_GET, DATATYPE_INTEGER, &integer) == 1); // 3 is not 3.5
    CHECK(integer == 3);
    float number = 3.500009F;
    CHECK(Send(fader, COMMAND_GET, DATATYPE_FLOAT, &number) == 0);
    number = 3.50002F;
    CHECK(Send(fader, COMMAND_GET, DATATYPE_FLOAT, &number, "value") == 1);
    CHECK(number == 3.5F);
    char text[TEXT_SIZE] = "3.5";
    CHECK(Send(fader, COMMAND_GET, DATATYPE_TEXT, text) == 0);

    integer = 50;
    CHECK(Send(fader, COMMAND_SET, DATATYPE_INTEGER, &integer) == 1);
    CHECK(Value(fader) == 20.0F);
    CHECK(!ShowsNotEqual(fader));
    std::snprintf(text, sizeof text, "-90");
    CHECK(Send(fader, COMMAND_SET, DATATYPE_TEXT, text) == 1);
    CHECK(std::string(text) == "-80.000000"); // only a text learns the limit
    CHECK(!ShowsNotEqual(fader));
    std::snprintf(text, sizeof text, "-10.2");
    CHECK(Send(fader, COMMAND_SET, DATATYPE_TEXT, text) == 1);
    CHECK(std::string(text) == "-10.2");
    CHECK(SetValue(fader, 20.1F) == 1);
    CHECK(Value(fader) == 20.0F);
    CHECK(!ShowsNotEqual(fader)); // the nearest step is within
    CHECK(SetValue(fader, 21.0F) == 0);
    CHECK(ShowsNotEqual(fader)); // only a float beyond the range shows it
    for (const float bad :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        CHECK(SetValue(fader, bad) == 0);
        CHECK(Value(fader) == 20.0F);
    }
}

TEST_CASE("a range is sent with any part of its line, and all keywords are listed") {
    const TestPanel panel;
    panel.Declare(DEVICES);
    HWND fader = CreateFader(panel, 20, 200);
    Load(fader, "function=AMP1*gain");
    CHECK(Load(fader, "properties=-60") == 1);
    CHECK(Gain(panel) == 0.0F);
    CHECK(Load(fader, "properties=-60,6,3") == 1);
    CHECK(Gain(panel) == 3.0F);
    float setValue = -7.9F;
    CHECK(Send(fader, COMMAND_SET, DATATYPE_FLOAT, &setValue, "setvalue") == 1);
    CHECK(Text(fader, "setvalue") == "-7");
    CHECK(Listed(fader) == " ;bitmap;connection;fmt;function;interval;knobheight;layer;level;properties;"
                           "relative;resolution;setvalue;value;values;valuescopy;");
}

TEST_CASE("lists of offsets are loaded at the end, and a copy takes every other number") {
    const TestPanel panel;
    HWND fader = CreateFader(panel, 20, 200);
    Load(fader, "relative=1");
    CHECK(Load(fader, "values=1,,2,,3,") == 1);
    CHECK(Text(fader, "values") == "1,,2,,3,");
    CHECK(Load(fader, "valuescopy=1,,2,,3,") == 1);
    CHECK(Text(fader, "values") == "1,,2,,3,,0,,0,");
    CHECK(Text(fader, "valuescopy") == "0,,0,,0,,1,,3,");
    Load(fader, "relative=1");
    CHECK(Text(fader, "values") == "");
}

TEST_CASE("the knob lies where the value is, whatever changes") {
    const TestPanel panel;
    HWND fader = CreateFader(panel, 20, 200);
    CHECK(KnobTop(fader) == 0);
    Load(fader, "value=-80");
    CHECK(KnobTop(fader) == 178);
    SetWindowPos(fader, nullptr, 0, 0, 20, 102, SWP_NOMOVE | SWP_NOZORDER);
    CHECK(KnobTop(fader) == 80);
    Load(fader, "knobheight=2");
    CHECK(KnobTop(fader) == 100);
    Load(fader, "properties=-80,-80");
    Picture{fader}; // an equal range is drawn like any other
    SetWindowPos(fader, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOZORDER);
    SetWindowPos(fader, nullptr, 0, 0, 1, 1, SWP_NOMOVE | SWP_NOZORDER);
    CHECK(KnobTop(fader) == 0);
}

TEST_CASE("without an image both layouts show a slot and a shaded bar as if they were vertical") {
    const TestPanel panel;
    HWND fader = CreateFader(panel, 20, 200);
    Load(fader, "value=-40");
    {
        const Picture picture(fader);
        CHECK(picture.At(9, 11) == RGB(0, 0, 0));
        CHECK(picture.At(10, 188) == RGB(0, 0, 0));
        for (const POINT beside : {POINT{8, 11}, POINT{11, 188}, POINT{9, 10}, POINT{9, 189}}) {
            CHECK(picture.At(beside.x, beside.y) == picture.At(0, 0));
        }
        CHECK(picture.At(0, 89) == RGB(234, 144, 3));
        CHECK(picture.At(19, 90) == RGB(234, 150, 3));
        CHECK(picture.At(10, 100) == RGB(234, 184, 3));
        CHECK(picture.At(10, 110) == RGB(234, 150, 3));
        CHECK(picture.At(0, 88) == picture.At(0, 111));
    }
    HWND horizontal = CreateFader(panel, 200, 40, "Horizontal");
    Load(horizontal, "value=-80");
    const Picture picture(horizontal);
    CHECK(picture.At(0, 0) == RGB(234, 184, 3));
    CHECK(picture.At(199, 11) == RGB(234, 224, 3));
    CHECK(picture.At(99, 22) == RGB(0, 0, 0));
}

TEST_CASE("an image of two parts gives the size and is drawn as track and knob") {
    const TestPanel panel;
    const TestFolder folder;
    HWND fader = CreateFader(panel, 50, 60);
    const auto load = [&](const std::string& bytes) {
        CHECK(Load(fader, "bitmap=" + folder.Write("fader.bmp", bytes)) == 1);
        RECT client;
        GetClientRect(fader, &client);
        const RECT& rectangle = ObjectOf(fader).rectangle;
        CHECK(rectangle.right - rectangle.left == client.right);
        CHECK(rectangle.bottom - rectangle.top == client.bottom);
        return SIZE{client.right, client.bottom};
    };
    SIZE size = load(PartedImage(28, 101, TRACK, KNOB));
    CHECK((size.cx == 14 && size.cy == 101));
    Load(fader, "value=-40"); // travel 79: the knob from 39 on
    {
        const Picture picture(fader);
        CHECK(picture.At(0, 38) == TRACK_COLOUR);
        CHECK(picture.At(0, 39) == KNOB_COLOUR);
        CHECK(picture.At(13, 60) == KNOB_COLOUR);
        CHECK(picture.At(13, 61) == TRACK_COLOUR);
    }
    CHECK(Load(fader, "bitmap=missing.bmp") == 0);
    CHECK(Text(fader, "bitmap") == folder.Path("fader.bmp"));
    CHECK(Load(fader, "bitmap=") == 1);

    size = load(PartedImage(200, 28, TRACK, KNOB, true));
    CHECK((size.cx == 200 && size.cy == 14));
    Load(fader, "knobheight=9");
    Load(fader, "value=0");
    {
        const Picture picture(fader);
        CHECK(picture.At(191, 13) == TRACK_COLOUR);
        CHECK(picture.At(192, 0) == KNOB_COLOUR); // one pixel beyond the fader's end
        CHECK(picture.At(199, 13) == KNOB_COLOUR);
    }
    const int before = a_BitmapCount();
    DestroyWindow(fader);
    CHECK(a_BitmapCount() == before - 1);
}

TEST_CASE("the knob is dragged, and the mouse is kept on it at the ends") {
    const TestPanel panel(TestPanel::Visible);
    panel.Declare(DEVICES);
    HWND fader = CreateFader(panel, 20, 200);
    Load(fader, "function=AMP1*gain");
    Load(fader, "resolution=1");
    Load(fader, "value=-40");                                    // the knob from 89 to 111
    SendMessageA(fader, WM_LBUTTONDOWN, MK_LBUTTON, At(10, 88)); // beside the knob
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
    CHECK(cursor.x == held.x);
    CHECK(cursor.y == held.y);
    SendMessageA(fader, WM_MOUSEMOVE, MK_LBUTTON, At(10, 56)); // 45 from where it is held
    CHECK(Value(fader) == -20.0F);
    SendMessageA(fader, WM_LBUTTONUP, 0, At(10, 56));
    CHECK(GetCapture() == nullptr);
    CHECK(SendMessageA(fader, WM_TIMER, 0, 0) == 1);

    // A value between two steps, and a capture that is lost.
    Load(fader, "resolution=20");
    Load(fader, "value=-40");
    SendMessageA(fader, WM_LBUTTONDOWN, MK_LBUTTON, At(10, 100));
    SendMessageA(fader, WM_MOUSEMOVE, MK_LBUTTON, At(10, 110));
    CHECK(Value(fader) == -40.0F);
    ReleaseCapture();
    CHECK(SendMessageA(fader, WM_TIMER, 0, 0) == 1); // not dragging any more
    SendMessageA(fader, WM_LBUTTONUP, 0, At(10, 110));
    ObjectOf(fader).flags = 0;   // without the frame of the focus
    CHECK(KnobTop(fader) == 89); // back at its value
}

TEST_CASE("a horizontal fader is dragged over the same travel that it draws, by touch as well") {
    const TestPanel panel(TestPanel::Visible);
    HWND fader = CreateFader(panel, 200, 14);
    Load(fader, "knobheight=9");
    Load(fader, "properties=-50,50,-50");
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
    touch(POINTER_UPDATE, 4 + 192, 7);
    CHECK(Value(fader) == 50.0F);
    touch(POINTER_UP, 4 + 192, 7);
    CHECK(GetCapture() == nullptr);
    Load(fader, "properties=7,7,7"); // an equal range
    touch(POINTER_DOWN, 4, 7);
    touch(POINTER_UPDATE, 90, 7);
    touch(POINTER_UP, 90, 7);
    CHECK(Value(fader) == 7.0F);
}

TEST_CASE("keys and the wheel step the value") {
    const TestPanel panel;
    HWND fader = CreateFader(panel, 20, 200);
    const auto turn = [fader](int delta) {
        SendMessageA(fader, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(delta)), 0);
    };
    Load(fader, "properties=-80,10,0");
    Load(fader, "setvalue=-34");
    Key(fader, VK_DOWN);
    turn(-120);
    CHECK(Value(fader) == 0.0F); // continuous
    Load(fader, "resolution=2");
    const struct {
        WPARAM key; // 0: the wheel
        int delta;
        float value;
    } rows[] = {{VK_SPACE, 0, -34.0F}, {VK_HOME, 0, 10.0F},  {VK_END, 0, -80.0F},  {VK_PRIOR, 0, -60.0F},
                {VK_UP, 0, -58.0F},    {VK_NEXT, 0, -78.0F}, {VK_DOWN, 0, -80.0F}, {0, 120, -78.0F},
                {0, 1, -76.0F},        {0, 0, -78.0F},       {0, -120, -80.0F},    {VK_TAB, 0, -80.0F}};
    for (const auto& row : rows) {
        CAPTURE(row.value);
        row.key != 0 ? Key(fader, row.key) : turn(row.delta);
        CHECK(Value(fader) == row.value);
    }
}

TEST_CASE("a poll follows the device, and shows what the fader cannot") {
    const TestPanel panel(TestPanel::Visible);
    panel.Declare(DEVICES);
    HWND fader = CreateFader(panel, 20, 200);
    Load(fader, "properties=-80,0,-20");
    Load(fader, "function=AMP1*gain");
    ph_SetParameter(panel.Root(), "AMP1*gain", "10");
    Poll(fader);
    CHECK(Value(fader) == 0.0F);
    CHECK(ShowsNotEqual(fader));
    CHECK(Gain(panel) == 10.0F); // a poll sends nothing
    UpdateWindow(fader);
    Poll(fader);
    CHECK(ShowsNotEqual(fader));
    CHECK(!GetUpdateRect(fader, nullptr, FALSE)); // nothing changed, nothing is redrawn
    ph_SetParameter(panel.Root(), "AMP1*gain", "-12.3");
    Load(fader, "resolution=.5");
    Poll(fader);
    CHECK(Value(fader) == -12.5F);
    CHECK(!ShowsNotEqual(fader));
    Load(fader, "function=AMP1*gain;AMP1*high");
    Poll(fader);
    CHECK(ShowsNotEqual(fader)); // they hold different values
    Load(fader, "function=");
    Poll(fader);
    CHECK(!ShowsNotEqual(fader));
}

TEST_CASE("in relative mode every connection keeps its offset") {
    const TestPanel panel(TestPanel::Visible);
    panel.Declare(DEVICES);
    HWND other = CreateFader(panel, 20, 200, "Other");
    Load(other, "properties=-80,0,-50");
    HWND fader = CreateFader(panel, 20, 200);
    Load(fader, "properties=-80,20,-40");
    Load(fader, "relative=1");
    Load(fader, "function=AMP1*low;AMP1*high;AMP9*missing");
    Load(fader, "connection=Other");
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
    CHECK(!ShowsNotEqual(fader));
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
        const bool offers = className != std::string("METER") && className != std::string("BBUTTON") &&
                            className != std::string("LED");
        HMENU menu = CreatePopupMenu();
        SendMessageA(control, CWM_EXTENDMENU, 0, reinterpret_cast<LPARAM>(menu));
        REQUIRE(GetMenuItemCount(menu) == (offers ? 2 : 0));
        if (offers) {
            char text[16];
            GetMenuStringA(menu, 1, text, sizeof text, MF_BYPOSITION);
            CHECK(std::string(text) == "Apply");
            CHECK(GetMenuItemID(menu, 1) == 1);
            CHECK((GetMenuState(menu, 0, MF_BYPOSITION) & MF_SEPARATOR) != 0);
        }
        DestroyMenu(menu);
        Load(control, "function=AMP1*gain");
        Load(control, "datatype=f");
        Load(control, "value=0", LOAD_FROM_FILE);
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
    Load(fader, "resolution=1");
    Load(fader, "value=-40");
    SendMessageA(fader, WM_LBUTTONDOWN, MK_LBUTTON, At(10, 100));
    CHECK(ShownTip() == nullptr); // without a format there is none
    SendMessageA(fader, WM_LBUTTONUP, 0, At(10, 100));

    Load(fader, "fmt=%.1f dB");
    SendMessageA(fader, WM_LBUTTONDOWN, MK_LBUTTON, At(10, 100));
    HWND tip = ShownTip();
    REQUIRE(tip != nullptr);
    CHECK(TipText(tip, fader) == "-40.0 dB");
    const auto checkPlace = [tip](POINT expected) {
        RECT place;
        GetWindowRect(tip, &place);
        CHECK(std::abs(place.left - expected.x) <= 1); // the border may lie outside
        CHECK(std::abs(place.top - expected.y) <= 1);
    };
    checkPlace(OnScreen(fader, 10, 121));
    SendMessageA(fader, WM_MOUSEMOVE, MK_LBUTTON, At(12, 56));
    CHECK(TipText(tip, fader) == "-20.0 dB");
    checkPlace(OnScreen(fader, 12, 77));
    ReleaseCapture();
    CHECK(ShownTip() == nullptr);
    char text[256];
    CHECK(ToolOf(tip, fader, text).uFlags == (TTF_IDISHWND | TTF_ABSOLUTE));

    SendMessageA(fader, WM_MOUSEMOVE, 0, At(12, 56)); // resting there would show it
    CHECK(TipText(tip, fader) == "-20.0 dB");
    CHECK(ToolOf(tip, fader, text).uFlags == TTF_IDISHWND);
    SendMessageA(fader, WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    CHECK(TipText(tip, fader) == "-19.0 dB");

    const auto tools = SendMessageA(tip, TTM_GETTOOLCOUNT, 0, 0);
    SendMessageA(fader, WM_LBUTTONDOWN, MK_LBUTTON, At(10, 56));
    CHECK(ShownTip() == tip);
    DestroyWindow(fader); // in the middle of a drag
    CHECK(ShownTip() == nullptr);
    CHECK(SendMessageA(tip, TTM_GETTOOLCOUNT, 0, 0) == tools - 1);
}

TEST_SUITE_END();
