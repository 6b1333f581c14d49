#include "Panelhost/files/FileBeside.h"

#include "Panelhost/PropertyList.h"
#include "base/FileNames.h"

#include <cstdio>

FileBeside::FileBeside(const std::string& path) : path_(path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        error_ = ERROR_ACCESS_DENIED; // renaming alone would not see to that everywhere
    } else {
        Make();
    }
}

FileBeside::~FileBeside() {
    Close();
    if (made_) {
        DeleteFileA(own_.c_str());
    }
}

DWORD FileBeside::Write(const std::string& path, std::string_view text) {
    FileBeside beside(path);
    if (beside.Error() != ERROR_SUCCESS) {
        return beside.Error();
    }
    return a_WriteText(beside.Handle(), text.data(), text.size()) != 0 ? beside.TakePlace() : GetLastError();
}

void FileBeside::Make() {
    constexpr unsigned TRIES = 1000;
    const auto start = static_cast<unsigned>(GetCurrentProcessId());
    for (unsigned i = 0; i < TRIES; ++i) {
        char ending[24];
        std::snprintf(ending, sizeof ending, ".%x.%u.tmp", start, i);
        own_ = path_ + ending;
        handle_ =
            CreateFileA(own_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        error_ = handle_ == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS;
        if (error_ == ERROR_SUCCESS || GetFileAttributesA(own_.c_str()) == INVALID_FILE_ATTRIBUTES) {
            return; // made, or refused for another reason than its name
        }
    }
}

DWORD FileBeside::TakePlace() {
    if (!FlushFileBuffers(handle_)) {
        const DWORD reason = GetLastError();
        return reason != ERROR_SUCCESS ? reason : DWORD{ERROR_WRITE_FAULT};
    }
    Close();
    // Where the old file was named by its short name, the new one would have no other.
    if (!MoveFileExW(WideFileName(own_).c_str(), FullFileName(WideFileName(path_)).c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        return GetLastError();
    }
    made_ = false;
    return ERROR_SUCCESS;
}

void FileBeside::Close() {
    if (handle_ != INVALID_HANDLE_VALUE) {
        CloseHandle(handle_);
        handle_ = INVALID_HANDLE_VALUE;
        made_ = true;
    }
}
