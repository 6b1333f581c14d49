// The terminal on a data call: lines NAME*KEYWORD=VALUE set properties of the panel's objects.

#include "Controls/interfaces/telephone/DataConnection.h"

#include "Controls/families/AddressedValue.h"
#include "Panelhost/Remote.h"
#include "Panelhost/Trace.h"

#include <cstdio>

namespace {

constexpr DWORD RETRY_TIME = 250; // milliseconds from a read that failed to the next

// A caller has no other prompt before the first line.
constexpr const char* FIRST_PROMPT = "*";

enum class Result { CarriedOut, KeywordMissing, ObjectMissing };

// What became of a line.
struct Outcome {
    Result result = Result::CarriedOut;
    std::string shown; // in front of the prompt
};

// On the user-interface thread: gives the object of that address its value, or asks for it.
Outcome CarryOut(HOSTINFO& control, const logic::TerminalAddress& address) {
    const HWND target = a_FindHwnd(a_FindRootHostinfo(&control), address.Object().c_str());
    if (target == nullptr) {
        return {Result::ObjectMissing, address.IsQuestion() ? logic::ValueLine("") : ""};
    }
    const AddressedValue value(target, address.Keyword());
    std::string shown = address.IsQuestion() ? logic::ValueLine(value.Text()) : "";
    if (!value.IsAnswered()) {
        return {Result::KeywordMissing, std::move(shown)};
    }
    const bool isNothing = address.Keyword().empty() && address.Value().empty();
    if (!address.IsQuestion() && !isNothing) {
        const RemoteSetting remote;
        value.Set(address.Value());
    }
    return {Result::CarriedOut, std::move(shown)};
}

} // namespace

void DataConnection::Run() {
    struct End {
        ~End() {
            connection.port_.Cancel(connection.reading_);
            connection.port_.Cancel(connection.writing_);
            connection.port_.Close();
            connection.reading_.Await();
            connection.writing_.Await();
        }
        DataConnection& connection;
    } const end{*this};
    if (reading_.IsMade() && writing_.IsMade() && stop_.Get() != nullptr) {
        sent_ = std::string(logic::TERMINAL_WELCOME) + FIRST_PROMPT;
        port_.Write(writing_, sent_);
        Serve();
    }
}

void DataConnection::Stop() {
    calls_.Close();
    stop_.Set();
}

void DataConnection::Serve() {
    port_.Configure();
    port_.Read(reading_, received_);
    // The first one that is signalled counts: nothing keeps the end waiting.
    const HANDLE events[] = {stop_.Get(), reading_.Event(), writing_.Event()};
    for (;;) {
        switch (WaitForMultipleObjects(3, events, FALSE, reading_.IsPending() ? INFINITE : RETRY_TIME)) {
        case WAIT_OBJECT_0 + 1:
            if (port_.Finish(reading_) != 1U) {
                break; // hung up, or an error that passes
            }
            if (!Take(received_)) {
                return;
            }
            [[fallthrough]];
        case WAIT_TIMEOUT:
            port_.Read(reading_, received_);
            break;
        case WAIT_OBJECT_0 + 2:
            FinishWriting();
            break;
        default:
            return;
        }
    }
}

bool DataConnection::Take(char character) {
    using Step = logic::TelephoneTerminal::Step;
    std::optional<std::string> shown = "";
    switch (terminal_.Put(character)) {
    case Step::None:
        return true;
    case Step::Execute:
        shown = Execute();
        break;
    case Step::Refuse:
        TraceRefusedLine("telephone");
        break;
    }
    return shown && Send(*shown + terminal_.Answer());
}

std::optional<std::string> DataConnection::Execute() {
    // With a copy of the address: the line may be what destroys this connection.
    auto outcome = calls_.Ask(window_, stop_.Get(), [&control = control_, address = terminal_.Address()] {
        return CarryOut(control, address);
    });
    if (!outcome) {
        return std::nullopt;
    }
    if (outcome->result == Result::KeywordMissing) {
        terminal_.KeywordMissing();
    } else if (outcome->result == Result::ObjectMissing) {
        terminal_.ObjectMissing();
    }
    return std::move(outcome->shown);
}

bool DataConnection::Send(std::string text) {
    while (writing_.IsPending()) { // the caller has not yet taken what was sent before
        const HANDLE events[] = {writing_.Event(), stop_.Get()};
        if (WaitForMultipleObjects(2, events, FALSE, INFINITE) != WAIT_OBJECT_0) {
            return false;
        }
        FinishWriting();
    }
    sent_ = std::move(text);
    port_.Write(writing_, sent_);
    return true;
}

void DataConnection::FinishWriting() {
    if (const auto count = port_.Finish(writing_)) {
        TRACE("Write %ld\n", static_cast<long>(*count));
    }
}
