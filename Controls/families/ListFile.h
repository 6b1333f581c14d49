#pragma once

#include <string>

// Reads the text file that a list stands in, one entry a line; the name is relative to the application
// folder. Null with the text in the code page of the system, or what is the matter with the file, in words
// that follow its name, with the text as it was.
const char* ReadListFile(const std::string& name, std::string& text);
