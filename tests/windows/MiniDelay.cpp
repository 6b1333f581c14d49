// What is particular to the view of a delay: its unit and its lamp.
#include "tests/windows/Buttons.h"
#include "tests/windows/HeldKeys.h"

TEST_SUITE_BEGIN("MiniDelay");

TEST_CASE("a delay is stepped in the unit of its view, and keeps its own") {
    const TestPanel panel(TestPanel::Visible);
    panel.Declare("DSP*device=simulated\nDSP*delay=delay,,,0,10 ft\n");
    HWND view = panel.Create("MINIDELAY", "View");
    SetWindowPos(view, nullptr, 0, 0, 120, 48, SWP_NOZORDER);
    REQUIRE(LoadLines(view, "function=DSP*delay|unit=ft"));
    const auto wheel = [&](int notches, WORD keys = 0) {
        SendMessageA(view, WM_MOUSEWHEEL, MAKEWPARAM(keys, notches * WHEEL_DELTA), 0);
        return panel.Parameter("DSP*delay");
    };
    CHECK(wheel(1) == "0,11 ft"); // what the device holds, though nobody has asked for it yet
    CHECK(wheel(-2, MK_SHIFT) == "0,10.8 ft");
    Load(view, "unit=ms");
    CHECK(wheel(1) == "0,12.3858 ft"); // 9.59 ms, and one more on the grid of milliseconds
    const HeldKeys none("");
    SendMessageA(view, WM_KEYDOWN, VK_NEXT, 1);
    CHECK(panel.Parameter("DSP*delay") == "0,1.12598 ft");
    SendMessageA(view, WM_KEYDOWN, VK_NEXT, 1);
    CHECK(panel.Parameter("DSP*delay") == "0,0 ft");
    const auto click = [&](int x, int y) {
        SendMessageA(view, WM_LBUTTONDOWN, MK_LBUTTON, At(x, y));
        SendMessageA(view, WM_LBUTTONUP, 0, At(x, y));
        return panel.Parameter("DSP*delay");
    };
    CHECK(click(60, 20) == "0,0 ft");
    CHECK(click(14, 18) == "1,0 ft");
    SendMessageA(view, WM_KEYDOWN, VK_SPACE, 1);
    CHECK(panel.Parameter("DSP*delay") == "0,0 ft");
    Load(view, "value=,5 m");
    CHECK(panel.Parameter("DSP*delay") == "0,5 m");
    ph_SetParameter(panel.Root(), "DSP*delay", "1,250 ms");
    Poll(view);
    CHECK(Text(view, "value") == "1,250 ms");
    const Picture picture(view); // the bar is half full
    CHECK(picture.At(20, 41) != picture.At(100, 41));
    ph_SetParameter(panel.Root(), "DSP*online", "0");
    wheel(1);
    ph_SetParameter(panel.Root(), "DSP*online", "1");
    CHECK(panel.Parameter("DSP*delay") == "1,250 ms");
}

TEST_SUITE_END();
