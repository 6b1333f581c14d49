// BEDIT: an edit field for a text or a number that follows what the control is bound to and sends what is
// typed. Enter, and leaving the field, take the text; Escape puts back the value. It stands on the system's
// edit control. Interval in milliseconds, geometry in pixels.

#include "Controls/drawing/DarkParts.h"
#include "Controls/families/EditField.h"
#include "Controls/families/FieldMargin.h"
#include "Controls/families/TextValue.h"
#include "logic/text/Numbers.h"
#include "logic/text/Ranges.h"

#include <olectl.h>

class EDITPROPERTIES : public TEXTPROPERTIES, private EditField::Owner {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override;
    void Poll() override;
    std::string Title() const override { return field.Text(); }
    void TextChanged() override { field.Show(); }
    void LookChanged() override;
    float Limited(float number) const override;
    bool OffersApply() const override { return true; }
    void Apply() override { Send(); }

    // The answer to the question for the colours of the field.
    HBRUSH Colours(HDC dc);
    std::string Limits() const { return limits ? logic::LimitsText(*limits) : ""; }
    bool SetLimits(const std::string& text);
    void ReadOnlyChanged();

    EditField field{*this, window, *this};
    FieldMargin margin{window};
    std::optional<logic::Limits> limits;
    int readOnly = 0;

private:
    std::string TextOfValue() const override { return shown.Text(); }
    bool TakeTyped(const std::string& text) override { return shown.TakeTyped(text, limits); }
    void TypedTaken() override;
    bool TextGiven(const std::string& text) override { return SetCaption(text); }
    LRESULT FieldDoes(UINT message, WPARAM wParam, LPARAM lParam) override {
        return CommonProc(window, message, wParam, lParam);
    }

    FieldColours colours_;
};

// Keywords

namespace {

constexpr Keyword VALUE = TEXT_VALUE_KEYWORD.Says(
    "Text or number. Set, it is limited, shown and, unless it is the old one, sent to "
    "everything the control is bound to.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    ALIGNMENT_KEYWORD,
    GROUND_COLOUR_KEYWORD.Says("Colour of the field, `0x00bbggrr`; empty for the system's."),
    CAPTION_KEYWORD.Says("The text in the field while it is bound to nothing, and until the first poll; at "
                         "first the title it is created with. Set, nothing is sent."),
    CONNECTION_KEYWORD,
    DATATYPE_KEYWORD,
    TEXT_FORMAT_KEYWORD.Says("`printf` format of a number, with one float conversion, also for `d`; empty "
                             "for the plain number. What stands around the number may be typed with it."),
    TEXT_FONT_KEYWORD,
    FUNCTION_KEYWORD,
    TEXT_INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Property<&EDITPROPERTIES::Limits, &EDITPROPERTIES::SetLimits>("limits", KeywordKind::Numbers)
        .Saved()
        .MayBeEmpty()
        .Label("Limits (minimum,maximum)")
        .Items(IDC_LIMITS)
        .Says("Smallest and largest number that can be set, joined by `,`; empty for none."),
    Integer<&EDITPROPERTIES::readOnly, 0, 1, &EDITPROPERTIES::ReadOnlyChanged>("readonly")
        .Saved()
        .OneOf("0,1")
        .Label("Read-only")
        .Items(IDC_READ_ONLY)
        .Says("1: it shows its value and cannot be typed into."),
    TEXT_COLOUR_KEYWORD,
    VALUE,
});

} // namespace

KeywordList EDITPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

void EDITPROPERTIES::SetDefaults() {
    readOnly = (GetWindowLongA(window, GWL_STYLE) & ES_READONLY) != 0 ? 1 : 0;
    field.Begin();
    TEXTPROPERTIES::SetDefaults();
}

bool EDITPROPERTIES::SetLimits(const std::string& text) {
    const auto read = logic::ParseLimits(text);
    if (!read && !text.empty()) {
        return false;
    }
    limits = read;
    return true;
}

void EDITPROPERTIES::ReadOnlyChanged() {
    SendMessageA(window, EM_SETREADONLY, static_cast<WPARAM>(readOnly), 0);
    LookChanged();
}

// Value

float EDITPROPERTIES::Limited(float number) const {
    return limits ? logic::Clamp(number, limits->minimum, limits->maximum) : number;
}

void EDITPROPERTIES::TypedTaken() {
    KeepCaption();
    Send();
}

void EDITPROPERTIES::Poll() {
    TEXTPROPERTIES::Poll();
    if (notEqual != margin.IsMarked()) {
        margin.SetMarked(notEqual);
        LookChanged();
    }
}

// Drawing

void EDITPROPERTIES::LookChanged() {
    margin.Align(alignment);
    if (IsWindowVisible(window)) {
        InvalidateRect(window, nullptr, TRUE);
    }
}

HBRUSH EDITPROPERTIES::Colours(HDC dc) {
    return colours_.Answer(dc, FieldInk(), FieldGround());
}

namespace {

LRESULT CALLBACK EditProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& edit = *PropertiesOf<EDITPROPERTIES>(window);
    if (message == OCM__BASE + WM_CTLCOLOREDIT ||
        message == OCM__BASE + WM_CTLCOLORSTATIC) { // the latter while it is read-only
        return reinterpret_cast<LRESULT>(edit.Colours(reinterpret_cast<HDC>(wParam)));
    }
    if (message == WM_NCPAINT && edit.IsDark()) {
        DrawDarkFrame(window, false, {});
        return 0;
    }
    if (const auto answer = edit.field.Handle(message, wParam, lParam)) {
        return *answer;
    }
    const bool isMoved = FieldMargin::IsMovedBy(message);
    if (isMoved) {
        edit.margin.MakeRoom();
    }
    if (FieldMargin::IsPainting(message)) {
        return edit.margin.Paint(message, wParam,
                                 [&] { return CommonProc(window, message, wParam, lParam); });
    }
    const LRESULT result = CommonProc(window, message, wParam, lParam);
    if (isMoved) {
        edit.margin.Handled(message, edit.alignment);
    }
    edit.field.Handled(message);
    return result;
}

// One line that scrolls, aligned by the control itself.
DWORD WindowStyle(DWORD asked) {
    return (asked & ~static_cast<DWORD>(ES_MULTILINE | ES_CENTER | ES_RIGHT)) | ES_AUTOHSCROLL;
}

} // namespace

extern const ControlImplementation editControl{
    .create = CreateProperties<EDITPROPERTIES>,
    .procedure = EditProc,
    .purpose = "A field for a text or a number. Enter, and leaving the field, take and send what was typed; "
               "Escape puts the value back.",
    .dialog = LAID_OUT,
    .windowStyle = WindowStyle};
