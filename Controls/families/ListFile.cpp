#include "Controls/families/ListFile.h"

#include "Panelhost/ApplicationPaths.h"
#include "base/Handles.h"
#include "logic/controls/ListLogic.h"

#include <windows.h>

#include <string_view>

namespace {

constexpr DWORD LARGEST = 1 << 20;
constexpr std::string_view UTF8_MARK = "\xEF\xBB\xBF";

// What stands behind a mark for UTF-8 is.
std::string ToCodePage(std::string_view text) {
    const int bytes = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    wide.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, wide.data(), static_cast<int>(wide.size()))));
    const int length = static_cast<int>(wide.size());
    std::string plain(static_cast<std::size_t>(
                          WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr)),
                      '\0');
    WideCharToMultiByte(CP_ACP, 0, wide.data(), length, plain.data(), static_cast<int>(plain.size()), nullptr,
                        nullptr);
    return plain;
}

} // namespace

const char* ReadListFile(const std::string& name, std::string& text) {
    char path[MAX_PATH];
    if (a_MakeFullPathName(name.c_str(), path) == 0) {
        return "has too long a name";
    }
    const DWORD attributes = GetFileAttributesA(path);
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return "is a folder";
    }
    const Handle file =
        MakeFile(CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                             nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file || GetFileType(file.get()) != FILE_TYPE_DISK) {
        return "cannot be read";
    }
    const DWORD size = GetFileSize(file.get(), nullptr);
    if (size > LARGEST) {
        return "is larger than 1 MB";
    }
    std::string bytes(size, '\0');
    DWORD length = 0;
    if (!ReadFile(file.get(), bytes.data(), size, &length, nullptr)) {
        return "cannot be read";
    }
    bytes.resize(length); // somebody may have cut it meanwhile
    if (logic::IsBinary(bytes)) {
        return "is no text";
    }
    if (bytes.starts_with(UTF8_MARK)) {
        bytes = ToCodePage(std::string_view(bytes).substr(UTF8_MARK.size()));
    }
    text = std::move(bytes);
    return nullptr;
}
