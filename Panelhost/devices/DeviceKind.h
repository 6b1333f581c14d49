#pragma once

#include "Panelhost/Devices.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

// Reads a file of that name that lies beside the device file, or else in Profiles\ beside this library, line
// by line: the function answers what is wrong with a line, which is traced. False when the file cannot be
// read.
using ReadDeviceLines = std::function<bool(const std::string& name,
                                           const std::function<std::string(std::string_view line)>& take)>;

// A kind of device that device files can declare.
struct DeviceKind {
    // NAME*device=word, or word,... where the kind has more to say.
    std::string_view word;
    // Makes a device, not yet registered, of all that stands behind the "=". Null when that cannot be read,
    // with the reason where there is more to say.
    std::unique_ptr<DEVICE> (*create)(std::string_view text, const ReadDeviceLines& read, std::string& why);
    // Applies a further line NAME*keyword=text to a device of this kind. Empty, or why it cannot be read.
    std::string (*declare)(DEVICE& device, const std::string& keyword, const std::string& text);
    const char* title; // for people
    // Lines of a first device of the kind, without "NAME*". "{address}", "{port}" and "{profile}" stand for
    // what its user has to say.
    const char* example;
};

// Tells a living object that a device parameter it is bound to came, which changes none of its properties.
void TellOfFunction(HOSTINFO* object, const char* address);

// All kinds there are.
std::span<const DeviceKind* const> DeviceKinds();
