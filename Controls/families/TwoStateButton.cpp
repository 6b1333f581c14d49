#include "Controls/families/TwoStateButton.h"

#include "logic/drawing/ImageFrames.h"

#include <oleacc.h>

int TWOSTATEPROPERTIES::FrameCount() const {
    return logic::ButtonFrameCount(face.Name(), face.Get()->Width(), face.Get()->Height());
}

LONG TWOSTATEPROPERTIES::SpokenState() const {
    return BUTTONPROPERTIES::SpokenState() | (IsOn() ? STATE_SYSTEM_CHECKED : 0);
}

void TWOSTATEPROPERTIES::Draw(HDC dc, const RECT& client) const {
    const ButtonFace shown = Face();
    DrawFace(dc, client, static_cast<int>(shown), IsOn());
    DrawCaption(dc, client, shown != ButtonFace::Off, IsOn(),
                shown == ButtonFace::On ? textColorPressed : textColorReleased);
}
