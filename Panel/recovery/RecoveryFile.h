#pragma once

#include "base/Handles.h"

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

// The place on the disk for one program's copy of its panel. A lock file beside the copy is held open for as
// long as this lives; the system lets go of it however the program ends, so a copy whose lock is free has
// been left behind.
class RecoveryFile {
public:
    // A new place in the folder, which is made where it is missing; nothing when that cannot be: GetLastError
    // says why.
    static std::optional<RecoveryFile> Make(const std::wstring& folder);
    // Takes over all that programs have left behind in the folder. No other program gets them meanwhile.
    static std::vector<RecoveryFile> TakeLeftBehind(const std::wstring& folder);

    // Puts the text in place of the copy as a whole; false when it could not be: GetLastError says why.
    bool Write(const std::string& text) const;
    void Remove() const;
    // Nothing when there is no copy, or it cannot be read.
    std::optional<std::string> Read() const;
    // When the copy was written, for sorting and as local time ("2026-11-22 14:05").
    ULONGLONG Time() const;
    std::string TimeText() const;

private:
    RecoveryFile(std::wstring path, Handle lock) : path_(std::move(path)), lock_(std::move(lock)) {}
    static std::optional<RecoveryFile> Lock(const std::wstring& path, DWORD disposition);
    FILETIME Written() const;

    std::wstring path_; // without extension
    Handle lock_;
};
