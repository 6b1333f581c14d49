#include "Controls/families/TextLook.h"

void TEXTLOOKPROPERTIES::FontChanged() {
    FontChanged(window);
}

void TEXTLOOKPROPERTIES::FontChanged(HWND writer) {
    SendMessageA(writer, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), FALSE);
    LookChanged();
}
