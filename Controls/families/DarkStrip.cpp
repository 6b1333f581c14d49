#include "Controls/families/DarkStrip.h"

#include "Controls/drawing/DarkParts.h"

bool IsDarkPart(const CONTROLPROPERTIES& control) {
    const HOSTINFO* parent = control.parent;
    return control.IsDark() && parent != nullptr && parent->kind == KIND_CONTROL &&
           parent->MakesChild(a_OwnName(&control).c_str());
}

std::optional<COLORREF> ShownGround(const CONTROLPROPERTIES& control, std::optional<COLORREF> own) {
    const bool isStrips = own == RGB(0, 0, 0) || own == RGB(32, 32, 32) || own == RGB(76, 76, 76);
    return isStrips && IsDarkPart(control) ? logic::PANEL_WELL : own;
}

std::optional<COLORREF> ShownInk(const CONTROLPROPERTIES& control, std::optional<COLORREF> own,
                                 COLORREF inPlaceOfBlack) {
    const bool isBlack = own == RGB(0, 0, 0);
    const bool isStrips = isBlack || own == RGB(255, 255, 255) || own == RGB(255, 204, 0);
    return isStrips && IsDarkPart(control) ? isBlack ? inPlaceOfBlack : COLORREF{logic::PANEL_TEXT} : own;
}

std::optional<COLORREF> ShownLight(const FACEDPROPERTIES& control) {
    return control.face.Get() != nullptr && IsDarkPart(control) ? ColourOfPicture(control.face.Name())
                                                                : std::nullopt;
}

bool IsStripFont(const CONTROLPROPERTIES& control, const FontProperty& font) {
    return IsDarkPart(control) && font.Text().starts_with("Small Fonts,");
}
