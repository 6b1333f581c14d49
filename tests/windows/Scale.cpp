// What is particular to the scale: where its marks stand beside other controls, and its pointer.

#include "tests/windows/Buttons.h"
#include "tests/windows/PartedImage.h"

#include <algorithm>
#include <cmath>

TEST_SUITE_BEGIN("Scale");

namespace {

constexpr COLORREF MARK = RGB(0, 0, 255), GROUND = RGB(1, 2, 3);

void Place(HWND control, const RECT& place) {
    SetWindowPos(control, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

// Of plain colours and without numbers: each main mark goes right through it.
HWND CreateScale(const TestPanel& panel, const char* lines) {
    HWND scale = panel.Create("SCALE", "Scale");
    LoadLines(scale, "interval=3600000|backgroundcolor=0x030201|linecolor=0xff0000|side=none|minor=0");
    LoadLines(scale, lines);
    return scale;
}

// Rows or columns on the screen that have a pixel of that kind in the middle of the control.
template <class IsWanted>
std::vector<int> Lines(HWND control, bool isHorizontal, IsWanted isWanted) {
    RECT client{};
    GetClientRect(control, &client);
    POINT origin{};
    ClientToScreen(control, &origin);
    const Picture picture(control);
    std::vector<int> lines;
    for (int at = 0; at < (isHorizontal ? client.right : client.bottom); ++at) {
        const COLORREF colour =
            isHorizontal ? picture.At(at, client.bottom / 2) : picture.At(client.right / 2, at);
        if (isWanted(colour)) {
            lines.push_back(at + (isHorizontal ? origin.x : origin.y));
        }
    }
    return lines;
}

std::vector<int> MarksOf(HWND scale, bool isHorizontal) {
    return Lines(scale, isHorizontal, [](COLORREF colour) { return colour == MARK; });
}

} // namespace

TEST_CASE("a mark stands where the control beside it shows that value") {
    const TestFolder folder;
    // Track and knob of a fader, of which the knob has its line on pixel 10; a dark and a bright meter.
    const std::string knob = "bitmap=" + folder.Write("meter.bmp", PartedImage(40, 200, 0x000000, 0xFF0000));
    constexpr RECT HIGH{40, 30, 60, 231}, WIDE{40, 30, 240, 50};
    enum End { FIRST, MIDDLE, LAST };
    struct Row {
        const char* className;
        RECT place; // unless a picture gives it another size
        std::string lines;
        std::vector<int> values; // in the order of the screen, from the top or the left
        COLORREF lit;            // colour of the line or the bar
        End end;                 // of what is lit, where the value is
    };
    const COLORREF red = RGB(255, 0, 0), white = RGB(255, 255, 255), brightest = RGB(234, 184, 3);
    const std::string bar = "barcolor=0xff|backgroundcolor=0|";
    const Row rows[] = {
        {"FADER", HIGH, "bitmap=.\\Controls\\FADER_vertical_30x200.bmp", {0, -30, -80}, white, MIDDLE},
        {"FADER", WIDE, "bitmap=.\\Controls\\FADER_horizontal_200x30.bmp", {-80, -30, 0}, white, MIDDLE},
        {"FADER", HIGH, "properties=-90,12", {12, 0, -90}, brightest, MIDDLE},
        {"METER", HIGH, knob + "|properties=-60,6", {6, 0, -30, -59}, red, FIRST},
        {"METER", HIGH, knob + "|properties=6,-60", {-59, -30, 0, 6}, red, LAST},
        {"FADING", HIGH, bar + "properties=-60,6", {6, 0, -30, -59}, red, FIRST},
        {"FADING", HIGH, bar + "direction=down|properties=-60,6", {-59, -30, 6}, red, LAST},
        {"FADING", WIDE, bar + "direction=right|properties=-60,6", {-59, -30, 6}, red, LAST},
        {"FADING", WIDE, bar + "direction=left|properties=-60,6", {6, -30, -59}, red, FIRST},
        {"FADING", HIGH, bar + "properties=20,20000|law=log", {20000, 2000, 50}, red, FIRST},
        {"FADING", HIGH, bar + "properties=6,-60", {-50, -30, 5}, red, LAST},
        {"FADING", WIDE, bar + "direction=right|properties=-50,50|origin=0", {20, 50}, red, LAST},
        {"FADING", WIDE, bar + "direction=right|properties=-50,50|origin=0", {-50, -20}, red, FIRST},
        {"FADING", HIGH, bar + "style=segments|segment=7|properties=-60,6", {6, 0, -30}, red, FIRST},
        {"BRANGE", HIGH, "low=33|high=33|alarmcolor=0xff", {100, 40, 0}, red, MIDDLE},
        {"BRANGE", WIDE, "low=33|high=33|alarmcolor=0xff|properties=100,0", {100, 40, 0}, red, MIDDLE},
        {"REVMETER", HIGH, knob, {-1, -20, -40}, red, LAST},
    };
    for (const Row& row : rows) {
        INFO(std::string(row.className), " ", row.lines);
        const TestPanel panel;
        std::string marks = "marks=";
        for (const int value : row.values) {
            marks += std::to_string(value) + ",";
        }
        HWND scale = CreateScale(panel, ("beside=control|" + marks).c_str()); // before that one is there
        HWND control = panel.Create(row.className, "Control");
        LoadLines(control, "interval=3600000");
        Place(control, row.place);
        CHECK(LoadLines(control, row.lines));
        const bool isHorizontal = row.place.right - row.place.left > 100;
        // Not of the same size or at the same height, so that the scale cannot do without the screen.
        Place(scale, isHorizontal ? RECT{33, 70, 250, 90} : RECT{110, 25, 130, 240});
        std::vector<int> shown;
        for (const int value : row.values) {
            SetValue(control, static_cast<float>(value));
            const auto lit = Lines(control, isHorizontal, [&](COLORREF colour) { return colour == row.lit; });
            REQUIRE_FALSE(lit.empty());
            const int ends[] = {lit.front(), (lit.front() + lit.back()) / 2, lit.back()};
            shown.push_back(ends[row.end]);
        }
        CHECK(MarksOf(scale, isHorizontal) == shown);
    }
}

TEST_CASE("a scale follows what becomes of the control beside it") {
    const TestPanel panel;
    HWND strip = panel.Create("MIXER", "Strip");
    HWND bar = panel.Create("FADING", "Bar");
    HWND scale = CreateScale(panel, "properties=0,50|margin=0|marks=0,50,100");
    Place(bar, {40, 30, 60, 131});
    Place(scale, {70, 30, 90, 131});
    RECT origin{};
    GetWindowRect(scale, &origin);
    const auto marks = [&](const char* wanted) {
        for (int tick = 0; tick < 2; ++tick) {
            ph_Tick(panel.Root()); // long before its interval has passed
        }
        CHECK(ObjectOf(scale).DueIn(GetTickCount()) > 0);
        std::string text;
        for (const int row : MarksOf(scale, false)) {
            text += std::to_string(row - origin.top) + " ";
        }
        CHECK(text == wanted);
    };
    marks("0 100 ");
    for (int time = 0; time < 2; ++time) {
        Load(scale, "beside=%n*Bar");
        marks("0 50 100 ");
    }
    Place(bar, {40, 40, 60, 141});
    CHECK(ObjectOf(scale).DueIn(GetTickCount()) == 0);
    marks("10 60 "); // the third one is beyond the window
    Place(scale, {70, 40, 90, 141});
    GetWindowRect(scale, &origin);
    marks("0 50 100 ");
    Load(bar, "properties=0,200");
    marks("50 76 100 ");
    Load(bar, "properties=1,10000");
    Load(scale, "marks=1,100,10000");
    Load(bar, "law=log");
    marks("0 50 100 ");
    CHECK(Text(scale, "properties") == "0,50");
    CHECK(Text(scale, "law") == "linear");
    DestroyWindow(bar);
    marks("0 50 100 ");
    bar = panel.Create("BRANGE", "Bar");
    Place(bar, {40, 40, 60, 141});
    Load(bar, "properties=0,10000");
    marks("4 95 96 ");
    Load(scale, "beside=Nobody");
    marks("98 ");                                          // its own range again
    for (const char* other : {"Scale", "Strip", "AMP1"}) { // nothing to stand beside
        CHECK(Load(scale, std::string("beside=") + other) == 1);
        marks("98 ");
    }
    CHECK(Text(scale, "beside") == "AMP1");
    HWND inner = CreateControl("SCALE", "Inner", strip, &ObjectOf(strip));
    LoadLines(inner,
              "backgroundcolor=0x030201|linecolor=0xff0000|side=none|beside=%n*Fader|marks=0,-80|minor=0");
    RECT place{};
    GetWindowRect(panel.Find("Strip*Fader"), &place);
    MapWindowPoints(nullptr, strip, reinterpret_cast<POINT*>(&place), 2);
    Place(inner, {60, 0, 80, 252});
    POINT strips{};
    ClientToScreen(strip, &strips);
    const auto rows = MarksOf(inner, false);
    REQUIRE(rows.size() == 2);
    CHECK(rows.front() - strips.y == place.top + 10);
    CHECK(rows.back() - strips.y == place.bottom - 12);
}

TEST_CASE("a bar beside a fader, or one in a strip, has equal values at equal heights") {
    const TestPanel panel;
    HWND strip = panel.Create("MIXER", "Strip");
    HWND fader = panel.Create("FADER", "Fader");
    LoadLines(fader, "bitmap=.\\Controls\\FADER_vertical_30x200.bmp|properties=-90,10");
    HWND scale = CreateScale(panel, "marks=-60,-37,-1");
    HWND bar = panel.Create("FADING", "Bar");
    LoadLines(bar, "interval=3600000|properties=-100,100|barcolor=0xff0000|backgroundcolor=0");
    Place(scale, {110, 0, 130, 300});
    Place(bar, {140, 20, 150, 290});
    const auto compare = [&] {
        for (int tick = 0; tick < 2; ++tick) {
            ph_Tick(panel.Root());
        }
        std::vector<int> heads;
        for (const float value : {-1.0F, -37.0F, -60.0F}) {
            SetValue(bar, value);
            const auto lit = MarksOf(bar, false);
            REQUIRE_FALSE(lit.empty());
            heads.push_back(lit.front());
        }
        CHECK(MarksOf(scale, false) == heads);
        return heads;
    };
    LoadLines(scale, "beside=Fader");
    LoadLines(bar, "beside=Fader");
    const auto high = compare();
    SetValue(bar, 100); // the rest of it has no ground
    CHECK(MarksOf(bar, false).size() == 200 - 22);
    Place(fader, {40, 40, 70, 240});
    CHECK(compare() != high);
    for (HWND control : {scale, bar}) {
        LoadLines(control, "beside=Strip*Fader");
    }
    const auto inStrip = compare();
    Place(strip, {10, 30, 58, 282});
    CHECK(compare() != inStrip);
    LoadLines(fader, "bitmap=.\\Controls\\FADER_horizontal_200x30.bmp");
    LoadLines(bar, "beside=Fader"); // which goes another way: its own range and all of its length
    SetValue(bar, 0);
    CHECK(MarksOf(bar, false).size() == 135);
}

TEST_CASE("the pointer shows a bound value, is painted alone and never sends") {
    const TestPanel panel(TestPanel::Visible);
    panel.Declare("AMP1*device=simulated\nAMP1*a=float,-100,100,-20,\nAMP1*b=float,-100,100,0,\n");
    HWND scale = CreateScale(panel, "side=right|marks=-80|textcolor=0xff00|fmt=");
    Place(scale, {70, 30, 90, 131});
    const auto rows = [scale] {
        std::string text;
        const Picture picture(scale);
        for (int row = 0; row < 101; ++row) {
            text += picture.At(5, row) == RGB(0, 255, 0) ? std::to_string(row) + " " : "";
        }
        return text;
    };
    CHECK(rows().empty());
    Load(scale, "properties=-80,0");
    CHECK(SetValue(scale, -40.0F) == 1);
    CHECK(rows().empty()); // not bound
    Load(scale, "function=AMP1*a");
    Poll(scale);
    CHECK(rows() == "27 28 29 30 31 32 33 ");
    UpdateWindow(scale);
    CHECK(SetValue(scale, 30.7F) == 1);
    CHECK(Value(scale) == 0.0F); // limited to its range
    CHECK(panel.Parameter("AMP1*a") == "-20");
    RECT area{};
    GetUpdateRect(scale, &area, FALSE);
    CHECK((area.left == 0 && area.right == 6 && area.top == 8 && area.bottom == 34));
    CHECK(rows() == "8 9 10 11 12 13 14 ");
    UpdateWindow(scale);
    CHECK(SetValue(scale, 0.0F) == 0);
    Load(scale, "properties=-80,-10");
    CHECK(Value(scale) == -10.0F);
    UpdateWindow(scale);
    CHECK(SetValue(scale, -10.0F) == 0);
    CHECK_FALSE(GetUpdateRect(scale, &area, FALSE));
    CHECK(SendMessageA(scale, CWM_GETCONTROLTYPE, 0, 0) == DATATYPE_INTEGER);
}

TEST_CASE("sizes and texts beyond reason do no harm") {
    const TestPanel panel;
    HWND bar = panel.Create("FADING", "Bar");
    HWND scale = CreateScale(panel, "beside=Bar|fmt=%.99f|minor=9");
    for (const SIZE size : {SIZE{1, 1}, {4000, 4000}, {1, 4000}, {4000, 1}, {0, 0}}) {
        SetWindowPos(bar, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
        SetWindowPos(scale, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
        for (const char* lines : {"side=left|properties=2147483647,-2147483648", "side=both|step=1000000000",
                                  "side=right|step=0.000001", "side=none|properties=5,5|margin=16384"}) {
            LoadLines(scale, lines);
            Load(bar, "properties=2147483647,-2147483648");
            for (const char* name : {"beside=Bar", "beside="}) {
                Load(scale, name);
                const Picture picture(scale);
            }
        }
    }
    for (const char* keyword : {"properties", "law", "side", "marks", "minor", "fmt"}) {
        CHECK(Load(scale, keyword + std::string("=") + std::string(4000, '9')) == 0);
    }
    CHECK(Load(scale, "marks=" + Repeated(257, "1,")) == 0);
    CHECK(Load(scale, "marks=" + Repeated(256, "-1234567e-9,")) == 1);
    CHECK(panel.Saved().find("marks=-0.00123457,") != std::string::npos);
}

TEST_SUITE_END();
