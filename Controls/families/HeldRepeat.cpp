#include "Controls/families/HeldRepeat.h"

#include "Panelhost/Trace.h"
#include "logic/controls/ButtonLogic.h"
#include "logic/text/Numbers.h"

namespace {

constexpr int LONGEST_PERIOD = 1000;
constexpr float SLOWEST_ACCELERATION = 0.5F;
constexpr float FASTEST_ACCELERATION = 10.0F;

} // namespace

void HeldRepeat::Start(HWND window) {
    SetTimer(window, TIMER, static_cast<UINT>(period), nullptr);
    pressTick_ = GetTickCount();
    TRACE("SetTimer %d\n", period);
}

void HeldRepeat::Watch(HWND window, UINT message) {
    if (message == WM_TIMER) {
        // Asked for only while it repeats: the answer comes from the system, and the ticks never end.
        captured_ = pressTick_ != 0 && GetCapture() == window;
    } else if (message == WM_CAPTURECHANGED) {
        pressTick_ = 0;
        KillTimer(window, TIMER);
        TRACE("KillTimer\n");
    }
}

int HeldRepeat::Steps(DWORD now) const {
    return captured_ && pressTick_ != 0 ? logic::RepeatSteps(now - pressTick_, period, acceleration) : 0;
}

// Text that is no number gives 0, "inactive" among it. A float is rounded by adding 0.5 and cutting off.
int HeldRepeat::PeriodKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        const auto handled = HandleInactive(record, !IsOn());
        return handled ? *handled : a_AnswerInteger(&record, period);
    }
    if (record.command != COMMAND_SET || record.data == nullptr) {
        return 0;
    }
    const bool isFloat = record.datatype == DATATYPE_FLOAT;
    int wanted = 0;
    if (isFloat || a_ReadInteger(&record, &wanted) == 0) { // text beyond 32 bits is a float still
        float number = 0;
        if (a_ReadFloat(&record, &number) == 0 && record.datatype != DATATYPE_TEXT) {
            return 0;
        }
        wanted = logic::TruncateToInteger(number + (isFloat ? 0.5 : 0.0));
    }
    a_CheckIntRange(&wanted, 0, LONGEST_PERIOD);
    period = wanted;
    return 1;
}

int HeldRepeat::AccelerationKeyword(VALUERECORD& record) {
    if (const auto handled = HandleInactive(record, !IsOn())) {
        return *handled;
    }
    if (record.command == COMMAND_GET) {
        return a_AnswerFloat(&record, acceleration);
    }
    if (record.command != COMMAND_SET || a_ReadFloat(&record, &acceleration) == 0) {
        return 0;
    }
    a_CheckFloatRange(&acceleration, SLOWEST_ACCELERATION, FASTEST_ACCELERATION);
    return 1;
}
