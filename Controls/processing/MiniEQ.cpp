// MINIEQ: the response of an equaliser as a curve, with a point for each of its bands, all of which are
// blocks of their own that are asked one by one. Frequencies in Hz, gains in dB, interval in milliseconds.

#include "Controls/families/CurveList.h"
#include "Controls/families/EqDatatype.h"
#include "logic/controls/EqBand.h"
#include "logic/controls/FilterValues.h"
#include "logic/controls/Kept.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <tuple>
#include <utility>

using logic::EqBand;

namespace {

// A band as the view holds it, and what it does to the response.
struct Band : HeldBlock<EqBand> {
    explicit Band(CURVEVIEWPROPERTIES& of) : view(of) {}
    CONTROLPROPERTIES& Owner() override { return view; }
    void ShowBlock(const EqBand& next) override;
    static std::string Text(const EqBand& band) { return logic::EqBandText(band); }
    static std::optional<EqBand> Read(std::string_view text, const EqBand& before) {
        return logic::ReadEqBand(text, before);
    }
    bool IsThere() const;   // can be drawn
    bool IsMissing() const; // and should
    // What the band does; nothing when it cannot be.
    const std::optional<logic::Filter>& ItsFilter() const;
    // The same for each column.
    const std::vector<double>& PowersOn(const logic::FrequencyGrid& grid) const;

    CURVEVIEWPROPERTIES& view;
    REQUESTLIST request; // the one of this band

private:
    mutable logic::Kept<std::pair<EqBand, int>, std::optional<logic::Filter>> filter_;
    mutable logic::Kept<std::tuple<EqBand, int, int>, std::vector<double>> powers_;
};

void Band::ShowBlock(const EqBand& next) {
    value = next;
    view.RedrawView();
}

bool Band::IsThere() const {
    return parts.front().isKnown && !IsMissing();
}

// A band that does not answer has been somewhere, but is not there now.
bool Band::IsMissing() const {
    const auto& part = parts.front();
    return part.odd || part.lastResult > REQUEST_DELIVERED || (part.isKnown && !ItsFilter());
}

const std::optional<logic::Filter>& Band::ItsFilter() const {
    return filter_.Get({value, view.sampleRate},
                       [this] { return logic::Filter::OfBand(value, view.sampleRate); });
}

const std::vector<double>& Band::PowersOn(const logic::FrequencyGrid& grid) const {
    return powers_.Get({value, view.sampleRate, grid.Count()}, [&] {
        std::vector<double> powers;
        for (int i = 0; i < grid.Count(); ++i) {
            powers.push_back(ItsFilter()->PowerAt(grid.Warped(i)));
        }
        return powers;
    });
}

} // namespace

class MINIEQPROPERTIES : public CURVELISTPROPERTIES<Band> {
public:
    KeywordList Keywords() const override;
    std::vector<std::optional<Point>> Points() const override;
    void DrawCurves(Canvas& canvas, const logic::CurvePlot& plot) const override;
    std::string PointText(int point) const override;
    void MovePoint(int point, std::optional<float> hertz, std::optional<float> decibels) override;
    void StepPoint(int point, Field field, int steps, bool fine) override;
    void TogglePoint(int point) override;

    std::string Datatype() const { return EqDatatypeWord(datatype_); }
    bool SetDatatype(const std::string& word);

private:
    bool FollowRequests() override;
    void SetItem(std::size_t number, std::string_view text) override;
    // What happens to a band; the view may be gone afterwards.
    template <class Change>
    void EditBand(int number, Change change);

    int datatype_ = DATATYPE_MASTER_EQ;
};

// Keywords

namespace {

constexpr Keyword VALUE = CurveListValue<Band>().Says(
    "The bands as the texts that an equaliser has in its `properties`, joined by `;`. Set, each that "
    "is not empty is shown and sent to its band; more of them than there are bands are refused.");

constexpr KeywordTable KEYWORDS({
    VALUE.Named(" ").Says(
        "The same as `value`, but a text is refused: it was meant for a keyword that there is not."),
    VIEW_BACKGROUND,
    VIEW_CAPTION,
    VIEW_CLICK,
    CONNECTION_KEYWORD.Says("Equaliser controls whose bands come behind those of `function`, joined by `;`. "
                            "Saved after all other keywords."),
    Property<&MINIEQPROPERTIES::Datatype, &MINIEQPROPERTIES::SetDatatype>("datatype", KeywordKind::Words)
        .Saved()
        .OneOf(EQ_DATATYPES)
        .Label("Equalizer")
        .Items(IDC_EQ_DATATYPE)
        .Says("`channeleq`: bands of a channel; `mastereq`, or anything else: of a master equaliser."),
    VIEW_FONT,
    FUNCTION_KEYWORD.Says(
        "Device parameters that hold a band each, `DEVICE*parameter`, joined by `;`. Up to 16 are shown."),
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    VIEW_LINE_COLOUR.Says("Colour of the curve and its points, `0x00bbggrr`."),
    CURVE_RANGE,
    CURVE_READ_ONLY,
    CURVE_SAMPLE_RATE,
    VIEW_TEXT_COLOUR,
    VALUE,
});

} // namespace

KeywordList MINIEQPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

bool MINIEQPROPERTIES::SetDatatype(const std::string& word) {
    datatype_ = EqDatatypeOf(word);
    BindingsChanged();
    return true;
}

// Bands

