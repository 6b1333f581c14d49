#include "Panel/common/Paths.h"

#include <windows.h>

namespace {

// Position of the first character of the last part.
std::size_t NameStart(const std::string& path) {
    const std::size_t separator = path.find_last_of("\\/:");
    return separator == std::string::npos ? 0 : separator + 1;
}

} // namespace

std::string AbsolutePath(const char* name) {
    const DWORD size = GetFullPathNameA(name, 0, nullptr, nullptr);
    std::string path(size, '\0');
    const DWORD length = GetFullPathNameA(name, size, path.data(), nullptr);
    if (length == 0 || length >= size) {
        return name; // opening it will fail with its own message
    }
    path.resize(length);
    return path;
}

std::string ApplicationFolder() {
    char path[MAX_PATH] = "";
    const DWORD length = GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string program(path, length < MAX_PATH ? length : 0);
    return program.substr(0, NameStart(program));
}

std::string FileName(const std::string& path) {
    return path.substr(NameStart(path));
}

std::string WithExtension(const std::string& path, const char* extension) {
    const std::size_t dot = path.rfind('.');
    const bool hasExtension = dot != std::string::npos && dot > NameStart(path);
    return path.substr(0, hasExtension ? dot : path.size()) + extension;
}

std::wstring Wide(const std::string& path) {
    const int size = MultiByteToWideChar(CP_ACP, 0, path.c_str(), static_cast<int>(path.size()), nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_ACP, 0, path.c_str(), static_cast<int>(path.size()), wide.data(), size);
    return wide;
}

bool FileExists(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
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
