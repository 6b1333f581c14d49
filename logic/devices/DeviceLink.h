// The conversation with a real device: which of its parameters are read, when values that are set are sent
// and when they count as taken, and what is known of the device. It runs on the thread that has the network
// and hears of time and of what arrives by calls; what it sends and finds out goes to its owner. A protocol
// is a link of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace logic {

using Milliseconds = std::uint64_t; // of a clock that only rises and does not begin at 0

// Only a live device is there for sure.
enum class DeviceState {
    Unknown = 1, // has never answered
    Live,
    Stale,   // silent for some seconds
    Lost,    // silent for longer; what waited was dropped
    Off,     // switched off here
    Refused, // something else answers in its place
    Open     // answers nothing by nature
};

// Of a value, as long as its device is live; otherwise the state of the device says more.
enum class ParameterState {
    Unknown = 1, // no value has come yet
    Pending,     // a value that was set waits, or is not confirmed yet
    Live,
    Unconfirmed, // a value that was set was never confirmed
    Stale,       // it is not answered
    Sent = 9     // sent to a device that answers nothing
};

// A number in the parameter's unit, or a text in Windows-1252.
struct LinkValue {
    float number = 0;
    std::string text;

    bool operator==(const LinkValue&) const = default;
};

struct ParameterUpdate {
    ParameterState state = ParameterState::Unknown;
    std::uint32_t life = 0;   // of the device in which the value came, 0: none came
    std::uint32_t serial = 0; // of the last set that is taken account of
    Milliseconds heard = 0;   // when the value last came
    LinkValue value;          // while pending the one that was set
};

struct DeviceUpdate {
    DeviceState state = DeviceState::Unknown;
    std::uint32_t life = 0; // counts how often the device became live
    Milliseconds since = 0; // of the state
    Milliseconds heard = 0; // when something last came, 0: never
    std::string model;      // as it says itself
    std::uint32_t unconfirmed = 0;
};

// What a link does to its surroundings.
class LinkOwner {
public:
    virtual void Send(std::string_view bytes) = 0;
    virtual void Tell(std::size_t parameter, const ParameterUpdate& update) = 0;
    virtual void Tell(const DeviceUpdate& update) = 0;
    virtual void Trace(const std::string& text) = 0; // a line, without its end

protected:
    ~LinkOwner() = default;
};

// A value that is set, limited to the range of its parameter.
struct LinkSetting {
    std::size_t parameter = 0;
    LinkValue value;
    std::uint32_t serial = 0; // rises with each set of the device
    bool isOwed = false;      // is sent however late; others are dropped when the device is lost
};

// Blocks are no affair of a link: parameters here are those that have a value of their own.
class DeviceLink {
public:
    virtual ~DeviceLink() = default;

    // The parameters that are wanted from now on, in rising order.
    virtual void Want(const std::vector<std::size_t>& parameters, Milliseconds now) = 0;
    // Somebody asks for one: it is wanted for a while.
    virtual void Ask(std::size_t parameter, Milliseconds now) = 0;
    virtual void Set(const LinkSetting& setting, Milliseconds now) = 0;
    // Off: nothing is sent or heard any more.
    virtual void Switch(bool isOn, Milliseconds now) = 0;
    // What came from the device, and from nobody else.
    virtual void Receive(std::string_view bytes, Milliseconds now) = 0;
    // Does what is due. Answers when it is to be called again at the latest.
    virtual Milliseconds Step(Milliseconds now) = 0;
    // Sends what waits to be sent, whatever it waits for: the link ends.
    virtual void Finish(Milliseconds now) = 0;
};

} // namespace logic
