#pragma once

#include "Controls/drawing/DarkParts.h"
#include "Controls/drawing/FontProperty.h"
#include "Controls/families/FacedControl.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"

#include <string>

// What all buttons share: values, caption, face and the course of a click. A press holds the button with the
// mouse captured; it is shown held down as long as the cursor is over it; the release acts. The space bar
// holds it in the same way until it is released or the focus goes, Enter presses and releases it at once.
// Whatever takes the button away from the user while it is held cancels that.
class BUTTONPROPERTIES : public FACEDPROPERTIES {
public:
    BUTTONPROPERTIES() { font.Load("ms sans serif,8"); }

    void SetDefaults() override;
    LRESULT OnSystem(WPARAM event, LPARAM lParam) override;
    DWORD DueIn(DWORD now) const noexcept override { return dragging ? 0 : UntilPoll(now); }
    BitmapParts Frames() const override { return {*face.Get(), FrameCount()}; }
    // The sign would lie over a caption that the user goes by.
    bool DrawsNotEqual(const RECT&) const override { return DarkLight().has_value(); }
    void FontChanged();
    void MoveDrag(POINT point) override;
    void CancelDrag() override;

    LONG SpokenState() const override;
    std::string DefaultAction() const override { return "Press"; }

    virtual bool IsHeldDown() const = 0;
    virtual void SetHeldDown(bool down) = 0;
    // The mouse is captured.
    virtual void Pressed() {}
    // The capture was released.
    virtual void Released() = 0;
    // What a key does: the space bar holds the button, Enter clicks it or holds it as well.
    enum class KeyUse { None, Click, Hold };
    virtual KeyUse UseOf(WPARAM key) const {
        return key == VK_SPACE ? KeyUse::Hold : key == VK_RETURN ? KeyUse::Click : KeyUse::None;
    }
    // The user can no longer hold it: its window was hidden, or the panel is edited or closed.
    virtual void LetGo(bool /*isClosing*/) { EndHold(); }

    // By that key, or by the mouse: 0. False when it cannot be held; the button may be gone afterwards.
    bool Hold(WPARAM key);
    void ReleaseHold();
    // As if the capture were lost.
    void EndHold();
    bool IsHeldByKey() const { return dragging && heldKey != 0; }

    void ShowHeldDown(bool down);
    // Sends to everything the button is bound to. The button may be gone afterwards.
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
    WPARAM heldKey = 0;      // while it is dragged: what holds it; 0: the mouse
    bool wasVisible = false; // when it was pressed

protected:
    virtual int FrameCount() const { return 2; } // of the image, which must be there, side by side
    // The frame of the image, or a shaded face.
    void DrawFace(HDC dc, const RECT& client, int frame, bool lit) const;
    void DrawCaption(HDC dc, RECT client, bool down, bool lit, COLORREF colour) const;

private:
    // What it is lit in where it is drawn in the style "dark"; nothing where it is not.
    std::optional<COLORREF> DarkLight() const;
    void DrawDarkCaption(HDC dc, RECT client, bool lit, COLORREF colour) const;

    mutable FittingCaption fitting_;
    unsigned sendings_ = 0;
};

// Rows of buttons. What a button says of the first three is its own.
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
