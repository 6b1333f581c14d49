// The conversation with a device that speaks Open Sound Control over datagrams. Datagrams are lost, doubled
// and overtaken, and a device says nothing when it goes or is started anew: all that is known comes from what
// it says, and from its silence.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "logic/devices/Agenda.h"
#include "logic/devices/DeviceLink.h"
#include "logic/devices/osc/DeviceProfile.h"
#include "logic/devices/osc/Osc.h"

namespace logic {

class OscLink : public DeviceLink {
public:
    // What happens when, in milliseconds.
    static constexpr Milliseconds HELLO_EVERY = 1000;
    static constexpr Milliseconds HELLO_WHEN_SILENT = 900; // while live
    static constexpr Milliseconds HELLO_WHEN_REFUSED = 5000;
    static constexpr Milliseconds HELLO_WHEN_LONG_LOST = 3000;
    static constexpr Milliseconds LONG_LOST = 60'000;
    static constexpr Milliseconds STALE_AFTER = 2500;
    static constexpr Milliseconds LOST_AFTER = 10'000;
    static constexpr Milliseconds READ_PATIENCE = 400;
    static constexpr int READ_TRIES = 3;
    static constexpr Milliseconds WRITE_EVERY = 25; // of one parameter
    static constexpr Milliseconds CHECK_AFTER = 50;
    static constexpr Milliseconds CHECK_PATIENCE = 250;
    static constexpr int WRITE_TRIES = 3;
    static constexpr Milliseconds FIRST_READ_PATIENCE = 1000; // of a write that waits for it
    static constexpr Milliseconds LONGEST_WAIT = 10'000;      // of a write
    static constexpr Milliseconds SWEEP_PERIOD = 10'000;
    static constexpr Milliseconds METERS_PATIENCE = 1000;
    static constexpr Milliseconds ASKED_FOR = 10'000;

    // The value that is sent for one that is set; nothing when there is none, or it cannot be set.
    static std::optional<OscValue> WireOf(const DeviceProfile& profile, std::size_t parameter,
                                          const LinkValue& value);

    // The owner must live as long. The name stands in front of what is traced.
    OscLink(std::shared_ptr<const DeviceProfile> profile, std::string name, LinkOwner& owner,
            Milliseconds now);

    void Want(const std::vector<std::size_t>& parameters, Milliseconds now) override;
    void Ask(std::size_t parameter, Milliseconds now) override;
    void Set(const LinkSetting& setting, Milliseconds now) override;
    void Switch(bool isOn, Milliseconds now) override;
    void Receive(std::string_view datagram, Milliseconds now) override;
    Milliseconds Step(Milliseconds now) override;
    void Finish(Milliseconds now) override;

private:
    // A value as it travels: a number, or a text.
    struct Wire {
        double number = 0;
        std::string text;

        bool operator==(const Wire&) const = default;
    };
    // An address of the device. Several parameters may show what it holds, each by its own law.
    struct Cell {
        std::size_t parameter = 0; // the first of them
        std::uint32_t wanted = 0;  // of how many
        std::uint32_t life = 0;    // in which its value came, 0: none came
        std::uint32_t serial = 0;  // of the last set
        Milliseconds heard = 0;    // when the value came
        Milliseconds written = 0;  // when something was last written
        Wire wire;
        std::uint8_t tries = 0; // reads without an answer
        bool isQueued = false;  // to be read
        bool isSwept = false;   // the outstanding read is one of the sweep
        bool isSilent = false;  // does not answer
        bool isUnconfirmed = false;
        bool isTold = false;    // that it does not answer
        bool isTrigger = false; // is written only
    };
    enum class Phase {
        Unread,   // waits for the first read
        Queued,   // to be sent
        Sent,     // to be read back
        ReadBack, // the read is under way
    };
    struct Write {
        std::size_t parameter = 0;
        LinkValue value;
        OscValue sent;
        Wire wire;
        Milliseconds asked = 0;
        bool isOwed = false;
        Phase phase = Phase::Queued;
        int tries = 0;
        std::optional<Wire> before; // what the device held
        std::vector<Wire> older;    // what it was sent before this
        std::optional<Wire> echo;   // one of these came after all
    };
    // Of a parameter that is sent and nothing else; each one counts.
    struct Shot {
        std::size_t cell = 0;
        std::size_t parameter = 0;
        OscValue sent;
        Milliseconds asked = 0;
        bool isOwed = false;
    };
    struct Block { // of meters
        std::uint32_t wanted = 0;
        Milliseconds renewal = 0;
        Milliseconds heard = 0;
        bool isStale = false;
        std::multimap<std::size_t, std::size_t> parameters; // by their places in the block
    };

