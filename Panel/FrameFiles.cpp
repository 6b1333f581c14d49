// The panel in the frame and its file: opened, recovered and saved.
#include "Panel/common/FileDialogs.h"
#include "Panel/FrameWindow.h"
#include "Panel/LoadProgress.h"
#include "Panel/common/Paths.h"
#include "Panelhost/Root.h"

#include <utility>

namespace {

// Of a panel with that file.
std::string NameOf(const std::string& file) {
    return file.empty() ? "Untitled" : FileName(file);
}

} // namespace

std::string FrameWindow::DocumentName() const {
    return NameOf(file_);
}

bool FrameWindow::OpenPanel(const std::string& file, std::string& error) {
    const bool follows = commandLine_.follow && !panel_;
    const std::string devices = DeviceFileFor(file, a_RootValueOf(file.c_str(), "devices"));
    return OpenSource({file, devices, nullptr, "", follows}, error) ||
           (error.empty() && !panel_ && OpenSource({}, error));
}

std::unique_ptr<PanelWindow> FrameWindow::Load(const PanelSource& source, bool mayCancel,
                                               std::string& error) {
    LoadProgress progress(Handle(), status_, NameOf(source.panelFile), mayCancel);
    const auto warn = [this](const std::string& text) { WarnLater(text); };
    return PanelWindow::Open(view_.Handle(), source, progress, warn, error);
}

bool FrameWindow::OpenSource(const PanelSource& source, std::string& error) {
    const int messages = log_.MessageCount();
    log_.SetMessageCount(0);
    auto opened = Load(source, !commandLine_.operate, error); // else an empty panel would be operated
    if (!opened) {
        log_.SetMessageCount(messages);
        return false;
    }
    if (panel_ && panel_->HasInterfaceControls() && opened->HasInterfaceControls()) {
        // The new panel could be read, but found its ports taken by the running one: it starts anew without
        // that.
        opened.reset();
        Replace(nullptr, "");
        log_.SetMessageCount(0);
        opened = Load(source, false, error);
        if (!opened) { // the file changed this very moment
            std::string ignored;
            Replace(Load({}, false, ignored), "");
            return false;
        }
    }
    Replace(std::move(opened), source.panelFile);
    return true;
}

bool FrameWindow::Recover() {
    if (commandLine_.operate) {
        return false; // whoever operates is not asked about edits
    }
    std::optional<FoundCopy> found = recovery_.Offer(reporter_, commandLine_.panelFile);
    if (!found) {
        return false;
    }
    const logic::RecoveryCopy& copy = found->copy;
    PanelSource source{copy.file, DeviceFileFor(copy.file, a_RootValueIn(copy.panel, "devices")), &copy};
    if (commandLine_.deviceFile.empty() && FileExists(copy.devices)) {
        source.deviceFile = copy.devices;
    }
    if (std::string error; !OpenSource(source, error)) {
        if (!error.empty()) {
            reporter_.Warn(nullptr, error);
        }
        return false;
    }
    recovery_.Adopt(std::move(found->file), panel_->Edit().Edits());
    return true;
}

void FrameWindow::Replace(std::unique_ptr<PanelWindow> panel, const std::string& file) {
    recovery_.Discard();
    KeepPicture(true);
    AttachEditor(false);
    bindings_.SetRoot(nullptr);
    view_.SetPanel(panel ? panel->Handle() : nullptr, panel ? panel->Size() : SIZE{});
    snapshots_.SetPanel(nullptr);
    check_.Show(false); // it was of the other one
    panel_ = std::move(panel);
    file_ = file;
    objectCount_ = -1;
    if (!panel_) {
        return;
    }
    if (editing_ && panel_->HasLock()) {
        SetEditing(false);
    }
    ShowStart(false);
    RememberOpened();
    LimitPanel();
    snapshots_.SetPanel(panel_->Root());
    if (editing_) {
        panel_->Edit().SetActive(true);
        AttachEditor(true);
    }
    bindings_.SetRoot(panel_->Edit().Edits().Root());
    statedSize_ = panel_->StatedSize();
    devices_.Follow(true);
    ShowNotice();
    FitToPanel();
    Refresh();
    if (GetActiveWindow() == Handle()) {
        panel_->RestoreFocus();
    }
}

void FrameWindow::Open() {
    if (!MayDiscard()) {
        return;
    }
    const std::string file = AskFileToOpen(Handle());
    std::string error;
    if (!file.empty() && !OpenPanel(file, error) && !error.empty()) {
        reporter_.Warn(Handle(), error);
    }
}

bool FrameWindow::Save() {
    return file_.empty() ? SaveAs() : SaveTo(file_);
}

bool FrameWindow::SaveAs() {
    const std::string file = AskFileToSave(Handle(), file_);
    return !file.empty() && SaveTo(file);
}

bool FrameWindow::SaveTo(const std::string& file) {
    std::string error;
    if (!oldFile_.Keep(file, error) || !panel_->Save(file, DeviceNameFor(file), error)) {
        oldFile_.TakeBack();
        reporter_.Warn(Handle(), error);
        return false;
    }
    oldFile_.Saved();
    file_ = file;
    ShowStart(false);
    RememberOpened();
    KeepPicture(false);
    Refresh();
    return true;
}

bool FrameWindow::MayDiscard() {
    properties_.Finish();
    if (!devices_.MayDiscard()) {
        return false;
    }
    if (!panel_ || !IsUnsaved()) {
        return true;
    }
    switch (reporter_.Ask(Handle(), "Save the changes to " + DocumentName() + "?")) {
    case IDYES:
        return Save();
    case IDNO:
        return true;
    default:
        return false;
    }
}
