#pragma once

#include <windows.h>

#include <string_view>
#include <utility>

// While it lives the keyboard of this thread holds these keys down ("Ctrl+Shift").
class HeldKeys {
public:
    explicit HeldKeys(std::string_view names) { Hold(names); }
    ~HeldKeys() { Hold(""); }
    HeldKeys(const HeldKeys&) = delete;
    HeldKeys& operator=(const HeldKeys&) = delete;

private:
    static void Hold(std::string_view names) {
        BYTE keys[256] = {};
        for (const auto& [name, key] :
             {std::pair("Ctrl", VK_CONTROL), {"Shift", VK_SHIFT}, {"Alt", VK_MENU}}) {
            keys[key] = names.find(name) == names.npos ? 0 : 0x80;
        }
        SetKeyboardState(keys);
    }
};
