#pragma once

#include "Controls/families/Button.h"

enum class ButtonFace { Off, HeldDown, On }; // also the number of the image's frame

// Base of the buttons that show a state: on or off, and while they are off that they are held down.
class TWOSTATEPROPERTIES : public BUTTONPROPERTIES {
public:
    void Draw(HDC dc, const RECT& client) const override;
    bool IsHeldDown() const override { return heldDown; }
    void SetHeldDown(bool down) override { heldDown = down; }
    LONG SpokenState() const override;
    std::string DefaultAction() const override { return "Switch"; }

    virtual bool IsOn() const = 0;
    virtual ButtonFace Face() const {
        return heldDown ? ButtonFace::HeldDown : IsOn() ? ButtonFace::On : ButtonFace::Off;
    }
    // Of three frames of the image the second one shows the button held down.
    int FrameCount() const override;

    bool heldDown = false;
};

// Their rows.
inline constexpr Keyword STATE_BITMAP =
    BUTTON_BITMAP.Pictures("SWITCHBUTTON_")
        .Says(
            "Image file with two faces side by side, off on the left, on and held down on the right, which "
            "gives the button its size; empty for a plain one. It has three, off, held down and on, when its "
            "name ends in the size of one (`_26x16.bmp`) and it is three of them wide.");
inline constexpr Keyword STATE_COLOURS =
    BUTTON_COLOURS.Saved().Says("Both colours of the caption, off and on, joined by `,`.");
inline constexpr Keyword STATE_COLOUR_ON =
    Colour<&TWOSTATEPROPERTIES::textColorPressed>("textcolorwhenpressed")
        .Saved()
        .Label("Text when on")
        .Items(IDC_PRESSED_COLOUR, IDC_CHOOSE_PRESSED_COLOUR)
        .Says("Colour of the caption while it is on, `0x00bbggrr`.");
inline constexpr Keyword STATE_COLOUR_OFF =
    Colour<&TWOSTATEPROPERTIES::textColorReleased>("textcolorwhenreleased")
        .Saved()
        .Label("Text when off")
        .Items(IDC_RELEASED_COLOUR, IDC_CHOOSE_RELEASED_COLOUR)
        .Says("Colour of the caption while it is off, `0x00bbggrr`.");
