#include "Panel/recovery/RecoveryWriter.h"

#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <utility>

namespace {

constexpr std::chrono::milliseconds PATIENCE(2000);

} // namespace

struct RecoveryWriter::State {
    std::wstring folder;
    std::optional<RecoveryFile> file; // the thread's, once it runs

    std::mutex lock; // guards what follows
    std::condition_variable changed;
    bool ordered = false; // a later order takes the place of one that waits
    bool remove = false;
    std::string text;
    bool busy = false;
    DWORD error = ERROR_SUCCESS;
    bool stop = false; // when all that was ordered is done
    bool stopped = false;

    DWORD Write(const std::string& contents) {
        if (!file) {
            file = RecoveryFile::Make(folder);
        }
        return file && file->Write(contents) ? ERROR_SUCCESS : GetLastError();
    }
};

RecoveryWriter::RecoveryWriter(std::wstring folder) : state_(std::make_shared<State>()) {
    state_->folder = std::move(folder);
}

RecoveryWriter::~RecoveryWriter() {
    Finish();
}

void RecoveryWriter::Adopt(RecoveryFile file) {
    state_->file = std::move(file);
}

void RecoveryWriter::Write(std::string text) {
    Order(false, std::move(text));
}

void RecoveryWriter::Remove() {
    Order(true, {});
}

void RecoveryWriter::Order(bool remove, std::string text) {
    {
        const std::lock_guard<std::mutex> guard(state_->lock);
        state_->ordered = true;
        state_->busy = true;
        state_->remove = remove;
        state_->text = std::move(text);
    }
    if (!thread_.joinable()) {
        thread_ = std::thread(Run, state_);
    }
    state_->changed.notify_all();
}

bool RecoveryWriter::IsBusy() const {
    const std::lock_guard<std::mutex> guard(state_->lock);
    return state_->busy;
}

DWORD RecoveryWriter::TakeFailure() {
    const std::lock_guard<std::mutex> guard(state_->lock);
    return std::exchange(state_->error, ERROR_SUCCESS);
}

void RecoveryWriter::Finish() {
    if (!thread_.joinable()) {
        return;
    }
    std::unique_lock<std::mutex> guard(state_->lock);
    state_->stop = true;
    state_->changed.notify_all();
    if (state_->changed.wait_for(guard, PATIENCE, [this] { return state_->stopped; })) {
        guard.unlock();
        thread_.join();
    } else {
        thread_.detach();
    }
}

void RecoveryWriter::Run(const std::shared_ptr<State>& state) noexcept {
    std::unique_lock<std::mutex> guard(state->lock);
    for (;;) {
        state->changed.wait(guard, [&] { return state->ordered || state->stop; });
        if (!state->ordered) {
            break;
        }
        state->ordered = false;
        const bool remove = state->remove;
        const std::string text = std::exchange(state->text, {});
        guard.unlock();
        DWORD error = ERROR_SUCCESS;
        try {
            if (!remove) {
                error = state->Write(text);
            } else if (state->file) {
                state->file->Remove();
            }
        } catch (const std::exception&) {
            error = ERROR_NOT_ENOUGH_MEMORY;
        }
        guard.lock();
        state->error = error;
        state->busy = state->ordered;
    }
    state->stopped = true;
    state->changed.notify_all();
}
