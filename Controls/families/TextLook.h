#pragma once

#include "Controls/drawing/FontProperty.h"
#include "Controls/drawing/TextColours.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "logic/controls/ShownValue.h"

#include <optional>

// What a text looks like: the font, the colours and the place that its control has them from keywords.
class TEXTLOOKPROPERTIES : public CONTROLPROPERTIES {
public:
    TEXTLOOKPROPERTIES() { font.Load("ms sans serif,8"); }

    virtual void LookChanged() { Redraw(); }
    virtual void FontChanged();
    // The same where a window inside writes the text.
    void FontChanged(HWND writer);
    void StyleChanged() override { LookChanged(); }
    // The ground of a field and its text, by the style of the panel where the control has no colours of its
    // own.
    COLORREF FieldGround() const;
    COLORREF FieldInk() const;

    logic::Alignment alignment = logic::Alignment::Left;
    FontProperty font;
    std::optional<COLORREF> textColor;       // none: what can be read on the ground
    std::optional<COLORREF> backgroundColor; // none: what the control makes of it
};

// Keywords of these controls. The ground has a sentence of each control.
inline constexpr Keyword ALIGNMENT_KEYWORD =
    Words<"left,center,right", &TEXTLOOKPROPERTIES::alignment, &TEXTLOOKPROPERTIES::LookChanged>("alignment")
        .Saved()
        .Label("Alignment")
        .Items(IDC_ALIGNMENT)
        .Says("`left`, `center` or `right`.");
inline constexpr Keyword GROUND_COLOUR_KEYWORD =
    OptionalColour<&TEXTLOOKPROPERTIES::backgroundColor>("backgroundcolor")
        .Saved()
        .Label("Background")
        .Items(IDC_BACKGROUND, IDC_CHOOSE_BACKGROUND);
inline constexpr Keyword TEXT_FONT_KEYWORD = FontOf<&TEXTLOOKPROPERTIES::font>("font")
                                                 .Saved()
                                                 .Label("Font")
                                                 .Items(IDC_FONT, IDC_CHOOSE_FONT)
                                                 .Says("Font: face, size in points, `bold` where it is.");
inline constexpr Keyword TEXT_INTERVAL_KEYWORD =
    INTERVAL_KEYWORD.Label("Polling interval in ms").Items(IDC_INTERVAL);
inline constexpr Keyword TEXT_COLOUR_KEYWORD =
    OptionalColour<&TEXTLOOKPROPERTIES::textColor>("textcolor")
        .Saved()
        .Label("Text colour")
        .Items(IDC_TEXT_COLOUR, IDC_CHOOSE_TEXT_COLOUR)
        .Says("Colour of the text, `0x00bbggrr`; empty for black or white, whichever can be read.");
