// The property pane's field, its button, and the setting of values.

#include "Panel/editing/Editor.h"
#include "Panel/properties/PropertyPane.h"
#include "Panel/resource.h"
#include "Panelhost/Dialogs.h"
#include "Panelhost/Hostinfo.h"
#include "logic/editing/PropertyTexts.h"
#include "logic/text/Numbers.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Search.h"
#include "logic/text/Text.h"
#include "logic/text/TypedNumber.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <functional>

namespace {

constexpr WPARAM LONGEST_TYPED = 16 * TEXT_SIZE; // more than is taken: it is refused as a whole, not cut
constexpr std::size_t MOST_SUGGESTIONS = 200;
constexpr int BUTTON_WIDTH = 18;
constexpr float FINE = 0.1F; // of a step, with Shift

std::string TextOf(HWND window) {
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
    text.resize(static_cast<std::size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

FieldButton::Kind ButtonOf(const PropertyRow& row) {
    switch (row.kind) {
    case KeywordKind::Words:
    case KeywordKind::Addresses:
        return FieldButton::Kind::DropDown;
    case KeywordKind::Colour:
    case KeywordKind::Typeface:
    case KeywordKind::Picture:
    case KeywordKind::File:
        return FieldButton::Kind::Chooser;
    case KeywordKind::Integer:
    case KeywordKind::Number:
        return FieldButton::Kind::Arrows;
    default:
        return FieldButton::Kind::None;
    }
}

constexpr const char* NO_WORD = "(none)"; // among the words to choose from

std::vector<std::string> WordsOf(const PropertyRow& row) {
    std::vector<std::string> words;
    if (row.mayBeEmpty) {
        words.emplace_back(NO_WORD);
    }
    for (const std::string_view word : logic::SplitFields(row.words, ',')) {
        words.emplace_back(word);
    }
    return words;
}

std::string AskFor(HWND owner, const PropertyRow& row) {
    switch (row.kind) {
    case KeywordKind::Colour:
        return a_ChooseColour(owner, row.value);
    case KeywordKind::Typeface:
        return a_ChooseFont(owner, row.value);
    case KeywordKind::Picture:
        return a_ChoosePicture(owner, row.pictures, row.value);
    default:
        return a_ChooseFile(owner, row.value);
    }
}

} // namespace

// Setting.

// False when it was refused.
bool PropertyPane::Set(const std::string& id, const std::string& text, int key) {
    const PropertyRow* found = RowAt(FindLine(id));
    if (!found || !editor_) {
        return false;
    }
    const PropertyRow row = *found; // which may be read anew meanwhile
    std::erase_if(objects_, [](const HOSTINFO* object) { return !a_IsAlive(object); });
    applying_ = true;
    std::string why = "cannot be set now";
    if (editor_->MayChange() && !objects_.empty()) {
        const std::vector<HOSTINFO*> objects = objects_;
        why = SetRow(editor_->Edits(), objects, row, text, key);
    }
    applying_ = false;
    if (why.empty()) {
        refused_.erase(id);
    } else {
        refused_[id] = {text, why};
    }
    if (editor_) {
        Refill();
    }
    InvalidateRect(Handle(), nullptr, TRUE);
    InvalidateRect(list_, nullptr, FALSE);
    return why.empty();
}

void PropertyPane::PutBack(const std::string& id) {
    refused_.erase(id);
    InvalidateRect(Handle(), nullptr, TRUE);
    InvalidateRect(list_, nullptr, FALSE);
}

void PropertyPane::Toggle(const PropertyRow& row) {
    const std::size_t comma = row.words.find(',');
    const std::string yes = row.words.substr(comma + 1);
    Set(IdOf(row), row.value == yes ? row.words.substr(0, comma) : yes);
}

void PropertyPane::Activate(int line) {
    const PropertyRow* row = RowAt(line);
    if (row && !row->isFixed && row->IsSwitch()) {
        Toggle(*row);
    } else {
        BeginEdit(line);
    }
}

// The field.

void PropertyPane::BeginEdit(int line) {
    if (edit_) {
        Finish();
        EndEdit();
    }
    const PropertyRow* row = RowAt(line);
    if (!row || row->isFixed || row->IsSwitch()) {
        return;
    }
    Select(line);
    edited_ = IdOf(*row);
    addresses_.clear();
    const std::string text = row->isMixed && !RefusalOf(*row) ? "" : ShownText(*row);
    edit_ =
        CreateWindowExA(0, WC_EDITA, text.c_str(), WS_CHILD | WS_BORDER | WS_CLIPSIBLINGS | ES_AUTOHSCROLL, 0,
                        0, 0, 0, list_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_PROPERTY_FIELD)),
                        GetModuleHandleA(nullptr), nullptr);
    if (!edit_ || !SetWindowSubclass(edit_, PartProc, 0, reinterpret_cast<DWORD_PTR>(this))) {
        return EndEdit();
    }
    SetWindowFont(edit_, font_, FALSE);
    SendMessageA(edit_, EM_LIMITTEXT, LONGEST_TYPED, 0);
    PlaceEdit();
    ShowWindow(edit_, SW_SHOWNA);
    SetFocus(edit_);
    SendMessageA(edit_, EM_SETSEL, 0, -1);
}

