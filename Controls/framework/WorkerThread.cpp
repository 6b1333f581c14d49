#include "Controls/framework/WorkerThread.h"

#include "Panelhost/Trace.h"

#include <process.h>

#include <exception>

void WaitForThread(HANDLE thread) {
    while (MsgWaitForMultipleObjects(1, &thread, FALSE, INFINITE, QS_SENDMESSAGE) == WAIT_OBJECT_0 + 1) {
        MSG message; // none is taken; looking dispatches what was sent
        PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    }
}

bool WorkerThread::Start(Body body, void* argument) {
    if (thread_ != nullptr) {
        WaitForSingleObject(thread_.get(), INFINITE);
    }
    thread_.reset(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, body, argument, 0, nullptr)));
    return thread_ != nullptr;
}

void WorkerThread::Join() {
    const Handle thread = std::move(thread_); // what is sent meanwhile finds none
    if (thread != nullptr) {
        WaitForThread(thread.get());
    }
}

bool WorkerCalls::Run(HWND window, HANDLE stop, std::function<void()> action) {
    {
        const std::lock_guard guard(lock_);
        if (isClosed_) {
            return false;
        }
        pending_ = std::move(action);
    }
    // Sent, so that it also arrives while the thread waits for sent messages alone, but without waiting for
    // it.
    if (!SendNotifyMessageA(window, MESSAGE, 0, 0)) {
        const std::lock_guard guard(lock_);
        pending_ = nullptr;
        return false;
    }
    const HANDLE handles[] = {done_->Get(), stop};
    return WaitForMultipleObjects(2, handles, FALSE, INFINITE) == WAIT_OBJECT_0;
}

void WorkerCalls::Serve() {
    Action action;
    {
        const std::lock_guard guard(lock_);
        if (!isClosed_) {
            action = std::exchange(pending_, nullptr);
        }
    }
    if (action == nullptr) {
        return;
    }
    // The action may end with this object destroyed.
    const struct Signal {
        ~Signal() { done->Set(); }
        std::shared_ptr<const Event> done;
    } signal{done_};
    action();
}

void WorkerCalls::Close() {
    const std::lock_guard guard(lock_);
    isClosed_ = true;
    pending_ = nullptr;
}

namespace {

struct AsideTask {
    std::function<void()> action;
    HMODULE library;
};

void RunTask(const AsideTask& task) {
    try {
        task.action();
    } catch (const std::exception& failure) {
        TRACE("A task failed: %s\n", failure.what());
    }
}

DWORD WINAPI AsideThread(void* parameter) {
    auto* task = static_cast<AsideTask*>(parameter);
    const HMODULE library = task->library;
    RunTask(*task);
    delete task; // by hand: nothing behind the next line is carried out
    FreeLibraryAndExitThread(library, 0);
}

} // namespace

bool RunAside(std::function<void()> action) {
    auto task = std::make_unique<AsideTask>(AsideTask{std::move(action), nullptr});
    if (!GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<const char*>(&RunAside),
                            &task->library)) {
        return false;
    }
    const Handle thread(CreateThread(nullptr, 0, AsideThread, task.get(), 0, nullptr));
    if (thread == nullptr) {
        FreeLibrary(task->library);
        return false;
    }
    task.release();
    return true;
}
