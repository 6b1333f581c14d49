#include "Panelhost/files/DeviceLoading.h"

#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/Trace.h"
#include "Panelhost/devices/osc/OscDevice.h"
#include "Panelhost/devices/simulated/SimulatedDevice.h"
#include "Panelhost/files/LineFile.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace {

constexpr const DeviceKind* KINDS[] = {&SIMULATED_DEVICES, &OSC_DEVICES};

bool ReadLines(const std::string& path, const std::function<std::string(std::string_view line)>& take) {
    LineFile file(path);
    std::string line;
    bool usable = false;
    while (file.IsOpen() && file.Next(line, usable)) {
        const std::string fault = usable ? take(line) : "The line is too long or damaged";
        if (!fault.empty()) {
            TRACE("%s\n", fault.c_str());
        }
    }
    return file.IsOpen() && !file.HasFailed();
}

void Fault(PanelRoot& root, const std::string& what) {
    TRACE("%s\n", what.c_str());
    root.deviceFaults.push_back(what);
}

bool DeclareDevice(PanelRoot& root, const std::string& name, std::string_view text,
                   const ReadDeviceLines& read) {
    const std::string_view word = text.substr(0, text.find(','));
    const auto kind = std::find_if(std::begin(KINDS), std::end(KINDS),
                                   [&](const DeviceKind* known) { return known->word == word; });
    std::string why;
    auto device = kind == std::end(KINDS) ? nullptr : (*kind)->create(text, read, why);
    if (device == nullptr) {
        Fault(root, name + ": " + (why.empty() ? "it cannot be declared" : why));
        return false;
    }
    if (!device->Register(&root, name.c_str())) {
        Fault(root, name + ": the name is none, or taken");
        return false;
    }
    device->deviceKind = *kind;
    if (device->OnInitialize(0, 0) == 0) {
        Fault(root, name + ": there are too many devices");
        return false;
    }
    device.release(); // the root owns it now
    return true;
}

bool DeclareParameter(PanelRoot& root, const std::string& name, const logic::PropertyLine& parts) {
    auto* device = dynamic_cast<DEVICE*>(root.Find(name));
    const std::string keyword(parts.keyword);
    if (device == nullptr || device->deviceKind == nullptr ||
        !device->deviceKind->declare(*device, keyword, std::string(parts.value))) {
        return false;
    }
    a_AnnounceFunction(&root, (device->name + "*" + keyword).c_str());
    return true;
}

} // namespace

int LoadDeviceFile(PanelRoot& root, const std::string& path) {
    root.loadErrors = 0;
    LineFile file(path);
    if (!file.IsOpen()) {
        root.deviceFaults.push_back("The device file " + path + " cannot be read");
        return -1;
    }
    const std::string folder = path.substr(0, path.find_last_of("\\/") + 1);
    const ReadDeviceLines read = [&](const std::string& name, const auto& take) {
        char profiles[MAX_PATH] = "";
        a_MakeFullPathName("Profiles\\", profiles);
        return ReadLines(folder + name, take) || ReadLines(profiles + name, take);
    };
    int devices = 0;
    std::string line;
    bool usable = false;
    while (file.Next(line, usable)) {
        if (usable && (line.empty() || line.front() == '#')) {
            continue;
        }
        const logic::PropertyLine parts = logic::SplitPropertyLine(line);
        const std::string name(parts.object);
        const bool isDevice = parts.keyword == "device";
        const bool understood =
            usable && parts.hasEquals &&
            (isDevice ? DeclareDevice(root, name, parts.value, read) : DeclareParameter(root, name, parts));
        if (understood) {
            devices += isDevice ? 1 : 0;
        } else {
            ++root.loadErrors;
            EDITTRACE(&root, "Error reading line %s", line.c_str());
        }
    }
    return file.HasFailed() ? -1 : devices;
}
