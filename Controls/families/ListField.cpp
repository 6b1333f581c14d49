#include "Controls/families/ListField.h"

#include "Controls/drawing/DarkParts.h"
#include "Panelhost/Background.h"
#include "Panelhost/Bitmap.h"
#include "Panelhost/Dialogs.h"
#include "base/Gdi.h"

#include <algorithm>
#include <numeric>
#include <olectl.h>

namespace {

constexpr int CHOICE = 0x7F01; // id of what the list posts to its control
constexpr int MARGIN = 3;      // of the text in the face

} // namespace

LRESULT ListField::System(UINT message, WPARAM wParam, LPARAM lParam) const {
    return owner_.ListDoes(message, wParam, lParam);
}

HWND ListField::Begin() {
    const auto style = static_cast<DWORD>(GetWindowLongA(list_, GWL_STYLE));
    if ((style & CBS_DROPDOWNLIST) == CBS_DROPDOWN) {
        edit_ = FindWindowExA(list_, nullptr, "EDIT", nullptr);
        field_.Begin();
    }
    return edit_;
}

// Whatever makes it another size makes it forget this, so it is told when it is about to drop down.
void ListField::SizeList() {
    if (isSized_ || IsDropped()) {
        return;
    }
    RECT closed{};
    GetWindowRect(list_, &closed);
    const int height = closed.bottom - closed.top + lines_ * static_cast<int>(System(CB_GETITEMHEIGHT)) + 2;
    const RECT known = control_.rectangle; // the list becomes another one, not the control
    SetWindowPos(list_, nullptr, 0, 0, closed.right - closed.left, height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    control_.rectangle = known;
    isSized_ = true;
}

void ListField::Fill(const logic::Items& items, bool isSorted) {
    items_ = items;
    order_.resize(items_.Size());
    std::iota(order_.begin(), order_.end(), std::size_t{0});
    const auto caption = [this](std::size_t item) { return std::string(items_.Caption(item)); };
    if (isSorted) {
        std::stable_sort(order_.begin(), order_.end(), [&](std::size_t left, std::size_t right) {
            return lstrcmpiA(caption(left).c_str(), caption(right).c_str()) < 0;
        });
    }
    System(CB_RESETCONTENT);
    for (const std::size_t item : order_) {
        System(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(caption(item).c_str()));
    }
    place_ = CB_ERR;
    isDeciding_ = false;
    Show();
}

int ListField::PlaceOf(const std::string& value) const {
    const auto item = items_.IndexOfValue(value);
    const auto line = item ? std::find(order_.begin(), order_.end(), *item) : order_.end();
    return line == order_.end() ? CB_ERR : static_cast<int>(line - order_.begin());
}

std::string ListField::ValueOfCaption(const std::string& text) const {
    for (const std::size_t item : order_) {
        if (items_.Caption(item) == text) {
            return std::string(items_.Value(item));
        }
    }
    return text;
}

std::string ListField::ShownText() const {
    if (control_.hasNoValue) {
        return CONTROLPROPERTIES::NO_VALUE;
    }
    const std::string value = owner_.HeldValue();
    const int line = PlaceOf(value);
    return line == CB_ERR ? logic::OneLine(value)
                          : std::string(items_.Caption(order_[static_cast<std::size_t>(line)]));
}

// As a reader of the screen finds it.
std::string ListField::FaceText() const {
    return IsEditable() && IsBusy() ? field_.Text() : ShownText();
}

bool ListField::IsWalked() const {
    return !IsDropped() && System(CB_GETCURSEL) != place_;
}

bool ListField::IsBusy() const {
    return isDeciding_ || IsDropped() || field_.IsEdited() || (control_.HasFocus() && IsWalked());
}

bool ListField::IsMarked() const {
    const std::string value = owner_.HeldValue();
    return control_.notEqual || (!IsEditable() && !value.empty() && PlaceOf(value) == CB_ERR);
}

void ListField::Show() {
    if (IsBusy()) {
        return;
    }
    place_ = control_.hasNoValue ? CB_ERR : PlaceOf(owner_.HeldValue());
    if (System(CB_GETCURSEL) != place_) {
        System(CB_SETCURSEL, static_cast<WPARAM>(place_));
    }
    if (IsEditable()) {
        field_.Restore();
        Unselect();
    }
    LookChanged();
}

// The system leaves the text of a list selected that nobody is at.
void ListField::Unselect() {
    if (IsEditable() && !control_.HasFocus()) {
        owner_.TypingDoes(EM_SETSEL, 0, 0);
    }
}

void ListField::LookChanged() {
    if (IsEditable() && IsMarked() != margin_.IsMarked()) {
        margin_.SetMarked(IsMarked());
        margin_.Align(logic::Alignment::Left);
    }
    if (IsWindowVisible(list_)) {
        InvalidateRect(list_, nullptr, TRUE);
    }
}

// Choosing

void ListField::Choose() {
    isDeciding_ = false;
    const auto line = static_cast<std::size_t>(System(CB_GETCURSEL));
    if (field_.IsEdited()) {
        field_.TakeTyped(true);
    } else if (line < order_.size()) {
        owner_.TakeChosen(std::string(items_.Value(order_[line])));
        place_ = static_cast<int>(line);
        Show();
        owner_.SendChosen();
    }
}

void ListField::PutBack() {
    isDeciding_ = false;
    System(CB_SETCURSEL, static_cast<WPARAM>(place_));
    if (IsEditable()) {
        field_.Restore();
    }
    Show();
}

// The system goes on using the list while it tells that it closed it, so what follows has to wait.
void ListField::Watch(bool isChoice) {
    const bool isDropped = IsDropped();
    if (std::exchange(wasDropped_, isDropped) && !isDropped) {
        isDeciding_ = true;
        PostFromChild(control_.window, CHOICE, LIST_CHOSEN, isChoice ? 1 : 0);
    }
}

bool ListField::Commanded(WPARAM wParam, LPARAM isChoice) {
    const bool isOwn = LOWORD(wParam) == CHOICE && HIWORD(wParam) == LIST_CHOSEN;
    if (isOwn && isDeciding_) {
        isChoice != 0 ? Choose() : PutBack();
    }
    return isOwn;
}

// Whether it was a key of the closed list.
bool ListField::HandleKey(WPARAM key) {
    if (IsDropped() || (key != VK_RETURN && key != VK_ESCAPE)) {
        return false;
    }
    if (IsWalked()) {
        key == VK_RETURN ? Choose() : PutBack();
    }
    return true;
}

std::optional<LRESULT> ListField::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    if (const auto answer = PaintDark(message, wParam)) {
        return *answer;
    }
    switch (message) {
    case WM_KEYDOWN:
    case WM_CHAR:
    case WM_MOUSEWHEEL:
        // The wheel reaches a list that it is over without the focus.
        if (PassInput(control_, message, wParam, lParam) ||
            (message == WM_MOUSEWHEEL && !control_.HasFocus()) ||
            (message == WM_KEYDOWN && HandleKey(wParam))) {
            return 0;
        }
        if (message == WM_KEYDOWN) {
            SizeList();
        }
        return std::nullopt;
    case WM_SYSKEYDOWN:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case CB_SHOWDROPDOWN:
        SizeList();
        return std::nullopt;
    case WM_GETDLGCODE: {
        const auto* key = reinterpret_cast<const MSG*>(lParam);
        const bool isWanted =
            key != nullptr && (key->wParam == VK_RETURN || key->wParam == VK_ESCAPE) && IsBusy();
        return System(message, wParam, lParam) | (isWanted ? DLGC_WANTMESSAGE : 0);
    }
    case WM_GETTEXT: {
        const std::string text = FaceText();
        if (wParam == 0 || lParam == 0) {
            return 0;
        }
        lstrcpynA(reinterpret_cast<char*>(lParam), text.c_str(), static_cast<int>(wParam));
        return static_cast<LRESULT>(std::min<std::size_t>(text.size(), wParam - 1));
    }
    case WM_GETTEXTLENGTH:
        return static_cast<LRESULT>(FaceText().size());
    case WM_SETTEXT:
        if (lParam != 0) {
            owner_.TakeChosen(ValueOfCaption(reinterpret_cast<const char*>(lParam)));
            Show();
        }
        return TRUE;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSTATIC:
    case OCM__BASE + WM_CTLCOLOREDIT:
    case OCM__BASE + WM_CTLCOLORLISTBOX:
    case OCM__BASE + WM_CTLCOLORSTATIC:
        return reinterpret_cast<LRESULT>(Colours(reinterpret_cast<HDC>(wParam)));
    default:
        return std::nullopt;
    }
}

