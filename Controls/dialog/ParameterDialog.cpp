// The parameter dialogs of the controls. What a dialog does may end its control, and the dialog with it: the
// control is held while a message is handled, and both windows are dead handles from then on.

#include "Controls/dialog/ParameterDialog.h"

#include "Controls/dialog/BindingLists.h"
#include "Controls/dialog/ClickTemplateLists.h"
#include "Controls/dialog/ControlDialog.h"
#include "Controls/dialog/DialogLayout.h"
#include "Controls/dialog/FieldEditing.h"
#include "Panelhost/Dialogs.h"
#include "Panelhost/Operating.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <commctrl.h>
#include <memory>
#include <windowsx.h>

namespace {

using Input = DialogField::Input;

constexpr WPARAM LONGEST_TYPED = 16 * TEXT_SIZE; // more than is taken: it is refused as a whole, not cut

// In the order of their opening.
std::vector<ControlDialog*>& OpenDialogs() {
    static std::vector<ControlDialog*> dialogs;
    return dialogs;
}

bool HasDialog(HOSTINFO* object) {
    const auto* control = dynamic_cast<CONTROLPROPERTIES*>(object);
    return control != nullptr && control->controlClass->implementation->dialog != NO_DIALOG;
}

// The one that is called exactly so: "m" is not "ms".
void SelectEntry(HWND list, const std::string& text) {
    const LRESULT entry = SendMessageA(list, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                       reinterpret_cast<LPARAM>(text.c_str()));
    SendMessageA(list, CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
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
        if (HasDialog(object)) {
            add(object);
            listed = listed || object == dialog.object;
        }
    }
    if (!listed) { // a control without a panel
        add(dialog.object);
    }
    SelectEntry(selector, dialog.object->name);
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
    VALUERECORD record = VALUERECORD::GetText(name).Named("parameterdlg");
    SendMessageA(root.window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
    return name;
}

// The option that says what the keyword is: the last one for whatever none of them is.
const DialogField* ChosenOption(const ControlDialog& dialog, const char* keyword) {
    const std::string value = dialog.KeywordText(keyword);
    const DialogField* chosen = nullptr;
    for (const DialogField& field : dialog.fields) {
        if (field.input == Input::Option && field.keyword == keyword) {
            chosen = &field;
            if (value == field.value) {
                break;
            }
        }
    }
    return chosen;
}

void RefillField(const ControlDialog& dialog, const DialogField& field) {
    const HWND item = dialog.Item(field.item);
    switch (field.input) {
    case Input::Edit:
        // What is being typed is the user's until it is applied.
        if (GetFocus() != item || SendMessageA(item, EM_GETMODIFY, 0, 0) == 0) {
            RestoreField(dialog, field);
        }
        break;
    case Input::Option:
        CheckDlgButton(dialog.Handle(), field.item,
                       &field == ChosenOption(dialog, field.keyword) ? BST_CHECKED : BST_UNCHECKED);
        break;
    case Input::List:
        SelectEntry(item, dialog.KeywordText(field.keyword));
        break;
    case Input::Picture: {
        const std::string name = dialog.KeywordText(field.keyword);
        SetWindowTextA(item, name.empty() ? "-" : name.c_str());
        break;
    }
    }
    if (field.preview != 0) {
        SetDlgItemTextA(dialog.Handle(), field.preview,
                        field.info->preview(dialog.KeywordText(field.keyword)).c_str());
    }
}

void Refill(ControlDialog& dialog) {
    dialog.filling = true;
    for (const DialogField& field : dialog.fields) {
        RefillField(dialog, field);
    }
    FillList(dialog, IDC_FUNCTION_LIST, dialog.object->functions);
    FillList(dialog, IDC_CONNECTION_LIST, dialog.object->connections);
    dialog.filling = false;
}

void Attach(ControlDialog& dialog, CONTROLPROPERTIES* object) {
    if (object != dialog.object && object->controlClass != dialog.object->controlClass) {
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
    if (chosen->controlClass == dialog.object->controlClass) {
        dialog.object->dialog = nullptr;
        if (dialog.advanced != nullptr) {
            DestroyWindow(dialog.advanced);
            dialog.advanced = nullptr;
        }
        dialog.ShowStatus("");
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

void HandleFieldCommand(ControlDialog& dialog, const DialogField& field, int id, WORD code, LPARAM number) {
    if (id == field.chooser) {
        field.input == Input::Picture ? ChoosePicture(dialog, field) : ChooseValue(dialog, field);
        return;
    }
    switch (field.input) {
    case Input::Edit:
        if (code == EDIT_ENTER || (code == EDIT_LEFT && !dialog.filling)) {
            ApplyField(dialog, field);
        } else if (code == EDIT_ESCAPE) {
            RestoreField(dialog, field);
            dialog.ShowStatus("");
        }
        break;
    case Input::Option:
        if (code == BN_CLICKED) { // also the one that is on: the line does it anew
            dialog.SendLine(LineOf(field, field.value));
        }
        break;
    case Input::List:
        if (IsChoice(dialog, id, code)) {
            char text[64] = "";
            SendDlgItemMessageA(dialog.Handle(), id, CB_GETLBTEXT, static_cast<WPARAM>(number),
                                reinterpret_cast<LPARAM>(text));
            if (!dialog.SendLine(LineOf(field, text)) && dialog.Handle() != nullptr) {
                RefillField(dialog, field); // it keeps what it has
                dialog.ShowStatus(std::string(field.label) + ": \"" + text + "\" is not possible here");
            }
        }
        break;
    case Input::Picture:
        break;
    }
}

void HandleCommand(ControlDialog& dialog, int id, WORD code, LPARAM number) {
    const auto field =
        id == 0 ? dialog.fields.end()
                : std::find_if(dialog.fields.begin(), dialog.fields.end(),
                               [id](const auto& one) { return one.item == id || one.chooser == id; });
    if (field != dialog.fields.end()) {
        HandleFieldCommand(dialog, *field, id, code, number);
        return;
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

} // namespace

bool ControlDialog::Open(HWND owner) {
    const ControlClass& controlClass = *object->controlClass;
    const int resource = controlClass.implementation->dialog;
    return (resource == LAID_OUT
                ? CreateModeless(
                      ModuleInstance(),
                      LayOutDialog(std::string(controlClass.displayName) + " Class", fields).data(), owner)
                : CreateModeless(ModuleInstance(), resource, owner)) != nullptr;
}

std::string ControlDialog::ItemText(int id) const {
    const HWND item = Item(id);
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(item)) + 1, '\0');
    text.resize(static_cast<std::size_t>(GetWindowTextA(item, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::string ControlDialog::KeywordText(const char* keyword) const {
    char text[TEXT_SIZE] = "";
    VALUERECORD record = VALUERECORD::GetText(text).Named(keyword);
    object->OnMessage(0, reinterpret_cast<LPARAM>(&record));
    return text;
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
    std::erase_if(fields, [this](const DialogField& field) { return Item(field.item) == nullptr; });
    for (const DialogField& field : fields) {
        const HWND item = Item(field.item);
        if (field.input == Input::Edit) {
            a_SubclassEditControl(item);
            SendMessageA(item, EM_LIMITTEXT, LONGEST_TYPED, 0);
        } else if (field.input == Input::List) {
            for (const auto word : logic::SplitFields(field.info->words, ',')) {
                ComboBox_AddString(item, std::string(word).c_str());
            }
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

HWND OpenParameterDialog(CONTROLPROPERTIES& control) {
    if (control.dialog != nullptr && IsWindow(control.dialog)) {
        return control.dialog;
    }
    if (!HasDialog(&control) || a_IsOnlyOperated(&control)) {
        return nullptr;
    }
    const HOSTINFO* root = a_FindRootHostinfo(control.parent);
    const auto dialog = std::make_shared<ControlDialog>(control);
    if (!dialog->Open(root == nullptr ? nullptr : root->window)) {
        return nullptr;
    }
    dialog->ShowAtCursor();
    SendMessageA(dialog->Handle(), CWM_ATTACHDIALOG, 0,
                 reinterpret_cast<LPARAM>(static_cast<HOSTINFO*>(&control)));
    return dialog->Handle();
}
