#pragma once

#include <windows.h>

#include <cstddef>
#include <deque>
#include <mutex>
#include <string>

struct TraceLine {
    SYSTEMTIME time{};
    int kind = 0; // TRACE_DEBUG or TRACE_EDIT
    std::string text;
};

// The last trace lines of this program. Any thread adds; the user interface collects what was added at its
// own pace, so that a flood costs it no more than a trickle.
class TraceLog {
public:
    static constexpr std::size_t CAPACITY = 5000;

    TraceLog(); // receives every trace line from now on
    ~TraceLog();
    TraceLog(const TraceLog&) = delete;
    TraceLog& operator=(const TraceLog&) = delete;

    // What stands in Lines() from now on includes all that was traced so far. Number of lines that were
    // added, and of those that went to make room.
    struct Change {
        std::size_t added = 0;
        std::size_t dropped = 0;
    };
    Change Collect();
    const std::deque<TraceLine>& Lines() const { return lines_; }
    void Clear();

    // Number of messages for whoever edits the panel (TRACE_EDIT) since it was last set.
    int MessageCount() const;
    void SetMessageCount(int count);

private:
    static void __cdecl Sink(int kind, const char* text, void* context) noexcept;
    void Add(int kind, const char* text);

    std::deque<TraceLine> lines_; // of the user-interface thread
    mutable std::mutex lock_;     // guards what follows
    std::deque<TraceLine> added_;
    int messages_ = 0;
};
