// BCOMBOBOX: a text out of a drop-down list, which can also come from a device. The list shows the captions
// of values; what is chosen is sent to everything the control is bound to, and polled back. It stands on the
// system's combo box. Interval in milliseconds, geometry in pixels.

#include "Controls/families/ListValue.h"

namespace {

constexpr DWORD SYSTEM_STYLES = 0xFFFF; // of a style, the bits that are the system class's own

// A list that drops down, filled and sorted by the control itself.
constexpr DWORD KindOf(bool isEditable) {
    return isEditable ? CBS_DROPDOWN | CBS_AUTOHSCROLL : CBS_DROPDOWNLIST;
}

} // namespace

class COMBOBOXPROPERTIES : public LISTPROPERTIES {
public:
    COMBOBOXPROPERTIES() : LISTPROPERTIES(window) {}
    KeywordList Keywords() const override;
    void SetDefaults() override;
    DWORD StyleToSave(DWORD style) const override;
    void LookChanged() override { list.LookChanged(); }
    void FontChanged() override;
    bool IsSorted() const override { return sort != 0; }

    void SortChanged() { Fill(); }
    void LinesChanged() { list.SetLines(lines); }

    int sort = 0;
    int lines = 12;
    int isEditable = 0; // of the panel when it is opened the next time

private:
    LRESULT ListDoes(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT TypingDoes(UINT message, WPARAM wParam, LPARAM lParam) override;

    HWND edit_ = nullptr; // the field, where it is editable
};

// Keywords

namespace {

constexpr Keyword VALUE =
    Handled<&COMBOBOXPROPERTIES::ValueKeyword>("value", KeywordKind::Text)
        .Says(
            "The value of what is chosen; of an item without one its caption. Set, it is shown, as it is "
            "where no item has it, and, unless it is the old one, sent to everything the list is bound to.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    GROUND_COLOUR_KEYWORD.Says("Colour of the list, `0x00bbggrr`; empty for the system's."),
    CONNECTION_KEYWORD,
    Integer<&COMBOBOXPROPERTIES::isEditable, 0, 1>("editable")
        .Saved()
        .OneOf("0,1")
        .Label("Editable (when opened again)")
        .Says("1: another text than those of the list can be typed. It stands in the style of the control, "
              "and acts when the panel is opened again."),
    TEXT_FONT_KEYWORD,
    FUNCTION_KEYWORD,
    TEXT_INTERVAL_KEYWORD,
    ItemsKeyword<&COMBOBOXPROPERTIES::ItemsText, &COMBOBOXPROPERTIES::SetItems>(),
    ItemsFunctionKeyword<&COMBOBOXPROPERTIES::ItemsFunction, &COMBOBOXPROPERTIES::SetItemsFunction>(),
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Limited<&COMBOBOXPROPERTIES::lines, 1, 100, &COMBOBOXPROPERTIES::LinesChanged>("lines")
        .Saved()
        .Label("Lines dropped down")
        .Says("How many lines the list has at most when it is dropped down, 1 to 100."),
    Integer<&COMBOBOXPROPERTIES::sort, 0, 1, &COMBOBOXPROPERTIES::SortChanged>("sort")
        .Saved()
        .OneOf("0,1")
        .Label("Sorted")
        .Says("1: the items are shown in the order of their captions, 0: as they are written."),
    TEXT_COLOUR_KEYWORD,
    VALUE,
});

} // namespace

KeywordList COMBOBOXPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

DWORD COMBOBOXPROPERTIES::StyleToSave(DWORD style) const {
    return (style & ~SYSTEM_STYLES) | KindOf(isEditable != 0);
}

// Window

namespace {

LRESULT HandleTyping(COMBOBOXPROPERTIES& combo, const ChildMessage& of) {
    return combo.list.HandleTyping(of);
}
using TypingChild = SystemChild<HandleTyping>;

} // namespace

void COMBOBOXPROPERTIES::SetDefaults() {
    interval = 250;
    source.Attach(*this);
    edit_ = list.Begin();
    if (edit_ != nullptr) {
        isEditable = 1;
        TypingChild::Subclass(edit_);
    }
    FontChanged();
}

// The system makes the control fit the font.
void COMBOBOXPROPERTIES::FontChanged() {
    const RECT known = rectangle;
    TEXTLOOKPROPERTIES::FontChanged();
    rectangle = known;
}

LRESULT COMBOBOXPROPERTIES::ListDoes(UINT message, WPARAM wParam, LPARAM lParam) {
    return CallWindowProcA(SystemProcedure(*controlClass), window, message, wParam, lParam);
}

LRESULT COMBOBOXPROPERTIES::TypingDoes(UINT message, WPARAM wParam, LPARAM lParam) {
    const ChildMessage of{edit_, TypingChild::system, message, wParam, lParam};
    if (message == WM_KILLFOCUS) {
        HandleAsPart(*this, of);
    }
    return of.SystemDoes();
}

namespace {

LRESULT CALLBACK ComboBoxProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& combo = *PropertiesOf<COMBOBOXPROPERTIES>(window);
    if (message == WM_COMMAND && combo.list.Commanded(wParam, lParam)) {
        return 0;
    }
    if (const auto answer = combo.list.Handle(message, wParam, lParam)) {
        return *answer;
    }
    const LRESULT result = CommonProc(window, message, wParam, lParam);
    if (PropertiesOf<COMBOBOXPROPERTIES>(window) != nullptr) {
        combo.list.Handled(message, wParam, lParam);
    }
    return result;
}

DWORD WindowStyle(DWORD asked) {
    return (asked & ~SYSTEM_STYLES) | WS_VSCROLL | KindOf((asked & CBS_DROPDOWNLIST) == CBS_DROPDOWN);
}

} // namespace

extern const ControlImplementation comboBoxControl{
    .create = CreateProperties<COMBOBOXPROPERTIES>,
    .procedure = ComboBoxProc,
    .purpose =
        "A drop-down list to choose a text from. A click or Enter sends the choice, and so does leaving "
        "the closed list that was walked through by keys or the wheel; Escape puts the value back.",
    .dialog = LAID_OUT,
    .windowStyle = WindowStyle};
