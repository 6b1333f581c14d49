#pragma once

#include "Panel/editing/Gesture.h"

// Drags the right edge of the panel, its lower edge or both. They stop where they would leave a panel of less
// than a few pixels, and where the grid has its lines.
class PanelSizeGesture : public Gesture {
public:
    PanelSizeGesture(const EditSurface& surface, logic::Handle edge, POINT start);

    void Move(POINT point) override;
    void End() override;
    void Cancel() override;

private:
    void Show(SIZE size) const;

    logic::Handle edge_;
    DragThreshold threshold_;
    SIZE before_{};
    SIZE now_{};
};
