// File names made absolute.

#include "Panelhost/ApplicationPaths.h"

#include "base/FileNames.h"
#include "base/Guard.h"
#include "base/Handles.h"
#include "logic/text/PropertyLine.h"

#include <shlobj.h>

#include <string>
#include <string_view>

namespace {

HMODULE OwnModule() {
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const char*>(&OwnModule), &module);
    return module;
}

constexpr const char* TEMP = "Temp\\";

bool IsAbsolute(std::string_view name) {
    return name.front() == '\\' || name.front() == '/' || (name.size() > 1 && name[1] == ':');
}

// Where files that are made for a while go, by the application folder: there, unless it may not be written,
// as for programs that an administrator has installed. Then they are the user's documents.
std::string FolderOfTemp(const std::string& applicationFolder) {
    const std::string temp = applicationFolder + TEMP;
    if (GetFileAttributesA(temp.substr(0, temp.size() - 1).c_str()) == INVALID_FILE_ATTRIBUTES) {
        return applicationFolder; // whoever writes there tells that the folder is missing
    }
    const std::string probe = temp + "write." + std::to_string(GetCurrentProcessId()) + ".tmp";
    if (MakeFile(CreateFileA(probe.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                             FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr)) != nullptr) {
        return applicationFolder;
    }
    wchar_t documents[MAX_PATH] = L"";
    if (FAILED(SHGetFolderPathW(nullptr, CSIDL_PERSONAL | CSIDL_FLAG_CREATE, nullptr, 0, documents))) {
        return applicationFolder;
    }
    const std::wstring folder = std::wstring(documents) + L"\\OSMIR Panel\\";
    SHCreateDirectoryExW(nullptr, (folder + WideFileName(TEMP)).c_str(), nullptr);
    return NarrowFileName(folder).value_or(applicationFolder);
}

bool IsBelow(std::string_view path, const std::string& folder) {
    return path.size() > folder.size() &&
           logic::FoldName(path.substr(0, folder.size())) == logic::FoldName(folder);
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
        static const std::string folder = ModuleFolder(OwnModule());
        if (MakeFullPath(folder, name, fullPath) == 0) {
            return 0;
        }
        if (!IsAbsolute(name) && IsBelow(fullPath, folder + TEMP)) {
            static const std::string folderOfTemp = FolderOfTemp(folder);
            const std::string path = folderOfTemp + (fullPath + folder.size());
            return MakeFullPath("", path.c_str(), fullPath);
        }
        return 1;
    });
}

int a_MakeFullPathName2(HMODULE module, const char* name, char* fullPath) {
    *fullPath = '\0';
    if (name == nullptr || *name == '\0') {
        return 0;
    }
    return Guarded(0, [&] { return MakeFullPath(ModuleFolder(module), name, fullPath); });
}
