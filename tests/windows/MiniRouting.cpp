// What is particular to the matrix view: clicks and drags on crosspoints, keys, names, what is repainted.
#include "tests/windows/Buttons.h"
#include "tests/windows/HeldKeys.h"

TEST_SUITE_BEGIN("MiniRouting");

namespace {

constexpr int CELL = 32; // of 4 x 4 without names in 128 x 128

class Matrix {
public:
    explicit Matrix(const std::string& more = "") : panel(TestPanel::Visible) {
        panel.Declare(
            "DSP*device=simulated\nDSP*route%i_%o=matrix,4,4,in%i,out%o\nDSP*route2_2=integer,0,1,1\n"
            "DSP*name1=text,,,Voice\nDSP*name2=text,,,Band\nDSP*name3=text,,,Choir\n"
            "DSP*name4=text,,,Organ\n");
        view = panel.Create("MINIROUTING", "View");
        Place(128, 128);
        CHECK(LoadLines(view, "font=Tahoma,40|inputs=4|outputs=4|routes=DSP*route%i_%o" +
                                  (more.empty() ? "" : "|" + more)));
        Poll(view);
        UpdateWindow(view);
    }

    void Place(int width, int height) const {
        SetWindowPos(view, nullptr, 0, 0, width, height, SWP_NOZORDER);
    }
    std::string On() const { return Text(view, "value"); }
    bool IsOn(const std::string& route) const {
        return panel.Parameter(("DSP*route" + route).c_str()) == "1";
    }
    // In the middle of the cell, counted from 1.
    static LPARAM Cell(int input, int output) {
        return At(output * CELL - CELL / 2, input * CELL - CELL / 2);
    }
    void Press(int input, int output, WPARAM keys = MK_LBUTTON) const {
        SendMessageA(view, WM_LBUTTONDOWN, keys, Cell(input, output));
    }
    void Move(int input, int output) const {
        SendMessageA(view, WM_MOUSEMOVE, MK_LBUTTON, Cell(input, output));
    }
    void Release() const { SendMessageA(view, WM_LBUTTONUP, 0, 0); }
    void Key(WPARAM key, const char* held = "") const {
        const HeldKeys keys(held);
        SendMessageA(view, WM_KEYDOWN, key, 1);
    }
    std::string Status() const {
        char text[TEXT_SIZE] = "";
        ObjectOf(view).OnGetTooltip(0, reinterpret_cast<LPARAM>(text));
        return text;
    }

    TestPanel panel;
    HWND view;
};

} // namespace

TEST_CASE("a click sets a crosspoint, and a drag paints what the first one became") {
    const Matrix test;
    CHECK(test.On() == "2_2");
    test.Press(1, 3);
    test.Release();
    CHECK(test.IsOn("1_3"));
    CHECK(test.On() == "1_3;2_2");
    test.Press(1, 3);
    test.Release();
    CHECK_FALSE(test.IsOn("1_3"));
    test.Press(1, 1);
    test.Move(4, 4); // nothing on the way is left out
    test.Release();
    CHECK(test.On() == "1_1;2_2;3_3;4_4");
    test.Press(2, 2);
    test.Move(2, 1);
    test.Move(1, 1);
    ReleaseCapture(); // what is painted stays
    test.Move(4, 4);
    CHECK(test.On() == "3_3;4_4");
    test.Press(1, 1, MK_LBUTTON | MK_CONTROL); // the panel's
    test.Release();
    CHECK(test.On() == "3_3;4_4");
    // Another one has switched it on meanwhile: the click switches it off.
    ph_SetParameter(test.panel.Root(), "DSP*route1_4", "1");
    test.Press(1, 4);
    test.Release();
    CHECK_FALSE(test.IsOn("1_4"));
    ph_SetParameter(test.panel.Root(), "DSP*online", "0");
    test.Press(1, 4);
    test.Release();
    ph_SetParameter(test.panel.Root(), "DSP*online", "1");
    CHECK_FALSE(test.IsOn("1_4"));
    CHECK(IsMarked(test.view) == false);
}

TEST_CASE("an exclusive matrix has one input an output, also of those that nobody has asked for yet") {
    const Matrix test("exclusive=1");
    ph_SetParameter(test.panel.Root(), "DSP*route4_2", "1");
    test.Press(1, 2);
    test.Release();
    CHECK(test.On() == "1_2");
    CHECK_FALSE(test.IsOn("4_2"));
    test.Press(1, 2);
    test.Release();
    CHECK(test.On().empty());
    test.Press(1, 1);
    test.Move(4, 1);
    test.Release();
    CHECK(test.On() == "4_1");
    Load(test.view, "value=1_1;2_3;2_4");
    CHECK(test.IsOn("2_4"));
    CHECK(test.On() == "1_1;2_3;2_4");
}

