#include "Controls/families/TextLook.h"

#include "Controls/families/DarkStrip.h"
#include "logic/drawing/PanelColours.h"

void TEXTLOOKPROPERTIES::FontChanged() {
    FontChanged(window);
}

void TEXTLOOKPROPERTIES::FontChanged(HWND writer) {
    SendMessageA(writer, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), FALSE);
    LookChanged();
}

COLORREF TEXTLOOKPROPERTIES::FieldGround() const {
    return ShownGround(*this, backgroundColor)
        .value_or(IsDark() ? COLORREF{logic::PANEL_WELL} : GetSysColor(COLOR_WINDOW));
}

COLORREF TEXTLOOKPROPERTIES::FieldInk() const {
    const bool isDarkField = IsDark() && !backgroundColor;
    return ShownInk(*this, textColor, logic::PANEL_TEXT)
        .value_or(isDarkField ? COLORREF{logic::PANEL_TEXT} : ReadableOn(FieldGround()));
}
