// ITELEPHONE: answers data calls on the first modem line there is. The caller sets properties of any object
// of the panel at a terminal.

#include "Controls/families/InterfaceControl.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "Controls/interfaces/telephone/DataConnection.h"
#include "Panelhost/Trace.h"

#include <tapi.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <utility>
#include <vector>

namespace {

constexpr DWORD LOWEST_VERSION = 0x00010003;
constexpr DWORD HIGHEST_VERSION = 0x00020002;

// Sizes of the records in that version.
constexpr DWORD DEVICE_CAPABILITIES_SIZE = 268;
constexpr DWORD CALL_STATUS_SIZE = 56;
constexpr DWORD CALL_INFO_SIZE = 324;
constexpr DWORD LARGEST_RECORD = 65536; // bytes; more than that is no port
constexpr DWORD DATA_THREAD_EXIT_CODE = 11;

static_assert(sizeof(LINEINITIALIZEEXPARAMS) == 24 && sizeof(VARSTRING) == 24);
static_assert(sizeof(LINEDEVCAPS) >= DEVICE_CAPABILITIES_SIZE && sizeof(LINECALLSTATUS) >= CALL_STATUS_SIZE &&
              sizeof(LINECALLINFO) >= CALL_INFO_SIZE);

void CALLBACK LineCallback(DWORD device, DWORD message, DWORD_PTR instance, DWORD_PTR parameter, DWORD_PTR,
                           DWORD_PTR) noexcept;

} // namespace

class TELEPHONEPROPERTIES : public INTERFACEPROPERTIES {
public:
    ~TELEPHONEPROPERTIES() override { CloseLine(); }
    KeywordList Keywords() const override;
    int DefaultInterval() const override { return 60000; }
    void Created() override;
    void Destroying() override { CloseLine(); }
    LRESULT OnMessage(WPARAM, LPARAM) override { return 0; }
    void ServeCalls() override;

    bool IsOpen() const { return application_ != 0; }
    void Answer(HCALL call) const;
    void Connect(HCALL call);

private:
    void OpenLine();
    void CloseLine();
    bool OpenDevice(DWORD device); // false when it does not know any of the versions
    Handle PortOf(HCALL call) const;

    HLINEAPP application_ = 0;
    HLINE line_ = 0;
    std::unique_ptr<Worker<DataConnection>> connection_;
};

// Keywords

namespace {

constexpr KeywordTable KEYWORDS({
    NO_VALUE_KEYWORD,
    Refused("connection").Says("Refused: the caller reaches every object by its name."),
    INTERVAL_KEYWORD.Says("Milliseconds; kept and without effect."),
    LAYER_KEYWORD,
    Refused("value").Says("Refused: there is none."),
});

} // namespace

KeywordList TELEPHONEPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

void TELEPHONEPROPERTIES::Created() {
    INTERFACEPROPERTIES::Created();
    OpenLine();
}

// Line

void TELEPHONEPROPERTIES::OpenLine() {
    LINEINITIALIZEEXPARAMS parameters{};
    parameters.dwTotalSize = sizeof parameters;
    parameters.dwOptions = LINEINITIALIZEEXOPTION_USEHIDDENWINDOW;
    DWORD devices = 0;
    DWORD version = HIGHEST_VERSION;
    if (lineInitializeExA(&application_, GetModuleHandleA(nullptr), LineCallback, "ITELEPHONE", &devices,
                          &version, &parameters) != 0) {
        application_ = 0;
        return;
    }
    if (devices == 0) {
        lineShutdown(std::exchange(application_, 0));
        return;
    }
    for (DWORD device = 0; device < devices && !OpenDevice(device); ++device) {
    }
}

bool TELEPHONEPROPERTIES::OpenDevice(DWORD device) {
    DWORD version = 0;
    LINEEXTENSIONID extension{};
    if (lineNegotiateAPIVersion(application_, device, LOWEST_VERSION, HIGHEST_VERSION, &version,
                                &extension) != 0) {
        return false;
    }
    LINEDEVCAPS capabilities{};
    capabilities.dwTotalSize = DEVICE_CAPABILITIES_SIZE;
    lineGetDevCapsA(application_, device, HIGHEST_VERSION, 0, &capabilities);
    lineOpenA(application_, device, &line_, version, 0,
              reinterpret_cast<DWORD_PTR>(static_cast<HOSTINFO*>(this)),
              LINECALLPRIVILEGE_MONITOR | LINECALLPRIVILEGE_OWNER, LINEMEDIAMODE_DATAMODEM, nullptr);
    lineSetStatusMessages(line_, LINEDEVSTATE_RINGING, 0);
    return true;
}

void TELEPHONEPROPERTIES::CloseLine() {
    // Taken away first: what still arrives meanwhile finds the line closed.
    const HLINEAPP application = std::exchange(application_, 0);
    const HLINE line = std::exchange(line_, 0);
    std::exchange(connection_, nullptr).reset();
    if (line != 0) {
        lineClose(line);
    }
    if (application != 0) {
        lineShutdown(application);
    }
}

// Calls

