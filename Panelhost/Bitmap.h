#pragma once

#include "Panelhost/Api.h"

#include <windows.h>

// An image in memory, as a top-down 32-bit DIB section with premultiplied alpha. Owned by the registry.
class PANELHOST_API OSMIRBitmap {
public:
    OSMIRBitmap(HBITMAP bitmap, int width, int height, bool hasAlpha);
    ~OSMIRBitmap();
    OSMIRBitmap(const OSMIRBitmap&) = delete;
    OSMIRBitmap& operator=(const OSMIRBitmap&) = delete;

    int Width() const { return width_; }
    int Height() const { return height_; }
    bool HasAlpha() const { return hasAlpha_; }
    // A memory DC with the image selected, for BitBlt and StretchBlt.
    HDC Dc() const { return dc_; }

    // Draws the whole image, or the part of that size at (sourceX, sourceY), with its top left corner at (x,
    // y).
    void Draw(HDC target, int x, int y) const { Draw(target, x, y, width_, height_, 0, 0); }
    void Draw(HDC target, int x, int y, int width, int height, int sourceX, int sourceY) const;

private:
    int width_;
    int height_;
    bool hasAlpha_;
    HBITMAP bitmap_;
    HDC dc_;
    HGDIOBJ previous_;
};

// The image in a file (any format GDI+ reads, name relative to the application folder), loaded once however
// often it is asked for. Each call adds a reference, to be given back with a_UnregisterBitmap3 of the same
// name. Null when the file is missing, is not an image, or is larger than 16384 x 16384 pixels.
PANELHOST_API OSMIRBitmap* a_GetBitmap3(const char* name);
inline OSMIRBitmap* a_GetBitmap(const char* name) {
    return a_GetBitmap3(name);
}
// Gives one reference back; the image goes with its last one. A name that is not registered is ignored.
PANELHOST_API void a_UnregisterBitmap3(const char* name);
// The same for an image that a_GetBitmap3 gave; needs no memory.
PANELHOST_API void a_UnregisterBitmap(const OSMIRBitmap* bitmap);
// Number of images in the registry.
PANELHOST_API int a_BitmapCount();

// The mark that says that a control and what it is bound to disagree. Lives as long as the library.
PANELHOST_API const OSMIRBitmap* a_GetNotEqualSign();

// Writes what a device context shows as a PNG file. 1, or 0 when it cannot be written.
PANELHOST_API int a_SavePicture(HDC source, int width, int height, const char* path);
