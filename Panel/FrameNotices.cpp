// What the frame tells its user beside the panel, and where it leads from there.

#include "Panel/FrameWindow.h"

#include "Panel/resource.h"
#include "Panelhost/Hostinfo.h"

#include <utility>

// While an edit is under way its dialog may not go, as it could while a message is shown.
void FrameWindow::WarnLater(const std::string& text) {
    warnings_.push_back(text);
    PostMessageA(Handle(), SHOW_WARNINGS, 0, 0);
}

void FrameWindow::ShowWarnings() {
    for (const std::string& text : std::exchange(warnings_, {})) {
        reporter_.Warn(Handle(), text);
    }
}

void FrameWindow::ShowNotice() {
    std::vector<UnreadLine> lines = panel_->Unread();
    oldFile_.SetFile(lines.empty() ? "" : file_);
    const std::string& fault = panel_->DeviceFault();
    const std::string unread = UnreadSummary(lines);
    notice_.SetText(fault + (fault.empty() || unread.empty() ? "" : " ") + unread,
                    lines.empty() ? CMD_VIEW_TRACE : CMD_VIEW_UNREAD);
    if (lines.empty() && unread_.IsShown()) {
        unread_.Show(false);
    }
    unread_.SetLines(std::move(lines));
    OnSize();
}

std::string FrameWindow::GoTo(HOSTINFO* control) {
    if (ticking_ || !panel_) {
        return "The panel is busy";
    }
    view_.MakeVisible(control->window);
    panel_->Edit().PointAt(control);
    SetActiveWindow(Handle());
    return IsWindowVisible(control->window) ? ""
                                            : control->name + " cannot be seen now: it is on another layer, "
                                                              "or shown in the edit mode alone";
}

void FrameWindow::GoToFinding(const std::string& object) {
    HOSTINFO* found = object.empty() || !panel_ ? nullptr : a_FindHostinfo(panel_->Root(), object.c_str());
    if (!found) {
        return;
    }
    if (found->kind == KIND_DEVICE) {
        return bindings_.Open(true);
    }
    if (const std::string why = GoTo(found); !why.empty()) {
        reporter_.Warn(Handle(), why);
    }
}