bool MINIEQPROPERTIES::FollowRequests() {
    const std::size_t count = std::min<std::size_t>(requests.size(), MOST_CURVES);
    items_.resize(std::min(items_.size(), count));
    while (items_.size() < count) {
        items_.push_back(std::make_shared<Band>(*this));
        items_.back()->parts = {WholeBlock<EqBand>(items_.back()->request, datatype_)};
    }
    auto item = requests.begin();
    for (const auto& band : items_) {
        TakeOne(band->request, &*item++);
    }
    return requests.size() == count;
}

void MINIEQPROPERTIES::SetItem(std::size_t number, std::string_view text) {
    EditBand(static_cast<int>(number), [&](EqBand& band) { band = Band::Read(text, band).value_or(band); });
}

template <class Change>
void MINIEQPROPERTIES::EditBand(int number, Change change) {
    FollowRequests();
    if (number < static_cast<int>(items_.size())) {
        const std::shared_ptr<Band> band = items_[static_cast<std::size_t>(number)];
        band->Edit(0, change);
    }
}

// Points

std::vector<std::optional<CURVEVIEWPROPERTIES::Point>> MINIEQPROPERTIES::Points() const {
    std::vector<std::optional<Point>> points;
    for (const auto& band : items_) {
        points.emplace_back();
        if (band->IsThere()) {
            const bool hasGain = logic::HasGain(band->value.type);
            points.back() = {band->value.frequency, hasGain ? band->value.gain : 0, band->value.bypass != 0,
                             lineColour, std::to_string(points.size())};
        }
    }
    return points;
}

std::string MINIEQPROPERTIES::PointText(int point) const {
    const EqBand& band = items_[static_cast<std::size_t>(point)]->value;
    std::string text = std::to_string(point + 1) + "  " +
                       std::string(logic::FILTER_TYPE_NAMES[static_cast<std::size_t>(band.type)]) + "  " +
                       logic::FrequencyText(band.frequency);
    if (logic::HasGain(band.type)) {
        text += "  " + logic::GainText(band.gain);
    }
    if (logic::HasQ(band.type, band.slope)) {
        text += "  Q " + logic::QText(band.q, false);
    }
    return text + (band.bypass != 0 ? "  bypassed" : "");
}

void MINIEQPROPERTIES::MovePoint(int point, std::optional<float> hertz, std::optional<float> decibels) {
    EditBand(point, [&](EqBand& band) {
        if (hertz) {
            logic::TypeField(band, logic::EqField::Frequency, hertz, false);
        }
        if (decibels && logic::HasGain(band.type)) {
            logic::TypeField(band, logic::EqField::Gain, decibels, false);
        }
    });
}

void MINIEQPROPERTIES::StepPoint(int point, Field field, int steps, bool fine) {
    constexpr float TENTH = 0.1F;
    EditBand(point, [&](EqBand& band) {
        if (field == Field::Frequency) {
            logic::StepField(band, logic::EqField::Frequency, steps, false);
        } else if (field == Field::Gain && logic::HasGain(band.type)) {
            const float step = fine ? TENTH / 2 : 0.5F;
            logic::TypeField(band, logic::EqField::Gain, band.gain + static_cast<float>(steps) * step, false);
        } else if (field == Field::Q && logic::HasQ(band.type, band.slope)) {
            const float step = fine ? TENTH * TENTH : TENTH;
            logic::TypeField(band, logic::EqField::Q, band.q + static_cast<float>(steps) * step, false);
        }
    });
}

void MINIEQPROPERTIES::TogglePoint(int point) {
    EditBand(point, [](EqBand& band) { band.bypass = band.bypass == 0 ? 1 : 0; });
}

// Drawing

namespace {

std::vector<double> Decibels(const std::vector<double>& powers) {
    std::vector<double> decibels(powers.size());
    std::transform(powers.begin(), powers.end(), decibels.begin(), logic::DecibelsOfPower);
    return decibels;
}

} // namespace

void MINIEQPROPERTIES::DrawCurves(Canvas& canvas, const logic::CurvePlot& plot) const {
    const logic::FrequencyGrid& grid = GridOf(plot);
    std::vector<double> product(static_cast<std::size_t>(grid.Count()), 1.0);
    const int active = ActivePoint();
    for (std::size_t i = 0; i < items_.size(); ++i) {
        const Band& band = *items_[i];
        const bool isActive = static_cast<int>(i) == active;
        const bool isBypassed = band.value.bypass != 0;
        if (!band.IsThere() || (isBypassed && !isActive)) {
            continue;
        }
        const std::vector<double>& powers = band.PowersOn(grid);
        if (isActive) {
            canvas.UnderGraph(plot.Heights(Decibels(powers)), plot.Y(0), lineColour, isBypassed ? 0.12 : 0.3);
        }
        if (!isBypassed) {
            std::transform(product.begin(), product.end(), powers.begin(), product.begin(),
                           std::multiplies<>());
        }
    }
    canvas.Graph(plot.Heights(Decibels(product)), {lineColour});
}

extern const ControlImplementation miniEqControl{
    .create = CreateProperties<MINIEQPROPERTIES>,
    .procedure = ViewProc,
    .purpose =
        "The response of an equaliser as a curve from 20 Hz to 20 kHz, with a point for each band: dragging "
        "it "
        "moves frequency and gain, the wheel changes Q (with Shift by a tenth), a double click bypasses. Tab "
        "reaches the points; arrow keys, Page Up, Page Down and the space bar work them. [More of "
        "it](panel-files.md#curves-of-equalisers-and-crossovers).",
    .dialog = LAID_OUT,
    .share = SharePicture<>};
