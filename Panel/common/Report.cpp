#include "Panel/common/Report.h"

#include <cctype>

namespace {

constexpr char CAPTION[] = "Panel";

bool Write(HANDLE file, const std::string& text) {
    DWORD written = 0;
    return WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) &&
           written == text.size();
}

// A text that stands on its own begins with a capital letter.
void ShowMessage(HWND owner, std::string text, UINT icon) {
    if (!text.empty()) {
        text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    }
    MessageBoxA(owner, text.c_str(), CAPTION, MB_OK | icon);
}

} // namespace

bool WriteStandard(DWORD handle, const std::string& text) {
    const HANDLE inherited = GetStdHandle(handle);
    if (inherited && inherited != INVALID_HANDLE_VALUE && Write(inherited, text)) {
        return true;
    }
    // A program with windows has no console of its own; the one it was started from may be borrowed.
    AttachConsole(ATTACH_PARENT_PROCESS);
    const HANDLE console = CreateFileA("CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_WRITE, nullptr,
                                       OPEN_EXISTING, 0, nullptr);
    if (console == INVALID_HANDLE_VALUE) {
        return false;
    }
    const bool written = Write(console, text);
    CloseHandle(console);
    return written;
}

void Reporter::Fail(const std::string& text) const {
    if (!WriteStandard(STD_ERROR_HANDLE, "Panel: " + text + "\r\n") && !unattended_) {
        ShowMessage(nullptr, text, MB_ICONERROR);
    }
}

void Reporter::Warn(HWND owner, const std::string& text) const {
    if (unattended_) {
        WriteStandard(STD_ERROR_HANDLE, "Panel: " + text + "\r\n");
    } else {
        ShowMessage(owner, text, MB_ICONWARNING);
    }
}

int Reporter::Ask(HWND owner, const std::string& question) const {
    return unattended_ ? IDNO
                       : MessageBoxA(owner, question.c_str(), CAPTION, MB_YESNOCANCEL | MB_ICONQUESTION);
}
