#pragma once

#include "Panel/editing/Gesture.h"

// Sizes the selected controls by one handle of one of them; the others' edges move along.
class SizeGesture : public Gesture {
public:
    static constexpr int LEAST_SIZE = 4; // pixels

    SizeGesture(const EditSurface& surface, HOSTINFO* grasped, logic::Handle handle, POINT start);

    void Move(POINT point) override;
    void End() override;
    void Cancel() override;

private:
    HOSTINFO* grasped_;
    logic::Handle handle_;
    DragThreshold threshold_;
    std::vector<Placement> before_;
    std::vector<logic::Rectangle> neighbours_;
};
