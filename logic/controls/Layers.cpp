#include "logic/controls/Layers.h"

#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr std::int32_t LAYER_COUNT = 64;

} // namespace

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
        mask |= std::uint64_t{1} << (*number - 1);
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

} // namespace logic
