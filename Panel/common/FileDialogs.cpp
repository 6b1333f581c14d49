#include "Panel/common/FileDialogs.h"

#include "Panel/common/Paths.h"
#include "base/FileNames.h"

#include <commdlg.h>

namespace {

using Dialog = BOOL(WINAPI*)(OPENFILENAMEW*);

struct Kind {
    const wchar_t* filter;
    const wchar_t* extension;
};
constexpr Kind PANEL{L"Panel files (*.panel)\0*.panel\0All files (*.*)\0*.*\0", L"panel"};
constexpr Kind DEVICES{L"Device files (*.devices)\0*.devices\0All files (*.*)\0*.*\0", L"devices"};
constexpr Kind LIST{L"Text (*.txt)\0*.txt\0Comma-separated values (*.csv)\0*.csv\0All files (*.*)\0*.*\0",
                    L"txt"};
constexpr Kind PICTURE{L"Pictures (*.png)\0*.png\0All files (*.*)\0*.*\0", L"png"};
constexpr Kind PAGE{L"Web pages (*.html)\0*.html\0All files (*.*)\0*.*\0", L"html"};

std::string AskFile(HWND owner, const std::string& proposed, DWORD flags, Dialog dialog,
                    const Kind& kind = PANEL) {
    wchar_t file[MAX_PATH] = L"";
    if (const std::wstring name = FullFileName(WideFileName(proposed)); name.size() < MAX_PATH) {
        name.copy(file, name.size());
    }
    OPENFILENAMEW question{};
    question.lStructSize = sizeof question;
    question.hwndOwner = owner;
    question.lpstrFilter = kind.filter;
    question.lpstrFile = file;
    question.nMaxFile = MAX_PATH;
    question.lpstrDefExt = kind.extension;
    // Names on the command line and in panels must keep their meaning.
    question.Flags = flags | OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST;
    if (!dialog(&question)) {
        return "";
    }
    const auto name = NarrowFileName(file);
    if (!name) {
        MessageBoxW(owner, (std::wstring(file) + L": " + WideFileName(NO_NARROW_NAME)).c_str(), L"Panel",
                    MB_OK | MB_ICONWARNING);
    }
    return name.value_or("");
}

} // namespace

std::string AskFileToOpen(HWND owner) {
    return AskFile(owner, "", OFN_FILEMUSTEXIST, GetOpenFileNameW);
}

std::string AskFileToSave(HWND owner, const std::string& proposed) {
    return AskFile(owner, proposed, OFN_OVERWRITEPROMPT, GetSaveFileNameW);
}

std::string AskDeviceFileToOpen(HWND owner, const std::string& proposed) {
    return AskFile(owner, proposed, OFN_FILEMUSTEXIST, GetOpenFileNameW, DEVICES);
}

std::string AskDeviceFileToSave(HWND owner, const std::string& proposed) {
    return AskFile(owner, proposed, OFN_OVERWRITEPROMPT, GetSaveFileNameW, DEVICES);
}

std::string AskFileToExport(HWND owner, const std::string& proposed, ExportKind kind) {
    return AskFile(owner, proposed, OFN_OVERWRITEPROMPT, GetSaveFileNameW,
                   kind == ExportKind::Picture ? PICTURE
                   : kind == ExportKind::Page  ? PAGE
                                               : LIST);
}
