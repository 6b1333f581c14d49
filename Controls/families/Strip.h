#pragma once

#include "Controls/drawing/FontProperty.h"
#include "Controls/framework/Control.h"

#include <memory>
#include <span>
#include <string_view>
#include <vector>

// A child of a strip: a control, and the property lines that make it what it is there.
struct StripChild {
    static constexpr int MAXIMUM_LINES = 9;

    const char* className;
    const char* name;
    RECT place; // left, top, width, height; many classes take the size of their image
    INT_PTR id;
    const char* lines[MAXIMUM_LINES];
    DWORD style = WS_VISIBLE;
    DWORD extendedStyle = 0;
};

// What a mode of a strip makes of one of its children.
struct StripChange {
    const char* child;
    const char* line = nullptr; // for it to load; null for none
    int show = -1;              // as ShowWindow takes it; -1: as it is
};

// What strips have in common, so that they stand beside each other as one piece.
constexpr COLORREF STRIP_COLOUR = RGB(153, 153, 153);
constexpr DWORD STRIP_FIELD_STYLE = ES_AUTOHSCROLL | WS_TABSTOP;

class StripBackground;

// Base of the controls that are composed of other controls: of a table of children, made with the strip and
// destroyed with it, and a background that is drawn once for all strips of a class that look alike. People
// edit the children as any other control, so each of them may be gone.
class STRIPPROPERTIES : public CONTROLPROPERTIES {
public:
    // Makes the children and the background. A strip's own version calls this one behind all that
    // DrawBackground needs.
    void SetDefaults() override;
    void Destroying() override { a_DestroyChildWindows(this); }
    void Draw(HDC dc, const RECT& client) const override;
    void StyleChanged() override { LookChanged(); }
    bool MakesChild(const char* ownName) const noexcept override;

    virtual std::span<const StripChild> Children() const = 0; // no two of one name
    virtual SIZE StripSize() const = 0;                       // pixels
    // The number of what the background shows; the same background for the same number in all strips of the
    // class.
    virtual int Look() const = 0;
    // On the ground, in the captions' font and with InkColour.
    virtual void DrawBackground(HDC dc) const = 0;
    void DrawWholeBackground(HDC dc) const;
    COLORREF InkColour() const;  // of captions and numbers
    COLORREF LineColour() const; // of marks

protected:
    // The window of a child, which may be gone; null when there never was one.
    HWND Child(std::string_view name) const;
    // A value record for a child. 0 when it is gone.
    int SendToChild(std::string_view name, int command, int datatype, void* data) const;
    void Change(std::span<const StripChange> changes) const;
    // Look answers another number.
    void LookChanged();

private:
    const FontProperty& CaptionFont() const { return IsDark() ? darkFont_ : captionFont_; }

    FontProperty captionFont_;
    FontProperty darkFont_;
    std::vector<HWND> children_; // in the order of their table
    std::shared_ptr<const StripBackground> background_;
};

// The window procedure of a strip. It asks for arrows and all keys, so that dialogs leave them to the
// children.
LRESULT CALLBACK StripProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
