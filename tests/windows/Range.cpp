// What is particular to the range.

#include "tests/windows/Buttons.h"

TEST_SUITE_BEGIN("Range");

namespace {

constexpr COLORREF BAND = RGB(0, 0, 255);
constexpr COLORREF ALARM = RGB(255, 0, 0);
constexpr COLORREF LINE = RGB(255, 255, 255);
// A range of which each pixel is one, in a window of 100 x 40: the number n lies at pixel n + 4.
constexpr const char* PIXELS = "rangecolor=0xff0000|alarmcolor=0xff|linecolor=0xffffff|properties=0,91,50|"
                               "low=20|high=70";

std::string State(HWND range) {
    return Text(range, "low") + " " + Text(range) + " " + Text(range, "high");
}

} // namespace

TEST_CASE("a lamp follows the state of a range") {
    const TestPanel panel;
    HWND range = panel.Create("BRANGE", "Range");
    HWND lamp = panel.Create("LED", "Lamp");
    REQUIRE(LoadLines(lamp, "onthreshold=1|connection=Range*state"));
    REQUIRE(LoadLines(range, "properties=-80,0,-50|low=-20|high=-10"));
    for (const auto& [value, state] : {std::pair("-80", "-1"), {"-20", "0"}, {"-10", "0"}, {"-9.5", "1"}}) {
        Load(range, std::string("value=") + value);
        CHECK_FALSE(IsMarked(lamp));
        CHECK(Text(lamp) == state);
        CHECK(Text(range, "state") == state);
    }
}

TEST_CASE("the value and the ends of a range have functions of their own") {
    const TestPanel panel;
    panel.Declare("AMP1*device=simulated\nAMP1*low=float,-900,900,10,\n"
                  "AMP1*value=float,-900,900,30,\nAMP1*high=float,-900,900,60,\n");
    HWND range = panel.Create("BRANGE", "Range");
    REQUIRE(LoadLines(range, "function=AMP1*value|function1=AMP1*low|function2=AMP1*high"));
    CHECK_FALSE(IsMarked(range));
    CHECK(State(range) == "10 30 60");
    Load(range, "low=80"); // the other end stops it
    Load(range, "high=90");
    CHECK(panel.Parameter("AMP1*low") == "60");
    CHECK(panel.Parameter("AMP1*high") == "90");
    const struct {
        const char* parameter;
        const char* number;
        const char* state;
        bool isMarked;
    } rows[] = {
        {"AMP1*high", "500", "60 30 100", true}, // beyond the range: what is shown is not what is there
        {"AMP1*high", "40", "40 30 40", true},   // beyond the other end
        {"AMP1*low", "35", "35 30 40", false},   {"AMP1*value", "-7", "35 0 40", true},
        {"AMP1*value", "7", "35 7 40", false},   {"AMP1*online", "0", "35 7 40", true},
        {"AMP1*online", "1", "35 7 40", false},
    };
    for (const auto& row : rows) {
        INFO(std::string(row.parameter), " ", std::string(row.number));
        ph_SetParameter(panel.Root(), row.parameter, row.number);
        CHECK(IsMarked(range) == row.isMarked);
        CHECK(State(range) == row.state);
    }
    Load(range, "low=");
    CHECK(panel.Parameter("AMP1*low") == "35"); // nothing is sent
    CHECK(Text(range, "low").empty());
}

TEST_CASE("what may be dragged of a range is taken and sent, and the ends never cross") {
    const struct {
        const char* settable;
        POINT press, stop;
        const char* state;
    } rows[] = {
        {"none", {24, 35}, {44, 35}, "20 50 70"},  {"value", {24, 35}, {44, 35}, "20 50 70"},
        {"ends", {24, 35}, {44, 35}, "40 50 70"},  {"ends", {26, 35}, {99, 35}, "70 50 70"},
        {"ends", {73, 35}, {-90, 35}, "20 50 20"}, {"ends", {54, 5}, {64, 5}, "20 50 70"},
        {"value", {55, 5}, {65, 35}, "20 60 70"},  {"all", {54, 5}, {300, 5}, "20 91 70"},
        {"all", {74, 35}, {300, 5}, "20 50 91"},
    };
    for (const auto& row : rows) {
        INFO(std::string(row.settable), " ", row.press.x);
        const TestPanel panel;
        panel.Declare("AMP1*device=simulated\nAMP1*low=float,0,100,20,\nAMP1*value=float,0,100,50,\n"
                      "AMP1*high=float,0,100,70,\n");
        HWND range = panel.Create("BRANGE", "Range");
        LoadLines(range, PIXELS);
        LoadLines(range, "function=AMP1*value|function1=AMP1*low|function2=AMP1*high");
        REQUIRE(Load(range, std::string("settable=") + row.settable) == 1);
        SendMessageA(range, WM_LBUTTONDOWN, MK_LBUTTON, At(row.press.x, row.press.y));
        CHECK(State(range) == "20 50 70"); // nothing jumps
        SendMessageA(range, WM_MOUSEMOVE, MK_LBUTTON, At(row.stop.x, row.stop.y));
        SendMessageA(range, WM_LBUTTONUP, 0, At(row.stop.x, row.stop.y));
        SendMessageA(range, WM_MOUSEMOVE, 0, At(4, 35));
        CHECK(State(range) == row.state);
        CHECK(panel.Parameter("AMP1*low") + " " + panel.Parameter("AMP1*value") + " " +
                  panel.Parameter("AMP1*high") ==
              row.state);
    }
}

