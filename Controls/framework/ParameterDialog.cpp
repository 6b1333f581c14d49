#include "Controls/framework/ParameterDialog.h"

#include "Controls/resources/resource.h"
#include "Panelhost/Editing.h"
#include "logic/Numbers.h"
#include "logic/Text.h"

#include <commctrl.h>
#include <commdlg.h>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

// The dialog's memory, from WM_INITDIALOG to WM_NCDESTROY.
struct DialogContext {
    CONTROLPROPERTIES* object;
    const ParameterDialog* description;
    HWND advanced = nullptr; // the generic property dialog opened from here
    bool filling = false;    // the fields are being set by the program
};

constexpr const char* IMAGE_FOLDER = ".\\Controls";
constexpr WPARAM LONGEST_TYPED = 16 * TEXT_SIZE; // more than is taken: it is refused as a whole, not cut
constexpr std::size_t LONGEST_SHOWN = 40;        // of a refused text in the message about it
constexpr COLORREF HEADER_TEXT = RGB(255, 255, 255);

DialogContext& ContextOf(HWND dialog) {
    return *reinterpret_cast<DialogContext*>(GetWindowLongA(dialog, GWL_USERDATA));
}

std::string ItemText(HWND dialog, int id) {
    const HWND item = GetDlgItem(dialog, id);
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(item)) + 1, '\0');
    text.resize(static_cast<std::size_t>(GetWindowTextA(item, text.data(), static_cast<int>(text.size()))));
    return text;
}

// A keyword of the control as text.
std::string KeywordText(CONTROLPROPERTIES& object, const char* keyword) {
    char text[TEXT_SIZE] = "";
    VALUERECORD record{COMMAND_GET, 0, DATATYPE_TEXT, 0, text, keyword, 0};
    object.OnMessage(0, reinterpret_cast<LPARAM>(&record));
    return text;
}

std::vector<std::string> Parts(const std::string& text) {
    std::vector<std::string> parts;
    for (const auto field : logic::SplitFields(text, ',')) {
        parts.emplace_back(field);
    }
    return parts;
}

bool IsNumber(const DialogEdit& edit) {
    return edit.kind == FieldKind::Integer || edit.kind == FieldKind::Float;
}

// What an edit field shows: its part of the keyword's value, or all of it where the value is one text.
std::string FieldText(CONTROLPROPERTIES& object, const DialogEdit& edit) {
    std::string text = KeywordText(object, edit.keyword);
    if (!IsNumber(edit)) {
        return text;
    }
    const auto parts = Parts(text);
    return static_cast<std::size_t>(edit.part) < parts.size() ? parts[static_cast<std::size_t>(edit.part)]
                                                              : "";
}

void ShowStatus(HWND dialog, const std::string& text) {
    SetDlgItemTextA(dialog, IDC_DIALOG_STATUS, text.c_str());
}

bool SendLine(HWND dialog, const std::string& line) {
    const HWND control = ContextOf(dialog).object->window;
    return SendMessageA(control, CWM_LOAD, LOAD_FROM_DIALOG, reinterpret_cast<LPARAM>(line.c_str())) != 0;
}

// Why a text cannot be the value of a field; empty when it can.
std::string Objection(const DialogEdit& edit, const std::string& text) {
    switch (edit.kind) {
    case FieldKind::Integer:
        return logic::ParseWholeInteger(text) ? "" : "is not a whole number";
    case FieldKind::Float:
        return logic::ParseWholeFloat(text) ? "" : "is not a number";
    case FieldKind::Colour:
        // Where there may be none, an empty text stands for it.
        return text.empty() || logic::ParseWholeHex(text) ? "" : "is not a colour (0x00bbggrr)";
    default:
        return a_LengthObjection(edit.keyword, text);
    }
}

std::string Beginning(const std::string& text) {
    return text.size() <= LONGEST_SHOWN ? text : text.substr(0, LONGEST_SHOWN) + "...";
}

void RestoreField(HWND dialog, const DialogEdit& edit) {
    SetDlgItemTextA(dialog, edit.id, FieldText(*ContextOf(dialog).object, edit).c_str());
}