    const ProfileParameter& Parameter(std::size_t parameter) const { return profile_->parameters[parameter]; }
    const ParameterLaw& Law(std::size_t parameter) const { return profile_->laws[Parameter(parameter).law]; }
    std::string Named(std::size_t parameter) const { return name_ + "*" + Parameter(parameter).name; }
    bool IsLive() const { return state_ == DeviceState::Live; }
    bool IsRead(const Cell& cell) const { return cell.life == life_ && life_ != 0; }

    // OscLink.cpp: the device
    void Enter(DeviceState state, Milliseconds now);
    void BecomeLive(Milliseconds now);
    void Watch(Milliseconds now);
    void SendControls(Milliseconds now);
    Milliseconds NextHello() const;
    bool SendMessage(std::string_view address, std::span<const OscValue> arguments = {});
    void TakeHello(const OscMessage& message, Milliseconds now);
    void HeardSomething(Milliseconds now);
    void TellDevice();

    // OscReading.cpp: what is read
    void ChangeWanted(std::size_t parameter, int by, Milliseconds now);
    bool IsWanted(std::size_t cell) const { return wanted_.contains(cell); }
    void QueueRead(std::size_t cell, bool isFirst);
    void ReadAll();
    void SendRead(std::size_t cell, bool isSweep, Milliseconds patience, Milliseconds now);
    void SendReads(Milliseconds now);
    void EndRead(Cell& cell, std::size_t number);
    void ReadTimedOut(std::size_t cell, Milliseconds now);
    Milliseconds SweepEvery() const;
    void TakeMessage(const OscMessage& message, Milliseconds now);
    void TakeValue(std::size_t cell, const OscArgument& argument, Milliseconds now);
    void Keep(std::size_t cell, Wire wire, Milliseconds now);
    void TakeMeters(std::size_t block, std::string_view blob, Milliseconds now);
    void MetersFellSilent(std::size_t block, Milliseconds now);
    void Tell(std::size_t cell);
    void TellMeter(std::size_t parameter, ParameterState state, float value, Milliseconds heard);
    LinkValue ValueOf(std::size_t parameter, const Wire& wire) const;
    bool IsSame(std::size_t parameter, const Wire& one, const Wire& other) const;
    float Limited(std::size_t parameter, float value) const;

    // OscWriting.cpp: what is written
    void SendWrites(Milliseconds now);
    void SendWrite(std::size_t cell, Write& write, Milliseconds now);
    void Shoot(const LinkSetting& setting, OscValue sent, Milliseconds now);
    void QueueWrite(std::size_t cell, Write& write, Milliseconds now);
    void FirstRead(std::size_t cell, Milliseconds now);
    enum class Judgement { Taken, SentAgain, Waits };
    Judgement JudgeReadBack(std::size_t cell, const Wire& wire, Milliseconds now);
    void ReadBackTimedOut(std::size_t cell, Milliseconds now);
    void FirstReadTimedOut(std::size_t cell, Milliseconds now);
    void GiveUp(std::size_t cell);
    bool IsHeld(std::size_t parameter, const Wire& held, const OscValue& sent) const;
    void DropAll() {
        DropWrites([](Milliseconds) { return true; });
    }
    void EndWrite(std::size_t cell);
    void HoldWrites();
    void ReleaseWrites(Milliseconds now);
    void DropWrites(const std::function<bool(Milliseconds asked)>& isDropped);

    const std::shared_ptr<const DeviceProfile> profile_;
    const std::string name_;
    LinkOwner& owner_;

    DeviceState state_ = DeviceState::Unknown;
    std::uint32_t life_ = 0;
    Milliseconds since_;
    Milliseconds heard_ = 0;
    std::string model_;
    std::uint32_t unconfirmed_ = 0;
    std::optional<Milliseconds> hello_;     // when it was last sent
    Milliseconds keep_ = 0;                 // when it is due
    std::array<std::uint32_t, 6> faults_{}; // datagrams dropped, by OscFault

    TokenBucket bucket_;
    TokenBucket controls_; // their part of it

    std::vector<Cell> cells_;
    std::vector<std::optional<std::size_t>> cellOf_; // of parameters
    std::vector<std::size_t> next_;                  // parameter of the same cell; itself: the last
    std::unordered_map<std::string_view, std::size_t> byAddress_;
    std::vector<Block> blocks_;
    std::vector<bool> bound_;      // parameters that are wanted until further notice
    Agenda asked_;                 // those that are wanted for a while
    std::set<std::size_t> wanted_; // cells that are read
    std::deque<std::size_t> reads_;
    Agenda outstanding_;
    std::size_t sweptLast_ = 0;
    Milliseconds sweep_ = 0; // when the next one is due

    std::map<std::size_t, Write> writes_; // by cell
    Agenda queued_;
    Agenda checks_;
    Agenda firstReads_; // the end of patience
    std::deque<Shot> shots_;
    std::vector<OscMessage> messages_;
};

} // namespace logic
