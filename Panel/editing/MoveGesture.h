#pragma once

#include "Panel/editing/Gesture.h"

// Moves all selected controls, or, when the mouse did not move, selects what a click there is to select.
class MoveGesture : public Gesture {
public:
    MoveGesture(const EditSurface& surface, HOSTINFO* pressed, std::vector<HOSTINFO*> clicked, POINT start);

    void Move(POINT point) override;
    void End() override;
    void Cancel() override;

private:
    HOSTINFO* pressed_;
    std::vector<HOSTINFO*> clicked_;
    DragThreshold threshold_;
    std::vector<Placement> before_;
    std::vector<logic::Rectangle> neighbours_;
    SIZE room_;
};
