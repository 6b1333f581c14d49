#pragma once

#include "Panelhost/devices/DeviceParameter.h"
#include "Panelhost/devices/LinkConnection.h"
#include "logic/devices/RemoteParameter.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

class PanelRoot;

// A device that exists outside this machine's memory, however it is talked to. Its parameters hold what the
// network thread last found out; what is set goes there. Blocks are made of other parameters, here. A kind
// derives from it and gives the parameters, the connection and what values can be sent.
//
// Besides its own it has the parameters `online` (1 while it is live; set by the host alone, 0 stops all
// traffic), `state`, `model` and `unconfirmed`.
class RemoteDevice : public DEVICE {
public:
    RemoteDevice();
    ~RemoteDevice() override;

    using DEVICE::OnGet;
    using DEVICE::OnSet;
    // Once it is registered: begins the conversation. 1, or 0 when that cannot be.
    LRESULT OnInitialize(WPARAM wParam, LPARAM lParam) override;
    LRESULT OnMessage(WPARAM wParam, LPARAM record) override;
    int OnGet(const char* keyword, std::string& value, int* result) override;
    int OnSet(const char* keyword, std::string& value, int* result) override;
    LRESULT OnTimer(WPARAM timer, LPARAM lParam) override;
    LRESULT OnDataInBuffer(WPARAM wParam, LPARAM lParam) override;
    LRESULT OnIsAlive(WPARAM wParam, LPARAM lParam) override;
    LRESULT OnGetKeywords(WPARAM wParam, LPARAM names) override;
    LRESULT OnGetDatatype(WPARAM wParam, LPARAM keyword) override;
    LRESULT OnRequestList(WPARAM keyword, LPARAM item) override;
    int OnParameterState(const char* keyword, DWORD* age) override;
    DEVICESTATUS OnStatus() override;
    int OnLastValue(const char* keyword, std::string* value) override;
    bool OnIsRecallable(const char* keyword, logic::FadeScale* scale) override;
    bool OnHolds(const char* keyword, const std::string& text) override;

protected:
    // Before it is registered: its parameters in the order of their numbers, which must live as long, and
    // then those of its own.
    void Declare(const logic::RemoteParameter& declared);
    void DeclareOwn();
    virtual std::shared_ptr<LinkConnection> Connect() = 0;
    // Whether that value of a parameter can be sent.
    virtual bool CanBeSent(std::size_t parameter, const logic::LinkValue& value) const = 0;
    // Whether the device, holding the first one, would be sent nothing else for the second.
    virtual bool IsSame(std::size_t parameter, const logic::LinkValue& held,
                        const logic::LinkValue& wanted) const = 0;
    // Whether setting it starts something, and how its number moves.
    virtual bool IsTrigger(std::size_t parameter) const = 0;
    virtual logic::FadeScale ScaleOf(std::size_t parameter) const = 0;

private:
    struct Parameter {
        RemoteDevice* device = nullptr;
        std::size_t number = 0;
        const logic::RemoteParameter* declared = nullptr;
        DeviceParameter value;
        logic::ParameterState state = logic::ParameterState::Unknown;
        std::uint32_t life = 0;
        std::uint32_t serial = 0;      // of the last set
        logic::Milliseconds heard = 0; // 0: never
        logic::Milliseconds asked = 0; // when the link was last told that somebody asks
        bool isBound = false;          // by some control, shown or not
    };

    static int HandleRequest(VALUERECORD* record, void* context);
    Parameter* Find(const std::string& keyword) const;
    bool IsOwn(const Parameter& parameter) const { return parameter.number >= declared_; }
    int StateOf(const Parameter& parameter) const;
    logic::Milliseconds HeardOf(const Parameter& parameter) const;
    // The value of a block from those of its components.
    void Compose(Parameter& parameter) const;
    int Get(Parameter& parameter, VALUERECORD* record);
    int Set(Parameter& parameter, const VALUERECORD* record);
    int SetBlock(const Parameter& parameter, const DeviceParameter& wanted, bool isOwed);
    void Send(Parameter& parameter, const logic::LinkValue& value, bool isOwed);
    // Somebody other than a bound control asks for it.
    void Ask(Parameter& parameter);
    void TakeNews();
    void TakeStatus(const logic::DeviceUpdate& update);
    // Tells the link what the controls that are shown are bound to.
    void FollowBindings();
    bool SwitchOn(const VALUERECORD* record);
    void WakeIf(bool isNeeded);

    std::vector<std::unique_ptr<Parameter>> parameters_;         // the four of its own at the end
    std::unordered_map<std::string_view, Parameter*> byKeyword_; // by the names that are declared
    std::size_t declared_ = 0;
    std::vector<logic::RemoteParameter> own_;
    logic::DeviceUpdate status_;
    std::uint32_t serial_ = 0;
    std::vector<std::size_t> wanted_;
    unsigned bindings_ = 0; // as of which the wanted ones are
    std::shared_ptr<NetworkThread> network_;
    std::shared_ptr<LinkConnection> connection_;
};
