#pragma once

#include "Panel/common/Window.h"
#include "Panel/editing/Catalogue.h"
#include "base/Gdi.h"

class HOSTINFO;

// What a control from the palette will look like, shown where it would stand while it is dragged.
class Preview : public Window {
public:
    // Takes the picture of a control as it would be on that panel; the size that it will have. Controls that
    // talk to the world outside are not made for that: their icon stands for them.
    SIZE Make(const CatalogueEntry& entry, HOSTINFO* root);
    // With its corner at a point of the panel's client area, as far as it is inside the panel's view.
    void Show(HWND panel, POINT corner);
    void Hide() const;
    // No picture any more.
    void Drop();

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    Bitmap picture_;
};
