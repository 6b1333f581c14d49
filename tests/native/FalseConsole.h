// A device and a network that exist in the test only, with a clock that the test moves.
#pragma once

#include "logic/devices/osc/OscLink.h"
#include "logic/text/Numbers.h"
#include "tests/native/Tables.h"

#include <functional>
#include <map>
#include <memory>

// What a link finds out, as the panel sees it.
struct Panel : logic::LinkOwner {
    struct Seen {
        logic::ParameterUpdate update;
        int tellings = 0;
    };

    void Send(std::string_view bytes) override { send(std::string(bytes)); }
    void Tell(std::size_t parameter, const logic::ParameterUpdate& update) override {
        Seen& one = seen[parameter];
        one.update = update;
        ++one.tellings;
    }
    void Tell(const logic::DeviceUpdate& update) override { device = update; }
    void Trace(const std::string& text) override { traces.push_back(text); }

    std::function<void(std::string)> send;
    std::map<std::size_t, Seen> seen;
    logic::DeviceUpdate device;
    std::vector<std::string> traces;
};

// A link with a device behind it that answers reads, takes writes, and may misbehave.
class FalseConsole {
public:
    static constexpr const char* HEAD[] = {"profile=osc,1",
                                           "hello=/hi,/hi,0,Mixer",
                                           "window=4",
                                           "rate=200",
                                           "keep=/keep,3000",
                                           "range*c=1,200",
                                           "law*plain=f,same",
                                           "law*unit=f,linear,100,0,100",
                                           "law*whole=i,same",
                                           "law*not=i,not",
                                           "law*text=s,same",
                                           "law*go=i,same,trigger",
                                           "law*show=f,amplitude",
                                           "meters*m=/meters,/meters/1,5000,/meters/1,f32",
                                           "p{c}=float,0,100,,/p/{c},plain",
                                           "step=float,0,100,,/step,unit",
                                           "on=integer,0,1,,/on,whole",
                                           "mute=integer,0,1,,/on,not",
                                           "name=text,,12,,/name,text",
                                           "go=integer,0,9,,/go,go",
                                           "seen=float,0,1,,/seen,plain,read",
                                           "level{c}=float,-90,18,,meters:m:{c-1},show"};

    // With further lines of its profile.
    explicit FalseConsole(const std::vector<std::string>& more = {}) {
        logic::DeviceProfileReader reader;
        for (const std::string line : HEAD) {
            REQUIRE(reader.Take(line).empty());
        }
        for (const std::string& line : more) {
            REQUIRE(reader.Take(line).empty());
        }
        std::string why;
        profile = std::make_shared<const logic::DeviceProfile>(reader.Finish(why).value());
        panel.send = [this](std::string datagram) {
            sent.emplace_back(now, datagram);
            Pass(std::move(datagram), true);
        };
        link = std::make_unique<logic::OscLink>(profile, "FOH", panel, now);
    }

    std::size_t Number(const std::string& name) const { return profile->Find(name).value(); }
    // "live 5", as a control would have it; the number of a text is its length.
    std::string Shown(const std::string& name) {
        static constexpr const char* states[] = {"none",  "unknown", "pending", "live", "unconfirmed",
                                                 "stale", "",        "",        "",     "sent"};
        const auto& update = panel.seen[Number(name)].update;
        auto state = update.state;
        if (state == logic::ParameterState::Live && update.life != panel.device.life) {
            state = logic::ParameterState::Unknown;
        }
        return std::string(states[static_cast<int>(state)]) + " " +
               (update.value.text.empty() ? logic::FormatFloat(update.value.number) : update.value.text);
    }
    logic::DeviceState State() const { return panel.device.state; }
    int Traces(const std::string& text) const {
        int count = 0;
        for (const std::string& line : panel.traces) {
            count += line.find(text) != std::string::npos ? 1 : 0;
        }
        return count;
    }

    void Want(const std::vector<std::string>& names) {
        std::vector<std::size_t> numbers;
        for (const std::string& name : names) {
            numbers.push_back(Number(name));
        }
        link->Want(numbers, now);
        next = now;
    }
    void Set(const std::string& name, logic::LinkValue value, bool isOwed = false) {
        link->Set({Number(name), std::move(value), ++serial, isOwed}, now);
        next = now;
    }
    void Set(const std::string& name, float value) { Set(name, logic::LinkValue{value, {}}); }

