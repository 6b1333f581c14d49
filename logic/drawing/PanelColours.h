// The colours of panels as 0x00bbggrr. The table is tools/art/style.txt; a test compares the two.
#pragma once

#include <cstdint>

namespace logic {

constexpr std::uint32_t PANEL_GROUND = 0x28221e;
constexpr std::uint32_t PANEL_PLATE = 0x38302a;
constexpr std::uint32_t PANEL_WELL = 0x171310;
constexpr std::uint32_t PANEL_EDGE = 0x96887d;
constexpr std::uint32_t PANEL_TEXT = 0xf5f1ee;
constexpr std::uint32_t PANEL_FAINT = 0xc0b4aa;
constexpr std::uint32_t PANEL_ACCENT = 0x00b0ff;
constexpr std::uint32_t PANEL_GREEN = 0x84d65c;
constexpr std::uint32_t PANEL_YELLOW = 0x5ce4ff;
constexpr std::uint32_t PANEL_RED = 0x5762ff;
constexpr std::uint32_t PANEL_BLUE = 0xffa34a;

} // namespace logic
