#pragma once

#include "Controls/families/FormPanel.h"

constexpr int FORM_ITEM_HEIGHT = 17; // of a list's items, pixels

// Makes the child of a row. Its messages go by the panel first: presses that are the panel's, Tab, and a
// field's Enter and Escape.
HWND CreateFormChild(const FormChild& row, HWND parent, HFONT font);

inline bool IsList(FormPart part) {
    return part == FormPart::List || part == FormPart::TextList;
}
// Sends a field's notification to its panel.
LRESULT NotifyForm(HWND field, UINT code);
