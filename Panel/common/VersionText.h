#pragma once

#include <string>

// Version of the project and, where it was built from a repository, the commit: "1.0.0 (0123456789)".
std::string VersionText();
