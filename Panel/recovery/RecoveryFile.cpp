#include "Panel/recovery/RecoveryFile.h"

#include "Panel/common/Paths.h"

#include <algorithm>
#include <cstdio>
#include <set>

namespace {

constexpr wchar_t COPY[] = L".copy";
constexpr wchar_t NEW[] = L".new";
constexpr wchar_t LOCK[] = L".lock";
constexpr LONGLONG LARGEST = 256LL * 1024 * 1024; // bytes

bool WriteWhole(const std::wstring& path, const std::string& text) {
    const Handle file = MakeFile(
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    return file && WriteFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr) &&
           written == text.size() && FlushFileBuffers(file.get());
}

// Names of the files in the folder up to their first dot.
std::set<std::wstring> NamesIn(const std::wstring& folder) {
    std::set<std::wstring> names;
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW((folder + L"\\*.*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) {
        return names;
    }
    do {
        const std::wstring name = entry.cFileName;
        const bool isOurs = name.ends_with(COPY) || name.ends_with(NEW) || name.ends_with(LOCK);
        if (isOurs && (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            names.insert(name.substr(0, name.find(L'.')));
        }
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    return names;
}

} // namespace

std::optional<RecoveryFile> RecoveryFile::Lock(const std::wstring& path, DWORD disposition) {
    Handle lock = MakeFile(CreateFileW((path + LOCK).c_str(), GENERIC_WRITE, 0, nullptr, disposition,
                                       FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    if (!lock) {
        return std::nullopt;
    }
    return RecoveryFile(path, std::move(lock));
}

std::optional<RecoveryFile> RecoveryFile::Make(const std::wstring& folder) {
    if (!MakeFolders(folder)) {
        return std::nullopt;
    }
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    wchar_t name[64];
    std::swprintf(name, sizeof name / sizeof *name, L"\\%08lx%08lx-%lu", now.dwHighDateTime,
                  now.dwLowDateTime, GetCurrentProcessId());
    return Lock(folder + name, CREATE_NEW);
}

std::vector<RecoveryFile> RecoveryFile::TakeLeftBehind(const std::wstring& folder) {
    std::vector<RecoveryFile> files;
    for (const std::wstring& name : NamesIn(folder)) {
        auto file = Lock(folder + L"\\" + name, OPEN_ALWAYS);
        if (!file) {
            continue; // its program lives
        }
        DeleteFileW((file->path_ + NEW).c_str()); // was being written
        if (GetFileAttributesW((file->path_ + COPY).c_str()) != INVALID_FILE_ATTRIBUTES) {
            files.push_back(std::move(*file));
        }
    }
    return files;
}

bool RecoveryFile::Write(const std::string& text) const {
    const std::wstring beside = path_ + NEW;
    if (WriteWhole(beside, text) && MoveFileExW(beside.c_str(), (path_ + COPY).c_str(),
                                                MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        return true;
    }
    const DWORD error = GetLastError();
    DeleteFileW(beside.c_str());
    SetLastError(error);
    return false;
}

void RecoveryFile::Remove() const {
    DeleteFileW((path_ + COPY).c_str());
}

std::optional<std::string> RecoveryFile::Read() const {
    const Handle file = MakeFile(CreateFileW((path_ + COPY).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                             OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size{};
    if (!file || !GetFileSizeEx(file.get(), &size) || size.QuadPart > LARGEST) {
        return std::nullopt;
    }
    std::string text(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD length = 0;
    if (!ReadFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &length, nullptr) ||
        length != text.size()) {
        return std::nullopt;
    }
    return text;
}

FILETIME RecoveryFile::Written() const {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    GetFileAttributesExW((path_ + COPY).c_str(), GetFileExInfoStandard, &data);
    return data.ftLastWriteTime;
}

ULONGLONG RecoveryFile::Time() const {
    const FILETIME time = Written();
    return (static_cast<ULONGLONG>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

std::string RecoveryFile::TimeText() const {
    const FILETIME time = Written();
    SYSTEMTIME system{};
    SYSTEMTIME local{};
    if (!FileTimeToSystemTime(&time, &system) || !SystemTimeToTzSpecificLocalTime(nullptr, &system, &local)) {
        return {};
    }
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d", local.wYear, local.wMonth, local.wDay,
                  local.wHour, local.wMinute);
    return text;
}
