#pragma once

#include "Controls/framework/Control.h"

#include <span>
#include <string_view>

// The parameter dialogs of all controls share one implementation; a control describes its own fields by
// tables. A dialog changes its control by property lines only.

enum class FieldKind { Integer, Float, TypedFloat, Text, Colour, Font };

// An edit field for a keyword, or for one of the comma-separated parts of a keyword whose value is several
// numbers. Enter, and leaving the field, sends the keyword with its parts up to `lastPart`; Escape puts back
// what the control holds. A Float is sent in six digits, a TypedFloat as it was typed.
struct DialogEdit {
    int id;
    const char* label; // in messages
    FieldKind kind;
    const char* keyword;
    int part = 0;
    int lastPart = 0;
    int chooser = 0; // button that opens the system's chooser of colours or fonts; 0: none
};

// A text that shows what becomes of a keyword's value.
struct DialogPreview {
    int id;
    const char* keyword;
    std::string (*shown)(std::string_view value);
};

// A radio button that sets a keyword to a value. The last one of a keyword also stands for all values that
// none of them has.
struct DialogOption {
    int id;
    const char* keyword;
    const char* value;
};

// A combo box of the values of a keyword, separated by commas.
struct DialogChoice {
    int id;
    const char* keyword;
    const char* values;
};

struct ParameterDialog {
    int resource; // dialog template
    std::span<const DialogEdit> edits = {};
    std::span<const DialogOption> options = {};
    std::span<const DialogChoice> choices = {};
    const char* bitmapPrefix = nullptr; // of the images to choose from; null when there is no image
    std::span<const DialogPreview> previews = {};
    int templateEdit =
        0; // edit field of a click template, for the lists that fill in object and keyword; 0: none
};

// CWM_PARAMETERDLG: opens the control's dialog at the cursor unless it has one open. The open dialog, or
// null.
HWND OpenParameterDialog(CONTROLPROPERTIES& control);
