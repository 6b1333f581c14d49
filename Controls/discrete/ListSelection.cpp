// LISTSELECTION: a list of numbered entries, such as presets or songs, one of which is active. It sends the
// number of the entry that is pressed. A row is a button, and a number in front of it; windows are made for
// the rows that are seen. Geometry in pixels.

#include "Controls/drawing/FontProperty.h"
#include "Controls/drawing/KeptPicture.h"
#include "Controls/drawing/TextColours.h"
#include "Controls/families/ClickTemplate.h"
#include "Controls/families/FunctionList.h"
#include "Controls/families/ItemSource.h"
#include "Controls/families/ListFile.h"
#include "Controls/families/ListRowWindows.h"
#include "Controls/families/Question.h"
#include "Controls/framework/Keywords.h"
#include "Panelhost/Bitmap.h"
#include "Panelhost/Dialogs.h"
#include "Panelhost/Trace.h"
#include "base/Gdi.h"
#include "logic/controls/ButtonLogic.h"
#include "logic/controls/ListLogic.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace {

constexpr int MOST_ROWS = 200;

constexpr COLORREF ROW_COLOUR = RGB(62, 68, 76);
constexpr COLORREF LIT_COLOUR = RGB(74, 163, 255);

} // namespace

class LISTSELECTIONPROPERTIES : public LISTROWSPROPERTIES {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override;
    void Redraw() const override;
    void Poll() override;
    void Draw(HDC dc, const RECT& client) const override;
    bool BeginDrag(POINT point) override;
    void MoveDrag(POINT point) override;
    void EndDrag() override;
    void CancelDrag() override;
    std::string RowText(int row, bool isNumber) const override;

    int Value() const { return value; }
    bool SetValue(int number);
    std::string ItemsText() const { return source.Text(); }
    bool SetItems(const std::string& text);
    std::string ItemsFunction() const { return source.Functions(); }
    bool SetItemsFunction(const std::string& text);
    std::string FileName() const { return file; }
    bool SetFile(const std::string& fileName);
    void LookChanged() { Redraw(); }
    void Key(WPARAM key);

    int value = 0;
    ItemSource source;
    std::string file; // that the lines of the source are from; empty for none
    FunctionList textFunctions;
    std::string clickTemplate;
    std::string confirmText;
    std::optional<COLORREF> textColour;
    std::optional<COLORREF> backgroundColour;
    COLORREF rowColour = ROW_COLOUR;
    COLORREF litColour = LIT_COLOUR;

private:
    enum class Grip { None, Row, Thumb };

    int EntryCount() const override { return entries_.Size(); }
    int LongestNumber() const override { return entries_.LongestNumber(); }
    std::optional<int> EntryToShow() const override { return grip_ == Grip::None ? active_ : std::nullopt; }
    // What the source offers, if it is another list.
    void TakeEntries();
    void Show(int number);
    void ShowMark();
    void Choose(int entry);
    void DrawRows(HDC dc, const ListLayout& layout, int count) const;

    logic::NumberedItems entries_;
    bool isKnown_ = false;           // the value was set, asked for or chosen
    int answer_ = REQUEST_UNCHANGED; // to the last poll
    std::optional<int> active_;
    std::optional<int> mark_; // what the keys move
    Grip grip_ = Grip::None;
    int heldEntry_ = 0;
    bool isDown_ = false; // the held row is under the mouse
    int heldAt_ = 0;      // of the thumb
    mutable KeptPicture rows_{false};
    mutable bool drawnWithFocus_ = false;
};

// Keywords