TEST_CASE("keys and wheel step a range whose value may be set") {
    const TestPanel panel;
    HWND range = panel.Create("BRANGE", "Range");
    for (const char* settable : {"none", "ends", "value", "all"}) {
        INFO(std::string(settable));
        const bool maySet = settable[0] == 'v' || settable[0] == 'a';
        LoadLines(range, std::string("properties=80,-20,10|settable=") + settable);
        const std::pair<WPARAM, const char*> keys[] = {{VK_UP, "11"},    {VK_NEXT, "1"},  {VK_END, "-20"},
                                                       {VK_LEFT, "-20"}, {VK_HOME, "80"}, {'A', "80"}};
        for (const auto& [key, value] : keys) {
            SendMessageA(range, WM_KEYDOWN, key, 1);
            CHECK(Text(range) == (maySet ? value : "10"));
        }
        SendMessageA(range, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
        CHECK(Text(range) == (maySet ? "79" : "10"));
        SendMessageA(range, WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, -WHEEL_DELTA), 0);
        CHECK(Text(range) == (maySet ? "78.9" : "10"));
    }
}

TEST_CASE("the marker of a range has the alarm colour outside of the band") {
    const TestPanel panel;
    HWND range = panel.Create("BRANGE", "Range");
    LoadLines(range, PIXELS);
    for (const bool isVertical : {false, true}) {
        CAPTURE(isVertical);
        SetWindowPos(range, nullptr, 0, 0, isVertical ? 40 : 100, isVertical ? 100 : 40,
                     SWP_NOMOVE | SWP_NOZORDER);
        const auto at = [&](int along, int across) {
            const Picture picture(range);
            return isVertical ? picture.At(across, 99 - along) : picture.At(along, across);
        };
        for (const auto& [value, colour] : {std::pair(50, LINE), {80, ALARM}, {10, ALARM}}) {
            SetValue(range, static_cast<float>(value));
            CHECK(at(value + 4, 3) == colour);
        }
        for (const auto& [number, isInside] : {std::pair(19, false), {21, true}, {69, true}, {71, false}}) {
            CHECK((at(number + 4, 20) == BAND) == isInside);
        }
        CHECK(at(24, 35) == LINE);
        LoadLines(range, "properties=91,0"); // turned over
        CHECK(at(91 - 10 + 4, 3) == ALARM);
        LoadLines(range, "properties=0,91");
    }
}

TEST_CASE("a range of any size and numbers is drawn, and painted only when something is new") {
    const TestPanel panel(TestPanel::Visible);
    HWND range = panel.Create("BRANGE", "Range");
    for (const auto& [width, height] : {std::pair(0, 0), {1, 1}, {4000, 1}, {1, 4000}, {9, 9}}) {
        SetWindowPos(range, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
        for (const char* lines : {"properties=5,5,5|low=5|high=5", "low=|high=3e38",
                                  "properties=-2147483648,2147483647,1e9|low=-3e38|settable=all"}) {
            CHECK(LoadLines(range, lines));
            const Picture picture(range);
            SendMessageA(range, WM_LBUTTONDOWN, MK_LBUTTON, At(0, 0));
            SendMessageA(range, WM_MOUSEMOVE, MK_LBUTTON, At(width, -height));
            SendMessageA(range, WM_LBUTTONUP, 0, At(0, 0));
        }
    }
    SetWindowPos(range, nullptr, 0, 0, 100, 40, SWP_NOMOVE | SWP_NOZORDER);
    LoadLines(range, PIXELS);
    UpdateWindow(range);
    for (const char* line : {"value=50", "low=20", "high=70", "low=999", "high=70"}) {
        INFO(std::string(line));
        const bool isNew = std::string(line) == "low=999";
        Load(range, line);
        Poll(range);
        CHECK((GetUpdateRect(range, nullptr, FALSE) != 0) == isNew);
        UpdateWindow(range);
    }
}

TEST_SUITE_END();
