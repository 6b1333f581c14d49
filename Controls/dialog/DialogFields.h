#pragma once

#include "Controls/framework/Control.h"

#include <string>
#include <vector>

// What a parameter dialog shows of a keyword, or of one of the numbers of its value.
struct DialogField {
    enum class Input { Edit, List, Option, Picture };

    Input input;
    const char* keyword;
    const KEYWORDINFO* info;
    const char* label;
    int item;    // of the dialog
    int chooser; // the button that opens the system's chooser of colours or fonts, or that of images; 0: none
    int preview; // the text that shows what becomes of the value; 0: none
    // Of several numbers: this one, the line that is sent ends with the last; -1: the whole value.
    int number = -1;
    int last = -1;
    const char* value = ""; // that an option sets

    bool IsNumber() const {
        return number >= 0 || info->kind == KeywordKind::Integer || info->kind == KeywordKind::Number;
    }
};

// The fields of a control's dialog in the order of its keywords: those that have a label, parts or options.
std::vector<DialogField> DialogFieldsOf(const CONTROLPROPERTIES& control);
