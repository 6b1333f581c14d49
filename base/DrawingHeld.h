#pragma once

#include <windows.h>

// Keeps a window from drawing itself and its children while many of them come or go, which is also much
// faster, and lets it draw once at the end.
class DrawingHeld {
public:
    explicit DrawingHeld(HWND window) : window_(window), visible_(IsWindowVisible(window) != 0) {
        if (visible_) {
            SendMessageA(window_, WM_SETREDRAW, FALSE, 0);
        }
    }
    ~DrawingHeld() {
        if (visible_) {
            SendMessageA(window_, WM_SETREDRAW, TRUE, 0);
            RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
        }
    }
    DrawingHeld(const DrawingHeld&) = delete;
    DrawingHeld& operator=(const DrawingHeld&) = delete;

private:
    HWND window_;
    bool visible_;
};
