#include "base/Clipboard.h"

#include <algorithm>
#include <cstring>

Clipboard::Clipboard(HWND owner) {
    constexpr int ATTEMPTS = 10;
    constexpr DWORD PAUSE = 10; // milliseconds
    for (int attempt = 0; attempt < ATTEMPTS && !isOpen_; ++attempt) {
        Sleep(attempt == 0 ? 0 : PAUSE);
        isOpen_ = OpenClipboard(owner) != 0;
    }
}

Clipboard::~Clipboard() {
    if (isOpen_) {
        CloseClipboard();
    }
}

bool Clipboard::Empty() const {
    return isOpen_ && EmptyClipboard() != 0;
}

bool Clipboard::Put(UINT format, const void* bytes, std::size_t size, std::size_t blockSize) const {
    if (!isOpen_ || format == 0) {
        return false;
    }
    const HGLOBAL block =
        GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, std::max({size, blockSize, std::size_t{1}}));
    if (block == nullptr) {
        return false;
    }
    if (void* target = GlobalLock(block); target != nullptr) {
        std::memcpy(target, bytes, size);
        GlobalUnlock(block);
        if (SetClipboardData(format, block) != nullptr) {
            return true; // the block is the system's now
        }
    }
    GlobalFree(block);
    return false;
}

std::optional<std::string> Clipboard::Get(UINT format) const {
    const HANDLE block = isOpen_ && format != 0 ? GetClipboardData(format) : nullptr;
    const auto* bytes = block == nullptr ? nullptr : static_cast<const char*>(GlobalLock(block));
    if (bytes == nullptr) {
        return std::nullopt;
    }
    std::string copy(bytes, GlobalSize(block));
    GlobalUnlock(block);
    return copy;
}

std::string Clipboard::GetText() const {
    std::string text = Get(CF_TEXT).value_or("");
    text.resize(std::min(text.find('\0'), text.size()));
    return text;
}
