#include "logic/devices/ParameterLaw.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr std::size_t MOST_POINTS = 16;
constexpr std::size_t MOST_PARTNERS = 256;
constexpr std::int32_t MOST_STEPS = 1'000'000;

// Takes the part up to the next comma off the text.
std::string_view TakeField(std::string_view& text) {
    const std::size_t end = std::min(text.find(','), text.size());
    const std::string_view field = TrimBlanks(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    return field;
}

std::optional<std::int32_t> ReadSteps(std::string_view field) {
    const auto steps = ParseWholeInteger(field);
    return steps && *steps >= 0 && *steps <= MOST_STEPS ? steps : std::nullopt;
}

// "wire:value,..."; Read reads either number.
template <class Read>
std::optional<std::vector<std::pair<double, double>>> ReadPairs(std::string_view text, Read read) {
    std::vector<std::pair<double, double>> pairs;
    for (const std::string_view field : SplitFields(text, ',')) {
        const std::size_t colon = std::min(field.find(':'), field.size());
        const auto wire = read(field.substr(0, colon));
        const auto value = read(field.substr(std::min(colon + 1, field.size())));
        if (!wire || !value) {
            return std::nullopt;
        }
        pairs.emplace_back(*wire, *value);
    }
    return pairs;
}

} // namespace

std::optional<ParameterLaw> ParameterLaw::Parse(std::string_view text) {
    ParameterLaw law;
    if (const std::size_t comma = text.rfind(',');
        comma != std::string_view::npos && TrimBlanks(text.substr(comma + 1)) == "trigger") {
        law.isTrigger_ = true;
        text = text.substr(0, comma);
    }
    const std::string_view wire = TakeField(text);
    if (wire.size() != 1) {
        return std::nullopt;
    }
    switch (wire.front()) {
    case 'i':
        law.wire_ = WireType::Integer;
        break;
    case 'f':
        law.wire_ = WireType::Float;
        break;
    case 's':
        law.wire_ = WireType::Text;
        break;
    case 'T':
        law.wire_ = WireType::Switch;
        break;
    default:
        return std::nullopt;
    }
    const std::string_view kind = TakeField(text);
    return law.ReadKind(kind, text) ? std::optional(std::move(law)) : std::nullopt;
}

bool ParameterLaw::ReadKind(std::string_view word, std::string_view rest) {
    if (word == "same" || word == "not") {
        kind_ = word == "same" ? Kind::Same : Kind::Not;
        return rest.empty() && (kind_ == Kind::Same || wire_ != WireType::Text);
    }
    if (word == "map") {
        kind_ = Kind::Map;
        return wire_ == WireType::Integer && ReadMap(rest);
    }
    if (wire_ != WireType::Float) {
        return false;
    }
    if (word == "linear" || word == "log") {
        kind_ = word == "linear" ? Kind::Linear : Kind::Logarithmic;
        return ReadRange(rest);
    }
    if (word == "points") {
        kind_ = Kind::Points;
        return ReadPoints(rest);
    }
    kind_ = Kind::Amplitude;
    return word == "amplitude" && rest.empty() && !isTrigger_;
}

bool ParameterLaw::ReadRange(std::string_view text) {
    const auto steps = ReadSteps(TakeField(text));
    const auto first = ParseWholeFloat(TakeField(text));
    const auto last = ParseWholeFloat(TakeField(text));
    if (!steps || !first || !last || !text.empty() || *first == *last ||
        (kind_ == Kind::Logarithmic && std::min(*first, *last) <= 0)) {
        return false;
    }
    steps_ = *steps;
    first_ = *first;
    last_ = *last;
    return true;
}

bool ParameterLaw::ReadPoints(std::string_view text) {
    const auto steps = ReadSteps(TakeField(text));
    auto points = ReadPairs(text, ParseWholeFloat);
    if (!steps || !points || points->size() < 2 || points->size() > MOST_POINTS ||
        points->front().first != 0 || points->back().first != 1 ||
        std::ranges::adjacent_find(*points, [](const Pair& point, const Pair& next) {
            return next.first <= point.first || next.second <= point.second;
        }) != points->end()) {
        return false;
    }
    steps_ = *steps;
    pairs_ = std::move(*points);
    return true;
}

