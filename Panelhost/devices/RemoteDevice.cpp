#include "Panelhost/devices/RemoteDevice.h"

#include "Panelhost/objects/PanelRoot.h"
#include "base/Guard.h"
#include "logic/devices/Fade.h"
#include "logic/text/Numbers.h"

#include <algorithm>
#include <array>

namespace {

using logic::DeviceState;
using logic::ParameterState;

// Of its own, in their order.
enum Own : std::size_t { Online, State, Model, Unconfirmed, ownCount };

constexpr const char* STATE_NAMES[] = {"", "unknown", "live", "stale", "lost", "off", "refused", "open"};

static_assert(DEVICE_UNKNOWN == static_cast<int>(DeviceState::Unknown) &&
              DEVICE_LIVE == static_cast<int>(DeviceState::Live) &&
              DEVICE_STALE == static_cast<int>(DeviceState::Stale) &&
              DEVICE_LOST == static_cast<int>(DeviceState::Lost) &&
              DEVICE_OFF == static_cast<int>(DeviceState::Off) &&
              DEVICE_REFUSED == static_cast<int>(DeviceState::Refused) &&
              DEVICE_OPEN == static_cast<int>(DeviceState::Open));

logic::ParameterDeclaration Declaration(const logic::RemoteParameter& declared) {
    using logic::ParameterType;
    logic::ParameterDeclaration declaration{declared.type, declared.minimum, declared.maximum, "0",
                                            declared.unit};
    switch (declared.type) {
    case ParameterType::Text:
        declaration.value.clear();
        break;
    case ParameterType::CrossoverFilters:
        declaration.value = "OFF";
        break;
    case ParameterType::Delay:
        declaration.value =
            "0,0 " + std::string(logic::DELAY_UNITS.at(static_cast<std::size_t>(declared.delayUnit)));
        break;
    default:
        break;
    }
    return declaration;
}

DWORD Since(logic::Milliseconds time) {
    return time == 0 ? NO_AGE
                     : static_cast<DWORD>(std::min<logic::Milliseconds>(NetworkClock() - time, NO_AGE - 1));
}

bool IsThere(int state) {
    return state == PARAMETER_LIVE || state == PARAMETER_PENDING;
}

} // namespace

RemoteDevice::RemoteDevice() = default;

RemoteDevice::~RemoteDevice() {
    if (connection_ != nullptr) {
        connection_->Leave();
        network_->Remove(connection_);
    }
}

void RemoteDevice::Declare(const logic::RemoteParameter& declared) {
    auto parameter = std::make_unique<Parameter>();
    parameter->device = this;
    parameter->number = parameters_.size();
    parameter->declared = &declared;
    parameter->value.Declare(Declaration(declared));
    byKeyword_[declared.name] = parameter.get();
    parameters_.push_back(std::move(parameter));
}

void RemoteDevice::DeclareOwn() {
    declared_ = parameters_.size();
    constexpr std::array<const char*, ownCount> names{"online", "state", "model", "unconfirmed"};
    own_.resize(ownCount); // their addresses stay
    for (std::size_t i = 0; i < ownCount; ++i) {
        own_[i].name = names[i];
        const bool isText = i == State || i == Model;
        own_[i].type = isText ? logic::ParameterType::Text : logic::ParameterType::Integer;
        own_[i].maximum = i == Unconfirmed ? 1e9F : 1;
        Declare(own_[i]);
    }
    status_.since = NetworkClock();
    TakeStatus(status_);
}

LRESULT RemoteDevice::OnInitialize(WPARAM, LPARAM) {
    PanelRoot* root = PanelRoot::Above(this);
    if (root == nullptr) {
        return 0;
    }
    network_ = root->network.lock();
    if (network_ == nullptr) {
        network_ = std::make_shared<NetworkThread>();
        root->network = network_;
    }
    auto connection = Connect();
    if (!network_->Add(connection)) {
        return 0;
    }
    connection_ = std::move(connection);
    return 1;
}

// What is known

