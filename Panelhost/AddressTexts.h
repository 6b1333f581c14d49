#pragma once

#include "Panelhost/Hostinfo.h"

#include <optional>
#include <string>
#include <vector>

// The texts on a panel that hold addresses: lists of functions and connections, clicks, patterns, mails. Who
// renames an object or binds to another device changes addresses in them, and sets the texts again.

// How the text of that row of the object's table holds addresses. A keyword without KEYWORDINFO is judged by
// its flags. None for one that the object does not know.
PANELHOST_API logic::AddressForm a_AddressForm(HOSTINFO* object, const KEYWORDROW* row);
PANELHOST_API logic::AddressForm a_AddressForm(HOSTINFO* object, const char* keyword);

struct ADDRESSTEXT {
    HOSTINFO* object = nullptr;
    const KEYWORDROW* row = nullptr; // of its table; never null
    logic::AddressForm form = logic::AddressForm::None;
    std::string text;                           // as it is saved: with "%n" and the like
    std::vector<logic::AddressPlace> addresses; // in order; at least one
    logic::FormOfKeyword formOf;                // of the panel's keywords
};

// All such texts that controls of the root are saved with, control by control in the order of saving; of the
// objects alone, in the second form. Lines of a file that could not be read are not among them. Empty without
// memory.
PANELHOST_API std::vector<ADDRESSTEXT> a_AddressTexts(HOSTINFO* root);
PANELHOST_API std::vector<ADDRESSTEXT> a_AddressTexts(HOSTINFO* root, const std::vector<HOSTINFO*>& objects);

// The text with other addresses, one for each, an equal one where nothing changes. Nothing when that would be
// read as other addresses again: one holds a ";" in a list, a "=" in a click, a "}" in a mail.
PANELHOST_API std::optional<std::string> a_WithAddresses(const ADDRESSTEXT& text,
                                                         const std::vector<std::string>& addresses);
