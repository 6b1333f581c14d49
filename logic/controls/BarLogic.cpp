#include "logic/controls/BarLogic.h"

#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <iterator>
#include <cmath>
#include <cstdio>

namespace logic {

float TravelRange::Limit(float value) const {
    return Clamp(value, Lower(), Upper());
}

double TravelRange::Fraction(float value) const {
    const double limited = Limit(value);
    if (minimum == maximum) {
        return 0;
    }
    if (law == Law::Logarithmic && Lower() > 0) {
        return std::log(limited / minimum) / std::log(static_cast<double>(maximum) / minimum);
    }
    return (limited - minimum) / (static_cast<double>(maximum) - minimum);
}

std::int32_t TravelRange::Edge(float value, std::int32_t length) const {
    return static_cast<std::int32_t>(std::floor(Fraction(value) * std::max(length, 0) + 0.5));
}

std::vector<Span> Difference(const BarSpans& one, const BarSpans& other) {
    const auto isDrawn = [](const BarSpans& spans, std::int32_t pixel) {
        const auto has = [pixel](const Span& span) { return span.first <= pixel && pixel < span.last; };
        return has(spans.lit) || has(spans.peak);
    };
    std::int32_t edges[] = {one.lit.first,   one.lit.last,   one.peak.first,   one.peak.last,
                            other.lit.first, other.lit.last, other.peak.first, other.peak.last};
    std::sort(std::begin(edges), std::end(edges));
    std::vector<Span> pieces;
    for (std::size_t i = 1; i < std::size(edges); ++i) {
        const Span piece{edges[i - 1], edges[i]};
        if (piece.IsEmpty() || isDrawn(one, piece.first) == isDrawn(other, piece.first)) {
            continue;
        }
        if (!pieces.empty() && pieces.back().last == piece.first) {
            pieces.back().last = piece.last;
        } else {
            pieces.push_back(piece);
        }
    }
    return pieces;
}

namespace {

// To whole segments, where they have a length; the last one may be broken.
std::int32_t SegmentEdge(const TravelRange& range, float value, std::int32_t length, std::int32_t segment) {
    const std::int32_t exact = range.Edge(value, length);
    return segment <= 0 || exact >= length
               ? exact
               : std::min((exact + segment / 2) / segment * segment, std::max(length, 0));
}

} // namespace

Span LitSpan(const TravelRange& range, float origin, float value, std::int32_t length, std::int32_t segment) {
    const std::int32_t one = SegmentEdge(range, origin, length, segment);
    const std::int32_t other = SegmentEdge(range, value, length, segment);
    return {std::min(one, other), std::max(one, other)};
}

Span PeakSpan(const TravelRange& range, float peak, std::int32_t length, std::int32_t segment) {
    constexpr std::int32_t thickness = 2;
    const std::int32_t edge = SegmentEdge(range, peak, length, segment);
    if (edge <= 0) {
        return {};
    }
    return {segment > 0 ? (edge - 1) / segment * segment : std::max(edge - thickness, 0), edge};
}

std::optional<std::vector<Zone>> ParseZones(std::string_view text) {
    std::vector<Zone> zones;
    if (TrimBlanks(text).empty()) {
        return zones;
    }
    for (const std::string_view field : SplitFields(text, ';')) {
        const auto equals = field.find('=');
        if (equals == std::string_view::npos || zones.size() == MOST_ZONES) {
            return std::nullopt;
        }
        const auto from = ParseWholeFloat(field.substr(0, equals));
        const auto colour = ParseWholeHex(field.substr(equals + 1));
        if (!from || !colour || *colour > 0xFFFFFF) {
            return std::nullopt;
        }
        zones.push_back({*from, *colour});
    }
    std::ranges::sort(zones, {}, &Zone::from);
    if (std::ranges::adjacent_find(zones, {}, &Zone::from) != zones.end()) {
        return std::nullopt;
    }
    return zones;
}

std::string ZonesText(const std::vector<Zone>& zones) {
    std::string text;
    for (const Zone& zone : zones) {
        char colour[16];
        std::snprintf(colour, sizeof colour, "=0x%08x", static_cast<unsigned>(zone.colour));
        text += (text.empty() ? "" : ";") + FormatFloat(zone.from) + colour;
    }
    return text;
}

std::uint32_t Blend(std::uint32_t from, std::uint32_t to, double way) {
    std::uint32_t colour = 0;
    for (const int shift : {0, 8, 16}) {
        const double low = from >> shift & 0xFF;
        const double high = to >> shift & 0xFF;
        colour |= static_cast<std::uint32_t>(low + (high - low) * std::clamp(way, 0.0, 1.0) + 0.5) << shift;
    }
    return colour;
}

namespace {

// The colours from where they begin, in the order of the travel: of a reversed range the zones end where
// those of one that is not begin.
std::vector<ColourRun> Ordered(const TravelRange& range, const std::vector<Zone>& zones, std::uint32_t plain,
                               std::int32_t length) {
    std::vector<ColourRun> runs;
    const bool isReversed = range.minimum > range.maximum;
    std::int32_t at = isReversed ? length : 0;
    std::uint32_t colour = plain;
    const auto end = [&](std::int32_t edge, std::uint32_t next) {
        if (edge != at) {
            runs.push_back({isReversed ? Span{edge, at} : Span{at, edge}, colour});
        }
        at = edge;
        colour = next;
    };
    for (const Zone& zone : zones) {
        if (zone.from <= range.Upper()) {
            end(range.Edge(zone.from, length), zone.colour);
        }
    }
    end(isReversed ? 0 : length, colour);
    if (isReversed) {
        std::ranges::reverse(runs);
    }
    return runs;
}

} // namespace

std::vector<ColourRun> ZoneRuns(const TravelRange& range, const std::vector<Zone>& zones, std::uint32_t plain,
                                std::int32_t length) {
    return Ordered(range, zones, plain, std::max(length, 0));
}

std::vector<ColourRun> GradientRuns(const TravelRange& range, const std::vector<Zone>& zones,
                                    std::uint32_t plain, std::int32_t length) {
    const std::vector<ColourRun> blocks = ZoneRuns(range, zones, plain, length);
    const bool isReversed = range.minimum > range.maximum;
    std::vector<ColourRun> runs;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const Span span = blocks[i].span;
        std::uint32_t begin = blocks[i].colour;
        std::uint32_t end = begin;
        if (zones.empty()) {
            begin = Blend(0, plain, 0.5);
        } else if (const std::size_t next = isReversed ? i - 1 : i + 1; next < blocks.size()) {
            end = blocks[next].colour;
        }
        if (isReversed) {
            std::swap(begin, end);
        }
        for (std::int32_t at = span.first; at < span.last; ++at) {
            const std::uint32_t colour =
                Blend(begin, end, (at - span.first + 0.5) / (span.last - span.first));
            if (!runs.empty() && runs.back().colour == colour) {
                runs.back().span.last = at + 1;
            } else {
                runs.push_back({{at, at + 1}, colour});
            }
        }
    }
    return runs;
}

