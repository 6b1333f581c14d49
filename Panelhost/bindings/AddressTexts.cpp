#include "Panelhost/AddressTexts.h"

#include "Panelhost/bindings/AddressKeywords.h"
#include "Panelhost/objects/PanelRoot.h"
#include "base/Guard.h"

#include <memory>
#include <string_view>

namespace {

bool IsConnection(const KEYWORDROW& row) {
    return std::string_view(row.keyword) == "connection";
}

// What a panel file holds; connections are saved without being flagged.
bool IsSaved(const KEYWORDROW& row) {
    return (row.flags & KEYWORD_SAVED) != 0 || IsConnection(row);
}

std::string TextOf(const HOSTINFO* object, const AddressKeywords::Holder& holder) {
    if (IsConnection(*holder.row)) {
        return a_BuildString(object->connections); // asked for, a control answers its functions
    }
    char text[TEXT_SIZE] = "";
    VALUERECORD record = VALUERECORD::GetText(text, holder.number);
    SendMessageA(object->window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
    text[TEXT_SIZE - 1] = '\0';
    return text;
}

std::vector<ADDRESSTEXT> TextsOf(PanelRoot& root, const std::vector<HOSTINFO*>& objects,
                                 bool withoutAddresses = false) {
    const auto keywords = std::make_shared<AddressKeywords>(root);
    const logic::FormOfKeyword formOf = [keywords](std::string_view keyword) {
        return keywords->FormOf(keyword);
    };
    std::vector<ADDRESSTEXT> texts;
    for (HOSTINFO* object : objects) {
        if (!a_IsAlive(object) || PanelRoot::Above(object) != &root || object->kind == KIND_DEVICE) {
            continue;
        }
        for (const AddressKeywords::Holder& holder : keywords->Of(object)) {
            std::string text = TextOf(object, holder);
            if (text.empty()) {
                continue;
            }
            auto addresses = logic::FindAddresses(holder.form, text, formOf);
            if (!addresses.empty() || withoutAddresses) {
                texts.push_back(
                    {object, holder.row, holder.form, std::move(text), std::move(addresses), formOf});
            }
        }
    }
    return texts;
}

} // namespace

AddressKeywords::AddressKeywords(PanelRoot& root) {
    Of(&root);
    for (HOSTINFO* control : root.Controls()) {
        Of(control);
    }
}

const std::vector<AddressKeywords::Holder>& AddressKeywords::Of(HOSTINFO* object) {
    static const std::vector<Holder> none;
    const KEYWORDROW* table = object->HasHostinfoTable() != 0 ? object->GetHostinfoTable() : nullptr;
    if (table == nullptr) {
        return none;
    }
    const auto [entry, isNew] = tables_.try_emplace(table);
    if (isNew) {
        const KEYWORDINFO* infos = object->GetKeywordInfo();
        for (int number = 0; table[number].keyword != nullptr; ++number) {
            const KEYWORDROW& row = table[number];
            const logic::AddressForm form = a_AddressForm(object, &row);
            if (form == logic::AddressForm::None || row.handler == nullptr) {
                continue;
            }
            forms_[row.keyword] = form;
            if (IsSaved(row)) {
                entry->second.push_back({&row, number, form, infos == nullptr ? nullptr : &infos[number]});
            }
        }
    }
    return entry->second;
}

logic::AddressForm AddressKeywords::FormOf(std::string_view keyword) const {
    const auto found = forms_.find(keyword);
    return found == forms_.end() ? logic::AddressForm::None : found->second;
}

std::vector<ADDRESSTEXT> TextsThatBind(PanelRoot& root) {
    return TextsOf(root, {root.Controls().begin(), root.Controls().end()}, true);
}

std::vector<ADDRESSTEXT> a_AddressTexts(HOSTINFO* root) {
    return Guarded(std::vector<ADDRESSTEXT>(), [&] {
        PanelRoot* panel = PanelRoot::From(root);
        return panel == nullptr ? std::vector<ADDRESSTEXT>()
                                : TextsOf(*panel, {panel->Controls().begin(), panel->Controls().end()});
    });
}

std::vector<ADDRESSTEXT> a_AddressTexts(HOSTINFO* root, const std::vector<HOSTINFO*>& objects) {
    return Guarded(std::vector<ADDRESSTEXT>(), [&] {
        PanelRoot* panel = PanelRoot::From(root);
        return panel == nullptr ? std::vector<ADDRESSTEXT>() : TextsOf(*panel, objects);
    });
}

std::optional<std::string> a_WithAddresses(const ADDRESSTEXT& text,
                                           const std::vector<std::string>& addresses) {
    return Guarded(std::optional<std::string>(), [&] {
        return logic::WithAddresses(text.form, text.text, text.addresses, addresses, text.formOf);
    });
}
