#pragma once

#include <string>

// A file name as a property holds it: ".\" and the path from the application folder for a file inside that
// folder, the full path otherwise. Empty when the name is too long.
std::string PropertyFileName(const std::string& path);
