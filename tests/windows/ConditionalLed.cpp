// What is particular to the lamp over a condition.

#include "tests/windows/Buttons.h"
#include "tests/windows/ImportHook.h"
#include "tests/windows/PartedImage.h"

#include "Panelhost/Dialogs.h"

#include <algorithm>

TEST_SUITE_BEGIN("ConditionalLed");

namespace {

constexpr COLORREF CROSS = RGB(16, 16, 16), PLATE = RGB(168, 168, 168);
constexpr COLORREF LIT = RGB(0, 0, 255), DARK = RGB(64, 0, 0);

DWORD tickCount = 0;
DWORD WINAPI SetTicks() {
    return tickCount;
}

// 40 x 40, in plain colours.
HWND CreateLamp(const TestPanel& panel, const std::string& lines) {
    HWND lamp = panel.Create("CONDITIONALLED", "Lamp");
    SetWindowPos(lamp, nullptr, 0, 0, 40, 40, SWP_NOMOVE | SWP_NOZORDER);
    REQUIRE(LoadLines(lamp, "litcolor=0xff0000|darkcolor=0x40"));
    REQUIRE(LoadLines(lamp, lines));
    return lamp;
}

// "lit", "dark" or "unknown", and what others read.
std::string Look(HWND lamp) {
    const Picture picture(lamp);
    const bool isCrossed = picture.At(2, 2) == CROSS && picture.At(20, 5) == PLATE;
    const COLORREF middle = picture.At(20, 20);
    return std::string(isCrossed ? "unknown" : middle == RGB(0, 0, 255) ? "lit" : "dark") + " " + Text(lamp);
}

// The same after a tick that comes so late.
std::string LookAfter(HWND lamp, DWORD milliseconds) {
    tickCount += milliseconds;
    SendMessageA(lamp, WM_TIMER, 0, 0);
    return Look(lamp);
}

} // namespace

TEST_CASE("a lamp follows a condition over functions, then connections") {
    const TestPanel panel;
    panel.Declare("AMP1*device=simulated\nAMP1*level=float,-80,18,-20,\nAMP1*on=integer,0,1,0,\n"
                  "AMP1*name=text,,,Left,\n");
    panel.Create("KNOB", "Knob");
    HWND lamp = CreateLamp(panel, "function=AMP1*level;AMP1*on|connection=Knob|"
                                  "condition=a > -6 and (b = 1 or c >= 50)");
    const struct {
        const char* parameter;
        const char* value;
        const char* look;
    } rows[] = {
        {"AMP1*level", "-6", "dark 0"},    {"AMP1*level", "-5.5", "dark 0"}, {"AMP1*on", "1", "lit 1"},
        {"AMP1*online", "0", "unknown 1"}, {"AMP1*online", "1", "lit 1"},    {"AMP1*on", "0", "dark 0"},
    };
    for (const auto& row : rows) {
        INFO(std::string(row.parameter), " ", std::string(row.value));
        ph_SetParameter(panel.Root(), row.parameter, row.value);
        Poll(lamp);
        CHECK(Look(lamp) == row.look);
    }
    SetValue(panel.Find("Knob"), 50.0F);
    Poll(lamp);
    CHECK(Look(lamp) == "lit 1");
    CHECK(panel.Parameter("AMP1*level") + panel.Parameter("AMP1*on") == "-5.50"); // nothing is ever sent
    DestroyWindow(panel.Find("Knob"));
    Poll(lamp);
    CHECK(Look(lamp) == "unknown 1");
    for (const auto& [line, look] : {std::pair("connection=", "unknown 1"), // there is no c
                                     {"condition=a > -6 and b <> 1", "lit 1"},
                                     {"function=AMP1*level;AMP1*name", "unknown 1"}, // no number
                                     {"function=AMP1*level;AMP1*on", "lit 1"},
                                     {"condition=a / b", "unknown 1"},
                                     {"condition=b = 0 or a / b > 1", "lit 1"},
                                     {"condition=b", "dark 0"}}) {
        INFO(std::string(line));
        CHECK(Load(lamp, line) == 1);
        Poll(lamp);
        CHECK(Look(lamp) == look);
    }
    HWND follower = panel.Create("LED", "Follower");
    REQUIRE(LoadLines(follower, "onthreshold=1|connection=Lamp"));
    Load(lamp, "condition=a < 0");
    Poll(lamp);
    CHECK_FALSE(IsMarked(follower));
    CHECK(Text(follower) == "1");
    CHECK(Load(lamp, "value=0") == 0);
}

