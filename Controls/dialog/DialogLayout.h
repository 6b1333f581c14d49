#pragma once

#include "Controls/dialog/DialogFields.h"

#include <vector>
#include <windows.h>

// The template of a parameter dialog that is laid out for its fields: selector and heading on top, the fields
// below, the lists of bindings and the buttons at the bottom. Few fields stand in one column, more in two,
// and those with much to show in rows of their own under these.
std::vector<DWORD> LayOutDialog(const std::string& title, const std::vector<DialogField>& fields);
