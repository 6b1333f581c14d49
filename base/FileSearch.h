#pragma once

#include <windows.h>

#include <string>

// The files and folders whose names fit a pattern.
class FileSearch {
public:
    explicit FileSearch(const std::string& pattern) : handle_(FindFirstFileA(pattern.c_str(), &found_)) {}
    ~FileSearch() {
        if (handle_ != INVALID_HANDLE_VALUE) {
            FindClose(handle_);
        }
    }
    FileSearch(const FileSearch&) = delete;
    FileSearch& operator=(const FileSearch&) = delete;

    bool HasFile() const { return handle_ != INVALID_HANDLE_VALUE && !ended_; }
    bool IsFolder() const { return (found_.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
    const char* Name() const { return found_.cFileName; }
    void Next() { ended_ = !FindNextFileA(handle_, &found_); }

private:
    WIN32_FIND_DATAA found_{};
    HANDLE handle_;
    bool ended_ = false;
};