void ApplyField(HWND dialog, const DialogEdit& edit) {
    CONTROLPROPERTIES& object = *ContextOf(dialog).object;
    const std::string typed = ItemText(dialog, edit.id);
    if (typed == FieldText(object, edit)) {
        return;
    }
    std::string objection = Objection(edit, typed);
    if (objection.empty()) {
        std::string value = typed;
        if (IsNumber(edit)) {
            auto parts = Parts(KeywordText(object, edit.keyword));
            parts.resize(static_cast<std::size_t>(edit.lastPart) + 1);
            parts[static_cast<std::size_t>(edit.part)] = std::string(logic::TrimBlanks(typed));
            value.clear();
            for (const std::string& part : parts) {
                value += (&part == parts.data() ? "" : ",") + part;
            }
        }
        if (!SendLine(dialog, std::string("*") + edit.keyword + "=" + value)) {
            objection = "is not possible here";
        }
    }
    RestoreField(dialog, edit); // what the control made of it, or the old value
    ShowStatus(dialog, objection.empty()
                           ? ""
                           : std::string(edit.label) + ": \"" + Beginning(typed) + "\" " + objection);
}

void ShowRefusal(HWND dialog, const DialogEdit& edit, const std::string& value) {
    ShowStatus(dialog, std::string(edit.label) + ": \"" + value + "\" is not possible here");
}

// The system's choosers. Each answers with the value as property text, empty when nothing was chosen.

