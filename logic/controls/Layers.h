// Layers: a panel shows some of its 64 layers, and every control is on some or all of them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace logic {

constexpr std::int32_t LAYER_COUNT = 64;

constexpr std::uint64_t LayerBit(std::int32_t number) { // 1 to 64
    return std::uint64_t{1} << (number - 1);
}

// Reads a comma list of layer names u1 to u64, u1 being bit 0. Case, blanks around the names and empty pieces
// do not matter. No names give 0, which stands for all layers; any other word gives nothing.
std::optional<std::uint64_t> ParseLayers(std::string_view text);

// "u1,u5", in rising order; empty for 0.
std::string LayersText(std::uint64_t mask);

// Whether a control on the layers `own` is shown by a panel whose layers `active` are active; 0 is all on
// either side.
bool LayerShown(std::uint64_t own, std::uint64_t active);

// What people call layers, u1 first; empty where they have no name.
using LayerNames = std::array<std::string, LAYER_COUNT>;

// Reads "u1=Mix;u2=EQ"; nothing when one is no layer, has no "=" or stands twice. Blanks around a name do not
// matter.
std::optional<LayerNames> ParseLayerNames(std::string_view text);
// The same in rising order.
std::string LayerNamesText(const LayerNames& names);

} // namespace logic
