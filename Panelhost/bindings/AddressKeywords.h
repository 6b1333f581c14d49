#pragma once

#include "Panelhost/AddressTexts.h"

#include <string_view>
#include <unordered_map>
#include <vector>

class PanelRoot;

// All texts of a_AddressTexts, and lines that name no object, with no addresses: they go to the panel, or to
// what the control is connected to.
std::vector<ADDRESSTEXT> TextsThatBind(PanelRoot& root);

// Which keywords of a panel's objects hold addresses. Tables are looked at once each.
class AddressKeywords {
public:
    explicit AddressKeywords(PanelRoot& root);

    struct Holder {
        const KEYWORDROW* row;
        int number; // of the row
        logic::AddressForm form;
        const KEYWORDINFO* info; // null when there is none
    };
    // The keywords of the object that are saved and hold addresses, in the order of saving.
    const std::vector<Holder>& Of(HOSTINFO* object);
    // Of any object: the one that is meant may be another one by the time that a line is applied.
    logic::AddressForm FormOf(std::string_view keyword) const;

private:
    std::unordered_map<const KEYWORDROW*, std::vector<Holder>> tables_;
    std::unordered_map<std::string_view, logic::AddressForm> forms_;
};
