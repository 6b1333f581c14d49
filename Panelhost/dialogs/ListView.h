#pragma once

#include <windows.h>

#include <string>

// What the dialogs ask of list views and edit fields.

std::string WindowText(HWND window);

// Appends a column.
void AddColumn(HWND list, int column, const char* title, int width);
int RowCount(HWND list);
// The text of a cell, up to TEXT_SIZE - 1 characters.
std::string CellText(HWND list, int row, int column);
void SetCell(HWND list, int row, int column, const std::string& text);
// Appends a row.
void AddRow(HWND list, const std::string& text, int image = 0);
// -1 when no row is selected.
int SelectedRow(HWND list);
// Selects the row and scrolls it into view; -1 for none.
void SelectRow(HWND list, int row);
void SetListColours(HWND list, COLORREF ground);
