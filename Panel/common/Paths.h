#pragma once

#include <string>

// The file name made absolute from the current directory.
std::string AbsolutePath(const char* name);
// The folder this program lies in, with a backslash at the end.
std::string ApplicationFolder();
// The last part of a file name.
std::string FileName(const std::string& path);
// The file name with its extension replaced (".devices") or, where it has none, appended.
std::string WithExtension(const std::string& path, const char* extension);
std::wstring Wide(const std::string& path);
bool FileExists(const std::string& path);
// The system's words for an error code, without line end.
std::string ErrorText(unsigned long code);
