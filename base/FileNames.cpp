#include "base/FileNames.h"

namespace {

constexpr const wchar_t* SEPARATORS = L"\\/:";

// Nothing when characters are lost or replaced by similar ones.
std::optional<std::string> Exactly(std::wstring_view text) {
    std::string narrow = NarrowText(text);
    return WideFileName(narrow) == text ? std::optional(std::move(narrow)) : std::nullopt;
}

// What the folder says of an existing file.
std::optional<WIN32_FIND_DATAW> Entry(const std::wstring& name) {
    const std::size_t separator = name.find_last_of(SEPARATORS);
    if (name.find_first_of(L"*?<>\"", separator == std::wstring::npos ? 0 : separator) !=
        std::wstring::npos) {
        return std::nullopt; // a pattern: it would find other files
    }
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(name.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return std::nullopt;
    }
    FindClose(search);
    return found;
}

} // namespace

std::string NarrowText(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), length, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

std::wstring WideFileName(std::string_view name) {
    const int length = static_cast<int>(name.size());
    const int size = MultiByteToWideChar(CP_ACP, 0, name.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_ACP, 0, name.data(), length, wide.data(), size);
    return wide;
}

std::optional<std::string> NarrowFileName(const std::wstring& name) {
    std::string narrow;
    for (std::size_t start = 0; start < name.size();) {
        const std::size_t end = name.find_first_of(SEPARATORS, start);
        const std::size_t length = end == std::wstring::npos ? name.size() - start : end - start;
        auto part = Exactly(std::wstring_view(name).substr(start, length));
        if (!part) {
            const auto entry = Entry(name.substr(0, start + length));
            part = entry && entry->cAlternateFileName[0] != L'\0' ? Exactly(entry->cAlternateFileName)
                                                                  : std::nullopt;
        }
        if (!part) {
            return std::nullopt;
        }
        narrow += *part;
        start += length;
        if (end != std::wstring::npos) {
            narrow += static_cast<char>(name[end]);
            ++start;
        }
    }
    return narrow;
}

std::wstring FullFileName(const std::wstring& name) {
    const std::size_t separator = name.find_last_of(SEPARATORS);
    const std::size_t start = separator == std::wstring::npos ? 0 : separator + 1;
    const auto entry = name.find(L'~', start) != std::wstring::npos ? Entry(name) : std::nullopt;
    return entry ? name.substr(0, start) + entry->cFileName : name;
}

std::string ModuleFolder(HMODULE module) {
    wchar_t path[MAX_PATH] = L"";
    const DWORD length = GetModuleFileNameW(module, path, MAX_PATH);
    std::wstring folder(path, length < MAX_PATH ? length : 0);
    folder.resize(folder.find_last_of(L"\\/") + 1);
    const auto narrow = NarrowFileName(folder);
    return narrow
               ? *narrow
               : NarrowText(folder); // what is asked for there is not found, and the message shows the folder
}
