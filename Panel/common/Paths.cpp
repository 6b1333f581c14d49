#include "Panel/common/Paths.h"

#include "base/FileNames.h"

#include <windows.h>
#include <shlobj.h>

namespace {

// Position of the first character of the last part.
std::size_t NameStart(const std::string& path) {
    const std::size_t separator = path.find_last_of("\\/:");
    return separator == std::string::npos ? 0 : separator + 1;
}

} // namespace

std::optional<std::string> AbsolutePath(const std::wstring& name) {
    const DWORD size = GetFullPathNameW(name.c_str(), 0, nullptr, nullptr);
    std::wstring path(size, L'\0');
    const DWORD length = GetFullPathNameW(name.c_str(), size, path.data(), nullptr);
    if (length == 0 || length >= size) {
        return NarrowFileName(name); // opening it will fail with its own message
    }
    path.resize(length);
    return NarrowFileName(path);
}

std::string FileName(const std::string& path) {
    return path.substr(NameStart(path));
}

std::string WithExtension(const std::string& path, const char* extension) {
    const auto replaced = [](const auto& name, std::size_t start, const auto& ending) {
        const std::size_t dot = name.rfind('.');
        return name.substr(0, dot != name.npos && dot > start ? dot : name.size()) + ending;
    };
    // The short name of a file is no beginning of its neighbours' names.
    const std::wstring full = FullFileName(WideFileName(path));
    const auto other =
        NarrowFileName(replaced(full, full.find_last_of(L"\\/:") + 1, WideFileName(extension)));
    return other ? *other : replaced(path, NameStart(path), std::string(extension));
}

bool FileExists(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

std::wstring LocalDataFolder() {
    wchar_t path[MAX_PATH] = L"";
    if (FAILED(SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, path))) {
        return {};
    }
    return std::wstring(path) + L"\\OSMIR\\Panel";
}

bool MakeFolders(const std::wstring& folder) {
    for (std::size_t end = folder.find(L'\\', 3); end != std::wstring::npos;
         end = folder.find(L'\\', end + 1)) {
        CreateDirectoryW(folder.substr(0, end).c_str(), nullptr);
    }
    return CreateDirectoryW(folder.c_str(), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS;
}

std::string ErrorText(unsigned long code) {
    char text[512] = "";
    DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
                                  0, text, sizeof text, nullptr);
    while (length > 0 && (text[length - 1] == '\n' || text[length - 1] == '\r' || text[length - 1] == ' ')) {
        --length;
    }
    return length > 0 ? std::string(text, length) : "error " + std::to_string(code);
}
