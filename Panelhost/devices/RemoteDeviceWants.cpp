// Which parameters of a real device are read: those that controls on shown layers are bound to, and those
// that somebody asked for lately.

#include "Panelhost/devices/RemoteDevice.h"

#include "Panelhost/objects/PanelRoot.h"
#include "logic/controls/Layers.h"

namespace {

constexpr logic::Milliseconds ASK_AGAIN_AFTER = 3000; // the link takes it for longer that somebody asks

} // namespace

void RemoteDevice::FollowBindings() {
    const PanelRoot* root = PanelRoot::Above(this);
    if (root == nullptr || bindings_ == root->BindingVersion()) {
        return;
    }
    bindings_ = root->BindingVersion();
    for (const auto& parameter : parameters_) {
        parameter->isBound = false;
    }
    std::vector<bool> wanted(declared_);
    const auto add = [&](const REQUESTLIST& list, bool isShown) {
        for (const REQUESTITEM& item : list) {
            if (item.device != this || item.handler != HandleRequest) {
                continue;
            }
            auto& parameter = *static_cast<Parameter*>(item.context);
            parameter.isBound = true;
            if (!isShown || IsOwn(parameter)) {
                continue;
            }
            for (const logic::BlockComponent& component : parameter.declared->components) {
                if (const auto* number = std::get_if<std::size_t>(&component); number != nullptr) {
                    wanted[*number] = true;
                }
            }
            wanted[parameter.number] = !parameter.declared->IsBlock() || wanted[parameter.number];
        }
    };
    for (const HOSTINFO* object : root->bindings.BoundTo(this)) {
        bool isShown = true;
        for (const HOSTINFO* one = object; one != nullptr && one != root && root->mode == 0;
             one = one->parent) {
            isShown = isShown && logic::LayerShown(one->layers, root->activeLayers);
        }
        add(object->requests, isShown);
        for (const Bindings::FurtherList& list : root->bindings.FurtherLists(object)) {
            add(*list.requests, isShown);
        }
    }
    std::vector<std::size_t> numbers;
    for (std::size_t number = 0; number < wanted.size(); ++number) {
        if (wanted[number]) {
            numbers.push_back(number);
        }
    }
    if (numbers != wanted_) {
        wanted_ = numbers;
        WakeIf(connection_->Want(std::move(numbers)));
    }
}

void RemoteDevice::WakeIf(bool isNeeded) {
    if (isNeeded) {
        network_->Wake();
    }
}

void RemoteDevice::Ask(Parameter& parameter) {
    const logic::Milliseconds now = NetworkClock();
    if (connection_ == nullptr || IsOwn(parameter) ||
        (parameter.asked != 0 && now < parameter.asked + ASK_AGAIN_AFTER)) {
        return;
    }
    parameter.asked = now;
    if (!parameter.declared->IsBlock()) {
        WakeIf(connection_->Ask(parameter.number));
    }
    for (const logic::BlockComponent& component : parameter.declared->components) {
        if (const auto* number = std::get_if<std::size_t>(&component); number != nullptr) {
            Ask(*parameters_[*number]);
        }
    }
}
