#include "logic/controls/FaderLogic.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr float PAGE_STEPS = 10.0F;

double Span(const FaderRange& range) {
    return static_cast<double>(range.maximum) - range.minimum;
}

std::int32_t Length(const FaderShape& shape) {
    return shape.IsVertical() ? shape.height : shape.width;
}

// Up to here a knob can be dragged.
std::int32_t DragTravel(const FaderShape& shape) {
    return Length(shape) - shape.knobHeight + 1;
}

} // namespace

std::int32_t FaderShape::Way() const {
    return std::max(DragTravel(*this) - (IsVertical() ? 1 : 0), 0);
}

LimitedValue LimitFader(float value, const FaderRange& range) {
    const float stepped = RoundToStep(value, range.resolution);
    const float limited =
        Clamp(stepped, static_cast<float>(range.minimum), static_cast<float>(range.maximum));
    return {limited, limited != stepped};
}

std::int32_t LimitFaderInteger(std::int32_t value, const FaderRange& range) {
    if (range.resolution != 0.0F) {
        value = TruncateToInteger(RoundToStep(static_cast<float>(value), range.resolution));
    }
    if (value < range.minimum) {
        return range.minimum;
    }
    return std::min(value, range.maximum);
}

bool IsShortResolution(float resolution) {
    constexpr std::size_t length = 5;
    return ParseWholeFloat(FormatFloat(resolution).substr(0, length)) == resolution;
}

std::optional<float> StepFader(float value, FaderKey key, const FaderRange& range) {
    if (key == FaderKey::End) {
        return static_cast<float>(range.minimum);
    }
    if (key == FaderKey::Home) {
        return static_cast<float>(range.maximum);
    }
    const float step = range.resolution;
    if (step == 0.0F || !std::isfinite(step)) {
        return std::nullopt;
    }
    switch (key) {
    case FaderKey::PageUp:
        return value + PAGE_STEPS * step;
    case FaderKey::PageDown:
        return value - PAGE_STEPS * step;
    case FaderKey::Up:
    case FaderKey::Right:
        return value + step;
    default:
        return value - step;
    }
}

bool FaderKnob::Place(float value, const FaderRange& range, const FaderShape& shape) {
    shape_ = shape;
    const std::int32_t travel = shape.Way();
    const double span = Span(range);
    const double share = span == 0.0 ? 0.0 : (static_cast<double>(value) - range.minimum) / span;
    const std::int32_t fromMinimum = std::clamp(TruncateToInteger(share * travel + 0.5), 0, travel);
    const std::int32_t position = shape.IsVertical() ? travel - fromMinimum : fromMinimum;
    return std::exchange(Position(), position) != position;
}

bool FaderKnob::Hold(FaderPoint point) {
    const bool vertical = shape_.IsVertical();
    const std::int32_t along = vertical ? point.y : point.x;
    const std::int32_t across = vertical ? point.x : point.y;
    const std::int32_t breadth = vertical ? shape_.width : shape_.height;
    if (along < Position() || along - Position() >= shape_.knobHeight || across < 0 || across >= breadth) {
        return false;
    }
    anchor_ = along;
    return true;
}

std::optional<FaderPoint> FaderKnob::Drag(FaderPoint pointer) {
    const std::int32_t along = shape_.IsVertical() ? pointer.y : pointer.x;
    const std::int32_t travel = DragTravel(shape_);
    if (along == anchor_ || travel <= 0) {
        return std::nullopt;
    }
    const std::int32_t moved = Position() + (along - anchor_);
    Position() = std::clamp(moved, 0, travel);
    anchor_ = along - (moved - Position());
    return shape_.IsVertical() ? FaderPoint{std::clamp(pointer.x, 0, shape_.width), anchor_}
                               : FaderPoint{anchor_, std::clamp(pointer.y, 0, shape_.height)};
}

float FaderKnob::Value(const FaderRange& range) const {
    const auto travel = static_cast<double>(DragTravel(shape_));
    const double fromMinimum = shape_.IsVertical() ? travel - top_ : left_;
    const double share = travel > 0 ? fromMinimum / travel : 0.0;
    return RoundToStep(static_cast<float>(share * Span(range) + range.minimum), range.resolution);
}

std::string OffsetsText(const std::vector<OffsetRecord>& records, float OffsetRecord::*member) {
    std::string text;
    for (const OffsetRecord& record : records) {
        if (!text.empty()) {
            text += ',';
        }
        text += FormatFloat(record.*member) + ',';
    }
    return text;
}

void AppendOffset(std::vector<OffsetRecord>& records, const OffsetRecord& record) {
    if (records.size() >= MAXIMUM_OFFSETS) {
        throw std::length_error("list<T> too long");
    }
    records.push_back(record);
}

} // namespace logic
