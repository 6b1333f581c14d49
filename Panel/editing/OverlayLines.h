#pragma once

#include "Panel/common/Window.h"

#include <memory>
#include <vector>

// Thin lines above a panel and its controls: rubber band, guides, outlines. They are small windows, so
// nothing below them is painted again while they move.
class OverlayLines {
public:
    struct Line {
        RECT place; // in client coordinates of the panel
        COLORREF colour;
    };

    // The panel's window; what is outside its visible part is not shown.
    explicit OverlayLines(HWND panel);
    ~OverlayLines();

    void Show(const std::vector<Line>& lines);
    void Hide() { Show({}); }
    // The four edges of a rectangle, one pixel wide.
    static void AddFrame(std::vector<Line>& lines, const RECT& frame, COLORREF colour);

private:
    class LineWindow;

    HWND panel_;
    std::vector<std::unique_ptr<LineWindow>> windows_;
};
