#pragma once

#include "logic/text/AddressText.h"

#include <string>
#include <string_view>

// What is known of a keyword beside its row of the keyword table: for dialogs, choosers and the reference.

enum class KeywordKind {
    Text,
    Integer,   // whole, 32 bit
    Number,    // float
    Numbers,   // several, separated by commas
    Words,     // one of `words`
    Colour,    // 0x00bbggrr
    Typeface,  // "face,points" or "face,points,bold"
    Picture,   // an image file, which may stand below the application folder
    File,      // another file
    Addresses, // OBJECT*keyword or OBJECT, joined by ";"
    Line,      // a property line for later
    Rectangle, // "left,top,right,bottom"
    Block,     // a value of bytes, with a text form where it has one
};

// One of the numbers of a keyword of the kind Numbers, for a dialog that shows each in a field of its own.
struct KEYWORDPART {
    const char* label;
    int item;   // of the dialog
    int number; // from 0 on
    int last;   // the line that is sent ends with this number
};

// One of the values of a keyword for which a dialog has a button. The last one also stands for all values
// that none of them has.
struct KEYWORDOPTION {
    const char* value;
    int item; // of the dialog
};

struct KEYWORDINFO {
    KeywordKind kind = KeywordKind::Text;
    const char* sentence = "";  // what it is, for the reference
    const char* label = "";     // in dialogs; empty for what they do not show
    const char* words = "";     // Words: the allowed ones, separated by commas
    const char* unit = "";      // of a number; empty for none
    bool hasLimits = false;     // a number beyond these is refused
    bool isAsTyped = false;     // a number is sent as it was typed, not rounded to six digits
    bool isOnlyWritten = false; // its lines in a panel file are the control's own, and no news to it
    int longest = 0;            // characters that it takes; 0: as many as any value may have
    bool mayBeEmpty = false;    // of a kind that otherwise may not: stands for none
    double minimum = 0;
    double maximum = 0;
    const char* pictures =
        ""; // Picture: how the names of the images begin that a dialog offers; empty for none
    logic::AddressForm addresses = logic::AddressForm::None; // whether the text holds addresses, and how
    const char* inputs = "";            // of a pattern: the keywords that hold how many there are
    const char* outputs = "";           // empty where there is one number alone
    const KEYWORDPART* parts = nullptr; // Numbers
    int partCount = 0;
    const KEYWORDOPTION* options = nullptr;
    int optionCount = 0;
    int item = 0;        // of a dialog that is known to others; 0 for any
    int chooser = 0;     // the button beside it; 0 for any
    int previewItem = 0; // the same of the text that shows what becomes of the value
    std::string (*preview)(std::string_view value) = nullptr;
    // Why a typed text cannot be the value, in words that follow the text; empty when it can.
    std::string (*objection)(std::string_view value) = nullptr;
};
