#pragma once

#include "base/Handles.h"

#include <string>

// The library of control classes. They are registered while it is loaded.
class ControlLibrary {
public:
    // Loads it from the application folder. On failure the error says why.
    bool Load(std::string& error);
    std::string BuildStamp() const;

private:
    Library library_;
};
