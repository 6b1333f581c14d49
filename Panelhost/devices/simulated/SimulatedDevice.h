#pragma once

#include "Panelhost/devices/DeviceKind.h"
#include "Panelhost/devices/DeviceParameter.h"
#include "logic/devices/AutoMixer.h"
#include "logic/devices/MonitorOutput.h"
#include "logic/devices/SimulatedBlocks.h"
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
    LRESULT OnInitialize(WPARAM, LPARAM) override { return 1; }
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
    DEVICESTATUS OnStatus() override;
    bool OnIsRecallable(const char* keyword, logic::FadeScale* scale) override;
    bool OnHolds(const char* keyword, const std::string& text) override;

    // Applies what a device file says of a parameter. Empty, or why it cannot be read.
    std::string Declare(const std::string& keyword, const std::string& text);

private:
    struct Place { // in front of the value: both are needed whenever it is asked for
        SimulatedDevice* device = nullptr;
        int index = 0; // from 1 on
    };
    struct Parameter;
    struct LineKind;
    static const LineKind LINE_KINDS[];
    struct Reduction { // what the gain reduction of a block is computed from
        logic::DynamicsMode mode;
        const Parameter *threshold, *ratio, *knee, *attack, *release, *on, *level;
    };
    struct Mix { // a column of a matrix
        std::vector<const Parameter*> crosspoints;
        std::vector<std::string> inputs;
    };
    struct Monitor { // what the level of a loudspeaker is computed from
        std::int32_t set;
        std::string own, other; // channels
        const Parameter *speaker, *level, *dim, *mono, *mute;
    };
    struct SharedGain { // an automatic mixer
        struct Channel {
            std::string source;
            Parameter* gain;
            const Parameter *weight, *threshold, *hold, *priority, *freeze, *mute;
        };
        std::vector<Channel> channels;
        logic::AutoMixer mixer;
        std::optional<std::uint64_t> movedAt; // milliseconds of simulation
    };
    struct Parameter : Place, DeviceParameter {
        std::optional<logic::Wave> wave;
        std::optional<logic::Follow> follow;
        std::vector<std::string> added;  // parameters whose values are added
        std::vector<std::string> muting; // parameters that hold this one at its minimum while one is not 0
        // Parameters of which the first belongs to this one: while another one is not 0 and the first is,
        // this one is held at its minimum.
        std::vector<std::string> solos;
        std::vector<std::string> through; // what the level goes through
        std::optional<Reduction> reduction;
        std::optional<Mix> mix;
        std::optional<Monitor> monitor;
        std::shared_ptr<SharedGain> shared; // of the gain of a channel
        // Of a receive channel: what becomes of its text, and the parameters that say so and that have the
        // channels which are offered.
        std::optional<logic::Subscription> subscription;
        Parameter* subscriptionState = nullptr;
        Parameter* offered = nullptr;
        bool isReport = false; // the device says something by it

        // Whether its number comes from elsewhere.
        bool IsSourced() const {
            return wave || follow || mix || reduction || monitor || shared || !added.empty() ||
                   !through.empty();
        }
        bool MovesByItself() const { return IsSourced() || !muting.empty() || !solos.empty(); }
        bool IsRecallable() const { return !MovesByItself() && !isReport; }
    };

    bool IsReachable(const Parameter& parameter) const;
    static int HandleRequest(VALUERECORD* record, void* context);
    Parameter* Find(const std::string& keyword) const;
    Parameter& Enter(const std::string& keyword);
    // Declares a parameter, or declares it anew. Null when a record cannot be read.
    Parameter* DeclareParameter(const std::string& keyword, const logic::ParameterDeclaration& declaration);
    bool DeclareSubscription(const std::string& keyword, const std::string& text);
    std::string DeclareAny(const std::string& keyword, const std::string& text);
    bool DeclareDynamics(const std::string& block, const std::string& text);
    bool DeclareMatrix(const std::string& crosspoints, const std::string& text);
    bool DeclareMonitor(const std::string& output, const std::string& text);
    bool DeclareAutoMixer(const std::string& channels, const std::string& text);

    // A source, "parameter" of this device or "DEVICE*parameter"; null when there is none. Its value is 0
    // then.
    const Parameter* Source(const std::string& source) const;
    float SourceValue(const std::string& source) const;
    void Move(Parameter& parameter, std::uint32_t elapsed);
    static float NextReduction(const Parameter& parameter, std::uint32_t elapsed);
    float MixedLevel(const Parameter& parameter) const;
    float MonitorLevel(const Monitor& monitor) const;
    void ShareGain(const std::shared_ptr<SharedGain>& shared, std::uint32_t elapsed) const;
    float GainThrough(const std::vector<std::string>& stages) const;

    std::vector<std::unique_ptr<Parameter>> parameters_; // in order of declaration; addresses stay valid
    std::vector<std::string> keywords_;
    std::unordered_map<std::string, Parameter*> byKeyword_;
    DWORD lastTick_;
    std::uint64_t time_ = 0; // milliseconds of simulation
};
