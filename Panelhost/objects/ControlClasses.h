#pragma once

#include <string>

// Whether a library of controls has registered the window class (ph_RegisterControlClass).
bool IsControlClass(const std::string& windowClass);
