#pragma once

#include <windows.h>

// The size of the frame window. One that fills the screen, or is shown as an icon, keeps its own.

// Over the whole screen that it is on, without its border and title.
class FullScreen {
public:
    void Set(HWND frame, bool on);
    // The screen has another size.
    void Follow(HWND frame) const;

private:
    bool isOn_ = false;
    LONG style_ = 0; // before
    WINDOWPLACEMENT place_{};
};

// Sizes the frame so that it shows all of a panel beside and below what else it holds, as far as the screen
// allows. Its client area shows the panel as PanelView does.
void FitFrame(HWND frame, SIZE panel, SIZE beside);
// Makes it wider, or narrower, as far as the screen allows.
void WidenFrame(HWND frame, LONG by);
