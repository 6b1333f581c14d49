#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

struct IconDeleter {
    void operator()(HICON icon) const { DestroyIcon(icon); }
};
using OwnedIcon = std::unique_ptr<std::remove_pointer_t<HICON>, IconDeleter>;

// A round lamp of 16 x 16 pixels on a transparent ground, green while all devices are live, else red. Null
// when it cannot be had.
OwnedIcon MakeDeviceLamp(bool areLive);
