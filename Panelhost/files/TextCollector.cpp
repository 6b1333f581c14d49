#include "Panelhost/files/TextCollector.h"

#include "Panelhost/files/PanelSaving.h"

#include <new>
#include <utility>

namespace {

constexpr DWORD PIPE_SIZE = 65536;
constexpr DWORD DRAIN_PERIOD = 10; // milliseconds that a control waits at most when the pipe is full

} // namespace

thread_local TextCollector* TextCollector::current_ = nullptr;

TextCollector::TextCollector() : outer_(current_) {
    if (!CreatePipe(&read_, &write_, nullptr, PIPE_SIZE)) {
        read_ = write_ = nullptr;
    } else if (!CreateTimerQueueTimer(&timer_, nullptr, OnTimer, this, DRAIN_PERIOD, DRAIN_PERIOD,
                                      WT_EXECUTEDEFAULT)) {
        timer_ = nullptr;
    }
    current_ = this;
}

TextCollector::~TextCollector() {
    current_ = outer_;
    if (timer_ != nullptr) {
        DeleteTimerQueueTimer(nullptr, timer_, INVALID_HANDLE_VALUE); // it may be at work
    }
    if (read_ != nullptr) {
        CloseHandle(read_);
        CloseHandle(write_);
    }
}

std::optional<std::string> TextCollector::TextOf(HOSTINFO& object) {
    if (timer_ == nullptr) {
        return std::nullopt; // a control that writes much would wait for ever
    }
    {
        const SharedLock::Writing writing(lock_);
        text_.clear();
        failed_ = false;
    }
    const bool whole = PanelSaving::WriteObject(object, write_) == ERROR_SUCCESS;
    const SharedLock::Writing writing(lock_);
    Drain();
    if (!whole || failed_) {
        return std::nullopt;
    }
    return std::exchange(text_, {});
}

std::optional<bool> TextCollector::Append(HANDLE file, const char* text, std::size_t length) {
    TextCollector* collector = current_;
    while (collector != nullptr && (collector->write_ != file || file == nullptr)) {
        collector = collector->outer_;
    }
    if (collector == nullptr) {
        return std::nullopt;
    }
    const SharedLock::Writing writing(collector->lock_);
    collector->Drain(); // what the control wrote by itself stands before this
    collector->Add(text, length);
    return !collector->failed_;
}

void TextCollector::OnTimer(void* collector, BOOLEAN) noexcept {
    auto* self = static_cast<TextCollector*>(collector);
    const SharedLock::Writing writing(self->lock_);
    self->Drain();
}

// Also after a failure: whoever writes must not be left waiting.
void TextCollector::Drain() {
    char block[16384];
    DWORD length = 0;
    while (PeekNamedPipe(read_, nullptr, 0, nullptr, &length, nullptr) && length > 0) {
        if (!ReadFile(read_, block, sizeof block, &length, nullptr)) {
            failed_ = true;
            return;
        }
        Add(block, length);
    }
}

void TextCollector::Add(const char* text, std::size_t length) {
    try {
        text_.append(text, length);
    } catch (const std::bad_alloc&) {
        failed_ = true;
    }
}
