#pragma once

#include "Panelhost/devices/DeviceKind.h"
#include "Panelhost/files/LineFile.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

// A device that a file declares, with all that the file says of it. No panel has it yet.
struct DeviceDraft {
    std::string name;
    std::string text; // of the line that declares it
    std::size_t line; // its number
    std::unique_ptr<DEVICE> device;
};

// Reads a device file. Nothing but what it makes and what is found by name changes by that.
class DeviceReading {
public:
    // An object that has that name elsewhere, or null. What the file says of one that is a device of a file,
    // too, goes there.
    using Elsewhere = std::function<HOSTINFO*(const std::string& name)>;
    // What is wrong with a line of the device file.
    using Refuse = std::function<void(const std::string& line, const std::string& why)>;

    // Profiles are looked for in the folder first, which ends with a backslash.
    DeviceReading(std::string folder, Elsewhere elsewhere, Refuse refuse);

    void Read(LineSource& source);
    std::vector<DeviceDraft> TakeDrafts() { return std::move(drafts_); }

private:
    std::string Declare(const std::string& name, std::string_view text, std::size_t line);
    std::string DeclareParameter(const std::string& name, const std::string& keyword,
                                 const std::string& text);
    bool ReadBeside(const std::string& name, const std::function<std::string(std::string_view line)>& take);
    DeviceDraft* Find(const std::string& name);

    const std::string folder_;
    const Elsewhere elsewhere_;
    const Refuse refuse_;
    std::vector<DeviceDraft> drafts_;
    std::unordered_map<std::string, std::size_t> places_; // among them, by folded name
    std::string profile_;                                 // lines of those that were read for a device
};

// Where profiles lie that belong to no device file, with a backslash at the end.
std::string ProfileFolder();
