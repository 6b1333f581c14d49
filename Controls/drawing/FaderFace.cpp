#include "Controls/drawing/FaderFace.h"

#include "Controls/drawing/Shading.h"

void DrawFader(HDC dc, const logic::FaderKnob& knob, const BitmapParts& parts, const RECT& client) {
    constexpr int TRACK = 0;
    constexpr int KNOB = 1;
    const int length = knob.Shape().knobHeight;
    parts.Draw(dc, TRACK, client);
    if (knob.Shape().IsVertical()) {
        parts.Draw(dc, KNOB, 0, knob.Top(), {0, 0, client.right, length});
    } else {
        parts.Draw(dc, KNOB, knob.Left(), 0, {0, 0, length, client.bottom});
    }
}

void DrawPlainFader(HDC dc, const logic::FaderKnob& knob) {
    const logic::FaderShape& shape = knob.Shape();
    const int middle = shape.width / 2;
    const RECT slot{middle - 1, shape.knobHeight / 2, middle + 1, shape.height - shape.knobHeight / 2};
    FillRect(dc, &slot, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    const RECT bar{0, knob.Top(), shape.width, knob.Top() + shape.knobHeight};
    DrawShadedRows(dc, bar, shape.IsVertical() ? BAR_COLOUR : BRIGHT_BAR_COLOUR);
}
