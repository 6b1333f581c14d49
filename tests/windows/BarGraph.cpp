// What is particular to the bar graph.

#include "tests/windows/Buttons.h"

TEST_SUITE_BEGIN("BarGraph");

namespace {

constexpr COLORREF GREEN = RGB(0, 255, 0), RED = RGB(255, 0, 0), GROUND = RGB(0, 0, 0);

// 20 wide and 100 high, of plain colours.
HWND CreateBar(const TestPanel& panel, const char* lines = "") {
    HWND bar = panel.Create("FADING", "Bar");
    SetWindowPos(bar, nullptr, 0, 0, 20, 100, SWP_NOMOVE | SWP_NOZORDER);
    LoadLines(bar, "interval=3600000|backgroundcolor=0|barcolor=0xff00");
    LoadLines(bar, lines);
    return bar;
}

std::string UpdateArea(HWND bar) {
    RECT area{};
    GetUpdateRect(bar, &area, FALSE);
    ValidateRect(bar, nullptr);
    return std::to_string(area.left) + "," + std::to_string(area.top) + "," + std::to_string(area.right) +
           "," + std::to_string(area.bottom);
}

} // namespace

TEST_CASE("a bar keeps a float and says that it is a whole number") {
    const TestPanel panel;
    panel.Declare("AMP1*device=simulated\nAMP1*a=float,-1000,1000,10,\n");
    HWND bar = CreateBar(panel, "function=AMP1*a");
    CHECK(SendMessageA(bar, CWM_GETCONTROLTYPE, 0, 0) == DATATYPE_INTEGER);
    float number = 30.75F;
    CHECK(Send(bar, COMMAND_SET, DATATYPE_FLOAT, &number) == 1);
    CHECK(Send(bar, COMMAND_SET, DATATYPE_FLOAT, &number) == 0);
    CHECK(panel.Parameter("AMP1*a") == "30.75");
    int whole = 0;
    CHECK(Send(bar, COMMAND_GET, DATATYPE_INTEGER, &whole) == 1);
    CHECK(whole == 30);
    HWND follower = panel.Create("KNOB", "Follower");
    Load(follower, "connection=Bar");
    Poll(follower);
    CHECK(Value(follower) == 30.75F);
    ph_SetParameter(panel.Root(), "AMP1*a", "-500");
    Poll(bar);
    CHECK(Value(bar) == 0.0F); // limited to the range
    CHECK(Load(bar, "properties=-10,10,4") == 1);
    CHECK(panel.Parameter("AMP1*a") == "-500"); // the range and its value are only shown
}

TEST_CASE("a bar is drawn towards its direction, from its origin, in the colours of its zones") {
    struct Row {
        const char* lines;
        POINT lit;
        POINT unlit;
    };
    const Row rows[] = {
        {"value=25", {10, 80}, {10, 70}},
        {"direction=down|value=25", {10, 20}, {10, 30}},
        {"direction=right|value=25", {4, 50}, {6, 50}},
        {"direction=left|value=25", {15, 50}, {13, 50}},
        {"properties=100,0,25", {10, 20}, {10, 30}},
        {"properties=-50,50,-25|origin=0", {10, 60}, {10, 80}},
        {"properties=10,1000,100|law=log", {10, 51}, {10, 48}},
        {"properties=0,0,0", {-1, 0}, {10, 99}},
        {"style=segments|segment=10|value=25", {10, 99}, {10, 90}}, // the gap
        {"zones=0=0xff00;50=0xff|value=75", {10, 60}, {10, 20}},
        {"style=gradient|zones=0=0xff00|value=25", {10, 80}, {10, 70}},
    };
    for (const Row& row : rows) {
        CAPTURE(std::string(row.lines));
        const TestPanel panel;
        const Picture picture(CreateBar(panel, row.lines));
        if (row.lit.x >= 0) {
            CHECK(picture.At(row.lit.x, row.lit.y) == GREEN);
        }
        CHECK(picture.At(row.unlit.x, row.unlit.y) == GROUND);
    }
    const TestPanel panel;
    CHECK(Picture(CreateBar(panel, "zones=0=0xff00;50=0xff|value=75")).At(10, 40) == RED);
}

TEST_CASE("a logarithmic bar refuses what has no logarithm, in either order") {
    const TestPanel panel;
    HWND bar = CreateBar(panel);
    CHECK(Load(bar, "law=log") == 0);
    LoadLines(bar, "properties=20,20000,1000|law=log");
    CHECK(Load(bar, "properties=0,20000") == 0);
    CHECK(Text(bar, "properties") == "20,20000,1000");
    const std::string saved = panel.Saved();
    const TestPanel second;
    CHECK(second.Open(saved) == 1);
    CHECK(second.Saved() == saved);
}

