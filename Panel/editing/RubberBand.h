#pragma once

#include "Panel/editing/Gesture.h"

// Selects the controls that a rectangle drawn over the panel touches.
class RubberBand : public Gesture {
public:
    // Keeps what is selected already when it is to add.
    RubberBand(const EditSurface& surface, POINT start, bool adds);

    void Move(POINT point) override;
    void End() override {}
    void Cancel() override;

private:
    POINT start_;
    DragThreshold threshold_;
    std::vector<HOSTINFO*> before_;
    bool adds_;
};
