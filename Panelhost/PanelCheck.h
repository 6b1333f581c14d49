#pragma once

#include "Panelhost/Api.h"

#include <list>
#include <string>

class HOSTINFO;

// What is wrong with a panel, as far as can be seen before anybody uses it.
constexpr int FINDING_LINE = 1;    // a line of the panel file that could not be read
constexpr int FINDING_BINDING = 2; // an address that nothing has: a parameter, a control, a keyword
constexpr int FINDING_FILE = 3;    // a file that is missing or cannot be read
constexpr int FINDING_PLACE = 4;   // a control that reaches beyond what contains it
constexpr int FINDING_COVER = 5;   // a control that covers another one
constexpr int FINDING_LAYER = 6;   // a layer that is not active, and no button brings it up
constexpr int FINDING_DEVICE = 7;  // a device that is not live, or could not be declared

struct PANELFINDING {
    int kind = 0;
    std::string object; // full name of the control or device; empty for the panel
    std::string text;   // in words: "function AMP1*gain9: no such parameter"
};

// All findings, kind by kind and in the order of the panel. Devices and values are judged as they are now:
// let the panel tick until they had time to answer. Empty for a panel without any, and for none.
PANELHOST_API std::list<PANELFINDING> a_CheckPanel(HOSTINFO* root);
// "missing file" and so on, for people.
PANELHOST_API const char* a_FindingName(int kind);
// The findings as text, a line each: "missing file, Scenes: ...".
PANELHOST_API std::string a_FindingsText(const std::list<PANELFINDING>& findings);
// Whether devices and values had their answers, so that waiting longer changes nothing.
PANELHOST_API bool a_HasAnswers(HOSTINFO* root);
