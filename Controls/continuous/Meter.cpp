// METER: one integer value, or several combined, as a bar that is polled on every tick. It takes no input of
// its own. Interval in milliseconds, geometry in pixels.

#include "Controls/drawing/Shading.h"
#include "Controls/drawing/TextColours.h"
#include "Controls/families/DarkStrip.h"
#include "Controls/families/RangedNumber.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "logic/controls/MeterLogic.h"
#include "logic/text/Numbers.h"

#include <algorithm>
#include <vector>

namespace {

constexpr int UNLIT = 0; // parts of the image
constexpr int LIT = 1;

} // namespace

class METERPROPERTIES : public FACEDPROPERTIES {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override;
    BitmapParts Frames() const override { return {*face.Get(), 2}; } // unlit and lit
    void Poll() override;
    void Draw(HDC dc, const RECT& client) const override;
    std::optional<logic::Travel> TravelIn(SIZE client) const override;

    bool IsReversed() const { return range.minimum >= range.maximum; } // grows downwards
    int FillHeight(int height) const {
        return logic::FillHeight(value, range.minimum, range.maximum, height);
    }
    // Redraws only when it shows.
    void Show(int newValue);

    int ValueKeyword(VALUERECORD& record);

    int value = 0;
    WholeRange range;
    logic::MeterCombination combine = logic::MeterCombination::Maximum;
};

// Keywords

namespace {

constexpr Keyword VALUE = Handled<&METERPROPERTIES::ValueKeyword>("value", KeywordKind::Integer)
                              .Says("The number. Set, it is shown and, unless it is the old one, sent to "
                                    "everything the meter is bound to.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    Picture<&METERPROPERTIES::face>("bitmap").Saved().Pictures("METER_").Says(
        "Image file with the unlit and the lit bar side by side, which gives the meter its size; empty for a "
        "plain bar."),
    Words<"max,avg", &METERPROPERTIES::combine>("combine")
        .Saved()
        .Label("Combine Results")
        .Items(IDC_COMBINE)
        .Says("What becomes of several answers: `max` the largest, `avg` the average."),
    // Deliberately saved although it answers no text: the line of the connections follows it and prevails.
    CONNECTION_KEYWORD.Saved().Says(
        "Controls it is connected to, `OBJECT*keyword` or `OBJECT`, joined by `;`. "
        "Saved twice: empty among the keywords, and in full after them."),
    FUNCTION_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Range<&METERPROPERTIES::range>("properties")
        .Parts(RANGE_PARTS<1, 1>)
        .Says("Minimum and maximum (whole numbers), joined by `,`; the maximum may be left out."),
    VALUE,
});

} // namespace

KeywordList METERPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

int METERPROPERTIES::ValueKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        const bool same = record.datatype == DATATYPE_FLOAT && record.data != nullptr &&
                          logic::TruncateToInteger(*static_cast<const float*>(record.data)) == value;
        return same ? 0 : a_AnswerInteger(&record, value);
    }
    int number = 0;
    if (record.command != COMMAND_SET || a_ReadInteger(&record, &number) == 0 || number == value) {
        return 0;
    }
    Show(number);
    a_SendRequest(requests, COMMAND_SET, DATATYPE_INTEGER, &number, nullptr);
    return 1;
}

void METERPROPERTIES::SetDefaults() {
    interval = 1; // every tick
    DragAcceptFiles(window, TRUE);
}

// Value

void METERPROPERTIES::Show(int newValue) {
    RECT client{};
    GetClientRect(window, &client);
    const int before = FillHeight(client.bottom);
    value = newValue;
    if (FillHeight(client.bottom) != before) {
        Redraw();
    }
}

void METERPROPERTIES::Poll() {
    logic::MeterAnswers answers(combine, range.minimum, range.maximum);
    int result = REQUEST_UNCHANGED;
    bool isMissing = false;
    for (const REQUESTITEM& item : ItemsOf(requests)) {
        if (item.target == nullptr && item.handler == nullptr) {
            isMissing = true;
            continue;
        }
        int answer = answers.Cell();
        const int status = a_SendToItem(item, COMMAND_GET, DATATYPE_INTEGER, &answer);
        if (status > 0) {
            answers.Cell() = answer;
        }
        answers.Take();
        result = status < 0 ? REQUEST_UNREACHABLE : result;
    }
    ShowPollResult(isMissing ? REQUEST_UNREACHABLE : result);
    if (const int combined = answers.Result(); combined != value) {
        Show(combined);
    }
}

// Drawing

void METERPROPERTIES::Draw(HDC dc, const RECT& client) const {
    const int fill = FillHeight(client.bottom);
    const RECT top{0, 0, client.right, IsReversed() ? fill : client.bottom - fill};
    const RECT bottom{0, top.bottom, client.right, client.bottom};
    if (face.Get() != nullptr) {
        const BitmapParts parts = Frames();
        parts.Draw(dc, IsReversed() ? LIT : UNLIT, top);
        parts.Draw(dc, IsReversed() ? UNLIT : LIT, bottom);
        if (IsDarkPart(*this)) { // what is not lit has no colours
            FillGround(dc, logic::PANEL_WELL, IsReversed() ? bottom : top);
        }
        return;
    }
    FrameRect(dc, &client, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    // Growing upwards, the bar without an image deliberately stands for what is not filled.
    const RECT bar = IsReversed() ? top : RECT{0, fill, client.right, client.bottom};
    if (IsDark()) {
        FillGround(dc, logic::PANEL_BLUE, bar);
    } else {
        DrawShadedColumns(dc, bar, BAR_COLOUR);
    }
}

// Of the edge between both parts.
std::optional<logic::Travel> METERPROPERTIES::TravelIn(SIZE client) const {
    const auto [low, high] =
        std::minmax({static_cast<float>(range.minimum), static_cast<float>(range.maximum)});
    const bool grows = face.Get() != nullptr || IsReversed(); // from the lower end
    const bool isUpwards = face.Get() != nullptr && !IsReversed();
    return logic::Travel{.range = {low, high},
                         .begin = isUpwards ? client.cy : 0,
                         .length = client.cy,
                         .isBackwards = isUpwards,
                         .shown = logic::Travel::Shown::CutOffBar,
                         .origin = grows ? low : high};
}

extern const ControlImplementation meterControl = Implement<METERPROPERTIES>(
    IndicatorProc, IDD_METER,
    "A whole number, or several combined, as a bar. With a minimum that is not below the maximum it "
    "grows downwards.");
