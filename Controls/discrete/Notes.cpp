// BEDIT2: a field of several lines: notes to the operator, or a log that messages are appended to. It follows
// what the control is bound to and sends what is typed. Ctrl+Enter, and leaving the field, take the text;
// Escape puts back the value. It stands on the system's edit control. In values and property text a line end
// is `\n` and a backslash `\\`. Interval in milliseconds.

#include "Controls/families/EditField.h"
#include "Controls/families/FieldMargin.h"
#include "Controls/families/TextLook.h"
#include "base/Gdi.h"
#include "logic/text/Lines.h"

#include <cstdio>
#include <olectl.h>

namespace {

constexpr std::size_t LONGEST = TEXT_SIZE - 1; // of what is saved and sent

} // namespace

class EDIT2PROPERTIES : public TEXTLOOKPROPERTIES, private EditField::Owner {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override;
    DWORD StyleToSave(DWORD style) const override;
    void Poll() override;
    void ShowValueAnew() override { field.Show(); }
    void LookChanged() override;
    bool OffersApply() const override { return true; }
    void Apply() override { Send(); }

    int ValueKeyword(VALUERECORD& record);
    std::string Caption() const { return logic::EscapeLines(caption); }
    bool SetCaption(const std::string& escaped);
    std::string Nothing() const { return ""; }
    bool Append(const std::string& escaped);
    void ReadOnlyChanged();
    void MaximumChanged();

    // The answer to the question for the colours of the field.
    HBRUSH Colours(HDC dc);

    std::string text;    // lines end with a line feed
    std::string caption; // the text while it is bound to nothing; a panel file holds it
    EditField field{*this, window, *this};
    FieldMargin margin{window};
    int readOnly = 0;
    int maximum = 4000; // characters
    int isWrapped = 1;  // as the alignment: of the panel when it is opened the next time

private:
    std::string TextOfValue() const override { return logic::WithReturns(text); }
    bool HasLines() const override { return true; }
    bool TakeTyped(const std::string& typed) override;
    void TypedTaken() override { Send(); }
    bool TextGiven(const std::string& given) override;
    LRESULT FieldDoes(UINT message, WPARAM wParam, LPARAM lParam) override {
        return CommonProc(window, message, wParam, lParam);
    }

    void Take(std::string_view next);
    void Show(std::size_t dropped, bool isFollowing);
    bool IsAtEnd() const;
    void Send();

    FieldColours colours_;
};

// Keywords

namespace {

constexpr Keyword VALUE =
    Handled<&EDIT2PROPERTIES::ValueKeyword>("value", KeywordKind::Text)
        .Says("The text, with `\\n` for each line end and `\\\\` for a backslash. Set, it is shown "
              "and, unless it is the old one, sent to everything the field is bound to.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    Words<"left,center,right", &EDIT2PROPERTIES::alignment>("alignment")
        .Saved()
        .Label("Alignment (when opened again)")
        .Says("`left`, `center` or `right`. It stands in the style of the control, and acts when the panel "
              "is opened again."),
    Property<&EDIT2PROPERTIES::Nothing, &EDIT2PROPERTIES::Append>("append").Says(
        "Set, it adds a line to the text, drops the oldest ones beyond `maximum`, and scrolls down "
        "unless somebody has scrolled up. It is not sent, and reads as nothing."),
    GROUND_COLOUR_KEYWORD.Says("Colour of the field, `0x00bbggrr`; empty for the system's."),
    Property<&EDIT2PROPERTIES::Caption, &EDIT2PROPERTIES::SetCaption>("caption").Saved().Label("Text").Says(
        "The text in the field while it is bound to nothing, and until the first poll; at first the title it "
        "is "
        "created with. Written as `value`. Set, nothing is sent."),
    CONNECTION_KEYWORD,
    TEXT_FONT_KEYWORD,
    FUNCTION_KEYWORD,
    TEXT_INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Limited<&EDIT2PROPERTIES::maximum, 1, 4000, &EDIT2PROPERTIES::MaximumChanged>("maximum")
        .Saved()
        .Label("Characters at most")
        .Says("How many characters can be typed, and a log keeps; 1 to 4000, a line end is two."),
    Integer<&EDIT2PROPERTIES::readOnly, 0, 1, &EDIT2PROPERTIES::ReadOnlyChanged>("readonly")
        .Saved()
        .OneOf("0,1")
        .Label("Read-only")
        .Items(IDC_READ_ONLY)
        .Says("1: it shows its text and cannot be typed into."),
    TEXT_COLOUR_KEYWORD,
    VALUE,
    Integer<&EDIT2PROPERTIES::isWrapped, 0, 1>("wrap")
        .Saved()
        .OneOf("0,1")
        .Label("Wrapped (when opened again)")
        .Says(
            "1: long lines go on below, 0: they are scrolled to. It stands in the style of the control, and "
            "acts when the panel is opened again."),
});

} // namespace

