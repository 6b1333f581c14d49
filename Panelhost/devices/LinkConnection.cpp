#include "Panelhost/devices/LinkConnection.h"

#include "Panelhost/Devices.h"
#include "Panelhost/Trace.h"
#include "base/Guard.h"

#include <utility>

template <class Change>
bool LinkConnection::Put(Change change) {
    const std::lock_guard guard(lock_);
    const bool isFirst = asked_.IsEmpty();
    change(asked_);
    return isFirst;
}

bool LinkConnection::Want(std::vector<std::size_t> parameters) {
    return Put([&](Asked& asked) { asked.wanted = std::move(parameters); });
}

bool LinkConnection::Ask(std::size_t parameter) {
    return Put([&](Asked& asked) { asked.parameters.push_back(parameter); });
}

bool LinkConnection::Set(logic::LinkSetting setting) {
    return Put([&](Asked& asked) { asked.settings.push_back(std::move(setting)); });
}

bool LinkConnection::Switch(bool isOn) {
    return Put([&](Asked& asked) { asked.isOn = isOn; });
}

LinkConnection::News LinkConnection::TakeNews() {
    const std::lock_guard guard(lock_);
    isPosted_ = false;
    hasNews_ = false;
    return std::exchange(news_, {});
}

void LinkConnection::Leave() {
    const std::lock_guard guard(lock_);
    window_ = nullptr;
}

void LinkConnection::CarryOut(logic::Milliseconds now) {
    Asked asked;
    {
        const std::lock_guard guard(lock_);
        asked = std::exchange(asked_, {});
    }
    if (asked.isOn) {
        link_->Switch(*asked.isOn, now);
    }
    if (asked.wanted) {
        link_->Want(*asked.wanted, now);
    }
    for (const std::size_t parameter : asked.parameters) {
        link_->Ask(parameter, now);
    }
    for (const logic::LinkSetting& setting : asked.settings) {
        link_->Set(setting, now);
    }
}

logic::Milliseconds LinkConnection::Work(logic::Milliseconds now) {
    if (link_ == nullptr) {
        link_ = Open(now);
    }
    CarryOut(now);
    const bool isAll = Receive(*link_, now);
    const logic::Milliseconds next = link_->Step(now);
    if (hasNews_ && !isPosted_.exchange(true)) {
        Post();
    }
    return isAll ? next : now;
}

void LinkConnection::End(logic::Milliseconds now) {
    if (link_ != nullptr) {
        CarryOut(now);
        link_->Finish(now);
        link_.reset();
    }
}

void LinkConnection::Fail() noexcept {
    const std::lock_guard guard(lock_);
    device_.state = logic::DeviceState::Lost;
    device_.since = NetworkClock();
    news_.device.reset();
    Guarded([this] { news_.device = device_; });
    hasNews_ = true;
    if (window_ != nullptr) {
        PostMessageA(window_, DEVICE_NEWS, 0, 0);
    }
}

void LinkConnection::Post() {
    const std::lock_guard guard(lock_);
    if (window_ == nullptr || !PostMessageA(window_, DEVICE_NEWS, 0, 0)) {
        isPosted_ = false; // the next tick finds them
    }
}

void LinkConnection::Tell(std::size_t parameter, const logic::ParameterUpdate& update) {
    const std::lock_guard guard(lock_);
    news_.parameters[parameter] = update;
    hasNews_ = true;
}

void LinkConnection::Tell(const logic::DeviceUpdate& update) {
    const std::lock_guard guard(lock_);
    device_ = update;
    news_.device = update;
    hasNews_ = true;
}

void LinkConnection::Trace(const std::string& text) {
    TRACE("%s\n", text.c_str());
}