void TELEPHONEPROPERTIES::Answer(HCALL call) const {
    LINECALLSTATUS status{};
    status.dwTotalSize = CALL_STATUS_SIZE;
    lineGetCallStatus(call, &status);
    LINECALLINFO info{};
    info.dwTotalSize = CALL_INFO_SIZE;
    lineGetCallInfoA(call, &info);
    lineAnswer(call, nullptr, 0);
}

// Null when the call has none.
Handle TELEPHONEPROPERTIES::PortOf(HCALL call) const {
    std::vector<char> bytes(sizeof(VARSTRING));
    const auto record = [&bytes] { return reinterpret_cast<VARSTRING*>(bytes.data()); };
    const auto get = [&] {
        record()->dwTotalSize = bytes.size();
        return lineGetIDA(line_, 0, call, LINECALLSELECT_CALL, record(), "comm/datamodem");
    };
    get(); // tells the size that is needed
    if (record()->dwNeededSize > LARGEST_RECORD) {
        return nullptr;
    }
    bytes.resize(std::max<std::size_t>(record()->dwNeededSize, bytes.size()));
    HANDLE port = nullptr;
    if (get() != 0 || record()->dwStringOffset < sizeof(VARSTRING) ||
        record()->dwStringOffset > bytes.size() - sizeof port) {
        return nullptr;
    }
    std::memcpy(&port, bytes.data() + record()->dwStringOffset, sizeof port);
    return Handle(port == INVALID_HANDLE_VALUE ? nullptr : port);
}

void TELEPHONEPROPERTIES::Connect(HCALL call) {
    Handle port = PortOf(call);
    if (connection_ != nullptr) { // of a call before, or of this one already
        (*connection_)->LeaveOpen(port.get());
        std::exchange(connection_, nullptr).reset();
        if (!IsOpen()) { // what was sent here meanwhile can have ended it
            return;
        }
    }
    if (port != nullptr) {
        connection_ = std::make_unique<Worker<DataConnection>>(*this, std::move(port));
        connection_->Start(DATA_THREAD_EXIT_CODE);
    }
}

void TELEPHONEPROPERTIES::ServeCalls() {
    if (connection_ != nullptr) {
        (*connection_)->ServeCalls();
    }
}

// Callback

namespace {

// The telephone with an open line that a callback is for. A late one can come after its end.
TELEPHONEPROPERTIES* TelephoneOf(DWORD_PTR instance) {
    auto* object = reinterpret_cast<HOSTINFO*>(instance);
    auto* telephone = a_IsAlive(object) ? dynamic_cast<TELEPHONEPROPERTIES*>(object) : nullptr;
    return telephone != nullptr && telephone->IsOpen() ? telephone : nullptr;
}

void CallStateChanged(HCALL call, DWORD_PTR state, DWORD_PTR instance) {
    switch (state) {
    case LINECALLSTATE_IDLE:
        TRACE("LINECALLSTATE_IDLE...\n");
        break;
    case LINECALLSTATE_OFFERING:
        TRACE("LINECALLSTATE_OFFERING...\n");
        if (const auto* telephone = TelephoneOf(instance); telephone != nullptr) {
            telephone->Answer(call);
        }
        break;
    case LINECALLSTATE_ACCEPTED:
        TRACE("LINECALLSTATE_ACCEPTED...\n");
        break;
    case LINECALLSTATE_CONNECTED:
        TRACE("LINECALLSTATE_CONNECTED...\n");
        if (auto* telephone = TelephoneOf(instance); telephone != nullptr) {
            const Held held(*telephone);
            telephone->Connect(call);
        }
        break;
    case LINECALLSTATE_DISCONNECTED:
        TRACE("LINECALLSTATE_DISCONNECTED...\n");
        if (TelephoneOf(instance) != nullptr) {
            lineDeallocateCall(call); // the data thread waits for the next call
        }
        break;
    default:
        TRACE("LINECALLSTATE_?%ld\n", static_cast<long>(LINE_CALLSTATE));
        break;
    }
}

void CALLBACK LineCallback(DWORD device, DWORD message, DWORD_PTR instance, DWORD_PTR parameter, DWORD_PTR,
                           DWORD_PTR) noexcept {
    try {
        switch (message) {
        case LINE_CALLSTATE:
            CallStateChanged(device, parameter, instance);
            break;
        case LINE_CLOSE:
            TRACE("LINE_CLOSED...\n");
            break;
        case LINE_LINEDEVSTATE:
            if (parameter == LINEDEVSTATE_RINGING) {
                TRACE("LINEDEVSTATE_RINGING...\n");
            } else if (parameter == LINEDEVSTATE_REINIT) {
                TRACE("LINEDEVSTATE_REINIT...\n");
            } else {
                TRACE("LINE_LINEDEVSTATE ?%ld\n", static_cast<long>(message));
            }
            break;
        case LINE_REPLY:
            TRACE("LINE_REPLY...\n");
            break;
        default:
            TRACE("LINE_ ?%ld\n", static_cast<long>(message));
            break;
        }
    } catch (const std::exception& failure) {
        TRACE("The telephone call failed: %s\n", failure.what());
    }
}

} // namespace

extern const ControlImplementation telephoneControl = Implement<TELEPHONEPROPERTIES>(
    InterfaceProc, NO_DIALOG,
    "Answers data calls on a modem and lets the caller set properties at a terminal. See [interface "
    "controls](interface-controls.md#telephone).",
    SharePicture<>);