namespace {

constexpr Keyword VALUE =
    Property<&LISTSELECTIONPROPERTIES::Value, &LISTSELECTIONPROPERTIES::SetValue>("value").Says(
        "The number of the active entry, which is lit. Set, it is shown and, unless it is the old one, sent "
        "to everything the list is bound to. With one that is no entry none is lit, and the mark is shown.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    OptionalColour<&LISTSELECTIONPROPERTIES::backgroundColour>("backgroundcolor")
        .Saved()
        .Label("Background")
        .Says("Colour behind the rows, `0x00bbggrr`; empty to show the panel."),
    Line<&LISTSELECTIONPROPERTIES::clickTemplate>("click")
        .Saved()
        .Label("Click template")
        .Items(IDC_CLICK)
        .Says("Property line that a press sends before the number; empty for none. `%s` in it stands for the "
              "caption of the entry, `%c` for the connections, `%n` for the full name."),
    Text<&LISTSELECTIONPROPERTIES::confirmText>("confirm")
        .Saved()
        .Label("Ask before")
        .Items(IDC_CONFIRM)
        .Preview(logic::QuestionText, IDC_CONFIRM_PREVIEW)
        .Says("Question that is asked before a press sends anything; empty for none. `%s` in it stands for "
              "the caption of the entry, `\\n` and `\\t` for line feed and tab."),
    CONNECTION_KEYWORD,
    FontOf<&LISTSELECTIONPROPERTIES::font>("font").Saved().Label("Font").Says(
        "Font of the rows: face, size in points, `bold` where it is."),
    FUNCTION_KEYWORD,
    Functions<&LISTSELECTIONPROPERTIES::textFunctions>("function1")
        .Label("Function of the text")
        .Says("Device parameters that get the caption of an entry that is pressed, joined by `;`."),
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Colour<&LISTSELECTIONPROPERTIES::litColour>("litcolor")
        .Saved()
        .Label("Active row colour")
        .Says("Colour of the active row, `0x00bbggrr`."),
    Limited<&LISTSELECTIONPROPERTIES::numbers, 0, 1, &LISTSELECTIONPROPERTIES::Arrange>("numbers")
        .Saved()
        .OneOf("0,1")
        .Label("Show numbers")
        .Says("1: the number of an entry stands in front of it."),
    Colour<&LISTSELECTIONPROPERTIES::rowColour>("rowcolor")
        .Saved()
        .Label("Row colour")
        .Says("Colour of the rows, `0x00bbggrr`."),
    Limited<&LISTSELECTIONPROPERTIES::rows, 0, MOST_ROWS, &LISTSELECTIONPROPERTIES::Arrange>("rows")
        .Saved()
        .Label("Rows (0: what fits)")
        .Says("Number of rows that the height is divided into, up to 200; 0 for as many as have room."),
    OptionalColour<&LISTSELECTIONPROPERTIES::textColour>("textcolor")
        .Saved()
        .Label("Text colour")
        .Says("Colour of the text, `0x00bbggrr`; empty for black or white, whichever can be read."),
    VALUE,
    // Behind what gives the rows their size.
    Property<&LISTSELECTIONPROPERTIES::FileName, &LISTSELECTIONPROPERTIES::SetFile>("file", KeywordKind::File)
        .Saved()
        .MayBeEmpty()
        .Label("File")
        .Says("Text file with the entries, one a line in the form of `items`, relative to the application "
              "folder; up to 1 MB. It goes before `items`. It is read when it is set and when the panel is "
              "opened. Dropped on the list, a file becomes this one."),
    Property<&LISTSELECTIONPROPERTIES::ItemsText, &LISTSELECTIONPROPERTIES::SetItems>("items")
        .Saved()
        .Label("Entries")
        .Says("Entries `caption` or `caption=number`, joined by `;`; one without a number has its place, the "
              "first being 1. The last `=` divides; `\\` in front of `;`, `=` and `\\` makes them plain."),
    ItemsFunctionKeyword<&LISTSELECTIONPROPERTIES::ItemsFunction,
                         &LISTSELECTIONPROPERTIES::SetItemsFunction>(),
});

} // namespace

KeywordList LISTSELECTIONPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

void LISTSELECTIONPROPERTIES::SetDefaults() {
    LISTROWSPROPERTIES::SetDefaults();
    interval = 250;
    DragAcceptFiles(window, TRUE);
    source.Attach(*this);
    textFunctions.Attach(*this);
}

bool LISTSELECTIONPROPERTIES::SetItems(const std::string& text) {
    source.SetText(text);
    TakeEntries();
    return true;
}

bool LISTSELECTIONPROPERTIES::SetItemsFunction(const std::string& text) {
    const bool isTaken = source.SetFunctions(*this, text);
    TakeEntries();
    return isTaken;
}

bool LISTSELECTIONPROPERTIES::SetFile(const std::string& fileName) {
    std::string text;
    if (const char* fault = fileName.empty() ? nullptr : ReadListFile(fileName, text); fault != nullptr) {
        EDITTRACE(parent, "%s", (fileName + " " + fault).c_str());
        return false;
    }
    file = fileName;
    source.SetLines(file.empty() ? std::nullopt : std::optional(std::move(text)));
    TakeEntries();
    return true;
}

void LISTSELECTIONPROPERTIES::TakeEntries() {
    if (!source.IsChanged()) {
        return;
    }
    entries_ = logic::NumberedItems(source.Get());
    active_ = isKnown_ ? entries_.IndexOf(value) : std::nullopt;
    mark_.reset();
    if (grip_ == Grip::Row) {
        grip_ = Grip::None; // it would be another one
    }
    Arrange();
    ShowMark();
}

