#include "logic/editing/Groups.h"

#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

#include <limits>
#include <map>
#include <string>

namespace logic {

namespace {

// What a line of a component says of its group; nothing when it is another line, or that of a part.
std::optional<GroupNumber> GroupIn(const Component& component, std::string_view line) {
    const PropertyLine parts = SplitPropertyLine(line);
    return parts.hasEquals && parts.keyword == GROUP_KEYWORD &&
                   FoldName(parts.object) == FoldName(component.name)
               ? ParseGroup(parts.value)
               : std::nullopt;
}

} // namespace

std::optional<GroupNumber> ParseGroup(std::string_view text) {
    if (text.empty()) {
        return GroupNumber{0};
    }
    const auto number = ParseWholeInteger(text);
    if (!number || *number < 1 || *number > std::numeric_limits<GroupNumber>::max()) {
        return std::nullopt;
    }
    return static_cast<GroupNumber>(*number);
}

GroupNumber FreeGroup(const std::set<GroupNumber>& taken) {
    GroupNumber free = 1;
    for (const GroupNumber number : taken) {
        if (number > free) {
            break;
        }
        free = static_cast<GroupNumber>(number + 1); // 0 after the last
    }
    return free;
}

void GiveOwnGroups(std::span<Component> components, std::set<GroupNumber>& taken) {
    std::map<GroupNumber, int> members;
    for (const Component& component : components) {
        for (const std::string& line : component.lines) {
            if (const auto group = GroupIn(component, line)) {
                ++members[*group];
            }
        }
    }
    std::map<GroupNumber, GroupNumber> own;
    for (const auto& [group, count] : members) {
        if (const GroupNumber free = FreeGroup(taken); group != 0 && count > 1 && free != 0) {
            own[group] = free;
            taken.insert(free);
        }
    }
    for (Component& component : components) {
        std::erase_if(component.lines, [&](const std::string& line) {
            const auto group = GroupIn(component, line);
            return group && !own.contains(*group);
        });
        for (std::string& line : component.lines) {
            if (const auto group = GroupIn(component, line)) {
                line = line.substr(0, line.find('=') + 1) + std::to_string(own[*group]);
            }
        }
    }
}

} // namespace logic
