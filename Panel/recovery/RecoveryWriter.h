#pragma once

#include "Panel/recovery/RecoveryFile.h"

#include <memory>
#include <string>
#include <thread>

// Writes and removes the copy on a thread of its own, which owns all that it uses: a disk that does not
// answer holds up neither the panel nor the end of the program.
class RecoveryWriter {
public:
    explicit RecoveryWriter(std::wstring folder);
    ~RecoveryWriter(); // as Finish
    RecoveryWriter(const RecoveryWriter&) = delete;
    RecoveryWriter& operator=(const RecoveryWriter&) = delete;

    // Goes on with a copy that was left behind. Before anything is written.
    void Adopt(RecoveryFile file);
    void Write(std::string text);
    void Remove();
    bool IsBusy() const;
    // Why something could not be written since this was asked last: the system's error code, 0 when all was.
    DWORD TakeFailure();
    // Waits until all is done, for a limited time.
    void Finish();

private:
    struct State;
    static void Run(const std::shared_ptr<State>& state) noexcept;
    void Order(bool remove, std::string text);

    std::shared_ptr<State> state_;
    std::thread thread_; // from the first order on
};
