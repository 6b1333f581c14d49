// BEDIT: an edit field for a text or a number that follows what the control is bound to and sends what is
// typed. Enter, and leaving the field, take the text; Escape puts back the value. It stands on the system's
// edit control. Interval in milliseconds, geometry in pixels.

#include "Controls/dialog/ParameterDialog.h"
#include "Controls/families/TextValue.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "base/Gdi.h"

#include <algorithm>
#include <olectl.h>

namespace {

constexpr int MARGIN = 1; // at the left and right end of the text
constexpr int CARET = 1;  // its width, behind the text
constexpr int UNKNOWN = -1;
constexpr WPARAM SELECT_ALL = 0x01; // the character of Ctrl+A

} // namespace

class EDITPROPERTIES : public TEXTPROPERTIES {
public:
    const KEYWORDROW* GetHostinfoTable() override;
    void SetDefaults() override;
    void Poll() override;
    std::string Title() const override { return FieldText(); }
    void TextChanged() override;
    void LookChanged() override;
    float Limited(float number) const override;
    bool OffersApply() const override { return true; }
    void Apply() override { Send(); }

    // Somebody has typed into the field and not ended it yet.
    bool IsEdited() const { return HasFocus() && SendMessageA(window, EM_GETMODIFY, 0, 0) != 0; }
    // Takes what was typed and sends it, or puts back the value when it cannot be read.
    void TakeTyped();
    void Restore();
    // The answer to the question for the colours of the field.
    HBRUSH Colours(HDC dc);
    // Moves the text to its place. The system's control keeps the alignment that it was created with, so the
    // text stands on the left of a field whose left margin is as wide as needed.
    void Align();
    // Gives the system's control room to write in before it changes the text, or it would scroll.
    void MakeRoom();
    void MarginLost() { leftMargin_ = UNKNOWN; }
    bool IsMarked() const { return marked_; } // with the not-equal sign
    void DrawMark(HDC dc) const;

    std::optional<logic::Limits> limits;
    int readOnly = 0;
    bool isSettingText = false; // the control itself, not somebody outside

    void ReadOnlyChanged();

private:
    std::string FieldText() const;
    int LeastMargin() const;
    void SetLeftMargin(int margin);

    std::string displayed_; // what the field was last set to
    bool marked_ = false;   // there is room for the not-equal sign
    int leftMargin_ = UNKNOWN;
    Brush ground_;
    COLORREF groundColour_ = 0; // that ground_ was made with
};

// Keyword handlers

namespace {

EDITPROPERTIES& Edit(HOSTINFO* object) {
    return *static_cast<EDITPROPERTIES*>(object);
}

// "minimum,maximum", empty for none.
int LimitsKeyword(VALUERECORD* record, HOSTINFO* object) {
    EDITPROPERTIES& edit = Edit(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, edit.limits ? logic::LimitsText(*edit.limits).c_str() : "");
    }
    const auto text = TextToSet(record);
    const auto limits = text ? logic::ParseLimits(*text) : std::nullopt;
    if (!text || (!limits && !text->empty())) {
        return 0;
    }
    edit.limits = limits;
    return 1;
}

constexpr KEYWORDROW KEYWORDS[] = {
    {" ", TextValueKeyword, 0},
    {"alignment", AlignmentKeyword, KEYWORD_SAVED},
    {"backgroundcolor", GroundColourKeyword, KEYWORD_SAVED},
    {"caption", TextCaptionKeyword, KEYWORD_SAVED},
    {"connection", ConnectionKeyword, KEYWORD_BINDINGS},
    {"datatype", DatatypeKeyword, KEYWORD_SAVED},
    {"fmt", TextFormatKeyword, KEYWORD_SAVED},
    {"font", FontKeyword<&EDITPROPERTIES::font>, KEYWORD_SAVED},
    {"function", FunctionKeyword, KEYWORD_SAVED | KEYWORD_BINDINGS},
    {"interval", IntervalKeyword, KEYWORD_SAVED},
    {"layer", LayerKeyword, 0},
    {"level", LayerKeyword, 0},
    {"limits", LimitsKeyword, KEYWORD_SAVED},
    {"readonly", Notifying<IntegerKeyword<&EDITPROPERTIES::readOnly, 0, 1>, &EDITPROPERTIES::ReadOnlyChanged>,
     KEYWORD_SAVED},
    {"textcolor", TextColourKeyword, KEYWORD_SAVED},
    {"value", TextValueKeyword, 0},
    {},
};
static_assert(KeywordsAreUnique(KEYWORDS));

} // namespace

