#include "Panelhost/files/DeviceReading.h"

#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/devices/osc/OscDevice.h"
#include "Panelhost/devices/simulated/SimulatedDevice.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <utility>

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

} // namespace

std::span<const DeviceKind* const> DeviceKinds() {
    return KINDS;
}

std::string ProfileFolder() {
    char path[MAX_PATH] = "";
    a_MakeFullPathName("Profiles\\", path);
    return path;
}

DeviceReading::DeviceReading(std::string folder, Elsewhere elsewhere, Refuse refuse)
    : folder_(std::move(folder)), elsewhere_(std::move(elsewhere)), refuse_(std::move(refuse)) {}

void DeviceReading::Read(LineSource& source) {
    std::string line;
    bool usable = false;
    while (source.Next(line, usable)) {
        if (usable && (line.empty() || line.front() == '#')) {
            continue;
        }
        const logic::PropertyLine parts = logic::SplitPropertyLine(line);
        const std::string name(parts.object);
        const std::string why =
            !usable            ? "the line is too long or damaged"
            : !parts.hasEquals ? "it does not read DEVICE*parameter=..."
            : parts.keyword == "device"
                ? Declare(name, parts.value, source.LineNumber())
                : DeclareParameter(name, std::string(parts.keyword), std::string(parts.value));
        if (!why.empty()) {
            refuse_(line, why);
        }
        if (DeviceDraft* draft = Find(name); usable && draft != nullptr) {
            draft->device->lines += line + "\n" + std::exchange(profile_, {});
        }
    }
}

std::string DeviceReading::Declare(const std::string& name, std::string_view text, std::size_t line) {
    const std::string word(text.substr(0, text.find(',')));
    const auto kind = std::ranges::find(KINDS, word, &DeviceKind::word);
    if (name.empty() || name != logic::CleanName(name)) {
        return "the name is none";
    }
    if (Find(name) != nullptr || elsewhere_(name) != nullptr) {
        return "the name is taken";
    }
    if (kind == std::end(KINDS)) {
        return "there is no kind of device \"" + word + "\"";
    }
    profile_.clear();
    std::string why;
    auto device = (*kind)->create(
        text, [this](const std::string& file, const auto& take) { return ReadBeside(file, take); }, why);
    if (device == nullptr) {
        return why.empty() ? "it cannot be declared" : why;
    }
    device->deviceKind = *kind;
    places_[logic::FoldName(name)] = drafts_.size();
    drafts_.push_back({name, name + "*device=" + std::string(text), line, std::move(device)});
    return {};
}

std::string DeviceReading::DeclareParameter(const std::string& name, const std::string& keyword,
                                            const std::string& text) {
    if (const DeviceDraft* draft = Find(name); draft != nullptr) {
        return draft->device->deviceKind->declare(*draft->device, keyword, text);
    }
    auto* device = dynamic_cast<DEVICE*>(elsewhere_(name));
    if (device == nullptr || device->deviceKind == nullptr) {
        return "no device " + name + " is declared above this line";
    }
    std::string why = device->deviceKind->declare(*device, keyword, text);
    if (why.empty()) {
        device->lines += name + "*" + keyword + "=" + text + "\n";
        a_AnnounceFunction(device->parent, (device->name + "*" + keyword).c_str());
    }
    return why;
}

bool DeviceReading::ReadBeside(const std::string& name,
                               const std::function<std::string(std::string_view line)>& take) {
    const auto keep = [&](std::string_view line) {
        profile_.append(line).append("\n");
        return take(line);
    };
    return ReadLines(folder_ + name, keep) || ReadLines(ProfileFolder() + name, keep);
}

DeviceDraft* DeviceReading::Find(const std::string& name) {
    const auto found = places_.find(logic::FoldName(name));
    return found == places_.end() ? nullptr : &drafts_[found->second];
}
