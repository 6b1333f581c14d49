#pragma once

#include "base/Threads.h"

#include <atomic>
#include <optional>
#include <string_view>

// One transfer at a time between a port and memory that stays where it is until the transfer is over.
class Transfer {
public:
    Transfer() { event_.Set(); }
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    bool IsMade() const { return event_.Get() != nullptr; }
    HANDLE Event() const { return event_.Get(); } // signalled at the end of each transfer
    bool IsPending() const { return isPending_; }
    // After it was cancelled and the port closed: waits until the system lets go of the memory.
    void Await() const;

private:
    friend class ModemPort;

    const ::Event event_{::Event::ManualReset};
    OVERLAPPED request_{};
    bool isPending_ = false;
};

// The port of a data call, opened for overlapped transfers. It belongs to one thread: any call may take as
// long as its driver likes.
class ModemPort {
public:
    explicit ModemPort(Handle port) : port_(std::move(port)), name_(port_.get()) {}
    ModemPort(const ModemPort&) = delete;
    ModemPort& operator=(const ModemPort&) = delete;

    // Has reads end after a gap in what is received, and errors of the line end nothing. A port that has no
    // such settings is used as it is.
    void Configure();
    // Begin a transfer, which must not be pending. Without success it is not pending afterwards, either.
    void Read(Transfer& transfer, char& character);
    void Write(Transfer& transfer, std::string_view text);
    // Ends a transfer whose event is signalled, and resets that. The number of bytes; nothing when it failed
    // or had not begun.
    std::optional<DWORD> Finish(Transfer& transfer);
    void Cancel(Transfer& transfer) const;
    // Closes the port, unless it is to be left open.
    void Close();
    // On any thread: if the port is that one, others go on with it.
    void LeaveOpen(HANDLE port);

private:
    template <class Start>
    void Begin(Transfer& transfer, Start start);

    Handle port_;
    const HANDLE name_; // what the port is or was
    std::atomic<bool> isLeftOpen_ = false;
};
