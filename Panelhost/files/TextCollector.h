#pragma once

#include "base/SharedLock.h"

#include <optional>
#include <string>
#include <windows.h>

class HOSTINFO;

// Keeps in memory what objects write when they save themselves. The handle that they get is that of a pipe.
// What comes through a_WriteText does not go through it; whatever a control writes by other means is read
// from it, while the control writes as well, so that no text is too long for it.
class TextCollector {
public:
    TextCollector();
    ~TextCollector();
    TextCollector(const TextCollector&) = delete;
    TextCollector& operator=(const TextCollector&) = delete;

    // The lines of one object as a panel file would hold them; nothing when they could not be had whole.
    std::optional<std::string> TextOf(HOSTINFO& object);

    // Takes what is written to the handle of a collector of this thread. Nothing for any other handle;
    // otherwise whether there was room for the text.
    static std::optional<bool> Append(HANDLE file, const char* text, std::size_t length);

private:
    static void CALLBACK OnTimer(void* collector, BOOLEAN) noexcept;
    void Drain();
    void Add(const char* text, std::size_t length);

    HANDLE read_ = nullptr;
    HANDLE write_ = nullptr;
    HANDLE timer_ = nullptr;
    SharedLock lock_; // guards what follows
    std::string text_;
    bool failed_ = false;

    TextCollector* outer_; // in use on this thread when this one was made
    static thread_local TextCollector* current_;
};
