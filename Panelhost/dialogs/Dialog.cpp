// What all dialogs share: their life, their size, their colours, and the object they are about.

#include "Panelhost/dialogs/Dialog.h"

#include "Panelhost/Dialogs.h"
#include "Panelhost/Editing.h"
#include "Panelhost/Trace.h"
#include "base/Guard.h"

#include <algorithm>
#include <commctrl.h>
#include <utility>

extern "C" IMAGE_DOS_HEADER __ImageBase; // this library

namespace {

constexpr UINT REFRESH = WM_USER + 100; // posted to itself
constexpr UINT_PTR REFRESH_TIMER = 0x0D1A;
constexpr UINT_PTR PART_SUBCLASS = 1;
constexpr UINT REFRESH_INTERVAL = 500; // milliseconds; for what changes without a property line

LONG Moved(LONG edge, LONG growth, int percent) {
    return edge + growth * percent / 100;
}

bool WantsBrush(UINT message) {
    return message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC;
}

} // namespace

HINSTANCE DialogModule() {
    static const bool registered = [] {
        const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES};
        return InitCommonControlsEx(&classes) != 0;
    }();
    return registered ? reinterpret_cast<HINSTANCE>(&__ImageBase) : nullptr;
}

Dialog::Dialog() = default;
Dialog::~Dialog() = default;

HWND Dialog::CreateModeless(HINSTANCE module, int templateId, HWND owner) {
    return CreateDialogParamA(module, MAKEINTRESOURCEA(templateId), owner, Procedure,
                              reinterpret_cast<LPARAM>(this));
}

HWND Dialog::CreateModeless(HINSTANCE module, const DWORD* dialogTemplate, HWND owner) {
    return CreateDialogIndirectParamA(module, reinterpret_cast<const DLGTEMPLATE*>(dialogTemplate), owner,
                                      Procedure, reinterpret_cast<LPARAM>(this));
}

INT_PTR Dialog::RunModal(HINSTANCE module, int templateId, HWND owner) {
    return DialogBoxParamA(module, MAKEINTRESOURCEA(templateId), owner, Procedure,
                           reinterpret_cast<LPARAM>(this));
}

void Dialog::ShowAtCursor() {
    POINT place;
    GetCursorPos(&place);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    RECT window;
    GetWindowRect(handle_, &window);
    if (GetMonitorInfoA(MonitorFromPoint(place, MONITOR_DEFAULTTONEAREST), &monitor)) {
        const RECT& area = monitor.rcWork;
        place.x = std::max(area.left, std::min(place.x, area.right - (window.right - window.left)));
        place.y = std::max(area.top, std::min(place.y, area.bottom - (window.bottom - window.top)));
    }
    SetWindowPos(handle_, nullptr, place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_SHOWWINDOW);
}

void Dialog::Close() {
    if (!closing_) { // messages still come while the window goes
        closing_ = true;
        DestroyWindow(handle_);
    }
}

void Dialog::SetLayout(std::vector<ResizeRule> rules) {
    RECT client;
    GetClientRect(handle_, &client);
    smallestClient_ = {client.right, client.bottom};
    RECT window;
    GetWindowRect(handle_, &window);
    smallestWindow_ = {window.right - window.left, window.bottom - window.top};
    places_.clear();
    for (const ResizeRule& rule : rules) {
        Place place{rule, {}};
        GetWindowRect(Item(rule.id), &place.rectangle);
        MapWindowPoints(nullptr, handle_, reinterpret_cast<POINT*>(&place.rectangle), 2);
        places_.push_back(place);
    }
}

void Dialog::Arrange() {
    RECT client;
    GetClientRect(handle_, &client);
    const LONG dx = std::max(0L, client.right - smallestClient_.cx);
    const LONG dy = std::max(0L, client.bottom - smallestClient_.cy);
    HDWP positions = BeginDeferWindowPos(static_cast<int>(places_.size()));
    for (const Place& place : places_) {
        const RECT& old = place.rectangle;
        const LONG left = Moved(old.left, dx, place.rule.left);
        const LONG top = Moved(old.top, dy, place.rule.top);
        if (positions != nullptr) {
            positions = DeferWindowPos(positions, Item(place.rule.id), nullptr, left, top,
                                       Moved(old.right, dx, place.rule.right) - left,
                                       Moved(old.bottom, dy, place.rule.bottom) - top,
                                       SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
        }
    }
    if (positions != nullptr) {
        EndDeferWindowPos(positions);
    }
    OnResized();
}

HBRUSH Dialog::ColourStatic(HDC dc, HWND item) const {
    const bool header = IsHeader(GetDlgCtrlID(item));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, header ? RGB(255, 255, 255) : RGB(0, 0, 0));
    return a_GetObject(header ? BRUSH_HEADER : BRUSH_DIALOG);
}

