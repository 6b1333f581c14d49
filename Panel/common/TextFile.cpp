#include "Panel/common/TextFile.h"

#include "base/FileNames.h"
#include "base/Handles.h"

unsigned long WriteTextFile(const std::string& file, const std::string& text) {
    const std::wstring name = WideFileName(file);
    Handle handle = MakeFile(
        CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!handle) {
        return GetLastError();
    }
    DWORD written = 0;
    DWORD error = WriteFile(handle.get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr)
                      ? written == text.size() ? ERROR_SUCCESS : ERROR_DISK_FULL
                      : GetLastError();
    handle.reset();
    if (error != ERROR_SUCCESS) {
        DeleteFileW(name.c_str());
    }
    return error;
}

std::optional<std::string> ReadTextFile(const std::string& file, std::size_t longest, unsigned long* error) {
    const Handle handle = MakeFile(CreateFileW(WideFileName(file).c_str(), GENERIC_READ, FILE_SHARE_READ,
                                               nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!handle) {
        *error = GetLastError();
        return std::nullopt;
    }
    std::string text(longest + 1, '\0');
    DWORD size = 0;
    if (GetFileType(handle.get()) != FILE_TYPE_DISK) { // a name can also stand for a device
        *error = ERROR_NOT_SUPPORTED;
        return std::nullopt;
    }
    if (!ReadFile(handle.get(), text.data(), static_cast<DWORD>(text.size()), &size, nullptr)) {
        *error = GetLastError();
        return std::nullopt;
    }
    if (size > longest) {
        *error = ERROR_FILE_TOO_LARGE;
        return std::nullopt;
    }
    text.resize(size);
    return text;
}
