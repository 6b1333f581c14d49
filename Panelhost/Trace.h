#pragma once

#include "Panelhost/Api.h"

#include <cstddef>
#include <string>
#include <vector>
#include <windows.h>

class HOSTINFO;

constexpr int TRACE_DEBUG = 0; // kind of a TRACE line
constexpr int TRACE_EDIT = 1;  // kind of an EDITTRACE line

// The debug trace: printf format. Goes to the debugger, the sink and the log file. May be called from any
// thread. While a file is read on the calling thread, "file(line): " is put in front.
PANELHOST_API void TRACE(const char* format, ...) __attribute__((format(gnu_printf, 1, 2)));

// A message for whoever edits the panel; format holds one "%s" for text. Goes where TRACE goes. Without a
// target nothing is traced. Returns 0, so that a handler can end with it.
PANELHOST_API int EDITTRACE(const HOSTINFO* target, const char* format, const char* text);

// Appends every trace line to that file, from now on; null ends it. 1, or 0 when the file cannot be written.
PANELHOST_API int a_SetTraceFile(const char* path);

// Of trace lines that differ only in what was put into their format, so many are traced singly while a file
// is read.
constexpr unsigned TRACED_OF_A_KIND = 20;

// While it lives, trace lines of this thread begin with the file name and the line number last set. Where
// there are too many of a kind, one line says at its end how many more there were.
class PANELHOST_API TraceLocation {
public:
    explicit TraceLocation(const char* file);
    ~TraceLocation();
    TraceLocation(const TraceLocation&) = delete;
    TraceLocation& operator=(const TraceLocation&) = delete;
    void SetLine(std::size_t line) { line_ = line; }

private:
    friend struct TraceState;
    struct Kind {
        int kind = TRACE_DEBUG;
        std::string format;
        unsigned count = 0;
    };
    // Counts a line of that format; whether it is to be traced.
    bool Admit(int kind, const char* format) noexcept;
    void TellRest(const Kind& kind) const;

    const char* file_;
    std::size_t line_ = 0;
    TraceLocation* outer_;
    std::vector<Kind> kinds_;
};
