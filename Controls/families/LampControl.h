#pragma once

#include "Controls/drawing/DarkParts.h"
#include "Controls/drawing/Lamp.h"
#include "Controls/families/DarkStrip.h"
#include "Controls/families/FacedControl.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"

// What lamps share: an image of several frames, of which the first is the dark one, or a plain lamp.
class LAMPPROPERTIES : public FACEDPROPERTIES {
public:
    static constexpr int LEAST_FRAMES = 2;
    static constexpr int MOST_FRAMES = 64;

    void SetDefaults() override { interval = 250; }
    BitmapParts Frames() const override { return {*face.Get(), frames}; }

    int frames = LEAST_FRAMES; // of the image, side by side
    int frame = 0;             // that is shown, 0 the dark one

protected:
    void DrawFrame(HDC dc, const RECT& client, int shown, const LampColours& colours = {}) const {
        if (const auto light = ShownLight(*this)) {
            DrawDarkLamp(dc, client, shown > 0 ? light : std::nullopt);
        } else if (face.Get() != nullptr) {
            const BitmapParts parts = Frames();
            parts.Draw(dc, shown, {0, 0, parts.Width(), parts.Height()});
        } else {
            DrawLamp(dc, client, shown, frames, colours);
        }
    }
};

inline constexpr Keyword LAMP_BITMAP = Picture<&LAMPPROPERTIES::face>("bitmap").Saved().Pictures("LED_").Says(
    "Image file with the frames side by side, the dark one on the left; a frame gives the LED its size; "
    "empty for a plain lamp.");
inline constexpr Keyword LAMP_FRAMES =
    Integer<&LAMPPROPERTIES::frames, LAMPPROPERTIES::LEAST_FRAMES, LAMPPROPERTIES::MOST_FRAMES,
            &LAMPPROPERTIES::BitmapChanged>("frames")
        .Saved()
        .Label("Frames of the bitmap")
        .Items(IDC_FRAMES);
