#pragma once

#include <optional>
#include <string>

// The file name made absolute from the current directory; nothing when it has no form in the ANSI code page.
std::optional<std::string> AbsolutePath(const std::wstring& name);
// Why a file cannot be opened or saved under its name.
constexpr const char* NO_NARROW_NAME =
    "the name has characters that this system's code page lacks, and no short form";
// The last part of a file name.
std::string FileName(const std::string& path);
// The file name with its extension replaced (".devices") or, where it has none, appended.
std::string WithExtension(const std::string& path, const char* extension);
bool FileExists(const std::string& path);
// The program's own folder in the user's application data, which need not be there yet; empty when the system
// names none.
std::wstring LocalDataFolder();
// Makes the folder, and those that it lies in. False when it is not there afterwards.
bool MakeFolders(const std::wstring& folder);
// The system's words for an error code, without line end.
std::string ErrorText(unsigned long code);