TEST_CASE("an unreadable condition and too many entries are refused, and said where they are edited") {
    const TestPanel panel;
    HWND lamp = CreateLamp(panel, "condition=a + 1");
    TraceCapture trace;
    CHECK(Load(lamp, "condition=a > and b") == 0);
    CHECK(trace.CountContaining("The condition cannot be read at 5: ") == 1);
    CHECK(Text(lamp, "condition") == "a + 1");
    HWND dialog = nullptr;
    SendMessageA(lamp, CWM_PARAMETERDLG, 0, reinterpret_cast<LPARAM>(&dialog));
    const auto shown = [dialog](const std::string& text) {
        const std::vector<HWND> items = ChildrenOf(dialog);
        const auto found = std::find_if(items.begin(), items.end(), [&](HWND item) {
            return TextOf(item).find(text) != std::string::npos;
        });
        return found == items.end() ? nullptr : *found;
    };
    HWND field = shown("a + 1");
    REQUIRE(field != nullptr);
    SetWindowTextA(field, "a >");
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(field), EDIT_ENTER),
                 reinterpret_cast<LPARAM>(field));
    CHECK(shown("\"a >\" cannot be read at 4: a value is missing") != nullptr);
    CHECK(TextOf(field) == "a + 1");
    const std::string most = Repeated(20, "A*x;");
    CHECK(Load(lamp, "connection=" + Repeated(6, "B;")) == 1);
    CHECK(Load(lamp, "function=" + most) == 1);
    CHECK(Load(lamp, "function=A*x;" + most) == 0);
    CHECK(Load(lamp, "connection=" + Repeated(7, "B;")) == 0);
    CHECK(trace.CountContaining("at most 26 functions and connections") == 2);
    CHECK(ObjectOf(lamp).functions.size() == 20);
    Poll(lamp);
    CHECK(Look(lamp) == "unknown 0");
}

TEST_CASE("delays, blinking and latching go by the clock, however seldom it ticks") {
    const ImportHook clock(CONTROL_LIBRARY, "GetTickCount", SetTicks);
    for (const DWORD start : {1000000UL, 0xFFFFFF00UL}) {
        tickCount = start;
        const TestPanel panel;
        panel.Declare("AMP1*device=simulated\nAMP1*on=integer,0,1,0,\n");
        HWND lamp = CreateLamp(panel, "function=AMP1*on|interval=0|delayon=500|delayoff=300");
        const auto set = [&](const char* on) { ph_SetParameter(panel.Root(), "AMP1*on", on); };
        CHECK(LookAfter(lamp, 1) == "dark 0");
        set("1");
        CHECK(LookAfter(lamp, 1) == "dark 0");
        CHECK(LookAfter(lamp, 499) == "dark 0");
        set("0"); // not long enough
        CHECK(LookAfter(lamp, 1) == "dark 0");
        set("1");
        CHECK(LookAfter(lamp, 1) == "dark 0");
        CHECK(LookAfter(lamp, 500) == "lit 1");
        set("0");
        CHECK(LookAfter(lamp, 1) == "lit 1");
        CHECK(LookAfter(lamp, 300) == "dark 0");
        REQUIRE(LoadLines(lamp, "delayon=0|delayoff=0|blink=400|latch=1"));
        set("1");
        CHECK(LookAfter(lamp, 1) == "lit 1");
        CHECK(ObjectOf(lamp).DueIn(tickCount) == 1); // the poll
        CHECK(LookAfter(lamp, 200) == "dark 1");
        CHECK(LookAfter(lamp, 200) == "lit 1");
        set("0");
        CHECK(LookAfter(lamp, 200) == "dark 1"); // latched
        Load(lamp, "interval=100000");
        CHECK(LookAfter(lamp, 100) == "dark 1");
        CHECK(ObjectOf(lamp).DueIn(tickCount) == 100);
        CHECK(LookAfter(lamp, 100) == "lit 1");
        Click(lamp);
        CHECK(Look(lamp) == "dark 0");
        CHECK(ObjectOf(lamp).DueIn(tickCount) > 1000);
        set("1");
        Load(lamp, "interval=0");
        CHECK(LookAfter(lamp, 2) == "lit 1");
        Click(lamp); // seen, but it still holds
        CHECK(Look(lamp) == "lit 1");
        set("0");
        CHECK(LookAfter(lamp, 1) == "dark 0");
        CHECK(Load(lamp, "latch=0") == 1);
    }
}

TEST_CASE("a lamp with an image shows its frames, and is crossed out whatever its size") {
    const TestPanel panel;
    const TestFolder folder;
    panel.Declare("AMP1*device=simulated\nAMP1*number=float,-9,99,0,\n");
    HWND lamp = CreateLamp(panel, "function=AMP1*number|bitmap=" +
                                      folder.Write("lamp.bmp", PartedImage(16, 8, 0x400000, 0x0000FF)));
    CHECK(SizeText(lamp) == "8 x 8");
    const struct {
        const char* line;
        const char* number;
        COLORREF colour;
    } rows[] = {{"frames=2", "0", DARK}, {"frames=2", "7", LIT},       {"frames=4", "1.5", DARK},
                {"frames=4", "2", LIT},  {"frames=4", "-9", DARK},     {"frames=4", "99", LIT},
                {"frames=4", "0", DARK}, {"condition=a/0", "1", CROSS}};
    for (const auto& row : rows) {
        INFO(std::string(row.line), " ", std::string(row.number));
        CHECK(Load(lamp, row.line) == 1);
        ph_SetParameter(panel.Root(), "AMP1*number", row.number);
        Poll(lamp);
        CHECK(Picture(lamp).At(2, 4) == row.colour);
    }
    CHECK(Picture(lamp).At(0, 0) == CROSS);
    for (const auto& [width, height] : {std::pair(0, 0), {1, 1}, {4000, 1}, {1, 4000}}) {
        SetWindowPos(lamp, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
        const Picture picture(lamp);
    }
}

TEST_SUITE_END();
