// MINIXOVER: the ways of a loudspeaker crossover as curves, with a point for the corner of each filter, and
// dashed what they sum up to. Each way is made of what stands at its place in up to four lists of functions.
// Frequencies in Hz, gains in dB, interval in milliseconds.

#include "Controls/families/CrossoverParts.h"
#include "Controls/families/CurveList.h"
#include "Controls/families/FunctionList.h"
#include "logic/controls/Crossover.h"
#include "logic/controls/FilterValues.h"
#include "logic/controls/Kept.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <array>
#include <complex>
#include <cstddef>
#include <functional>
#include <memory>
#include <tuple>

using logic::Crossover;
using logic::CrossoverFilter;

namespace {

enum Part { FILTERS, GAIN, POLARITY, DELAY, PART_COUNT };
constexpr std::int32_t NEW_FILTER = 17; // what a filter becomes that was never seen working: "LINK24"

using Response = std::vector<std::complex<double>>;

// A way as the view holds it.
struct Way : HeldBlock<Crossover> {
    explicit Way(CURVEVIEWPROPERTIES& of);
    CONTROLPROPERTIES& Owner() override { return view; }
    void ShowBlock(const Crossover& next) override;
    static std::string Text(const Crossover& way) { return logic::CrossoverText(way); }
    static std::optional<Crossover> Read(std::string_view text, const Crossover& before) {
        return logic::ReadCrossover(text, before);
    }
    bool IsThere() const;   // can be drawn
    bool IsMissing() const; // and should
    const CrossoverFilter& FilterOf(bool isHighPass) const {
        return isHighPass ? value.filters.highPass : value.filters.lowPass;
    }

    bool CanBe() const; // at the sampling rate
    // Of all columns, where it is there.
    const Response& ResponseOn(const logic::FrequencyGrid& grid) const;

    CURVEVIEWPROPERTIES& view;
    REQUESTLIST requests[PART_COUNT]; // those of this way, each one or none
    std::int32_t typesBefore[2]{};    // of the low and the high pass, when they were last on

private:
    mutable logic::Kept<std::pair<Crossover, int>, bool> canBe_;
    mutable logic::Kept<std::tuple<Crossover, int, int>, Response> response_;
};

Way::Way(CURVEVIEWPROPERTIES& of) : view(of) {
    parts = CrossoverParts(requests[FILTERS], requests[FILTERS], requests[GAIN], requests[POLARITY],
                           requests[DELAY]);
}

void Way::ShowBlock(const Crossover& next) {
    value = next;
    for (const bool isHighPass : {false, true}) {
        std::int32_t& before = typesBefore[isHighPass ? 1 : 0];
        before = FilterOf(isHighPass).type != 0 ? FilterOf(isHighPass).type : before;
    }
    view.RedrawView();
}

bool Way::IsThere() const {
    return parts[FILTERS].isKnown && !IsMissing();
}

// A way that does not answer has been somewhere, but is not there now.
bool Way::IsMissing() const {
    const auto isLost = [](const BlockPart<Crossover>& part) {
        return part.odd || part.lastResult > REQUEST_DELIVERED;
    };
    return std::any_of(parts.begin(), parts.end(), isLost) || (parts[FILTERS].isKnown && !CanBe());
}

bool Way::CanBe() const {
    return canBe_.Get({value, view.sampleRate}, [this] {
        return logic::Filter::OfCrossover(value.filters.highPass, true, view.sampleRate) &&
               logic::Filter::OfCrossover(value.filters.lowPass, false, view.sampleRate);
    });
}

const Response& Way::ResponseOn(const logic::FrequencyGrid& grid) const {
    return response_.Get({value, view.sampleRate, grid.Count()},
                         [&] { return logic::ResponseOf(value, grid).value_or(Response()); });
}

} // namespace

class MINIXOVERPROPERTIES : public CURVELISTPROPERTIES<Way> {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override;
    bool IsBound() const override;
    std::vector<std::optional<Point>> Points() const override;
    void DrawCurves(Canvas& canvas, const logic::CurvePlot& plot) const override;
    std::string PointText(int point) const override;
    void MovePoint(int point, std::optional<float> hertz, std::optional<float> decibels) override;
    void StepPoint(int point, Field field, int steps, bool fine) override;
    void TogglePoint(int point) override;

    template <int part>
    std::string PartFunctions() const {
        return lists[part - 1].Text();
    }
    template <int part>
    bool SetPartFunctions(const std::string& text) {
        const bool isTaken = lists[part - 1].Load(*this, text);
        BindingsChanged();
        return isTaken;
    }

    FunctionList lists[PART_COUNT - 1]; // behind the first, which is the base's own

private:
    const REQUESTLIST& Requests(int part) const {
        return part == FILTERS ? requests : lists[part - 1].Requests();
    }
    bool FollowRequests() override;
    void SetItem(std::size_t number, std::string_view text) override;
    COLORREF ColourOf(std::size_t way) const;
    static std::size_t WayOf(int point) { return static_cast<std::size_t>(point) / 2; }
    static bool IsHighPass(int point) { return point % 2 == 0; }
    // What happens to a part of a way, and to the filter of a point; the view may be gone afterwards.
    template <class Change>
    void EditWay(std::size_t number, Part part, Change change);
    template <class Change>
    void EditFilter(int point, Change change);
};