const KEYWORDROW* EDITPROPERTIES::GetHostinfoTable() {
    return KEYWORDS;
}

void EDITPROPERTIES::SetDefaults() {
    readOnly = (GetWindowLongA(window, GWL_STYLE) & ES_READONLY) != 0 ? 1 : 0;
    SendMessageA(window, EM_LIMITTEXT, TEXT_SIZE - 1, 0);
    SendMessageA(window, EM_SETMODIFY, FALSE, 0); // nobody has typed the title
    displayed_ = FieldText();
    TEXTPROPERTIES::SetDefaults();
}

void EDITPROPERTIES::ReadOnlyChanged() {
    SendMessageA(window, EM_SETREADONLY, static_cast<WPARAM>(readOnly), 0);
    LookChanged();
}

// Value

float EDITPROPERTIES::Limited(float number) const {
    return limits ? logic::Clamp(number, limits->minimum, limits->maximum) : number;
}

void EDITPROPERTIES::Poll() {
    TEXTPROPERTIES::Poll();
    if (notEqual != marked_) {
        marked_ = notEqual;
        Align();
        LookChanged();
    }
}

void EDITPROPERTIES::TakeTyped() {
    const bool taken = shown.TakeTyped(FieldText(), limits);
    Restore();
    if (taken) {
        KeepCaption();
        Send();
    }
}

void EDITPROPERTIES::Restore() {
    SendMessageA(window, EM_SETMODIFY, FALSE, 0);
    displayed_.clear(); // the field holds what was typed
    TextChanged();
}

// The field

std::string EDITPROPERTIES::FieldText() const {
    char text[TEXT_SIZE] = "";
    GetWindowTextA(window, text, sizeof text);
    return text;
}

