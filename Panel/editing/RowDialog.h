#pragma once

#include "Panel/editing/RowOfCopies.h"

#include <windows.h>

// Asks how many copies there are to be and how far apart; false when none are wanted.
bool AskForRow(HWND owner, CopiedRow& row);
