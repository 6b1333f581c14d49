#pragma once

#include <windows.h>

// The size of the frame window. One that fills the screen, or is shown as an icon, keeps its own.

// Sizes the frame so that it shows all of a panel beside and below what else it holds, as far as the screen
// allows. Its client area shows the panel as PanelView does.
void FitFrame(HWND frame, SIZE panel, SIZE beside);
// Makes it wider, or narrower, as far as the screen allows.
void WidenFrame(HWND frame, LONG by);
