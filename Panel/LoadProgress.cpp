#include "Panel/LoadProgress.h"

#include "Panel/StatusBar.h"

#include <utility>

LoadProgress::LoadProgress(HWND frame, StatusBar& status, std::string name, bool mayCancel)
    : frame_(frame), status_(status), name_(std::move(name)), mayCancel_(mayCancel) {}

LoadProgress::~LoadProgress() {
    MSG message;
    while (isCancelled_ && PeekMessageA(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE)) {
    }
}

int __cdecl LoadProgress::Tell(int read, int total, void* context) noexcept {
    try {
        return static_cast<LoadProgress*>(context)->GoesOn(read, total) ? 1 : 0;
    } catch (...) {
        return 1; // no memory for a text
    }
}

bool LoadProgress::GoesOn(int read, int total) {
    if (total <= LARGE) {
        return true;
    }
    if (!std::exchange(isShown_, true)) {
        Begin();
    }
    status_.SetText("Loading " + name_ + ": " + std::to_string(read) + " of " + std::to_string(total) +
                    " controls" + (mayCancel_ ? " (Escape cancels)" : ""));
    status_.Update();
    isCancelled_ = mayCancel_ && IsEscapePressed();
    return !isCancelled_;
}

void LoadProgress::Begin() {
    // The system would put a picture in place of a window that leaves its messages waiting, and send the keys
    // there.
    DisableProcessWindowsGhosting();
    GetAsyncKeyState(VK_ESCAPE);    // what was pressed before is meant for something else
    if (!IsWindowVisible(frame_)) { // the program is only starting
        ShowWindow(frame_, SW_SHOWDEFAULT);
        RedrawWindow(frame_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    }
}

// Asked of the keyboard itself.
bool LoadProgress::IsEscapePressed() const {
    DWORD process = 0;
    GetWindowThreadProcessId(GetForegroundWindow(), &process);
    return process == GetCurrentProcessId() && GetAsyncKeyState(VK_ESCAPE) != 0;
}
