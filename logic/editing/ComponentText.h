// Property text of whole controls as it is copied and pasted: taken apart, renamed, moved and put together
// again.
#pragma once

#include "logic/editing/EditGeometry.h"
#include "logic/text/PropertyLine.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace logic {

// The line that creates a control, without line end. The path is empty or ends with "*".
std::string HeaderLine(std::string_view path, const ControlHeader& header);

// Lines without their line ends; empty ones are left out.
std::vector<std::string> SplitLines(std::string_view text);
// The lines of "to" that bring an object from the text "from" there, the header and lines that are in both
// left out. A keyword that only "from" holds is set to nothing.
std::string ChangedLines(std::string_view from, std::string_view to);
// The header of the first line; nothing when it is none.
std::optional<ControlHeader> HeaderOf(std::string_view text);

// A control with all that is inside it.
struct Component {
    std::string name; // the full name that its lines bear
    ControlHeader header;
    std::vector<std::string> lines; // of itself, then of its parts; without the header of the control itself
};

// Takes a text apart. A control whose path names no other control of the text stands on its own. Lines that
// cannot be read belong to the control whose name they begin with, as all others do; what belongs to no
// control of the text goes to the second list, of a long line the beginning.
std::vector<Component> ReadComponents(std::string_view text, std::vector<std::string>& damaged);

// The first name of the series "Knob 1", "Knob 2", ... that is not taken; the name itself when it is free.
std::string FreeName(std::string_view name, const std::function<bool(const std::string&)>& isTaken);

// Gives each component the new name at its place in the list, directly on the root. Connections among the
// components follow; all others stay as they are.
void RenameComponents(std::span<Component> components, std::span<const std::string> names);
void MoveComponents(std::span<Component> components, Offset by);

// Bounds of all.
Rectangle ComponentBounds(std::span<const Component> components);
// Property text, in the order of the components.
std::string ComponentsText(std::span<const Component> components);

} // namespace logic
