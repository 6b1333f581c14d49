// What the frame shows while its panel is operated, and the step from there to editing.
#include "Panel/FrameWindow.h"
#include "Panel/operating/PinDialogs.h"
#include "Panelhost/Operating.h"

namespace {

struct Owned {
    HWND owner;
    std::vector<HWND> windows;
};

BOOL CALLBACK CollectOwned(HWND window, LPARAM parameter) noexcept {
    auto& owned = *reinterpret_cast<Owned*>(parameter);
    if (GetWindow(window, GW_OWNER) == owned.owner && IsWindowVisible(window) &&
        (GetWindowLongA(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION) {
        try {
            owned.windows.push_back(window);
        } catch (const std::exception&) {
            return FALSE;
        }
    }
    return TRUE;
}

} // namespace

void FrameWindow::SetEditing(bool editing) {
    if (editing == editing_ || (editing && !MayEdit())) {
        return;
    }
    if (!editing && (commandLine_.operate || panel_->HasLock())) {
        CloseWindowsBeside();
    }
    ShowStart(start_.IsShown() && !editing);
    const int before = SidesWidth();
    editing_ = editing;
    panel_->Edit().SetActive(editing);
    LimitPanel();
    AttachEditor(editing);
    palette_.Show(editing);
    objects_.Show(editing);
    ShowParts();
    if (commandLine_.operate) { // menu and tools have come or gone
        FitToPanel();
    } else {
        WidenFrame(Handle(), SidesWidth() - before);
    }
    OnSize();
}

bool FrameWindow::MayEdit() {
    if (!panel_->HasLock()) {
        return !commandLine_.operate;
    }
    return !commandLine_.unattended && AskPin(Handle(), panel_->Edit().Edits().Root(), pinTries_);
}

// A panel with a lock is only operated until its PIN was entered.
void FrameWindow::LimitPanel() {
    a_SetOnlyOperated(panel_->Edit().Edits().Root(),
                      !editing_ && (commandLine_.operate || panel_->HasLock()));
}

// Dialogs about what is edited, lists.
void FrameWindow::CloseWindowsBeside() const {
    Owned owned{Handle(), {}};
    EnumThreadWindows(GetCurrentThreadId(), CollectOwned, reinterpret_cast<LPARAM>(&owned));
    for (const HWND window : owned.windows) {
        // What stands in a field of a dialog is still applied. By default a dialog posts this to itself.
        SendMessageA(window, WM_COMMAND, IDCANCEL, 0);
        if (IsWindow(window)) {
            SendMessageA(window, WM_CLOSE, 0, 0);
        }
    }
}

void FrameWindow::ShowParts() {
    const bool only = IsOnlyOperated();
    notice_.OfferMore(!only);
    toolbar_.Show(!only);
    status_.Show(!only || !commandLine_.fullScreen);
    if (only && GetMenu(Handle())) {
        menu_.reset(GetMenu(Handle()));
        SetMenu(Handle(), nullptr);
    } else if (!only && menu_) {
        SetMenu(Handle(), menu_.release());
    }
    fullScreen_.Set(Handle(), only && commandLine_.fullScreen);
}
