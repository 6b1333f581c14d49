// The panel and the plain windows that controls are measured on and against.
#pragma once

#include "Panelhost/HostInterface.h"

#include <windows.h>

#include <string>
#include <vector>

// Window classes of the yardsticks.
constexpr const char* BARE_CLASS = "BenchBare";     // DefWindowProc alone
constexpr const char* BLIT_CLASS = "BenchBlit";     // paints with one BitBlt of its size
constexpr const char* ANSWER_CLASS = "BenchAnswer"; // stores a float for CWM_MESSAGE

void RegisterYardsticks();

// Side of every window in pixels, that of the knob's picture: a knob of this size is not resized.
constexpr int SIDE = 47;

RECT PlaceOf(int number);

// A panel window with its root. Goes with all its windows.
class BenchPanel {
public:
    explicit BenchPanel(bool visible);
    ~BenchPanel();
    BenchPanel(const BenchPanel&) = delete;
    BenchPanel& operator=(const BenchPanel&) = delete;

    HWND Window() const { return window_; }
    HOSTINFO* Root() const { return root_; }
    // A child of the panel; null on failure.
    HWND Add(const char* className, int number, SIZE size = {SIDE, SIDE}) const;
    std::vector<HWND> AddMany(const char* className, int count) const;
    // A window with all windows in it in the places of another one's, of the inner class. Null: its children
    // alone, each of the class and style of the one that it stands for.
    HWND AddCopy(HWND model, const char* className, const char* innerClass) const;

private:
    HWND window_;
    HOSTINFO* root_;
};

// Declares devices by the lines of a device file.
void DeclareDevices(const BenchPanel& panel, const std::string& lines);

// Dispatches what is waiting, so that it does not fall into the next measurement.
void Settle();
