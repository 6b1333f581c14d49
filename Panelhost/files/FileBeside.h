#pragma once

#include <string>
#include <string_view>
#include <windows.h>

// A new file beside one that it is to replace as a whole, under a name that nothing had; it goes unless it
// has taken the other one's place.
class FileBeside {
public:
    explicit FileBeside(const std::string& path);
    ~FileBeside();
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    // The text takes the place of the file at once. The system's reason when that failed: it is as it was.
    static DWORD Write(const std::string& path, std::string_view text);

    // Why there is none: the system's reason, ERROR_SUCCESS when there is one.
    DWORD Error() const { return error_; }
    HANDLE Handle() const { return handle_; } // to write to, from front to back
    // What was written is flushed, and the file renamed. The system's reason when that failed: the other file
    // is as it was.
    DWORD TakePlace();

private:
    void Make();
    void Close();

    const std::string path_;
    std::string own_;
    HANDLE handle_ = INVALID_HANDLE_VALUE;
    DWORD error_ = ERROR_SUCCESS;
    bool made_ = false; // and closed
};
