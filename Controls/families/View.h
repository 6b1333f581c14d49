#pragma once

#include "Controls/drawing/BitmapProperty.h"
#include "Controls/drawing/Canvas.h"
#include "Controls/drawing/FontProperty.h"
#include "Controls/drawing/KeptPicture.h"
#include "Controls/framework/Keywords.h"
#include "logic/drawing/PanelColours.h"

#include <string>
#include <vector>

// Base of the small views of a processing block: a name strip on top, which is clicked, and below it what the
// view shows, painted into a picture that is copied until something changes. While a view is bound to nothing
// it shows the picture of its class.
//
// A view overrides DrawGround and DrawView, and where it can be operated the functions below that; it ends
// its window procedure with ViewProc. RedrawView has what DrawView paints painted anew, Redraw all of it.
class VIEWPROPERTIES : public CONTROLPROPERTIES {
public:
    VIEWPROPERTIES() { font.Load("Tahoma,8"); }
    void SetDefaults() override;
    int ValueDatatype() const override { return DATATYPE_TEXT; }
    void BindingsChanged() override { Redraw(); }
    POINT NotEqualPlace() const override;
    void Draw(HDC dc, const RECT& client) const final;
    bool CoversGround() const final { return true; }
    void Redraw() const override;
    virtual void FontChanged() { Redraw(); }
    bool BeginDrag(POINT point) final;
    void MoveDrag(POINT point) final;
    void EndDrag() final;
    void CancelDrag() final;

    // Of a view with functions besides the first as well.
    virtual bool IsBound() const { return !functions.empty() || !connections.empty(); }
    // Both paint into the area of the canvas, which is below the name strip, and change nothing. The ground
    // is what only the look of the view decides, such as a grid; it has the background colour already. What
    // is painted over it is what the view is bound to.
    virtual void DrawGround(Canvas&) const {}
    virtual void DrawView(Canvas& canvas) const = 0;
    // What is drawn over the picture at every painting: what moves by itself.
    virtual void DrawOver(HDC /*dc*/, const RECT& /*area*/) const {}
    // Whether a click there does what `click` says: on the name strip.
    virtual bool IsClickedAt(POINT point) const;

    // A press that is not on the name strip: as BeginDrag and the others.
    virtual bool BeginViewDrag(POINT) { return false; }
    virtual void MoveViewDrag(POINT) {}
    virtual void EndViewDrag() {}
    virtual void CancelViewDrag() {}
    // The second press of a double click there. Whether it was used; else it is a press as any other.
    virtual bool DoubleClicked(POINT) { return false; }
    // A key, unless it is the panel's, or Enter. Whether it was used.
    virtual bool KeyDown(WPARAM /*key*/) { return false; }
    // Whether a Tab would stay inside.
    virtual bool TakesTab(bool /*backwards*/) const { return false; }
    // Notches of the wheel, upwards where positive, while the mouse is there; fine: with Shift.
    virtual void Wheel(int /*notches*/, bool /*fine*/, POINT) {}
    // The mouse moves over the view, or has left it: nowhere then.
    virtual void Hovered(const POINT* /*point*/) {}
    virtual void FocusLost() {}

    void RedrawView() const;
    // The same of a part. The canvas that DrawView then gets covers that part alone: what is laid out goes by
    // ViewArea.
    void RedrawPart(const RECT& part) const;
    void Click();
    // What is below the name strip.
    RECT ViewArea(const RECT& client) const;
    RECT ViewArea() const;
    // A colour between the background and another one, 0 to 1 of the way to that.
    COLORREF Shade(COLORREF colour, double way) const;
    bool IsHovered() const { return isHovered_; }
    void Leave();
    void Move(POINT point);

    std::string caption;
    std::string clickTemplate;
    FontProperty font;
    COLORREF backgroundColour = logic::PANEL_WELL;
    COLORREF lineColour = logic::PANEL_BLUE;
    COLORREF textColour = logic::PANEL_TEXT;

protected:
    virtual std::string ShownCaption() const { return caption; }
    // The picture of the class, and any other one, in the middle.
    void DrawClassPicture(const Canvas& canvas) const;
    static void DrawCentred(const Canvas& canvas, const OSMIRBitmap& image);

private:
    // What of the client area is the picture of that device context, from the row `top` on.
    void PaintGround(HDC dc, std::uint32_t* pixels, const RECT& client, int top) const;
    void PaintView(HDC dc, std::uint32_t* pixels, const RECT& client, int top) const;

    // The parts that have changed, into the picture that is kept.
    void PaintParts(const RECT& client) const;

    mutable KeptPicture ground_{false, true};
    mutable KeptPicture picture_{false, true};
    mutable std::vector<RECT> parts_; // of it, to be painted anew
    BitmapProperty image_;            // while it is bound to nothing
    bool isClick_ = false;            // what is being dragged is a click
    POINT lastPoint_{};
    bool isHovered_ = false;
};

// Rows of all views.
inline constexpr Keyword VIEW_BACKGROUND = Colour<&VIEWPROPERTIES::backgroundColour>("backgroundcolor")
                                               .Saved()
                                               .Label("Background")
                                               .Says("Colour of the ground, `0x00bbggrr`.");
inline constexpr Keyword VIEW_CAPTION =
    Text<&VIEWPROPERTIES::caption, TEXT_SIZE - 1, &VIEWPROPERTIES::Redraw>("caption")
        .Saved()
        .Label("Caption")
        .Items(IDC_CAPTION)
        .Says("Text of the name strip on top; empty for none.");
inline constexpr Keyword VIEW_CLICK =
    Line<&VIEWPROPERTIES::clickTemplate>("click")
        .Saved()
        .Label("Click template")
        .Items(IDC_CLICK)
        .Says(
            "Property line that a click on the name strip or Enter sends; empty for none. `%c` in it stands "
            "for the connections, `%n` for the full name, `%l` for the caption.");
inline constexpr Keyword VIEW_FONT =
    FontOf<&VIEWPROPERTIES::font>("font")
        .Saved()
        .Label("Font")
        .Items(IDC_FONT, IDC_CHOOSE_FONT)
        .Says("Font of all texts: face, size in points, `bold` where it is.");
inline constexpr Keyword VIEW_LINE_COLOUR = Colour<&VIEWPROPERTIES::lineColour>("linecolor")
                                                .Saved()
                                                .Label("Line colour")
                                                .Says("Colour of what is shown, `0x00bbggrr`.");
inline constexpr Keyword VIEW_TEXT_COLOUR =
    Colour<&VIEWPROPERTIES::textColour>("textcolor")
        .Saved()
        .Label("Text colour")
        .Says("Colour of the texts, `0x00bbggrr`. Grids and the name strip lie between it and the ground.");

// The window procedure of a view.
LRESULT CALLBACK ViewProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
