#include "Panelhost/devices/simulated/SimulatedDevice.h"

#include "logic/devices/Fade.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <utility>

namespace {

constexpr const char* ONLINE = "online";

// What stands behind "word," when the text begins with that word.
std::optional<std::string> Behind(const std::string& text, const std::string& word) {
    return text.compare(0, word.size() + 1, word + ",") == 0 ? std::optional(text.substr(word.size() + 1))
                                                             : std::nullopt;
}

// The names in a text; whether there are any.
bool TakeNames(std::vector<std::string>& names, const std::string& text) {
    names.clear();
    for (const auto field : logic::SplitFields(text, ',')) {
        if (const auto name = logic::TrimBlanks(field); !name.empty()) {
            names.emplace_back(name);
        }
    }
    return !names.empty();
}

std::unique_ptr<DEVICE> Create(std::string_view text, const ReadDeviceLines&, std::string& why) {
    if (text != SIMULATED_DEVICES.word) {
        why = "nothing stands behind \"simulated\"";
        return nullptr;
    }
    return std::make_unique<SimulatedDevice>();
}

std::string DeclareLine(DEVICE& device, const std::string& keyword, const std::string& text) {
    return static_cast<SimulatedDevice&>(device).Declare(keyword, text);
}

} // namespace

const DeviceKind SIMULATED_DEVICES{"simulated", Create, DeclareLine, "Simulated device",
                                   "device=simulated\n"
                                   "gain=float,-80,18,-20,dB\n"
                                   "mute=integer,0,1,0\n"
                                   "name=text,,,\n"
                                   "level=float,-80,18,-80,dB\n"
                                   "level=wave,programme,-40,0,6000\n"};

SimulatedDevice::SimulatedDevice() : lastTick_(GetTickCount()) {
    Declare(ONLINE, "integer,0,1,1");
    parameters_.front()->isReport = true;
}

int SimulatedDevice::HandleRequest(VALUERECORD* record, void* context) {
    auto& parameter = *static_cast<Parameter*>(context);
    if (!parameter.device->IsReachable(parameter)) {
        return -1;
    }
    switch (record->command) {
    case COMMAND_GET:
        return parameter.Answer(record);
    case COMMAND_SET:
        return parameter.Take(record) != 0 ? 1 : -1;
    default:
        return 0;
    }
}

// "online" itself always.
bool SimulatedDevice::IsReachable(const Parameter& parameter) const {
    const Parameter& online = *parameters_.front();
    return online.Number() != 0 || &parameter == &online;
}

LRESULT SimulatedDevice::OnIsAlive(WPARAM, LPARAM) {
    return parameters_.front()->Number() != 0 ? 1 : 0;
}

int SimulatedDevice::OnParameterState(const char* keyword, DWORD* age) {
    const Parameter* parameter = Find(keyword);
    if (parameter == nullptr) {
        return PARAMETER_NONE;
    }
    *age = parameter->Age();
    return IsReachable(*parameter) ? parameter->state : PARAMETER_LOST;
}

DEVICESTATUS SimulatedDevice::OnStatus() {
    const Parameter& online = *parameters_.front();
    return online.Number() != 0 ? DEVICESTATUS{DEVICE_LIVE, online.Age(), 0}
                                : DEVICESTATUS{DEVICE_LOST, online.Age(), online.Age()};
}

bool SimulatedDevice::OnIsRecallable(const char* keyword, logic::FadeScale* scale) {
    const Parameter* parameter = Find(keyword);
    if (parameter == nullptr || !parameter->IsRecallable()) {
        return false;
    }
    const logic::ParameterDeclaration& declared = parameter->Declaration();
    *scale = logic::FadeScale(declared.type, declared.minimum, declared.maximum, declared.unit);
    return true;
}

bool SimulatedDevice::OnHolds(const char* keyword, const std::string& text) {
    const Parameter* parameter = Find(keyword);
    const auto wanted = parameter == nullptr ? std::nullopt : parameter->Taking(text);
    return wanted && wanted->HoldsTheSame(*parameter);
}

LRESULT SimulatedDevice::OnGetKeywords(WPARAM, LPARAM names) {
    auto* list = reinterpret_cast<std::list<std::string>*>(names);
    list->insert(list->end(), keywords_.begin(), keywords_.end());
    return 1;
}

LRESULT SimulatedDevice::OnGetDatatype(WPARAM, LPARAM keyword) {
    const Parameter* parameter = Find(reinterpret_cast<const char*>(keyword));
    return parameter == nullptr ? DATATYPE_NONE : parameter->Datatype();
}

LRESULT SimulatedDevice::OnRequestList(WPARAM keyword, LPARAM lParam) {
    const auto* wanted = reinterpret_cast<const char*>(keyword);
    Parameter* parameter = wanted == nullptr ? nullptr : Find(wanted);
    if (parameter == nullptr) {
        return 0;
    }
    auto* item = reinterpret_cast<REQUESTITEM*>(lParam);
    item->record.index = parameter->index;
    item->handler = HandleRequest;
    item->context = parameter;
    return 1;
}

