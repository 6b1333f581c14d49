// What controls take, they give back.

#include "Panelhost/Bitmap.h"
#include "Panelhost/Editing.h"
#include "tests/windows/ControlClasses.h"
#include "tests/windows/Resources.h"
#include "tests/windows/TestPanel.h"

TEST_SUITE_BEGIN("Leaks");

TEST_CASE("the counters that read tables of the system see what is kept") {
    const Resources before = CountResources();
    const int blocks = CountHeapBlocks();
    const std::vector<std::string> kept(100, std::string(100, 'x'));
    HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    HANDLE event = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    HWND hidden = CreateWindowExA(0, "STATIC", "", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr, nullptr);
    const Resources now = CountResources();
    CHECK(CountHeapBlocks() > blocks + 90);
    CHECK(now.gdi == before.gdi + 1);
    CHECK(now.handles > before.handles);
    CHECK(now.windows == before.windows + 1);
    DestroyWindow(hidden);
    CloseHandle(event);
    DeleteObject(brush);
}

TEST_CASE("controls of every class leave nothing behind") {
    const TestPanel panel;
    for (const ExpectedClass& expected : EXPECTED_CLASSES) {
        INFO(std::string(expected.name));
        const std::string_view name = expected.name;
        const bool isCostly =
            name == "EQ" || name == "XOVER" || name == "MIXER" || name == "CROSSOVER" || name == "AUTOMIXER";
        const int count = isCostly ? 30 : 100;
        int lives = 0;
        const std::string left = LeftBehind(count, [&] {
            HWND control = panel.Create(expected.name, "Control");
            REQUIRE(control != nullptr);
            if (lives++ % 2 == 0) {
                for (const char* style : {"style=dark", "style=classic"}) {
                    Load(panel.Window(), style);
                    const Picture painted(control);
                    for (HWND child : ChildrenOf(control)) {
                        const Picture part(child);
                    }
                }
                SendMessageA(control, WM_TIMER, 0, 0);
                Load(control, "function=AMP1*gain");
            }
            DestroyWindow(control);
        });
        CHECK(left == "");
    }
}

TEST_CASE("panels with bound controls, dialogs and devices leave nothing behind") {
    const std::string file = "background=.\\Controls\\Panel_dark.png\r\n"
                             "control=0x00000000 KNOB \"A\" 0x40000000 0,0,47,47\r\n"
                             "control=0x00000000 KNOB \"B\" 0x40000000 0,0,47,47\r\n"
                             "A*bitmap=.\\Controls\\KNOB_blue.bmp\r\n"
                             "A*function=AMP1*gain;AMP2*gain\r\n"
                             "A*connection=B;C\r\n";
    const std::string left = LeftBehind(20, [&] {
        TestPanel panel;
        panel.Declare("AMP1*device=simulated\nAMP1*gain=float,0,100,50,\n");
        REQUIRE(panel.Open(file) == 2);
        HWND knob = panel.Find("A");
        SetValue(knob, 20.0F);
        ph_Tick(panel.Root());
        SendMessageA(knob, WM_RBUTTONDOWN, MK_RBUTTON | MK_SHIFT | MK_CONTROL, 0);
        REQUIRE(ObjectOf(knob).dialog != nullptr);
        SendMessageA(panel.Find("B"), CWM_PARAMETERDLG, 0, 0);
        std::string text;
        REQUIRE(a_PanelText(panel.Root(), 0, 3, &text) == 3);
        REQUIRE(panel.Saved().starts_with("background="));
    });
    CHECK(left == "");
    CHECK(a_HostinfoCount() + a_BitmapCount() == 0);
}

TEST_SUITE_END();
