#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

// What the worker threads of controls need: events, an end that never deadlocks, and calls on the thread of
// the control's window.

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>; // null for none

class Event {
public:
    enum Kind { ManualReset, AutoReset };

    explicit Event(Kind kind) : handle_(CreateEventA(nullptr, kind == ManualReset, FALSE, nullptr)) {}

    HANDLE Get() const { return handle_.get(); }
    void Set() const { SetEvent(Get()); }
    void Reset() const { ResetEvent(Get()); }
    bool IsSet() const { return WaitForSingleObject(Get(), 0) == WAIT_OBJECT_0; }

private:
    Handle handle_;
};

// Waits without limit for the end of a thread. Messages that other threads send are dispatched meanwhile, so
// that the thread may be in the middle of sending one.
void WaitForThread(HANDLE thread);

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
    // Waits for the end as WaitForThread does.
    void Join();

private:
    Handle thread_;
};

// Lets a worker thread have something done by the thread of a control's window, and only as long as the
// control lives. Nothing of it waits for the user-interface thread beyond the stop event, so a control can be
// destroyed by the very call that its worker waits for.
class WorkerCalls {
public:
    // To the control's window: its procedure calls Serve. Harmless without a pending call.
    static constexpr UINT MESSAGE = WM_USER + 1;

    // On the worker thread, one call at a time. True when the action was carried out, false when the stop
    // event was signalled first, when the calls are closed or when the window is gone. The action may still
    // be going on then, so it must own what it uses.
    bool Run(HWND window, HANDLE stop, std::function<void()> action);
    // The same for an action with a result; nothing in place of false.
    template <class Action>
    auto Ask(HWND window, HANDLE stop, Action action) -> std::optional<decltype(action())> {
        const auto result = std::make_shared<decltype(action())>(); // may be written after this call
        return Run(window, stop, [result, action = std::move(action)] { *result = action(); })
                   ? std::optional(*result)
                   : std::nullopt;
    }
    // On the window's thread.
    void Serve();
    // From now on nothing is carried out any more.
    void Close();

private:
    using Action = std::function<void()>;

    std::mutex lock_;
    Action pending_;
    bool isClosed_ = false;
    const std::shared_ptr<const Event> done_ = std::make_shared<const Event>(Event::AutoReset);
};

// Runs an action on a thread of its own that nobody waits for and that keeps the library loaded until it
// ends: for system calls that may block long and cannot be cut short. The action must own what it uses. False
// when there is no thread to be had.
bool RunAside(std::function<void()> action);
