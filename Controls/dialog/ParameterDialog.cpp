#include "Controls/dialog/ParameterDialog.h"

#include "Controls/resources/resource.h"
#include "Panelhost/Dialog.h"
#include "Panelhost/Editing.h"
#include "base/Guard.h"
#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <commctrl.h>
#include <commdlg.h>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

// The dialog of one control at a time. What it does may end the control, and the dialog with it: the control
// is held while a message is handled, and both windows are dead handles from then on.
class ControlDialog : public Dialog {
public:
    ControlDialog(CONTROLPROPERTIES& control, const ParameterDialog& shape)
        : object(&control), description(&shape) {}
    bool Open(HWND owner) {
        return CreateModeless(ModuleInstance(), description->resource, owner) != nullptr;
    }
    ~ControlDialog() override { ForgetOpen(); }
    using Dialog::Close;
    using Dialog::ShowAtCursor;

    // Makes it the dialog of that control.
    void SetObject(CONTROLPROPERTIES& control);

    CONTROLPROPERTIES* object;
    const ParameterDialog* description;
    HWND advanced = nullptr; // the generic property dialog opened from here
    bool filling = false;    // the fields are being set by the program

private:
    // The base is in the host library, into which no exception may go.
    void OnCreate() override {
        Guarded([this] { Initialize(); });
    }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override {
        return Guarded(true, [&] { return HandleMessage(message, wParam, lParam, result); });
    }
    void Initialize();
    bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    bool IsHeader(int id) const override;
    void Ended();
    void ForgetOpen();

    // What GWL_USERDATA of the window points to.
    struct Context {
        HOSTINFO* object;
        HOSTINFO* root;
        HOSTINFO* sameObject;
    };
    Context context_{};
};

// In the order of their opening.
std::vector<ControlDialog*>& OpenDialogs() {
    static std::vector<ControlDialog*> dialogs;
    return dialogs;
}

constexpr const char* IMAGE_FOLDER = ".\\Controls";
constexpr WPARAM LONGEST_TYPED = 16 * TEXT_SIZE; // more than is taken: it is refused as a whole, not cut
constexpr std::size_t LONGEST_SHOWN = 40;        // of a refused text in the message about it