// Value

bool LISTSELECTIONPROPERTIES::SetValue(int number) {
    const bool isNew = number != value;
    if (isNew || !isKnown_) {
        Show(number);
    }
    if (isNew) {
        a_SendRequest(requests, COMMAND_SET, DATATYPE_INTEGER, &number, nullptr);
    }
    return true;
}

void LISTSELECTIONPROPERTIES::Show(int number) {
    value = number;
    isKnown_ = true;
    const auto before = std::exchange(active_, entries_.IndexOf(number));
    if (active_ != before) {
        if (active_ && grip_ == Grip::None) {
            top = Scroll(CurrentLayout()).TopShowing(*active_, top);
        }
        Redraw();
    }
    ShowMark();
}

void LISTSELECTIONPROPERTIES::ShowMark() {
    const bool isNoEntry = isKnown_ && !active_ && entries_.Size() > 0;
    ShowPollResult(isNoEntry ? std::max(answer_, REQUEST_DISAGREE) : answer_);
}

void LISTSELECTIONPROPERTIES::Poll() {
    int polled = value;
    const int result = Ask(requests, DATATYPE_INTEGER, &polled);
    const bool isAnswered = !requests.empty() && result <= REQUEST_DELIVERED;
    answer_ = std::max({result, source.Poll(), WhetherLive()}); // of what the texts go to, too
    TakeEntries();
    if (isAnswered) {
        Show(polled);
    }
    ShowMark();
}

// A question may take long, and the list can be another one then: what is sent is what was pressed.
void LISTSELECTIONPROPERTIES::Choose(int entry) {
    if (entry >= entries_.Size()) {
        return;
    }
    int number = entries_.Number(entry);
    const std::string caption(entries_.Caption(entry).substr(0, TEXT_SIZE - 1));
    const logic::Placeholder inserted[] = {{'s', caption}};
    if (!IsConfirmed(*this, logic::ExpandTemplate(confirmText, inserted), a_OwnName(this))) {
        return;
    }
    SendClickTemplate(*this, clickTemplate, INSERTION{'s', caption.c_str()});
    Show(number);
    a_SendRequest(requests, COMMAND_SET, DATATYPE_INTEGER, &number, nullptr);
    char text[TEXT_SIZE];
    text[caption.copy(text, TEXT_SIZE - 1)] = '\0';
    a_SendRequest(textFunctions.Requests(), COMMAND_SET, DATATYPE_TEXT, text, nullptr);
}

// Layout

std::string LISTSELECTIONPROPERTIES::RowText(int row, bool isNumber) const {
    const int entry = top + row;
    if (entry >= entries_.Size()) {
        return {};
    }
    return isNumber ? std::to_string(entries_.Number(entry)) : std::string(entries_.Caption(entry));
}

// Drawing

// The windows of the rows, which are painted over, stay as they are.
void LISTSELECTIONPROPERTIES::Redraw() const {
    rows_.Change();
    if (!a_IsLoading(this) && IsWindowVisible(window)) {
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_NOCHILDREN);
    }
}

