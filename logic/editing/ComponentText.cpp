#include "logic/editing/ComponentText.h"

#include "logic/text/Text.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <unordered_map>
#include <unordered_set>

namespace logic {

namespace {

constexpr std::size_t LONGEST_NAME = 63;

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

// Whether an address or object name is the folded name itself or something below it.
bool IsWithin(const std::string& folded, const std::string& name) {
    return folded.compare(0, name.size(), name) == 0 &&
           (folded.size() == name.size() || folded[name.size()] == '*');
}

// The innermost control of the text that an object is in, or that it is.
using Owners = std::unordered_map<std::string, std::size_t>; // folded full name of a control: its component
Owners::const_iterator OwnerOf(std::string_view object, const Owners& owners) {
    std::string name = FoldName(object);
    auto owner = owners.find(name);
    while (owner == owners.end() && name.find('*') != std::string::npos) {
        name.resize(name.rfind('*'));
        owner = owners.find(name);
    }
    return owner;
}

// What is before the keyword: the object with its "*", then the keyword with its "=".
std::string KeyOf(const std::string& line) {
    const PropertyLine parts = SplitPropertyLine(line);
    return line.substr(0, line.size() - parts.value.size());
}

struct Renaming {
    std::string from; // folded
    std::size_t length;
    std::string to;
};

std::string Renamed(std::string_view address, const std::vector<Renaming>& renamings) {
    const std::string folded = FoldName(address);
    const Renaming* best = nullptr; // the most particular one
    for (const Renaming& renaming : renamings) {
        if (IsWithin(folded, renaming.from) && (best == nullptr || renaming.length > best->length)) {
            best = &renaming;
        }
    }
    return best == nullptr ? std::string(address) : best->to + std::string(address.substr(best->length));
}

std::string RenamedLine(const std::string& line, const Renaming& own, const std::vector<Renaming>& all) {
    const PropertyLine parts = SplitPropertyLine(line);
    const std::string object = own.to + std::string(parts.object.substr(own.length));
    if (!parts.hasEquals) {
        return object + "*" + std::string(parts.value);
    }
    std::string value(parts.value);
    if (parts.keyword == "connection") {
        std::vector<std::string> entries = SplitList(value);
        for (std::string& entry : entries) {
            entry = Renamed(entry, all);
        }
        value = JoinList(entries);
    }
    return object + "*" + std::string(parts.keyword) + "=" + value;
}

} // namespace

std::string HeaderLine(std::string_view path, const ControlHeader& header) {
    char styles[2][16];
    std::snprintf(styles[0], sizeof styles[0], "0x%08x", static_cast<unsigned>(header.extendedStyle));
    std::snprintf(styles[1], sizeof styles[1], "0x%08x", static_cast<unsigned>(header.style));
    return std::string(path) + "control=" + styles[0] + " " + header.className + " \"" + header.name + "\" " +
           styles[1] + " " + RectangleText(header.rectangle);
}

std::vector<std::string> SplitLines(std::string_view text) {
    std::vector<std::string> lines;
    for (const std::string_view field : SplitFields(text, '\n')) {
        std::string line(field);
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (!line.empty()) {
            lines.push_back(std::move(line));
        }
    }
    return lines;
}

std::string ChangedLines(std::string_view from, std::string_view to) {
    const std::vector<std::string> before = SplitLines(from);
    const std::vector<std::string> after = SplitLines(to);
    const std::unordered_set<std::string> held(before.begin(), before.end());
    std::unordered_set<std::string> keys;
    std::string changed;
    for (const std::string& line : after) {
        keys.insert(KeyOf(line));
        if (!held.contains(line) && SplitPropertyLine(line).keyword != "control") {
            changed += line + "\r\n";
        }
    }
    for (const std::string& line : before) {
        if (const std::string key = KeyOf(line);
            !keys.contains(key) && SplitPropertyLine(line).keyword != "control") {
            changed += key + "\r\n";
        }
    }
    return changed;
}

std::optional<ControlHeader> HeaderOf(std::string_view text) {
    std::string_view line = text.substr(0, text.find('\n'));
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    const PropertyLine parts = SplitPropertyLine(line);
    return parts.keyword == "control" ? ParseControlHeader(parts.value) : std::nullopt;
}

std::vector<Component> ReadComponents(std::string_view text, std::vector<std::string>& damaged) {
    std::vector<Component> components;
    Owners owners;
    LineReader reader(text.size()); // what is damaged is kept with its control
    reader.Feed(text);
    reader.Finish();
    std::string line;
    bool usable = false;
    while (reader.Next(line, usable)) {
        const PropertyLine parts = SplitPropertyLine(line);
        const auto owner = OwnerOf(parts.object, owners);
        if (line.empty()) {
            continue;
        }
        auto header = usable && parts.keyword == "control" ? ParseControlHeader(parts.value) : std::nullopt;
        if (!header) {
            if (owner == owners.end()) {
                damaged.push_back(line.substr(0, LineReader::excerptLength));
            } else {
                components[owner->second].lines.push_back(line);
            }
        } else {
            header->name = CleanName(header->name.empty() ? header->className : header->name);
            const std::string path = parts.object.empty() ? "" : std::string(parts.object) + "*";
            const std::string name = path + header->name;
            const bool isPart = !parts.object.empty() && owner != owners.end();
            if (owners.contains(FoldName(name))) {
                damaged.push_back(line); // what follows would be of either
            } else if (isPart) {
                components[owner->second].lines.push_back(line);
                owners[FoldName(name)] = owner->second;
            } else {
                owners[FoldName(name)] = components.size();
                components.push_back({name, *header, {}});
            }
        }
    }
    return components;
}

std::string FreeName(std::string_view name, const std::function<bool(const std::string&)>& isTaken) {
    std::string base(name);
    if (!isTaken(base)) {
        return base;
    }
    std::size_t digits = 0;
    while (digits < base.size() && digits < 9 && IsDigit(base[base.size() - 1 - digits])) {
        ++digits;
    }
    long number = 1;
    if (digits > 0) {
        number = std::strtol(base.c_str() + base.size() - digits, nullptr, 10);
        base.erase(base.size() - digits);
    } else {
        base += ' ';
    }
    std::string next;
    do {
        const std::string suffix = std::to_string(++number);
        next = base.substr(0, LONGEST_NAME - suffix.size()) + suffix;
    } while (isTaken(next));
    return next;
}

void RenameComponents(std::span<Component> components, std::span<const std::string> names) {
    std::vector<Renaming> renamings;
    for (std::size_t i = 0; i < components.size(); ++i) {
        renamings.push_back({FoldName(components[i].name), components[i].name.size(), names[i]});
    }
    for (std::size_t i = 0; i < components.size(); ++i) {
        Component& component = components[i];
        for (std::string& line : component.lines) {
            line = RenamedLine(line, renamings[i], renamings);
        }
        component.name = names[i];
        component.header.name = names[i];
    }
}

void MoveComponents(std::span<Component> components, Offset by) {
    for (Component& component : components) {
        component.header.rectangle = Moved(component.header.rectangle, by);
    }
}

Rectangle ComponentBounds(std::span<const Component> components) {
    std::vector<Rectangle> places;
    for (const Component& component : components) {
        places.push_back(component.header.rectangle);
    }
    return Bounds(places);
}

std::string ComponentsText(std::span<const Component> components) {
    std::string text;
    for (const Component& component : components) {
        const std::size_t ownName = component.name.rfind('*') + 1; // 0 without a path
        text += HeaderLine(std::string_view(component.name).substr(0, ownName), component.header) + "\r\n";
        for (const std::string& line : component.lines) {
            text += line + "\r\n";
        }
    }
    return text;
}

} // namespace logic
