// Help of the frame: the page for what the user looks at, and what the program says of itself.
#include "Panel/ControlLibrary.h"
#include "Panel/FrameWindow.h"
#include "Panel/common/VersionText.h"
#include "Panel/help/HelpPages.h"
#include "Panelhost/Editing.h"
#include "Panelhost/Hostinfo.h"

namespace {

std::string PageOf(const HOSTINFO& object) {
    char className[64] = "";
    GetClassNameA(object.window, className, sizeof className);
    return object.kind == KIND_ROOT ? PAGE_PANEL_PROPERTIES : HelpPageOfClass(className);
}

} // namespace

std::string FrameWindow::HelpPageFor(HWND window) const {
    if (std::string page = HelpPageOfWindow(window); !page.empty()) {
        return page;
    }
    if (!panel_) {
        return PAGE_GUIDE;
    }
    const std::list<HOSTINFO*> objects = a_ListHostinfos(panel_->Root());
    for (const HOSTINFO* object : objects) {
        if (object->dialog && (object->dialog == window || IsChild(object->dialog, window))) {
            return PageOf(*object);
        }
    }
    if (const CatalogueEntry* entry = palette_.Pointed(); entry && IsChild(palette_.Handle(), window)) {
        return HelpPageOfClass(entry->className);
    }
    const std::vector<HOSTINFO*>& selected = panel_->Edit().Selected();
    return editing_ && !selected.empty() ? PageOf(*selected.front()) : PAGE_GUIDE;
}

void FrameWindow::ShowHelp(HWND window) {
    OpenHelp(HelpPageFor(window));
}

void FrameWindow::OpenHelp(const std::string& page) {
    if (IsOnlyOperated() || helping_) {
        return; // or F1 in the message about the page before
    }
    if (const std::string fault = OpenHelpPage(page); !fault.empty()) {
        helping_ = true;
        reporter_.Warn(Handle(), fault);
        helping_ = false;
    }
}

void FrameWindow::About() {
    std::string text = "Panel " + VersionText() + "\n\nOpens, operates and saves control panels.";
    const std::string stamp = library_.BuildStamp();
    if (!stamp.empty()) {
        text += "\n\nControl library: " + stamp;
    }
    MessageBoxA(Handle(), text.c_str(), "About Panel", MB_OK | MB_ICONINFORMATION);
}
