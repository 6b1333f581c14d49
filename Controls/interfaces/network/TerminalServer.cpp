#include "Controls/interfaces/network/TerminalServer.h"

#include "Controls/families/AddressedValue.h"
#include "Controls/interfaces/network/SocketFailures.h"
#include "Panelhost/Remote.h"
#include "Panelhost/Trace.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <iterator>
#include <mutex>
#include <utility>

namespace {

constexpr u_short PORT = 23;
constexpr int BACKLOG = 5;
constexpr int BLOCK_SIZE = 256;
constexpr int BLOCKS_AT_ONCE = 16; // then the others have their turn

// How long lines may keep the user-interface thread busy at a time; then it has a moment for its own.
constexpr auto TURN = std::chrono::milliseconds(10);
constexpr DWORD MOMENT = 1; // milliseconds

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
        return {true, logic::ValueLine(AddressedValue(object->window, address.Keyword()).Text())};
    }
    const RemoteSetting remote;
    if (object->kind == KIND_DEVICE) {
        if (const AddressedValue value(object->window, address.Keyword()); value.IsKnown()) {
            value.Set(address.Value());
        }
    } else if (!address.Keyword().empty()) {
        const std::string line = address.KeywordLine();
        SendMessageA(object->window, CWM_LOAD, LOAD_FROM_DIALOG, reinterpret_cast<LPARAM>(line.c_str()));
    }
    return {true, {}};
}

// Received text on its way through the terminal.
struct Reading {
    Reading(const logic::Terminal& before, std::string received, SOCKET socket)
        : terminal(before), text(std::move(received)), client(socket) {}

    // Sends the answers, or as much as the client has room for. From the thread that has them: waking the
    // other one first would keep the client waiting.
    void SendAnswers() {
        const std::lock_guard guard(lock);
        const int count =
            client == INVALID_SOCKET ? 0 : send(client, answers.data(), static_cast<int>(answers.size()), 0);
        answers.erase(0, static_cast<std::size_t>(std::max(count, 0)));
    }
    // From now on the client may be closed.
    void LeaveClient() {
        const std::lock_guard guard(lock);
        client = INVALID_SOCKET;
    }

    // Takes it up to the next line that is to be carried out. False when there is none.
    bool FindLine() {
        using Step = logic::Terminal::Step;
        while (position < text.size()) {
            switch (terminal.Put(text[position++])) {
            case Step::None:
                break;
            case Step::Abandon:
                position = text.size();
                break;
            case Step::Execute:
                return true;
            case Step::Refuse:
                TraceRefusedLine("network");
                [[fallthrough]];
            case Step::Answer:
                answers += logic::TelnetText(terminal.Answer());
                break;
            }
        }
        return false;
    }

    logic::Terminal terminal;
    std::string text;
    std::size_t position = 0; // of what has not been taken yet
    std::string answers;      // still to be sent

private:
    SharedLock lock;
    SOCKET client;
};

// On the user-interface thread: carries out the line that was found and those behind it, as long as it is
// their turn and the control is there. Whether another line was found.
bool CarryOutLines(HOSTINFO& control, HWND window, Reading& reading) {
    const auto end = std::chrono::steady_clock::now() + TURN;
    bool hasLine = false;
    do {
        const Outcome outcome =
            Guarded(Outcome{}, [&] { return CarryOut(control, reading.terminal.Address()); });
        if (!outcome.hasObject) {
            reading.terminal.ObjectMissing();
        }
        reading.answers += logic::TelnetText(outcome.shown + reading.terminal.Answer());
        hasLine = reading.FindLine();
    } while (hasLine && a_FromWindow(window) == &control && std::chrono::steady_clock::now() < end);
    reading.SendAnswers();
    return hasLine;
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
    Send(logic::TERMINAL_WELCOME);
}

// The events of the client are not asked for: that would take longer than receiving. What has happened shows
// when everything is received that there is.
void TerminalServer::ServeClient() {
    int result = 1;
    for (int i = 0; i < BLOCKS_AT_ONCE && result > 0 && client_.IsOpen(); ++i) {
        result = ReceiveBlock();
        if (panelTime_ >= TURN && result > 0) {
            WaitForSingleObject(stop_.Get(), MOMENT);
            panelTime_ = {};
        }
    }
    if (!client_.IsOpen()) {
        return;
    }
    if (result > 0) {
        clientEvents_ |= FD_READ; // the rest has its turn behind the others
        return;
    }
    clientEvents_ = 0;
    panelTime_ = {};
    if (result == -WSAEWOULDBLOCK) {
        return;
    }
    if (result == 0 || (clientEvent_.Take(client_).lNetworkEvents & FD_CLOSE) != 0) {
        Retire();
    } else {
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
    // Shared, because a line may be what destroys this server.
    const auto reading = std::make_shared<Reading>(terminal_, text, client_.Get());
    bool hasLine = reading->FindLine();
    do {
        if (hasLine) {
            const auto start = std::chrono::steady_clock::now();
            const auto found =
                calls_.Ask(window_, stop_.Get(), [&control = control_, window = window_, reading] {
                    return CarryOutLines(control, window, *reading);
                });
            if (!found) { // the server stops
                reading->LeaveClient();
                return;
            }
            hasLine = *found;
            panelTime_ += std::chrono::steady_clock::now() - start;
        }
        terminal_ = reading->terminal;
        Send(std::exchange(reading->answers, {}));
    } while (hasLine && client_.IsOpen());
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
    clientEvents_ |= clientEvent_.Take(client_).lNetworkEvents & CLIENT_EVENTS;
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
