#pragma once

#include "Panelhost/Api.h"

#include <windows.h>

#include <string>

class HOSTINFO;
class OSMIRBitmap;

// What lies behind a control: the part of the panel's background at the control's place. It holds no pixels
// of its own, so that thousands of controls share the one image of their panel.
class PANELHOST_API cBackground {
public:
    explicit cBackground(const HOSTINFO* object) : object_(object) {}
    // Fills (0, 0) to (width, height) of the device context.
    void Draw(HDC target, int width, int height) const;

private:
    const HOSTINFO* object_;
};

// The background of a root: one colour ("0x00bbggrr") or an image that is repeated over the panel.
class PANELHOST_API cPanelBackground {
public:
    cPanelBackground() = default;
    ~cPanelBackground();
    cPanelBackground(const cPanelBackground&) = delete;
    cPanelBackground& operator=(const cPanelBackground&) = delete;

    // A colour or a file name; empty for the system's dialog colour. False, and nothing changed, when
    // unreadable.
    bool Set(const char* text);
    const std::string& Text() const { return text_; }
    // Fills (0, 0) to (width, height) with what the panel shows from (originX, originY) on.
    void Draw(HDC target, int width, int height, int originX, int originY) const;

private:
    void Release();

    std::string text_;
    COLORREF colour_ = CLR_INVALID;
    const OSMIRBitmap* image_ = nullptr;
};

// A device context to draw a control in before it is shown at once. The pixels are shared by all that is
// drawn on the user-interface thread one after the other.
class PANELHOST_API cOffScreen {
public:
    cOffScreen(HDC target, int width, int height);
    ~cOffScreen();
    cOffScreen(const cOffScreen&) = delete;
    cOffScreen& operator=(const cOffScreen&) = delete;

    HDC Dc() const { return dc_; }
    // Copies the drawing to the target.
    void Show() const;

private:
    HDC target_;
    int width_;
    int height_;
    HDC dc_;
    HBITMAP own_ = nullptr; // only when the shared pixels are in use or cannot be had
    HGDIOBJ previous_ = nullptr;
};
