#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

// Owners of system handles.

struct MenuDestroyer {
    void operator()(HMENU menu) const { DestroyMenu(menu); }
};
using Menu = std::unique_ptr<std::remove_pointer_t<HMENU>, MenuDestroyer>;

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>; // null for none

// Of what opened or made a file; null when it could not.
inline Handle MakeFile(HANDLE file) {
    return Handle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

struct LibraryCloser {
    void operator()(HMODULE library) const { FreeLibrary(library); }
};
using Library = std::unique_ptr<std::remove_pointer_t<HMODULE>, LibraryCloser>;

// A device context of a window, its frame included when asked for.
class WindowDc {
public:
    WindowDc(HWND window, DWORD flags) : window_(window), dc_(GetDCEx(window, nullptr, flags | DCX_CACHE)) {}
    ~WindowDc() {
        if (dc_) {
            ReleaseDC(window_, dc_);
        }
    }
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;

    HDC Get() const { return dc_; }

private:
    HWND window_;
    HDC dc_;
};