void EDITPROPERTIES::TextChanged() {
    // A field that the mouse is just selecting in keeps its text as well.
    if (IsEdited() || GetCapture() == window ||
        (shown.Text() == displayed_ && GetWindowTextLengthA(window) == static_cast<int>(displayed_.size()))) {
        return;
    }
    displayed_ = shown.Text();
    DWORD start = 0;
    DWORD end = 0;
    SendMessageA(window, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    const bool wasAllSelected = end > start && static_cast<int>(end - start) == GetWindowTextLengthA(window);
    isSettingText = true;
    SetWindowTextA(window, displayed_.c_str());
    isSettingText = false;
    if (HasFocus()) {
        SendMessageA(window, EM_SETSEL, wasAllSelected ? 0 : start,
                     wasAllSelected ? -1 : static_cast<LPARAM>(end));
    }
}

void EDITPROPERTIES::LookChanged() {
    Align();
    if (IsWindowVisible(window)) {
        InvalidateRect(window, nullptr, TRUE);
    }
}

HBRUSH EDITPROPERTIES::Colours(HDC dc) {
    const COLORREF ground = backgroundColor.value_or(GetSysColor(COLOR_WINDOW));
    if (ground_ == nullptr || groundColour_ != ground) {
        ground_.reset(CreateSolidBrush(ground));
        groundColour_ = ground;
    }
    SetTextColor(dc, textColor.value_or(ReadableOn(ground)));
    SetBkColor(dc, ground);
    return ground_.get();
}

int EDITPROPERTIES::LeastMargin() const {
    return MARGIN + (marked_ ? a_GetNotEqualSign()->Width() + MARGIN : 0);
}

void EDITPROPERTIES::SetLeftMargin(int margin) {
    leftMargin_ = margin;
    SendMessageA(window, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(margin, MARGIN));
}

void EDITPROPERTIES::MakeRoom() {
    if (leftMargin_ != LeastMargin()) {
        SetLeftMargin(LeastMargin());
    }
}

void EDITPROPERTIES::Align() {
    if (leftMargin_ == UNKNOWN) {
        MakeRoom();
    }
    int margin = LeastMargin();
    if (alignment != logic::Alignment::Left) {
        const std::string text = FieldText();
        SIZE extent{};
        TEXTMETRICA metrics{};
        const HDC dc = GetDC(window);
        {
            const Selected selected(dc, reinterpret_cast<HFONT>(SendMessageA(window, WM_GETFONT, 0, 0)));
            GetTextExtentPoint32A(dc, text.c_str(), static_cast<int>(text.size()), &extent);
            GetTextMetricsA(dc, &metrics);
        }
        ReleaseDC(window, dc);
        RECT inner{}; // what the system's control writes in; it keeps some distance from its border
        SendMessageA(window, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&inner));
        const int room = inner.right - (inner.left - leftMargin_) - margin;
        // The system's control wants room for a character, or it writes beyond its right end.
        const int width = std::max(extent.cx, metrics.tmAveCharWidth) + CARET;
        margin += logic::AlignedStart(alignment, width, room);
    }
    if (margin == leftMargin_) {
        return;
    }
    SetLeftMargin(margin);
    if (HasFocus()) { // the caret moves along
        DWORD start = 0;
        DWORD end = 0;
        SendMessageA(window, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        SendMessageA(window, EM_SETSEL, start, static_cast<LPARAM>(end));
    }
}

void EDITPROPERTIES::DrawMark(HDC dc) const {
    RECT client{};
    GetClientRect(window, &client);
    const OSMIRBitmap& sign = *a_GetNotEqualSign();
    sign.Draw(dc, MARGIN, (client.bottom - sign.Height()) / 2);
}

// Input

namespace {

// Whether the field hands a key to its control even in a dialog, which closes at Escape otherwise.
bool WantsKey(const EDITPROPERTIES& edit, const MSG* key) {
    return key != nullptr && (key->message == WM_KEYDOWN || key->message == WM_CHAR) &&
           (key->wParam == VK_RETURN || (key->wParam == VK_ESCAPE && edit.IsEdited()));
}

// Messages that give the field another text, font or size.
bool MovesText(UINT message) {
    switch (message) {
    case WM_CHAR:
    case WM_KEYDOWN:
    case WM_IME_CHAR:
    case WM_SETTEXT:
    case WM_SETFONT:
    case WM_SIZE:
    case WM_PASTE:
    case WM_CUT:
    case WM_CLEAR:
    case WM_UNDO:
    case EM_UNDO:
    case EM_REPLACESEL:
        return true;
    default:
        return false;
    }
}

void SelectAll(HWND window) {
    SendMessageA(window, EM_SETSEL, 0, -1);
}

// Whether it was a key of the control. Its character is kept from the field, which would beep.
bool HandleKey(EDITPROPERTIES& edit, UINT message, WPARAM key) {
    const HWND window = edit.window;
    if (key == VK_RETURN) {
        if (message == WM_KEYDOWN) {
            if (edit.IsEdited()) {
                edit.TakeTyped();
            }
            SelectAll(window); // the next value is typed over it
        }
        return true;
    }
    if (key == VK_ESCAPE) {
        if (message == WM_KEYDOWN && edit.IsEdited()) {
            edit.Restore();
            SelectAll(window);
        }
        return true;
    }
    if (message == WM_CHAR && key == SELECT_ALL) {
        SelectAll(window);
        return true;
    }
    return false;
}

// The focus goes: what was typed is taken.
LRESULT Leave(EDITPROPERTIES& edit, WPARAM wParam, LPARAM lParam) {
    const HWND window = edit.window;
    const bool wasEdited = edit.IsEdited();
    const LRESULT result = CommonProc(window, WM_KILLFOCUS, wParam, lParam);
    if (wasEdited) {
        edit.TakeTyped();
    }
    return result;
}

LRESULT Print(const EDITPROPERTIES& edit, WPARAM wParam, LPARAM lParam) {
    const HDC dc = reinterpret_cast<HDC>(wParam);
    const int before = SaveDC(dc);
    const LRESULT result = CommonProc(edit.window, WM_PRINTCLIENT, wParam, lParam);
    RestoreDC(dc, before); // it may have been clipped to the text
    if (edit.IsMarked()) {
        edit.DrawMark(dc);
    }
    return result;
}

LRESULT CALLBACK EditProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& edit = *PropertiesOf<EDITPROPERTIES>(window);
    const bool movesText = MovesText(message);
    switch (message) {
    case OCM__BASE + WM_CTLCOLOREDIT:
    case OCM__BASE + WM_CTLCOLORSTATIC: // while it is read-only
        return reinterpret_cast<LRESULT>(edit.Colours(reinterpret_cast<HDC>(wParam)));
    case WM_GETDLGCODE: {
        const LRESULT code = CommonProc(window, message, wParam, lParam);
        return WantsKey(edit, reinterpret_cast<const MSG*>(lParam)) ? code | DLGC_WANTMESSAGE : code;
    }
    case WM_KEYDOWN:
    case WM_CHAR:
        if (HandleKey(edit, message, wParam)) {
            return 0;
        }
        break;
    case WM_KILLFOCUS:
        return Leave(edit, wParam, lParam);
    case WM_SETTEXT:
        if (!edit.isSettingText && lParam != 0) {
            edit.SetCaption(reinterpret_cast<const char*>(lParam));
            return TRUE;
        }
        break;
    case WM_CONTEXTMENU:
        if (edit.mode != 0 || lParam != -1) { // the right button belongs to the panel, the key to the field
            return 0;
        }
        break;
    default:
        break;
    }
    if (movesText) {
        edit.MakeRoom();
    }
    if (message == WM_PRINTCLIENT) {
        return Print(edit, wParam, lParam);
    }
    const LRESULT result = CommonProc(window, message, wParam, lParam);
    if (message == WM_SETFONT) {
        edit.MarginLost(); // the system's control makes it fit the font
    }
    if (movesText) {
        edit.Align();
    } else if (message == WM_CAPTURECHANGED) {
        edit.TextChanged(); // it may have waited for this
    } else if (message == WM_PAINT && edit.IsMarked()) {
        const HDC dc = GetDC(window);
        edit.DrawMark(dc);
        ReleaseDC(window, dc);
    }
    return result;
}

// One line that scrolls, aligned by the control itself.
DWORD WindowStyle(DWORD asked) {
    return (asked & ~static_cast<DWORD>(ES_MULTILINE | ES_CENTER | ES_RIGHT)) | ES_AUTOHSCROLL;
}

} // namespace

