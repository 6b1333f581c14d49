#include "Controls/interfaces/network/CanChannel.h"

#include "Controls/interfaces/network/SocketFailures.h"
#include "Panelhost/Trace.h"

namespace {

constexpr DWORD CONNECT_TIME_OUT = 30000; // milliseconds

} // namespace

void CanChannel::State::Attach(Socket newSocket) {
    Close();
    socket = std::move(newSocket);
    ++attached;
    socket.Select(ready.Get(), FD_READ | FD_CLOSE);
}

void CanChannel::State::Close() {
    if (socket.IsOpen()) {
        socket.SelectNothing();
        shutdown(socket.Get(), SD_BOTH);
        socket.Close();
    }
}

void CanChannel::Attach(Socket socket) {
    const std::lock_guard guard(state_->lock);
    state_->wanted.reset();
    state_->isChanged.Set();
    state_->Attach(std::move(socket));
}

void CanChannel::Close() {
    const std::lock_guard guard(state_->lock);
    state_->wanted.reset();
    state_->isChanged.Set();
    state_->Close();
}

void CanChannel::End() {
    isEnding_ = true;
    Close();
}

void CanChannel::Connect(const logic::HostPort& target) {
    const std::lock_guard guard(state_->lock);
    state_->wanted = target;
    state_->isChanged.Set();
    if (!state_->isConnecting) {
        state_->isConnecting = RunAside([state = state_] { ConnectAside(*state); });
    }
}

void CanChannel::ConnectAside(State& state) {
    for (;;) {
        logic::HostPort target;
        {
            const std::lock_guard guard(state.lock);
            if (!state.wanted) {
                state.isConnecting = false;
                return;
            }
            target = *state.wanted;
            state.isChanged.Reset();
        }
        Socket socket = ConnectTo(target, state.isChanged);
        const std::lock_guard guard(state.lock);
        if (state.isChanged.IsSet()) {
            continue; // closed, attached to something else, or wanted elsewhere meanwhile
        }
        state.wanted.reset();
        if (socket.IsOpen()) {
            state.Attach(std::move(socket));
        }
    }
}

Socket CanChannel::ConnectTo(const logic::HostPort& target, const Event& isChanged) {
    const auto host = FindHost(target.host.c_str());
    if (!host) {
        return Socket();
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(target.port);
    address.sin_addr = *host;

    Socket socket(::socket(AF_INET, SOCK_STREAM, 0));
    const SocketEvent connected;
    socket.Select(connected.Get(), FD_CONNECT);
    int error = 0;
    if (connect(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == SOCKET_ERROR) {
        error = WSAGetLastError();
    }
    if (error == WSAEWOULDBLOCK) {
        const HANDLE handles[] = {connected.Get(), isChanged.Get()};
        switch (WaitForMultipleObjects(2, handles, FALSE, CONNECT_TIME_OUT)) {
        case WAIT_OBJECT_0:
            error = connected.Take(socket).iErrorCode[FD_CONNECT_BIT];
            break;
        case WAIT_OBJECT_0 + 1:
            return Socket();
        default:
            error = WSAETIMEDOUT;
        }
    }
    if (error != 0) {
        TraceSocketError(("Couldn't connect to " + target.host).c_str(), error);
        return Socket();
    }
    return socket;
}

void CanChannel::Receive() {
    long events = 0;
    {
        const std::lock_guard guard(state_->lock);
        events = state_->ready.Take(state_->socket).lNetworkEvents;
        if (events != 0 && state_->attached != reading_) {
            reading_ = state_->attached;
            reader_.Restart();
        }
    }
    if ((events & FD_READ) != 0) {
        if (const int result = ReceiveBlock(); result < 0 && result != -WSAEWOULDBLOCK) {
            TraceSocketError("Couldn't read on socket", -result);
        }
    }
    if ((events & FD_CLOSE) != 0) {
        while (ReceiveBlock() > 0) { // what arrived before the end
        }
        const std::lock_guard guard(state_->lock);
        if (state_->attached == reading_) {
            state_->socket.Close();
        }
    }
}

int CanChannel::ReceiveBlock() {
    int count = 0;
    {
        const std::lock_guard guard(state_->lock);
        if (state_->attached != reading_ || !state_->socket.IsOpen()) {
            return 0;
        }
        const auto room = reader_.Room();
        count = recv(state_->socket.Get(), room.data(), static_cast<int>(room.size()), 0);
        if (count == SOCKET_ERROR) {
            return -WSAGetLastError();
        }
    }
    reader_.Received(static_cast<std::size_t>(count), [this](const std::string& line) {
        if (!isEnding_) {
            TRACE("%s", line.c_str());
        }
    });
    return count;
}
