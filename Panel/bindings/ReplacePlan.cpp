#include "Panel/bindings/ReplacePlan.h"

#include "Panelhost/PropertyValues.h"

#include <algorithm>

namespace {

bool NamesNothing(int state) {
    return state == PARAMETER_NONE || state == ADDRESS_NO_KEYWORD || state == ADDRESS_NO_CONTROL;
}

// Of a pattern that stands for several, one that names nothing counts before one that does.
int StateOf(const ADDRESSTEXT& text, logic::AddressForm form, const std::string& address) {
    int state = PARAMETER_UNKNOWN;
    for (const BINDING& binding : a_ResolveAddress(text, form, address)) {
        state = binding.state;
        if (NamesNothing(state)) {
            break;
        }
    }
    return state;
}

std::vector<HOSTINFO*> WithParts(HOSTINFO* root, const std::vector<HOSTINFO*>& objects) {
    std::vector<HOSTINFO*> all;
    for (HOSTINFO* control : a_ListHostinfos(root)) {
        for (const HOSTINFO* one = control; one != nullptr; one = one->parent) {
            if (std::find(objects.begin(), objects.end(), one) != objects.end()) {
                all.push_back(control);
                break;
            }
        }
    }
    return all;
}

} // namespace

ReplacePlan PlanReplacement(HOSTINFO* root, const std::vector<HOSTINFO*>* among,
                            const logic::AddressReplacement& replacement) {
    ReplacePlan plan;
    const std::vector<ADDRESSTEXT> texts =
        among == nullptr ? a_AddressTexts(root) : a_AddressTexts(root, WithParts(root, *among));
    for (const ADDRESSTEXT& text : texts) {
        std::vector<std::string> addresses;
        const std::size_t first = plan.entries.size();
        for (const logic::AddressPlace& place : text.addresses) {
            addresses.emplace_back(place.In(text.text));
            if (const auto other = replacement.Apply(addresses.back())) {
                const int state = StateOf(text, place.form, *other);
                plan.entries.push_back({text.object, text.row, addresses.back(), *other, state, true});
                addresses.back() = *other;
            }
        }
        if (plan.entries.size() == first) {
            continue;
        }
        const auto changed = a_WithAddresses(text, addresses);
        const bool isTaken = changed && a_LengthObjection(text.row->keyword, *changed).empty();
        for (std::size_t i = first; i < plan.entries.size(); ++i) {
            plan.entries[i].isTaken = isTaken;
            plan.unresolved += isTaken && NamesNothing(plan.entries[i].state) ? 1 : 0;
        }
        if (isTaken) {
            plan.lines.push_back({text.object, std::string(text.row->keyword) + "=" + *changed});
        }
    }
    return plan;
}