int RemoteDevice::StateOf(const Parameter& parameter) const {
    if (IsOwn(parameter)) {
        return PARAMETER_LIVE;
    }
    switch (status_.state) {
    case DeviceState::Unknown:
        return PARAMETER_UNKNOWN;
    case DeviceState::Stale:
        return PARAMETER_STALE;
    case DeviceState::Lost:
        return PARAMETER_LOST;
    case DeviceState::Off:
        return PARAMETER_OFF;
    case DeviceState::Refused:
        return PARAMETER_REFUSED;
    default:
        break;
    }
    if (parameter.declared->IsBlock()) { // what is worst about its components
        int state = PARAMETER_LIVE;
        for (const logic::BlockComponent& component : parameter.declared->components) {
            const auto* number = std::get_if<std::size_t>(&component);
            const int other = number == nullptr ? PARAMETER_LIVE : StateOf(*parameters_[*number]);
            state = IsThere(state) && other != PARAMETER_LIVE ? other : state;
        }
        return state;
    }
    switch (parameter.state) {
    case ParameterState::Pending:
        return status_.state == DeviceState::Open ? PARAMETER_SENT : PARAMETER_PENDING;
    case ParameterState::Unconfirmed:
        return PARAMETER_UNCONFIRMED;
    case ParameterState::Stale:
        return PARAMETER_STALE;
    case ParameterState::Sent:
        return PARAMETER_SENT;
    case ParameterState::Live:
        return parameter.life == status_.life ? PARAMETER_LIVE
               : parameter.life == 0          ? PARAMETER_UNKNOWN
                                              : PARAMETER_STALE;
    default:
        return PARAMETER_UNKNOWN;
    }
}

logic::Milliseconds RemoteDevice::HeardOf(const Parameter& parameter) const {
    if (IsOwn(parameter)) {
        return NetworkClock();
    }
    logic::Milliseconds heard = parameter.heard;
    bool isFirst = true;
    for (const logic::BlockComponent& component : parameter.declared->components) {
        if (const auto* number = std::get_if<std::size_t>(&component); number != nullptr) {
            const logic::Milliseconds other = parameters_[*number]->heard;
            heard = std::exchange(isFirst, false) ? other : std::min(heard, other);
        }
    }
    return heard;
}

int RemoteDevice::OnParameterState(const char* keyword, DWORD* age) {
    const Parameter* parameter = Find(keyword);
    if (parameter == nullptr) {
        return PARAMETER_NONE;
    }
    *age = Since(HeardOf(*parameter));
    return StateOf(*parameter);
}

DEVICESTATUS RemoteDevice::OnStatus() {
    return {static_cast<int>(status_.state), Since(status_.since), Since(status_.heard)};
}

bool RemoteDevice::OnIsRecallable(const char* keyword, logic::FadeScale* scale) {
    const Parameter* parameter = Find(keyword);
    if (parameter == nullptr || IsOwn(*parameter) || !parameter->declared->canBeSet) {
        return false;
    }
    if (parameter->declared->IsBlock()) {
        return true;
    }
    *scale = ScaleOf(parameter->number);
    return !IsTrigger(parameter->number);
}

bool RemoteDevice::OnHolds(const char* keyword, const std::string& text) {
    Parameter* parameter = Find(keyword);
    if (parameter == nullptr) {
        return false;
    }
    Compose(*parameter);
    const auto wanted = parameter->value.Taking(text);
    if (!wanted) {
        return false;
    }
    if (!parameter->declared->IsBlock()) {
        return IsSame(parameter->number, {parameter->value.Number(), parameter->value.Text()},
                      {wanted->Number(), wanted->Text()});
    }
    const auto held = parameter->value.Numbers();
    const auto numbers = wanted->Numbers();
    for (std::size_t i = 0; i < parameter->declared->components.size(); ++i) {
        const auto* number = std::get_if<std::size_t>(&parameter->declared->components[i]);
        if (number != nullptr && !IsSame(*number, {held.at(i), {}}, {numbers.at(i), {}})) {
            return false;
        }
    }
    return true;
}

LRESULT RemoteDevice::OnIsAlive(WPARAM, LPARAM) {
    return status_.state == DeviceState::Live ? 1 : 0;
}

LRESULT RemoteDevice::OnGetKeywords(WPARAM, LPARAM names) {
    auto* list = reinterpret_cast<std::list<std::string>*>(names);
    for (const auto& parameter : parameters_) {
        list->push_back(parameter->declared->name);
    }
    return 1;
}

