#pragma once

#include <windows.h>

#include <string>

class HOSTINFO;

// Asks for another name of a control and gives it.
void AskForName(HWND owner, HOSTINFO* object);
// Gives a control another name, after telling what could not follow and asking whether it may be so. A
// sentence that says why it cannot have it; empty when it has, or when the user would not.
std::string RenameAsking(HWND owner, HOSTINFO* object, const std::string& name);