// The dialog manager writes to its own memory of the dialog once it has given the focus back. Whoever loses
// the focus may have ended the dialog by then, so it is kept and given back here.
bool Dialog::KeepFocus(UINT message, WPARAM wParam) {
    const bool isActivation = message == WM_ACTIVATE;
    if (!isActivation && message != WM_SETFOCUS) {
        return false;
    }
    if (isActivation && LOWORD(wParam) == WA_INACTIVE) {
        if (HWND focus = GetFocus(); IsChild(handle_, focus)) {
            focus_ = focus;
        }
    } else if (!IsIconic(handle_)) {
        HWND item = std::exchange(focus_, nullptr);
        if (!IsChild(handle_, item)) {
            item = isActivation ? nullptr : GetNextDlgTabItem(handle_, nullptr, FALSE);
        }
        if (item != nullptr) {
            SetFocus(item);
        }
    }
    return true;
}

bool Dialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    const auto dc = reinterpret_cast<HDC>(wParam);
    switch (message) {
    case WM_CTLCOLORDLG:
        result = reinterpret_cast<LRESULT>(a_GetObject(BRUSH_DIALOG));
        return true;
    case WM_CTLCOLORSTATIC:
        result = reinterpret_cast<LRESULT>(ColourStatic(dc, reinterpret_cast<HWND>(lParam)));
        return true;
    case WM_CTLCOLOREDIT:
        SetBkColor(dc, FIELD_COLOUR);
        SetTextColor(dc, RGB(0, 0, 0));
        result = reinterpret_cast<LRESULT>(a_GetObject(BRUSH_FIELD));
        return true;
    case WM_SIZE:
        if (wParam != SIZE_MINIMIZED && !places_.empty()) {
            Arrange();
        }
        return true;
    case WM_GETMINMAXINFO:
        if (places_.empty()) {
            return false;
        }
        reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {smallestWindow_.cx, smallestWindow_.cy};
        return true;
    default:
        return false;
    }
}

INT_PTR CALLBACK Dialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    try {
        if (message == WM_INITDIALOG) {
            auto* created = reinterpret_cast<Dialog*>(lParam);
            created->handle_ = window;
            created->self_ = created->shared_from_this();
            SetWindowLongPtrA(window, DWLP_USER, lParam);
            created->OnCreate();
            return FALSE; // the dialog has set the focus
        }
        auto* found = reinterpret_cast<Dialog*>(GetWindowLongPtrA(window, DWLP_USER));
        if (found == nullptr) {
            return FALSE;
        }
        const std::shared_ptr<Dialog> dialog = found->self_;
        if (message == WM_NCDESTROY) {
            SetWindowLongPtrA(window, DWLP_USER, 0);
            dialog->handle_ = nullptr;
            dialog->self_.reset();
            return FALSE;
        }
        if (message == WM_DESTROY) {
            dialog->closing_ = true;
        }
        LRESULT result = 0;
        if (!dialog->KeepFocus(message, wParam) && !dialog->OnMessage(message, wParam, lParam, result)) {
            return FALSE;
        }
        if (WantsBrush(message)) {
            return result;
        }
        SetWindowLongPtrA(window, DWLP_MSGRESULT, result);
        return TRUE;
    } catch (const std::exception& failure) {
        TRACE("Dialog: message %x failed: %s\n", message, failure.what());
        return FALSE;
    }
}

// Dialogs about an object.

namespace {

std::vector<ObjectDialog*>& OpenDialogs() {
    static std::vector<ObjectDialog*> dialogs;
    return dialogs;
}

} // namespace

ObjectDialog::ObjectDialog(int templateId, HOSTINFO* object)
    : templateId_(templateId), object_(object), objectWindow_(object->window) {
    OpenDialogs().push_back(this);
}

