#pragma once

#include <string>
#include <windows.h>

// A file that the system keeps in memory as far as it can, and that goes when it is closed.
class TemporaryFile {
public:
    TemporaryFile() {
        char folder[MAX_PATH];
        char path[MAX_PATH];
        if (GetTempPathA(MAX_PATH, folder) != 0 && GetTempFileNameA(folder, "pan", 0, path) != 0) {
            file_ = CreateFileA(path, GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
        }
    }
    ~TemporaryFile() {
        if (file_ != INVALID_HANDLE_VALUE) {
            CloseHandle(file_);
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    HANDLE Handle() const { return file_; }

    // All that was written to it.
    bool Read(std::string& contents) const {
        contents.resize(GetFileSize(file_, nullptr));
        DWORD length = 0;
        SetFilePointer(file_, 0, nullptr, FILE_BEGIN);
        return ReadFile(file_, contents.data(), static_cast<DWORD>(contents.size()), &length, nullptr) &&
               length == contents.size();
    }

private:
    HANDLE file_ = INVALID_HANDLE_VALUE;
};
