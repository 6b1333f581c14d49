#pragma once

#include <windows.h>

#include <algorithm>
#include <commctrl.h>
#include <cstdint>
#include <memory>
#include <type_traits>

// Owners of what is drawn with.

struct GdiObjectDeleter {
    void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
using Font = std::unique_ptr<std::remove_pointer_t<HFONT>, GdiObjectDeleter>;
using Brush = std::unique_ptr<std::remove_pointer_t<HBRUSH>, GdiObjectDeleter>;
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, GdiObjectDeleter>;

// A top-down 32-bit DIB section of at least one pixel, all zero; bits receives its pixels, blue first in
// each. Null when it cannot be had.
inline HBITMAP CreatePixels(int width, int height, std::uint32_t** bits = nullptr) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = std::max(width, 1);
    info.bmiHeader.biHeight = -std::max(height, 1);
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* pixels = nullptr;
    const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    if (bits != nullptr) {
        *bits = static_cast<std::uint32_t*>(pixels);
    }
    return bitmap;
}

inline SIZE SizeOf(HBITMAP bitmap) {
    BITMAP description{};
    GetObjectA(bitmap, sizeof description, &description);
    return {description.bmWidth, description.bmHeight};
}

struct ImageListDeleter {
    void operator()(HIMAGELIST list) const { ImageList_Destroy(list); }
};
using ImageList = std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, ImageListDeleter>;

// An object in use by a device context; puts back the one before it.
class Selected {
public:
    Selected(HDC dc, HGDIOBJ object) : dc_(dc), previous_(SelectObject(dc, object)) {}
    ~Selected() { SelectObject(dc_, previous_); }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

private:
    HDC dc_;
    HGDIOBJ previous_;
};

// A memory DC with a bitmap selected. The bitmap must outlive it.
class MemoryDc {
public:
    explicit MemoryDc(HBITMAP bitmap)
        : dc_(CreateCompatibleDC(nullptr)), previous_(SelectObject(dc_, bitmap)) {}
    ~MemoryDc() {
        SelectObject(dc_, previous_);
        DeleteDC(dc_);
    }
    MemoryDc(const MemoryDc&) = delete;
    MemoryDc& operator=(const MemoryDc&) = delete;

    HDC Get() const { return dc_; }

private:
    HDC dc_;
    HGDIOBJ previous_;
};