TEST_CASE("only what changed is painted, and nothing when nothing did") {
    const TestPanel panel(TestPanel::Visible);
    panel.Declare("AMP1*device=simulated\nAMP1*a=float,0,100,20,\n");
    HWND bar = CreateBar(panel, "style=segments|segment=4|hold=3600000|function=AMP1*a");
    Poll(bar);
    UpdateWindow(bar);
    const std::pair<const char*, const char*> rows[] = {{"20", "0,0,0,0"},
                                                        {"20.5", "0,0,0,0"},
                                                        {"24", "0,76,20,80"},
                                                        {"20", "0,0,0,0"}, // its peak is there
                                                        {"32", "0,68,20,76"}};
    for (const auto& [level, area] : rows) {
        CAPTURE(std::string(level));
        ph_SetParameter(panel.Root(), "AMP1*a", level);
        Poll(bar);
        CHECK(UpdateArea(bar) == area);
    }
    LoadLines(bar, "hold=0|fmt=%.1f");
    UpdateWindow(bar);
    ph_SetParameter(panel.Root(), "AMP1*a", "32.2");
    Poll(bar);
    CHECK(UpdateArea(bar) != "0,0,0,0"); // the number alone
}

TEST_CASE("a peak stays until a click that is not the panel's, and a bar falls with its ticks") {
    const TestPanel panel;
    HWND bar = CreateBar(panel, "hold=3600000|value=80|value=10");
    const auto hasPeak = [bar] { return Picture(bar).At(10, 21) == GREEN; };
    CHECK(hasPeak());
    ph_SetMode(panel.Root(), 1);
    SendMessageA(bar, WM_LBUTTONDOWN, MK_LBUTTON, At(5, 5));
    CHECK(hasPeak());
    ph_SetMode(panel.Root(), 0);
    SendMessageA(bar, WM_LBUTTONDOWN, MK_LBUTTON, At(5, 5));
    CHECK_FALSE(hasPeak());
    LoadLines(bar, "hold=0|value=100|fall=200|value=0");
    CHECK(Value(bar) == 0.0F);
    CHECK(Picture(bar).At(10, 90) == GREEN);
    CHECK(ObjectOf(bar).DueIn(GetTickCount()) == 0);
    CHECK(Await([&] {
        ph_Tick(panel.Root());
        return ObjectOf(bar).DueIn(GetTickCount()) > 0;
    }));
    CHECK(Picture(bar).At(10, 99) == GROUND);
}

TEST_CASE("the number over a bar can be read on both of its parts") {
    const TestPanel panel;
    HWND bar = CreateBar(panel, "direction=right|barcolor=0xffffff|fmt=%.0f|font=Tahoma,14");
    SetWindowPos(bar, nullptr, 0, 0, 100, 40, SWP_NOMOVE | SWP_NOZORDER);
    Load(bar, "value=50");
    const auto count = [bar](COLORREF colour, int from, int to) {
        const Picture picture(bar);
        int found = 0;
        for (int at = 0; at < 40 * (to - from); ++at) {
            found += picture.At(from + at % (to - from), at / (to - from)) == colour ? 1 : 0;
        }
        return found;
    };
    CHECK(count(RGB(0, 0, 0), 0, 50) > 10);
    CHECK(count(RGB(255, 255, 255), 50, 100) > 10);
    LoadLines(bar, "style=segments|value=99|barcolor=0xff00");
    CHECK(count(RGB(255, 255, 255), 35, 65) > 20); // on a plate
    CHECK(Picture(bar).At(50, 20 - 9) == GROUND);
    CHECK(Picture(bar).At(50, 2) == GREEN);
    Load(bar, "textcolor=0xff");
    CHECK(count(RED, 0, 100) > 20);
}

TEST_CASE("sizes and texts beyond reason do no harm") {
    const TestPanel panel;
    HWND bar = CreateBar(panel, "style=gradient|zones=0=0xff;50=0xff00|fmt=%.99f|hold=10|fall=1");
    for (const SIZE size : {SIZE{1, 1}, {4000, 4000}, {1, 4000}, {0, 0}}) {
        SetWindowPos(bar, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
        for (const char* lines :
             {"direction=up|value=99|style=segments|segment=1000", "direction=left|value=1|style=gradient",
              "properties=2147483647,-2147483648,1e30|style=solid"}) {
            LoadLines(bar, lines);
            const Picture picture(bar);
        }
    }
    for (const char* keyword : {"zones", "origin", "properties", "law", "style", "hold"}) {
        CHECK(Load(bar, keyword + std::string("=") + std::string(4000, '9')) == 0);
    }
    CHECK(Load(bar, "hold=-5") == 1);
    CHECK(Text(bar, "hold") == "0");
}

TEST_SUITE_END();
