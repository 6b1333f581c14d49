#pragma once

#include "base/Handles.h"

#include <string>
#include <vector>

// The libraries of control classes. These are registered while it is loaded.
class ControlLibrary {
public:
    // Loads it from the application folder. On failure the error says why.
    bool Load(std::string& error);
    // Loads all libraries of a folder (with a backslash at its end), in the order of their names: their
    // controls then stand beside the others. One that cannot be loaded is traced. How many were loaded.
    int LoadFurther(const std::wstring& folder);
    std::string BuildStamp() const;

private:
    Library library_;
    std::vector<Library> further_; // go first
};
