// The colours that all parameter dialogs share.

#include "Panelhost/Dialogs.h"

#include "base/Gdi.h"

HBRUSH a_GetObject(int number) {
    static const Brush field(CreateSolidBrush(FIELD_COLOUR));
    static const Brush ground(CreateSolidBrush(RGB(236, 240, 241)));
    static const Brush header(CreateSolidBrush(RGB(44, 62, 80)));
    switch (number) {
    case BRUSH_FIELD:
        return field.get();
    case BRUSH_DIALOG:
        return ground.get();
    case BRUSH_HEADER:
        return header.get();
    default:
        return nullptr;
    }
}
