#pragma once

#include "Panel/Window.h"

#include <string>

class TraceLog;

// Shows the trace in a list that can be copied and cleared. Closing only hides it.
class TraceWindow : public Window {
public:
    explicit TraceWindow(TraceLog& log) : log_(log) {}

    bool Create(HWND frame, HFONT font);
    bool IsShown() const { return IsWindowVisible(Handle()); }
    void Show(bool shown);
    // Brings the list up to date with the log.
    void Update();
    // Serves the window's keys: true when the message was one of them.
    bool TranslateKey(MSG& message) const;

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Place();
    void OnCommand(int command);
    LRESULT OnNotify(const NMHDR& header) const;
    void Copy() const;

    TraceLog& log_;
    HWND list_ = nullptr;
    HACCEL keys_ = nullptr;
    bool placed_ = false; // where its user moves it to, it stays
};
