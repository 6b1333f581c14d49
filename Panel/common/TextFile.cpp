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
