#pragma once

#include "Controls/dialog/ControlDialog.h"

// The two lists of what the control of a dialog is bound to.

void InitializeList(ControlDialog& dialog, int id, const char* title);
void FillList(ControlDialog& dialog, int id, const BINDINGLIST& bindings);
// The menu of a list, and what is chosen from it.
void ShowListMenu(ControlDialog& dialog, int id);
