// What the bar graph computes: where a value lies on its travel, which pixels are lit in which colour, and
// how the bar sinks and its peak stays.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace logic {

enum class Law { Linear, Logarithmic };

// A range that is laid out along a travel: "minimum" at its beginning and "maximum" at its end, whichever of
// them is the greater. A logarithmic one needs two ends above 0 and is linear without.
struct TravelRange {
    float minimum;
    float maximum;
    Law law = Law::Linear;

    float Lower() const { return minimum < maximum ? minimum : maximum; }
    float Upper() const { return minimum < maximum ? maximum : minimum; }
    // The nearest value of the range; its lower end for what is not a number.
    float Limit(float value) const;
    // 0 at the beginning to 1 at the end, for any value. 0 where the ends are equal.
    double Fraction(float value) const;
    // The nearest pixel edge, 0 to length.
    std::int32_t Edge(float value, std::int32_t length) const;
    bool operator==(const TravelRange&) const = default;
};

// Pixels along the travel, first included, last not.
struct Span {
    std::int32_t first = 0;
    std::int32_t last = 0;

    bool IsEmpty() const { return first >= last; }
    bool operator==(const Span&) const = default;
};
// What is drawn of a value: the bar, and the mark of its peak in the colours that the bar would have there.
struct BarSpans {
    Span lit;
    Span peak;
};
// What is drawn of one of the two and not of the other, in order and apart from each other.
std::vector<Span> Difference(const BarSpans& one, const BarSpans& other);

// What is lit from the origin to the value. Whole segments only where they have a length, which includes one
// pixel of gap at the end.
Span LitSpan(const TravelRange& range, float origin, float value, std::int32_t length, std::int32_t segment);

// Colours as 0x00bbggrr.
struct Zone {
    float from;
    std::uint32_t colour;
    bool operator==(const Zone&) const = default;
};
constexpr std::size_t MOST_ZONES = 64; // so that their text fits a property
// "-80=0x0040c040;0=0x000000ff" in any order, ascending in the result; an empty text has none. Nothing for
// any other text, for a value twice and for too many.
std::optional<std::vector<Zone>> ParseZones(std::string_view text);
std::string ZonesText(const std::vector<Zone>& zones);

// Colours along the travel, from one pixel to the next of which they only change where they must.
struct ColourRun {
    Span span;
    std::uint32_t colour;
    bool operator==(const ColourRun&) const = default;
};
// The zones, and below the lowest of them the plain colour.
std::vector<ColourRun> ZoneRuns(const TravelRange& range, const std::vector<Zone>& zones, std::uint32_t plain,
                                std::int32_t length);
// The same where each zone begins in its colour and blends into the next. Without zones the plain colour
// grows out of the half of it.
std::vector<ColourRun> GradientRuns(const TravelRange& range, const std::vector<Zone>& zones,
                                    std::uint32_t plain, std::int32_t length);

// What is drawn of the runs for that part of the travel. Each whole or broken segment has one colour and a
// gap of one pixel at its end.
std::vector<ColourRun> DrawnRuns(const std::vector<ColourRun>& runs, const Span& part, std::int32_t segment);
// The mark of a peak: two pixels below its edge, or the segment there.
Span PeakSpan(const TravelRange& range, float peak, std::int32_t length, std::int32_t segment);

// The colour that one is on the way to another, 0 to 1.
std::uint32_t Blend(std::uint32_t from, std::uint32_t to, double way);

// What a bar shows of a value in time. Times are tick counts in milliseconds, which may wrap.
class BarMotion {
public:
    std::int32_t hold = 0; // milliseconds that the peak stays; 0: there is none
    float fall = 0;        // units a second that the bar sinks at most; 0: at once

    // Shows the value at once, without a peak.
    void Reset(float value, std::uint32_t now);
    void Take(float value, std::uint32_t now);
    // Lets the bar sink and the peak expire.
    void Advance(std::uint32_t now);
    void ClearPeak();

    float Shown() const { return static_cast<float>(shown_); }
    // Above what is shown; nothing while there is none.
    std::optional<float> Peak() const;
    // Milliseconds until Advance changes something; nothing while it would not.
    std::optional<std::uint32_t> DueIn(std::uint32_t now) const;

private:
    void Raise(std::uint32_t now);

    float value_ = 0;
    double shown_ = 0;
    double peak_ = 0;
    std::uint32_t advanced_ = 0;
    std::uint32_t peakSince_ = 0;
};

} // namespace logic