void PropertyPane::PlaceEdit() {
    const int line = edit_ ? FindLine(edited_) : NO_LINE;
    if (line == NO_LINE) {
        return;
    }
    RECT cell = ValueCell(line);
    const FieldButton::Kind kind = ButtonOf(*RowAt(line));
    const int button = kind == FieldButton::Kind::None ? 0 : BUTTON_WIDTH;
    SetWindowPos(edit_, nullptr, cell.left + 1, cell.top, std::max(0L, cell.right - cell.left - 1 - button),
                 cell.bottom - cell.top - 1, SWP_NOZORDER | SWP_NOACTIVATE);
    cell.left = cell.right - button;
    cell.bottom -= 1;
    button_.Show(kind, cell);
}

// Sets what was typed; false when it was refused.
bool PropertyPane::Apply() {
    const PropertyRow* row = EditedRow();
    if (!row) {
        return true;
    }
    const std::string text = TextOf(edit_);
    const bool isTyped = SendMessageA(edit_, EM_GETMODIFY, 0, 0) != 0 || RefusalOf(*row);
    if (!isTyped) {
        return true;
    }
    if (!row->isMixed && text == row->value) {
        PutBack(edited_);
        return true;
    }
    const bool isSet = Set(edited_, text);
    if (isSet && edit_) { // what the control made of it
        if (const PropertyRow* now = EditedRow()) {
            SetWindowTextA(edit_, now->value.c_str());
        }
        SendMessageA(edit_, EM_SETMODIFY, FALSE, 0);
    }
    return isSet;
}

void PropertyPane::Finish() {
    if (edit_ && !applying_) {
        Apply();
    }
}

void PropertyPane::EndEdit() {
    choices_.Hide();
    button_.Hide();
    const HWND edit = edit_;
    edit_ = nullptr; // first, so that the loss of the focus sets nothing
    edited_.clear();
    if (edit) {
        if (GetFocus() == edit) {
            SetFocus(list_);
        }
        DestroyWindow(edit);
    }
}

// To the next property that can be edited, or back to the panel behind the last one.
void PropertyPane::MoveOn(int step) {
    const int next = NextLine(SelectedLine(), step);
    if (edit_) {
        if (!Apply()) {
            return; // it stays to be mended
        }
        EndEdit();
    }
    if (next == NO_LINE) {
        if (editor_) {
            SetFocus(editor_->Panel());
        }
        return;
    }
    Select(next);
    SetFocus(list_);
    BeginEdit(next);
}

void PropertyPane::Step(int step) {
    const PropertyRow* row = EditedRow();
    if (!row || !row->IsNumber()) {
        return;
    }
    const auto number = logic::ParseTypedNumber(TextOf(edit_), "");
    if (!number) {
        return;
    }
    const bool isFine = row->kind == KeywordKind::Number && IsDown(VK_SHIFT);
    const float by = static_cast<float>(step) * (isFine ? FINE : 1.0F);
    const std::string text = logic::FormatFloat(logic::RoundToStep(*number + by, isFine ? FINE : 0.0F));
    const std::string id = edited_;
    const auto key = static_cast<int>(std::hash<std::string>()(id) | 0x40000000U);
    if (!Set(id, text, key)) {
        return PutBack(id); // an end of its range
    }
    if (const PropertyRow* now = EditedRow()) {
        SetWindowTextA(edit_, now->value.c_str());
        SendMessageA(edit_, EM_SETMODIFY, FALSE, 0);
        SendMessageA(edit_, EM_SETSEL, 0, -1);
    }
}

// Choosing.

void PropertyPane::OpenChooser() {
    const PropertyRow* row = EditedRow();
    if (!row) {
        return;
    }
    SetFocus(edit_);
    if (choices_.IsShown()) {
        return choices_.Hide();
    }
    switch (ButtonOf(*row)) {
    case FieldButton::Kind::DropDown:
        if (row->kind == KeywordKind::Words) {
            const auto words = WordsOf(*row);
            const auto held = std::find(words.begin(), words.end(),
                                        row->value.empty() && !row->isMixed ? NO_WORD : row->value);
            choices_.Show(edit_, words, held == words.end() ? -1 : static_cast<int>(held - words.begin()));
        } else {
            Suggest(true);
        }
        break;
    case FieldButton::Kind::Chooser: {
        const PropertyRow asked = *row;
        const std::vector<HOSTINFO*> objects = objects_;
        EndEdit();
        const std::string chosen = AskFor(GetAncestor(Handle(), GA_ROOT), asked);
        // Much can have happened while it was asked.
        if (!chosen.empty() && editor_ && Objects() == objects) {
            Update();
            Set(IdOf(asked), chosen);
        }
        break;
    }
    default:
        break;
    }
}

