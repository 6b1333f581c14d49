// What is particular to the tile of a processing block: what it is called, and what a click on it does.
#include "tests/windows/Buttons.h"

TEST_SUITE_BEGIN("MiniEdit");

TEST_CASE("a tile is clicked anywhere, and called as its device says") {
    const TestPanel panel(TestPanel::Visible);
    panel.Declare("DSP*device=simulated\nDSP*gate=integer,0,1,0,\nDSP*name=text,,,Gate 1,\n");
    HWND words = panel.Create("BEDIT", "Words");
    HWND tile = panel.Create("MINIEDIT", "Tile");
    SetWindowPos(tile, nullptr, 0, 100, 120, 80, SWP_NOZORDER);
    REQUIRE(LoadLines(tile, "click=Words*value=%l|function=DSP*gate|function1=DSP*name"));
    CHECK_FALSE(IsMarked(tile));
    const auto said = [&] {
        const std::string text = Text(words);
        Load(words, "value=");
        return text;
    };
    const auto press = [&](int x, int y, WPARAM keys = MK_LBUTTON) {
        SendMessageA(tile, WM_LBUTTONDOWN, keys, At(x, y));
    };
    const auto release = [&](int x, int y) { SendMessageA(tile, WM_LBUTTONUP, 0, At(x, y)); };
    said(); // what it is called
    const struct {
        POINT from, to;
        const char* said;
    } clicks[] = {
        {{60, 5}, {60, 5}, "Gate 1"},
        {{60, 70}, {1, 1}, "Gate 1"},
        {{60, 70}, {60, 81}, ""},
        {{60, 70}, {-1, 40}, ""}, // let go of beside it
    };
    for (const auto& click : clicks) {
        press(click.from.x, click.from.y);
        SendMessageA(tile, WM_MOUSEMOVE, MK_LBUTTON, At(click.to.x, click.to.y));
        CHECK(said() == "");
        release(click.to.x, click.to.y);
        CHECK(said() == click.said);
    }
    press(60, 40);
    ReleaseCapture(); // taken away
    release(60, 40);
    press(60, 40, MK_LBUTTON | MK_CONTROL); // the panel's
    release(60, 40);
    CHECK(said() == "");
    SendMessageA(tile, WM_KEYDOWN, VK_RETURN, 1);
    CHECK(said() == "Gate 1");
    Load(tile, "caption=Own");
    SendMessageA(tile, WM_KEYDOWN, VK_RETURN, 1);
    CHECK(said() == "Own");
    ph_SetMode(panel.Root(), 1);
    SendMessageA(tile, WM_KEYDOWN, VK_RETURN, 1);
    CHECK(said() == "");
}

TEST_CASE("the lamp of a tile follows its block") {
    const TestPanel panel(TestPanel::Visible);
    panel.Declare("DSP*device=simulated\nDSP*gate=integer,0,1,1,\n");
    HWND tile = panel.Create("MINIEDIT", "Tile");
    Load(tile, "function=DSP*gate");
    Poll(tile);
    const auto lamp = [tile] { return Picture(tile).At(100 - 9, 9); };
    CHECK(lamp() == RGB(0x5C, 0xD6, 0x84));
    ph_SetParameter(panel.Root(), "DSP*gate", "0");
    Poll(tile);
    CHECK(lamp() == RGB(0x10, 0x13, 0x17));
    ph_SetParameter(panel.Root(), "DSP*online", "0");
    CHECK(IsMarked(tile));
}

TEST_SUITE_END();
