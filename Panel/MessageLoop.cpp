#include "Panel/MessageLoop.h"

#include "Panel/FrameWindow.h"

#include <cstring>

namespace {

// The outermost dialog that holds the window, itself included. A drop-down list belongs to the dialog of its
// owner.
HWND DialogOf(HWND window) {
    HWND dialog = nullptr;
    for (; window; window = GetParent(window)) {
        char className[16] = "";
        GetClassNameA(window, className, sizeof className);
        if (std::strcmp(className, "#32770") == 0) {
            dialog = window;
        }
    }
    return dialog;
}

} // namespace

int RunMessageLoop(FrameWindow& frame) {
    MSG message{};
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        const HWND dialog = DialogOf(message.hwnd);
        if ((dialog && IsDialogMessageA(dialog, &message)) || (!dialog && frame.TranslateKey(message))) {
            continue;
        }
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return static_cast<int>(message.wParam);
}
