#pragma once

#include <windows.h>

#include <string>

// Ask for a panel file; empty when cancelled. The proposed name may be empty.
std::string AskFileToOpen(HWND owner);
std::string AskFileToSave(HWND owner, const std::string& proposed);
// The same for a device file.
std::string AskDeviceFileToOpen(HWND owner, const std::string& proposed);
std::string AskDeviceFileToSave(HWND owner, const std::string& proposed);
enum class ExportKind {
    List, // of values with commas between them (.csv) or of text
    Picture,
    Page, // HTML
};
// Asks for a file that something is exported to.
std::string AskFileToExport(HWND owner, const std::string& proposed, ExportKind kind = ExportKind::List);
