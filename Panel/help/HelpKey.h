#pragma once

#include <windows.h>

#include <functional>

// F1 while a dialog serves its own keys, modal ones included.
class HelpKey {
public:
    // The window is the one that has the keyboard.
    using Action = std::function<void(HWND window)>;

    // One at a time in a thread.
    explicit HelpKey(Action action);
    ~HelpKey();
    HelpKey(const HelpKey&) = delete;
    HelpKey& operator=(const HelpKey&) = delete;

    static bool Is(const MSG& message) { return message.message == WM_KEYDOWN && message.wParam == VK_F1; }

private:
    static LRESULT CALLBACK Filter(int code, WPARAM wParam, LPARAM lParam) noexcept;

    static thread_local const HelpKey* current;

    Action action_;
    HHOOK hook_;
};
