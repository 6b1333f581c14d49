#include "Controls/framework/ValueClipboard.h"

#include <cstring>

namespace {

// Another program can hold the clipboard for a moment.
class OpenedClipboard {
public:
    explicit OpenedClipboard(HWND owner) {
        constexpr int ATTEMPTS = 5;
        constexpr DWORD PAUSE = 10; // milliseconds
        for (int attempt = 0; attempt < ATTEMPTS && !isOpen_; ++attempt) {
            Sleep(attempt == 0 ? 0 : PAUSE);
            isOpen_ = OpenClipboard(owner) != 0;
        }
    }
    ~OpenedClipboard() {
        if (isOpen_) {
            CloseClipboard();
        }
    }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
    explicit operator bool() const { return isOpen_; }

private:
    bool isOpen_ = false;
};

} // namespace

bool CopyValue(HWND owner, UINT format, const void* value, std::size_t size, std::size_t blockSize) {
    const OpenedClipboard clipboard(owner);
    if (format == 0 || !clipboard) {
        return false;
    }
    EmptyClipboard();
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_SHARE, blockSize);
    if (block == nullptr) {
        return false;
    }
    if (void* bytes = GlobalLock(block); bytes != nullptr) {
        std::memcpy(bytes, value, size);
        GlobalUnlock(block);
        if (SetClipboardData(format, block) != nullptr) {
            return true; // the block is the system's now
        }
    }
    GlobalFree(block);
    return false;
}

bool PasteValue(HWND owner, UINT format, void* value, std::size_t size) {
    const OpenedClipboard clipboard(owner);
    const HANDLE block = format != 0 && clipboard ? GetClipboardData(format) : nullptr;
    if (block == nullptr || GlobalSize(block) < size) {
        return false;
    }
    const void* bytes = GlobalLock(block);
    if (bytes == nullptr) {
        return false;
    }
    std::memcpy(value, bytes, size);
    GlobalUnlock(block);
    return true;
}

bool HasValueToPaste(UINT format) {
    return format != 0 && IsClipboardFormatAvailable(format) != 0;
}
