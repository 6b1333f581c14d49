// What all buttons do alike: keys, dropped pictures, questions.

#include "tests/windows/Buttons.h"

TEST_SUITE_BEGIN("ButtonFamily");

namespace {

constexpr LPARAM REPEATED = 1 << 30;

// What a button sends at the press and at the release of the space bar, when the focus goes meanwhile, and at
// Enter.
struct Sent {
    const char* className;
    const char* lines;
    const char* press;
    const char* release;
    const char* lost;
    const char* enter;
};
constexpr Sent BUTTONS[] = {
    {"BBUTTON", "captureperiod=0|onvalue=1", "1", "0", "", "1 0"},
    {"BTRISTATEBUTTON", "", "", "1", "", "0"},
    {"CONTACTBUTTON", "", "1", "0", "0", "1"}, // which holds it
    {"BRADIOBUTTON", "", "", "1", "", "1"},
    {"SWITCH", "", "", "1", "", "0"},
};

} // namespace

TEST_CASE("the space bar holds a button as the mouse does, Enter clicks it") {
    for (const Sent& button : BUTTONS) {
        INFO(button.className);
        const TestPanel panel(TestPanel::Visible);
        Recorder target(panel, "Target");
        HWND control = panel.Create(button.className, "Button");
        LoadLines(control, button.lines);
        LoadLines(control, "connection=Target|interval=100000");
        const auto key = [control](UINT message, WPARAM code, LPARAM flags = 0) {
            SendMessageA(control, message, code, flags);
        };
        SetFocus(control);
        key(WM_KEYDOWN, VK_SPACE, REPEATED); // pressed somewhere else
        key(WM_KEYUP, VK_SPACE);
        CHECK(target.Take().empty());
        key(WM_KEYDOWN, VK_SPACE);
        CHECK(GetCapture() == control);
        key(WM_KEYDOWN, VK_SPACE, REPEATED);
        MoveCursor(panel, 300, 300); // the mouse has no say
        SendMessageA(control, WM_MOUSEMOVE, 0, At(290, 280));
        Click(control);
        key(WM_KEYDOWN, VK_RETURN);
        key(WM_KEYUP, VK_RETURN);
        CHECK(target.Take() == button.press);
        CHECK(GetCapture() == control);
        key(WM_KEYUP, VK_SPACE);
        CHECK(target.Take() == button.release);
        CHECK(GetCapture() == nullptr);

        key(WM_KEYDOWN, VK_SPACE);
        CHECK(target.Take() == button.press);
        SetFocus(panel.Window());
        CHECK(target.Take() == button.lost);
        key(WM_KEYUP, VK_SPACE);
        CHECK(target.Take().empty());
        SetFocus(control);
        key(WM_KEYDOWN, VK_RETURN);
        CHECK(target.Take() == button.enter);
        key(WM_KEYDOWN, VK_RETURN, REPEATED);
        key(WM_KEYUP, VK_RETURN);
        target.Take();

        MSG enter{control, WM_KEYDOWN, VK_RETURN, 0, 0, {}};
        CHECK((SendMessageA(control, WM_GETDLGCODE, VK_RETURN, reinterpret_cast<LPARAM>(&enter)) &
               DLGC_WANTMESSAGE) != 0);

        ph_SetMode(panel.Root(), 1);
        for (const WPARAM code : {VK_SPACE, VK_RETURN, VK_RIGHT}) {
            MSG posted;
            key(WM_KEYDOWN, code);
            CHECK(TakePosted(panel.Window(), WM_KEYDOWN, posted));
            key(WM_KEYUP, code);
        }
        CHECK(target.Take().empty());
        CHECK(GetCapture() == nullptr);
    }
}

TEST_CASE("a held space bar repeats the steps of a button") {
    const TestPanel panel;
    Recorder target(panel, "Target");
    HWND button = panel.Create("BBUTTON", "Button");
    LoadLines(button, "connection=Target|mode=increment|captureperiod=20");
    SendMessageA(button, WM_KEYDOWN, VK_SPACE, 0);
    CHECK(Await([&] { return target.sets.size() >= 3; }));
    SendMessageA(button, WM_KEYUP, VK_SPACE, 0);
    const int last = target.value;
    CHECK(last > 3); // the release takes a step of its own
}

TEST_CASE("each button takes a dropped picture") {
    const TestFolder folder;
    const std::string path = folder.Write("face.bmp", BitmapFile(60, 20, 0x112233));
    for (const Sent& button : BUTTONS) {
        INFO(button.className);
        const TestPanel panel;
        HWND control = panel.Create(button.className, "Button");
        CHECK((GetWindowLongA(control, GWL_EXSTYLE) & WS_EX_ACCEPTFILES) != 0);
        CHECK(Drop(control, path + '\0'));
        CHECK(SizeText(control) == "30 x 20");
        CHECK(Drop(control, folder.Path("nothing.bmp") + '\0'));
        CHECK(SizeText(control) == "30 x 20");
    }
}

TEST_CASE("a question stands beside its button, on the screen") {
    const TestPanel panel(TestPanel::Visible);
    const RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    for (const char* className : {"BBUTTON", "BTRISTATEBUTTON", "BRADIOBUTTON"}) {
        HWND button = panel.Create(className, "Button");
        LoadLines(button, "caption=Beside|confirm=Really?");
        for (const POINT place : {POINT{10, 20}, {screen.right - 120, 20}, {300, screen.bottom - 60}}) {
            SetWindowPos(button, nullptr, place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
            RECT own{}, box{};
            GetWindowRect(button, &own);
            Answer no("Beside", IDNO, [&box] { GetWindowRect(FindWindowA("#32770", "Beside"), &box); });
            SendMessageA(button, WM_KEYDOWN, VK_RETURN, 0);
            CHECK(no.Question() == "Really?");
            RECT common;
            CHECK_FALSE(IntersectRect(&common, &own, &box));
            IntersectRect(&common, &box, &screen);
            CHECK(EqualRect(&common, &box));
            CHECK(std::min(std::abs(box.left - own.right), std::abs(own.left - box.right)) < 20);
        }
        DestroyWindow(button);
    }
}

TEST_SUITE_END();