// Parameter dialog and registration

namespace {

constexpr DialogEdit EDITS[] = {
    {IDC_CAPTION, "Caption", FieldKind::Text, "caption"},
    {IDC_FONT, "Font", FieldKind::Font, "font", 0, 0, IDC_CHOOSE_FONT},
    {IDC_TEXT_COLOUR, "Text colour", FieldKind::Colour, "textcolor", 0, 0, IDC_CHOOSE_TEXT_COLOUR},
    {IDC_BACKGROUND, "Background", FieldKind::Colour, "backgroundcolor", 0, 0, IDC_CHOOSE_BACKGROUND},
    {IDC_FORMAT, "Number format", FieldKind::Text, "fmt"},
    {IDC_INTERVAL, "Polling interval", FieldKind::Integer, "interval"},
    {IDC_LIMITS, "Limits", FieldKind::Text, "limits"},
};
constexpr DialogChoice CHOICES[] = {
    {IDC_ALIGNMENT, "alignment", "left,center,right"},
    {IDC_DATATYPE, "datatype", "string,f,d"},
    {IDC_READ_ONLY, "readonly", "0,1"},
};
constexpr ParameterDialog DIALOG{.resource = IDD_EDIT, .edits = EDITS, .choices = CHOICES};

} // namespace

extern const ControlImplementation editControl{.create = CreateProperties<EDITPROPERTIES>,
                                               .procedure = EditProc,
                                               .fields = &DIALOG,
                                               .windowStyle = WindowStyle};
