#include "Controls/interfaces/telephone/ModemPort.h"

#include <utility>

namespace {

constexpr DWORD READ_INTERVAL = 250; // milliseconds

} // namespace

void Transfer::Await() const {
    if (isPending_) {
        WaitForSingleObject(Event(), INFINITE);
    }
}

void ModemPort::Configure() {
    COMMTIMEOUTS timeOuts{READ_INTERVAL, 0, 0, 0, 0};
    SetCommTimeouts(port_.get(), &timeOuts);
    DCB settings{};
    settings.DCBlength = sizeof settings;
    if (GetCommState(port_.get(), &settings)) {
        settings.fAbortOnError = FALSE;
        SetCommState(port_.get(), &settings);
    }
}

template <class Start>
void ModemPort::Begin(Transfer& transfer, Start start) {
    transfer.event_.Reset();
    transfer.request_ = {};
    transfer.request_.hEvent = transfer.Event();
    transfer.isPending_ =
        port_ != nullptr && (start(port_.get(), &transfer.request_) || GetLastError() == ERROR_IO_PENDING);
    if (!transfer.isPending_) {
        transfer.event_.Reset();
    }
}

void ModemPort::Read(Transfer& transfer, char& character) {
    Begin(transfer,
          [&](HANDLE port, OVERLAPPED* request) { return ReadFile(port, &character, 1, nullptr, request); });
}

void ModemPort::Write(Transfer& transfer, std::string_view text) {
    Begin(transfer, [&](HANDLE port, OVERLAPPED* request) {
        return WriteFile(port, text.data(), static_cast<DWORD>(text.size()), nullptr, request);
    });
}

std::optional<DWORD> ModemPort::Finish(Transfer& transfer) {
    transfer.event_.Reset();
    if (!std::exchange(transfer.isPending_, false)) {
        return std::nullopt;
    }
    DWORD count = 0; // the transfer is over, so that the port is not looked at
    return GetOverlappedResult(port_.get(), &transfer.request_, &count, FALSE) ? std::optional(count)
                                                                               : std::nullopt;
}

void ModemPort::Cancel(Transfer& transfer) const {
    if (transfer.isPending_) { // others may have begun transfers of theirs on a port that is left open
        CancelIoEx(port_.get(), &transfer.request_);
    }
}

void ModemPort::Close() {
    if (isLeftOpen_) {
        port_.release();
    }
    port_.reset();
}

void ModemPort::LeaveOpen(HANDLE port) {
    if (port == name_) {
        isLeftOpen_ = true;
    }
}
