#include "Panelhost/snapshots/Recall.h"

#include "Panelhost/Hostinfo.h"
#include "Panelhost/Trace.h"
#include "logic/text/Numbers.h"

#include <algorithm>
#include <limits>
#include <unordered_set>
#include <utility>

namespace {

constexpr int TRIES = 3;
// A panel that could not tick for a while makes a fade longer: the way is made in steps of at most 1/40 of
// the time, or of so many milliseconds.
constexpr std::uint64_t STEPS = 40;
constexpr std::uint64_t LEAST_STEP = 40;
constexpr std::uint64_t START_PATIENCE = 3000;   // for the value that a fade starts from
constexpr std::uint64_t SETTLE_PATIENCE = 15000; // for a value to be confirmed

} // namespace

int Recall::Start(const std::vector<logic::SnapshotValue>& values, int milliseconds,
                  const std::string& name) {
    name_ = name;
    duration_ = static_cast<std::uint32_t>(std::clamp(milliseconds, 0, logic::LONGEST_FADE));
    devices_.clear();
    if (underWay_.empty()) {
        lastTick_ = GetTickCount64();
    }
    Values fresh;
    fresh.reserve(values.size());
    std::unordered_set<const void*> named;
    named.reserve(values.size());
    HOSTINFO* device = nullptr; // most values are of the same one as the value before
    std::string_view deviceName;
    for (const logic::SnapshotValue& given : values) {
        auto value = std::make_shared<Value>();
        value->report = {given.address, given.text, RECALL_UNDER_WAY, {}};
        const std::size_t star = given.address.rfind('*');
        const std::string_view object = std::string_view(given.address).substr(0, star);
        if (device == nullptr || object != deviceName) {
            device = a_FindHostinfo(&root_, std::string(object).c_str());
            deviceName = object;
        }
        value->device = star == std::string::npos ? nullptr : dynamic_cast<DEVICE*>(device);
        value->keyword = value->report.address.c_str() + (star == std::string::npos ? 0 : star + 1);
        if (Admit(*value) && !named.insert(value->item.context).second) {
            End(*value, RECALL_FAILED, "stands twice in the snapshot");
        }
        fresh.push_back(std::move(value));
    }
    std::erase_if(underWay_, [&](const auto& value) { return named.contains(value->item.context); });
    values_ = underWay_;
    values_.insert(values_.end(), fresh.begin(), fresh.end());

    const std::uint64_t now = GetTickCount64();
    int started = 0;
    Values moving;
    for (const auto& value : fresh) { // whatever is made of numbers comes before these
        if (value->report.state != RECALL_UNDER_WAY) {
            continue;
        }
        if (duration_ > 0 && value->scale.Moves()) {
            moving.push_back(value);
        } else if (SetTarget(*value)) {
            Settle(*value, now);
        }
        underWay_.push_back(value);
    }
    for (const auto& value : moving) {
        value->phase = Phase::Waits;
        value->patience = now + START_PATIENCE;
        Begin(*value, now);
    }
    for (const auto& value : fresh) {
        started += value->report.state == RECALL_UNDER_WAY || value->report.state == RECALL_DONE ? 1 : 0;
    }
    Finish();
    return started;
}

// What can be set at all, now.
bool Recall::Admit(Value& value) {
    value.item.device = value.device;
    value.item.life = a_LifeOf(value.device);
    if (value.device == nullptr || value.device->OnRequestList(reinterpret_cast<WPARAM>(value.keyword),
                                                               reinterpret_cast<LPARAM>(&value.item)) == 0) {
        End(value, RECALL_FAILED, "not there");
    } else if (!value.device->OnIsRecallable(value.keyword, &value.scale)) {
        End(value, RECALL_FAILED, "cannot be set");
    } else if (const DeviceNow& now = Now(*value.device); !now.objection.empty()) {
        End(value, RECALL_FAILED, now.objection);
    } else if (value.scale.Moves()) {
        const auto number = logic::ParseWholeFloat(value.report.text);
        if (number) {
            value.target = *number;
        } else {
            value.scale = {}; // with its unit, perhaps: as a text
        }
    }
    return value.report.state == RECALL_UNDER_WAY;
}

