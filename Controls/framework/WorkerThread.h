#pragma once

#include <windows.h>

#include <memory>

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>; // null for none

// A thread that works for one object and is joined before the object goes. It is told to stop by means of its
// own.
class WorkerThread {
public:
    using Body = unsigned(__stdcall*)(void*); // returns the exit code; no exception may leave it

    WorkerThread() = default;
    ~WorkerThread() { Join(); }
    WorkerThread(const WorkerThread&) = delete;
    WorkerThread& operator=(const WorkerThread&) = delete;

    // Joins the thread before it, if there is one, which has to be at its end. False when no thread can be
    // started.
    bool Start(Body body, void* argument);
    // Waits for the end, messages sent by other threads being handled meanwhile: the thread may be inside
    // SendMessage.
    void Join();

private:
    Handle thread_;
};
