#include "Controls/network/TerminalServer.h"

#include "Controls/framework/ClickTemplate.h"
#include "Panelhost/Panelhost.h"

#include <cstdio>
#include <exception>

namespace {

constexpr u_short PORT = 23;
constexpr int BACKLOG = 5;
constexpr int BLOCK_SIZE = 256;
constexpr int BLOCKS_AT_ONCE = 16; // then the others have their turn

constexpr long CLIENT_EVENTS = FD_READ | FD_CLOSE;
// Between attempts to send to a peer that has ended its own side: its last event has been reported then.
constexpr DWORD RETRY_TIME = 100; // milliseconds

// Clients wait for 65 bytes: the last line feed is not among them.
constexpr std::string_view BANNER = logic::terminalWelcome.substr(0, 65);
constexpr std::string_view FAREWELL = "\r\nBye!\r\n";

// On the user-interface thread: gives the object of that address its value. False when there is none.
bool SetAddressed(HOSTINFO& control, const logic::TerminalAddress& address) {
    const HOSTINFO* object = a_FindHostinfo(a_FindRootHostinfo(&control), address.Object().c_str());
    if (object == nullptr) {
        return false;
    }
    if (object->kind == KIND_DEVICE) {
        char keyword[TEXT_SIZE];
        char value[TEXT_SIZE];
        std::snprintf(keyword, sizeof keyword, "%s", address.Keyword().c_str());
        std::snprintf(value, sizeof value, "%s", address.Value().c_str());
        SetIfKnown(object->window, keyword, value);
    } else if (!address.Keyword().empty()) {
        const std::string line = address.KeywordLine();
        SendMessageA(object->window, CWM_LOAD, LOAD_FROM_DIALOG, reinterpret_cast<LPARAM>(line.c_str()));
    }
    return true;
}

} // namespace

bool TerminalServer::Open() {
    listening_ = Socket(socket(AF_INET, SOCK_STREAM, 0));
    if (!listening_.IsOpen()) {
        return false;
    }
    Listen();
    if (stop_.Get() == nullptr || !listenEvent_.IsMade() || !clientEvent_.IsMade()) {
        return false;
    }
    listening_.Select(listenEvent_.Get(), FD_ACCEPT | FD_CLOSE);
    TRACE("server initialization done\n");
    return true;
}

void TerminalServer::Listen() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_ANY);
    address.sin_port = htons(PORT);
    if (bind(listening_.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == SOCKET_ERROR) {
        TraceSocketError("Couldn't bind socket");
    }
    if (listen(listening_.Get(), BACKLOG) == SOCKET_ERROR) {
        TraceSocketError("Couldn't set up listen on socket");
    }
}

void TerminalServer::Stop() {
    calls_.Close();
    stop_.Set();
}

void TerminalServer::Run() {
    // The first one that is signalled counts: nothing keeps the end waiting, and of client and CAN channel
    // each has its turn.
    HANDLE handles[] = {stop_.Get(), listenEvent_.Get(), clientEvent_.Get(), can_->ReadyEvent()};
    for (;;) {
        const DWORD index = WaitForMultipleObjects(4, handles, FALSE, clientEvents_ == 0 ? INFINITE : 0);
        if (index == WAIT_OBJECT_0 || index == WAIT_FAILED) {
            break;
        }
        try {
            if (index == WAIT_TIMEOUT || handles[index] == clientEvent_.Get()) {
                ServeClient();
            } else if (index == WAIT_OBJECT_0 + 1) {
                ServeListening();
            } else {
                can_->Receive();
            }
        } catch (const std::exception& failure) {
            TRACE("The terminal failed: %s\n", failure.what());
        }
        std::swap(handles[2], handles[3]);
    }
    can_->Close();
    Drop();
    retired_.Close();
    listening_.Close();
    peerName_.Settle();
}

void TerminalServer::ServeListening() {
    const long events = listenEvent_.Take(listening_).lNetworkEvents;
    if ((events & FD_ACCEPT) != 0) { // left alone, it would not be reported again
        Accept();
    } else if (events == FD_CLOSE) {
        Send(FAREWELL);
    }
}

