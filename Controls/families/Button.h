#pragma once

#include "Controls/drawing/FontProperty.h"
#include "Controls/families/FacedControl.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"

#include <string>

// What the push button and the switch button share: values, caption, face and the course of a click. A press
// holds the button with the mouse captured; it is shown held down as long as the cursor is over it; the
// release acts.
class BUTTONPROPERTIES : public FACEDPROPERTIES {
public:
    BUTTONPROPERTIES() { font.Load("ms sans serif,8"); }

    void SetDefaults() override { interval = 1000; }
    BitmapParts Frames() const override { return {*face.Get(), FrameCount()}; }
    void FontChanged();
    void MoveDrag(POINT point) override;
    void CancelDrag() override;

    virtual bool IsHeldDown() const = 0;
    virtual void SetHeldDown(bool down) = 0;
    // The mouse is captured.
    virtual void Pressed() {}
    // The capture was released.
    virtual void Released() = 0;

    void ShowHeldDown(bool down);
    // Sends to everything the button is bound to.
    void Send(int value);

    // "on value,off value"; the off value may be left out.
    std::string ValuesText() const;
    bool SetValues(const std::string& text);
    // Both colours of the caption, "released,pressed".
    std::string ColoursText() const;
    bool SetColours(const std::string& text);

    std::string caption = "Click!"; // also the title of the questions
    FontProperty font;
    COLORREF textColorPressed = 0;  // of a switch: when it is on
    COLORREF textColorReleased = 0; // of a switch: when it is off or held down
    int onValue = 0;
    int offValue = 0;

protected:
    virtual int FrameCount() const { return 2; } // of the image, which must be there, side by side
    // The frame of the image, or a shaded face.
    void DrawFace(HDC dc, const RECT& client, int frame, bool lit) const;
    void DrawCaption(HDC dc, RECT client, bool down, COLORREF colour) const;
};

// Rows of both buttons. What a button says of the first three is its own.
inline constexpr Keyword BUTTON_BITMAP =
    Picture<&BUTTONPROPERTIES::face>("bitmap").Saved().Label("Bitmap").Items(IDC_BITMAP_NAME,
                                                                             IDC_CHOOSE_BITMAP);
inline constexpr Keyword BUTTON_CAPTION =
    Text<&BUTTONPROPERTIES::caption, TEXT_SIZE - 1, &BUTTONPROPERTIES::Redraw>("caption")
        .Saved()
        .Label("Caption")
        .Items(IDC_CAPTION);
inline constexpr Keyword BUTTON_COLOURS =
    Property<&BUTTONPROPERTIES::ColoursText, &BUTTONPROPERTIES::SetColours>("textcolor");
inline constexpr Keyword BUTTON_FONT = FontOf<&BUTTONPROPERTIES::font>("font")
                                           .Saved()
                                           .Label("Font")
                                           .Items(IDC_FONT, IDC_CHOOSE_FONT)
                                           .Says("Font of the caption: face, size in points, `bold` where "
                                                 "it is.");
inline constexpr Keyword BUTTON_VALUES =
    Property<&BUTTONPROPERTIES::ValuesText, &BUTTONPROPERTIES::SetValues>("properties", KeywordKind::Numbers)
        .Saved()
        .Says("On value and off value, joined by `,`; the off value may be left out.");

// The window procedure of a button: a click, and for all else the common procedure.
LRESULT CALLBACK ButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