std::string ItemText(ControlDialog& dialog, int id) {
    const HWND item = dialog.Item(id);
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
    return edit.kind == FieldKind::Integer || edit.kind == FieldKind::Float ||
           edit.kind == FieldKind::TypedFloat;
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

void ShowStatus(ControlDialog& dialog, const std::string& text) {
    SetDlgItemTextA(dialog.Handle(), IDC_DIALOG_STATUS, text.c_str());
}

bool SendLine(ControlDialog& dialog, const std::string& line) {
    return a_ApplyEdit(dialog.object, line.c_str()) != 0;
}

// Why a text cannot be the value of a field; empty when it can.
std::string Objection(const DialogEdit& edit, const std::string& text) {
    switch (edit.kind) {
    case FieldKind::Integer:
        return logic::ParseWholeInteger(text) ? "" : "is not a whole number";
    case FieldKind::Float:
    case FieldKind::TypedFloat:
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

void RestoreField(ControlDialog& dialog, const DialogEdit& edit) {
    SetDlgItemTextA(dialog.Handle(), edit.id, FieldText(*dialog.object, edit).c_str());
}

void ApplyField(ControlDialog& dialog, const DialogEdit& edit) {
    CONTROLPROPERTIES& object = *dialog.object;
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
            parts[static_cast<std::size_t>(edit.part)] =
                edit.kind == FieldKind::Float ? logic::FormatFloat(*logic::ParseWholeFloat(typed))
                                              : std::string(logic::TrimBlanks(typed));
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

void ShowRefusal(ControlDialog& dialog, const DialogEdit& edit, const std::string& value) {
    ShowStatus(dialog, std::string(edit.label) + ": \"" + value + "\" is not possible here");
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

void Choose(ControlDialog& dialog, const DialogEdit& edit) {
    const std::string current = FieldText(*dialog.object, edit);
    const std::string chosen = edit.kind == FieldKind::Colour ? ChooseColour(dialog.Handle(), current)
                                                              : ChooseFontText(dialog.Handle(), current);
    if (!chosen.empty() && dialog.Handle() != nullptr &&
        !SendLine(dialog, std::string("*") + edit.keyword + "=" + chosen)) {
        ShowRefusal(dialog, edit, chosen);
    }
}

const DialogEdit* FindEdit(ControlDialog& dialog, int id) {
    for (const DialogEdit& edit : dialog.description->edits) {
        if (edit.id == id) {
            return &edit;
        }
    }
    return nullptr;
}

// The lists of bindings

void InitializeList(ControlDialog& dialog, int id, const char* title) {
    const HWND list = dialog.Item(id);
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

void FillList(ControlDialog& dialog, int id, const BINDINGLIST& bindings) {
    const HWND list = dialog.Item(id);
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

void DeleteEntries(ControlDialog& dialog, int id, bool all) {
    const bool isFunctions = id == IDC_FUNCTION_LIST;
    const CONTROLPROPERTIES& object = *dialog.object;
    BINDINGLIST bindings = isFunctions ? object.functions : object.connections;
    const auto selected = static_cast<int>(
        SendDlgItemMessageA(dialog.Handle(), id, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    if (all) {
        bindings.clear();
    } else if (selected >= 0 && static_cast<std::size_t>(selected) < bindings.size()) {
        bindings.erase(std::next(bindings.begin(), selected));
    }
    SendLine(dialog, (isFunctions ? "*function=" : "*connection=") + a_BuildString(bindings));
}

void ShowListMenu(ControlDialog& dialog, int id) {
    const HMENU menus = LoadMenuA(ModuleInstance(), MAKEINTRESOURCEA(IDR_LIST_MENU));
    POINT cursor;
    GetCursorPos(&cursor);
    const int command = TrackPopupMenu(GetSubMenu(menus, 0), TPM_RETURNCMD | TPM_RIGHTBUTTON, cursor.x,
                                       cursor.y, 0, dialog.Handle(), nullptr);
    DestroyMenu(menus);
    if (command != 0) {
        DeleteEntries(dialog, id, command == IDM_DELETE_ALL);
    }
}

// The lists that fill in a click template: an object, or the connections, and a keyword of it.

constexpr const char* CONNECTIONS_ENTRY = "(connections)";

void AddText(HWND combo, const char* text) {
    SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
}

std::string ChosenText(ControlDialog& dialog, int id) {
    char text[TEXT_SIZE] = "";
    GetDlgItemTextA(dialog.Handle(), id, text, sizeof text);
    return text;
}

void FillTemplateObjects(ControlDialog& dialog) {
    const HWND combo = dialog.Item(IDC_TEMPLATE_OBJECT);
    SendMessageA(combo, CB_RESETCONTENT, 0, 0);
    AddText(combo, CONNECTIONS_ENTRY);
    for (const HOSTINFO* object : a_ListHostinfos(a_FindRootHostinfo(dialog.object->parent))) {
        if (object->kind == KIND_CONTROL) {
            AddText(combo, object->name.c_str());
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
        AddText(combo, row->keyword);
    }
}

void InsertTemplate(ControlDialog& dialog) {
    const std::string object = ChosenText(dialog, IDC_TEMPLATE_OBJECT);
    const std::string keyword = ChosenText(dialog, IDC_TEMPLATE_KEYWORD);
    const std::string text = (object == CONNECTIONS_ENTRY ? "" : object) + "*" + keyword + "=";
    const HWND edit = dialog.Item(dialog.description->templateEdit);
    SetWindowTextA(edit, text.c_str());
    SendMessageA(edit, EM_SETMODIFY, TRUE, 0);
    SetFocus(edit);
    SendMessageA(edit, EM_SETSEL, text.size(),
                 static_cast<LPARAM>(text.size())); // the value is typed behind it
}

void HandleTemplateCommand(ControlDialog& dialog, int id, WORD code) {
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
    return control == nullptr ? nullptr : control->controlClass->implementation->fields;
}

void FillSelector(ControlDialog& dialog) {
    const HWND selector = dialog.Item(IDC_OBJECT_SELECTOR);
    SendMessageA(selector, CB_RESETCONTENT, 0, 0);
    const auto add = [&](HOSTINFO* object) {
        const auto place =
            SendMessageA(selector, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(object->name.c_str()));
        SendMessageA(selector, CB_SETITEMDATA, static_cast<WPARAM>(place),
                     reinterpret_cast<LPARAM>(object->window));
    };
    bool listed = false;
    for (HOSTINFO* object : a_ListHostinfos(a_FindRootHostinfo(dialog.object->parent))) {
        if (DialogOf(object) != nullptr) {
            add(object);
            listed = listed || object == dialog.object;
        }
    }
    if (!listed) { // a control without a panel
        add(dialog.object);
    }
    SendMessageA(selector, CB_SETCURSEL,
                 static_cast<WPARAM>(SendMessageA(selector, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                                  reinterpret_cast<LPARAM>(dialog.object->name.c_str()))),
                 0);
}

void TellRoot(const CONTROLPROPERTIES& object, const std::string& name) {
    if (const HOSTINFO* root = a_FindRootHostinfo(object.parent); root != nullptr) {
        const std::string line = "*parameterdlg=" + name;
        SendMessageA(root->window, CWM_LOAD, LOAD_FROM_DIALOG, reinterpret_cast<LPARAM>(line.c_str()));
    }
}

// The control whose dialog the root names as the open one.
std::string NamedAtRoot(const HOSTINFO& root) {
    char name[TEXT_SIZE] = "";
    VALUERECORD record{COMMAND_GET, 0, DATATYPE_TEXT, 0, name, "parameterdlg", 0};
    SendMessageA(root.window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
    return name;
}

const DialogOption* ChosenOption(const ControlDialog& dialog, std::string_view keyword) {
    const DialogOption* chosen = nullptr;
    for (const DialogOption& option : dialog.description->options) {
        if (option.keyword == keyword) {
            chosen = &option;
            if (KeywordText(*dialog.object, option.keyword) == option.value) {
                break;
            }
        }
    }
    return chosen;
}

void Refill(ControlDialog& dialog) {
    CONTROLPROPERTIES& object = *dialog.object;
    dialog.filling = true;
    for (const DialogEdit& edit : dialog.description->edits) {
        // What is being typed is the user's until it is applied.
        if (GetFocus() != dialog.Item(edit.id) ||
            SendDlgItemMessageA(dialog.Handle(), edit.id, EM_GETMODIFY, 0, 0) == 0) {
            RestoreField(dialog, edit);
        }
    }
    for (const DialogOption& option : dialog.description->options) {
        CheckDlgButton(dialog.Handle(), option.id,
                       &option == ChosenOption(dialog, option.keyword) ? BST_CHECKED : BST_UNCHECKED);
    }
    for (const DialogChoice& choice : dialog.description->choices) {
        SendDlgItemMessageA(dialog.Handle(), choice.id, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                            reinterpret_cast<LPARAM>(KeywordText(object, choice.keyword).c_str()));
    }
    for (const DialogPreview& preview : dialog.description->previews) {
        SetDlgItemTextA(dialog.Handle(), preview.id,
                        preview.shown(KeywordText(object, preview.keyword)).c_str());
    }
    if (dialog.description->bitmapPrefix != nullptr) {
        const std::string name = KeywordText(object, "bitmap");
        SetDlgItemTextA(dialog.Handle(), IDC_BITMAP_NAME, name.empty() ? "-" : name.c_str());
    }
    FillList(dialog, IDC_FUNCTION_LIST, object.functions);
    FillList(dialog, IDC_CONNECTION_LIST, object.connections);
    dialog.filling = false;
}

void Attach(ControlDialog& dialog, CONTROLPROPERTIES* object) {
    if (object != dialog.object && object->controlClass->implementation->fields != dialog.description) {
        return; // of another shape
    }
    dialog.SetObject(*object);
    Refill(dialog);
    if (dialog.advanced != nullptr && IsWindow(dialog.advanced)) {
        PostMessageA(dialog.advanced, CWM_ATTACHDIALOG, 0,
                     reinterpret_cast<LPARAM>(static_cast<HOSTINFO*>(object)));
    }
}

// Makes the dialog that of another control, or opens the one of its class in this one's place.
void SwitchTo(ControlDialog& dialog, HWND window) {
    auto* chosen = dynamic_cast<CONTROLPROPERTIES*>(a_FromWindow(window));
    if (chosen == nullptr || chosen == dialog.object) {
        return;
    }
    if (chosen->dialog != nullptr && IsWindow(chosen->dialog)) {
        SetActiveWindow(chosen->dialog);
        FillSelector(dialog);
        return;
    }
    if (chosen->controlClass->implementation->fields == dialog.description) {
        dialog.object->dialog = nullptr;
        if (dialog.advanced != nullptr) {
            DestroyWindow(dialog.advanced);
            dialog.advanced = nullptr;
        }
        ShowStatus(dialog, "");
        Attach(dialog, chosen);
        TellRoot(*chosen, chosen->name);
        return;
    }
    RECT place;
    GetWindowRect(dialog.Handle(), &place);
    const HWND other = OpenParameterDialog(*chosen);
    if (other != nullptr) {
        SetWindowPos(other, nullptr, place.left, place.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        dialog.Close();
    }
}

void DeleteControl(ControlDialog& dialog) {
    CONTROLPROPERTIES* object = dialog.object;
    const std::string question = "Delete \"" + object->name + "\"?";
    const bool isSure =
        a_IsUndoable(object) || MessageBoxA(dialog.Handle(), question.c_str(), "Delete",
                                            MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) == IDYES;
    if (isSure && a_IsAlive(object)) { // both may have gone while the question stood
        a_DeleteObject(object);
    }
}

void ChooseBitmap(ControlDialog& dialog) {
    char name[MAX_PATH];
    if (a_PopupBitmapView(dialog.Handle(), IMAGE_FOLDER, dialog.description->bitmapPrefix, name) != 0 &&
        dialog.Handle() != nullptr && !SendLine(dialog, std::string("*bitmap=") + name)) {
        ShowStatus(dialog, std::string("Bitmap: \"") + name + "\" is not possible here");
    }
}

void OpenAdvanced(ControlDialog& dialog) {
    if (dialog.advanced != nullptr && IsWindow(dialog.advanced)) {
        SetActiveWindow(dialog.advanced);
        return;
    }
    dialog.advanced = a_PropertyDlg(1, dialog.object->window, dialog.object);
}

// Whether a command is a choice from that list; the number is then the item.
bool IsChoice(ControlDialog& dialog, int id, WORD code) {
    if (code == CBN_SELCHANGE) {
        PostFromChild(dialog.Handle(), id, LIST_CHOSEN,
                      SendDlgItemMessageA(dialog.Handle(), id, CB_GETCURSEL, 0, 0));
    }
    return code == LIST_CHOSEN;
}

void HandleCommand(ControlDialog& dialog, int id, WORD code, LPARAM number) {
    if (const DialogEdit* edit = FindEdit(dialog, id); edit != nullptr) {
        if (code == EDIT_ENTER || (code == EDIT_LEFT && !dialog.filling)) {
            ApplyField(dialog, *edit);
        } else if (code == EDIT_ESCAPE) {
            RestoreField(dialog, *edit);
            ShowStatus(dialog, "");
        }
        return;
    }
    for (const DialogEdit& edit : dialog.description->edits) {
        if (edit.chooser == id && id != 0) {
            Choose(dialog, edit);
            return;
        }
    }
    for (const DialogOption& option : dialog.description->options) {
        if (option.id == id && code == BN_CLICKED) { // also the one that is on: the line does it anew
            SendLine(dialog, std::string("*") + option.keyword + "=" + option.value);
            return;
        }
    }
    for (const DialogChoice& choice : dialog.description->choices) {
        if (choice.id == id && IsChoice(dialog, id, code)) {
            char text[64] = "";
            SendDlgItemMessageA(dialog.Handle(), id, CB_GETLBTEXT, static_cast<WPARAM>(number),
                                reinterpret_cast<LPARAM>(text));
            SendLine(dialog, std::string("*") + choice.keyword + "=" + text);
            return;
        }
    }
    switch (id) {
    case IDC_OBJECT_SELECTOR:
        if (code == CBN_DROPDOWN) {
            FillSelector(dialog); // controls may have come and gone
        } else if (IsChoice(dialog, id, code)) {
            SwitchTo(dialog, reinterpret_cast<HWND>(SendDlgItemMessageA(dialog.Handle(), id, CB_GETITEMDATA,
                                                                        static_cast<WPARAM>(number), 0)));
        }
        break;
    case IDC_DELETE_CONTROL:
        DeleteControl(dialog);
        break;
    case IDC_MODIFY_CONNECTIONS:
        a_ConnectionDlg(1, dialog.object->window, dialog.object);
        break;
    case IDC_CHOOSE_BITMAP:
        if (dialog.description->bitmapPrefix != nullptr) {
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
        dialog.Close();
        break;
    default:
        break;
    }
}

void ControlDialog::SetObject(CONTROLPROPERTIES& control) {
    object = &control;
    object->dialog = Handle();
    context_ = {object, a_FindRootHostinfo(object->parent), object};
}

void ControlDialog::Initialize() {
    OpenDialogs().push_back(this);
    SetWindowLongA(Handle(), GWL_USERDATA, reinterpret_cast<LONG>(&context_));
    SetObject(*object);
    InitializeList(*this, IDC_FUNCTION_LIST, "Functions");
    InitializeList(*this, IDC_CONNECTION_LIST, "Connections");
    for (const DialogEdit& edit : description->edits) {
        a_SubclassEditControl(Item(edit.id));
        SendMessageA(Item(edit.id), EM_LIMITTEXT, LONGEST_TYPED, 0);
    }
    for (const DialogChoice& choice : description->choices) {
        for (const std::string& value : Parts(choice.values)) {
            AddText(Item(choice.id), value.c_str());
        }
    }
    FillSelector(*this);
    TellRoot(*object, object->name);
    SetFocus(GetNextDlgTabItem(Handle(), nullptr, FALSE));
}

void ControlDialog::ForgetOpen() {
    std::erase(OpenDialogs(), this);
}

void ControlDialog::Ended() {
    ForgetOpen();
    if (advanced != nullptr) {
        DestroyWindow(advanced);
    }
    if (!a_IsAlive(object)) {
        return;
    }
    if (object->dialog == Handle()) {
        object->dialog = nullptr;
    }
    // The root names one that is still open, if there is any.
    const HOSTINFO* root = a_FindRootHostinfo(object->parent);
    if (root == nullptr || NamedAtRoot(*root) != object->name) {
        return;
    }
    const auto& others = OpenDialogs();
    const auto last = std::find_if(others.rbegin(), others.rend(), [root](const ControlDialog* other) {
        return a_IsAlive(other->object) && a_FindRootHostinfo(other->object->parent) == root;
    });
    TellRoot(*object, last == others.rend() ? "" : (*last)->object->name);
}

bool ControlDialog::IsHeader(int id) const {
    return id == IDC_CONNECTIONS_HEADER || id == IDC_PROPERTIES_HEADER || id == IDC_FUNCTIONS_HEADER;
}

bool ControlDialog::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    if (message == WM_DESTROY) {
        Ended();
        return true;
    }
    if (!a_IsAlive(object)) {
        return Dialog::OnMessage(message, wParam, lParam, result);
    }
    const Held held(*object);
    switch (message) {
    case CWM_ATTACHDIALOG:
        if (auto* sender = reinterpret_cast<HOSTINFO*>(lParam);
            a_IsAlive(sender)) { // it was posted: it may have gone
            // One that was posted before another control was selected is late.
            if (auto* control = dynamic_cast<CONTROLPROPERTIES*>(sender); control == object) {
                Attach(*this, control);
            }
        }
        return true;
    case CWM_GETCONTROLTYPE:
        if (const HOSTINFO* root = a_FindRootHostinfo(object->parent); root != nullptr) {
            result = SendMessageA(root->window, CWM_GETCONTROLTYPE, 0, 0);
        }
        return true;
    case WM_COMMAND:
        HandleCommand(*this, LOWORD(wParam), HIWORD(wParam), lParam);
        return true;
    case WM_NOTIFY: {
        const auto& note = *reinterpret_cast<const NMHDR*>(lParam);
        if (note.code == static_cast<UINT>(NM_RCLICK) &&
            (note.idFrom == IDC_FUNCTION_LIST || note.idFrom == IDC_CONNECTION_LIST)) {
            ShowListMenu(*this, static_cast<int>(note.idFrom));
        }
        return false;
    }
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
        return Dialog::OnMessage(WM_CTLCOLOREDIT, wParam, lParam, result);
    default:
        return Dialog::OnMessage(message, wParam, lParam, result);
    }
}

} // namespace

HWND OpenParameterDialog(CONTROLPROPERTIES& control) {
    const ParameterDialog* description = control.controlClass->implementation->fields;
    if (control.dialog != nullptr && IsWindow(control.dialog)) {
        return control.dialog;
    }
    if (description == nullptr) {
        return nullptr;
    }
    const HOSTINFO* root = a_FindRootHostinfo(control.parent);
    const auto dialog = std::make_shared<ControlDialog>(control, *description);
    if (!dialog->Open(root == nullptr ? nullptr : root->window)) {
        return nullptr;
    }
    dialog->ShowAtCursor();
    SendMessageA(dialog->Handle(), CWM_ATTACHDIALOG, 0,
                 reinterpret_cast<LPARAM>(static_cast<HOSTINFO*>(&control)));
    return dialog->Handle();
}