void LISTSELECTIONPROPERTIES::Draw(HDC dc, const RECT& client) const {
    FillGround(dc, backgroundColour, client);
    const ListLayout layout = LayoutOf(client);
    const int shown = std::min(layout.rows, entries_.Size() - top);
    if (shown > 0) {
        const RECT area{layout.inside.left, layout.inside.top, layout.inside.right,
                        layout.inside.top + shown * layout.rowHeight};
        if (drawnWithFocus_ != HasFocus()) {
            drawnWithFocus_ = HasFocus();
            rows_.Change();
        }
        const auto render = [&](HDC kept, std::uint32_t*) {
            SetViewportOrgEx(kept, -area.left, -area.top, nullptr);
            DrawRows(kept, layout, shown);
            SetViewportOrgEx(kept, 0, 0, nullptr);
        };
        if (const OSMIRBitmap* picture = rows_.Get(area.right - area.left, area.bottom - area.top, render)) {
            picture->Draw(dc, area.left, area.top);
        } else {
            DrawRows(dc, layout, shown);
        }
    }
    if (!IsRectEmpty(&layout.bar)) {
        DrawListBar(dc, layout.bar, ThumbArea(layout));
    }
    if (entries_.Size() == 0 && mode != 0) { // an outline to take it by
        SetDCBrushColor(dc, ReadableOn(GetPixel(dc, client.right / 2, client.bottom / 2)));
        FrameRect(dc, &client, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    }
}

void LISTSELECTIONPROPERTIES::DrawRows(HDC dc, const ListLayout& layout, int count) const {
    const Selected selected(dc, font.Get());
    SetBkMode(dc, TRANSPARENT);
    for (int row = 0; row < count; ++row) {
        const int entry = top + row;
        const std::string number = numbers != 0 ? std::to_string(entries_.Number(entry)) : "";
        const bool isDown = grip_ == Grip::Row && isDown_ && heldEntry_ == entry;
        DrawListRow(dc, layout, row,
                    {entries_.Caption(entry).substr(0, TEXT_SIZE), number, active_ == entry,
                     mark_ == entry && HasFocus(), isDown},
                    letters, {textColour, rowColour, litColour});
    }
}

// Input

bool LISTSELECTIONPROPERTIES::BeginDrag(POINT point) {
    const ListLayout layout = CurrentLayout();
    if (PtInRect(&layout.bar, point)) {
        const RECT thumb = ThumbArea(layout);
        if (!PtInRect(&thumb, point)) { // a page towards the mouse
            const int page = std::max(layout.rows - 1, 1);
            ScrollTo(Scroll(layout).LimitTop(point.y < thumb.top ? top - page : top + page));
            return false;
        }
        grip_ = Grip::Thumb;
        heldAt_ = point.y - thumb.top;
        return true;
    }
    const auto entry = EntryAt(layout, point);
    if (!entry) {
        return false;
    }
    grip_ = Grip::Row;
    heldEntry_ = *entry;
    mark_ = entry;
    isDown_ = true;
    Redraw();
    UpdateWindow(window);
    return true;
}

void LISTSELECTIONPROPERTIES::MoveDrag(POINT point) {
    const ListLayout layout = CurrentLayout();
    if (grip_ == Grip::Thumb) {
        const int track = layout.Track();
        ScrollTo(Scroll(layout).TopOfThumb(point.y - layout.bar.top - heldAt_, track));
        UpdateWindow(window);
    } else if (grip_ == Grip::Row && isDown_ != (EntryAt(layout, point) == heldEntry_)) {
        isDown_ = !isDown_;
        Redraw();
    }
}

void LISTSELECTIONPROPERTIES::EndDrag() {
    const bool isChosen = grip_ == Grip::Row && isDown_;
    CancelDrag();
    if (isChosen) {
        UpdateWindow(window);
        Choose(heldEntry_);
    }
}

void LISTSELECTIONPROPERTIES::CancelDrag() {
    grip_ = Grip::None;
    isDown_ = false;
    Redraw();
}

void LISTSELECTIONPROPERTIES::Key(WPARAM key) {
    const logic::ListScroll scroll = Scroll(CurrentLayout());
    if (key == VK_RETURN || key == VK_SPACE) {
        if (mark_) {
            ScrollTo(scroll.TopShowing(*mark_, top));
            Choose(*mark_);
        }
        return;
    }
    if (key < VK_PRIOR || key > VK_DOWN) {
        return;
    }
    const auto moved = scroll.MoveMark(mark_ ? mark_ : active_, top, static_cast<logic::ListKey>(key));
    if (moved) {
        mark_ = moved;
        top = scroll.TopShowing(*moved, top);
        Redraw();
    }
}

// Window procedures and registration

namespace {

LRESULT CALLBACK ListSelectionProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& list = *PropertiesOf<LISTSELECTIONPROPERTIES>(window);
    switch (message) {
    case WM_SIZE:
        list.Arrange();
        break;
    case WM_LBUTTONDOWN: {
        const LRESULT result = CommonProc(window, message, wParam, lParam);
        SetCursor(LoadCursorA(nullptr, IDC_ARROW)); // it is no knob
        return result;
    }
    case WM_KEYDOWN:
        if (!PassInput(list, message, wParam, lParam) && !list.dragging) {
            list.Key(wParam);
        }
        return 0;
    case WM_MOUSEWHEEL:
        if (!PassInput(list, message, wParam, lParam) && !list.dragging) {
            list.Wheel(GET_WHEEL_DELTA_WPARAM(wParam));
        }
        return 0;
    case WM_DROPFILES:
        a_DropFile(&list, "file", reinterpret_cast<HDROP>(wParam));
        return 0;
    case CWM_DROPFILES:
        a_DropFile(&list, "file", reinterpret_cast<HDROP>(lParam));
        return 0;
    default:
        break;
    }
    return CommonProc(window, message, wParam, lParam);
}

} // namespace

extern const ControlImplementation listSelectionControl = Implement<LISTSELECTIONPROPERTIES>(
    ListSelectionProc, LAID_OUT,
    "A list of numbered entries, such as presets, with a button each; it sends the number of the one that is "
    "pressed.");
