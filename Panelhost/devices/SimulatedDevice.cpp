#include "Panelhost/devices/SimulatedDevice.h"

#include "logic/text/Numbers.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

#include <algorithm>

namespace {

constexpr const char* ONLINE = "online";

// What stands behind "word," when the text begins with that word.
std::optional<std::string> Behind(const std::string& text, const std::string& word) {
    return text.compare(0, word.size() + 1, word + ",") == 0 ? std::optional(text.substr(word.size() + 1))
                                                             : std::nullopt;
}

std::vector<std::string> Names(const std::string& text) {
    std::vector<std::string> names;
    for (const auto field : logic::SplitFields(text, ',')) {
        if (const auto name = logic::TrimBlanks(field); !name.empty()) {
            names.emplace_back(name);
        }
    }
    return names;
}

} // namespace

SimulatedDevice::SimulatedDevice() : lastTick_(GetTickCount()) {
    Declare(ONLINE, "integer,0,1,1");
}

int SimulatedDevice::Parameter::Datatype() const {
    switch (declaration.type) {
    case logic::ParameterType::Integer:
        return DATATYPE_INTEGER;
    case logic::ParameterType::Float:
        return DATATYPE_FLOAT;
    case logic::ParameterType::Text:
        return DATATYPE_TEXT;
    case logic::ParameterType::MasterEq:
        return DATATYPE_MASTER_EQ;
    case logic::ParameterType::ChannelEq:
        return DATATYPE_CHANNEL_EQ;
    case logic::ParameterType::CrossoverFilters:
        return DATATYPE_CROSSOVER;
    case logic::ParameterType::Delay:
        return DATATYPE_DELAY;
    }
    return DATATYPE_NONE;
}

void SimulatedDevice::Parameter::SetNumber(float value) {
    const float limited = logic::Clamp(value, declaration.minimum, declaration.maximum);
    number = declaration.type == logic::ParameterType::Integer
                 ? static_cast<float>(logic::TruncateToInteger(logic::RoundToStep(limited, 1.0F)))
                 : limited;
}

int SimulatedDevice::Parameter::Answer(VALUERECORD* record) const {
    if (!a_HasForm(Datatype(), record->datatype) ||
        (record->datatype == DATATYPE_INTEGER && !HasNumber(logic::ParseInteger)) ||
        (record->datatype == DATATYPE_FLOAT && !HasNumber(logic::ParseFloat))) {
        return -1;
    }
    switch (declaration.type) {
    case logic::ParameterType::Integer:
        return a_AnswerInteger(record, static_cast<int>(number));
    case logic::ParameterType::Float:
        return a_AnswerFloat(record, number);
    case logic::ParameterType::Text:
        return a_AnswerText(record, text.c_str());
    default:
        break;
    }
    if (record->datatype == DATATYPE_TEXT) {
        return a_AnswerText(record, RecordText().c_str());
    }
    switch (Datatype()) {
    case DATATYPE_CROSSOVER:
        return a_AnswerBytes(record, DATATYPE_CROSSOVER, &filters, sizeof filters);
    case DATATYPE_DELAY:
        return a_AnswerBytes(record, DATATYPE_DELAY, &delay, sizeof delay);
    default:
        return a_AnswerBytes(record, Datatype(), &band, sizeof band);
    }
}

std::string SimulatedDevice::Parameter::RecordText() const {
    switch (declaration.type) {
    case logic::ParameterType::CrossoverFilters:
        return logic::FiltersText(filters);
    case logic::ParameterType::Delay:
        return logic::DelayText(delay);
    default:
        return logic::EqBandText(band);
    }
}

bool SimulatedDevice::Parameter::SetRecord(const std::string& given) {
    const auto take = [](const auto& read, auto& member) {
        member = read.value_or(member);
        return read.has_value();
    };
    switch (declaration.type) {
    case logic::ParameterType::CrossoverFilters:
        return take(logic::ReadFilters(given, filters), filters);
    case logic::ParameterType::Delay:
        return take(logic::ReadDelay(given, delay), delay);
    default:
        return take(logic::ReadEqBand(given, band), band);
    }
}

// A record as bytes must be one that the device knows; a real one would refuse it, too.
int SimulatedDevice::Parameter::TakeRecord(const VALUERECORD* record) {
    const auto take = [&](auto& member) {
        auto given = member;
        if (a_ReadBytes(record, Datatype(), &given, sizeof given) == 0 || !logic::IsKnown(given)) {
            return 0;
        }
        member = given;
        return 1;
    };
    switch (declaration.type) {
    case logic::ParameterType::CrossoverFilters:
        return take(filters);
    case logic::ParameterType::Delay:
        return take(delay);
    default:
        return take(band);
    }
}

int SimulatedDevice::Parameter::Take(const VALUERECORD* record) {
    if (declaration.type == logic::ParameterType::Text) {
        return a_ReadText(record, &text);
    }
    if (!logic::IsNumber(declaration.type)) {
        std::string given;
        return record->datatype == DATATYPE_TEXT ? a_ReadText(record, &given) != 0 && SetRecord(given) ? 1 : 0
                                                 : TakeRecord(record);
    }
    float value = 0;
    if (std::string given; record->datatype == DATATYPE_TEXT && a_ReadText(record, &given) != 0) {
        const auto read = logic::ParseFloatIn(declaration.unit, given);
        if (!read) {
            return 0;
        }
        value = *read;
    } else if (a_ReadFloat(record, &value) == 0) {
        return 0;
    }
    SetNumber(value);
    return 1;
}