void ListField::Handled(UINT message, WPARAM wParam, LPARAM lParam) {
    if (control_.IsDark() && IsWindowVisible(list_)) { // some systems draw on the closed list at once
        switch (message) {
        case WM_SETFOCUS:
        case WM_COMMAND:
        case WM_ENABLE:
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
        case WM_CAPTURECHANGED:
        case CB_SETCURSEL:
        case CB_SHOWDROPDOWN:
            InvalidateRect(list_, nullptr, FALSE);
            break;
        default:
            break;
        }
    }
    switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
        Watch(wParam != VK_ESCAPE);
        return;
    case WM_COMMAND: // of the list that is dropped down: a click
        Watch(true);
        return;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED:
    case CB_SHOWDROPDOWN:
        Watch(false);
        return;
    case WM_KILLFOCUS:
        if (IsChild(list_, reinterpret_cast<HWND>(wParam))) {
            return;
        }
        Unselect();
        Watch(false);
        if (!isDeciding_ && IsWalked()) {
            isDeciding_ = true;
            PostFromChild(control_.window, CHOICE, LIST_CHOSEN, 1);
        }
        return;
    case WM_WINDOWPOSCHANGED:
        isSized_ = isSized_ && (reinterpret_cast<const WINDOWPOS*>(lParam)->flags & SWP_NOSIZE) != 0;
        return;
    case WM_PAINT:
        if (!IsEditable() && IsMarked()) {
            const HDC dc = GetDC(list_);
            PaintFace(dc);
            ReleaseDC(list_, dc);
        }
        return;
    case WM_PRINTCLIENT:
        if (!IsEditable() && IsMarked()) {
            PaintFace(reinterpret_cast<HDC>(wParam));
        }
        return;
    default:
        return;
    }
}

