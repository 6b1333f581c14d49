#include "Controls/families/TextLook.h"

void TEXTLOOKPROPERTIES::FontChanged() {
    SendMessageA(window, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), FALSE);
    LookChanged();
}
