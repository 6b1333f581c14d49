#include "Controls/network/TerminalServer.h"

#include "Controls/framework/ClickTemplate.h"
#include "Controls/framework/TerminalValue.h"
#include "Panelhost/Panelhost.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iterator>

namespace {

constexpr u_short PORT = 23;
constexpr int BACKLOG = 5;
constexpr int BLOCK_SIZE = 256;
constexpr int BLOCKS_AT_ONCE = 16; // then the others have their turn

constexpr long CLIENT_EVENTS = FD_READ | FD_CLOSE;
// Between attempts to send to a peer that has ended its own side: its last event has been reported then.
constexpr DWORD RETRY_TIME = 100; // milliseconds

constexpr std::string_view FAREWELL = "\r\nBye!\r\n";

// What became of a line.
struct Outcome {
    bool hasObject = false;
    std::string shown; // in front of the prompt
};

// On the user-interface thread: gives the object of that address its value, or asks for it.
Outcome CarryOut(HOSTINFO& control, const logic::TerminalAddress& address) {
    const HOSTINFO* object = a_FindHostinfo(a_FindRootHostinfo(&control), address.Object().c_str());
    if (object == nullptr) {
        return {false, address.IsQuestion() ? logic::ValueLine({}) : ""};
    }
    if (address.IsQuestion()) {
        return {true, logic::ValueLine(TerminalValue(object->window, address.Keyword()))};
    }
    const RemoteSetting remote;
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
    return {true, {}};
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
    // The first one that is signalled counts: nothing keeps the end waiting, and of the others each has its
    // turn.
    HANDLE handles[] = {stop_.Get(), listenEvent_.Get(), clientEvent_.Get(), can_->ReadyEvent()};
    for (;;) {
        const DWORD index = WaitForMultipleObjects(4, handles, FALSE, TimeToWait());
        if (index == WAIT_OBJECT_0 || index == WAIT_FAILED) {
            break;
        }
        try {
            ReportRefusals();
            if (next_.socket.IsOpen()) {
                Welcome();
            } else if (index == WAIT_TIMEOUT || handles[index] == clientEvent_.Get()) {
                ServeClient();
            } else if (handles[index] == listenEvent_.Get()) {
                ServeListening();
            } else {
                can_->Receive();
            }
        } catch (const std::exception& failure) {
            TRACE("The terminal failed: %s\n", failure.what());
        }
        std::rotate(handles + 1, handles + 2, std::end(handles));
    }
    can_->Close();
    Drop();
    next_.socket.Close();
    retired_.Close();
    listening_.Close();
    peerName_.Settle();
}

// Milliseconds.
DWORD TerminalServer::TimeToWait() const {
    if (clientEvents_ != 0 || next_.socket.IsOpen()) {
        return 0;
    }
    return refusals_.TimeToReport(GetTickCount()).value_or(INFINITE);
}

void TerminalServer::ReportRefusals() {
    if (const std::uint32_t count = refusals_.Report(GetTickCount()); count != 0) {
        TRACE("Terminals that may not connect: %u, the last from %s\n", static_cast<unsigned>(count),
              inet_ntoa(lastRefused_));
    }
}

void TerminalServer::ServeListening() {
    const long events = listenEvent_.Take(listening_).lNetworkEvents;
    if ((events & FD_ACCEPT) != 0) { // left alone, it would not be reported again
        if (Accept()) {
            Welcome();
        }
    } else if (events == FD_CLOSE) {
        Send(FAREWELL);
    }
}

bool TerminalServer::Accept() {
    sockaddr_in address{};
    int length = sizeof address;
    Socket accepted(accept(listening_.Get(), reinterpret_cast<sockaddr*>(&address), &length));
    if (!accepted.IsOpen()) {
        TraceSocketError("Couldn't set up accept on socket");
        return false;
    }
    accepted.SelectNothing(); // what the listening socket has selected
    const auto mayConnect =
        calls_.Ask(window_, stop_.Get(), [&control = control_, number = ntohl(address.sin_addr.s_addr)] {
            return a_MayConnect(&control, number);
        });
    if (mayConnect == true) {
        next_ = {std::move(accepted), address.sin_addr};
        return true;
    }
    if (mayConnect == false) {
        refusals_.Add();
        lastRefused_ = address.sin_addr;
        ReportRefusals();
    }
    return false;
}

void TerminalServer::Welcome() {
    retired_.Close();
    if (client_.IsOpen()) {
        const SOCKET replaced = client_.Get();
        Drop();
        TRACE("closesocket %x\n", static_cast<unsigned>(replaced));
    }
    client_ = std::move(next_.socket);
    const BOOL isInline = TRUE; // urgent bytes stay where they stand between the others
    setsockopt(client_.Get(), SOL_SOCKET, SO_OOBINLINE, reinterpret_cast<const char*>(&isInline),
               sizeof isInline);
    client_.Select(clientEvent_.Get(), CLIENT_EVENTS);
    TRACE("accepting %s\n", peerName_.Find(next_.address, stop_.Get()).c_str());
    terminal_.Restart();
    telnet_ = {};
    Send(logic::terminalWelcome);
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
    Take(telnet_.Text({block, static_cast<std::size_t>(count)}));
    return count;
}

void TerminalServer::Take(const std::string& text) {
    using Step = logic::Terminal::Step;
    for (const char character : text) {
        std::optional<std::string> shown = "";
        switch (terminal_.Put(character)) {
        case Step::None:
            continue;
        case Step::Abandon:
            return;
        case Step::Execute:
            shown = Execute();
            break;
        case Step::Refuse:
            TraceRefusedLine("network");
            break;
        case Step::Answer:
            break;
        }
        if (!shown) {
            return;
        }
        Send(logic::TelnetText(*shown + terminal_.Answer()));
        if (!client_.IsOpen()) {
            return;
        }
    }
}

std::optional<std::string> TerminalServer::Execute() {
    // With a copy of the address: the line may be what destroys this server.
    auto outcome = calls_.Ask(window_, stop_.Get(), [&control = control_, address = terminal_.Address()] {
        return CarryOut(control, address);
    });
    if (!outcome) {
        return std::nullopt;
    }
    if (!outcome->hasObject) {
        terminal_.ObjectMissing();
    }
    return std::move(outcome->shown);
}

void TerminalServer::Send(std::string_view text) {
    while (!text.empty() && client_.IsOpen()) {
        const int count = send(client_.Get(), text.data(), static_cast<int>(text.size()), 0);
        if (count > 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (WSAGetLastError() != WSAEWOULDBLOCK) {
            clientEvents_ |= FD_CLOSE; // the peer is gone: what it sent before is still carried out
            return;
        } else if (!WaitForRoom()) {
            return;
        }
    }
}

// False when the rest is not to be sent any more.
bool TerminalServer::WaitForRoom() {
    if (next_.socket.IsOpen()) {
        return false;
    }
    client_.Select(clientEvent_.Get(), CLIENT_EVENTS | FD_WRITE);
    const struct Reselect {
        ~Reselect() { server.client_.Select(server.clientEvent_.Get(), CLIENT_EVENTS); }
        TerminalServer& server;
    } reselect{*this};
    const HANDLE handles[] = {stop_.Get(), listenEvent_.Get(), clientEvent_.Get(), can_->ReadyEvent()};
    for (;;) {
        const bool hasEnded = (clientEvents_ & FD_CLOSE) != 0;
        switch (WaitForMultipleObjects(4, handles, FALSE, hasEnded ? RETRY_TIME : INFINITE)) {
        case WAIT_OBJECT_0 + 1:
            // One who may not connect takes nothing away from the one who is here.
            if ((listenEvent_.Take(listening_).lNetworkEvents & FD_ACCEPT) != 0 && Accept()) {
                return false;
            }
            break;
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
        default: // the server stops
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
