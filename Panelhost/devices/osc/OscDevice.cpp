#include "Panelhost/devices/UdpConnection.h" // has winsock2.h, which refuses to stand behind windows.h

#include "Panelhost/devices/osc/OscDevice.h"

#include "Panelhost/devices/RemoteDevice.h"
#include "logic/devices/Fade.h"
#include "logic/devices/osc/OscLink.h"
#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <cctype>

namespace {

using Profile = std::shared_ptr<const logic::DeviceProfile>;

class OscConnection : public UdpConnection {
public:
    OscConnection(HWND window, const sockaddr_in& address, Profile profile, std::string name)
        : UdpConnection(window, address), profile_(std::move(profile)), name_(std::move(name)) {}

protected:
    std::unique_ptr<logic::DeviceLink> MakeLink(logic::Milliseconds now) override {
        return std::make_unique<logic::OscLink>(profile_, name_, *this, now);
    }

private:
    const Profile profile_;
    const std::string name_;
};

class OscDevice : public RemoteDevice {
public:
    OscDevice(const sockaddr_in& address, Profile profile) : address_(address), profile_(std::move(profile)) {
        for (const logic::ProfileParameter& parameter : profile_->parameters) {
            Declare(parameter);
        }
        DeclareOwn();
    }

protected:
    std::shared_ptr<LinkConnection> Connect() override {
        return std::make_shared<OscConnection>(window, address_, profile_, name);
    }
    bool CanBeSent(std::size_t parameter, const logic::LinkValue& value) const override {
        return logic::OscLink::WireOf(*profile_, parameter, value).has_value();
    }
    // A block's number can lie beyond its range.
    bool IsSame(std::size_t parameter, const logic::LinkValue& held,
                const logic::LinkValue& wanted) const override {
        const auto wire = [&](logic::LinkValue value) {
            const logic::ProfileParameter& declared = profile_->parameters[parameter];
            value.number = logic::Clamp(value.number, declared.minimum, declared.maximum);
            return logic::OscLink::WireOf(*profile_, parameter, value);
        };
        const auto sent = wire(wanted);
        const auto answered = wire(held);
        const auto* number = sent ? std::get_if<float>(&*sent) : nullptr;
        const auto* other = answered ? std::get_if<float>(&*answered) : nullptr;
        return number != nullptr && other != nullptr
                   ? LawOf(parameter).IsSame(static_cast<double>(*number), static_cast<double>(*other),
                                             RangeOf(parameter))
                   : sent && sent == answered;
    }
    bool IsTrigger(std::size_t parameter) const override { return LawOf(parameter).IsTrigger(); }
    logic::FadeScale ScaleOf(std::size_t parameter) const override {
        const logic::ProfileParameter& declared = profile_->parameters[parameter];
        return {declared.type, declared.minimum, declared.maximum, LawOf(parameter)};
    }
    unsigned OnWriteRate() override { return profile_->rate; }

private:
    const logic::ParameterLaw& LawOf(std::size_t parameter) const {
        return profile_->laws[profile_->parameters[parameter].law];
    }
    float RangeOf(std::size_t parameter) const {
        return profile_->parameters[parameter].maximum - profile_->parameters[parameter].minimum;
    }

    const sockaddr_in address_;
    const Profile profile_;
};

// A dotted address, or `localhost`: looking a name up could take long.
bool ReadAddress(std::string_view text, sockaddr_in& address) {
    const std::size_t colon = std::min(text.find(':'), text.size());
    const std::string_view host = logic::TrimBlanks(text.substr(0, colon));
    if (colon < text.size()) {
        const auto port = logic::ParseWholeInteger(text.substr(colon + 1));
        if (!port || *port < 1 || *port > 65'535) {
            return false;
        }
        address.sin_port = htons(static_cast<u_short>(*port));
    }
    std::uint32_t number = 0;
    const auto fields = logic::SplitFields(host == "localhost" ? "127.0.0.1" : host, '.');
    for (const std::string_view field : fields) {
        const auto byte = logic::ParseWholeInteger(field);
        if (!byte || *byte < 0 || *byte > 255) {
            return false;
        }
        number = number << 8 | static_cast<std::uint32_t>(*byte);
    }
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(number);
    return fields.size() == 4 && number != 0;
}

bool IsProfileName(std::string_view name) {
    return !name.empty() && std::ranges::all_of(name, [](char character) {
        return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
               (character >= '0' && character <= '9') || character == '-' || character == '_';
    });
}

std::unique_ptr<DEVICE> Create(std::string_view text, const ReadDeviceLines& read, std::string& why) {
    const auto fields = logic::SplitFields(text, ',');
    sockaddr_in address{};
    if (fields.size() < 3 || !ReadAddress(fields[1], address)) {
        why = "the address is none";
        return nullptr;
    }
    const std::string name(logic::TrimBlanks(fields[2]));
    logic::RangeLimits limits;
    if (!IsProfileName(name) || !std::all_of(fields.begin() + 3, fields.end(), [&](std::string_view field) {
            return logic::ReadRangeLimits(field, limits);
        })) {
        why = "the profile or its ranges are none";
        return nullptr;
    }
    logic::DeviceProfileReader reader(limits);
    std::string fault;
    auto profile = read(name + ".profile", [&](std::string_view line) { return reader.Take(line); })
                       ? reader.Finish(fault)
                       : std::nullopt;
    if (!profile) {
        why = "the profile " + name + ".profile cannot be read" + (fault.empty() ? "" : ": " + fault);
        return nullptr;
    }
    if (address.sin_port == 0) {
        address.sin_port = htons(profile->port);
    }
    if (address.sin_port == 0) {
        why = "neither it nor its profile has a port";
        return nullptr;
    }
    return std::make_unique<OscDevice>(address,
                                       std::make_shared<const logic::DeviceProfile>(std::move(*profile)));
}

std::string DeclareLine(DEVICE&, const std::string&, const std::string&) {
    return "a device on the network has no lines of its own: all parameters come from its profile";
}

} // namespace

const DeviceKind OSC_DEVICES{"osc", Create, DeclareLine, "Device on the network (OSC over UDP)",
                             "device=osc,{address}:{port},{profile}\n"};
