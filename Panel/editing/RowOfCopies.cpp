#include "Panel/editing/RowOfCopies.h"

#include "Panel/editing/Groups.h"
#include "Panelhost/AddressTexts.h"
#include "Panelhost/HostInterface.h"
#include "Panelhost/Hostinfo.h"
#include "logic/editing/ComponentText.h"
#include "logic/editing/CountUp.h"
#include "logic/editing/Renaming.h"

#include <algorithm>
#include <map>
#include <set>

namespace {

// What is called like this: an object, a keyword of a control, or a parameter of a device.
bool Exists(HOSTINFO* root, const std::string& address) {
    if (a_FindHostinfo(root, address.c_str()) != nullptr) {
        return true;
    }
    const auto star = address.rfind('*');
    const HOSTINFO* object =
        star == std::string::npos ? nullptr : a_FindHostinfo(root, address.substr(0, star).c_str());
    return object != nullptr &&
           (object->kind == KIND_CONTROL || ph_ParameterState(root, address.c_str()) != PH_STATE_NONE);
}

// Copies, one after the other.
class Copier {
public:
    Copier(HOSTINFO* root, const std::vector<HOSTINFO*>& originals, const CopiedRow& row)
        : root_(root), row_(row) {
        std::vector<HOSTINFO*> objects;
        for (HOSTINFO* object : a_ListHostinfos(root)) { // with all that is inside
            for (const HOSTINFO* above = object; above != nullptr; above = above->parent) {
                if (std::find(originals.begin(), originals.end(), above) != originals.end()) {
                    objects.push_back(object);
                    break;
                }
            }
        }
        texts_ = a_AddressTexts(root, objects);
    }

    std::vector<logic::Component> Copy(const std::vector<logic::Component>& originals, int number) {
        std::vector<logic::Component> copies = originals;
        std::vector<std::string> names;
        std::vector<logic::NewName> newNames;
        for (const logic::Component& original : originals) {
            names.push_back(NameOf(original, number));
            newNames.push_back({original.name, names.back()});
        }
        const std::map<std::string, std::string> values = Values(newNames, number);
        struct Changed {
            std::string& line;
            std::string value;
        };
        std::vector<Changed> changes; // put in when the lines have their new names
        for (logic::Component& copy : copies) {
            for (std::string& line : copy.lines) {
                const logic::PropertyLine parts = logic::SplitPropertyLine(line);
                const auto changed = values.find(line.substr(0, line.size() - parts.value.size()));
                if (changed != values.end()) {
                    changes.push_back({line, changed->second});
                } else if (row_.counts && parts.keyword == "caption") {
                    changes.push_back({line, logic::CountedUp(parts.value, number)});
                }
            }
        }
        logic::RenameComponents(copies, names);
        for (const Changed& change : changes) {
            const std::size_t value = logic::SplitPropertyLine(change.line).value.size();
            change.line.replace(change.line.size() - value, value, change.value);
        }
        logic::MoveComponents(copies, {row_.stepX * number, row_.stepY * number});
        return copies;
    }

private:
    std::string NameOf(const logic::Component& original, int number) {
        const std::string name =
            row_.counts ? logic::CountedUp(original.header.name, number) : original.header.name;
        std::string free = logic::FreeName(name, [&](const std::string& candidate) {
            return a_FindHostinfo(root_, candidate.c_str()) != nullptr ||
                   given_.contains(logic::FoldName(candidate));
        });
        given_.insert(logic::FoldName(free));
        return free;
    }

    // What holds addresses, by what stands in front of the value.
    std::map<std::string, std::string> Values(const std::vector<logic::NewName>& names, int number) const {
        const logic::Renaming renaming(names, [this](const std::string& name) {
            return a_FindHostinfo(root_, name.c_str()) != nullptr;
        });
        std::map<std::string, std::string> values;
        for (const ADDRESSTEXT& text : texts_) {
            std::vector<std::string> addresses;
            for (const logic::AddressPlace& place : text.addresses) {
                const std::string address(place.In(text.text));
                std::string followed = renaming.Follow(place.form, address, {text.object->name}).address;
                if (row_.counts && address.find('%') != std::string::npos) {
                    followed = address; // it counts by the name that it stands for
                } else if (row_.counts && followed == address) {
                    followed = logic::CountedUpAddress(
                        address, number, place.form == logic::AddressForm::Functions,
                        [this](const std::string& other) { return Exists(root_, other); });
                }
                addresses.push_back(std::move(followed));
            }
            if (const auto changed = a_WithAddresses(text, addresses)) {
                values[text.object->name + "*" + text.row->keyword + "="] = *changed;
            }
        }
        return values;
    }

    HOSTINFO* root_;
    const CopiedRow& row_;
    std::vector<ADDRESSTEXT> texts_;
    std::set<std::string> given_;
};

} // namespace

RowOfCopies MakeRow(HOSTINFO* root, const std::vector<HOSTINFO*>& originals, const std::string& text,
                    const CopiedRow& row) {
    std::vector<std::string> damaged;
    const std::vector<logic::Component> components = logic::ReadComponents(text, damaged);
    Copier copier(root, originals, row);
    std::set<logic::GroupNumber> groups = GroupsIn(root, root);
    RowOfCopies copies;
    for (int number = 1; number <= row.count; ++number) {
        std::vector<logic::Component> made = copier.Copy(components, number);
        logic::GiveOwnGroups(made, groups);
        copies.text += logic::ComponentsText(made);
        for (const logic::Component& component : made) {
            copies.names.push_back(component.name);
        }
    }
    return copies;
}
