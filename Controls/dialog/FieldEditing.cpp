#include "Controls/dialog/FieldEditing.h"

#include "Panelhost/Dialogs.h"
#include "Panelhost/Fonts.h"
#include "Panelhost/PropertyValues.h"
#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <commdlg.h>
#include <cstdio>
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

// Why a text cannot be the value of a field; empty when it can.
std::string Objection(const DialogField& field, const std::string& text) {
    switch (field.number >= 0 ? KeywordKind::Integer : field.info->kind) { // one of several is whole
    case KeywordKind::Integer:
        return logic::ParseWholeInteger(text) ? "" : "is not a whole number";
    case KeywordKind::Number:
        return logic::ParseWholeFloat(text) ? "" : "is not a number";
    case KeywordKind::Colour:
        // Where there may be none, an empty text stands for it.
        return text.empty() || logic::ParseWholeHex(text) ? "" : "is not a colour (0x00bbggrr)";
    default:
        const std::string tooLong = a_LengthObjection(field.keyword, text);
        return tooLong.empty() && field.info->objection != nullptr ? field.info->objection(text) : tooLong;
    }
}

std::string Beginning(const std::string& text) {
    return text.size() <= LONGEST_SHOWN ? text : text.substr(0, LONGEST_SHOWN) + "...";
}

// The line's value for what was typed into a field: a number among the others of its keyword.
std::string ValueFor(const ControlDialog& dialog, const DialogField& field, const std::string& typed) {
    if (!field.IsNumber()) {
        return typed;
    }
    const bool isRounded = field.info->kind == KeywordKind::Number && !field.info->isAsTyped;
    const std::string number = isRounded ? logic::FormatFloat(*logic::ParseWholeFloat(typed))
                                         : std::string(logic::TrimBlanks(typed));
    if (field.number < 0) {
        return number;
    }
    auto parts = Parts(dialog.KeywordText(field.keyword));
    parts.resize(static_cast<std::size_t>(field.last) + 1);
    parts[static_cast<std::size_t>(field.number)] = number;
    std::string value;
    for (const std::string& part : parts) {
        value += (&part == parts.data() ? "" : ",") + part;
    }
    return value;
}

// The system's choosers. Each answers with the value as property text, empty when nothing was chosen.

std::string ChooseColour(HWND owner, const std::string& current) {
    static COLORREF custom[16] = {};
    CHOOSECOLORA chooser{};
    chooser.lStructSize = sizeof chooser;
    chooser.hwndOwner = owner;
    chooser.rgbResult = logic::ParseWholeHex(current).value_or(0) & 0xFFFFFF;
    chooser.lpCustColors = custom;
    chooser.Flags = CC_RGBINIT | CC_FULLOPEN;
    if (!ChooseColorA(&chooser)) {
        return {};
    }
    char text[16];
    std::snprintf(text, sizeof text, "0x%08x", static_cast<unsigned>(chooser.rgbResult));
    return text;
}

std::string ChooseFontText(HWND owner, const std::string& current) {
    LOGFONTA font{};
    const HFONT held = a_GetFont(current.c_str());
    if (held != nullptr) {
        GetObjectA(held, sizeof font, &font);
        a_ReleaseFont(held);
    }
    CHOOSEFONTA chooser{};
    chooser.lStructSize = sizeof chooser;
    chooser.hwndOwner = owner;
    chooser.lpLogFont = &font;
    chooser.Flags =
        CF_SCREENFONTS | CF_FORCEFONTEXIST | CF_NOSCRIPTSEL | (held != nullptr ? CF_INITTOLOGFONTSTRUCT : 0);
    if (!ChooseFontA(&chooser)) {
        return {};
    }
    constexpr int TENTHS = 10; // of a point, the chooser's unit
    const bool bold = font.lfWeight >= FW_BOLD;
    return std::string(font.lfFaceName) + "," + std::to_string((chooser.iPointSize + TENTHS / 2) / TENTHS) +
           (bold ? ",bold" : "");
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
    std::string objection = Objection(field, typed);
    if (objection.empty() && !dialog.SendLine(LineOf(field, ValueFor(dialog, field, typed)))) {
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
        isColour ? ChooseColour(dialog.Handle(), current) : ChooseFontText(dialog.Handle(), current);
    if (!chosen.empty() && dialog.Handle() != nullptr && !dialog.SendLine(LineOf(field, chosen))) {
        dialog.ShowStatus(std::string(field.label) + ": \"" + chosen + "\" is not possible here");
    }
}

void ChoosePicture(const ControlDialog& dialog, const DialogField& field) {
    char name[MAX_PATH];
    if (a_PopupBitmapView(dialog.Handle(), ".\\Controls", field.info->pictures, name) != 0 &&
        dialog.Handle() != nullptr && !dialog.SendLine(LineOf(field, name))) {
        dialog.ShowStatus(std::string("Bitmap: \"") + name + "\" is not possible here");
    }
}