LRESULT RemoteDevice::OnGetDatatype(WPARAM, LPARAM keyword) {
    const Parameter* parameter = Find(reinterpret_cast<const char*>(keyword));
    return parameter == nullptr ? DATATYPE_NONE : parameter->value.Datatype();
}

RemoteDevice::Parameter* RemoteDevice::Find(const std::string& keyword) const {
    const auto found = byKeyword_.find(keyword);
    return found == byKeyword_.end() ? nullptr : found->second;
}

void RemoteDevice::TakeNews() {
    const LinkConnection::News news = connection_->TakeNews();
    if (news.device) {
        TakeStatus(*news.device);
    }
    for (const auto& [number, update] : news.parameters) {
        Parameter& parameter = *parameters_[number];
        if (update.serial < parameter.serial) {
            continue; // of before it was set
        }
        parameter.state = update.state;
        parameter.life = update.life;
        parameter.heard = update.heard;
        if (parameter.declared->type == logic::ParameterType::Text) {
            parameter.value.SetText(update.value.text);
        } else {
            parameter.value.SetAnswered(update.value.number);
        }
    }
}

void RemoteDevice::TakeStatus(const logic::DeviceUpdate& update) {
    status_ = update;
    const auto own = [this](Own which) -> DeviceParameter& { return parameters_[declared_ + which]->value; };
    own(Online).SetNumber(update.state == DeviceState::Live ? 1 : 0);
    own(State).SetText(STATE_NAMES[static_cast<int>(update.state)]);
    own(Model).SetText(update.model);
    own(Unconfirmed).SetNumber(static_cast<float>(update.unconfirmed));
}

LRESULT RemoteDevice::OnDataInBuffer(WPARAM, LPARAM) {
    if (connection_ != nullptr) {
        TakeNews();
    }
    return 0;
}

LRESULT RemoteDevice::OnTimer(WPARAM, LPARAM) {
    if (connection_ != nullptr) {
        if (connection_->HasNews()) {
            TakeNews();
        }
        FollowBindings();
    }
    return 0;
}

// Getting and setting

LRESULT RemoteDevice::OnRequestList(WPARAM keyword, LPARAM lParam) {
    const auto* wanted = reinterpret_cast<const char*>(keyword);
    Parameter* parameter = wanted == nullptr ? nullptr : Find(wanted);
    if (parameter == nullptr) {
        return 0;
    }
    auto* item = reinterpret_cast<REQUESTITEM*>(lParam);
    item->record.index = static_cast<int>(parameter->number) + 1;
    item->handler = HandleRequest;
    item->context = parameter;
    return 1;
}

int RemoteDevice::HandleRequest(VALUERECORD* record, void* context) {
    auto& parameter = *static_cast<Parameter*>(context);
    return Guarded(-1, [&] {
        switch (record->command) {
        case COMMAND_GET:
            return parameter.device->Get(parameter, record);
        case COMMAND_SET:
            return parameter.device->Set(parameter, record);
        default:
            return 0;
        }
    });
}

LRESULT RemoteDevice::OnMessage(WPARAM wParam, LPARAM lParam) {
    const auto* record = reinterpret_cast<const VALUERECORD*>(lParam);
    if (record != nullptr && record->name != nullptr && record->command == COMMAND_GET) {
        if (Parameter* parameter = Find(record->name); parameter != nullptr) {
            Ask(*parameter);
        }
    }
    return DEVICE::OnMessage(wParam, lParam);
}

int RemoteDevice::Get(Parameter& parameter, VALUERECORD* record) {
    if (!parameter.isBound) {
        Ask(parameter);
    }
    if (!IsThere(StateOf(parameter))) {
        return -1;
    }
    Compose(parameter);
    return parameter.value.Answer(record);
}

void RemoteDevice::Compose(Parameter& parameter) const {
    if (!parameter.declared->IsBlock()) {
        return;
    }
    auto numbers = parameter.value.Numbers();
    for (std::size_t i = 0; i < parameter.declared->components.size(); ++i) {
        const logic::BlockComponent& component = parameter.declared->components[i];
        if (const auto* number = std::get_if<std::size_t>(&component); number != nullptr) {
            numbers.at(i) = parameters_[*number]->value.Number();
        } else if (const auto* constant = std::get_if<float>(&component); constant != nullptr) {
            numbers.at(i) = *constant;
        }
    }
    parameter.value.SetNumbers(numbers);
}

