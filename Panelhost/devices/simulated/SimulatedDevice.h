#pragma once

#include "Panelhost/devices/DeviceKind.h"
#include "Panelhost/devices/DeviceParameter.h"
#include "logic/devices/Subscription.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

extern const DeviceKind SIMULATED_DEVICES;

// A device that exists only here: its parameters hold what is set, move by themselves or follow each other as
// its device file says. The parameter "online" (1 or 0) takes it off the network and brings it back.
class SimulatedDevice : public DEVICE {
public:
    SimulatedDevice();

    // A parameter as text, and its change from the device's side; result receives what is returned as well.
    using DEVICE::OnGet;
    using DEVICE::OnSet;
    int OnGet(const char* keyword, std::string& value, int* result) override;
    int OnSet(const char* keyword, std::string& value, int* result) override;
    LRESULT OnTimer(WPARAM timer, LPARAM lParam) override;
    LRESULT OnIsAlive(WPARAM wParam, LPARAM lParam) override;
    LRESULT OnGetKeywords(WPARAM wParam, LPARAM names) override;
    LRESULT OnGetDatatype(WPARAM wParam, LPARAM keyword) override;
    LRESULT OnRequestList(WPARAM keyword, LPARAM item) override;
    int OnParameterState(const char* keyword, DWORD* age) override;

    // Applies what a device file says of a parameter. False when it cannot be read.
    bool Declare(const std::string& keyword, const std::string& text);

private:
    struct Place { // in front of the value: both are needed whenever it is asked for
        SimulatedDevice* device = nullptr;
        int index = 0; // from 1 on
    };
    struct Parameter : Place, DeviceParameter {
        std::optional<logic::Wave> wave;
        std::optional<logic::Follow> follow;
        std::vector<std::string> added;  // parameters whose values are added
        std::vector<std::string> muting; // parameters that hold this one at its minimum while one is not 0
        // Parameters of which the first belongs to this one: while another one is not 0 and the first is,
        // this one is held at its minimum.
        std::vector<std::string> solos;
        // Of a receive channel: what becomes of its text, and the parameters that say so and that have the
        // channels which are offered.
        std::optional<logic::Subscription> subscription;
        Parameter* subscriptionState = nullptr;
        Parameter* offered = nullptr;

        bool MovesByItself() const {
            return wave || follow || !added.empty() || !muting.empty() || !solos.empty();
        }
    };

    bool IsReachable(const Parameter& parameter) const;
    static int HandleRequest(VALUERECORD* record, void* context);
    Parameter* Find(const std::string& keyword) const;
    Parameter& Enter(const std::string& keyword);
    // Declares a parameter, or declares it anew. Null when a record cannot be read.
    Parameter* DeclareParameter(const std::string& keyword, const logic::ParameterDeclaration& declaration);
    bool DeclareSubscription(const std::string& keyword, const std::string& text);
    // The value of a source, "parameter" of this device or "DEVICE*parameter"; 0 when there is none.
    float SourceValue(const std::string& source) const;
    void Move(Parameter& parameter, std::uint32_t elapsed);

    std::vector<std::unique_ptr<Parameter>> parameters_; // in order of declaration; addresses stay valid
    std::vector<std::string> keywords_;
    std::unordered_map<std::string, Parameter*> byKeyword_;
    DWORD lastTick_;
    std::uint64_t time_ = 0; // milliseconds of simulation
};
