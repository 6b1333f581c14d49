#pragma once

#include "Panelhost/Hostinfo.h"

#include <string>
#include <vector>

// Giving controls other names, so that whatever names them goes on naming them. Devices and the panel keep
// theirs.

// A text of a control that names what gets another name, or something inside it.
struct RENAMEDTEXT {
    HOSTINFO* object = nullptr;
    const KEYWORDROW* row = nullptr; // of its table
    std::string before;
    std::string after;
};

// One that cannot follow: it stays as it is, and names something else then, or nothing.
struct RENAMELOSS {
    RENAMEDTEXT text;
    int reason = 0; // PH_LOSS_...
};

struct RENAMING {
    HOSTINFO* object = nullptr;
    std::string from; // full names
    std::string to;
    std::vector<RENAMEDTEXT> texts;
    std::vector<RENAMELOSS> losses;
    int answer = 0; // PH_RENAMED when it can be carried out, or the reason why not, with nothing in the lists
};

// What has to be changed for the control to be called so. Nothing is changed.
PANELHOST_API RENAMING a_PlanRenaming(HOSTINFO* object, const char* newName);
// Why a control cannot be called so, as a sentence; empty for PH_RENAMED.
PANELHOST_API std::string a_RenameFault(const RENAMING& renaming);
// What is lost, a line each, for people; at most so many, then how many more.
PANELHOST_API std::string a_RenameLosses(const RENAMING& renaming, std::size_t most);

// Gives the name and sets the texts; nothing else may have changed since it was planned. What is edited can
// be undone when somebody listens. 1, or 0 when nothing was done.
PANELHOST_API int a_Rename(const RENAMING& renaming);

// For who can undo it: carries it out by the two functions below, and answers whether it did. One listener a
// root; null removes it.
using RENAMELISTENER = int (*)(const RENAMING& renaming, void* context);
PANELHOST_API void a_SetRenameListener(HOSTINFO* root, RENAMELISTENER listener, void* context);
// The name alone, which texts do not follow. 1; 0 when the control cannot have it.
PANELHOST_API int a_GiveName(HOSTINFO* object, const char* ownName);
// The texts, once the name is given.
PANELHOST_API void a_SetRenamedTexts(const RENAMING& renaming);
