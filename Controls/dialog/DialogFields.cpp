#include "Controls/dialog/DialogFields.h"

#include "Controls/resources/resource.h"

namespace {

// Items that nobody else knows get numbers from here on, as many for each row.
constexpr int FIRST_ITEM = 2000;
constexpr int ITEMS_OF_ROW = 4;

using Input = DialogField::Input;

bool HasChooser(KeywordKind kind) {
    return kind == KeywordKind::Colour || kind == KeywordKind::Typeface;
}

Input InputFor(KeywordKind kind) {
    return kind == KeywordKind::Words ? Input::List : Input::Edit;
}

void AddFields(std::vector<DialogField>& fields, const char* keyword, const KEYWORDINFO& info,
               int firstItem) {
    for (int i = 0; i < info.optionCount; ++i) {
        const KEYWORDOPTION& option = info.options[i];
        fields.push_back(
            {Input::Option, keyword, &info, info.label, option.item, 0, 0, -1, -1, option.value});
    }
    for (int i = 0; i < info.partCount; ++i) {
        const KEYWORDPART& part = info.parts[i];
        fields.push_back({Input::Edit, keyword, &info, part.label, part.item, 0, 0, part.number, part.last});
    }
    if (*info.pictures != '\0') {
        fields.push_back({Input::Picture, keyword, &info, "Bitmap", IDC_BITMAP_NAME, IDC_CHOOSE_BITMAP, 0});
    } else if (*info.label != '\0' && info.optionCount == 0) {
        const auto orElse = [](int item, int other) { return item != 0 ? item : other; };
        fields.push_back({InputFor(info.kind), keyword, &info, info.label, orElse(info.item, firstItem),
                          HasChooser(info.kind) ? orElse(info.chooser, firstItem + 1) : 0,
                          info.preview != nullptr ? orElse(info.previewItem, firstItem + 2) : 0});
    }
}

} // namespace

std::vector<DialogField> DialogFieldsOf(const CONTROLPROPERTIES& control) {
    const KeywordList keywords = control.Keywords();
    std::vector<DialogField> fields;
    for (int row = 0; row < keywords.count; ++row) {
        AddFields(fields, keywords.rows[row].keyword, keywords.infos[row], FIRST_ITEM + row * ITEMS_OF_ROW);
    }
    return fields;
}
