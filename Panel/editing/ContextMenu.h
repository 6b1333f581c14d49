#pragma once

#include <windows.h>

// The menu of the edit mode at a point of the screen, with what the control (null: the ground of the panel)
// adds to it. Returns the command that was chosen, as the main menu has it, or 0.
int AskEditMenu(HWND panel, POINT place, HWND control, bool canPaste);
// What a control offers while the panel is operated; nothing is shown when it offers nothing.
void OfferControlMenu(HWND panel, POINT place, HWND control);