ObjectDialog::~ObjectDialog() {
    auto& dialogs = OpenDialogs();
    dialogs.erase(std::remove(dialogs.begin(), dialogs.end(), this), dialogs.end());
}

HWND ObjectDialog::Raise(int templateId, const HOSTINFO* object) {
    for (const ObjectDialog* dialog : OpenDialogs()) {
        if (dialog->templateId_ == templateId && dialog->Handle() != nullptr && dialog->ObjectLives() &&
            dialog->object_ == object) {
            ShowWindow(dialog->Handle(), SW_SHOW);
            SetForegroundWindow(dialog->Handle());
            return dialog->Handle();
        }
    }
    return nullptr;
}

HWND ObjectDialog::Open(HWND owner) {
    const HWND window = CreateModeless(DialogModule(), templateId_, owner);
    if (window != nullptr) {
        ShowAtCursor();
    }
    return window;
}

bool ObjectDialog::ObjectLives() const {
    return a_FromWindow(objectWindow_) == object_;
}

bool ObjectDialog::Load(const std::string& line) const {
    return ObjectLives() && a_ApplyEdit(object_, line.c_str()) != 0;
}

LRESULT CALLBACK ObjectDialog::ObjectProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                          UINT_PTR id, DWORD_PTR reference) noexcept {
    const auto dialog = reinterpret_cast<HWND>(reference);
    switch (message) {
    case CWM_LOAD: {
        const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
        if (result != 0) {
            SendMessageA(dialog, REFRESH, 0, 0);
        }
        return result;
    }
    case WM_DESTROY:
        RemoveWindowSubclass(window, ObjectProc, id);
        DestroyWindow(dialog); // while the object still lives
        break;
    default:
        break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

void ObjectDialog::OnCreate() {
    const auto id = reinterpret_cast<UINT_PTR>(Handle());
    SetWindowSubclass(objectWindow_, ObjectProc, id, id);
    // Also sees a root go whose window stays.
    SetTimer(Handle(), REFRESH_TIMER, REFRESH_INTERVAL, nullptr);
    Refresh();
}

bool ObjectDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    const bool lives = ObjectLives();
    if (message == WM_DESTROY) {
        RemoveWindowSubclass(objectWindow_, ObjectProc, reinterpret_cast<UINT_PTR>(Handle()));
        if (lives && object_->dialog == Handle()) {
            object_->dialog = nullptr;
        }
        return true;
    }
    if (!lives) {
        Close();
        return true;
    }
    switch (message) {
    case REFRESH: // sent within the loading of a line: many may follow each other
        if (!refreshPosted_) {
            refreshPosted_ = true;
            PostMessageA(Handle(), CWM_ATTACHDIALOG, 0, reinterpret_cast<LPARAM>(object_));
        }
        return true;
    case WM_TIMER:
        if (wParam != REFRESH_TIMER) {
            break;
        }
        Refresh();
        return true;
    case CWM_ATTACHDIALOG:
        refreshPosted_ = false;
        Refresh();
        return true;
    default:
        break;
    }
    return OnObjectMessage(message, wParam, lParam, result);
}

bool ObjectDialog::OnObjectMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    if (message == WM_COMMAND && LOWORD(wParam) == IDCANCEL) {
        Close();
        return true;
    }
    return Dialog::OnMessage(message, wParam, lParam, result);
}

void ObjectDialog::Watch(HWND part) {
    SetWindowSubclass(part, PartProc, PART_SUBCLASS, reinterpret_cast<DWORD_PTR>(this));
}

std::optional<LRESULT> ObjectDialog::OnPartMessage(HWND, UINT, WPARAM, LPARAM) {
    return std::nullopt;
}

LRESULT CALLBACK ObjectDialog::PartProc(HWND part, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                        DWORD_PTR reference) noexcept {
    auto* dialog = reinterpret_cast<ObjectDialog*>(reference);
    return Guarded(LRESULT{0}, [&] {
        const auto keep = dialog->shared_from_this();
        if (const auto result = dialog->OnPartMessage(part, message, wParam, lParam)) {
            return *result;
        }
        if (message == WM_NCDESTROY) {
            RemoveWindowSubclass(part, PartProc, id);
        }
        return DefSubclassProc(part, message, wParam, lParam);
    });
}
