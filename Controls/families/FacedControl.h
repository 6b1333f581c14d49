#pragma once

#include "Controls/drawing/BitmapParts.h"
#include "Controls/drawing/BitmapProperty.h"
#include "Controls/framework/Control.h"
#include "Panelhost/Root.h"

// Base of the controls with an image of one or several frames, one of which gives the control its size.
class FACEDPROPERTIES : public CONTROLPROPERTIES {
public:
    int PreferredWidth() const override {
        return face.Get() != nullptr ? Frames().Width() : CONTROLPROPERTIES::PreferredWidth();
    }
    // The frames of the image, of which there is one.
    virtual BitmapParts Frames() const { return {*face.Get(), 1}; }
    // Whether a frame gives the control its size.
    virtual bool IsSizedByFace() const { return face.Get() != nullptr; }
    // There is another image, or another number of frames.
    void BitmapChanged() {
        if (IsSizedByFace()) {
            Resize(Frames().Width(), Frames().Height());
        }
        FaceChanged();
    }
    virtual void FaceChanged() { Redraw(); }
    // The form of the image that the panel wants.
    virtual Art WantedArt() const { return {a_ArtScale(this), {}}; }
    void ArtChanged() override {
        if (face.Get() != nullptr && face.Load(face.Name(), WantedArt())) {
            BitmapChanged();
        }
    }

    BitmapProperty face;
};