std::string ChooseColour(HWND dialog, const std::string& current) {
    static COLORREF custom[16] = {};
    CHOOSECOLORA chooser{};
    chooser.lStructSize = sizeof chooser;
    chooser.hwndOwner = dialog;
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

std::string ChooseFontText(HWND dialog, const std::string& current) {
    LOGFONTA font{};
    const HFONT held = a_GetFont(current.c_str());
    if (held != nullptr) {
        GetObjectA(held, sizeof font, &font);
        a_ReleaseFont(held);
    }
    CHOOSEFONTA chooser{};
    chooser.lStructSize = sizeof chooser;
    chooser.hwndOwner = dialog;
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

void Choose(HWND dialog, const DialogEdit& edit) {
    const std::string current = FieldText(*ContextOf(dialog).object, edit);
    const std::string chosen =
        edit.kind == FieldKind::Colour ? ChooseColour(dialog, current) : ChooseFontText(dialog, current);
    if (!chosen.empty() && IsWindow(dialog) &&
        !SendLine(dialog, std::string("*") + edit.keyword + "=" + chosen)) {
        ShowRefusal(dialog, edit, chosen);
    }
}

const DialogEdit* FindEdit(HWND dialog, int id) {
    for (const DialogEdit& edit : ContextOf(dialog).description->edits) {
        if (edit.id == id) {
            return &edit;
        }
    }
    return nullptr;
}

// The lists of bindings

void InitializeList(HWND dialog, int id, const char* title) {
    const HWND list = GetDlgItem(dialog, id);
    SendMessageA(list, LVM_SETBKCOLOR, 0, FIELD_COLOUR);
    SendMessageA(list, LVM_SETTEXTBKCOLOR, 0, FIELD_COLOUR);
    SendMessageA(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_INFOTIP);
    RECT client;
    GetClientRect(list, &client);
    LVCOLUMNA column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.pszText = const_cast<char*>(title);
    column.cx = client.right - GetSystemMetrics(SM_CXVSCROLL);
    SendMessageA(list, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
}

void FillList(HWND dialog, int id, const BINDINGLIST& bindings) {
    const HWND list = GetDlgItem(dialog, id);
    SendMessageA(list, LVM_DELETEALLITEMS, 0, 0);
    int row = 0;
    for (const std::string& address : bindings) {
        LVITEMA item{};
        item.mask = LVIF_TEXT;
        item.iItem = row++;
        item.pszText = const_cast<char*>(address.c_str());
        SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    }
}

void DeleteEntries(HWND dialog, int id, bool all) {
    const bool isFunctions = id == IDC_FUNCTION_LIST;
    const CONTROLPROPERTIES& object = *ContextOf(dialog).object;
    BINDINGLIST bindings = isFunctions ? object.functions : object.connections;
    const auto selected = static_cast<int>(
        SendDlgItemMessageA(dialog, id, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    if (all) {
        bindings.clear();
    } else if (selected >= 0 && static_cast<std::size_t>(selected) < bindings.size()) {
        bindings.erase(std::next(bindings.begin(), selected));
    }
    SendLine(dialog, (isFunctions ? "*function=" : "*connection=") + a_BuildString(bindings));
}

void ShowListMenu(HWND dialog, int id) {
    const HMENU menus = LoadMenuA(ModuleInstance(), MAKEINTRESOURCEA(IDR_LIST_MENU));
    POINT cursor;
    GetCursorPos(&cursor);
    const int command = TrackPopupMenu(GetSubMenu(menus, 0), TPM_RETURNCMD | TPM_RIGHTBUTTON, cursor.x,
                                       cursor.y, 0, dialog, nullptr);
    DestroyMenu(menus);
    if (command == IDM_DELETE_ENTRY || command == IDM_DELETE_ALL) {
        DeleteEntries(dialog, id, command == IDM_DELETE_ALL);
    }
}

// The lists that fill in a click template: an object, or the connections, and a keyword of it.

constexpr const char* CONNECTIONS_ENTRY = "(connections)";

void AddText(HWND combo, const char* text) {
    SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
}

std::string ChosenText(HWND dialog, int id) {
    char text[TEXT_SIZE] = "";
    GetDlgItemTextA(dialog, id, text, sizeof text);
    return text;
}

void FillTemplateObjects(HWND dialog) {
    const HWND combo = GetDlgItem(dialog, IDC_TEMPLATE_OBJECT);
    SendMessageA(combo, CB_RESETCONTENT, 0, 0);
    AddText(combo, CONNECTIONS_ENTRY);
    for (const HOSTINFO* object : a_ListHostinfos(a_FindRootHostinfo(ContextOf(dialog).object->parent))) {
        if (object->kind == KIND_CONTROL) {
            AddText(combo, object->name.c_str());
        }
    }
}

void FillTemplateKeywords(HWND dialog, const std::string& objectName) {
    const HWND combo = GetDlgItem(dialog, IDC_TEMPLATE_KEYWORD);
    SendMessageA(combo, CB_RESETCONTENT, 0, 0);
    CONTROLPROPERTIES& own = *ContextOf(dialog).object;
    HOSTINFO* object = a_FindHostinfo(a_FindRootHostinfo(own.parent), objectName.c_str());
    const KEYWORDROW* table = (object == nullptr ? &own : object)->GetHostinfoTable();
    for (const KEYWORDROW* row = table; row != nullptr && row->keyword != nullptr; ++row) {
        AddText(combo, row->keyword);
    }
}

void InsertTemplate(HWND dialog) {
    const std::string object = ChosenText(dialog, IDC_TEMPLATE_OBJECT);
    const std::string keyword = ChosenText(dialog, IDC_TEMPLATE_KEYWORD);
    const std::string text = (object == CONNECTIONS_ENTRY ? "" : object) + "*" + keyword + "=";
    const HWND edit = GetDlgItem(dialog, ContextOf(dialog).description->templateEdit);
    SetWindowTextA(edit, text.c_str());
    SendMessageA(edit, EM_SETMODIFY, TRUE, 0);
    SetFocus(edit);
    SendMessageA(edit, EM_SETSEL, text.size(),
                 static_cast<LPARAM>(text.size())); // the value is typed behind it
}

void HandleTemplateCommand(HWND dialog, int id, WORD code) {
    if (id == IDC_TEMPLATE_INSERT) {
        InsertTemplate(dialog);
    } else if (id == IDC_TEMPLATE_OBJECT && code == CBN_DROPDOWN) {
        FillTemplateObjects(dialog);
    } else if (id == IDC_TEMPLATE_KEYWORD && code == CBN_DROPDOWN) {
        FillTemplateKeywords(dialog, ChosenText(dialog, IDC_TEMPLATE_OBJECT));
    }
}

// The selector of the control

const ParameterDialog* DialogOf(HOSTINFO* object) {
    const auto* control = dynamic_cast<CONTROLPROPERTIES*>(object);
    return control == nullptr ? nullptr : control->controlClass->implementation->dialog;
}

void FillSelector(HWND dialog) {
    const DialogContext& context = ContextOf(dialog);
    const HWND selector = GetDlgItem(dialog, IDC_OBJECT_SELECTOR);
    SendMessageA(selector, CB_RESETCONTENT, 0, 0);
    const auto add = [&](HOSTINFO* object) {
        const auto place =
            SendMessageA(selector, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(object->name.c_str()));
        SendMessageA(selector, CB_SETITEMDATA, static_cast<WPARAM>(place),
                     reinterpret_cast<LPARAM>(object->window));
    };
    bool listed = false;
    for (HOSTINFO* object : a_ListHostinfos(a_FindRootHostinfo(context.object->parent))) {
        if (DialogOf(object) != nullptr) {
            add(object);
            listed = listed || object == context.object;
        }
    }
    if (!listed) { // a control without a panel
        add(context.object);
    }
    SendMessageA(selector, CB_SETCURSEL,
                 static_cast<WPARAM>(SendMessageA(selector, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                                  reinterpret_cast<LPARAM>(context.object->name.c_str()))),
                 0);
}

void TellRoot(const CONTROLPROPERTIES& object, const std::string& name) {
    if (const HOSTINFO* root = a_FindRootHostinfo(object.parent); root != nullptr) {
        const std::string line = "*parameterdlg=" + name;
        SendMessageA(root->window, CWM_LOAD, LOAD_FROM_DIALOG, reinterpret_cast<LPARAM>(line.c_str()));
    }
}

void Refill(HWND dialog) {
    DialogContext& context = ContextOf(dialog);
    CONTROLPROPERTIES& object = *context.object;
    context.filling = true;
    for (const DialogEdit& edit : context.description->edits) {
        // What is being typed is the user's until it is applied.
        if (GetFocus() != GetDlgItem(dialog, edit.id) ||
            SendDlgItemMessageA(dialog, edit.id, EM_GETMODIFY, 0, 0) == 0) {
            RestoreField(dialog, edit);
        }
    }
    for (const DialogOption& option : context.description->options) {
        CheckDlgButton(dialog, option.id,
                       KeywordText(object, option.keyword) == option.value ? BST_CHECKED : BST_UNCHECKED);
    }
    for (const DialogChoice& choice : context.description->choices) {
        SendDlgItemMessageA(dialog, choice.id, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                            reinterpret_cast<LPARAM>(KeywordText(object, choice.keyword).c_str()));
    }
    for (const DialogPreview& preview : context.description->previews) {
        SetDlgItemTextA(dialog, preview.id, preview.shown(KeywordText(object, preview.keyword)).c_str());
    }
    if (context.description->bitmapPrefix != nullptr) {
        const std::string name = KeywordText(object, "bitmap");
        SetDlgItemTextA(dialog, IDC_BITMAP_NAME, name.empty() ? "-" : name.c_str());
    }
    FillList(dialog, IDC_FUNCTION_LIST, object.functions);
    FillList(dialog, IDC_CONNECTION_LIST, object.connections);
    context.filling = false;
}

void Attach(HWND dialog, CONTROLPROPERTIES* object) {
    DialogContext& context = ContextOf(dialog);
    if (object != context.object && object->controlClass->implementation->dialog != context.description) {
        return; // of another shape
    }
    context.object = object;
    object->dialog = dialog;
    Refill(dialog);
    if (context.advanced != nullptr && IsWindow(context.advanced)) {
        PostMessageA(context.advanced, CWM_ATTACHDIALOG, 0,
                     reinterpret_cast<LPARAM>(static_cast<HOSTINFO*>(object)));
    }
}

// Makes the dialog that of another control, or opens the one of its class in this one's place.
void SwitchTo(HWND dialog, HWND window) {
    DialogContext& context = ContextOf(dialog);
    auto* chosen = dynamic_cast<CONTROLPROPERTIES*>(a_FromWindow(window));
    if (chosen == nullptr || chosen == context.object) {
        return;
    }
    if (chosen->dialog != nullptr && IsWindow(chosen->dialog)) {
        SetActiveWindow(chosen->dialog);
        FillSelector(dialog);
        return;
    }
    if (chosen->controlClass->implementation->dialog == context.description) {
        context.object->dialog = nullptr;
        if (context.advanced != nullptr) {
            DestroyWindow(context.advanced);
            context.advanced = nullptr;
        }
        ShowStatus(dialog, "");
        Attach(dialog, chosen);
        TellRoot(*chosen, chosen->name);
        return;
    }
    RECT place;
    GetWindowRect(dialog, &place);
    const HWND other = OpenParameterDialog(*chosen);
    if (other != nullptr) {
        SetWindowPos(other, nullptr, place.left, place.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        DestroyWindow(dialog);
    }
}

void DeleteControl(HWND dialog) {
    CONTROLPROPERTIES* object = ContextOf(dialog).object;
    const std::string question = "Delete \"" + object->name + "\"?";
    const HWND control = object->window;
    if (MessageBoxA(dialog, question.c_str(), "Delete", MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) ==
            IDYES &&
        a_FromWindow(control) == object) { // both may have gone while the question stood
        a_DeleteObject(object);
    }
}

void ChooseBitmap(HWND dialog) {
    char name[MAX_PATH];
    if (a_PopupBitmapView(dialog, IMAGE_FOLDER, ContextOf(dialog).description->bitmapPrefix, name) != 0 &&
        IsWindow(dialog) && !SendLine(dialog, std::string("*bitmap=") + name)) {
        ShowStatus(dialog, std::string("Bitmap: \"") + name + "\" is not possible here");
    }
}

void OpenAdvanced(HWND dialog) {
    DialogContext& context = ContextOf(dialog);
    if (context.advanced != nullptr && IsWindow(context.advanced)) {
        SetActiveWindow(context.advanced);
        return;
    }
    context.advanced = a_PropertyDlg(1, context.object->window, context.object);
}

void HandleCommand(HWND dialog, int id, WORD code) {
    const DialogContext& context = ContextOf(dialog);
    if (const DialogEdit* edit = FindEdit(dialog, id); edit != nullptr) {
        if (code == EDIT_ENTER || (code == EN_KILLFOCUS && !context.filling)) {
            ApplyField(dialog, *edit);
        } else if (code == EDIT_ESCAPE) {
            RestoreField(dialog, *edit);
            ShowStatus(dialog, "");
        }
        return;
    }
    for (const DialogEdit& edit : context.description->edits) {
        if (edit.chooser == id && id != 0) {
            Choose(dialog, edit);
            return;
        }
    }
    for (const DialogOption& option : context.description->options) {
        if (option.id == id && code == BN_CLICKED &&
            KeywordText(*context.object, option.keyword) != option.value) {
            SendLine(dialog, std::string("*") + option.keyword + "=" + option.value);
            return;
        }
    }
    for (const DialogChoice& choice : context.description->choices) {
        if (choice.id == id && code == CBN_SELCHANGE) {
            char text[64] = "";
            const auto place = SendDlgItemMessageA(dialog, id, CB_GETCURSEL, 0, 0);
            SendDlgItemMessageA(dialog, id, CB_GETLBTEXT, static_cast<WPARAM>(place),
                                reinterpret_cast<LPARAM>(text));
            SendLine(dialog, std::string("*") + choice.keyword + "=" + text);
            return;
        }
    }
    switch (id) {
    case IDC_OBJECT_SELECTOR:
        if (code == CBN_DROPDOWN) {
            FillSelector(dialog); // controls may have come and gone
        } else if (code == CBN_SELCHANGE) {
            const auto place = SendDlgItemMessageA(dialog, id, CB_GETCURSEL, 0, 0);
            SwitchTo(dialog, reinterpret_cast<HWND>(SendDlgItemMessageA(dialog, id, CB_GETITEMDATA,
                                                                        static_cast<WPARAM>(place), 0)));
        }
        break;
    case IDC_DELETE_CONTROL:
        DeleteControl(dialog);
        break;
    case IDC_MODIFY_CONNECTIONS:
        a_ConnectionDlg(1, context.object->window, context.object);
        break;
    case IDC_CHOOSE_BITMAP:
        if (context.description->bitmapPrefix != nullptr) {
            ChooseBitmap(dialog);
        }
        break;
    case IDC_ADVANCED:
        OpenAdvanced(dialog);
        break;
    case IDC_TEMPLATE_OBJECT:
    case IDC_TEMPLATE_KEYWORD:
    case IDC_TEMPLATE_INSERT:
        HandleTemplateCommand(dialog, id, code);
        break;
    case IDOK:
    case IDCANCEL:
    case IDC_CLOSE_DIALOG:
        DestroyWindow(dialog);
        break;
    default:
        break;
    }
}

// The colours of all parameter dialogs.
HBRUSH ControlColour(UINT message, HDC dc, HWND control) {
    if (message == WM_CTLCOLORDLG) {
        return a_GetObject(BRUSH_DIALOG);
    }
    if (message != WM_CTLCOLORSTATIC) {
        SetBkColor(dc, FIELD_COLOUR);
        SetTextColor(dc, RGB(0, 0, 0));
        return a_GetObject(BRUSH_FIELD);
    }
    SetBkMode(dc, TRANSPARENT);
    switch (GetDlgCtrlID(control)) {
    case IDC_CONNECTIONS_HEADER:
    case IDC_PROPERTIES_HEADER:
    case IDC_FUNCTIONS_HEADER:
        SetTextColor(dc, HEADER_TEXT);
        return a_GetObject(BRUSH_HEADER);
    default:
        SetTextColor(dc, RGB(0, 0, 0));
        return a_GetObject(BRUSH_DIALOG);
    }
}

void Initialize(HWND dialog, DialogContext* context) {
    SetWindowLongA(dialog, GWL_USERDATA, reinterpret_cast<LONG>(context));
    InitializeList(dialog, IDC_FUNCTION_LIST, "Functions");
    InitializeList(dialog, IDC_CONNECTION_LIST, "Connections");
    for (const DialogEdit& edit : context->description->edits) {
        a_SubclassEditControl(GetDlgItem(dialog, edit.id));
        SendDlgItemMessageA(dialog, edit.id, EM_LIMITTEXT, LONGEST_TYPED, 0);
    }
    for (const DialogChoice& choice : context->description->choices) {
        for (const std::string& value : Parts(choice.values)) {
            SendDlgItemMessageA(dialog, choice.id, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(value.c_str()));
        }
    }
    FillSelector(dialog);
    TellRoot(*context->object, context->object->name);
}

void Close(HWND dialog) {
    const std::unique_ptr<DialogContext> context(&ContextOf(dialog));
    SetWindowLongA(dialog, GWL_USERDATA, 0);
    if (context->advanced != nullptr) {
        DestroyWindow(context->advanced);
    }
    if (a_IsAlive(context->object)) {
        if (context->object->dialog == dialog) {
            context->object->dialog = nullptr;
        }
        TellRoot(*context->object, "");
    }
}

INT_PTR HandleMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        Initialize(dialog, reinterpret_cast<DialogContext*>(lParam));
        return TRUE;
    }
    if (GetWindowLongA(dialog, GWL_USERDATA) == 0) {
        return FALSE;
    }
    switch (message) {
    case CWM_ATTACHDIALOG:
        if (auto* sender = reinterpret_cast<HOSTINFO*>(lParam);
            a_IsAlive(sender)) { // it was posted: it may have gone
            if (auto* object = dynamic_cast<CONTROLPROPERTIES*>(sender); object != nullptr) {
                Attach(dialog, object);
            }
        }
        return TRUE;
    case CWM_GETCONTROLTYPE: {
        const HOSTINFO* root = a_FindRootHostinfo(ContextOf(dialog).object->parent);
        SetWindowLongA(dialog, DWL_MSGRESULT,
                       root == nullptr ? 0 : SendMessageA(root->window, CWM_GETCONTROLTYPE, 0, 0));
        return TRUE;
    }
    case WM_COMMAND:
        HandleCommand(dialog, LOWORD(wParam), HIWORD(wParam));
        return TRUE;
    case WM_NOTIFY: {
        const auto& note = *reinterpret_cast<const NMHDR*>(lParam);
        if (note.code == static_cast<UINT>(NM_RCLICK) &&
            (note.idFrom == IDC_FUNCTION_LIST || note.idFrom == IDC_CONNECTION_LIST)) {
            ShowListMenu(dialog, static_cast<int>(note.idFrom));
        }
        return FALSE;
    }
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC:
        return reinterpret_cast<INT_PTR>(
            ControlColour(message, reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam)));
    case WM_DESTROY:
        Close(dialog);
        return TRUE;
    default:
        return FALSE;
    }
}

INT_PTR CALLBACK DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    try {
        return HandleMessage(dialog, message, wParam, lParam);
    } catch (const std::exception& failure) {
        TRACE("Parameter dialog: message %x failed: %s\n", message, failure.what());
        return FALSE;
    }
}

} // namespace

HWND OpenParameterDialog(CONTROLPROPERTIES& control) {
    const ParameterDialog* description = control.controlClass->implementation->dialog;
    if (control.dialog != nullptr && IsWindow(control.dialog)) {
        return control.dialog;
    }
    if (description == nullptr) {
        return nullptr;
    }
    const HOSTINFO* root = a_FindRootHostinfo(control.parent);
    auto context = std::make_unique<DialogContext>(DialogContext{&control, description});
    const HWND dialog = CreateDialogParamA(ModuleInstance(), MAKEINTRESOURCEA(description->resource),
                                           root == nullptr ? nullptr : root->window, DialogProc,
                                           reinterpret_cast<LPARAM>(context.get()));
    control.dialog = dialog;
    if (dialog == nullptr) {
        return nullptr;
    }
    context.release(); // the dialog frees it
    POINT cursor;
    GetCursorPos(&cursor);
    SetWindowPos(dialog, nullptr, cursor.x, cursor.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_SHOWWINDOW);
    SendMessageA(dialog, DM_REPOSITION, 0, 0); // wholly on the screen
    SendMessageA(dialog, CWM_ATTACHDIALOG, 0, reinterpret_cast<LPARAM>(static_cast<HOSTINFO*>(&control)));
    return dialog;
}