std::vector<ColourRun> DrawnRuns(const std::vector<ColourRun>& runs, const Span& part, std::int32_t segment) {
    std::vector<ColourRun> drawn;
    auto run = runs.begin();
    for (std::int32_t at = part.first; at < part.last;) {
        const std::int32_t end = segment > 0 ? std::min((at / segment + 1) * segment, part.last) : part.last;
        const std::int32_t deciding = segment > 0 ? (at + end - 1) / 2 : at;
        while (run != runs.end() && run->span.last <= deciding) {
            ++run;
        }
        if (run == runs.end()) {
            break;
        }
        const std::int32_t next = segment > 0 ? end : std::min(run->span.last, end);
        const Span span{at, segment > 0 ? next - 1 : next};
        if (!span.IsEmpty()) {
            drawn.push_back({span, run->colour});
        }
        at = next;
    }
    return drawn;
}

void BarMotion::Reset(float value, std::uint32_t now) {
    value_ = value;
    shown_ = peak_ = value;
    advanced_ = peakSince_ = now;
}

void BarMotion::Take(float value, std::uint32_t now) {
    Advance(now);
    value_ = value;
    if (fall <= 0 || value > shown_) {
        shown_ = value;
    }
    Raise(now);
}

void BarMotion::Advance(std::uint32_t now) {
    const double seconds = static_cast<double>(now - advanced_) / 1000;
    advanced_ = now;
    shown_ = fall > 0 ? std::max<double>(shown_ - fall * seconds, value_) : value_;
    Raise(now);
}

// A peak that the bar has reached, or that has stayed its time, is where the bar ends.
void BarMotion::Raise(std::uint32_t now) {
    if (shown_ >= peak_ || hold <= 0 || now - peakSince_ >= static_cast<std::uint32_t>(hold)) {
        peak_ = shown_;
        peakSince_ = now;
    }
}

void BarMotion::ClearPeak() {
    peak_ = shown_;
}

std::optional<float> BarMotion::Peak() const {
    return hold > 0 && peak_ > shown_ ? std::optional(static_cast<float>(peak_)) : std::nullopt;
}

std::optional<std::uint32_t> BarMotion::DueIn(std::uint32_t now) const {
    if (shown_ > value_) {
        return 0;
    }
    if (!Peak()) {
        return std::nullopt;
    }
    const std::uint32_t passed = now - peakSince_;
    const auto stay = static_cast<std::uint32_t>(hold);
    return passed < stay ? stay - passed : 0;
}

} // namespace logic
