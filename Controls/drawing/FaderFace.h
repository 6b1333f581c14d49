#pragma once

#include "Controls/drawing/BitmapParts.h"
#include "logic/controls/FaderLogic.h"

// A fader with its knob where it lies: from an image with the parts track and knob, or plain. Without an
// image a horizontal fader deliberately looks like a vertical one, but brighter.
void DrawFader(HDC dc, const logic::FaderKnob& knob, const BitmapParts& parts, const RECT& client);
void DrawPlainFader(HDC dc, const logic::FaderKnob& knob);
