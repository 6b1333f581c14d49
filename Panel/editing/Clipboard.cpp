#include "Panel/editing/Clipboard.h"

#include <cstring>

namespace {

UINT Format() {
    static const UINT format = RegisterClipboardFormatA("OSMIR Panel Components");
    return format;
}

// Open while it lives.
class OpenedClipboard {
public:
    explicit OpenedClipboard(HWND owner) {
        // Another program may be looking at it this very moment.
        for (int attempt = 0; attempt < 10 && !(open_ = OpenClipboard(owner) != 0); ++attempt) {
            Sleep(10);
        }
    }
    ~OpenedClipboard() {
        if (open_) {
            CloseClipboard();
        }
    }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;

    bool IsOpen() const { return open_; }

private:
    bool open_ = false;
};

bool Put(UINT format, const std::string& text) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, text.size() + 1);
    void* target = memory ? GlobalLock(memory) : nullptr;
    if (target) {
        std::memcpy(target, text.data(), text.size());
        GlobalUnlock(memory);
        if (SetClipboardData(format, memory)) {
            return true; // the clipboard owns it now
        }
    }
    GlobalFree(memory);
    return false;
}

std::string Get(UINT format) {
    const HANDLE memory = GetClipboardData(format);
    const auto* held = memory ? static_cast<const char*>(GlobalLock(memory)) : nullptr;
    if (!held) {
        return {};
    }
    // Whoever put it there need not have ended it. A damaged line of ours can hold a NUL.
    std::string text(held, format == Format() ? GlobalSize(memory) : strnlen(held, GlobalSize(memory)));
    text.erase(text.find_last_not_of('\0') + 1);
    GlobalUnlock(memory);
    return text;
}

} // namespace

bool CopyComponents(HWND owner, const std::string& text) {
    const OpenedClipboard clipboard(owner);
    if (!clipboard.IsOpen() || !EmptyClipboard()) {
        return false;
    }
    const bool put = Put(Format(), text);
    return Put(CF_TEXT, text) && put;
}

std::string ComponentsOnClipboard(HWND owner) {
    const OpenedClipboard clipboard(owner);
    if (!clipboard.IsOpen()) {
        return {};
    }
    return Get(IsClipboardFormatAvailable(Format()) ? Format() : CF_TEXT);
}

bool AreComponentsOnClipboard() {
    return IsClipboardFormatAvailable(Format()) || IsClipboardFormatAvailable(CF_TEXT);
}
