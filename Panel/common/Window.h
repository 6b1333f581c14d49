#pragma once

#include <windows.h>

// A window of this program. Messages reach OnMessage, and no exception leaves the window procedure.
class Window {
public:
    Window() = default;
    virtual ~Window(); // destroys the window if it still lives
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    HWND Handle() const { return window_; }

protected:
    // Registers the class when it is not yet known, and makes the window.
    bool Create(const char* className, const char* text, DWORD style, DWORD exStyle, const RECT& place,
                HWND parent, HMENU menu, HBRUSH background);
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    HWND window_ = nullptr;
};

// A font of the system's own texts; owned by the caller.
HFONT CreateSystemFont();

// The area of the screen that is free for windows, on the monitor of that window.
RECT WorkArea(HWND window);
