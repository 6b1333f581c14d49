// What the controls without a face and the mini views have in common: when they are seen, and their pictures.

#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/Bitmap.h"
#include "tests/windows/TestPanel.h"

TEST_SUITE_BEGIN("Interfaces");

namespace {

constexpr const char* INTERFACES[] = {"IMESSAGING",     "IMIDI",   "INETWORK", "ITELEPHONE",
                                      "IWAVEGENERATOR", "IWAVEIN", "IWAVEOUT"};
constexpr const char* MINI_VIEWS[] = {"Delay", "Dynamics", "Edit", "EQ", "Routing", "XOver"};

bool HasVisibleStyle(HWND window) {
    return (GetWindowLongA(window, GWL_STYLE) & WS_VISIBLE) != 0;
}

HWND CreateVisible(const TestPanel& panel, const char* className) {
    const HWND window = CreateWindowExA(0, className, "I", WS_CHILD | WS_VISIBLE, 10, 20, 32, 32,
                                        panel.Window(), nullptr, nullptr, panel.Root());
    REQUIRE((window != nullptr));
    return window;
}

// Of how many per cent of the opaque pixels of a bitmap in the folder of the controls, laid with its centre
// on that of the control, the control shows the colour.
int ShownPart(HWND control, const std::string& file) {
    const Picture shown(control);
    RECT client{};
    GetClientRect(control, &client);
    char path[MAX_PATH];
    a_MakeFullPathName(("Controls\\" + file).c_str(), path);
    const HBITMAP bitmap =
        static_cast<HBITMAP>(LoadImageA(nullptr, path, IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE));
    REQUIRE((bitmap != nullptr));
    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ previous = SelectObject(dc, bitmap);
    BITMAP size{};
    GetObjectA(bitmap, sizeof size, &size);
    int opaque = 0;
    int equal = 0;
    for (int y = 4; y < size.bmHeight - 4; ++y) { // the corners let the background through
        for (int x = 4; x < size.bmWidth - 4; ++x) {
            const COLORREF expected = GetPixel(dc, x, y);
            const COLORREF colour =
                shown.At((client.right - size.bmWidth) / 2 + x, (client.bottom - size.bmHeight) / 2 + y);
            opaque += expected != RGB(255, 0, 255) ? 1 : 0;
            equal += expected != RGB(255, 0, 255) && colour == expected ? 1 : 0;
        }
    }
    SelectObject(dc, previous);
    DeleteDC(dc);
    DeleteObject(bitmap);
    REQUIRE(opaque > 100);
    return equal * 100 / opaque;
}

} // namespace

TEST_CASE("interface controls are never seen in an operated panel, and show their picture in an edited one") {
    for (const char* name : INTERFACES) {
        CAPTURE(std::string(name));
        const TestPanel panel(TestPanel::Visible);
        const HWND control = CreateVisible(panel, name);
        CHECK_FALSE(IsWindowVisible(control));
        ShowWindow(control, SW_SHOW); // nor by its host
        CHECK_FALSE(IsWindowVisible(control));

        ph_SetMode(panel.Root(), 1);
        CHECK(IsWindowVisible(control));
        const int part = ShownPart(control, name + 1 + std::string(".bmp"));
        CHECK((part == 100 || (part > 50 && name == std::string("IMIDI")))); // names cover some
        ph_SetMode(panel.Root(), 0);
        CHECK_FALSE(IsWindowVisible(control));
    }
}

TEST_CASE("in a hidden panel interface controls are hidden before it is shown, those of a file at once") {
    for (const char* name : INTERFACES) {
        CAPTURE(std::string(name));
        const TestPanel panel;
        const HWND control = CreateVisible(panel, name);
        CHECK(Await([&] { return !HasVisibleStyle(control); }));
        const HWND another = CreateVisible(panel, name);
        ShowWindow(panel.Window(), SW_SHOWNOACTIVATE);
        CHECK_FALSE(IsWindowVisible(another));
    }
    const TestPanel panel;
    REQUIRE(panel.Open("control=0x00000000 IWAVEIN \"I\" 0x50000000 1,2,33,34\r\n"
                       "control=0x00000000 KNOB \"K\" 0x50000000 1,2,33,34\r\n") == 2);
    CHECK_FALSE(HasVisibleStyle(panel.Find("I")));
    CHECK(HasVisibleStyle(panel.Find("K")));
}

TEST_CASE("mini views show their picture, one for all of them") {
    const int bitmaps = a_BitmapCount();
    for (const char* name : MINI_VIEWS) {
        CAPTURE(std::string(name));
        const TestPanel panel;
        const std::string className = std::string("MINI") + name; // in any case
        const HWND first = panel.Create(className.c_str(), "View");
        panel.Create(className.c_str(), "Another");
        CHECK(a_BitmapCount() == bitmaps + 1); // one for both
        CHECK(ShownPart(first, std::string("Mini") + name + ".bmp") > 90);
    }
    CHECK(a_BitmapCount() == bitmaps);
}

TEST_SUITE_END();