KeywordList EDIT2PROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

void EDIT2PROPERTIES::SetDefaults() {
    const auto style = static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE));
    readOnly = (style & ES_READONLY) != 0 ? 1 : 0;
    isWrapped = (style & ES_AUTOHSCROLL) != 0 ? 0 : 1;
    alignment = (style & ES_CENTER) != 0  ? logic::Alignment::Center
                : (style & ES_RIGHT) != 0 ? logic::Alignment::Right
                                          : logic::Alignment::Left;
    interval = 1000;
    FontChanged();
    field.Begin();
    text = caption = logic::WithoutReturns(field.Text());
    MaximumChanged();
}

DWORD EDIT2PROPERTIES::StyleToSave(DWORD style) const {
    style &= ~static_cast<DWORD>(ES_CENTER | ES_RIGHT | ES_AUTOHSCROLL | WS_HSCROLL);
    return style |
           (alignment == logic::Alignment::Center  ? ES_CENTER
            : alignment == logic::Alignment::Right ? ES_RIGHT
                                                   : ES_LEFT) |
           (isWrapped != 0 ? 0 : ES_AUTOHSCROLL | WS_HSCROLL);
}

void EDIT2PROPERTIES::MaximumChanged() {
    SendMessageA(window, EM_LIMITTEXT, static_cast<WPARAM>(maximum), 0);
}

void EDIT2PROPERTIES::ReadOnlyChanged() {
    SendMessageA(window, EM_SETREADONLY, static_cast<WPARAM>(readOnly), 0);
    LookChanged();
}

// Text

// Whether its last line is to be seen.
bool EDIT2PROPERTIES::IsAtEnd() const {
    RECT area{};
    SendMessageA(window, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&area));
    const LRESULT shown = std::max<LONG>((area.bottom - area.top) / std::max(a_FontHeight(font.Get()), 1), 1);
    return SendMessageA(window, EM_GETFIRSTVISIBLELINE, 0, 0) + shown >=
           SendMessageA(window, EM_GETLINECOUNT, 0, 0);
}

// Shows the text, in which as many characters of the system's were dropped at the front. What was to be seen
// stays where it is, or the new end is shown.
void EDIT2PROPERTIES::Show(std::size_t dropped, bool isFollowing) {
    const bool toEnd = isFollowing && IsAtEnd();
    const LRESULT line = SendMessageA(window, EM_GETFIRSTVISIBLELINE, 0, 0);
    const auto first = static_cast<std::size_t>(
        std::max<LRESULT>(SendMessageA(window, EM_LINEINDEX, static_cast<WPARAM>(line), 0), 0));
    field.Show();
    const LRESULT target =
        toEnd ? SendMessageA(window, EM_GETLINECOUNT, 0, 0)
              : SendMessageA(window, EM_LINEFROMCHAR, first > dropped ? first - dropped : 0, 0);
    SendMessageA(window, EM_LINESCROLL, 0, target - SendMessageA(window, EM_GETFIRSTVISIBLELINE, 0, 0));
}

void EDIT2PROPERTIES::Take(std::string_view next) {
    text = logic::FrontThatFits(next, LONGEST);
    if (requests.empty()) { // else it would be another one in each file that is saved
        caption = text;
    }
}

bool EDIT2PROPERTIES::SetCaption(const std::string& escaped) {
    text = caption = logic::FrontThatFits(logic::UnescapeLines(escaped), LONGEST);
    Show(0, false);
    return true;
}

