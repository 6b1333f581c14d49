#pragma once

#include "Panelhost/Messages.h"
#include "Panelhost/ValueRecord.h"

#include <functional>
#include <utility>

// Runs a function in front of what a window does with a message; of the records only when a value is set. One
// at a time.
class Interception {
public:
    Interception(HWND window, UINT message, std::function<void()> action) : window_(window) {
        message_ = message;
        action_ = std::move(action);
        procedure_ = Exchange(Procedure);
    }
    ~Interception() {
        if (IsWindow(window_)) {
            Exchange(procedure_);
        }
    }
    Interception(const Interception&) = delete;
    Interception& operator=(const Interception&) = delete;

private:
    WNDPROC Exchange(WNDPROC procedure) const {
        return reinterpret_cast<WNDPROC>(
            SetWindowLongA(window_, GWL_WNDPROC, reinterpret_cast<LONG>(procedure)));
    }
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == message_ &&
            (message != CWM_MESSAGE || reinterpret_cast<VALUERECORD*>(lParam)->command == COMMAND_SET)) {
            action_();
            if (!IsWindow(window)) {
                return 0;
            }
        }
        return CallWindowProcA(procedure_, window, message, wParam, lParam);
    }

    static inline UINT message_;
    static inline std::function<void()> action_;
    static inline WNDPROC procedure_;
    HWND window_;
};
