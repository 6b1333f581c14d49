#include "Controls/dialog/FieldEditing.h"

#include "Panelhost/Dialogs.h"
#include "Panelhost/TypedValues.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <vector>

namespace {

constexpr std::size_t LONGEST_SHOWN = 40; // of a refused text in the message about it

std::vector<std::string> Parts(const std::string& text) {
    std::vector<std::string> parts;
    for (const auto field : logic::SplitFields(text, ',')) {
        parts.emplace_back(field);
    }
    return parts;
}

// What an edit field shows: its part of the keyword's value, or all of it where the value is one text.
std::string FieldText(const ControlDialog& dialog, const DialogField& field) {
    const std::string text = dialog.KeywordText(field.keyword);
    if (!field.IsNumber()) {
        return text;
    }
    const auto parts = Parts(text);
    const auto number = static_cast<std::size_t>(std::max(field.number, 0));
    return number < parts.size() ? parts[number] : "";
}

std::string Beginning(const std::string& text) {
    return text.size() <= LONGEST_SHOWN ? text : text.substr(0, LONGEST_SHOWN) + "...";
}

// The line's value for what was typed into a field, a number among the others of its keyword, or why it
// cannot be that. The fields of dialogs that have a template of their own are read strictly.
TYPEDVALUE ValueFor(const ControlDialog& dialog, const DialogField& field, const std::string& typed) {
    const bool strictly = dialog.object->controlClass->implementation->dialog != LAID_OUT;
    if (field.number < 0) {
        return a_ReadTyped(field.keyword, *field.info, typed, strictly);
    }
    KEYWORDINFO whole;
    whole.kind = KeywordKind::Integer; // one of several
    TYPEDVALUE read = a_ReadTyped(field.keyword, whole, typed, strictly);
    auto parts = Parts(dialog.KeywordText(field.keyword));
    parts.resize(static_cast<std::size_t>(field.last) + 1);
    parts[static_cast<std::size_t>(field.number)] = read.value;
    read.value.clear();
    for (const std::string& part : parts) {
        read.value += (&part == parts.data() ? "" : ",") + part;
    }
    return read;
}

} // namespace

std::string LineOf(const DialogField& field, const std::string& value) {
    return std::string("*") + field.keyword + "=" + value;
}

void RestoreField(const ControlDialog& dialog, const DialogField& field) {
    SetDlgItemTextA(dialog.Handle(), field.item, FieldText(dialog, field).c_str());
}

void ApplyField(const ControlDialog& dialog, const DialogField& field) {
    const std::string typed = dialog.ItemText(field.item);
    if (typed == FieldText(dialog, field)) {
        return;
    }
    auto [value, objection] = ValueFor(dialog, field, typed);
    if (objection.empty() && !dialog.SendLine(LineOf(field, value))) {
        objection = "is not possible here";
    }
    RestoreField(dialog, field); // what the control made of it, or the old value
    dialog.ShowStatus(
        objection.empty() ? "" : std::string(field.label) + ": \"" + Beginning(typed) + "\" " + objection);
}

void ChooseValue(const ControlDialog& dialog, const DialogField& field) {
    const bool isColour = field.info->kind == KeywordKind::Colour;
    const std::string current = FieldText(dialog, field);
    const std::string chosen =
        isColour ? a_ChooseColour(dialog.Handle(), current) : a_ChooseFont(dialog.Handle(), current);
    if (!chosen.empty() && dialog.Handle() != nullptr && !dialog.SendLine(LineOf(field, chosen))) {
        dialog.ShowStatus(std::string(field.label) + ": \"" + chosen + "\" is not possible here");
    }
}

void ChoosePicture(const ControlDialog& dialog, const DialogField& field) {
    const std::string chosen =
        a_ChoosePicture(dialog.Handle(), field.info->pictures, FieldText(dialog, field));
    if (!chosen.empty() && dialog.Handle() != nullptr && !dialog.SendLine(LineOf(field, chosen))) {
        dialog.ShowStatus("Bitmap: \"" + chosen + "\" is not possible here");
    }
}
