// One output channel of a loudspeaker crossover: the block that is exchanged, its tables and its text form.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace logic {

struct CrossoverFilter {
    std::int32_t type = 0;  // index into the tables below
    float frequency = 0.0F; // Hz

    bool operator==(const CrossoverFilter&) const = default;
};

// What a device has as its filter pair.
struct CrossoverFilters {
    CrossoverFilter highPass;
    CrossoverFilter lowPass;

    bool operator==(const CrossoverFilters&) const = default;
};
static_assert(offsetof(CrossoverFilter, frequency) == 4 && offsetof(CrossoverFilters, lowPass) == 8 &&
                  sizeof(CrossoverFilters) == 16,
              "exchanged as bytes");

struct DelaySetting {
    std::int32_t bypass = 0; // 1: bypassed
    float amount = 0.0F;     // in the unit; not negative when stepped
    std::int32_t unit = 0;   // index into DELAY_UNITS

    bool operator==(const DelaySetting&) const = default;
};
static_assert(offsetof(DelaySetting, amount) == 4 && offsetof(DelaySetting, unit) == 8 &&
                  sizeof(DelaySetting) == 12,
              "exchanged as bytes");

struct Crossover {
    CrossoverFilters filters;
    float gain = 0.0F;         // dB
    std::int32_t polarity = 0; // 1: inverted
    DelaySetting delay;

    bool operator==(const Crossover&) const = default;
};
static_assert(offsetof(Crossover, gain) == 16 && offsetof(Crossover, polarity) == 20 &&
                  offsetof(Crossover, delay) == 24 && sizeof(Crossover) == 36,
              "exchanged as bytes");

constexpr std::int32_t CROSSOVER_TYPE_COUNT = 18;
// In texts.
constexpr std::array<std::string_view, CROSSOVER_TYPE_COUNT> CROSSOVER_KEYS{
    "OFF",    "BUTT6",  "S12Q05", "S12Q06", "S12Q07", "S12Q08", "S12Q10", "S12Q12", "S12Q15",
    "S12Q20", "BESS12", "BUTT12", "LINK12", "BESS18", "BUTT18", "BESS24", "BUTT24", "LINK24"};
// In lists.
constexpr std::array<std::string_view, CROSSOVER_TYPE_COUNT> CROSSOVER_NAMES{
    "thru",     "6dB",       "12dB/0.5",  "12dB/0.6",  "12dB/0.7",  "12dB/0.8",
    "12dB/1.0", "12dB/1.2",  "12dB/1.5",  "12dB/2.0",  "Bessel 12", "Butter 12",
    "Linkw 12", "Bessel 18", "Butter 18", "Bessel 24", "Butter 24", "Linkw 24"};

constexpr std::int32_t DELAY_UNIT_COUNT = 8;
constexpr std::array<std::string_view, DELAY_UNIT_COUNT> DELAY_UNITS{"ms", "samples", "ft", "in",
                                                                     "m",  "cm",      "us", "s"};
constexpr std::array<std::string_view, 2> POLARITIES{"normal", "inverted"};

constexpr float LOWEST_TRIM = -30.0F; // dB
constexpr float HIGHEST_TRIM = 6.0F;  // dB

// Whether all numbers are finite. Types and units may still be unknown ones.
bool IsSound(const CrossoverFilters& filters);
bool IsSound(const DelaySetting& delay);
bool IsSound(const Crossover& crossover);
// Whether it can be shown and set as it is: sound, of known types, polarity and unit.
bool IsKnown(const CrossoverFilters& filters);
bool IsKnown(const DelaySetting& delay);
bool IsKnown(const Crossover& crossover);
// A sound block as far as it is known; unknown types, polarities and units are those of the block that is
// held.
Crossover KnownOf(const Crossover& answered, const Crossover& held);
DelaySetting KnownOf(const DelaySetting& answered, const DelaySetting& held);

// "LINK24,80 Hz,OFF,20000 Hz": high-pass, low-pass.
std::string FiltersText(const CrossoverFilters& filters);
// "0,2.5 ms": bypass, amount and unit.
std::string DelayText(const DelaySetting& delay);
// The filters, gain, polarity and delay: "LINK24,80 Hz,OFF,20000 Hz,-3 dB,normal,0,2.5 ms".
std::string CrossoverText(const Crossover& crossover);

// Read as much of these as there is, from the front; an empty field leaves its member. Filter types by key or
// shown name, without regard to case; frequencies are limited to the range of the grid, the gain to its range
// and the delay from 0 on; units may be missing. Nothing when all fields are empty, one cannot be read or
// there is one too many.
std::optional<CrossoverFilters> ReadFilters(std::string_view text, const CrossoverFilters& before);
std::optional<DelaySetting> ReadDelay(std::string_view text, const DelaySetting& before);
std::optional<Crossover> ReadCrossover(std::string_view text, const Crossover& before);

// "2.5 ms", as it is shown and typed.
std::string DelayAmountText(const DelaySetting& delay);
// Reads "amount unit" into the setting; the unit and what is unreadable stay as they are. Returns how many of
// the two were there to read: 0, 1 or 2. An unknown unit word counts as one.
int ReadDelayAmount(std::string_view text, DelaySetting& delay);

// What is typed and stepped.
enum class CrossoverField { HighPassFrequency, LowPassFrequency, Gain, Delay };
// As it is shown. A frequency that was typed has all its digits.
std::string FieldText(const Crossover& crossover, CrossoverField field);
std::string TypedFieldText(const Crossover& crossover, CrossoverField field);
// Puts a typed text into the block, limited; null, or one that cannot be read: what is there, limited.
void TypeField(Crossover& crossover, CrossoverField field, const std::string* typed);
// Steps up, or down where negative: of the frequency grid, of 0.5 dB, of 1 in the unit of the delay.
void StepField(Crossover& crossover, CrossoverField field, int steps);

} // namespace logic
