#include "Panelhost/Background.h"

#include "Panelhost/Bitmap.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Root.h"
#include "base/Gdi.h"
#include "base/Guard.h"
#include "logic/text/Numbers.h"

#include <algorithm>
#include <cstring>

namespace {

// The pixels that all drawing on the user-interface thread shares. They grow to the largest control and stay.
struct SharedPixels {
    HDC dc = nullptr;
    HBITMAP bitmap = nullptr;
    int width = 0;
    int height = 0;
    bool inUse = false;

    static SharedPixels& Get() {
        static SharedPixels pixels;
        return pixels;
    }

    bool Fit(int neededWidth, int neededHeight) {
        if (neededWidth <= width && neededHeight <= height) {
            return dc != nullptr;
        }
        const int newWidth = std::max(width, neededWidth);
        const int newHeight = std::max(height, neededHeight);
        HBITMAP larger = CreatePixels(newWidth, newHeight);
        if (larger == nullptr) {
            return false;
        }
        if (dc == nullptr) {
            dc = CreateCompatibleDC(nullptr);
        }
        SelectObject(dc, larger);
        if (bitmap != nullptr) {
            DeleteObject(bitmap);
        }
        bitmap = larger;
        width = newWidth;
        height = newHeight;
        return true;
    }
};

} // namespace

void cBackground::Draw(HDC target, int width, int height) const {
    int x = 0;
    int y = 0;
    const HOSTINFO* level = object_;
    while (level != nullptr && level->kind != KIND_ROOT) {
        x += level->rectangle.left;
        y += level->rectangle.top;
        level = level->parent;
    }
    static const cPanelBackground plain;
    const cPanelBackground* panel = a_GetBackground(const_cast<HOSTINFO*>(level));
    (panel == nullptr ? plain : *panel).Draw(target, width, height, x, y);
}

cPanelBackground::~cPanelBackground() {
    Release();
}

void cPanelBackground::Release() {
    if (image_ != nullptr) {
        a_UnregisterBitmap3(text_.c_str());
        image_ = nullptr;
    }
}

bool cPanelBackground::Set(const char* text) {
    COLORREF colour = CLR_INVALID;
    const OSMIRBitmap* image = nullptr;
    if (std::strncmp(text, "0x", 2) == 0) {
        const auto read = logic::ParseWholeHex(text);
        if (!read || *read > 0xFFFFFF) {
            return false;
        }
        colour = *read;
    } else if (*text != '\0') {
        image = a_GetBitmap3(text);
        if (image == nullptr) {
            return false;
        }
    }
    Release();
    text_ = text;
    colour_ = colour;
    image_ = image;
    return true;
}

void cPanelBackground::Draw(HDC target, int width, int height, int originX, int originY) const {
    if (image_ == nullptr) {
        const RECT area{0, 0, width, height};
        const HGDIOBJ brush = GetStockObject(DC_BRUSH);
        const COLORREF previous =
            SetDCBrushColor(target, colour_ == CLR_INVALID ? GetSysColor(COLOR_BTNFACE) : colour_);
        FillRect(target, &area, static_cast<HBRUSH>(brush));
        SetDCBrushColor(target, previous);
        return;
    }
    const auto phase = [](int origin, int size) { return ((origin % size) + size) % size; };
    const int firstY = phase(originY, image_->Height());
    const int firstX = phase(originX, image_->Width());
    for (int y = -firstY; y < height; y += image_->Height()) {
        for (int x = -firstX; x < width; x += image_->Width()) {
            // Only the part inside the area, so that nothing is drawn beyond it.
            const int left = std::max(x, 0);
            const int top = std::max(y, 0);
            const int right = std::min(x + image_->Width(), width);
            const int bottom = std::min(y + image_->Height(), height);
            BitBlt(target, left, top, right - left, bottom - top, image_->Dc(), left - x, top - y, SRCCOPY);
        }
    }
}

cOffScreen::cOffScreen(HDC target, int width, int height) : target_(target), width_(width), height_(height) {
    SharedPixels& shared = SharedPixels::Get();
    if (!shared.inUse && shared.Fit(width, height)) {
        shared.inUse = true;
        dc_ = shared.dc;
        SaveDC(dc_);
        return;
    }
    dc_ = CreateCompatibleDC(target);
    own_ = CreatePixels(width, height);
    previous_ = SelectObject(dc_, own_);
}

cOffScreen::~cOffScreen() {
    if (own_ == nullptr) {
        RestoreDC(dc_, -1);
        SharedPixels::Get().inUse = false;
        return;
    }
    SelectObject(dc_, previous_);
    DeleteObject(own_);
    DeleteDC(dc_);
}

void cOffScreen::Show() const {
    BitBlt(target_, 0, 0, width_, height_, dc_, 0, 0, SRCCOPY);
}
