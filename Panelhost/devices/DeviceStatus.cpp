// What is known of the devices under a root, in words too.

#include "Panelhost/Devices.h"
#include "Panelhost/objects/PanelRoot.h"
#include "Panelhost/objects/RequestAddress.h"
#include "base/Guard.h"

#include <string>

namespace {

// "4 s", "3 min", "2 h"
std::string DurationText(DWORD milliseconds) {
    constexpr DWORD minute = 60;
    constexpr DWORD hour = 60 * minute;
    const DWORD seconds = milliseconds / 1000;
    return seconds < 2 * minute ? std::to_string(seconds) + " s"
           : seconds < 2 * hour ? std::to_string(seconds / minute) + " min"
                                : std::to_string(seconds / hour) + " h";
}

std::string For(DWORD milliseconds) {
    return milliseconds == NO_AGE ? "" : " for " + DurationText(milliseconds);
}

const char* WhyParameterIsNotLive(int state) {
    switch (state) {
    case PARAMETER_LIVE:
    case PARAMETER_PENDING:
        return "";
    case PARAMETER_NONE:
        return "not there";
    case PARAMETER_UNKNOWN:
        return "no value yet";
    case PARAMETER_UNCONFIRMED:
        return "not confirmed";
    case PARAMETER_STALE:
        return "does not answer";
    case PARAMETER_SENT:
        return "sent, without an answer";
    default:
        return "cannot be reached";
    }
}

std::string WhyNotLive(const REQUESTITEM& item) {
    if (item.target != nullptr) {
        return {}; // a control
    }
    const std::string address = item.address != nullptr ? item.address->text : std::string();
    auto* device = IsThere(item) ? dynamic_cast<DEVICE*>(item.device) : nullptr;
    if (device == nullptr) {
        return item.handler != nullptr && item.device == nullptr ? "" : address + ": not there";
    }
    DWORD age = NO_AGE;
    const char* keyword = address.c_str() + address.rfind('*') + 1; // all of it without one
    const std::string why = WhyParameterIsNotLive(device->OnParameterState(keyword, &age));
    if (why.empty()) {
        return {}; // some can be reached even while the device cannot
    }
    const std::string ofDevice = a_WhyNotLive(device->OnStatus());
    return ofDevice.empty() ? address + ": " + why : device->name + ": " + ofDevice;
}

std::string WhyNotLive(const REQUESTLIST& requests) {
    for (const REQUESTITEM& item : requests) {
        if (std::string why = WhyNotLive(item); !why.empty()) {
            return why;
        }
    }
    return {};
}

} // namespace

std::list<std::pair<std::string, DEVICESTATUS>> a_ListDevices(HOSTINFO* root) {
    std::list<std::pair<std::string, DEVICESTATUS>> list;
    if (const PanelRoot* panel = PanelRoot::From(root); panel != nullptr) {
        Guarded([&] {
            for (HOSTINFO* object : panel->Devices()) {
                if (auto* device = dynamic_cast<DEVICE*>(object); device != nullptr) {
                    list.emplace_back(device->name, device->OnStatus());
                }
            }
        });
    }
    return list;
}

int a_CountNotLive(HOSTINFO* root) {
    int count = 0;
    if (const PanelRoot* panel = PanelRoot::From(root); panel != nullptr) {
        for (HOSTINFO* object : panel->Devices()) {
            auto* device = dynamic_cast<DEVICE*>(object);
            count += device != nullptr && device->OnStatus().state != DEVICE_LIVE ? 1 : 0;
        }
    }
    return count;
}

std::string a_WhyNotLive(const DEVICESTATUS& status) {
    return Guarded(std::string(), [&]() -> std::string {
        switch (status.state) {
        case DEVICE_LIVE:
            return "";
        case DEVICE_UNKNOWN:
            return "no answer yet" + For(status.since);
        case DEVICE_OFF:
            return "switched off";
        case DEVICE_REFUSED:
            return "something else answers";
        case DEVICE_OPEN:
            return "answers nothing";
        default:
            return "nothing heard" + For(status.silent);
        }
    });
}

std::string a_WhyNotLive(const HOSTINFO* object) {
    return Guarded(std::string(), [&] {
        const PanelRoot* root = PanelRoot::Above(object);
        if (root == nullptr) {
            return std::string();
        }
        std::string why = WhyNotLive(object->requests);
        for (const Bindings::FurtherList& list : root->bindings.FurtherLists(object)) {
            why = why.empty() ? WhyNotLive(*list.requests) : why;
        }
        return why;
    });
}

std::list<std::string> a_DeviceFaults(HOSTINFO* root) {
    const PanelRoot* panel = PanelRoot::From(root);
    return panel == nullptr ? std::list<std::string>()
                            : Guarded(std::list<std::string>(), [panel] { return panel->deviceFaults; });
}
