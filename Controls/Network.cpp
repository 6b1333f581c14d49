// The network interface: a terminal on TCP port 23 through which properties of any object of the panel are
// set, and the trace of a CAN interface.

#include "Controls/network/TerminalServer.h"

#include "Controls/OSMIRControlLib.h"
#include "Controls/framework/Controls.h"
#include "Controls/framework/InterfaceControl.h"
#include "Controls/framework/Keywords.h"

namespace {

constexpr int DEFAULT_INTERVAL = 60000; // milliseconds

} // namespace

class NETWORKPROPERTIES : public INTERFACEPROPERTIES {
public:
    ~NETWORKPROPERTIES() override { Disconnect(); }

    const KEYWORDROW* GetHostinfoTable() override;
    void SetDefaults() override;
    void Created() override;
    void Destroying() override { Disconnect(); }
    LRESULT OnMessage(WPARAM, LPARAM) override { return 0; }

    CanChannel can;
    WorkerCalls calls;

private:
    void Disconnect();

    std::unique_ptr<TerminalServer> server_;
};

namespace {

// Connects the CAN channel to a host and port; empty closes it. Never answered.
int CanKeyword(VALUERECORD* record, HOSTINFO* object) {
    const auto text = TextToSet(record);
    if (!text) {
        return 0;
    }
    CanChannel& can = static_cast<NETWORKPROPERTIES*>(object)->can;
    if (text->empty()) {
        can.Close();
        return 1;
    }
    const auto target = logic::ParseHostPort(*text);
    if (!target) {
        return 0;
    }
    can.Connect(*target);
    return 1;
}

constexpr KEYWORDROW KEYWORDS[] = {
    {" ", nullptr, 0},
    {"can", CanKeyword, 0},
    {"connection", RefusedKeyword, 0},
    {"interval", IntervalKeyword, KEYWORD_SAVED},
    {"layer", LayerKeyword, 0},
    {"value", RefusedKeyword, 0},
    {},
};
static_assert(KeywordsAreUnique(KEYWORDS));

LRESULT CALLBACK NetworkProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WorkerCalls::MESSAGE) {
        PropertiesOf<NETWORKPROPERTIES>(window)->calls.Serve();
        return 0;
    }
    return InterfaceProc(window, message, wParam, lParam);
}

} // namespace

const KEYWORDROW* NETWORKPROPERTIES::GetHostinfoTable() {
    return KEYWORDS;
}

void NETWORKPROPERTIES::SetDefaults() {
    INTERFACEPROPERTIES::SetDefaults();
    interval = DEFAULT_INTERVAL;
}

void NETWORKPROPERTIES::Created() {
    INTERFACEPROPERTIES::Created();
    server_ = std::make_unique<TerminalServer>(*this, calls, can);
    server_->Start();
}

void NETWORKPROPERTIES::Disconnect() {
    calls.Close();
    can.End();
    server_.reset();
}

int a_AttachCanChannel(NETWORKPROPERTIES* object, unsigned socket) {
    if (!a_IsAlive(object) || socket == INVALID_SOCKET) {
        return 0;
    }
    object->can.Attach(Socket(socket));
    return 1;
}

const ControlImplementation networkControl{CreateProperties<NETWORKPROPERTIES>, NetworkProc};
