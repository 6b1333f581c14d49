#pragma once

#include <windows.h>

#include <string>

// What the tests of lists ask them, and keys for any window.
std::string Cell(HWND list, int row, int column);
int RowOf(HWND list, const std::string& text);
void SelectRow(HWND list, int row);
int SelectedRow(HWND list);
void Press(HWND window, WPARAM key);
