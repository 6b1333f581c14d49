#pragma once

#include "Controls/framework/Keywords.h"

// What a control does again and again while it is held with the mouse, faster the longer it is held. The
// control captures the mouse at a press and calls Start; its window procedure shows every message to Watch;
// at a tick it takes as many steps as Steps says. The loss of the capture ends it.
class HeldRepeat {
public:
    static constexpr UINT_PTR TIMER = 11; // by which OnTimer knows the ticks of the repeat

    bool IsOn() const { return period != 0; }
    void Start(HWND window);
    void Watch(HWND window, UINT message);
    // How many at this tick count; 0 when nothing is held.
    int Steps(DWORD now) const;

    // The handlers of the two keywords.
    int PeriodKeyword(VALUERECORD& record);
    int AccelerationKeyword(VALUERECORD& record);

    int period = 100;          // milliseconds between two steps, up to 1000; 0: no repeat
    float acceleration = 1.0F; // how much each further step grows, 0.5 to 10

private:
    bool captured_ = false; // it runs, and the window had the capture at the last WM_TIMER
    DWORD pressTick_ = 0;   // tick count of the start; 0: it does not run
};

template <auto Member>
int RepeatPeriodKeyword(VALUERECORD* record, HOSTINFO* object) {
    return (HolderOf<Member>(object).*Member).PeriodKeyword(*record);
}
template <auto Member>
int RepeatAccelerationKeyword(VALUERECORD* record, HOSTINFO* object) {
    return (HolderOf<Member>(object).*Member).AccelerationKeyword(*record);
}

// The keywords of a HeldRepeat that is a member.
template <auto Member>
constexpr Keyword RepeatPeriod(const char* name) {
    return Row(name, KeywordKind::Integer, RepeatPeriodKeyword<Member>).Saved();
}
template <auto Member>
constexpr Keyword RepeatAcceleration(const char* name) {
    return Row(name, KeywordKind::Number, RepeatAccelerationKeyword<Member>).Saved();
}
