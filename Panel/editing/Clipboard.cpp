#include "Panel/editing/Clipboard.h"

#include "base/Clipboard.h"

namespace {

UINT Format() {
    static const UINT format = RegisterClipboardFormatA("OSMIR Panel Components");
    return format;
}

} // namespace

bool CopyComponents(HWND owner, const std::string& text) {
    const Clipboard clipboard(owner);
    if (!clipboard.Empty()) {
        return false;
    }
    const bool put = clipboard.Put(Format(), text.c_str(), text.size() + 1);
    return clipboard.PutText(text) && put;
}

std::string ComponentsOnClipboard(HWND owner) {
    const Clipboard clipboard(owner);
    if (!IsClipboardFormatAvailable(Format())) {
        return clipboard.GetText();
    }
    // A damaged line of ours can hold a NUL.
    std::string text = clipboard.Get(Format()).value_or("");
    text.erase(text.find_last_not_of('\0') + 1);
    return text;
}

bool AreComponentsOnClipboard() {
    return IsClipboardFormatAvailable(Format()) || IsClipboardFormatAvailable(CF_TEXT);
}
