#pragma once

#include "Panelhost/Devices.h"

#include <memory>
#include <string>
#include <string_view>

// A kind of device that device files can declare.
struct DeviceKind {
    // NAME*device=word, or word,... where the kind has more to say.
    std::string_view word;
    // Makes a device, not yet registered, of all that stands behind the "=". Null when that cannot be read.
    std::unique_ptr<DEVICE> (*create)(std::string_view text);
    // Applies a further line NAME*keyword=text to a device of this kind. False when it cannot be read.
    bool (*declare)(DEVICE& device, const std::string& keyword, const std::string& text);
};
