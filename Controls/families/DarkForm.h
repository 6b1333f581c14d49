#pragma once

#include "Controls/families/FormPanel.h"
#include "Controls/families/SystemChild.h"

#include <optional>

// How the children of a form look on a panel of the style "dark". They stay the system's in all that they do.

// The answer to a message of painting; nothing for any other, and for a part that the system draws in the
// colours that it asks its form for.
std::optional<LRESULT> PaintDarkChild(const FORMPROPERTIES& form, FormPart part, const ChildMessage& of);

// While a child does something else: it does not paint by itself, and is painted anew afterwards.
class DarkChange {
public:
    DarkChange(FormPart part, const ChildMessage& of);
    ~DarkChange();
    DarkChange(const DarkChange&) = delete;
    DarkChange& operator=(const DarkChange&) = delete;

private:
    HWND child_ = nullptr; // that is to be painted anew
    bool isField_;
    bool isStill_ = false;
};

// An item of a list that is dropped down, or the text in a closed one.
void DrawDarkItem(const FORMPROPERTIES& form, const DRAWITEMSTRUCT& item, const char* text);
