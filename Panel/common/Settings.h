#pragma once

#include <string>

struct CommandLine;

// Small texts that the program keeps for its user from one run to the next, each in a file of a folder.

// The folder that the command line names, else that in the user's application data; it need not be there yet.
// Empty, for nothing that is kept, when the system names none, and in a run that ends by itself unless the
// command line names one.
std::string SettingsFolder(const CommandLine& commandLine);
// The folder that they are read from: the same one, and in a run that ends by itself that of the user, of
// which it changes nothing.
std::string SettingsSource(const CommandLine& commandLine);
// Empty when there is none or no folder, and for one longer than a setting ever is.
std::string ReadSettings(const std::string& folder, const char* name);
// Replaces the old one as a whole. False when it cannot be written, or there is no folder: nothing depends on
// it.
bool WriteSettings(const std::string& folder, const char* name, const std::string& text);