SimulatedDevice::Parameter* SimulatedDevice::Find(const std::string& keyword) const {
    const auto found = byKeyword_.find(keyword);
    return found == byKeyword_.end() ? nullptr : found->second;
}

SimulatedDevice::Parameter& SimulatedDevice::Enter(const std::string& keyword) {
    parameters_.push_back(std::make_unique<Parameter>());
    Parameter& parameter = *parameters_.back();
    parameter.device = this;
    parameter.index = static_cast<int>(parameters_.size());
    keywords_.push_back(keyword);
    byKeyword_[keyword] = &parameter;
    return parameter;
}

SimulatedDevice::Parameter*
SimulatedDevice::DeclareParameter(const std::string& keyword,
                                  const logic::ParameterDeclaration& declaration) {
    Parameter declared;
    declared.state = PARAMETER_LIVE;
    if (!declared.DeviceParameter::Declare(declaration)) {
        return nullptr;
    }
    Parameter* known = Find(keyword);
    Parameter& entered = known != nullptr ? *known : Enter(keyword);
    declared.device = this;
    declared.index = entered.index;
    entered = std::move(declared);
    return &entered;
}

bool SimulatedDevice::DeclareSubscription(const std::string& keyword, const std::string& text) {
    auto subscription = logic::Subscription::Parse(text);
    if (!subscription) {
        return false;
    }
    Parameter& parameter = *DeclareParameter(keyword, {logic::ParameterType::Text, 0, 0, "", ""});
    parameter.subscriptionState =
        DeclareParameter(keyword + ".state", {logic::ParameterType::Integer, 0, 4, "0", ""});
    parameter.offered =
        DeclareParameter(keyword + ".items", {logic::ParameterType::Text, 0, 0, subscription->Offered(), ""});
    parameter.subscriptionState->isReport = parameter.offered->isReport = true;
    parameter.subscription = std::move(subscription);
    return true;
}

bool SimulatedDevice::DeclareDynamics(const std::string& block, const std::string& text) {
    const auto dynamics = logic::ParseDynamics(block, text);
    if (!dynamics) {
        return false;
    }
    for (const auto& [part, declaration] : logic::DynamicsParameters(dynamics->mode)) {
        DeclareParameter(block + part, declaration);
    }
    Find(block + ".level")->follow = logic::Follow{dynamics->source, 0.0F, 0};
    Find(block + ".reduction")->reduction = Reduction{.mode = dynamics->mode,
                                                      .threshold = Find(block + ".threshold"),
                                                      .ratio = Find(block + ".ratio"),
                                                      .knee = Find(block + ".knee"),
                                                      .attack = Find(block + ".attack"),
                                                      .release = Find(block + ".release"),
                                                      .on = Find(block + ".on"),
                                                      .level = Find(block + ".level")};
    return true;
}

bool SimulatedDevice::DeclareMatrix(const std::string& crosspoints, const std::string& text) {
    const auto matrix = logic::ParseMatrix(crosspoints, text);
    if (!matrix) {
        return false;
    }
    const std::vector<std::string> outputs = matrix->OutputNames();
    const auto isNoNumber = [this](const std::string& output) {
        const Parameter* known = Find(output);
        return known != nullptr && !known->IsNumber();
    };
    if (std::any_of(outputs.begin(), outputs.end(), isNoNumber)) {
        return false;
    }
    auto crosspoint = matrix->crosspoints.begin();
    for (const std::string& output : outputs) {
        if (Find(output) == nullptr) {
            DeclareParameter(output, logic::MATRIX_OUTPUT);
        }
        Mix mix{{}, matrix->InputNames()};
        while (mix.crosspoints.size() < mix.inputs.size()) {
            mix.crosspoints.push_back(
                DeclareParameter(*crosspoint++, {logic::ParameterType::Integer, 0, 1, "0", ""}));
        }
        Find(output)->mix = std::move(mix);
    }
    return true;
}

bool SimulatedDevice::DeclareMonitor(const std::string& output, const std::string& text) {
    const auto names = logic::ParseMonitor(text);
    if (!names || output.empty()) {
        return false;
    }
    for (const auto& [part, declaration] : logic::MonitorParameters(names->sets)) {
        DeclareParameter(output + part, declaration);
    }
    for (std::int32_t set = 1; set <= names->sets; ++set) {
        for (const bool isLeft : {true, false}) {
            Find(output + (isLeft ? ".left" : ".right") + std::to_string(set))->monitor =
                Monitor{.set = set,
                        .own = isLeft ? names->left : names->right,
                        .other = isLeft ? names->right : names->left,
                        .speaker = Find(output + ".speaker"),
                        .level = Find(output + ".level"),
                        .dim = Find(output + ".dim"),
                        .mono = Find(output + ".mono"),
                        .mute = Find(output + ".mute")};
        }
    }
    return true;
}