bool ParameterLaw::ReadMap(std::string_view text) {
    auto partners = ReadPairs(text, ParseWholeInteger);
    if (!partners || partners->size() > MOST_PARTNERS) {
        return false;
    }
    for (auto one = partners->begin(); one != partners->end(); ++one) {
        if (std::any_of(partners->begin(), one, [one](const Pair& other) {
                return other.first == one->first || other.second == one->second;
            })) {
            return false;
        }
    }
    pairs_ = std::move(*partners);
    return true;
}

float ParameterLaw::ToValue(double wire) const {
    double value = wire;
    switch (kind_) {
    case Kind::Same:
        break;
    case Kind::Not:
        value = 1 - wire;
        break;
    case Kind::Linear:
        value = first_ + (last_ - first_) * wire;
        break;
    case Kind::Logarithmic:
        value = first_ * std::pow(last_ / first_, wire);
        break;
    case Kind::Points: {
        const auto next = std::find_if(pairs_.begin() + 1, pairs_.end() - 1,
                                       [wire](const Pair& point) { return wire <= point.first; });
        const Pair& from = *(next - 1);
        value = from.second + (next->second - from.second) * (wire - from.first) / (next->first - from.first);
        break;
    }
    case Kind::Map: {
        const auto partner = std::ranges::find(pairs_, wire, &Pair::first);
        value = partner == pairs_.end() ? UNKNOWN : partner->second;
        break;
    }
    case Kind::Amplitude: {
        constexpr double decibels = 20; // a factor of ten
        value = wire <= 0 ? -std::numeric_limits<double>::max() : decibels * std::log10(wire);
        break;
    }
    }
    constexpr double most = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -most, most));
}

std::optional<float> ParameterLaw::ToWire(float value) const {
    if (!std::isfinite(value) || !CanBeSet()) {
        return std::nullopt;
    }
    double wire = value;
    switch (kind_) {
    case Kind::Same:
    case Kind::Amplitude:
        break;
    case Kind::Not:
        wire = 1 - wire;
        break;
    case Kind::Linear:
        wire = (wire - first_) / (last_ - first_);
        break;
    case Kind::Logarithmic:
        wire = wire <= 0 ? (first_ < last_ ? 0 : 1) : std::log(wire / first_) / std::log(last_ / first_);
        break;
    case Kind::Points: {
        const auto next = std::find_if(pairs_.begin() + 1, pairs_.end() - 1,
                                       [wire](const Pair& point) { return wire <= point.second; });
        const Pair& from = *(next - 1);
        wire = from.first + (next->first - from.first) * (wire - from.second) / (next->second - from.second);
        break;
    }
    case Kind::Map: {
        const auto partner = std::ranges::find(pairs_, std::round(wire), &Pair::second);
        if (partner == pairs_.end()) {
            return std::nullopt;
        }
        wire = partner->first;
        break;
    }
    }
    if (IsScale()) {
        wire = std::clamp(wire, 0.0, 1.0);
        wire = steps_ > 0 ? std::round(wire * steps_) / steps_ : wire;
    }
    if (wire_ == WireType::Integer) {
        wire = std::round(wire);
        if (wire != TruncateToInteger(wire)) {
            return std::nullopt;
        }
    } else if (wire_ == WireType::Switch) {
        wire = wire != 0 ? 1 : 0;
    }
    return static_cast<float>(wire);
}

bool ParameterLaw::IsSame(double sent, double answered, float range) const {
    constexpr double looseness = 1e-3; // devices round on their own
    const double allowed = wire_ != WireType::Float ? 0
                           : IsScale()              ? (steps_ > 0 ? 0.5 / steps_ : looseness)
                                                    : looseness * static_cast<double>(range);
    return std::fabs(sent - answered) <= allowed;
}

} // namespace logic
