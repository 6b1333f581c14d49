#pragma once

#include "Panel/editing/Gesture.h"

// Moves all selected controls, or, when the mouse did not move, selects the pressed one alone.
class MoveGesture : public Gesture {
public:
    MoveGesture(const EditSurface& surface, HOSTINFO* pressed, POINT start);

    void Move(POINT point) override;
    void End() override;
    void Cancel() override;

private:
    HOSTINFO* pressed_;
    DragThreshold threshold_;
    std::vector<Placement> before_;
    std::vector<logic::Rectangle> neighbours_;
    SIZE room_;
};