int RemoteDevice::Set(Parameter& parameter, const VALUERECORD* record) {
    if (IsOwn(parameter)) {
        return -1; // the host alone may
    }
    const bool isOwed = record->reserved == VALUE_OWED;
    const bool isReached = status_.state == DeviceState::Live || status_.state == DeviceState::Stale ||
                           status_.state == DeviceState::Open;
    if (!isReached || connection_ == nullptr) {
        return -1;
    }
    Compose(parameter);
    DeviceParameter wanted = parameter.value;
    if (!parameter.declared->canBeSet || wanted.Take(record) == 0) {
        return 0;
    }
    if (parameter.declared->IsBlock()) {
        return SetBlock(parameter, wanted, isOwed);
    }
    const logic::LinkValue value{wanted.Number(), wanted.Text()};
    if (!CanBeSent(parameter.number, value)) {
        return 0;
    }
    Send(parameter, value, isOwed);
    return 1;
}

// Those of its components that are to be others.
int RemoteDevice::SetBlock(const Parameter& parameter, const DeviceParameter& wanted, bool isOwed) {
    const auto held = parameter.value.Numbers();
    const auto numbers = wanted.Numbers();
    if (wanted.DelayUnit() != parameter.declared->delayUnit) {
        return 0; // the device knows its own unit only
    }
    std::vector<std::pair<Parameter*, logic::LinkValue>> sent;
    for (std::size_t i = 0; i < parameter.declared->components.size(); ++i) {
        const auto* number = std::get_if<std::size_t>(&parameter.declared->components[i]);
        if (number == nullptr || (numbers.at(i) == held.at(i) && IsThere(StateOf(*parameters_[*number])))) {
            continue;
        }
        Parameter& component = *parameters_[*number];
        const logic::LinkValue value{
            logic::Clamp(numbers.at(i), component.declared->minimum, component.declared->maximum), {}};
        if (!CanBeSent(*number, value)) {
            return 0;
        }
        sent.emplace_back(&component, value);
    }
    for (const auto& [component, value] : sent) {
        Send(*component, value, isOwed);
    }
    return 1;
}

void RemoteDevice::Send(Parameter& parameter, const logic::LinkValue& value, bool isOwed) {
    WakeIf(connection_->Set({parameter.number, value, ++serial_, isOwed}));
    parameter.serial = serial_;
    parameter.state = ParameterState::Pending;
    if (parameter.declared->type == logic::ParameterType::Text) {
        parameter.value.SetText(value.text);
    } else {
        parameter.value.SetNumber(value.number);
    }
}

int RemoteDevice::OnGet(const char* keyword, std::string& value, int* result) {
    Parameter* parameter = Find(keyword);
    if (parameter == nullptr) {
        return *result = 0;
    }
    Ask(*parameter);
    return *result = OnLastValue(keyword, &value);
}

int RemoteDevice::OnLastValue(const char* keyword, std::string* value) {
    Parameter* parameter = Find(keyword);
    if (parameter == nullptr || (HeardOf(*parameter) == 0 && parameter->state == ParameterState::Unknown)) {
        return 0; // no value yet
    }
    Compose(*parameter);
    char text[TEXT_SIZE] = "";
    VALUERECORD record = VALUERECORD::GetText(text);
    parameter->value.Answer(&record);
    *value = text;
    return 1;
}

int RemoteDevice::OnSet(const char* keyword, std::string& value, int* result) {
    Parameter* parameter = Find(keyword);
    const VALUERECORD record = VALUERECORD::SetText(value.data());
    if (parameter != nullptr && parameter->number == declared_ + Online) {
        return *result = SwitchOn(&record) ? 1 : 0;
    }
    return *result = parameter != nullptr && Set(*parameter, &record) > 0 ? 1 : 0;
}

bool RemoteDevice::SwitchOn(const VALUERECORD* record) {
    int isOn = 0;
    if (connection_ == nullptr || a_ReadInteger(record, &isOn) == 0) {
        return false;
    }
    WakeIf(connection_->Switch(isOn != 0));
    return true;
}
