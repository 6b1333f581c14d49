#include "logic/devices/Fade.h"

#include <algorithm>
#include <cmath>

namespace logic {

namespace {

// Of what a connection carries; the rest is for reading back, for whoever else sets something, and for what
// is lost.
constexpr double SHARE = 0.6;

bool IsMoved(ParameterType type, float minimum, float maximum) {
    return type == ParameterType::Float
               ? maximum > minimum
               : type == ParameterType::Integer && maximum - minimum >= FadeScale::LEAST_RANGE;
}

} // namespace

FadeScale::FadeScale(ParameterType type, float minimum, float maximum, std::string_view unit)
    : isWhole_(type == ParameterType::Integer), minimum_(minimum), maximum_(maximum) {
    if (IsMoved(type, minimum, maximum)) {
        kind_ = unit == "Hz" && minimum > 0 ? Kind::Ratios : Kind::Even;
    }
}

FadeScale::FadeScale(ParameterType type, float minimum, float maximum, const ParameterLaw& law)
    : FadeScale(type, minimum, maximum, "") {
    if (law.HasUnknown() || law.Wire() == WireType::Switch || law.Wire() == WireType::Text) {
        kind_ = Kind::None;
    } else if (Moves() && law.IsScale()) {
        kind_ = Kind::Law;
        law_ = law;
    }
}

double FadeScale::PositionOf(float value) const {
    if (!std::isfinite(value)) {
        return 0;
    }
    const double limited = std::clamp<double>(value, minimum_, maximum_);
    switch (kind_) {
    case Kind::Even:
        return (limited - minimum_) / (maximum_ - minimum_);
    case Kind::Ratios:
        return std::log(limited / minimum_) / std::log(maximum_ / minimum_);
    case Kind::Law:
        return static_cast<double>(law_->ToWire(static_cast<float>(limited)).value_or(0));
    default:
        return 0;
    }
}

float FadeScale::ValueAt(double position) const {
    const double limited = std::clamp(position, 0.0, 1.0);
    double value = minimum_;
    switch (kind_) {
    case Kind::Even:
        value = minimum_ + (maximum_ - minimum_) * limited;
        break;
    case Kind::Ratios:
        value = minimum_ * std::pow(maximum_ / minimum_, limited);
        break;
    case Kind::Law:
        value = std::clamp(static_cast<double>(law_->ToValue(limited)), minimum_, maximum_);
        break;
    default:
        break;
    }
    return static_cast<float>(isWhole_ ? std::round(value) : value);
}

double Fade::PositionAt(std::uint64_t now) const {
    if (IsOver(now)) {
        return to_;
    }
    const double part = now <= begin_ ? 0 : static_cast<double>(now - begin_) / duration_;
    return from_ + (to_ - from_) * part;
}

std::optional<double> Fade::Next(std::uint64_t now, double grain) {
    const double position = PositionAt(now);
    if (!IsOver(now) && (position == sent_ || std::fabs(position - sent_) < grain)) {
        return std::nullopt;
    }
    sent_ = position;
    return position;
}

double FadeGrain(double distances, std::uint32_t duration, std::uint32_t writesASecond) {
    constexpr double second = 1000; // milliseconds
    const double writes = SHARE * writesASecond * duration / second;
    return writes > 0 ? distances / writes : 0;
}

} // namespace logic
