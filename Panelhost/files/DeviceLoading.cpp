#include "Panelhost/files/DeviceLoading.h"

#include "Panelhost/Messages.h"
#include "Panelhost/Trace.h"
#include "Panelhost/files/DeviceReading.h"
#include "Panelhost/objects/RequestAddress.h"
#include "logic/text/PropertyLine.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace {

// What is wrong with a file, told as it is found out.
class Faults {
public:
    explicit Faults(PanelRoot& root) : root_(root) {}

    void Take(const std::string& line, const std::string& why) {
        ++count_;
        const logic::PropertyLine parts = logic::SplitPropertyLine(line);
        if (parts.keyword == "device") {
            const std::string& what = ofDevices_.emplace_back(std::string(parts.object) + ": " + why);
            TRACE("%s\n", what.c_str());
        }
        EDITTRACE(&root_, "Error reading line %s", line.c_str());
    }
    void Enter() {
        root_.loadErrors = count_;
        root_.deviceFaults.splice(root_.deviceFaults.end(), ofDevices_);
    }

private:
    PanelRoot& root_;
    int count_ = 0;
    std::list<std::string> ofDevices_;
};

// The panel has the device from now on; why not, otherwise.
std::string Enter(PanelRoot& root, DeviceDraft& draft) {
    if (!draft.device->Register(&root, draft.name.c_str())) {
        return "the name is taken";
    }
    if (draft.device->OnInitialize(0, 0) == 0) {
        return "there are too many devices";
    }
    draft.device.release(); // the root owns it now
    return {};
}

// Objects that anything may end while others are told something.
class Concerned {
public:
    void Add(const std::vector<HOSTINFO*>& objects) {
        for (HOSTINFO* object : objects) {
            if (known_.insert(object).second) {
                objects_.emplace_back(object, a_LifeOf(object));
            }
        }
    }
    // They look at once what has become of what they are bound to.
    void Tell() const {
        for (const auto& [object, life] : objects_) {
            if (a_LifeOf(object) == life) {
                object->OnInterfaceworking(a_WhyNotLive(object).empty() ? 1 : 0, 0);
            }
        }
    }

private:
    std::vector<std::pair<HOSTINFO*, unsigned>> objects_;
    std::unordered_set<const HOSTINFO*> known_;
};

std::string FolderOf(const std::string& path) {
    return path.substr(0, path.find_last_of("\\/") + 1);
}

// Those of the devices there are that a file declares with the same lines stay, in place of their drafts.
class Replacement {
public:
    Replacement(PanelRoot& root, std::vector<DeviceDraft>& drafts) : root_(root), drafts_(drafts) {
        std::unordered_map<std::string, DeviceDraft*> byName;
        for (DeviceDraft& draft : drafts) {
            byName[draft.name] = &draft;
        }
        for (HOSTINFO* object : root.Devices()) {
            auto* device = dynamic_cast<DEVICE*>(object);
            if (device == nullptr || device->deviceKind == nullptr) {
                continue; // of somebody else
            }
            const auto found = byName.find(device->name);
            if (found != byName.end() && found->second->device->lines == device->lines) {
                found->second->device.reset();
                stays_[found->second] = device;
            } else {
                concerned_.Add(root.bindings.BoundTo(device));
                goes_.push_back(device);
            }
        }
    }

    int Run(const std::function<void(const DeviceDraft& draft, const std::string& why)>& refuse) {
        for (DEVICE* device : goes_) {
            delete device;
        }
        std::vector<DEVICE*> order;
        for (DeviceDraft& draft : drafts_) {
            if (draft.device == nullptr) {
                order.push_back(stays_.at(&draft));
                continue;
            }
            DEVICE* device = draft.device.get();
            concerned_.Add(root_.bindings.WaitingFor(draft.name));
            if (const std::string why = Enter(root_, draft); why.empty()) {
                order.push_back(device);
            } else {
                draft.device.reset();
                refuse(draft, why);
            }
        }
        root_.ArrangeDevices(order);
        return static_cast<int>(order.size());
    }
    // Once it has run.
    void Tell() const { concerned_.Tell(); }

private:
    PanelRoot& root_;
    std::vector<DeviceDraft>& drafts_;
    std::unordered_map<const DeviceDraft*, DEVICE*> stays_;
    std::vector<DEVICE*> goes_;
    Concerned concerned_;
};

