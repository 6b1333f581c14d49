#pragma once

#include <windows.h>

#include <commctrl.h>
#include <memory>
#include <type_traits>

// Owners of what is drawn with.

struct GdiObjectDeleter {
    void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
using Font = std::unique_ptr<std::remove_pointer_t<HFONT>, GdiObjectDeleter>;
using Brush = std::unique_ptr<std::remove_pointer_t<HBRUSH>, GdiObjectDeleter>;
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, GdiObjectDeleter>;

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
