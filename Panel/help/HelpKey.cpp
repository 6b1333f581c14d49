#include "Panel/help/HelpKey.h"

#include "Panelhost/Trace.h"

#include <utility>

thread_local const HelpKey* HelpKey::current = nullptr;

HelpKey::HelpKey(Action action)
    : action_(std::move(action)),
      hook_(SetWindowsHookExA(WH_MSGFILTER, Filter, nullptr, GetCurrentThreadId())) {
    current = this;
}

HelpKey::~HelpKey() {
    current = nullptr;
    if (hook_) {
        UnhookWindowsHookEx(hook_);
    }
}

LRESULT CALLBACK HelpKey::Filter(int code, WPARAM wParam, LPARAM lParam) noexcept {
    if (code == MSGF_DIALOGBOX && current && Is(*reinterpret_cast<const MSG*>(lParam))) {
        try {
            current->action_(reinterpret_cast<const MSG*>(lParam)->hwnd);
        } catch (...) {
            TRACE("Panel: no help\n");
        }
        return TRUE;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}
