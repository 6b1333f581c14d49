#pragma once

#include <string>

class HOSTINFO;

// What a list of a panel says at its head.
struct ControlListHead {
    std::string title; // of the panel
    std::string file;  // empty for none
    std::string time;  // when the list was made
};

// All controls of a panel with class, place and bindings, as a page (HTML, UTF-8) to be printed: what they
// are bound to, and whether that is there now.
std::string ControlList(HOSTINFO* root, const ControlListHead& head);
// The same as a file. False when it cannot be written: GetLastError says why.
bool SaveControlList(HOSTINFO* root, const ControlListHead& head, const std::string& file);
// The local time for the head ("2026-11-22 14:05").
std::string LocalTimeText();
