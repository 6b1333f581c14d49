#pragma once

#include <windows.h>

#include <commctrl.h>
#include <memory>
#include <type_traits>

// Owners of the handles that dialogs draw with.

struct GdiObjectDeleter {
    void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
using Brush = std::unique_ptr<std::remove_pointer_t<HBRUSH>, GdiObjectDeleter>;
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, GdiObjectDeleter>;

struct ImageListDeleter {
    void operator()(HIMAGELIST list) const { ImageList_Destroy(list); }
};
using ImageList = std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, ImageListDeleter>;

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
