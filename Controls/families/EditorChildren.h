#pragma once

#include "Controls/families/EditorPanel.h"

constexpr int EDITOR_ITEM_HEIGHT = 17; // of a list's items, pixels

// Makes the child of a row. Its messages go by the panel first: presses that are the panel's, Tab, and a
// field's Enter and Escape.
HWND CreateEditorChild(const EditorChild& row, HWND parent, HFONT font);

inline bool IsList(EditorPart part) {
    return part == EditorPart::List || part == EditorPart::TextList;
}
// Sends a field's notification to its panel.
LRESULT NotifyEditor(HWND field, UINT code);
