#include "Panel/FileDialogs.h"

#include <commdlg.h>

namespace {

using Dialog = BOOL(WINAPI*)(OPENFILENAMEA*);

std::string AskFile(HWND owner, const std::string& proposed, DWORD flags, Dialog dialog) {
    char file[MAX_PATH] = "";
    if (proposed.size() < sizeof file) {
        proposed.copy(file, proposed.size());
    }
    OPENFILENAMEA question{};
    question.lStructSize = sizeof question;
    question.hwndOwner = owner;
    question.lpstrFilter = "Panel files (*.panel)\0*.panel\0All files (*.*)\0*.*\0";
    question.lpstrFile = file;
    question.nMaxFile = sizeof file;
    question.lpstrDefExt = "panel";
    // Names on the command line and in panels must keep their meaning.
    question.Flags = flags | OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST;
    return dialog(&question) ? file : "";
}

} // namespace

std::string AskFileToOpen(HWND owner) {
    return AskFile(owner, "", OFN_FILEMUSTEXIST, GetOpenFileNameA);
}

std::string AskFileToSave(HWND owner, const std::string& proposed) {
    return AskFile(owner, proposed, OFN_OVERWRITEPROMPT, GetSaveFileNameA);
}
