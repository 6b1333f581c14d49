#pragma once

#include <windows.h>

#include <string>

struct CommandLine;

// The light and the dark look of the program's own windows: frame, panes, lists. Panels, and dialogs of the
// libraries, have colours of their own.

struct ThemeColours {
    COLORREF ground;  // bars, panes, windows beside the frame
    COLORREF field;   // lists and text fields
    COLORREF raised;  // push buttons, headings of lists
    COLORREF text;    // on all three
    COLORREF dimText; // what cannot be chosen, hints
    COLORREF rule;    // thin lines
    COLORREF edge;    // of fields and buttons
    COLORREF accent;  // what is on, or has the focus
    COLORREF selection;
    COLORREF selectionText;
    COLORREF surround; // around a panel
    COLORREF refusedText;
    COLORREF refusedGround;
    COLORREF noticeGround;
    COLORREF noticeEdge;
    COLORREF noticeText;
};

enum class ThemeChoice { System, Light, Dark };

// Of the theme in use. Those of the light one are the system's, so a high contrast stays one.
const ThemeColours& Colours();
bool IsDarkTheme();

// System until it is restored or chosen.
ThemeChoice ChosenTheme();
// Reads the choice of earlier runs from the settings of that command line, and keeps later ones there.
void RestoreTheme(const CommandLine& commandLine);
// Takes effect at once, and is kept.
void ChooseTheme(ThemeChoice choice);
// For this run alone, instead of what was kept: "system", "light" or "dark"; any other text changes nothing.
void OverrideTheme(const std::string& word);
// After the system's settings have changed. What does not follow them stays.
void FollowSystemTheme();

// Gives a window and what is in it the theme in use, but for a panel. To be called once a window of the
// program is complete; later changes of the theme reach it by themselves. All that is not a control of the
// system is sent THEME_CHANGED whenever it is another theme than before.
void ApplyTheme(HWND window);
constexpr UINT THEME_CHANGED = WM_APP + 0x300;

// Paints with a colour of the theme.
void FillThemed(HDC dc, const RECT& place, COLORREF colour);