int SimulatedDevice::HandleRequest(VALUERECORD* record, void* context) {
    auto& parameter = *static_cast<Parameter*>(context);
    const Parameter* online = parameter.device->parameters_.front().get();
    if (online->number == 0 && &parameter != online) {
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

LRESULT SimulatedDevice::OnIsAlive(WPARAM, LPARAM) {
    return parameters_.front()->number != 0 ? 1 : 0;
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

bool SimulatedDevice::Declare(const std::string& keyword, const std::string& text) {
    if (text.size() >= TEXT_SIZE) {
        return false; // nobody could be told the whole of it
    }
    Parameter* parameter = Find(keyword);
    if (const auto declaration = logic::ParseParameter(text); declaration && !keyword.empty()) {
        Parameter declared;
        declared.declaration = *declaration;
        if (!logic::IsNumber(declaration->type) && declaration->type != logic::ParameterType::Text) {
            if (!declared.SetRecord(declaration->value)) {
                return false;
            }
        } else {
            declared.text = declaration->value;
            declared.SetNumber(logic::ParseFloat(declaration->value).value_or(0));
        }
        Parameter& entered = parameter != nullptr ? *parameter : Enter(keyword);
        declared.device = this;
        declared.index = entered.index;
        entered = std::move(declared);
        return true;
    }
    if (parameter == nullptr || !logic::IsNumber(parameter->declaration.type)) {
        return false; // what moves must be a number that was declared before
    }
    if (const auto rest = Behind(text, "wave")) {
        parameter->wave = logic::ParseWave(*rest);
        return parameter->wave.has_value();
    }
    if (const auto rest = Behind(text, "follow")) {
        parameter->follow = logic::ParseFollow(*rest);
        return parameter->follow.has_value();
    }
    if (const auto rest = Behind(text, "add")) {
        parameter->added = Names(*rest);
        return !parameter->added.empty();
    }
    if (const auto rest = Behind(text, "mute")) {
        parameter->muting = Names(*rest);
        return !parameter->muting.empty();
    }
    if (const auto rest = Behind(text, "solo")) {
        parameter->solos = Names(*rest);
        return !parameter->solos.empty();
    }
    return false;
}

int SimulatedDevice::OnGet(const char* keyword, std::string& value, int* result) {
    const Parameter* parameter = Find(keyword);
    if (parameter != nullptr) {
        char text[TEXT_SIZE] = "";
        VALUERECORD record{COMMAND_GET, 0, DATATYPE_TEXT, 0, text, nullptr, 0};
        parameter->Answer(&record);
        value = text;
    }
    return *result = parameter != nullptr ? 1 : 0;
}

int SimulatedDevice::OnSet(const char* keyword, std::string& value, int* result) {
    Parameter* parameter = Find(keyword);
    const VALUERECORD record{COMMAND_SET, 0, DATATYPE_TEXT, 0, value.data(), nullptr, 0};
    return *result = parameter != nullptr ? parameter->Take(&record) : 0;
}

float SimulatedDevice::SourceValue(const std::string& source) const {
    const auto star = source.rfind('*');
    const SimulatedDevice* device = this;
    if (star != std::string::npos) {
        device = dynamic_cast<SimulatedDevice*>(a_FindHostinfo(parent, source.substr(0, star).c_str()));
    }
    const Parameter* parameter =
        device == nullptr ? nullptr
                          : device->Find(star == std::string::npos ? source : source.substr(star + 1));
    return parameter == nullptr ? 0.0F : parameter->number;
}

void SimulatedDevice::Move(Parameter& parameter, std::uint32_t elapsed) {
    const bool sourced = parameter.wave || parameter.follow || !parameter.added.empty();
    float target = sourced ? 0.0F : parameter.number;
    if (parameter.wave) {
        target += logic::WaveValue(*parameter.wave, time_, static_cast<std::uint32_t>(parameter.index));
    }
    for (const std::string& source : parameter.added) {
        target += SourceValue(source);
    }
    if (parameter.follow) {
        target += SourceValue(parameter.follow->source) + parameter.follow->offset;
    }
    const auto isOn = [this](const std::string& source) { return SourceValue(source) != 0; };
    const auto& solos = parameter.solos;
    const bool othersSolo =
        !solos.empty() && !isOn(solos.front()) && std::any_of(solos.begin(), solos.end(), isOn);
    if (othersSolo || std::any_of(parameter.muting.begin(), parameter.muting.end(), isOn)) {
        target = parameter.declaration.minimum;
    }
    const std::uint32_t lag = parameter.follow ? parameter.follow->timeConstantMilliseconds : 0;
    parameter.SetNumber(logic::FollowStep(parameter.number, target, elapsed, lag));
}

LRESULT SimulatedDevice::OnTimer(WPARAM, LPARAM) {
    const DWORD now = GetTickCount();
    const DWORD elapsed = now - lastTick_;
    lastTick_ = now;
    time_ += elapsed;
    for (const auto& parameter : parameters_) {
        if (parameter->MovesByItself()) {
            Move(*parameter, elapsed);
        }
    }
    return 0;
}
