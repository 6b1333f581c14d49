// The trace: one line at a time to the debugger, to a sink and to a log file, from any thread.

#include "Panelhost/Trace.h"

#include "Panelhost/HostInterface.h"
#include "base/Guard.h"
#include "base/SharedLock.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

struct TraceState {
    SharedLock lock;     // held for reading while sink and file are in use
    SharedLock fileLock; // held for writing while a line is appended to the file
    void(__cdecl* sink)(int, const char*, void*) = nullptr;
    void* context = nullptr;
    HANDLE file = INVALID_HANDLE_VALUE;

    static thread_local TraceLocation* location;
    static thread_local bool emitting;

    static TraceState& Get() {
        static TraceState state;
        return state;
    }

    static bool Admits(int kind, const char* format) {
        return location == nullptr || location->Admit(kind, format);
    }

    // "file(line): " of what this thread reads at the moment; returns the number of characters.
    static int Location(char* text, int size) {
        if (location == nullptr) {
            return 0;
        }
        const int length =
            std::snprintf(text, size, "%s(%u): ", location->file_, static_cast<unsigned>(location->line_));
        return length < size ? length : size - 1;
    }

    void Emit(int kind, const char* text) {
        OutputDebugStringA(text);
        if (emitting) { // a sink that traces would call itself for ever
            return;
        }
        emitting = true;
        {
            const SharedLock::Reading reading(lock);
            if (sink != nullptr) {
                sink(kind, text, context);
            }
            if (file != INVALID_HANDLE_VALUE) {
                const SharedLock::Writing writing(fileLock);
                WriteToFile(text);
            }
        }
        emitting = false;
    }

private:
    void WriteToFile(const char* text) const {
        char line[TEXT_AND_LOCATION + 2];
        auto length = std::strlen(text);
        while (length > 0 && (text[length - 1] == '\n' || text[length - 1] == '\r')) {
            --length;
        }
        std::memcpy(line, text, length);
        std::memcpy(line + length, "\r\n", 2);
        DWORD written = 0;
        WriteFile(file, line, static_cast<DWORD>(length + 2), &written, nullptr);
    }

public:
    static constexpr int TEXT_AND_LOCATION =
        5120; // a property line, the words around it and its place in a file
};

thread_local TraceLocation* TraceState::location = nullptr;
thread_local bool TraceState::emitting = false;

TraceLocation::TraceLocation(const char* file) : file_(file), outer_(TraceState::location) {
    TraceState::location = this;
}

TraceLocation::~TraceLocation() {
    TraceState::location = outer_;
    for (const Kind& kind : kinds_) {
        if (kind.count > TRACED_OF_A_KIND) {
            Guarded([&] { TellRest(kind); });
        }
    }
}

bool TraceLocation::Admit(int kind, const char* format) noexcept {
    return Guarded(true, [&] {
        const auto same = std::find_if(kinds_.begin(), kinds_.end(), [&](const Kind& known) {
            return known.kind == kind && known.format == format;
        });
        Kind& known = same != kinds_.end() ? *same : kinds_.emplace_back(Kind{kind, format, 0});
        return ++known.count <= TRACED_OF_A_KIND;
    });
}

// The format without what stands for the differences.
void TraceLocation::TellRest(const Kind& kind) const {
    std::string text;
    bool isConversion = false;
    for (const char c : kind.format) {
        if (c == '%' && !isConversion) {
            isConversion = true;
        } else if (!isConversion) {
            text += c;
        } else if (std::strchr("diouxXeEfgGcsp%", c) != nullptr) {
            isConversion = false;
            text += c == '%' ? "%" : "...";
        }
    }
    char line[TraceState::TEXT_AND_LOCATION];
    std::snprintf(line, sizeof line, "%.500s: %u more: %s", file_, kind.count - TRACED_OF_A_KIND,
                  text.c_str());
    TraceState::Get().Emit(kind.kind, line);
}

void TRACE(const char* format, ...) {
    if (!TraceState::Admits(TRACE_DEBUG, format)) {
        return;
    }
    char text[TraceState::TEXT_AND_LOCATION];
    const int start = TraceState::Location(text, 512);
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text + start, sizeof text - static_cast<unsigned>(start), format, arguments);
    va_end(arguments);
    TraceState::Get().Emit(TRACE_DEBUG, text);
}

int EDITTRACE(const HOSTINFO* target, const char* format, const char* text) {
    if (target == nullptr || format == nullptr || !TraceState::Admits(TRACE_EDIT, format)) {
        return 0;
    }
    char line[TraceState::TEXT_AND_LOCATION];
    const int start = TraceState::Location(line, 512);
    // The one "%s" is put in by hand: the format is data here and must not reach printf.
    const char* place = std::strstr(format, "%s");
    const int before =
        place == nullptr ? static_cast<int>(std::strlen(format)) : static_cast<int>(place - format);
    std::snprintf(line + start, sizeof line - static_cast<unsigned>(start), "%.*s%s%s", before, format,
                  place != nullptr && text != nullptr ? text : "", place != nullptr ? place + 2 : "");
    TraceState::Get().Emit(TRACE_EDIT, line);
    return 0;
}

int a_SetTraceFile(const char* path) {
    HANDLE file = INVALID_HANDLE_VALUE;
    if (path != nullptr) {
        file = CreateFileA(path, FILE_APPEND_DATA, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file == INVALID_HANDLE_VALUE) {
            return 0;
        }
    }
    TraceState& state = TraceState::Get();
    HANDLE previous = INVALID_HANDLE_VALUE;
    {
        const SharedLock::Writing writing(state.lock);
        previous = state.file;
        state.file = file;
    }
    if (previous != INVALID_HANDLE_VALUE) {
        CloseHandle(previous);
    }
    return 1;
}

void ph_SetTraceSink(void(__cdecl* sink)(int kind, const char* text, void* context), void* context) noexcept {
    TraceState& state = TraceState::Get();
    const SharedLock::Writing writing(state.lock);
    state.sink = sink;
    state.context = context;
}
