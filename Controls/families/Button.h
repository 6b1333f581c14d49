#pragma once

#include "Controls/drawing/BitmapProperty.h"
#include "Controls/drawing/FontProperty.h"
#include "Controls/framework/Control.h"

#include <string>

// What the push button and the switch button share: values, caption, face and the course of a click. A press
// holds the button with the mouse captured; it is shown held down as long as the cursor is over it; the
// release acts.
class BUTTONPROPERTIES : public CONTROLPROPERTIES {
public:
    BUTTONPROPERTIES() { font.Load("ms sans serif,8"); }

    void SetDefaults() override { interval = 1000; }
    int PreferredWidth() const override;
    void BitmapChanged();
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
    // Asks the question in a message box, with the "\n" and "\t" in it as line feeds and tabs. Whether it was
    // answered with Yes.
    bool IsConfirmed(const std::string& question) const;
    // Sends to everything the button is bound to.
    void Send(int value);

    std::string caption = "Click!"; // also the title of the questions
    FontProperty font;
    BitmapProperty image;           // frames side by side, each of the size of the button
    COLORREF textColorPressed = 0;  // of a switch: when it is on
    COLORREF textColorReleased = 0; // of a switch: when it is off or held down
    int onValue = 0;
    int offValue = 0;

protected:
    virtual int FrameCount() const { return 2; } // of the image, which must be there
    // The frame of the image, or a shaded face.
    void DrawFace(HDC dc, const RECT& client, int frame, bool lit) const;
    void DrawCaption(HDC dc, RECT client, bool down, COLORREF colour) const;
};

int CaptionKeyword(VALUERECORD* record, HOSTINFO* object);
// "on value,off value"; the off value may be left out.
int ButtonPropertiesKeyword(VALUERECORD* record, HOSTINFO* object);
// Both colours of the caption, "released,pressed".
int TextColorKeyword(VALUERECORD* record, HOSTINFO* object);

// The window procedure of a button: a click, and for all else the common procedure.
LRESULT CALLBACK ButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
