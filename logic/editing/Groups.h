// Groups of controls that are edited as one: siblings whose lines bear the same number.
#pragma once

#include "logic/editing/ComponentText.h"

#include <cstdint>
#include <optional>
#include <set>
#include <span>
#include <string_view>

namespace logic {

// The line of a control that says its group. A keyword of no class.
inline constexpr std::string_view GROUP_KEYWORD = "editgroup";

using GroupNumber = std::uint16_t; // 0: of no group

// 1 to 65535, or empty for no group.
std::optional<GroupNumber> ParseGroup(std::string_view text);
// The least that is not taken; 0 when all are.
GroupNumber FreeGroup(const std::set<GroupNumber>& taken);
// Copies are groups of their own: gives each group among the components a free number, which is taken then.
// One that came without the others of its group is in none.
void GiveOwnGroups(std::span<Component> components, std::set<GroupNumber>& taken);

} // namespace logic