Recall::DeviceNow& Recall::Now(DEVICE& device) {
    const auto found = std::ranges::find(devices_, &device, &DeviceNow::device);
    if (found != devices_.end()) {
        return *found;
    }
    DeviceNow now{&device, {}, 0, device.OnWriteRate()};
    if (const DEVICESTATUS status = device.OnStatus();
        status.state != DEVICE_LIVE && status.state != DEVICE_OPEN) {
        now.objection = a_WhyNotLive(status);
    }
    return devices_.emplace_back(std::move(now));
}

bool Recall::Get(const Value& value, float& number) const {
    number = std::numeric_limits<float>::quiet_NaN(); // which nobody holds
    return a_SendToItem(value.item, COMMAND_GET, DATATYPE_FLOAT, &number) >= 0 &&
           a_IsSoundValue(DATATYPE_FLOAT, &number);
}

bool Recall::Set(Value& value, float number) {
    const bool wasSending = std::exchange(isSending_, true);
    const int answer = a_SendToItem(value.item, COMMAND_SET, DATATYPE_FLOAT, &number);
    isSending_ = wasSending;
    if (answer < 0) {
        End(value, RECALL_FAILED, "refused");
        return false;
    }
    if (!Get(value, value.held)) {
        value.held = number;
    }
    return true;
}

bool Recall::SetTarget(Value& value) {
    value.phase = Phase::Settles;
    value.patience = GetTickCount64() + SETTLE_PATIENCE;
    if (value.scale.Moves()) {
        return Set(value, value.target);
    }
    std::string text = value.report.text;
    const bool wasSending = std::exchange(isSending_, true);
    const int answer = a_SendToItem(value.item, COMMAND_SET, DATATYPE_TEXT, text.data());
    isSending_ = wasSending;
    if (answer < 0) {
        End(value, RECALL_FAILED, "refused");
    }
    return answer >= 0;
}

// The way is known once it is known where it begins.
void Recall::Begin(Value& value, std::uint64_t now) {
    if (float start = 0; Get(value, start)) {
        value.held = start;
        value.phase = Phase::Moves;
        value.fade = logic::Fade(value.scale.PositionOf(start), value.scale.PositionOf(value.target), time_,
                                 duration_);
    } else if (now >= value.patience) {
        SetTarget(value);
    }
}

void Recall::Tick() {
    if (underWay_.empty()) {
        return;
    }
    const std::uint64_t now = GetTickCount64();
    time_ +=
        std::min(now - std::exchange(lastTick_, now), std::max<std::uint64_t>(LEAST_STEP, duration_ / STEPS));
    devices_.clear();
    const Values values = underWay_;
    for (const auto& value : values) {
        if (!a_IsAlive(value->device)) {
            End(*value, RECALL_FAILED, "not there");
        } else if (const std::string& objection = Now(*value->device).objection; !objection.empty()) {
            End(*value, RECALL_FAILED, objection);
        } else if (value->phase == Phase::Moves) {
            Now(*value->device).distances += value->fade.Distance();
        }
    }
    for (const auto& value : values) {
        if (value->report.state == RECALL_UNDER_WAY) {
            Step(*value, now);
        }
    }
    Finish();
}

void Recall::Step(Value& value, std::uint64_t now) {
    switch (value.phase) {
    case Phase::Waits:
        return Begin(value, now);
    case Phase::Moves:
        return Move(value);
    case Phase::Settles:
        return Settle(value, now);
    }
}

// A real device may hold an older value for a while, as one of the newer ones was lost; only what waits to be
// sent is certainly the last that was set.
bool Recall::IsOvertaken(const Value& value, int state) const {
    float held = 0;
    return (state == PARAMETER_PENDING || value.device->OnWriteRate() == 0) && Get(value, held) &&
           held != value.held;
}