// Typing

bool ListField::TakeTyped(const std::string& text) {
    owner_.TakeChosen(ValueOfCaption(text));
    return true;
}

LRESULT ListField::HandleTyping(const ChildMessage& of) {
    // The control keeps the focus until the field has asked whether it was typed into.
    if (FieldMargin::IsPainting(of.message)) {
        return margin_.Paint(of.message, of.wParam, [&] { return HandleAsPart(control_, of).value_or(0); });
    }
    if (const auto answer = of.message == WM_KILLFOCUS ? std::nullopt : HandleAsPart(control_, of)) {
        return *answer;
    }
    const bool isEnding = of.message == WM_KEYDOWN && (of.wParam == VK_RETURN || of.wParam == VK_ESCAPE);
    if (isEnding && !IsDropped() && !field_.IsEdited() && HandleKey(of.wParam)) {
        return 0;
    }
    if (isEnding && IsDropped()) {
        System(CB_SHOWDROPDOWN, FALSE);
        Watch(of.wParam == VK_RETURN);
        return 0;
    }
    LRESULT result = 0;
    const auto answered = field_.Handle(of.message, of.wParam, of.lParam);
    if (answered) {
        result = *answered;
    } else {
        result = owner_.TypingDoes(of.message, of.wParam, of.lParam);
        field_.Handled(of.message);
    }
    if (of.message == WM_KEYDOWN || of.message == WM_SYSKEYDOWN || of.message == WM_KILLFOCUS) {
        Handled(of.message, of.wParam, of.lParam);
    }
    return result;
}

// Drawing

HBRUSH ListField::Colours(HDC dc) {
    return colours_.Answer(dc, TextColour(), Ground());
}

std::string ListField::ClosedText() const {
    const auto line = static_cast<std::size_t>(System(CB_GETCURSEL));
    return line < order_.size() ? std::string(items_.Caption(order_[line])) : ShownText();
}

// All of the closed list but what is typed into.
std::optional<LRESULT> ListField::PaintDark(UINT message, WPARAM wParam) const {
    if (!control_.IsDark()) {
        return std::nullopt;
    }
    const bool isInside = list_ != control_.window;
    const auto draw = [&](HDC target) {
        RECT area{};
        GetClientRect(list_, &area);
        const cOffScreen buffer(target, area.right, area.bottom);
        const int sign = !IsEditable() && IsMarked() ? a_GetNotEqualSign()->Width() + MARGIN : 0;
        DrawDarkList(buffer.Dc(), area, IsEditable() ? "" : ClosedText(), control_.font.Get(),
                     {.isEnabled = IsWindowEnabled(list_) != FALSE, .isDown = IsDropped()},
                     {Ground(), TextColour(), sign});
        if (sign > 0) {
            a_GetNotEqualSign()->Draw(buffer.Dc(), MARGIN, (area.bottom - a_GetNotEqualSign()->Height()) / 2);
        }
        if (!isInside) {
            a_DrawSelection(&control_, buffer.Dc());
        }
        buffer.Show();
    };
    switch (message) {
    case WM_PAINT: {
        PAINTSTRUCT paint;
        if (const HDC dc = BeginPaint(list_, &paint); dc != nullptr) {
            if (IsEditable()) {
                RECT field{};
                GetWindowRect(edit_, &field);
                MapWindowPoints(nullptr, list_, reinterpret_cast<POINT*>(&field), 2);
                ExcludeClipRect(dc, field.left, field.top, field.right, field.bottom);
            }
            draw(dc);
            EndPaint(list_, &paint);
        }
        if (isInside && control_.mode != 0) {
            DrawSelectionOver(control_, list_);
        }
        return 0;
    }
    case WM_PRINTCLIENT:
        draw(reinterpret_cast<HDC>(wParam));
        return 0;
    case WM_ERASEBKGND:
        return 1;
    default:
        return std::nullopt;
    }
}

// What the system leaves empty, or where the mark has to stand beside it.
void ListField::PaintFace(HDC dc) const {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    if (!GetComboBoxInfo(list_, &info)) {
        return;
    }
    const bool isFocused = control_.HasFocus() && !IsDropped();
    RECT face = info.rcItem;
    SetDCBrushColor(dc, isFocused ? GetSysColor(COLOR_HIGHLIGHT) : Ground());
    FillRect(dc, &face, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    const OSMIRBitmap& sign = *a_GetNotEqualSign();
    sign.Draw(dc, face.left + 1, (face.top + face.bottom - sign.Height()) / 2);
    face.left += sign.Width() + MARGIN;
    const Selected font(dc, control_.font.Get());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, isFocused ? GetSysColor(COLOR_HIGHLIGHTTEXT) : TextColour());
    DrawTextA(dc, ClosedText().c_str(), -1, &face,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}
