// MINIEDIT: a processing block as a tile, with its name, a lamp that says whether it is on, and a picture. A
// click anywhere, or Enter, does what `click` says, such as showing the layer with the block's editor.

#include "Controls/families/FunctionList.h"
#include "Controls/families/View.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr double LAMP_PLACE = 9; // from the edges to its middle
constexpr double LAMP_RADIUS = 5;

} // namespace

class MINIEDITPROPERTIES : public VIEWPROPERTIES {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override;
    int ValueDatatype() const override { return DATATYPE_INTEGER; }
    std::string DefaultAction() const override { return "Press"; }
    bool IsBound() const override { return VIEWPROPERTIES::IsBound() || !names.Requests().empty(); }
    void Poll() override;
    void DrawView(Canvas& canvas) const override;
    bool IsClickedAt(POINT point) const override;
    void BitmapChanged() { Redraw(); }

    int Value() const { return value; }
    bool SetValue(int number);

    int value = 0; // not 0: the block is on
    FunctionList names;
    BitmapProperty picture;

protected:
    std::string ShownCaption() const override { return caption.empty() ? name_ : caption; }

private:
    std::string name_; // that the device has told
};

// Keywords

namespace {

constexpr Keyword VALUE = Property<&MINIEDITPROPERTIES::Value, &MINIEDITPROPERTIES::SetValue>("value").Says(
    "Whether the lamp is lit: not 0. Set, it is shown and, unless it is the old one, sent to everything "
    "the view is bound to.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    VIEW_BACKGROUND,
    VIEW_CAPTION.Says("Text of the name strip on top; empty for what `function1` says, or none."),
    VIEW_CLICK.Says("Property line that a click anywhere or Enter sends; empty for none. `%c` in it stands "
                    "for the connections, `%n` for the full name, `%l` for the caption."),
    CONNECTION_KEYWORD,
    VIEW_FONT,
    FUNCTION_KEYWORD.Says("Device parameters that say whether the block is on, joined by `;`."),
    Functions<&MINIEDITPROPERTIES::names>("function1")
        .Label("Caption follows")
        .Items(IDC_CAPTION_FUNCTION)
        .Says("Device parameters that the caption comes from while `caption` is empty, joined by `;`."),
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    VIEW_LINE_COLOUR.Says("Colour of the frame, `0x00bbggrr`."),
    Picture<&MINIEDITPROPERTIES::picture>("picture").Saved().Label("Picture").Says(
        "Image file that is shown in the middle; empty for a drawn one."),
    VIEW_TEXT_COLOUR,
    VALUE,
});

} // namespace

KeywordList MINIEDITPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

void MINIEDITPROPERTIES::SetDefaults() {
    VIEWPROPERTIES::SetDefaults();
    names.Attach(*this);
}

// Value

bool MINIEDITPROPERTIES::SetValue(int number) {
    if (number != value) {
        value = number;
        Redraw();
        a_SendRequest(requests, COMMAND_SET, DATATYPE_INTEGER, &number, nullptr);
    }
    return true;
}

void MINIEDITPROPERTIES::Poll() {
    int polled = value;
    const int result = Ask(requests, DATATYPE_INTEGER, &polled);
    char text[TEXT_SIZE];
    std::snprintf(text, sizeof text, "%s", name_.c_str());
    const int nameResult = Ask(names.Requests(), DATATYPE_TEXT, text);
    text[std::strcspn(text, "\r\n")] = '\0';
    if (polled != value || name_ != text) {
        value = polled;
        name_ = text;
        Redraw();
    }
    ShowPollResult(std::max(result, nameResult));
}

// Drawing

void MINIEDITPROPERTIES::DrawView(Canvas& canvas) const {
    const RECT& area = canvas.Area();
    if (picture.Get() != nullptr) {
        DrawCentred(canvas, *picture.Get());
    } else {
        DrawClassPicture(canvas);
    }
    for (const RECT& edge : {RECT{area.left, area.top, area.right, area.top + 1},
                             {area.left, area.bottom - 1, area.right, area.bottom},
                             {area.left, area.top, area.left + 1, area.bottom},
                             {area.right - 1, area.top, area.right, area.bottom}}) {
        canvas.Box(edge, lineColour);
    }
    if (!requests.empty()) {
        canvas.Lamp({area.right - LAMP_PLACE, area.top + LAMP_PLACE}, LAMP_RADIUS, value != 0);
    }
}

// Input

bool MINIEDITPROPERTIES::IsClickedAt(POINT point) const {
    RECT client{};
    GetClientRect(window, &client);
    return PtInRect(&client, point) != FALSE;
}

extern const ControlImplementation miniEditControl{
    .create = CreateProperties<MINIEDITPROPERTIES>,
    .procedure = ViewProc,
    .purpose =
        "A processing block as a tile with its name, a lamp and a picture; a click leads to its editor.",
    .dialog = LAID_OUT,
    .share = SharePicture<>};
