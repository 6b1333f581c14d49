#include "Controls/framework/WorkerThread.h"

#include <process.h>

bool WorkerThread::Start(Body body, void* argument) {
    if (thread_ != nullptr) {
        WaitForSingleObject(thread_.get(), INFINITE);
    }
    thread_.reset(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, body, argument, 0, nullptr)));
    return thread_ != nullptr;
}

void WorkerThread::Join() {
    const Handle thread = std::move(thread_); // what is sent meanwhile finds none
    if (thread == nullptr) {
        return;
    }
    const HANDLE handle = thread.get();
    while (MsgWaitForMultipleObjects(1, &handle, FALSE, INFINITE, QS_SENDMESSAGE) == WAIT_OBJECT_0 + 1) {
        MSG message; // none is taken: looking is what handles those that were sent
        PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    }
}
