#pragma once

#include "Panelhost/Devices.h"
#include "logic/controls/Crossover.h"
#include "logic/controls/EqBand.h"
#include "logic/devices/Simulation.h"

#include <array>
#include <optional>
#include <string>

// A parameter as a device holds it: a value of the declared type, in the declared range and unit, with its
// state and age. Where values come from and where they go is the device's affair.
class DeviceParameter {
public:
    DeviceParameter() = default;
    // Declares it, with the value of the declaration. False, with nothing changed, when a block cannot be
    // read.
    bool Declare(const logic::ParameterDeclaration& declaration);

    const logic::ParameterDeclaration& Declaration() const { return declaration_; }
    int Datatype() const;
    bool IsNumber() const { return logic::IsNumber(declaration_.type); }

    // As a REQUESTHANDLER answers a get.
    int Answer(VALUERECORD* record) const;
    // Takes the value of a set record: 1, or 0 when it is none for this parameter.
    int Take(const VALUERECORD* record);
    // The parameter as it would be if it took that text; nothing when it would not.
    std::optional<DeviceParameter> Taking(const std::string& text) const;
    bool HoldsTheSame(const DeviceParameter& other) const;
    float Number() const { return number_; }          // in its unit; 0 for what is no number
    const std::string& Text() const { return text_; } // empty for what is none
    // Its block; null for what is none of that kind.
    const logic::EqBand* Band() const;
    const logic::CrossoverFilters* Filters() const;
    // The numbers of its block, in this order: of a band bypass, type, slope, frequency, gain, Q; of filters
    // type and frequency of the high-pass, then of the low-pass; of a delay bypass and amount.
    using BlockNumbers = std::array<float, 6>;
    BlockNumbers Numbers() const;
    void SetNumbers(const BlockNumbers& numbers);
    std::int32_t DelayUnit() const { return delay_.unit; }
    // Limited to the range, and rounded where the type asks for it.
    void SetNumber(float value);
    // As the device has answered it, which limits it itself.
    void SetAnswered(float value) {
        number_ = value;
        Came();
    }
    void SetText(const std::string& text) {
        text_ = text;
        Came();
    }

    int state = PARAMETER_UNKNOWN;
    // Milliseconds since the value last came; NO_AGE when none has.
    DWORD Age() const;

private:
    // A text can be none.
    template <class Parse>
    bool HasNumber(Parse parse) const {
        return declaration_.type != logic::ParameterType::Text || parse(text_);
    }
    std::string BlockText() const;
    int TakeValue(const VALUERECORD* record);
    int TakeBlock(const VALUERECORD* record);
    bool SetBlock(const std::string& text);
    void Came() { came_ = GetTickCount64(); }

    logic::ParameterDeclaration declaration_{};
    float number_ = 0;
    std::string text_;
    logic::EqBand band_; // values of the blocks
    logic::CrossoverFilters filters_;
    logic::DelaySetting delay_;
    ULONGLONG came_ = 0; // tick count; 0: never
};
