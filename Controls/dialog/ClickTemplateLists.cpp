#include "Controls/dialog/ClickTemplateLists.h"

#include <algorithm>
#include <windowsx.h>

namespace {

constexpr const char* CONNECTIONS_ENTRY = "(connections)";

void FillTemplateObjects(ControlDialog& dialog) {
    const HWND combo = dialog.Item(IDC_TEMPLATE_OBJECT);
    SendMessageA(combo, CB_RESETCONTENT, 0, 0);
    ComboBox_AddString(combo, CONNECTIONS_ENTRY);
    for (const HOSTINFO* object : a_ListHostinfos(a_FindRootHostinfo(dialog.object->parent))) {
        if (object->kind == KIND_CONTROL) {
            ComboBox_AddString(combo, object->name.c_str());
        }
    }
}

void FillTemplateKeywords(ControlDialog& dialog, const std::string& objectName) {
    const HWND combo = dialog.Item(IDC_TEMPLATE_KEYWORD);
    SendMessageA(combo, CB_RESETCONTENT, 0, 0);
    CONTROLPROPERTIES& own = *dialog.object;
    HOSTINFO* object = a_FindHostinfo(a_FindRootHostinfo(own.parent), objectName.c_str());
    const KEYWORDROW* table = (object == nullptr ? &own : object)->GetHostinfoTable();
    for (const KEYWORDROW* row = table; row != nullptr && row->keyword != nullptr; ++row) {
        ComboBox_AddString(combo, row->keyword);
    }
}

void InsertTemplate(ControlDialog& dialog) {
    const auto line = std::find_if(dialog.fields.begin(), dialog.fields.end(), [](const DialogField& field) {
        return field.info->kind == KeywordKind::Line;
    });
    if (line == dialog.fields.end()) {
        return;
    }
    const std::string object = dialog.ItemText(IDC_TEMPLATE_OBJECT);
    const std::string keyword = dialog.ItemText(IDC_TEMPLATE_KEYWORD);
    const std::string text = (object == CONNECTIONS_ENTRY ? "" : object) + "*" + keyword + "=";
    const HWND edit = dialog.Item(line->item);
    SetWindowTextA(edit, text.c_str());
    SendMessageA(edit, EM_SETMODIFY, TRUE, 0);
    SetFocus(edit);
    SendMessageA(edit, EM_SETSEL, text.size(),
                 static_cast<LPARAM>(text.size())); // the value is typed behind it
}

} // namespace

void HandleTemplateCommand(ControlDialog& dialog, int id, WORD code) {
    if (id == IDC_TEMPLATE_INSERT) {
        InsertTemplate(dialog);
    } else if (id == IDC_TEMPLATE_OBJECT && code == CBN_DROPDOWN) {
        FillTemplateObjects(dialog);
    } else if (id == IDC_TEMPLATE_KEYWORD && code == CBN_DROPDOWN) {
        FillTemplateKeywords(dialog, dialog.ItemText(IDC_TEMPLATE_OBJECT));
    }
}
