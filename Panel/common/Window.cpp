#include "Panel/common/Window.h"

#include "Panel/resource.h"
#include "Panelhost/Trace.h"

Window::~Window() {
    if (!window_) {
        return;
    }
    // The derived part is gone already: what the window still receives is not for it.
    SetWindowLongPtrA(window_, 0, 0);
    DestroyWindow(window_);
}

bool Window::Create(const char* className, const char* text, DWORD style, DWORD exStyle, const RECT& place,
                    HWND parent, HMENU menu, HBRUSH background) {
    const HINSTANCE instance = GetModuleHandleA(nullptr);
    WNDCLASSEXA windowClass{};
    windowClass.cbSize = sizeof windowClass;
    if (!GetClassInfoExA(instance, className, &windowClass)) {
        windowClass = {};
        windowClass.cbSize = sizeof windowClass;
        windowClass.lpfnWndProc = Procedure;
        // The user data of a panel window belongs to the panel's host, so the object is kept beside it.
        windowClass.cbWndExtra = sizeof(LONG_PTR);
        windowClass.hInstance = instance;
        windowClass.hIcon = LoadIconA(instance, MAKEINTRESOURCEA(IDI_PANEL));
        windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
        windowClass.hbrBackground = background;
        windowClass.lpszClassName = className;
        if (!RegisterClassExA(&windowClass)) {
            return false;
        }
    }
    return CreateWindowExA(exStyle, className, text, style, place.left, place.top, place.right, place.bottom,
                           parent, menu, instance, this) != nullptr;
}

LRESULT Window::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcA(window_, message, wParam, lParam);
}

LRESULT CALLBACK Window::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        const auto* parameters = reinterpret_cast<const CREATESTRUCTA*>(lParam);
        auto* created = static_cast<Window*>(parameters->lpCreateParams);
        created->window_ = window;
        SetWindowLongPtrA(window, 0, reinterpret_cast<LONG_PTR>(created));
    }
    auto* object = reinterpret_cast<Window*>(GetWindowLongPtrA(window, 0));
    if (!object) {
        return DefWindowProcA(window, message, wParam, lParam);
    }
    if (message == WM_NCDESTROY) {
        object->window_ = nullptr;
        SetWindowLongPtrA(window, 0, 0);
        return DefWindowProcA(window, message, wParam, lParam);
    }
    try {
        return object->OnMessage(message, wParam, lParam);
    } catch (...) {
        TRACE("Panel: message 0x%x failed\n", message);
        return 0;
    }
}

HFONT CreateSystemFont() {
    NONCLIENTMETRICSA metrics{};
    // The size before the member that older systems do not know.
    metrics.cbSize = offsetof(NONCLIENTMETRICSA, iPaddedBorderWidth);
    if (!SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0)) {
        return nullptr;
    }
    return CreateFontIndirectA(&metrics.lfStatusFont);
}

RECT WorkArea(HWND window) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (GetMonitorInfoA(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor)) {
        return monitor.rcWork;
    }
    return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}
