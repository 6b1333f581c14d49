// Layers: a panel shows some of its 64 layers, and every control is on some or all of them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace logic {

// Reads a comma list of layer names u1 to u64, u1 being bit 0. Case, blanks around the names and empty pieces
// do not matter. No names give 0, which stands for all layers; any other word gives nothing.
std::optional<std::uint64_t> ParseLayers(std::string_view text);

// "u1,u5", in rising order; empty for 0.
std::string LayersText(std::uint64_t mask);

// Whether a control on the layers `own` is shown by a panel whose layers `active` are active; 0 is all on
// either side.
bool LayerShown(std::uint64_t own, std::uint64_t active);

} // namespace logic
