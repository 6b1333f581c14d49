// What the frame writes about its panel beside the panel file: pictures and lists.
#include "Panel/common/FileDialogs.h"
#include "Panel/FrameWindow.h"
#include "Panel/Screenshot.h"
#include "Panel/common/Paths.h"
#include "Panel/export/ControlList.h"
#include "Panel/export/PanelPicture.h"
#include "Panel/resource.h"

void FrameWindow::Export(int command) {
    const bool isPicture = command == CMD_EXPORT_PICTURE;
    const std::string proposed = file_.empty() ? "" : WithExtension(file_, isPicture ? ".png" : ".html");
    const std::string file =
        AskFileToExport(Handle(), proposed, isPicture ? ExportKind::Picture : ExportKind::Page);
    if (!file.empty() && !(isPicture ? ExportPicture(file) : ExportList(file))) {
        reporter_.Warn(Handle(), "cannot write " + file);
    }
}

bool FrameWindow::ExportPicture(const std::string& file) const {
    return SavePanelPicture(panel_->Handle(), panel_->Size(), file);
}

bool FrameWindow::ExportList(const std::string& file) const {
    const std::string title = panel_->Title();
    return SaveControlList(panel_->Edit().Edits().Root(),
                           {title.empty() ? DocumentName() : title, file_, LocalTimeText()}, file);
}

// What the command line asks for. The exit code.
int FrameWindow::WriteFiles() const {
    int exitCode = EXIT_DONE;
    const auto check = [&](bool isWritten, const char* what, const std::string& file) {
        if (!isWritten) {
            reporter_.Fail(std::string("cannot write the ") + what + " " + file);
            exitCode = EXIT_NOT_DONE;
        }
    };
    if (const std::string& file = commandLine_.screenshotFile; !file.empty()) {
        check(SaveScreenshot(Handle(), file), "picture", file);
    }
    if (const std::string& file = commandLine_.pictureFile; !file.empty()) {
        check(ExportPicture(file), "picture", file);
    }
    if (const std::string& file = commandLine_.listFile; !file.empty()) {
        check(ExportList(file), "list", file);
    }
    return exitCode;
}
