#include "Panel/editing/LayerEditing.h"

#include "Panelhost/Hostinfo.h"
#include "Panelhost/Root.h"
#include "logic/controls/Layers.h"

#include <algorithm>
#include <utility>

namespace {

constexpr const char* NAMES = "layernames";

std::string NamesText(const HOSTINFO& root) {
    char text[TEXT_SIZE] = "";
    VALUERECORD record = VALUERECORD::GetText(text);
    record.name = NAMES;
    SendMessageA(root.window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
    return text;
}

bool IsShown(std::uint64_t shown, int number) {
    return number == 0 || shown == 0 || (shown & logic::LayerBit(number)) != 0;
}

} // namespace

std::vector<HOSTINFO*> LayerEditing::ControlsOn(int number) const {
    std::vector<HOSTINFO*> controls;
    for (HOSTINFO* object : a_ListHostinfos(Root())) {
        const bool isOnIt =
            number == 0 ? object->layers == 0 && object->parent == Root() // not what strips have inside
                        : (object->layers & logic::LayerBit(number)) != 0;
        if (object->kind == KIND_CONTROL && isOnIt) {
            controls.push_back(object);
        }
    }
    return controls;
}

std::vector<LayerRow> LayerEditing::Rows() const {
    const auto names = logic::ParseLayerNames(NamesText(*Root())).value_or(logic::LayerNames{});
    const std::uint64_t shown = a_GetEditedLayers(Root());
    std::vector<LayerRow> rows;
    bool hasFree = false;
    for (int number = 0; number <= logic::LAYER_COUNT; ++number) {
        LayerRow row;
        row.number = number;
        row.isShown = IsShown(shown, number);
        row.name = number == 0 ? "(every layer)" : names[static_cast<std::size_t>(number - 1)];
        for (const HOSTINFO* control : ControlsOn(number)) {
            row.controls += (row.count++ == 0 ? "" : ", ") + control->name;
        }
        const bool isFree = row.name.empty() && row.count == 0;
        if (!isFree || !std::exchange(hasFree, true)) {
            rows.push_back(std::move(row));
        }
    }
    return rows;
}

void LayerEditing::Toggle(std::uint64_t layers) const {
    const std::uint64_t shown = a_GetEditedLayers(Root());
    const std::uint64_t next = (shown == 0 ? ~std::uint64_t{0} : shown) ^ layers;
    if (next != 0) {
        ShowOnly(next);
    }
}

void LayerEditing::ShowOnly(std::uint64_t layers) const {
    a_SetEditedLayers(Root(), ~layers == 0 ? 0 : layers);
    DropHidden();
    RedrawWindow(surface_.panel, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

// What cannot be seen is not selected.
void LayerEditing::DropHidden() const {
    std::vector<HOSTINFO*> seen = surface_.selection.Objects();
    std::erase_if(seen, [](const HOSTINFO* object) {
        return (GetWindowLongA(object->window, GWL_STYLE) & WS_VISIBLE) == 0;
    });
    surface_.selection.Set(std::move(seen));
}

void LayerEditing::ChangeSelected(Change change, std::uint64_t layers) const {
    const std::vector<HOSTINFO*> selected = surface_.selection.Objects();
    if (selected.empty()) {
        return;
    }
    surface_.edits.Do("Change Of Layer", selected, [&] {
        for (HOSTINFO* object : selected) {
            const std::uint64_t now = object->layers;
            const std::uint64_t next = change == Change::Put   ? layers
                                       : change == Change::Add ? now | layers
                                                               : now & ~layers;
            a_SetLayers(object, logic::LayersText(next).c_str());
            a_KeywordSet(object, "layer");
        }
        return std::vector<HOSTINFO*>{};
    });
    DropHidden();
}

void LayerEditing::SelectControls(int number) const {
    std::vector<HOSTINFO*> controls = ControlsOn(number);
    std::erase_if(controls,
                  [&](const HOSTINFO* object) { return object->parent != controls.front()->parent; });
    surface_.selection.Set(std::move(controls));
    DropHidden();
}

bool LayerEditing::Rename(int number, const std::string& name) const {
    auto names = logic::ParseLayerNames(NamesText(*Root())).value_or(logic::LayerNames{});
    if (number < 1 || number > logic::LAYER_COUNT || name.find(';') != std::string::npos) {
        return false;
    }
    names[static_cast<std::size_t>(number - 1)] = name;
    const std::string line = NAMES + ("=" + logic::LayerNamesText(names));
    bool isTaken = false;
    surface_.edits.Do("Name Of Layer", {Root()}, [&] {
        isTaken = SendMessageA(Root()->window, CWM_LOAD, LOAD_FROM_FILE,
                               reinterpret_cast<LPARAM>(line.c_str())) != 0;
        return std::vector<HOSTINFO*>{};
    });
    return isTaken;
}
