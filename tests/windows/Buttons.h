#pragma once

#include "tests/windows/TestPanel.h"

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

// An object of a panel that holds a number and keeps what it is set to, in order.
class Recorder : public HOSTINFO {
public:
    struct Set {
        DWORD tick;
        int value;
        std::string text; // what came with the keyword "note"
    };

    Recorder(const TestPanel& panel, const char* ownName);
    ~Recorder() override;

    LRESULT OnMessage(WPARAM wParam, LPARAM record) override;
    // The numbers since the last call: "1 0".
    std::string Take();

    int value = 0;
    bool reachable = true;
    std::vector<Set> sets;
    std::function<void()> onSet; // called at each set, after it was kept
};

// Answers the next message box of that title from a thread of its own, after an action, and keeps its text.
class Answer {
public:
    Answer(
        const char* title, int command, std::function<void()> action = [] {});
    // Waits for the box; without one the text is "(none)".
    std::string Question();
    ~Answer();
    Answer(const Answer&) = delete;
    Answer& operator=(const Answer&) = delete;

private:
    std::string question_ = "(none)";
    std::atomic<bool> stop_ = false;
    std::thread thread_;
};

// Loads lines that are separated by "|"; whether all were taken.
bool LoadLines(HWND control, const std::string& lines, WPARAM mode = LOAD_FROM_DIALOG);
// "WIDTH x HEIGHT"; the rectangle that the panel knows is to have the same size.
std::string SizeText(HWND control);

std::string TextOf(HWND window);
bool IsShown(HWND child);
// What the tooltip of a control would show.
std::string TipOf(HWND control);

void PressButton(HWND button, WPARAM keys = MK_LBUTTON);
void ReleaseButton(HWND button, WPARAM keys = 0);
void Click(HWND button);
// Polls; whether the control then shows that what it is bound to holds something else.
bool IsMarked(HWND control);
// Dispatches messages for that long.
void Pump(DWORD milliseconds);
// Moves the real cursor, the origin being the panel's, and dispatches what comes of it.
void MoveCursor(const TestPanel& panel, int x, int y);
