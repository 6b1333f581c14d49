#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>

// The clipboard, open while this lives. Another program can hold it for a moment, which is waited for.
class Clipboard {
public:
    explicit Clipboard(HWND owner);
    ~Clipboard();
    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;

    // False while another program holds the clipboard; then there is nothing to get and nothing can be put.
    bool IsOpen() const { return isOpen_; }

    // Takes away what is there. False when it cannot be done.
    bool Empty() const;
    // Adds the bytes in that format, in a block of at least that size, the rest of which is zero. False when
    // they cannot be had there.
    bool Put(UINT format, const void* bytes, std::size_t size, std::size_t blockSize = 0) const;
    bool PutText(const std::string& text) const { return Put(CF_TEXT, text.c_str(), text.size() + 1); }
    // The whole block of that format; nothing when there is none.
    std::optional<std::string> Get(UINT format) const;
    // Its plain text up to the NUL, which whoever put it there may have forgotten.
    std::string GetText() const;

private:
    bool isOpen_ = false;
};
