// What the controls draw: over the panel behind them, and at once.

#include "Panelhost/Fonts.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/ImportHook.h"
#include "tests/windows/PartedImage.h"

#include <algorithm>

TEST_SUITE_BEGIN("Drawing");

namespace {

void WINAPI SameTime(SYSTEMTIME* time) {
    *time = {2026, 9, 2, 1, 12, 0, 0, 0};
}

// Its pixels, by a function of x and y.
template <class Pixel>
std::string PixelsOf(HWND control, Pixel at) {
    RECT client;
    GetClientRect(control, &client);
    std::string pixels = std::to_string(client.right) + ":";
    for (int i = 0; i < client.right * client.bottom; ++i) {
        const COLORREF colour = at(i % client.right, i / client.right);
        pixels.append(reinterpret_cast<const char*>(&colour), 3);
    }
    return pixels;
}
std::string PixelsOf(HWND control) {
    const Picture drawn(control);
    return PixelsOf(control, [&](int x, int y) { return drawn.At(x, y); });
}

// Whether the window shows what the control would draw.
bool IsOnScreen(HWND control) {
    const HDC window = GetDC(control);
    const std::string shown = PixelsOf(control, [&](int x, int y) { return GetPixel(window, x, y); });
    ReleaseDC(control, window);
    return shown == PixelsOf(control);
}

// What a control looked like when it was asked for the last time.
class Look {
public:
    explicit Look(HWND control) : control_(control), pixels_(PixelsOf(control)) {}
    bool IsNew() {
        const std::string before = std::exchange(pixels_, PixelsOf(control_));
        return before != pixels_;
    }

private:
    HWND control_;
    std::string pixels_;
};

// The area that has pixels of that colour, "left,top,right,bottom"; empty for none.
RECT AreaOf(HWND control, COLORREF colour) {
    const Picture picture(control);
    RECT area{};
    for (int at = 0; at < 100 * 40; ++at) {
        const RECT pixel{at % 100, at / 100, at % 100 + 1, at / 100 + 1};
        if (picture.At(pixel.left, pixel.top) == colour) {
            UnionRect(&area, &area, &pixel);
        }
    }
    return area;
}

} // namespace

