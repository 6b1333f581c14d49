#include "logic/controls/Layers.h"

#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

#include <bit>

namespace logic {

std::optional<std::uint64_t> ParseLayers(std::string_view text) {
    std::uint64_t mask = 0;
    for (const std::string_view field : SplitFields(text, ',')) {
        const std::string_view name = TrimBlanks(field);
        if (name.empty()) {
            continue;
        }
        const bool isLayer =
            name.size() > 1 && (name[0] == 'u' || name[0] == 'U') && name[1] >= '1' && name[1] <= '9';
        const std::optional<std::int32_t> number = isLayer ? ParseWholeInteger(name.substr(1)) : std::nullopt;
        if (!number || *number > LAYER_COUNT) {
            return std::nullopt;
        }
        mask |= LayerBit(*number);
    }
    return mask;
}

std::string LayersText(std::uint64_t mask) {
    std::string text;
    for (std::int32_t layer = 0; layer < LAYER_COUNT; ++layer) {
        if ((mask >> layer & 1) == 0) {
            continue;
        }
        if (!text.empty()) {
            text += ',';
        }
        text += 'u' + std::to_string(layer + 1);
    }
    return text;
}

bool LayerShown(std::uint64_t own, std::uint64_t active) {
    return own == 0 || active == 0 || (own & active) != 0;
}

std::optional<LayerNames> ParseLayerNames(std::string_view text) {
    LayerNames names;
    std::uint64_t known = 0;
    for (const std::string_view entry : SplitFields(text, ';')) {
        if (TrimBlanks(entry).empty()) {
            continue;
        }
        const auto equals = entry.find('=');
        const auto layer = ParseLayers(entry.substr(0, equals));
        if (equals == std::string_view::npos || !layer || !std::has_single_bit(*layer) ||
            (known & *layer) != 0) {
            return std::nullopt;
        }
        known |= *layer;
        names[static_cast<std::size_t>(std::countr_zero(*layer))] = TrimBlanks(entry.substr(equals + 1));
    }
    return names;
}

std::string LayerNamesText(const LayerNames& names) {
    std::string text;
    for (std::size_t layer = 0; layer < names.size(); ++layer) {
        if (!names[layer].empty()) {
            text.append(text.empty() ? "u" : ";u").append(std::to_string(layer + 1)).append("=");
            text += names[layer];
        }
    }
    return text;
}

} // namespace logic
