#include "Controls/families/Question.h"

#include "logic/controls/ButtonLogic.h"
#include "logic/drawing/BesidePlace.h"

#include <cstring>
#include <utility>

namespace {

// A message box stands in the middle of the screen. While this lives, the next one of the thread is moved
// beside a control before it is seen.
class BoxMover {
public:
    explicit BoxMover(HWND control)
        : control_(control),
          outer_(std::exchange(current_, this)),
          hook_(SetWindowsHookExA(WH_CBT, Watch, nullptr, GetCurrentThreadId())) {}
    ~BoxMover() {
        Stop();
        current_ = outer_;
    }
    BoxMover(const BoxMover&) = delete;
    BoxMover& operator=(const BoxMover&) = delete;

private:
    void Stop() {
        if (hook_ != nullptr) {
            UnhookWindowsHookEx(std::exchange(hook_, nullptr));
        }
    }

    static LRESULT CALLBACK Watch(int code, WPARAM wParam, LPARAM lParam) {
        BoxMover* mover = current_;
        if (code == HCBT_ACTIVATE && mover != nullptr) {
            const HWND window = reinterpret_cast<HWND>(wParam);
            char className[16] = "";
            GetClassNameA(window, className, sizeof className);
            if (std::strcmp(className, "#32770") == 0) {
                mover->Stop(); // it stays where the user moves it
                mover->Move(window);
            }
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    void Move(HWND box) const {
        MONITORINFO monitor{};
        monitor.cbSize = sizeof monitor;
        RECT beside{};
        RECT place{};
        if (GetWindowRect(control_, &beside) == 0 || GetWindowRect(box, &place) == 0 ||
            GetMonitorInfoA(MonitorFromRect(&beside, MONITOR_DEFAULTTONEAREST), &monitor) == 0) {
            return;
        }
        const RECT& screen = monitor.rcWork;
        const auto [left, top] = logic::PlaceBeside({beside.left, beside.top, beside.right, beside.bottom},
                                                    place.right - place.left, place.bottom - place.top,
                                                    {screen.left, screen.top, screen.right, screen.bottom});
        SetWindowPos(box, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }

    static inline BoxMover* current_ = nullptr;
    HWND control_;
    BoxMover* outer_;
    HHOOK hook_;
};

} // namespace

bool IsConfirmed(const CONTROLPROPERTIES& control, std::string question, std::string title) {
    if (question.empty()) {
        return true;
    }
    const BoxMover mover(control.window);
    return MessageBoxA(control.window, logic::QuestionText(question).c_str(), title.c_str(),
                       MB_YESNO | MB_DEFBUTTON2) == IDYES;
}
