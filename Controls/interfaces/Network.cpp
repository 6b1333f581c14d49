// The network interface: a terminal on TCP port 23 through which properties of any object of the panel are
// set, and the trace of a CAN interface.

#include "Controls/interfaces/network/TerminalServer.h"

#include "Controls/OSMIRControlLib.h"
#include "Controls/families/InterfaceControl.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"

#include <utility>

namespace {

constexpr DWORD THREAD_EXIT_CODE = 12;

} // namespace

class NETWORKPROPERTIES : public INTERFACEPROPERTIES {
public:
    ~NETWORKPROPERTIES() override { Disconnect(); }

    KeywordList Keywords() const override;
    int DefaultInterval() const override { return 60000; }
    void Created() override;
    void Destroying() override { Disconnect(); }
    LRESULT OnMessage(WPARAM, LPARAM) override { return 0; }
    void ServeCalls() override;

    int CanKeyword(VALUERECORD& record);

    const std::shared_ptr<CanChannel> can = std::make_shared<CanChannel>();

private:
    void Disconnect();

    std::unique_ptr<Worker<TerminalServer>> server_;
};

// Keywords

namespace {

constexpr KeywordTable KEYWORDS({
    NO_VALUE_KEYWORD,
    Handled<&NETWORKPROPERTIES::CanKeyword>("can", KeywordKind::Text)
        .Flagged(KEYWORD_CLOSED)
        .Says("Host and port, joined by `:`, that a connection to a CAN interface is made to, whose records "
              "are described on the trace; empty ends it. Not kept."),
    Refused("connection").Says("Refused; the terminal reaches every object by name."),
    INTERVAL_KEYWORD.Says("Kept in milliseconds; nothing happens when it has passed."),
    LAYER_KEYWORD,
    Refused("value").Says("Refused."),
});

} // namespace

KeywordList NETWORKPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

// Connects the CAN channel to a host and port; empty closes it. Never answered.
int NETWORKPROPERTIES::CanKeyword(VALUERECORD& record) {
    const auto text = TextToSet(&record);
    if (!text) {
        return 0;
    }
    if (text->empty()) {
        can->Close();
        return 1;
    }
    const auto target = logic::ParseHostPort(*text);
    if (!target) {
        return 0;
    }
    can->Connect(*target);
    return 1;
}

void NETWORKPROPERTIES::Created() {
    INTERFACEPROPERTIES::Created();
    server_ = std::make_unique<Worker<TerminalServer>>(*this, can);
    if ((*server_)->Open()) {
        server_->Start(THREAD_EXIT_CODE);
    }
}

void NETWORKPROPERTIES::Disconnect() {
    can->End();
    std::exchange(server_, nullptr).reset(); // what is sent here meanwhile finds none
}

void NETWORKPROPERTIES::ServeCalls() {
    if (server_ != nullptr) {
        (*server_)->ServeCalls();
    }
}

int a_AttachCanChannel(NETWORKPROPERTIES* object, unsigned socket) {
    auto* network = LivingObject<NETWORKPROPERTIES>(object);
    if (network == nullptr || socket == INVALID_SOCKET) {
        return 0;
    }
    network->can->Attach(Socket(socket));
    return 1;
}

namespace {

// The picture and a critical section.
class NetworkResources : public SharedPicture {
public:
    explicit NetworkResources(const ControlClass& controlClass) : SharedPicture(controlClass) {
        InitializeCriticalSection(&section_);
    }
    ~NetworkResources() override { DeleteCriticalSection(&section_); }

private:
    CRITICAL_SECTION section_;
};

} // namespace

extern const ControlImplementation networkControl = Implement<NETWORKPROPERTIES>(
    InterfaceProc, NO_DIALOG,
    "Terminal server on TCP port 23 through which properties are set by [typed lines](terminal.md), "
    "and trace of a CAN interface. Seen only while the panel is edited.",
    SharePicture<NetworkResources>);
