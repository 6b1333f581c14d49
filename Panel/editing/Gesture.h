#pragma once

#include "Panel/editing/EditGrid.h"
#include "Panel/editing/OverlayLines.h"
#include "Panel/editing/PanelEdits.h"
#include "Panel/editing/Selection.h"
#include "logic/editing/EditGeometry.h"

#include <windows.h>

// What gestures work on.
struct EditSurface {
    HWND panel;
    PanelEdits& edits;
    Selection& selection;
    EditGrid& grid;
    OverlayLines& lines;

    // Settings of the moment: Alt suspends snapping.
    logic::SnapSettings Snapping() const;
    // Guides in client coordinates of that window, as lines over the panel.
    std::vector<OverlayLines::Line> LinesOf(const std::vector<logic::Guide>& guides, HWND parent) const;
    void ShowGuides(const std::vector<logic::Guide>& guides, HWND parent) const {
        lines.Show(LinesOf(guides, parent));
    }
};

// Something done with the mouse from press to release. Made by the press; exactly one of End and Cancel
// follows. Points are in client coordinates of the panel.
class Gesture {
public:
    explicit Gesture(const EditSurface& surface) : surface_(surface) {}
    virtual ~Gesture() { surface_.lines.Hide(); }
    Gesture(const Gesture&) = delete;
    Gesture& operator=(const Gesture&) = delete;

    virtual void Move(POINT point) = 0;
    virtual void End() = 0;
    virtual void Cancel() = 0;

protected:
    const EditSurface& surface_;
};

// From the press on until the mouse has left a small area around it, nothing moves: a click is not a drag.
class DragThreshold {
public:
    explicit DragThreshold(POINT start) : start_(start) {}
    bool Passed(POINT point);
    bool Passed() const { return passed_; }
    logic::Offset From(POINT point) const { return {point.x - start_.x, point.y - start_.y}; }

private:
    POINT start_;
    bool passed_ = false;
};