TEST_CASE("the panel shows through where a control draws nothing") {
    const ImportHook time(CONTROL_LIBRARY, "GetLocalTime", SameTime);
    const TestFolder folder;
    const TestPanel panel(TestPanel::Visible);
    const std::string tile = folder.Write("tile.bmp", PartedImage(14, 10, 0x203040, 0xC08040));
    REQUIRE(Load(panel.Window(), "background=" + tile) == 1);
    HWND strip = panel.Create("MIXER", "Strip");
    SetWindowPos(strip, nullptr, 300, 20, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    const std::string small = "bitmap=" + folder.Write("small.bmp", BitmapFile(6, 4, 0));
    const std::pair<const char*, std::string> rows[] = {
        {"KNOB", small},
        {"FADER", "value=-80"},
        {"METER", ""},
        {"CLOCK", "font=Small Fonts,5"},
        {"BRANGE", ""},
        {"BSTATIC", "caption="},
        {"LED", ""},
        {"BBUTTON", small},
        {"BTRISTATEBUTTON", small},
    };
    for (const auto& [className, line] : rows) {
        INFO(std::string(className));
        HWND control = panel.Create(className, "Control");
        HWND inner = CreateControl(className, "Control", strip, &ObjectOf(strip));
        for (HWND made : {control, inner}) {
            Load(made, line);
            Load(made, "caption=");
        }
        // Beside the handles of a selected control.
        constexpr POINT FREE[] = {{7, 30}, {20, 34}, {93, 30}};
        for (const bool isSelected : {false, true}) {
            ph_SetMode(panel.Root(), isSelected ? 1 : 0);
            ObjectOf(control).flags = isSelected ? FLAG_SELECTED : 0;
            for (const POINT place : {POINT{10, 20}, {131, 57}, {-3, -4}}) {
                SetWindowPos(control, nullptr, place.x, place.y, 100, 40, SWP_NOZORDER);
                const Picture picture(control);
                for (const POINT at : FREE) {
                    const bool isLeft = (place.x + at.x) % 14 < 7;
                    CHECK(picture.At(at.x, at.y) == (isLeft ? RGB(0x20, 0x30, 0x40) : RGB(0xC0, 0x80, 0x40)));
                }
                CHECK((picture.At(0, 0) == RGB(255, 176, 0)) == isSelected);
            }
        }
        ph_SetMode(panel.Root(), 0);
        SetWindowPos(inner, nullptr, 7, 89, 100, 40, SWP_NOZORDER); // over the strip's scale
        CHECK(Picture(inner).At(7, 30) == RGB(0, 0, 0));
        CHECK(Picture(inner).At(7, 32) == RGB(153, 153, 153));
        DestroyWindow(control);
        DestroyWindow(inner);
    }
}

TEST_CASE("the figures of the type face of panels are all of one width") {
    const HDC dc = GetDC(nullptr);
    for (const char* description : {"Tahoma,8", "Tahoma,10,bold"}) {
        const HFONT font = a_GetFont(description);
        const HGDIOBJ before = SelectObject(dc, font);
        char face[LF_FACESIZE] = "";
        GetTextFaceA(dc, LF_FACESIZE, face);
        CHECK(face == std::string("Tahoma")); // nothing in its place
        int widths[10] = {};
        GetCharWidth32A(dc, '0', '9', widths);
        CHECK(std::count(widths, widths + 10, widths[0]) == 10);
        SelectObject(dc, before);
        a_ReleaseFont(font);
    }
    ReleaseDC(nullptr, dc);
}

TEST_CASE("what changes the look of a control is painted") {
    const ImportHook time(CONTROL_LIBRARY, "GetLocalTime", SameTime);
    struct Row {
        const char* className;
        std::vector<const char*> lines; // each shows
    };
    const Row rows[] = {
        {"KNOB", {"value=50", "properties=0,60,10", "value=30", "bitmap=.\\Controls\\Fader.bmp", "bitmap="}},
        {"FADER", {"value=-40", "knobheight=30", "properties=-80,-20,-75", "bitmap=.\\Controls\\Fader.bmp"}},
        {"METER", {"properties=0,100", "value=50", "properties=0,200", "bitmap=.\\Controls\\Fader.bmp"}},
        {"REVMETER",
         {"value=-10", "properties=-80,0", "value=-30", "bitmap=.\\Controls\\Fader.bmp", "bitmap="}},
        {"BRANGE",
         {"value=50", "low=60", "high=80", "settable=ends", "rangecolor=0xff", "alarmcolor=0",
          "linecolor=0xff", "properties=0,200", "properties=200,0"}},
        {"FADING",
         {"value=50", "barcolor=0xff", "backgroundcolor=0xff00", "direction=left", "origin=20",
          "zones=40=0xffff", "style=gradient", "style=segments", "segment=9", "properties=10,90,60",
          "law=log", "fmt=%.1f", "font=Tahoma,14", "textcolor=0xff0000", "value=30"}},
        {"SCALE",
         {"properties=-80,20", "step=40", "minor=3", "margin=20", "marks=-80,0,20", "marks=", "side=left",
          "side=both", "side=none", "side=right", "fmt=%.1f", "font=Tahoma,14", "textcolor=0xff",
          "linecolor=0xff00", "backgroundcolor=0xff0000", "properties=10,1000", "law=log",
          "function=AMP1*level", "value=500"}},
        {"LED", {"onthreshold=-1", "onthreshold=5", "value=6", "bitmap=.\\Controls\\Fader.bmp", "bitmap="}},
        {"CONDITIONALLED", {"darkcolor=0xff", "bitmap=.\\Controls\\Fader.bmp", "bitmap="}},
        {"BIMAGELIST",
         {"bitmap=.\\Controls\\LED_red_16x16.bmp", "frames=2", "value=1", "value=2", "default=0", "first=1",
          "images=.\\Controls\\MiniDelay.png;.\\Controls\\Knob.bmp", "images="}},
        {"LISTSELECTION",
         {"items=One;Two;Three;Four;Five;Six", "value=2", "value=9", "value=1", "numbers=0", "rows=2",
          "litcolor=0xff", "rowcolor=0xff00", "textcolor=0xff0000", "backgroundcolor=0xffff",
          "font=Tahoma,14"}},
        {"BBUTTON",
         {"caption=Other", "font=Tahoma,14", "textcolorwhenunpressed=0xff0000", "textcolor=0xff,0",
          "bitmap=.\\Controls\\SWITCHBUTTON_green_48x24.bmp"}},
        {"BTRISTATEBUTTON",
         {"value=1", "caption=Other", "font=Tahoma,14", "textcolorwhenpressed=0xff", "textcolor=0,0xff00",
          "value=0", "bitmap=.\\Controls\\SWITCHBUTTON_green_48x24.bmp"}},
        {"CONTACTBUTTON",
         {"caption=Other", "font=Tahoma,14", "textcolor=0xff,0", "value=1", "textcolorwhenpressed=0xff",
          "value=0", "bitmap=.\\Controls\\SWITCHBUTTON_green_48x24.bmp"}},
        {"BRADIOBUTTON",
         {"value=1", "caption=Other", "font=Tahoma,14", "textcolorwhenpressed=0xff", "onvalue=2",
          "textcolor=0xff00,0", "style=button", "bitmap=.\\Controls\\SWITCHBUTTON_green_48x24.bmp"}},
        {"SWITCH",
         {"value=1", "caption=A;B", "textcolor=0xff", "font=Tahoma,14", "positions=1,2,3", "value=2",
          "value=9", "bitmap=.\\Controls\\Fader.bmp"}},
        {"MINIDELAY",
         {"connection=Nobody", "value=1,20 ms", "value=0,20 ms", "unit=m", "maximum=40", "caption=Delay",
          "font=Tahoma,14", "textcolor=0xff", "linecolor=0xff00", "backgroundcolor=0xff0000"}},
        {"MINIDYNAMICS",
         {"function=AMP1*level", "value=-30", "mode=expander", "caption=Gate", "linecolor=0xff00",
          "textcolor=0xff", "backgroundcolor=0xff0000"}},
        {"MINIROUTING",
         {"routes=AMP1*level", "inputs=3", "outputs=2", "font=Tahoma,14", "textcolor=0xff",
          "backgroundcolor=0xff0000"}},
        {"MINIEDIT",
         {"caption=Gate", "function=AMP1*level", "value=1", "value=0", "picture=.\\Controls\\Knob.bmp",
          "picture=", "font=Tahoma,14", "textcolor=0xff", "linecolor=0xff00", "backgroundcolor=0xff0000"}},
        {"MINIEQ",
         {"caption=Tone", "function=AMP1*level", "textcolor=0xff", "linecolor=0xff00",
          "backgroundcolor=0xff0000", "font=Tahoma,14"}},
        {"MINIXOVER", {"caption=Ways", "function1=AMP1*level", "textcolor=0xff", "backgroundcolor=0xff0000"}},
        {"CLOCK", {"textcolor=0xff", "font=Tahoma,12", "bitmap=.\\Controls\\Knob.bmp", "bitmap="}},
        {"BSTATIC",
         {"caption=Other", "alignment=right", "textcolor=0xff", "backgroundcolor=0xff00", "font=Tahoma,14",
          "value=3"}},
    };
    for (const Row& row : rows) {
        INFO(std::string(row.className));
        TestPanel panel(TestPanel::Visible);
        panel.Declare("AMP1*device=simulated\nAMP1*level=float,-80,100,1,\n");
        HWND control = panel.Create(row.className, "Control");
        SetWindowPos(control, nullptr, 0, 0, 60, 100, SWP_NOMOVE | SWP_NOZORDER);
        Load(control, "interval=1000000");
        UpdateWindow(control);
        Look look(control);
        for (const char* line : row.lines) {
            CAPTURE(std::string(line));
            CHECK(Load(control, line) == 1);
            UpdateWindow(control);
            CHECK(look.IsNew());
            CHECK(IsOnScreen(control));
        }
        for (HWND focused : {control, panel.Window()}) {
            SetFocus(focused);
            SendMessageA(control, focused == control ? WM_SETFOCUS : WM_KILLFOCUS, 0, 0);
            UpdateWindow(control);
            CHECK(look.IsNew());
            CHECK(IsOnScreen(control));
        }
    }
}

TEST_CASE("what is polled and operated is painted") {
    for (const char* className :
         {"KNOB", "FADER", "METER", "REVMETER", "BRANGE", "FADING", "LED", "CONDITIONALLED",
          "BTRISTATEBUTTON", "BSTATIC", "BBUTTON", "CONTACTBUTTON", "BRADIOBUTTON", "SWITCH"}) {
        INFO(std::string(className));
        TestPanel panel(TestPanel::Visible);
        panel.Declare("AMP1*device=simulated\nAMP1*level=float,-80,100,0,\n");
        HWND control = panel.Create(className, "Control");
        SetWindowPos(control, nullptr, 0, 0, 60, 100, SWP_NOMOVE | SWP_NOZORDER);
        const bool isButton = className == std::string("BBUTTON");
        const bool isTwoState = isButton || className == std::string("BTRISTATEBUTTON");
        for (const char* line : {"captureperiod=0", isTwoState ? "properties=1,0" : "properties=-1,1",
                                 "datatype=f", "function=AMP1*level"}) {
            Load(control, line, LOAD_FROM_FILE);
        }
        Poll(control);
        UpdateWindow(control);
        Look look(control);
        const struct {
            const char* parameter;
            const char* value;
            bool isSeen;
        } rows[] = {{"AMP1*level", "1", !isButton},
                    {"AMP1*level", "0", !isButton},
                    {"AMP1*online", "0", true}, // the sign
                    {"AMP1*online", "1", true}};
        for (const auto& row : rows) {
            CAPTURE(std::string(row.parameter));
            ph_SetParameter(panel.Root(), row.parameter, row.value);
            Poll(control);
            UpdateWindow(control);
            CHECK(IsOnScreen(control));
            CHECK(look.IsNew() == row.isSeen);
        }
        for (const bool isDown : {true, false}) {
            SendMessageA(control, isDown ? WM_LBUTTONDOWN : WM_LBUTTONUP, isDown ? MK_LBUTTON : 0,
                         At(50, 50));
            CHECK((!isTwoState || !isDown || IsOnScreen(control))); // a press at once
            UpdateWindow(control);
            SendMessageA(control, WM_MOUSEMOVE, isDown ? MK_LBUTTON : 0, At(55, 30));
            CHECK(IsOnScreen(control));
        }
    }
}

TEST_CASE("a caption has the colour of its state, and moves with the face") {
    constexpr COLORREF RELEASED = RGB(255, 0, 0), PRESSED = RGB(0, 0, 255);
    for (const char* className : {"BBUTTON", "BTRISTATEBUTTON"}) {
        INFO(std::string(className));
        const bool isSwitch = className[1] == 'T';
        const TestPanel panel;
        HWND button = panel.Create(className, "Button");
        Load(button, "caption=Mute");
        Load(button, "textcolor=0x0000ff,0xff0000");
        const RECT released = AreaOf(button, RELEASED);
        CHECK(std::abs(released.left + released.right - 100) <= 2);
        CHECK(std::abs(released.top + released.bottom - 40) <= 4);
        RECT moved = released;
        OffsetRect(&moved, 1, 1);
        const auto shows = [button](COLORREF colour, const RECT& area) {
            const RECT shown = AreaOf(button, colour);
            const RECT other = AreaOf(button, colour == RELEASED ? PRESSED : RELEASED);
            return EqualRect(&shown, &area) && IsRectEmpty(&other);
        };
        PressButton(button);
        CHECK(shows(isSwitch ? RELEASED : PRESSED, moved)); // a switch is held down, and not on yet
        ReleaseButton(button);
        CHECK(shows(isSwitch ? PRESSED : RELEASED, isSwitch ? moved : released));
    }
}

TEST_SUITE_END();
