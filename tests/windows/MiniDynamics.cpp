// What is particular to the view of dynamics: its handles, and what moves along its curve.
#include "tests/windows/Buttons.h"
#include "tests/windows/HeldKeys.h"

TEST_SUITE_BEGIN("MiniDynamics");

namespace {

// A curve of 160 x 80 pixels: 2 and 1 a dB.
class Dynamics {
public:
    explicit Dynamics(const char* mode) : panel(TestPanel::Visible) {
        panel.Declare("DSP*device=simulated\nDSP*in=float,-80,0,-40,dB\n"
                      "DSP*block=dynamics,in,expander\nDSP*block.threshold=float,-80,0,-40,dB\n"
                      "DSP*block.attack=float,0,9,0,\nDSP*block.release=float,0,9,0,\n");
        view = panel.Create("MINIDYNAMICS", "View");
        SetWindowPos(view, nullptr, 0, 0, 170, 80, SWP_NOZORDER);
        CHECK(LoadLines(view, std::string("mode=") + mode +
                                  "|function=DSP*block.threshold|function1=DSP*block.ratio|"
                                  "function4=DSP*block.level|function5=DSP*block.reduction|"
                                  "function6=DSP*block.on"));
        Set("ratio", "2");
    }

    void Set(const char* parameter, const char* value) const {
        ph_SetParameter(panel.Root(), (std::string("DSP*block.") + parameter).c_str(), value);
        Poll(view);
    }
    float Held(const char* parameter) const {
        return std::stof(panel.Parameter((std::string("DSP*block.") + parameter).c_str()));
    }
    void Drag(POINT from, POINT to) const {
        SendMessageA(view, WM_LBUTTONDOWN, MK_LBUTTON, At(from.x, from.y));
        SendMessageA(view, WM_MOUSEMOVE, MK_LBUTTON, At(to.x, to.y));
        SendMessageA(view, WM_LBUTTONUP, 0, At(to.x, to.y));
    }
    void Key(WPARAM key, const char* held = "") const {
        const HeldKeys keys(held);
        SendMessageA(view, WM_KEYDOWN, key, 1);
    }

    TestPanel panel;
    HWND view;
};

} // namespace

TEST_CASE("threshold and ratio are dragged") {
    const Dynamics compressor("compressor");
    compressor.Drag({80, 40}, {100, 40});
    CHECK(compressor.Held("threshold") == doctest::Approx(-30));
    compressor.Drag({100, 5}, {120, 70}); // by its line; up and down moves nothing
    CHECK(compressor.Held("threshold") == doctest::Approx(-20));
    // The ratio is held at -10: at 2 : 1 that is -15, and -18 at 5 : 1.
    compressor.Drag({140, 15}, {140, 18});
    CHECK(compressor.Held("ratio") == doctest::Approx(5));
    compressor.Drag({20, 20}, {90, 90}); // nothing is there
    CHECK(compressor.Held("threshold") == doctest::Approx(-20));

    const Dynamics expander("expander");
    // At -60, 10 below the threshold; further to the left at 20 the ratio is 1.
    expander.Drag({60, 60}, {40, 60});
    CHECK(expander.Held("ratio") == doctest::Approx(1));
}

TEST_CASE("keys, wheel and a double click work the dynamics") {
    const Dynamics test("compressor");
    const struct {
        WPARAM key;
        const char* held;
        float threshold, ratio, on;
    } keys[] = {{VK_RIGHT, "", -39, 2, 1},     {VK_LEFT, "Shift", -39.1F, 2, 1},
                {VK_PRIOR, "", -29, 2, 1},     {VK_UP, "", -29, 2.2F, 1},
                {VK_DOWN, "", -29, 2, 1},      {VK_UP, "Shift", -29, 2.02F, 1},
                {VK_SPACE, "", -29, 2.02F, 0}, {VK_F9, "", -29, 2.02F, 0}};
    for (const auto& key : keys) {
        CAPTURE(key.key);
        test.Key(key.key, key.held);
        CHECK(test.Held("threshold") == doctest::Approx(key.threshold));
        CHECK(test.Held("ratio") == doctest::Approx(key.ratio));
        CHECK(test.Held("on") == key.on);
    }
    SendMessageA(test.view, WM_LBUTTONDBLCLK, MK_LBUTTON, At(20, 20));
    CHECK(test.Held("on") == 1);
    // What others have set meanwhile is what a step begins with.
    ph_SetParameter(test.panel.Root(), "DSP*block.threshold", "-50");
    SendMessageA(test.view, WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    CHECK(test.Held("threshold") == -49);
    Load(test.view, "mode=limiter");
    test.Key(VK_UP);
    CHECK(test.Held("ratio") == doctest::Approx(2.02));
}

TEST_CASE("level and reduction move alone, and what cannot be a curve is marked") {
    const Dynamics test("compressor");
    Load(test.view, "function5=DSP*shown");
    test.panel.Declare("DSP*shown=float,-80,0,0,dB\n");
    Poll(test.view);
    UpdateWindow(test.view);
    const auto bar = [&](int y) { return Picture(test.view).At(165, y); };
    const COLORREF empty = bar(10);
    ph_SetParameter(test.panel.Root(), "DSP*shown", "-20");
    Poll(test.view);
    RECT painted{};
    GetUpdateRect(test.view, &painted, FALSE);
    CHECK(painted.left >= 160); // the bar alone
    CHECK(bar(10) != empty);
    CHECK(bar(30) == empty);
    UpdateWindow(test.view);
    ph_SetParameter(test.panel.Root(), "DSP*in", "-60");
    ph_Tick(test.panel.Root());
    Poll(test.view);
    GetUpdateRect(test.view, &painted, FALSE);
    CHECK(painted.right < 100); // from -40 to -60
    const Picture moved(test.view);
    CHECK(moved.At(40, 60) == RGB(0x5C, 0xD6, 0x84));
    CHECK(moved.At(82, 42) != RGB(0x5C, 0xD6, 0x84));
    test.panel.Declare("DSP*block.ratio=float,0,100,0.5,\n");
    CHECK(IsMarked(test.view));
    for (const SIZE size : {SIZE{1, 1}, {4000, 3}, {60, 30}, {3000, 900}}) {
        SetWindowPos(test.view, nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER);
        CHECK(Picture(test.view).At(0, 0) != CLR_INVALID);
    }
}

TEST_SUITE_END();
