// One band of an equaliser: the block that is exchanged with a device, and its text form.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace logic {

enum FilterType : std::int32_t { Peak, LowShelf, HighShelf, HighPass, LowPass, AllPass, filterTypeCount };

// Shown in lists and used in texts; the index is the filter type.
constexpr std::array<std::string_view, filterTypeCount> FILTER_TYPE_NAMES{"PEQ",    "Loshelv", "Hishelv",
                                                                          "Hipass", "Lopass",  "Allpass"};

struct EqBand {
    std::int32_t bypass = 0; // 1: bypassed
    std::int32_t type = Peak;
    float frequency = 0.0F; // Hz
    float gain = 0.0F;      // dB
    float q = 0.0F;         // quality factor
    std::int32_t slope = 1; // 1 or 2: 6 or 12 dB an octave; first or second order of an all-pass

    bool operator==(const EqBand&) const = default;
};
static_assert(offsetof(EqBand, type) == 4 && offsetof(EqBand, frequency) == 8 &&
                  offsetof(EqBand, gain) == 12 && offsetof(EqBand, q) == 16 &&
                  offsetof(EqBand, slope) == 20 && sizeof(EqBand) == 24,
              "exchanged as bytes");

// Shown in lists; the index is the slope less 1.
constexpr std::array<std::string_view, 2> FILTER_SLOPES{"6dB/Oct", "12dB/Oct"};
constexpr std::array<std::string_view, 2> FILTER_ORDERS{"first", "second"}; // of an all-pass

constexpr float LOWEST_EQ_GAIN = -18.0F; // dB
constexpr float HIGHEST_EQ_GAIN = 12.0F; // dB
constexpr float LOWEST_Q = 0.1F;
constexpr float HIGHEST_Q = 100.0F;
constexpr float HIGHEST_PASS_Q = 2.0F; // of the types that are limited in it

// Whether all numbers are finite. Types and slopes may still be unknown ones.
bool IsSound(const EqBand& band);
// Whether it can be shown and set as it is: sound, of a known type and slope.
bool IsKnown(const EqBand& band);
// A sound block as far as it is known; an unknown type or slope is that of the block that is held.
EqBand KnownOf(const EqBand& answered, const EqBand& held);

// "%d,%s,%d dB,%g Hz,%g dB,%g": bypass, type, slope in dB an octave, frequency, gain, Q.
std::string EqBandText(const EqBand& band);
// Reads as much of that as there is, from the front: units may be missing, type names are compared without
// regard to case, empty fields are skipped. The slope in dB an octave is converted with (dB + 2) / 6 and
// limited to 0 to 2; the frequency is limited to 0 to 20000 (its lower end is deliberately not that of
// typing). Nothing when there is no field, one too many, or one that cannot be read.
std::optional<EqBand> ReadEqBand(std::string_view text, const EqBand& before);

// How many filter types, from the first on, a device of that name has: the name goes up to the first "_".
int OfferedFilterTypes(std::string_view device, bool isMaster);

// What can be edited of a band.
constexpr bool HasGain(std::int32_t type) {
    return type >= Peak && type <= HighShelf;
}
constexpr bool HasQ(std::int32_t type, std::int32_t slope) {
    return type == Peak || (type >= HighPass && slope == 2);
}
constexpr bool HasSlope(std::int32_t type) {
    return type >= LowShelf;
}

// The highest Q of a type. Bandwidth deliberately limits only the all-pass.
float HighestQ(std::int32_t type, bool asBandwidth);
// A Q as it is typed, or a bandwidth in octaves, limited to what the type allows; the result is a Q.
float TypedQ(float typed, std::int32_t type, bool asBandwidth);
// Steps up (down where negative) of 0.1, or of 0.1 octaves of bandwidth, likewise limited. The same Q where
// that changes nothing.
float StepQ(float q, int steps, std::int32_t type, bool asBandwidth);

// The numbers of a band that are typed and stepped.
enum class EqField { Gain, Frequency, Q };
float FieldOf(const EqBand& band, EqField field);
// As it is shown. A frequency that was typed has a digit behind the point always.
std::string FieldText(const EqBand& band, EqField field, bool asBandwidth);
std::string TypedFieldText(const EqBand& band, EqField field, bool asBandwidth);
// Puts a typed number into the band, limited; nothing: the number that is there, limited.
void TypeField(EqBand& band, EqField field, std::optional<float> typed, bool asBandwidth);
// Steps up, or down where negative. Whether that changed the band.
bool StepField(EqBand& band, EqField field, int steps, bool asBandwidth);

// A new type or slope: a pass filter of 12 dB an octave has a Q of 2 at most. Whether that changed it.
bool LimitPassQ(EqBand& band);

} // namespace logic