    void Ask(const std::string& name) {
        link->Ask(Number(name), now);
        next = now;
    }
    void Switch(bool isOn) {
        link->Switch(isOn, now);
        next = now;
    }

    // Lets time go by, a millisecond at a time.
    void Run(logic::Milliseconds duration) {
        for (const logic::Milliseconds end = now + duration; now < end; ++now) {
            Deliver();
            if (now >= next) {
                next = link->Step(now);
            }
        }
        Deliver();
        next = link->Step(now);
    }
    // Another client changes something; who follows hears of it.
    void Move(const std::string& address, logic::OscValue value) {
        values[address] = value;
        Pass(logic::WriteOsc(address, std::span(&value, 1)).value(), false);
    }
    void Receive(std::string_view datagram) {
        link->Receive(datagram, now);
        next = now;
    }
    // How many datagrams with that address were sent so far; those that begin with it.
    int Sent(const std::string& address, bool isWrite) const {
        int count = 0;
        for (const auto& [time, datagram] : sent) {
            count += datagram.starts_with(address + '\0') && IsWrite(datagram) == isWrite ? 1 : 0;
        }
        return count;
    }
    static bool IsWrite(const std::string& datagram) {
        std::vector<logic::OscMessage> messages;
        return logic::ReadOsc(datagram, messages) == logic::OscFault::None && !messages[0].arguments.empty();
    }

    std::shared_ptr<const logic::DeviceProfile> profile;
    Panel panel;
    std::unique_ptr<logic::OscLink> link;
    logic::Milliseconds now = 1000;
    logic::Milliseconds next = 0;
    std::uint32_t serial = 0;

    // The device.
    std::map<std::string, logic::OscValue> values;
    bool isThere = true;
    bool echoes = false;                               // to the one who sets
    std::string model = "Mixer";                       // what it says it is
    std::function<bool(const std::string&)> isIgnored; // by address
    std::function<logic::OscValue(const std::string&, logic::OscValue)>
        stores; // in place of a value that is set
    // The network.
    logic::Milliseconds delay = 1;
    int lost = 0, doubled = 0, overtaken = 0; // per cent
    std::mt19937 random{1};
    std::vector<std::pair<logic::Milliseconds, std::string>> sent; // by the link, and when

private:
    struct Travelling {
        logic::Milliseconds arrival;
        bool isToDevice;
        std::string datagram;
    };

    void Pass(std::string datagram, bool isToDevice) {
        const int copies = Any(random, 1, 100) <= lost ? 0 : Any(random, 1, 100) <= doubled ? 2 : 1;
        for (int copy = 0; copy < copies; ++copy) {
            const bool isLate = Any(random, 1, 100) <= overtaken;
            under_.push_back({now + delay + (isLate ? 7 : 0), isToDevice, datagram});
        }
    }
    void Deliver() {
        for (std::size_t i = 0; i < under_.size();) {
            if (under_[i].arrival > now) {
                ++i;
                continue;
            }
            const Travelling one = under_[i];
            under_.erase(under_.begin() + static_cast<std::ptrdiff_t>(i));
            if (one.isToDevice) {
                Answer(one.datagram);
            } else {
                Receive(one.datagram);
            }
        }
    }
    void Answer(const std::string& datagram) {
        std::vector<logic::OscMessage> messages;
        REQUIRE(logic::ReadOsc(datagram, messages) == logic::OscFault::None);
        const std::string address(messages[0].address);
        if (!isThere || (isIgnored && isIgnored(address))) {
            return;
        }
        const auto say = [&](const logic::OscValue& value) {
            Pass(logic::WriteOsc(address, std::span(&value, 1)).value(), false);
        };
        const auto& arguments = messages[0].arguments;
        if (address == "/hi") {
            say(model);
        } else if (const auto value = values.find(address); value != values.end() && arguments.empty()) {
            say(value->second);
        } else if (value != values.end()) {
            using namespace logic;
            const OscArgument& argument = arguments[0];
            const OscValue given = argument.IsText()     ? OscValue(std::string(argument.text))
                                   : argument.tag == 'i' ? OscValue(static_cast<std::int32_t>(argument.whole))
                                                         : OscValue(static_cast<float>(argument.number));
            value->second = stores ? stores(address, given) : given;
            if (echoes) {
                say(value->second);
            }
        }
    }

    std::vector<Travelling> under_;
};
