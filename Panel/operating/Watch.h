#pragma once

#include "Panel/common/CommandLine.h"
#include "Panel/common/Report.h"

// Starts this program once more with the same arguments (without the program's name), and again whenever it
// has crashed. Returns its exit code when it has ended by itself; after three crashes within a minute tells
// so and returns the code for something that could not be done.
int Watch(const CommandLine& commandLine, int count, wchar_t** arguments, const Reporter& reporter);

// Whether a program watches this one: nobody is there to close a message box before it can start anew.
bool IsWatched();
