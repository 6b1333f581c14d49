// MINIEQ: the response of an equaliser as a curve, with a point for each of its bands, all of which are
// blocks of their own that are asked one by one. Frequencies in Hz, gains in dB, interval in milliseconds.

#include "Controls/families/CurveView.h"
#include "Controls/families/EqDatatype.h"
#include "Controls/families/HeldBlock.h"
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

class MINIEQPROPERTIES : public CURVEVIEWPROPERTIES {
public:
    KeywordList Keywords() const override;
    void BindingsChanged() override;
    void Poll() override;
    std::vector<std::optional<Point>> Points() const override;
    std::vector<int> Missing() const override;
    void DrawCurves(Canvas& canvas, const logic::CurvePlot& plot) const override;
    std::string PointText(int point) const override;
    void MovePoint(int point, std::optional<float> hertz, std::optional<float> decibels) override;
    void StepPoint(int point, Field field, int steps, bool fine) override;
    void TogglePoint(int point) override;

    int ValueKeyword(VALUERECORD& record);
    std::string Datatype() const { return EqDatatypeWord(datatype_); }
    bool SetDatatype(const std::string& word);

private:
    // A band as the view holds it, and what it does to the response.
    struct Band : HeldBlock<EqBand> {
        explicit Band(MINIEQPROPERTIES& of) : view(of) {}
        CONTROLPROPERTIES& Owner() override { return view; }
        void ShowBlock(const EqBand& next) override;
        bool IsThere() const;   // can be drawn
        bool IsMissing() const; // and should
        // What the band does; nothing when it cannot be.
        const std::optional<logic::Filter>& ItsFilter() const;
        // The same for each column.
        const std::vector<double>& PowersOn(const logic::FrequencyGrid& grid) const;

        MINIEQPROPERTIES& view;
        REQUESTLIST request; // the one of this band

    private:
        mutable logic::Kept<std::pair<EqBand, int>, std::optional<logic::Filter>> filter_;
        mutable logic::Kept<std::tuple<EqBand, int, int>, std::vector<double>> powers_;
    };

    // The bands are those of the requests, which are built anew whenever something comes or goes.
    void FollowRequests();
    // What happens to a band; the view may be gone afterwards.
    template <class Change>
    void EditBand(int number, Change change);

    int datatype_ = DATATYPE_MASTER_EQ;
    std::vector<std::shared_ptr<Band>> bands_;
    int lost_ = 0; // requests beyond the most
};

// Keywords

namespace {

constexpr Keyword VALUE =
    Handled<&MINIEQPROPERTIES::ValueKeyword>("value", KeywordKind::Text)
        .Says(
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

int MINIEQPROPERTIES::ValueKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        std::string text;
        for (const auto& band : bands_) {
            text += (band == bands_.front() ? "" : ";") + logic::EqBandText(band->value);
        }
        return a_AnswerText(&record, text.c_str());
    }
    const auto text = record.index != 0 ? TextToSet(&record) : std::nullopt;
    FollowRequests();
    if (!text || bands_.empty()) {
        return 0;
    }
    const std::vector<std::string_view> given = logic::SplitFields(*text, ';');
    const auto isRead = [](std::string_view band) {
        return band.empty() || logic::ReadEqBand(band, {}).has_value();
    };
    if (given.size() > bands_.size() || !std::all_of(given.begin(), given.end(), isRead)) {
        return 0;
    }
    for (std::size_t i = 0; i < given.size(); ++i) {
        EditBand(static_cast<int>(i),
                 [&](EqBand& band) { band = logic::ReadEqBand(given[i], band).value_or(band); });
    }
    return 1;
}

bool MINIEQPROPERTIES::SetDatatype(const std::string& word) {
    datatype_ = EqDatatypeOf(word);
    BindingsChanged();
    return true;
}

// Bands

void MINIEQPROPERTIES::Band::ShowBlock(const EqBand& next) {
    value = next;
    view.RedrawView();
}

bool MINIEQPROPERTIES::Band::IsThere() const {
    return parts.front().isKnown && !IsMissing();
}

// A band that does not answer has been somewhere, but is not there now.
bool MINIEQPROPERTIES::Band::IsMissing() const {
    const auto& part = parts.front();
    return part.odd || part.lastResult > REQUEST_DELIVERED || (part.isKnown && !ItsFilter());
}

const std::optional<logic::Filter>& MINIEQPROPERTIES::Band::ItsFilter() const {
    return filter_.Get({value, view.sampleRate},
                       [this] { return logic::Filter::OfBand(value, view.sampleRate); });
}

const std::vector<double>& MINIEQPROPERTIES::Band::PowersOn(const logic::FrequencyGrid& grid) const {
    return powers_.Get({value, view.sampleRate, grid.Count()}, [&] {
        std::vector<double> powers;
        for (int i = 0; i < grid.Count(); ++i) {
            powers.push_back(ItsFilter()->PowerAt(grid.Warped(i)));
        }
        return powers;
    });
}

void MINIEQPROPERTIES::BindingsChanged() {
    bands_.clear();
    CURVEVIEWPROPERTIES::BindingsChanged();
}

void MINIEQPROPERTIES::FollowRequests() {
    const std::size_t count = std::min<std::size_t>(requests.size(), MOST_CURVES);
    lost_ = static_cast<int>(requests.size() - count);
    bands_.resize(std::min(bands_.size(), count));
    while (bands_.size() < count) {
        bands_.push_back(std::make_shared<Band>(*this));
        bands_.back()->parts = {WholeBlock<EqBand>(bands_.back()->request, datatype_)};
    }
    auto item = requests.begin();
    for (const auto& band : bands_) {
        TakeOne(band->request, &*item++);
    }
}

void MINIEQPROPERTIES::Poll() {
    FollowRequests();
    const std::vector<int> missingBefore = Missing();
    int worst = lost_ > 0 ? REQUEST_UNREACHABLE : REQUEST_UNCHANGED;
    for (const auto& band : std::vector(bands_)) { // whoever is asked may have them bound anew
        worst = std::max(worst, band->Ask());
    }
    if (Missing() != missingBefore) {
        RedrawView();
    }
    ShowPollResult(Missing().empty() ? worst : std::max(worst, REQUEST_DISAGREE));
}

template <class Change>
void MINIEQPROPERTIES::EditBand(int number, Change change) {
    FollowRequests();
    if (number < static_cast<int>(bands_.size())) {
        const std::shared_ptr<Band> band = bands_[static_cast<std::size_t>(number)];
        band->Edit(0, change);
    }
}

// Points

std::vector<std::optional<CURVEVIEWPROPERTIES::Point>> MINIEQPROPERTIES::Points() const {
    std::vector<std::optional<Point>> points;
    for (const auto& band : bands_) {
        points.emplace_back();
        if (band->IsThere()) {
            const bool hasGain = logic::HasGain(band->value.type);
            points.back() = {band->value.frequency, hasGain ? band->value.gain : 0, band->value.bypass != 0,
                             lineColour, std::to_string(points.size())};
        }
    }
    return points;
}

std::vector<int> MINIEQPROPERTIES::Missing() const {
    std::vector<int> missing;
    for (std::size_t i = 0; i < bands_.size(); ++i) {
        if (bands_[i]->IsMissing()) {
            missing.push_back(static_cast<int>(i) + 1);
        }
    }
    return missing;
}

std::string MINIEQPROPERTIES::PointText(int point) const {
    const EqBand& band = bands_[static_cast<std::size_t>(point)]->value;
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
    for (std::size_t i = 0; i < bands_.size(); ++i) {
        const Band& band = *bands_[i];
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
