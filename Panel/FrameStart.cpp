// What the frame keeps for its user's next start, and the page that it begins with.
#include "Panel/FrameWindow.h"
#include "Panel/export/PanelPicture.h"
#include "Panel/start/NewPanelDialog.h"
#include "Panel/common/Settings.h"

namespace {

constexpr const char* PLACE = "Window.txt";
constexpr SIZE PICTURE_ROOM{408, 264};
constexpr int FEW_CONTROLS = 200; // a picture of them takes no time that is noticed

} // namespace

// The start page.

StartScreen::Actions FrameWindow::StartActions() {
    return {.open = [this](const std::string& file) { OpenListed(file); },
            .askRemoval =
                [this](const std::string& file) {
                    return reporter_.Ask(Handle(),
                                         file + " is not there any more.\n\nTake it off the list?") == IDYES;
                }};
}

void FrameWindow::ShowStart(bool shown) {
    if (shown == start_.IsShown()) {
        return;
    }
    start_.Show(shown);
    ShowWindow(view_.Handle(), shown ? SW_HIDE : SW_SHOWNA);
    FitToPanel();
    OnSize();
    if (GetActiveWindow() == Handle()) {
        shown ? start_.TakeFocus() : panel_->RestoreFocus();
    }
    if (shown) {
        Refresh();
    }
}

void FrameWindow::OpenListed(const std::string& file) {
    std::string error;
    if (MayDiscard() && !OpenPanel(file, error) && !error.empty()) {
        reporter_.Warn(Handle(), error);
    }
}

// In place of the panel that is open.
void FrameWindow::GoToStart() {
    std::string error;
    if (start_.IsShown() || !MayDiscard()) {
        return;
    }
    SetEditing(false);
    if (OpenPanel("", error)) {
        ShowStart(true);
    } else {
        reporter_.Warn(Handle(), error);
    }
}

void FrameWindow::New() {
    if (!MayDiscard()) {
        return;
    }
    const std::optional<std::string> lines = AskForNewPanel(Handle());
    if (!lines || !panel_) {
        return;
    }
    PanelSource source{"", DeviceFileFor("", "")};
    source.text = *lines;
    std::string error;
    if (!OpenSource(source, error)) {
        reporter_.Warn(Handle(), error);
        return;
    }
    SetEditing(true);
    Refresh();
}

// What is kept. A panel that is only operated stays out of the list.

void FrameWindow::RememberOpened() const {
    if (!file_.empty() && !commandLine_.operate) {
        recent_.Add(file_);
    }
}

void FrameWindow::KeepPicture(bool isLast) const {
    const std::string picture = recent_.PictureOf(file_);
    const bool isKept = !picture.empty() && !file_.empty() && !commandLine_.operate;
    if (!isKept || !panel_ || !IsWindowVisible(panel_->Handle()) || IsUnsaved() ||
        (!isLast && panel_->ControlCount() > FEW_CONTROLS)) {
        return;
    }
    SavePanelThumbnail(panel_->Handle(), panel_->Size(), PICTURE_ROOM, picture);
}

// The place of the window.

bool FrameWindow::RestorePlace() {
    if (settings_.empty() || !commandLine_.screenshotFile.empty() ||
        !ReadWindowPlace(ReadSettings(settings_, PLACE), kept_)) {
        return false;
    }
    const RECT place = MovedOntoScreen(kept_.place);
    SetWindowPos(Handle(), nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    return true;
}

// The size is that of the panel it was left with; any other has one that fits.
void FrameWindow::RestoreSize() {
    if (kept_.place.right > kept_.place.left && file_ == kept_.panelFile) {
        RestorePlace();
    }
}

void FrameWindow::KeepPlace() {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    if (settings_.empty() || !IsWindowVisible(Handle()) || (IsOnlyOperated() && commandLine_.fullScreen) ||
        !GetWindowPlacement(Handle(), &placement)) {
        return;
    }
    const bool isNormal = !IsZoomed(Handle()) && !IsIconic(Handle());
    RECT place = placement.rcNormalPosition;
    if (isNormal) {
        GetWindowRect(Handle(), &place);
    }
    place.right -= SidesWidth(); // they come with the edit mode, which is begun anew
    const bool isMaximized = IsZoomed(Handle()) || (placement.flags & WPF_RESTORETOMAXIMIZED) != 0;
    WriteSettings(settings_, PLACE, WindowPlaceText({place, isMaximized, file_}));
}
