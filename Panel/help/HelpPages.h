#pragma once

#include <windows.h>

#include <string>

// The pages of the documentation beside the program, with a place on them behind a '#'.
constexpr const char* PAGE_CONTENTS = "index.html";
constexpr const char* PAGE_GUIDE = "panel-app.html";
constexpr const char* PAGE_PANEL_PROPERTIES = "property-reference.html#the-panel";
constexpr const char* PAGE_KEYS = "keys-and-mouse.html";

// On that window, or on one that contains or owns it; empty when there is none.
std::string HelpPageOfWindow(HWND window);
// On a class of controls.
std::string HelpPageOfClass(const char* className);

// Shows the page in the system's program for web pages. What stands in the way, in words.
std::string OpenHelpPage(const std::string& page);