bool SimulatedDevice::DeclareAutoMixer(const std::string& channels, const std::string& text) {
    const auto names = logic::ParseAutoMixer(channels, text);
    if (!names) {
        return false;
    }
    const auto shared = std::make_shared<SharedGain>();
    for (std::size_t place = 0; place < names->channels.size(); ++place) {
        const std::string& channel = names->channels[place];
        for (const auto& [part, declaration] : logic::AutoMixerParameters()) {
            DeclareParameter(channel + part, declaration);
        }
        shared->channels.push_back({.source = names->sources[place],
                                    .gain = Find(channel + ".gain"),
                                    .weight = Find(channel + ".weight"),
                                    .threshold = Find(channel + ".threshold"),
                                    .hold = Find(channel + ".hold"),
                                    .priority = Find(channel + ".priority"),
                                    .freeze = Find(channel + ".freeze"),
                                    .mute = Find(channel + ".mute")});
        Find(channel + ".gain")->shared = shared;
    }
    return true;
}

// The lines beside those of single parameters.
struct SimulatedDevice::LineKind {
    std::string_view word;
    const char* form; // of what stands behind it
    bool (SimulatedDevice::*declare)(const std::string& keyword, const std::string& rest); // further ones
    bool (*move)(Parameter& number, const std::string& rest); // one that was declared before
};

constexpr SimulatedDevice::LineKind SimulatedDevice::LINE_KINDS[] = {
    {"subscription", "time,item;item", &SimulatedDevice::DeclareSubscription, nullptr},
    {"dynamics", "source,mode", &SimulatedDevice::DeclareDynamics, nullptr},
    {"matrix", "inputs,outputs,input,output", &SimulatedDevice::DeclareMatrix, nullptr},
    {"monitor", "sets,left,right", &SimulatedDevice::DeclareMonitor, nullptr},
    {"automixer", "channels,source", &SimulatedDevice::DeclareAutoMixer, nullptr},
    {"wave", "shape,low,high,period", nullptr,
     [](Parameter& number, const std::string& rest) {
         number.wave = logic::ParseWave(rest);
         return number.wave.has_value();
     }},
    {"follow", "parameter,offset,time", nullptr,
     [](Parameter& number, const std::string& rest) {
         number.follow = logic::ParseFollow(rest);
         return number.follow.has_value();
     }},
    {"add", "parameter", nullptr,
     [](Parameter& number, const std::string& rest) { return TakeNames(number.added, rest); }},
    {"through", "stage", nullptr,
     [](Parameter& number, const std::string& rest) { return TakeNames(number.through, rest); }},
    {"mute", "parameter", nullptr,
     [](Parameter& number, const std::string& rest) { return TakeNames(number.muting, rest); }},
    {"solo", "own,parameter", nullptr,
     [](Parameter& number, const std::string& rest) { return TakeNames(number.solos, rest); }},
};

std::string SimulatedDevice::Declare(const std::string& keyword, const std::string& text) {
    const std::size_t known = keywords_.size();
    std::string fault = DeclareAny(keyword, text);
    for (std::size_t i = known; fault.empty() && i < keywords_.size(); ++i) {
        if (keywords_[i] != keyword) { // whoever reads the line announces that one
            a_AnnounceFunction(parent, (name + "*" + keywords_[i]).c_str());
        }
    }
    return fault;
}

std::string SimulatedDevice::DeclareAny(const std::string& keyword, const std::string& text) {
    if (keyword.empty()) {
        return "no parameter is named";
    }
    if (text.size() >= TEXT_SIZE) {
        return "the value is too long"; // nobody could be told the whole of it
    }
    if (const auto declaration = logic::ParseParameter(text);
        declaration && DeclareParameter(keyword, *declaration) != nullptr) {
        return {};
    }
    const std::string word(logic::TrimBlanks(std::string_view(text).substr(0, text.find(','))));
    std::string form = logic::ParameterForm(word);
    for (const LineKind& line : LINE_KINDS) {
        if (line.word != word) {
            continue;
        }
        const auto rest = Behind(text, word);
        if (line.move != nullptr) {
            Parameter* number = Find(keyword);
            if (number == nullptr || !number->IsNumber()) {
                return keyword + " is not declared as a number above this line";
            }
            if (rest && line.move(*number, *rest)) {
                return {};
            }
        } else if (rest && (this->*line.declare)(keyword, *rest)) {
            return {};
        }
        form += (form.empty() ? "" : " or ") + word + "," + line.form;
    }
    return form.empty() ? "\"" + word + "\" is no type, and nothing that moves a value"
                        : "it does not read " + form;
}

int SimulatedDevice::OnGet(const char* keyword, std::string& value, int* result) {
    const Parameter* parameter = Find(keyword);
    if (parameter != nullptr) {
        char text[TEXT_SIZE] = "";
        VALUERECORD record = VALUERECORD::GetText(text);
        parameter->Answer(&record);
        value = text;
    }
    return *result = parameter != nullptr ? 1 : 0;
}

int SimulatedDevice::OnSet(const char* keyword, std::string& value, int* result) {
    Parameter* parameter = Find(keyword);
    const VALUERECORD record = VALUERECORD::SetText(value.data());
    return *result = parameter != nullptr ? parameter->Take(&record) : 0;
}
