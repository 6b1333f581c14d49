#include "Panelhost/files/DeviceLoading.h"

#include "Panelhost/Trace.h"
#include "Panelhost/devices/SimulatedDevice.h"
#include "Panelhost/files/LineFile.h"

#include <memory>

namespace {

bool DeclareDevice(PanelRoot& root, const std::string& name, std::string_view kind) {
    if (kind != "simulated") {
        return false;
    }
    auto device = std::make_unique<SimulatedDevice>();
    if (!device->Register(&root, name.c_str())) {
        return false;
    }
    device.release(); // the root owns it now
    return true;
}

bool DeclareParameter(PanelRoot& root, const std::string& name, const logic::PropertyLine& parts) {
    auto* device = dynamic_cast<SimulatedDevice*>(root.Find(name));
    const std::string keyword(parts.keyword);
    if (device == nullptr || !device->Declare(keyword, std::string(parts.value))) {
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
