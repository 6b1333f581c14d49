#include "Panel/lists/TraceLog.h"

#include "Panelhost/HostInterface.h"
#include "Panelhost/Trace.h"

#include <algorithm>
#include <iterator>

namespace {

// One display line: without line end, control characters as blanks.
std::string DisplayText(const char* text) {
    std::string line = text;
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) {
        line.pop_back();
    }
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return line;
}

} // namespace

TraceLog::TraceLog() {
    ph_SetTraceSink(Sink, this);
}

TraceLog::~TraceLog() {
    ph_SetTraceSink(nullptr, nullptr);
}

void __cdecl TraceLog::Sink(int kind, const char* text, void* context) noexcept {
    try {
        static_cast<TraceLog*>(context)->Add(kind, text);
    } catch (...) {
        return; // out of memory: the line is lost, whoever traced goes on
    }
}

void TraceLog::Add(int kind, const char* text) {
    if (!text) {
        return;
    }
    TraceLine line;
    GetLocalTime(&line.time);
    line.kind = kind;
    line.text = DisplayText(text);

    const std::lock_guard locked(lock_);
    added_.push_back(std::move(line));
    if (added_.size() > CAPACITY) {
        added_.pop_front();
    }
    if (kind == TRACE_EDIT) {
        ++messages_;
    }
}

TraceLog::Change TraceLog::Collect() {
    std::deque<TraceLine> added;
    {
        const std::lock_guard locked(lock_);
        added.swap(added_);
    }
    Change change;
    change.added = added.size();
    std::move(added.begin(), added.end(), std::back_inserter(lines_));
    if (lines_.size() > CAPACITY) {
        change.dropped = lines_.size() - CAPACITY;
        lines_.erase(lines_.begin(), lines_.begin() + static_cast<std::ptrdiff_t>(change.dropped));
    }
    return change;
}

void TraceLog::Clear() {
    Collect();
    lines_.clear();
    SetMessageCount(0);
}

int TraceLog::MessageCount() const {
    const std::lock_guard locked(lock_);
    return messages_;
}

void TraceLog::SetMessageCount(int count) {
    const std::lock_guard locked(lock_);
    messages_ = count;
}
