#pragma once

#include <windows.h>

#include <string>

// Where the main window stood when the program was last left.
struct WindowPlace {
    RECT place{}; // on the screen, when it does not fill it
    bool isMaximized = false;
    std::string panelFile; // that was shown; empty for the start page or a panel without one
};

// Nothing of it counts when the text is empty or damaged: false, and the place is unchanged.
bool ReadWindowPlace(const std::string& text, WindowPlace& place);
std::string WindowPlaceText(const WindowPlace& place);

// The place as near to that one as it lies wholly within the area, made smaller if need be.
RECT MovedInto(const RECT& place, const RECT& area);
// The same for the screen that most of it lies on, or that is nearest where its screen is gone.
RECT MovedOntoScreen(const RECT& place);
