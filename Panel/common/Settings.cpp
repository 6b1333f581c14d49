#include "Panel/common/Settings.h"

#include "Panel/common/CommandLine.h"
#include "Panel/common/Paths.h"
#include "Panel/common/TextFile.h"
#include "base/FileNames.h"
#include "base/Handles.h"

#include <windows.h>

namespace {

constexpr DWORD LONGEST = 64 * 1024; // bytes

} // namespace

std::string SettingsFolder(const CommandLine& commandLine) {
    if (!commandLine.settingsFolder.empty()) {
        return commandLine.settingsFolder;
    }
    const std::wstring folder = commandLine.unattended ? L"" : LocalDataFolder();
    // It has a short form only once it is there.
    return folder.empty() || !MakeFolders(folder) ? "" : NarrowFileName(folder).value_or("");
}

std::string SettingsSource(const CommandLine& commandLine) {
    const std::string folder = SettingsFolder(commandLine);
    return folder.empty() ? NarrowFileName(LocalDataFolder()).value_or("") : folder;
}

std::string ReadSettings(const std::string& folder, const char* name) {
    if (folder.empty()) {
        return "";
    }
    const Handle file =
        MakeFile(CreateFileA((folder + "\\" + name).c_str(), GENERIC_READ,
                             FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, 0, nullptr));
    const DWORD size = file ? GetFileSize(file.get(), nullptr) : 0;
    if (size == 0 || size > LONGEST) {
        return "";
    }
    std::string text(size, '\0');
    DWORD read = 0;
    return ReadFile(file.get(), text.data(), size, &read, nullptr) && read == size ? text : "";
}

bool WriteSettings(const std::string& folder, const char* name, const std::string& text) {
    const std::string path = folder + "\\" + name;
    const std::string fresh = path + ".new";
    return !folder.empty() && MakeFolders(WideFileName(folder)) &&
           WriteTextFile(fresh, text) == ERROR_SUCCESS &&
           MoveFileExA(fresh.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING);
}
