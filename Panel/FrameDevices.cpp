// The device file of the panel: which one it is, and the window that shows it.
#include "Panel/FrameWindow.h"
#include "Panel/common/Paths.h"
#include "base/FileNames.h"

namespace {

std::string FolderOf(const std::string& file) {
    return file.substr(0, file.find_last_of("\\/") + 1);
}

bool IsSameFile(const std::string& one, const std::string& other) {
    return lstrcmpiA(one.c_str(), other.c_str()) == 0;
}

// A name without drive and without a backslash in front is meant beside the panel.
std::string Resolved(const std::string& name, const std::string& panelFile) {
    const bool isWhole =
        name.find(':') != std::string::npos || name.starts_with('\\') || name.starts_with('/');
    return isWhole ? name : FolderOf(panelFile) + name;
}

std::string Beside(const std::string& panelFile) {
    return panelFile.empty() ? "" : WithExtension(panelFile, ".devices");
}

// Where it lies in that folder, or below.
std::string WithoutFolder(const std::string& file, const std::string& folder) {
    return !folder.empty() && IsSameFile(file.substr(0, folder.size()), folder) ? file.substr(folder.size())
                                                                                : file;
}

// As the panel names it: empty where it need not.
std::string NameFor(const std::string& deviceFile, const std::string& panelFile) {
    return deviceFile.empty() || IsSameFile(deviceFile, Beside(panelFile))
               ? ""
               : WithoutFolder(deviceFile, FolderOf(panelFile));
}

} // namespace

std::string FrameWindow::DeviceFileFor(const std::string& file, const std::string& name) const {
    if (!commandLine_.deviceFile.empty()) {
        return commandLine_.deviceFile; // the devices stay the same whichever panel is opened
    }
    if (!name.empty()) {
        return Resolved(name, file);
    }
    const std::string beside = Beside(file);
    return FileExists(beside) ? beside : "";
}

// The panel that is saved under that name goes on with its devices.
std::string FrameWindow::DeviceNameFor(const std::string& file) const {
    return commandLine_.deviceFile.empty() && panel_->HasDeviceFile() ? NameFor(panel_->DeviceFile(), file)
                                                                      : panel_->NamedDevices();
}

bool FrameWindow::MayUseDevices() const {
    return panel_ && !ticking_ && !IsOnlyOperated() && (editing_ || !panel_->HasLock());
}

DevicesWindow::Actions FrameWindow::DevicesActions() {
    return {.look =
                [this] {
                    DevicesWindow::Panel panel;
                    if (panel_) {
                        const bool isGiven = !commandLine_.deviceFile.empty();
                        panel.root = panel_->Root();
                        panel.file = panel_->DeviceFile();
                        panel.proposed = Beside(file_);
                        panel.isNamed = !panel_->NamedDevices().empty();
                        panel.shown = WithoutFolder(panel.file, FolderOf(file_)) +
                                      (isGiven         ? "   (given at the start)"
                                       : panel.isNamed ? "   (named in the panel)"
                                                       : "   (beside the panel)");
                        panel.mayChoose = !isGiven && editing_;
                    }
                    return panel;
                },
            .use =
                [this](const std::string& file) {
                    return UseDevices(commandLine_.deviceFile.empty() ? NameFor(file, file_)
                                                                      : panel_->NamedDevices(),
                                      file);
                },
            .useBeside = [this] { return UseDevices("", DeviceFileFor(file_, "")); }};
}

bool FrameWindow::UseDevices(const std::string& name, const std::string& file) {
    if (!MayUseDevices()) {
        MessageBeep(MB_OK);
        return false;
    }
    if (name != panel_->NamedDevices()) {
        PanelEdits& edits = panel_->Edit().Edits();
        edits.Apply("Device File", {{edits.Root(), "devices=" + name}});
    }
    LoadDevices(file);
    Refresh();
    properties_.Update();
    return true;
}

void FrameWindow::LoadDevices(const std::string& file) {
    panel_->ReloadDevices(file);
    ShowNotice();
    devices_.Follow(false);
}

// Undo and the properties of the panel can name another file, too.
void FrameWindow::FollowDevices() {
    if (!ticking_ && panel_->HasOtherNamedDevices() && commandLine_.deviceFile.empty()) {
        LoadDevices(DeviceFileFor(file_, panel_->NamedDevices()));
    }
}
