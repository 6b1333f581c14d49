#pragma once

#include <windows.h>

#include <vector>

// Keeps every processor busy with a program of its own for as long as this lives: the figures of a machine
// that has other things to do as well.
class Load {
public:
    // False when not all of them could be started.
    bool Start();
    Load() = default;
    ~Load();
    Load(const Load&) = delete;
    Load& operator=(const Load&) = delete;

    // What each of those programs does: it calculates until the process with that id ends.
    static int Calculate(DWORD processId);

private:
    std::vector<HANDLE> programs_;
};
