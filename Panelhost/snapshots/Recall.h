#pragma once

#include "Panelhost/Devices.h"
#include "Panelhost/Snapshots.h"
#include "logic/devices/Fade.h"
#include "logic/devices/SnapshotFile.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// Sets parameters of devices to the values of a snapshot, at once or over some time, and sees to it that the
// devices hold them. All of it happens in ticks of the panel; nothing is sent to a device that is not live.
class Recall {
public:
    explicit Recall(HOSTINFO& root) : root_(root) {}

    // How many values are on their way or have arrived. Values of an earlier recall that are still on their
    // way go on, unless they are named again. The name is for the trace.
    int Start(const std::vector<logic::SnapshotValue>& values, int milliseconds, const std::string& name);
    // How many were still on their way.
    int Stop();
    void Tick();
    void Clear();
    std::vector<RECALLEDVALUE> List() const;
    bool IsUnderWay() const { return !underWay_.empty(); }
    // Somebody sets a parameter, given by its request item: it is left to them.
    void Overtake(const REQUESTITEM& item);
    // The device goes: what is on its way to it ends.
    void Leave(const HOSTINFO* device);

private:
    enum class Phase {
        Waits, // for the value to start from
        Moves,
        Settles // the last value was set
    };
    struct Value {
        RECALLEDVALUE report;
        REQUESTITEM item;
        DEVICE* device = nullptr;
        const char* keyword = nullptr; // in its address
        logic::FadeScale scale;
        logic::Fade fade;
        float target = 0;
        float held = 0; // by the device, after it was last set
        Phase phase = Phase::Settles;
        int tries = 0;
        std::uint64_t patience = 0; // when it is over
    };
    using Values = std::vector<std::shared_ptr<Value>>;
    struct DeviceNow {
        const DEVICE* device;
        std::string objection; // why nothing can be sent to it
        double distances = 0;
        unsigned rate = 0;
    };

    bool Admit(Value& value);
    DeviceNow& Now(DEVICE& device);
    bool Get(const Value& value, float& number) const;
    bool Set(Value& value, float number);
    bool SetTarget(Value& value);
    void Begin(Value& value, std::uint64_t now);
    void Step(Value& value, std::uint64_t now);
    void Move(Value& value);
    void Settle(Value& value, std::uint64_t now);
    void Again(Value& value, const std::string& why);
    static void End(Value& value, int state, const std::string& why = {});
    bool IsOvertaken(const Value& value, int state) const;
    void Finish();

    HOSTINFO& root_;
    Values values_;   // of the report
    Values underWay_; // those of them that are not done
    std::vector<DeviceNow> devices_;
    std::string name_;
    std::uint32_t duration_ = 0;
    std::uint64_t time_ = 0;     // of the fades, milliseconds; it stands still while the panel does
    std::uint64_t lastTick_ = 0; // tick count
    bool isSending_ = false;
};