// Keywords

namespace {

constexpr Keyword VALUE = CurveListValue<Way>().Says(
    "The ways as the texts that a crossover has as its `value`, joined by `;`. Set, each that is not "
    "empty is shown and sent to its way; more of them than there are ways are refused.");

template <int part>
constexpr Keyword PartKeyword(const char* name) {
    return Property<&MINIXOVERPROPERTIES::PartFunctions<part>, &MINIXOVERPROPERTIES::SetPartFunctions<part>>(
               name, KeywordKind::Addresses)
        .Saved();
}

constexpr KeywordTable KEYWORDS({
    VALUE.Named(" ").Says(
        "The same as `value`, but a text is refused: it was meant for a keyword that there is not."),
    VIEW_BACKGROUND,
    VIEW_CAPTION,
    VIEW_CLICK,
    CONNECTION_KEYWORD.Says(
        "Crossover controls, each of which is a way behind those of `function`, joined by "
        "`;`. Saved after all other keywords."),
    VIEW_FONT,
    FUNCTION_KEYWORD.Says("Device parameters that hold the two filters of a way each, `DEVICE*parameter`, "
                          "joined by `;`. Up to 16 are shown."),
    PartKeyword<GAIN>("function1")
        .Label("Gain functions")
        .Items(IDC_GAIN_FUNCTION)
        .Says(
            "Device parameters that hold the gains of the ways in dB, in the order of `function`, joined by "
            "`;`."),
    PartKeyword<POLARITY>("function2")
        .Label("Polarity functions")
        .Items(IDC_POLARITY_FUNCTION)
        .Says("Device parameters that hold the polarities of the ways, 0 normal, 1 inverted, likewise."),
    PartKeyword<DELAY>("function3")
        .Label("Delay functions")
        .Items(IDC_DELAY_FUNCTION)
        .Says("Device parameters that hold the delays of the ways, likewise."),
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    VIEW_LINE_COLOUR.Says("Colour of the first way, `0x00bbggrr`; the others have colours of the panel."),
    CURVE_RANGE,
    CURVE_READ_ONLY,
    CURVE_SAMPLE_RATE,
    VIEW_TEXT_COLOUR,
    VALUE,
});

} // namespace

KeywordList MINIXOVERPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

// Ways

void MINIXOVERPROPERTIES::SetDefaults() {
    CURVEVIEWPROPERTIES::SetDefaults();
    for (FunctionList& list : lists) {
        list.Attach(*this);
    }
}

bool MINIXOVERPROPERTIES::IsBound() const {
    return CURVEVIEWPROPERTIES::IsBound() ||
           std::any_of(std::begin(lists), std::end(lists),
                       [](const auto& list) { return !list.Requests().empty(); });
}

bool MINIXOVERPROPERTIES::FollowRequests() {
    std::size_t longest = 0;
    for (int part = 0; part < PART_COUNT; ++part) {
        longest = std::max(longest, Requests(part).size());
    }
    items_.resize(std::min({items_.size(), longest, std::size_t{MOST_CURVES}}));
    while (items_.size() < std::min<std::size_t>(longest, MOST_CURVES)) {
        items_.push_back(std::make_shared<Way>(*this));
    }
    for (int part = 0; part < PART_COUNT; ++part) {
        auto item = Requests(part).begin();
        for (const auto& way : items_) {
            const bool isAny = item != Requests(part).end();
            TakeOne(way->requests[part], isAny ? &*item++ : nullptr);
        }
    }
    return longest <= MOST_CURVES;
}

void MINIXOVERPROPERTIES::SetItem(std::size_t number, std::string_view text) {
    for (const Part part : {FILTERS, GAIN, POLARITY, DELAY}) {
        EditWay(number, part, [&](Crossover& way, const BlockPart<Crossover>& edited) {
            edited.copy(way, Way::Read(text, way).value_or(way));
        });
    }
}

template <class Change>
void MINIXOVERPROPERTIES::EditWay(std::size_t number, Part part, Change change) {
    FollowRequests();
    if (number < items_.size()) {
        const std::shared_ptr<Way> way = items_[number];
        way->Edit(part, [&](Crossover& edited) { change(edited, way->parts[part]); });
    }
}

template <class Change>
void MINIXOVERPROPERTIES::EditFilter(int point, Change change) {
    EditWay(WayOf(point), FILTERS, [&](Crossover& way, const BlockPart<Crossover>&) {
        change(IsHighPass(point) ? way.filters.highPass : way.filters.lowPass);
    });
}

// Points: of each way that of its high pass and that of its low pass. A filter that is off has one as long as
// its corner is not at the end of the range.

