#pragma once

#include "base/Guard.h"
#include "base/Handles.h"
#include "base/SharedLock.h"

#include <windows.h>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

// What the worker threads of controls need: events, an end that keeps nobody waiting, and calls on the thread
// of the control's window.
//
// A worker may hang in a call of the system: on a drive that has stalled, in a driver. So it owns all that it
// uses, keeps this library loaded until it ends, and reaches its control only through something that is cut
// off when the control goes. It is then given a moment and otherwise left to end by itself.

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

// Milliseconds that the thread of the windows waits for a worker at most.
constexpr DWORD PATIENCE_AT_END = 250;

// Is told what an exception said that ended a worker of this library, on the worker's thread.
using WorkerFailureListener = void (*)(const char* what);
void TellWorkerFailures(WorkerFailureListener listener);

// Starts a thread for an action, which must own what it uses. An exception that leaves the action ends it and
// is told. Null when there is no thread to be had.
Handle StartThread(std::function<void()> action, DWORD exitCode = 0);

// Waits up to PATIENCE_AT_END for the end of a thread; whether it has come. Messages that other threads send
// are dispatched meanwhile, so that the thread may be in the middle of sending one. They may destroy
// anything.
bool AwaitEnd(HANDLE thread);

// Runs an action on a thread of its own that nobody waits for. False when there is no thread to be had.
inline bool RunAside(std::function<void()> action) {
    return StartThread(std::move(action)) != nullptr;
}

// The same, but the action is given the time that AwaitEnd gives: what follows usually finds it done. Without
// a thread to be had it is done at once.
template <class Action>
void RunAsideAndAwait(Action action) {
    if (const auto thread = Guarded<Handle>(nullptr, [&action] { return StartThread(action); })) {
        AwaitEnd(thread.get());
    } else {
        action();
    }
}

// Work that a control has done by a thread of its own: its Run is carried out by that thread and comes to its
// end soon after Stop, which waits for nothing. The work lives as long as the thread or the control needs it.
template <class Work>
class Worker {
public:
    template <class... Arguments>
    explicit Worker(Arguments&&... arguments)
        : work_(std::make_shared<Work>(std::forward<Arguments>(arguments)...)) {}
    ~Worker() { End(); }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    // A thread started before has to be at its end. False when there is no thread to be had.
    bool Start(DWORD exitCode) {
        thread_ = Guarded<Handle>(
            nullptr, [this, exitCode] { return StartThread([work = work_] { work->Run(); }, exitCode); });
        return thread_ != nullptr;
    }
    // Stops the work and waits as AwaitEnd does.
    void End() {
        work_->Stop();
        if (const Handle thread = std::move(thread_)) { // what is sent meanwhile finds none
            AwaitEnd(thread.get());
        }
    }
    Work* operator->() const { return work_.get(); }

private:
    const std::shared_ptr<Work> work_;
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

    SharedLock lock_;
    Action pending_;
    bool isClosed_ = false;
    const std::shared_ptr<const Event> done_ = std::make_shared<const Event>(Event::AutoReset);
};