// Addresses that hold what stands at the cursor, or all.
void PropertyPane::Suggest(bool all) {
    const PropertyRow* row = EditedRow();
    if (!row || row->kind != KeywordKind::Addresses || objects_.empty() || applying_) {
        return;
    }
    if (addresses_.empty()) {
        const std::string name = logic::FoldName(row->name);
        const bool isFunction = name.find("function") != std::string::npos;
        addresses_ = a_ListAddresses(objects_.front(), isFunction || name != "connection", !isFunction);
    }
    DWORD from = 0;
    SendMessageA(edit_, EM_GETSEL, reinterpret_cast<WPARAM>(&from), 0);
    const std::string text = TextOf(edit_);
    const logic::EntryPlace entry = logic::EntryAt(text, from);
    const auto words = logic::SearchWords(all ? std::string() : text.substr(entry.begin, entry.length));
    std::vector<std::string> found;
    for (const std::string& address : addresses_) {
        if (found.size() < MOST_SUGGESTIONS && logic::HoldsAll(logic::FoldName(address), words)) {
            found.push_back(address);
        }
    }
    choices_.Show(edit_, found, -1);
}

void PropertyPane::Choose(const std::string& choice) {
    const PropertyRow* row = EditedRow();
    choices_.Hide();
    if (!row || choice.empty()) {
        return;
    }
    if (row->kind == KeywordKind::Words) {
        SetWindowTextA(edit_, choice == NO_WORD ? "" : choice.c_str());
        SendMessageA(edit_, EM_SETMODIFY, TRUE, 0);
        if (Apply()) {
            EndEdit();
        }
        return;
    }
    DWORD from = 0;
    SendMessageA(edit_, EM_GETSEL, reinterpret_cast<WPARAM>(&from), 0);
    const logic::EntryPlace entry = logic::EntryAt(TextOf(edit_), from);
    SendMessageA(edit_, EM_SETSEL, entry.begin, static_cast<LPARAM>(entry.begin + entry.length));
    SendMessageA(edit_, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(choice.c_str()));
    choices_.Hide(); // it was typed: the list has come again
}

// Keys of the field.

bool PropertyPane::OnEditKey(WPARAM key) {
    const PropertyRow* row = EditedRow();
    switch (key) {
    case VK_RETURN:
        if (choices_.IsShown() && !choices_.Marked().empty()) {
            Choose(choices_.Marked());
        } else if (Apply()) {
            EndEdit();
        } else {
            choices_.Hide();
        }
        return true;
    case VK_TAB:
        choices_.Hide();
        MoveOn(IsDown(VK_SHIFT) ? -1 : 1);
        return true;
    case VK_ESCAPE:
        if (choices_.IsShown()) {
            choices_.Hide();
        } else {
            PutBack(edited_);
            EndEdit();
        }
        return true;
    case VK_UP:
    case VK_DOWN:
        if (choices_.IsShown()) {
            choices_.MoveMark(key == VK_UP ? -1 : 1);
        } else if (row && row->IsNumber()) {
            Step(key == VK_UP ? 1 : -1);
        } else if (row && ButtonOf(*row) == FieldButton::Kind::DropDown) {
            OpenChooser();
        } else {
            MoveOn(key == VK_UP ? -1 : 1);
        }
        return true;
    default:
        return false;
    }
}

bool PropertyPane::OnEditMessage(UINT message, WPARAM wParam) {
    switch (message) {
    case WM_KEYDOWN:
        return OnEditKey(wParam);
    case WM_SYSKEYDOWN:
        if (wParam == VK_DOWN || wParam == VK_UP) {
            OpenChooser();
            return true;
        }
        return false;
    case WM_CHAR: // the field would beep
        return wParam == VK_RETURN || wParam == VK_TAB || wParam == VK_ESCAPE;
    case WM_MOUSEWHEEL: {
        const PropertyRow* row = EditedRow();
        if (choices_.IsShown()) {
            choices_.Scroll(GET_WHEEL_DELTA_WPARAM(wParam));
        } else if (row && row->IsNumber()) {
            Step(GET_WHEEL_DELTA_WPARAM(wParam) > 0 ? 1 : -1);
        } else {
            SendMessageA(list_, message, wParam, 0);
        }
        return true;
    }
    default:
        return false;
    }
}