COLORREF MINIXOVERPROPERTIES::ColourOf(std::size_t way) const {
    constexpr std::uint32_t OTHERS[] = {logic::PANEL_GREEN, logic::PANEL_YELLOW, logic::PANEL_RED,
                                        logic::PANEL_BLUE};
    return way == 0 ? lineColour : OTHERS[(way - 1) % std::size(OTHERS)];
}

std::vector<std::optional<CURVEVIEWPROPERTIES::Point>> MINIXOVERPROPERTIES::Points() const {
    std::vector<std::optional<Point>> points(2 * items_.size());
    for (int i = 0; i < static_cast<int>(points.size()); ++i) {
        const Way& way = *items_[WayOf(i)];
        const CrossoverFilter& filter = way.FilterOf(IsHighPass(i));
        const bool isOff = filter.type == 0;
        const bool isInside =
            filter.frequency > logic::LOWEST_FREQUENCY && filter.frequency < logic::HIGHEST_FREQUENCY;
        if (way.IsThere() && (isInside || !isOff)) {
            const auto made = logic::Filter::OfCrossover(filter, IsHighPass(i), sampleRate);
            const double power = isOff ? 1 : made->PowerAt(logic::Warped(filter.frequency, sampleRate));
            points[static_cast<std::size_t>(i)] = {filter.frequency,
                                                   logic::DecibelsOfPower(power) + way.value.gain, isOff,
                                                   ColourOf(WayOf(i)), std::to_string(WayOf(i) + 1)};
        }
    }
    return points;
}

std::string MINIXOVERPROPERTIES::PointText(int point) const {
    const CrossoverFilter& filter = items_[WayOf(point)]->FilterOf(IsHighPass(point));
    return std::to_string(WayOf(point) + 1) + (IsHighPass(point) ? "  high pass  " : "  low pass  ") +
           std::string(logic::CROSSOVER_NAMES[static_cast<std::size_t>(filter.type)]) + "  " +
           logic::FrequencyText(filter.frequency);
}

void MINIXOVERPROPERTIES::MovePoint(int point, std::optional<float> hertz, std::optional<float>) {
    EditFilter(point, [&](CrossoverFilter& filter) { filter.frequency = hertz.value_or(filter.frequency); });
}

void MINIXOVERPROPERTIES::StepPoint(int point, Field field, int steps, bool) {
    if (field == Field::Frequency) {
        EditFilter(point, [&](CrossoverFilter& filter) {
            filter.frequency = logic::StepFrequency(filter.frequency, steps);
        });
    }
}

void MINIXOVERPROPERTIES::TogglePoint(int point) {
    const std::int32_t before = items_[WayOf(point)]->typesBefore[IsHighPass(point) ? 1 : 0];
    EditFilter(point, [&](CrossoverFilter& filter) {
        filter.type = filter.type != 0 ? 0 : before != 0 ? before : NEW_FILTER;
    });
}

// Drawing

namespace {

std::vector<double> Decibels(const std::vector<std::complex<double>>& response) {
    std::vector<double> decibels(response.size());
    std::transform(response.begin(), response.end(), decibels.begin(),
                   [](const std::complex<double>& part) { return logic::DecibelsOfPower(std::norm(part)); });
    return decibels;
}

} // namespace

void MINIXOVERPROPERTIES::DrawCurves(Canvas& canvas, const logic::CurvePlot& plot) const {
    constexpr double DASH = 6;
    constexpr double GAP = 4;
    const logic::FrequencyGrid& grid = GridOf(plot);
    Response sum(static_cast<std::size_t>(grid.Count()));
    const int active = ActivePoint();
    int summed = 0;
    for (std::size_t i = 0; i < items_.size(); ++i) {
        if (!items_[i]->IsThere()) {
            continue;
        }
        const Response& response = items_[i]->ResponseOn(grid);
        const std::vector<double> curve = plot.Heights(Decibels(response));
        if (active >= 0 && WayOf(active) == i) {
            canvas.UnderGraph(curve, plot.top + plot.height, ColourOf(i), 0.2);
        }
        canvas.Graph(curve, {ColourOf(i)});
        std::transform(sum.begin(), sum.end(), response.begin(), sum.begin(), std::plus<>());
        ++summed;
    }
    if (summed > 1) {
        canvas.Graph(plot.Heights(Decibels(sum)), {textColour, 1.5, DASH, GAP});
    }
}

extern const ControlImplementation miniXoverControl{
    .create = CreateProperties<MINIXOVERPROPERTIES>,
    .procedure = ViewProc,
    .purpose =
        "The ways of a loudspeaker crossover as curves from 20 Hz to 20 kHz, and dashed their sum with all "
        "phases: dragging the point of a filter moves its corner, a double click turns it off and on. Tab "
        "reaches the points; the arrow keys and the space bar work them. [More of "
        "it](panel-files.md#curves-of-equalisers-and-crossovers).",
    .dialog = LAID_OUT,
    .share = SharePicture<>};