void TerminalServer::Accept() {
    retired_.Close();
    if (client_.IsOpen()) {
        const SOCKET replaced = client_.Get();
        Drop();
        TRACE("closesocket %x\n", static_cast<unsigned>(replaced));
    }
    sockaddr_in address{};
    int length = sizeof address;
    client_ = Socket(accept(listening_.Get(), reinterpret_cast<sockaddr*>(&address), &length));
    if (!client_.IsOpen()) {
        TraceSocketError("Couldn't set up accept on socket");
        return;
    }
    client_.Select(clientEvent_.Get(), CLIENT_EVENTS);
    TRACE("accepting %s\n", peerName_.Find(address.sin_addr, stop_.Get()).c_str());
    terminal_.Restart();
    Send(BANNER);
}

void TerminalServer::ServeClient() {
    clientEvents_ |= clientEvent_.Take(client_).lNetworkEvents;
    const bool hasEnded = (clientEvents_ & FD_CLOSE) != 0;
    clientEvents_ &= FD_CLOSE; // stays until all that arrived before the end has been taken
    int result = BLOCK_SIZE;
    for (int i = 0; i < BLOCKS_AT_ONCE && result == BLOCK_SIZE && client_.IsOpen(); ++i) {
        result = ReceiveBlock();
    }
    if (hasEnded && result <= 0) {
        Retire();
    } else if (result < 0 && result != -WSAEWOULDBLOCK) {
        TraceSocketError("Couldn't read on socket", -result);
    }
}

int TerminalServer::ReceiveBlock() {
    char block[BLOCK_SIZE];
    const int count = recv(client_.Get(), block, sizeof block, 0);
    if (count == SOCKET_ERROR) {
        return -WSAGetLastError();
    }
    Take({block, static_cast<std::size_t>(count)});
    return count;
}

void TerminalServer::Take(std::string_view block) {
    using Step = logic::Terminal::Step;
    for (const char character : block) {
        switch (terminal_.Put(character)) {
        case Step::None:
            break;
        case Step::Execute:
            if (!Execute()) {
                return;
            }
            [[fallthrough]];
        case Step::Answer:
            Send(terminal_.Answer());
            if (!client_.IsOpen()) {
                return;
            }
            break;
        case Step::Abandon:
            return;
        }
    }
}

bool TerminalServer::Execute() {
    // With a copy of the address: the line may be what destroys this server.
    const auto hasObject =
        calls_.Ask(window_, stop_.Get(), [&control = control_, address = terminal_.Address()] {
            return SetAddressed(control, address);
        });
    if (hasObject == false) {
        terminal_.ObjectMissing();
    }
    return hasObject.has_value();
}

void TerminalServer::Send(std::string_view text) {
    while (!text.empty() && client_.IsOpen()) {
        const int count = send(client_.Get(), text.data(), static_cast<int>(text.size()), 0);
        if (count > 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (WSAGetLastError() != WSAEWOULDBLOCK) {
            Drop();
        } else if (!WaitForRoom()) {
            return;
        }
    }
}

// False when the rest is not to be sent any more.
bool TerminalServer::WaitForRoom() {
    client_.Select(clientEvent_.Get(), CLIENT_EVENTS | FD_WRITE);
    const struct Reselect {
        ~Reselect() { server.client_.Select(server.clientEvent_.Get(), CLIENT_EVENTS); }
        TerminalServer& server;
    } reselect{*this};
    const HANDLE handles[] = {stop_.Get(), listenEvent_.Get(), clientEvent_.Get(), can_->ReadyEvent()};
    for (;;) {
        const bool hasEnded = (clientEvents_ & FD_CLOSE) != 0;
        switch (WaitForMultipleObjects(4, handles, FALSE, hasEnded ? RETRY_TIME : INFINITE)) {
        case WAIT_OBJECT_0 + 2: {
            const long events = clientEvent_.Take(client_).lNetworkEvents;
            clientEvents_ |= events & CLIENT_EVENTS;
            if ((events & FD_WRITE) != 0) {
                return true;
            }
            break;
        }
        case WAIT_OBJECT_0 + 3:
            can_->Receive();
            break;
        case WAIT_TIMEOUT:
            return true;
        default: // the server stops or another terminal has come
            return false;
        }
    }
}

void TerminalServer::Retire() {
    if (client_.IsOpen()) {
        client_.SelectNothing();
        shutdown(client_.Get(), SD_SEND);
        retired_ = std::move(client_);
    }
    clientEvents_ = 0;
}

void TerminalServer::Drop() {
    client_.Close();
    clientEvents_ = 0;
}
