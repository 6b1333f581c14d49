#pragma once

#include "Panel/lists/ListWindow.h"

class TraceLog;

// Shows the trace in a list that can be copied and cleared.
class TraceWindow : public ListWindow {
public:
    explicit TraceWindow(TraceLog& log) : log_(log) {}

    bool Create(HWND frame, HFONT font);
    // Brings the list up to date with the log.
    void Update() override;

private:
    void OnCommand(int command) override;
    int Count() const override;
    std::string Cell(int row, int column) const override;

    TraceLog& log_;
};
