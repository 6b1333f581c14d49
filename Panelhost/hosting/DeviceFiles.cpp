// What is known of device files without a panel that has their devices.

#include "Panelhost/DeviceFiles.h"

#include "Panelhost/HostInterface.h"
#include "Panelhost/PropertyList.h"
#include "Panelhost/Trace.h"
#include "Panelhost/files/DeviceLoading.h"
#include "Panelhost/files/DeviceReading.h"
#include "Panelhost/files/FileBeside.h"
#include "base/FileSearch.h"
#include "base/Guard.h"
#include "logic/text/Numbers.h"
#include "logic/text/PropertyLine.h"

#include <algorithm>

namespace {

constexpr std::string_view PROFILE_ENDING = ".profile";

// Nothing when the file is no profile of that kind.
std::optional<DEVICEPROFILE> ReadProfile(const std::string& path, const std::string& kind) {
    DEVICEPROFILE profile;
    LineFile file(path);
    std::string line;
    bool usable = false;
    bool isOne = false;
    while (file.IsOpen() && file.Next(line, usable)) {
        const logic::PropertyLine parts = logic::SplitPropertyLine(line);
        const bool hasText = usable && !line.empty() && line.front() != '#';
        if (hasText && !isOne && (parts.keyword != "profile" || !parts.value.starts_with(kind + ","))) {
            return std::nullopt;
        }
        isOne = isOne || hasText;
        if (hasText && parts.object.empty() && parts.keyword == "title") {
            profile.title = parts.value;
        } else if (hasText && parts.object.empty() && parts.keyword == "port") {
            profile.port = logic::ParseWholeInteger(parts.value).value_or(0);
        }
    }
    return isOne ? std::optional(std::move(profile)) : std::nullopt;
}

} // namespace

int ph_ReloadDevices(HOSTINFO* root, const char* file) noexcept {
    PanelRoot* panel = PanelRoot::From(root);
    if (panel == nullptr || file == nullptr) {
        return -1;
    }
    return Guarded(-1, [&] { return ReloadDeviceFile(*panel, file); });
}

std::list<DEVICELINEFAULT> a_CheckDeviceText(HOSTINFO* root, const char* file, std::string_view text) {
    return Guarded(std::list<DEVICELINEFAULT>(), [&] {
        std::list<DEVICELINEFAULT> faults;
        LineText source(text, "");
        CheckDeviceText(PanelRoot::From(root), file == nullptr ? "" : file, source,
                        [&](std::size_t line, const std::string& refused, const std::string& why) {
                            faults.push_back({line, refused, why});
                        });
        return faults;
    });
}

std::list<DEVICEKINDINFO> a_ListDeviceKinds() {
    return Guarded(std::list<DEVICEKINDINFO>(), [] {
        std::list<DEVICEKINDINFO> kinds;
        for (const DeviceKind* kind : DeviceKinds()) {
            kinds.push_back({std::string(kind->word), kind->title, kind->example});
        }
        return kinds;
    });
}

std::list<DEVICEPROFILE> a_ListProfiles(const char* kind, const char* file) {
    return Guarded(std::list<DEVICEPROFILE>(), [&] {
        std::list<DEVICEPROFILE> profiles;
        const std::string path = file == nullptr ? "" : file;
        std::list<std::string> folders{ProfileFolder()};
        if (const std::size_t end = path.find_last_of("\\/"); end != std::string::npos) {
            folders.push_front(path.substr(0, end + 1));
        }
        for (const std::string& folder : folders) {
            for (FileSearch found(folder + "*" + std::string(PROFILE_ENDING)); found.HasFile();
                 found.Next()) {
                std::string name = found.Name();
                if (found.IsFolder() || !name.ends_with(PROFILE_ENDING)) {
                    continue;
                }
                name.erase(name.size() - PROFILE_ENDING.size());
                auto profile = ReadProfile(folder + found.Name(), kind == nullptr ? "" : kind);
                if (profile && std::ranges::find(profiles, name, &DEVICEPROFILE::name) == profiles.end()) {
                    profile->name = std::move(name);
                    profiles.push_back(std::move(*profile));
                }
            }
        }
        profiles.sort([](const auto& one, const auto& other) { return one.name < other.name; });
        return profiles;
    });
}

unsigned long a_ReplaceFile(const char* file, std::string_view text) {
    return Guarded(DWORD{ERROR_NOT_ENOUGH_MEMORY}, [&]() -> DWORD { return FileBeside::Write(file, text); });
}