void Recall::Move(Value& value) {
    DWORD age = NO_AGE;
    if (IsOvertaken(value, value.device->OnParameterState(value.keyword, &age))) {
        return End(value, RECALL_OVERTAKEN, "set by somebody else meanwhile");
    }
    const DeviceNow& device = Now(*value.device);
    const double grain = logic::FadeGrain(device.distances, duration_, device.rate);
    const auto position = value.fade.Next(time_, grain);
    if (!position) {
        return;
    }
    if (value.fade.IsOver(time_)) {
        SetTarget(value);
    } else if (const float number = value.scale.ValueAt(*position); number != value.held) {
        Set(value, number);
    }
}

void Recall::Settle(Value& value, std::uint64_t now) {
    DWORD age = NO_AGE;
    const int state = value.device->OnParameterState(value.keyword, &age);
    switch (state) {
    case PARAMETER_LIVE: {
        if (float number = value.target;
            value.scale.Moves() && a_SendToItem(value.item, COMMAND_GET, DATATYPE_FLOAT, &number) == 0) {
            return End(value, RECALL_DONE);
        }
        if (value.device->OnHolds(value.keyword, value.report.text)) {
            return End(value, RECALL_DONE);
        }
        std::string held;
        int result = 0;
        value.device->OnGet(value.keyword, held, &result);
        return Again(value, "holds " + held);
    }
    case PARAMETER_SENT:
        return End(value, RECALL_DONE);
    case PARAMETER_UNCONFIRMED:
        return Again(value, "not confirmed");
    case PARAMETER_NONE:
        return End(value, RECALL_FAILED, "not there");
    default:
        if (now >= value.patience) {
            Again(value, state == PARAMETER_PENDING ? "not confirmed" : "does not answer");
        }
    }
}

void Recall::Again(Value& value, const std::string& why) {
    if (++value.tries == TRIES) {
        End(value, RECALL_FAILED, why);
    } else {
        SetTarget(value);
    }
}

void Recall::End(Value& value, int state, const std::string& why) {
    value.report.state = state;
    value.report.why = why;
}

void Recall::Overtake(const REQUESTITEM& item) {
    if (isSending_) {
        return;
    }
    for (const auto& value : underWay_) {
        if (value->item.context == item.context && value->item.handler == item.handler) {
            End(*value, RECALL_OVERTAKEN, "set by somebody else meanwhile");
        }
    }
}

void Recall::Leave(const HOSTINFO* device) {
    bool hasEnded = false;
    for (const auto& value : underWay_) {
        if (value->device == device && value->report.state == RECALL_UNDER_WAY) {
            End(*value, RECALL_FAILED, "not there");
            hasEnded = true;
        }
    }
    if (hasEnded) {
        Finish();
    }
}

int Recall::Stop() {
    const int count = static_cast<int>(std::ranges::count(
        underWay_, RECALL_UNDER_WAY, [](const auto& value) { return value->report.state; }));
    for (const auto& value : underWay_) {
        if (value->report.state == RECALL_UNDER_WAY) {
            End(*value, RECALL_STOPPED, "stopped");
        }
    }
    Finish();
    return count;
}

void Recall::Clear() {
    values_.clear();
    underWay_.clear();
    devices_.clear();
}

std::vector<RECALLEDVALUE> Recall::List() const {
    std::vector<RECALLEDVALUE> list;
    list.reserve(values_.size());
    for (const auto& value : values_) {
        list.push_back(value->report);
    }
    return list;
}

// Whoever has no window for the report reads in the trace what was not set.
void Recall::Finish() {
    std::erase_if(underWay_, [](const auto& value) { return value->report.state != RECALL_UNDER_WAY; });
    if (!underWay_.empty()) {
        return;
    }
    const auto failed = [](const auto& value) { return value->report.state == RECALL_FAILED; };
    const auto count = std::ranges::count_if(values_, failed);
    if (const std::string name = std::exchange(name_, {}); count > 0 && !name.empty()) {
        const RECALLEDVALUE first = (*std::ranges::find_if(values_, failed))->report;
        EDITTRACE(&root_, "Not all of a snapshot could be set: %s",
                  (name + ", " + std::to_string(count) + " of " + std::to_string(values_.size()) +
                   " values, the first of them " + first.address + ": " + first.why)
                      .c_str());
    }
}
