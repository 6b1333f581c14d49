// What Panel.exe leaves on the screen when its parts are moved and sized.

#include "base/Gdi.h"
#include "tests/windows/PanelProgram.h"

#include <algorithm>
#include <cstdint>
#include <functional>

namespace {

using Pixels = std::vector<std::uint32_t>;

// The client area of a window as it stands on the screen.
Pixels OnScreen(HWND window) {
    RECT area;
    GetClientRect(window, &area);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    std::uint32_t* bits = nullptr;
    const HDC screen = GetDC(nullptr);
    const Bitmap bitmap(CreatePixels(width, height, &bits));
    const MemoryDc dc(bitmap.get());
    BitBlt(dc.Get(), 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    ReleaseDC(nullptr, screen);
    return {bits, bits + static_cast<std::ptrdiff_t>(width) * height};
}

// What stands there when nothing more is drawn.
Pixels Settled(HWND window) {
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    Pixels pixels = OnScreen(window);
    int same = 0;
    WaitFor([&] {
        SendMessageA(window, WM_NULL, 0, 0); // it is not busy
        Sleep(60);
        Pixels now = OnScreen(window);
        same = now == pixels ? same + 1 : 0;
        pixels = std::move(now);
        return same == 3;
    });
    return pixels;
}

} // namespace

TEST_CASE("nothing is left behind on the screen when mode, size, place, scroll or palette change") {
    std::string contents = "size=500,300\r\nbackground=0x004080C0\r\n";
    for (int i = 0; i < 12; ++i) {
        const int left = 10 + i % 4 * 120;
        const int top = 10 + i / 4 * 95;
        contents += "control=0x00000000 " + std::string(i % 2 == 0 ? "BSTATIC" : "BEDIT") + " \"C" +
                    std::to_string(i) + "\" 0x50000000 " + std::to_string(left) + "," + std::to_string(top) +
                    "," + std::to_string(left + 90) + "," + std::to_string(top + 60) + "\r\nC" +
                    std::to_string(i) + "*value=text " + std::to_string(i) + "\r\n";
    }
    const PanelProgram program(contents);
    SetCursorPos(0, 0);
    const HWND frame = program.Frame();
    const HWND view = program.Below(frame, "PanelView");
    const auto edit = [&] { program.Command(CMD_EDIT_MODE); };
    const auto scroll = [&](UINT bar, int request) {
        SendMessageA(view, bar, static_cast<WPARAM>(request), 0);
    };
    const struct {
        const char* name;
        std::function<void()> change;
        bool whole; // the panel can be seen
    } rows[] = {
        {"maximised", [&] { ShowWindow(frame, SW_MAXIMIZE); }, true},
        {"edited", edit, true},
        {"operated", edit, true},
        {"restored", [&] { ShowWindow(frame, SW_RESTORE); }, true},
        {"small", [&] { SetWindowPos(frame, nullptr, 30, 30, 350, 250, SWP_NOZORDER); }, false},
        {"scrolled right", [&] { scroll(WM_HSCROLL, SB_PAGERIGHT); }, false},
        {"scrolled down", [&] { scroll(WM_VSCROLL, SB_BOTTOM); }, false},
        {"edited, scrolled", edit, false},
        {"operated, scrolled", edit, false},
        {"large", [&] { SetWindowPos(frame, nullptr, 60, 10, 900, 700, SWP_NOZORDER); }, true},
    };
    for (const auto& row : rows) {
        CAPTURE(std::string(row.name));
        row.change();
        const Pixels now = Settled(frame);
        RedrawWindow(frame, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
        const Pixels anew = Settled(frame);
        const auto isGround = [](std::uint32_t pixel) { return (pixel & 0xFFFFFF) == 0xC08040; };
        CHECK(std::count_if(anew.begin(), anew.end(), isGround) > (row.whole ? 50000 : 10000)); // the screen
        CHECK(now.size() == anew.size());
        CHECK(now == anew);
    }
}
