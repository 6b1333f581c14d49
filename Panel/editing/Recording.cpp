#include "Panel/editing/Recording.h"

#include <string_view>
#include <unordered_map>
#include <utility>

Recording::Recording(PanelTarget& target) : target_(target) {
    step_.orderBefore = target.Order();
}

void Recording::Touch(const std::vector<std::string>& names) {
    touched_.insert(touched_.end(), names.begin(), names.end());
    Add(names, true);
}

void Recording::Created(const std::vector<std::string>& names) {
    Add(names, false);
}

void Recording::Add(const std::vector<std::string>& names, bool existed) {
    const std::vector<std::string> order = target_.Order();
    std::unordered_map<std::string_view, std::size_t> places;
    for (std::size_t place = 0; place < order.size(); ++place) {
        places[order[place]] = place;
    }
    std::vector<std::string> added;
    const auto add = [&](const std::string& one) {
        if (known_.insert(one).second) {
            added.push_back(one);
        }
    };
    for (const std::string& name : names) {
        add(name);
        if (name.empty()) {
            continue; // the root's text only: its controls are objects of their own
        }
        const auto own = places.find(name);
        if (own == places.end()) {
            continue;
        }
        const std::string path = name + "*"; // of what is inside, which stands right behind it
        for (std::size_t place = own->second + 1; place < order.size() && order[place].starts_with(path);
             ++place) {
            add(order[place]);
        }
    }
    const std::vector<std::string> texts =
        existed ? target_.Texts(added) : std::vector<std::string>(added.size());
    for (std::size_t i = 0; i < added.size(); ++i) {
        step_.texts.push_back({added[i], texts[i], ""});
    }
}

logic::EditStep Recording::Finish() {
    std::vector<std::string> left = touched_; // which may have made themselves new parts
    std::erase_if(left, [&](const std::string& name) { return !target_.Exists(name); });
    Add(left, false);
    std::vector<std::string> names;
    for (const logic::EditStep::Text& text : step_.texts) {
        names.push_back(text.name);
    }
    std::vector<std::string> after = target_.Texts(names);
    for (std::size_t i = 0; i < after.size(); ++i) {
        step_.texts[i].after = std::move(after[i]);
    }
    std::erase_if(step_.texts, [](const logic::EditStep::Text& text) { return text.before == text.after; });
    step_.orderAfter = target_.Order();
    if (step_.orderAfter == step_.orderBefore) {
        step_.orderBefore.clear();
        step_.orderAfter.clear();
    }
    return std::move(step_);
}
