#include "Panel/common/Settings.h"

#include <windows.h>

namespace {

constexpr const char* KEY = "Software\\OSMIR\\Panel";

} // namespace

std::string ReadSetting(const char* name) {
    char value[1024] = "";
    DWORD size = sizeof value;
    const LSTATUS status = RegGetValueA(HKEY_CURRENT_USER, KEY, name, RRF_RT_REG_SZ, nullptr, value, &size);
    return status == ERROR_SUCCESS ? value : "";
}

bool WriteSetting(const char* name, const std::string& value) {
    return RegSetKeyValueA(HKEY_CURRENT_USER, KEY, name, REG_SZ, value.c_str(),
                           static_cast<DWORD>(value.size() + 1)) == ERROR_SUCCESS;
}