// Those that waited for the device are told of the first of their parameters: they look at all of them then.
void TellOfFunctions(const DEVICE& device, const std::vector<HOSTINFO*>& waiting) {
    for (HOSTINFO* object : waiting) {
        if (!a_IsAlive(object) || !a_IsAlive(&device)) {
            continue;
        }
        const auto item = std::ranges::find(object->requests, &device, &REQUESTITEM::device);
        if (item != object->requests.end()) {
            TellOfFunction(object, std::string(item->address->text).c_str());
        }
    }
}

// Whoever has a name that a reload does not take away.
DeviceReading::Elsewhere OtherThanOfFiles(PanelRoot* root) {
    return [root](const std::string& name) {
        HOSTINFO* found = root == nullptr ? nullptr : root->Find(name);
        const auto* device = dynamic_cast<DEVICE*>(found);
        return device != nullptr && device->deviceKind != nullptr ? nullptr : found;
    };
}

} // namespace

int LoadDeviceFile(PanelRoot& root, const std::string& path) {
    root.loadErrors = 0;
    LineFile file(path);
    if (!file.IsOpen()) {
        root.deviceFaults.push_back("The device file " + path + " cannot be read");
        return -1;
    }
    Faults faults(root);
    DeviceReading reading(
        FolderOf(path), [&](const std::string& name) { return root.Find(name); },
        [&](const std::string& line, const std::string& why) { faults.Take(line, why); });
    reading.Read(file);
    int devices = 0;
    std::vector<DeviceDraft> drafts = reading.TakeDrafts();
    for (DeviceDraft& draft : drafts) {
        file.Location().SetLine(draft.line);
        const std::vector<HOSTINFO*> waiting = root.bindings.WaitingFor(draft.name);
        const DEVICE* device = draft.device.get();
        if (const std::string why = Enter(root, draft); why.empty()) {
            ++devices;
            TellOfFunctions(*device, waiting);
        } else {
            faults.Take(draft.text, why);
        }
    }
    faults.Enter();
    return file.HasFailed() ? -1 : devices;
}

int ReloadDeviceFile(PanelRoot& root, const std::string& path) {
    if (root.opening.IsUnderWay()) {
        return -1;
    }
    const PanelRoot::Held held(root);
    Faults faults(root);
    std::vector<DeviceDraft> drafts;
    LineFile file(path);
    if (!path.empty()) {
        DeviceReading reading(
            FolderOf(path), OtherThanOfFiles(&root),
            [&](const std::string& line, const std::string& why) { faults.Take(line, why); });
        if (file.IsOpen()) {
            reading.Read(file);
        }
        if (!file.IsOpen() || file.HasFailed()) {
            TRACE("The device file %s cannot be read\n", path.c_str());
            return -1;
        }
        drafts = reading.TakeDrafts();
    }
    Replacement replacement(root, drafts);
    root.deviceFaults.clear();
    const int devices = replacement.Run([&](const DeviceDraft& draft, const std::string& why) {
        file.Location().SetLine(draft.line);
        faults.Take(draft.text, why);
    });
    faults.Enter();
    replacement.Tell();
    return devices;
}

void CheckDeviceText(
    PanelRoot* root, const std::string& path, LineSource& source,
    const std::function<void(std::size_t line, const std::string& text, const std::string& why)>& refuse) {
    DeviceReading reading(
        FolderOf(path), OtherThanOfFiles(root),
        [&](const std::string& line, const std::string& why) { refuse(source.LineNumber(), line, why); });
    reading.Read(source);
}
