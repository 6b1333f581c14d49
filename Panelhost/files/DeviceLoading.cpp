#include "Panelhost/files/DeviceLoading.h"

#include "Panelhost/Trace.h"
#include "Panelhost/devices/simulated/SimulatedDevice.h"
#include "Panelhost/files/LineFile.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace {

constexpr const DeviceKind* KINDS[] = {&SIMULATED_DEVICES};

bool DeclareDevice(PanelRoot& root, const std::string& name, std::string_view text) {
    const std::string_view word = text.substr(0, text.find(','));
    const auto kind = std::find_if(std::begin(KINDS), std::end(KINDS),
                                   [&](const DeviceKind* known) { return known->word == word; });
    auto device = kind == std::end(KINDS) ? nullptr : (*kind)->create(text);
    if (device == nullptr || !device->Register(&root, name.c_str())) {
        return false;
    }
    device.release()->deviceKind = *kind; // the root owns it now
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
            (isDevice ? DeclareDevice(root, name, parts.value) : DeclareParameter(root, name, parts));
        if (understood) {
            devices += isDevice ? 1 : 0;
        } else {
            ++root.loadErrors;
            EDITTRACE(&root, "Error reading line %s", line.c_str());
        }
    }
    return file.HasFailed() ? -1 : devices;
}