TEST_CASE("keys go through a matrix and switch, and the status line names what is there") {
    const Matrix test("inputnames=DSP*name%i|outputnames=DSP*name%o");
    test.Key(VK_RIGHT);
    test.Key(VK_DOWN);
    test.Key(VK_SPACE);
    CHECK(test.On().empty());
    test.Key(VK_END);
    test.Key(VK_SPACE);
    test.Key(VK_HOME, "Ctrl");
    test.Key(VK_SPACE);
    CHECK(test.On() == "1_4;2_4");
    SetFocus(test.view);
    CHECK(test.Status() == "View: Voice > Organ   on");
    SendMessageA(test.view, WM_MOUSEMOVE, 0, Matrix::Cell(2, 3));
    CHECK(test.Status() == "View: Band > Choir   off");
    ph_SetParameter(test.panel.Root(), "DSP*name3", "Children");
    Poll(test.view);
    CHECK(test.Status() == "View: Band > Children   off");
    SendMessageA(test.view, WM_MOUSELEAVE, 0, 0);
    ph_SetMode(test.panel.Root(), 1);
    test.Key(VK_SPACE); // the panel's
    CHECK(test.On() == "1_4;2_4");
}

TEST_CASE("one crosspoint that changes is all that is painted") {
    const Matrix test;
    ValidateRect(test.view, nullptr);
    Poll(test.view);
    RECT painted{};
    CHECK(GetUpdateRect(test.view, &painted, FALSE) == FALSE); // nothing is new
    const COLORREF off = Picture(test.view).At(3 * CELL + CELL / 2, CELL / 2);
    ph_SetParameter(test.panel.Root(), "DSP*route1_4", "1");
    Poll(test.view);
    CHECK(GetUpdateRect(test.view, &painted, FALSE) != FALSE);
    const RECT cell{3 * CELL, 0, 4 * CELL, CELL};
    CHECK(EqualRect(&painted, &cell));
    const Picture after(test.view);
    CHECK(after.At(3 * CELL + CELL / 2, CELL * 3 / 4) == RGB(0x4A, 0xA3, 0xFF));
    CHECK(after.At(2 * CELL + CELL / 2, CELL / 2) == off);
}

TEST_CASE("routes come and go with their device, and a large matrix is scrolled") {
    const Matrix test;
    Load(test.view, "routes=MIX*r%02i_%02o");
    CHECK(IsMarked(test.view));
    test.panel.Declare("MIX*device=simulated\nMIX*r%02i_%02o=matrix,64,64,in%i,out%o\n");
    CHECK_FALSE(IsMarked(test.view));
    LoadLines(test.view, "inputs=64|outputs=64");
    test.Key(VK_END);
    test.Key(VK_END, "Ctrl");
    test.Key(VK_SPACE);
    CHECK(test.panel.Parameter("MIX*r64_64") == "1");
    CHECK(Text(test.view, "value") == "64_64");
    // It has been scrolled to: cells of 14 pixels, 8 of them and a bar at either edge.
    const Picture scrolled(test.view);
    CHECK(scrolled.At(7 * 14 + 7, 7 * 14 + 10) == RGB(0x4A, 0xA3, 0xFF));
    SendMessageA(test.view, WM_MOUSEWHEEL, MAKEWPARAM(0, 100 * WHEEL_DELTA), 0);
    SendMessageA(test.view, WM_LBUTTONDOWN, MK_LBUTTON, At(7, 7));
    test.Release();
    CHECK(test.panel.Parameter("MIX*r01_57") == "1");
    SendMessageA(test.view, WM_LBUTTONDOWN, MK_LBUTTON, At(4, 125)); // the bar
    SendMessageA(test.view, WM_MOUSEMOVE, MK_LBUTTON, At(-50, 125));
    test.Release();
    SendMessageA(test.view, WM_LBUTTONDOWN, MK_LBUTTON, At(7, 7));
    test.Release();
    CHECK(test.panel.Parameter("MIX*r01_01") == "1");
    for (const SIZE size : {SIZE{1, 1}, {4000, 3}, {60, 30}, {3000, 900}}) {
        test.Place(size.cx, size.cy);
        CHECK(Picture(test.view).At(0, 0) != CLR_INVALID);
    }
}

TEST_SUITE_END();