bool EDIT2PROPERTIES::TextGiven(const std::string& given) {
    Take(logic::UnescapeLines(logic::EscapeLines(logic::WithoutReturns(given))));
    Show(0, false);
    return true;
}

bool EDIT2PROPERTIES::Append(const std::string& escaped) {
    const std::string line = logic::UnescapeLines(escaped);
    const std::string all = text.empty() ? line : text + "\n" + line;
    const std::string_view kept = logic::NewestLines(all, static_cast<std::size_t>(maximum), LONGEST);
    const std::size_t dropped = logic::WithReturns(all).size() - logic::WithReturns(kept).size();
    Take(kept);
    Show(dropped, true);
    return true;
}

bool EDIT2PROPERTIES::TakeTyped(const std::string& typed) {
    Take(logic::UnescapeLines(logic::EscapeLines(logic::WithoutReturns(typed))));
    return true;
}

void EDIT2PROPERTIES::Send() {
    std::string sent = logic::EscapeLines(text);
    a_SendRequest(requests, COMMAND_SET, DATATYPE_TEXT, sent.data(), nullptr);
}

int EDIT2PROPERTIES::ValueKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return a_AnswerText(&record, logic::EscapeLines(text).c_str());
    }
    std::string escaped;
    if (record.command != COMMAND_SET || a_ReadText(&record, &escaped) == 0) {
        return 0;
    }
    const std::string before = text;
    Take(logic::UnescapeLines(escaped));
    if (text != before) {
        Show(0, false);
        Send();
    }
    return 1;
}

void EDIT2PROPERTIES::Poll() {
    char polled[TEXT_SIZE];
    std::snprintf(polled, sizeof polled, "%s", logic::EscapeLines(text).c_str());
    const int result = Ask(requests, DATATYPE_TEXT, polled);
    if (result == REQUEST_DELIVERED) {
        Take(logic::UnescapeLines(polled));
        Show(0, true);
    }
    Answered(requests, DATATYPE_TEXT, result);
    ShowPollResult(result);
    if (notEqual != margin.IsMarked()) {
        margin.SetMarked(notEqual);
        LookChanged();
    }
}

// Drawing

void EDIT2PROPERTIES::LookChanged() {
    margin.Align(logic::Alignment::Left); // makes room for the sign
    if (IsWindowVisible(window)) {
        InvalidateRect(window, nullptr, TRUE);
    }
}

HBRUSH EDIT2PROPERTIES::Colours(HDC dc) {
    return colours_.Answer(dc, FieldInk(), FieldGround());
}

namespace {

LRESULT CALLBACK NotesProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& notes = *PropertiesOf<EDIT2PROPERTIES>(window);
    if (message == OCM__BASE + WM_CTLCOLOREDIT ||
        message == OCM__BASE + WM_CTLCOLORSTATIC) { // the latter while it is read-only
        return reinterpret_cast<LRESULT>(notes.Colours(reinterpret_cast<HDC>(wParam)));
    }
    if (const auto answer = notes.field.Handle(message, wParam, lParam)) {
        return *answer;
    }
    if (FieldMargin::IsPainting(message)) {
        return notes.margin.Paint(message, wParam,
                                  [&] { return CommonProc(window, message, wParam, lParam); });
    }
    const LRESULT result = CommonProc(window, message, wParam, lParam);
    if (message == WM_SETFONT) {
        notes.margin.Handled(message, logic::Alignment::Left);
    }
    notes.field.Handled(message);
    return result;
}

// Several lines with a scroll bar.
DWORD WindowStyle(DWORD asked) {
    const DWORD style = (asked & ~static_cast<DWORD>(WS_HSCROLL)) | ES_MULTILINE | ES_AUTOVSCROLL |
                        ES_WANTRETURN | WS_VSCROLL;
    return (style & ES_AUTOHSCROLL) != 0 ? style | WS_HSCROLL : style;
}

} // namespace

extern const ControlImplementation notesControl{
    .create = CreateProperties<EDIT2PROPERTIES>,
    .procedure = NotesProc,
    .purpose = "A field of several lines: notes to the operator, or a log that messages are appended to. "
               "Ctrl+Enter, and leaving the field, take and send what was typed; Escape puts the value back.",
    .dialog = LAID_OUT,
    .windowStyle = WindowStyle};
