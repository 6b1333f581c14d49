#include "base/Threads.h"

#include <atomic>
#include <exception>

namespace {

std::atomic<WorkerFailureListener> failureListener = nullptr;

struct Task {
    std::function<void()> action;
    DWORD exitCode;
    HMODULE library;
};

void Run(const Task& task) {
    try {
        task.action();
    } catch (const std::exception& failure) {
        if (const WorkerFailureListener listener = failureListener; listener != nullptr) {
            listener(failure.what());
        }
    }
}

DWORD WINAPI TaskThread(void* parameter) {
    auto* task = static_cast<Task*>(parameter);
    const HMODULE library = task->library;
    const DWORD exitCode = task->exitCode;
    Run(*task);
    delete task; // by hand: nothing behind the next line is carried out
    FreeLibraryAndExitThread(library, exitCode);
}

} // namespace

void TellWorkerFailures(WorkerFailureListener listener) {
    failureListener = listener;
}

Handle StartThread(std::function<void()> action, DWORD exitCode) {
    auto task = std::make_unique<Task>(Task{std::move(action), exitCode, nullptr});
    if (!GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                            reinterpret_cast<const char*>(&TaskThread), &task->library)) {
        return nullptr;
    }
    Handle thread(CreateThread(nullptr, 0, TaskThread, task.get(), 0, nullptr));
    if (thread == nullptr) {
        FreeLibrary(task->library);
        return nullptr;
    }
    task.release();
    return thread;
}

bool AwaitEnd(HANDLE thread) {
    const ULONGLONG start = GetTickCount64();
    for (ULONGLONG passed = 0; passed <= PATIENCE_AT_END; passed = GetTickCount64() - start) {
        const DWORD left = PATIENCE_AT_END - static_cast<DWORD>(passed);
        const DWORD result = MsgWaitForMultipleObjects(1, &thread, FALSE, left, QS_SENDMESSAGE);
        if (result != WAIT_OBJECT_0 + 1) {
            return result == WAIT_OBJECT_0;
        }
        MSG message; // none is taken; looking dispatches what was sent
        PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    }
    return WaitForSingleObject(thread, 0) == WAIT_OBJECT_0;
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
