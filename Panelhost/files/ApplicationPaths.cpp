// File names made absolute.

#include "Panelhost/ApplicationPaths.h"

#include "base/Guard.h"

#include <string>
#include <string_view>

namespace {

// Folder of a module with a backslash at its end.
std::string FolderOf(HMODULE module) {
    char path[MAX_PATH];
    const DWORD length = GetModuleFileNameA(module, path, MAX_PATH);
    const std::string full(path, length);
    return full.substr(0, full.find_last_of("\\/") + 1);
}

HMODULE OwnModule() {
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const char*>(&FolderOf), &module);
    return module;
}

bool IsAbsolute(std::string_view name) {
    return name.front() == '\\' || name.front() == '/' || (name.size() > 1 && name[1] == ':');
}

int MakeFullPath(const std::string& folder, const char* name, char* fullPath) {
    const std::string path = IsAbsolute(name) ? name : folder + name;
    const DWORD length = GetFullPathNameA(path.c_str(), MAX_PATH, fullPath, nullptr);
    if (length == 0 || length >= MAX_PATH) {
        *fullPath = '\0';
        return 0;
    }
    return 1;
}

} // namespace

int a_MakeFullPathName(const char* name, char* fullPath) {
    *fullPath = '\0';
    if (name == nullptr || *name == '\0') {
        return 0;
    }
    return Guarded(0, [&] {
        static const std::string folder = FolderOf(OwnModule());
        return MakeFullPath(folder, name, fullPath);
    });
}

int a_MakeFullPathName2(HMODULE module, const char* name, char* fullPath) {
    *fullPath = '\0';
    if (name == nullptr || *name == '\0') {
        return 0;
    }
    return Guarded(0, [&] { return MakeFullPath(FolderOf(module), name, fullPath); });
}
