#include "Panelhost/objects/PanelProcedure.h"

#include "Panelhost/Messages.h"
#include "Panelhost/objects/ObjectTree.h"
#include "Panelhost/objects/PanelRoot.h"
#include "base/Guard.h"
#include "base/SharedLock.h"

#include <unordered_map>

namespace {

struct Attached {
    PanelRoot* root = nullptr; // null: everything is passed on
    WNDPROC next = nullptr;
    bool isUnicode = false;
};

// A panel belongs to the thread of its window, but there may be panels of several threads.
SharedLock lock;

std::unordered_map<HWND, Attached>& All() {
    static std::unordered_map<HWND, Attached> all;
    return all;
}

Attached Find(HWND panel) {
    const SharedLock::Reading reading(lock);
    const auto found = All().find(panel);
    return found == All().end() ? Attached{} : found->second;
}

void Store(HWND panel, const Attached& attached) {
    const SharedLock::Writing writing(lock);
    All()[panel] = attached;
}

void Erase(HWND panel) {
    const SharedLock::Writing writing(lock);
    All().erase(panel);
}

WNDPROC Replace(HWND panel, bool isUnicode, WNDPROC procedure) {
    const auto value = reinterpret_cast<LONG_PTR>(procedure);
    return reinterpret_cast<WNDPROC>(isUnicode ? SetWindowLongPtrW(panel, GWLP_WNDPROC, value)
                                               : SetWindowLongPtrA(panel, GWLP_WNDPROC, value));
}

WNDPROC Current(HWND panel, bool isUnicode) {
    return reinterpret_cast<WNDPROC>(isUnicode ? GetWindowLongPtrW(panel, GWLP_WNDPROC)
                                               : GetWindowLongPtrA(panel, GWLP_WNDPROC));
}

LRESULT PassOn(const Attached& attached, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return attached.isUnicode ? CallWindowProcW(attached.next, window, message, wParam, lParam)
                              : CallWindowProcA(attached.next, window, message, wParam, lParam);
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const Attached attached = Find(window);
    if (attached.next == nullptr) {
        return DefWindowProcA(window, message, wParam, lParam);
    }
    if (attached.root == nullptr) {
        if (message == WM_NCDESTROY) {
            Erase(window);
        }
        return PassOn(attached, window, message, wParam, lParam);
    }
    PanelRoot& root = *attached.root;
    const PanelRoot::Held held(root);
    switch (message) {
    case CWM_MESSAGE:
        return Guarded(LRESULT{0}, [&] { return root.OnMessage(wParam, lParam); });
    case CWM_LOAD:
        return Guarded(LRESULT{0}, [&] { return root.OnLoad(wParam, lParam); });
    case CWM_SAVE:
        return root.OnSave(wParam, lParam);
    case CWM_SAVETOLISTCTRL:
        return root.OnSaveToListCtrl(wParam, lParam);
    case CWM_GETPROPERTIES:
        return reinterpret_cast<LRESULT>(static_cast<HOSTINFO*>(&root));
    case WM_ERASEBKGND:
        if (!root.Behind().Text().empty()) {
            RECT client;
            GetClientRect(window, &client);
            root.Behind().Draw(reinterpret_cast<HDC>(wParam), client.right, client.bottom, 0, 0);
            return 1;
        }
        break;
    case WM_SHOWWINDOW:
        if (wParam != FALSE) { // what was created visible in the hidden panel need not be so
            Guarded([&root] { root.ApplyLayersToAll(); });
        }
        break;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSTATIC:
        if (const HBRUSH brush = a_AskForColours(message, wParam, lParam); brush != nullptr) {
            return reinterpret_cast<LRESULT>(brush);
        }
        break;
    case WM_DESTROY: // its controls go next, one by one
        Guarded([&root] { root.TellControls(SYSTEM_CLOSING); });
        break;
    case WM_NCDESTROY:
        Erase(window);
        ObjectTree::Get().Leave(&root);
        root.window = nullptr;
        break;
    default:
        break;
    }
    return PassOn(attached, window, message, wParam, lParam);
}

} // namespace

bool PanelProcedure::Attach(HWND panel, PanelRoot& root) {
    Attached attached = Find(panel);
    attached.root = &root;
    if (attached.next != nullptr) { // of a root before, which could not be taken away
        Store(panel, attached);
        if (SendMessageA(panel, CWM_GETPROPERTIES, 0, 0) ==
            reinterpret_cast<LRESULT>(static_cast<HOSTINFO*>(&root))) {
            return true;
        }
    }
    attached.isUnicode = IsWindowUnicode(panel) != 0;
    attached.next = Current(panel, attached.isUnicode);
    Store(panel, attached);
    if (Replace(panel, attached.isUnicode, Procedure) == nullptr) {
        Erase(panel);
        return false;
    }
    return true;
}

void PanelProcedure::Detach(HWND panel) {
    Attached attached = Find(panel);
    if (attached.next == nullptr) {
        return;
    }
    if (Current(panel, attached.isUnicode) == Procedure) {
        Replace(panel, attached.isUnicode, attached.next);
        Erase(panel);
        return;
    }
    attached.root = nullptr;
    Store(panel, attached); // which is there already: it takes no memory
}
