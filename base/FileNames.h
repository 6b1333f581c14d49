#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

// File names are kept in the ANSI code page of the system. One that holds other characters has a form there,
// too, as long as it exists and its volume gives short names: its parts that need it stand with those.

// The name in the ANSI code page; nothing when it has no form there.
std::optional<std::string> NarrowFileName(const std::wstring& name);
// The text with other characters replaced.
std::string NarrowText(std::wstring_view text);
std::wstring WideFileName(std::string_view name);
// The name with its last part in full where that is the short name of a file that exists.
std::wstring FullFileName(const std::wstring& name);
// Folder of a library or program (null: the running one) with a backslash at its end.
std::string ModuleFolder(HMODULE module);
