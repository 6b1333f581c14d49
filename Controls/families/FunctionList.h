#pragma once

#include "Controls/framework/Keywords.h"

#include <string>

// A further list of functions of a control, beside `function`, with its own requests: what the caption of a
// switch comes from, what a part of a crossover goes to.
class FunctionList {
public:
    // Once, when the control is created: from then on the requests follow what comes and goes.
    void Attach(HOSTINFO& control) { a_FollowRequests(&control, bindings_, requests_); }

    // Addresses of functions, joined by ";". What is set replaces them; false when it is unreadable.
    std::string Text() const { return a_BuildString(bindings_); }
    bool Load(HOSTINFO& control, const std::string& text) {
        BINDINGLIST noConnections;
        return a_FunctionChanged(text.c_str(), &control, bindings_, noConnections, requests_) != 0;
    }

    REQUESTLIST& Requests() { return requests_; }
    const REQUESTLIST& Requests() const { return requests_; }

private:
    BINDINGLIST bindings_;
    REQUESTLIST requests_;
};

// The keyword of a list that is a member. A control that has more to do when the list is set, or that has an
// array of them, names two member functions instead: Property<&Class::Get, &Class::Set>(name,
// KeywordKind::Addresses).
template <auto Member>
int FunctionListKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& holder = HolderOf<Member>(object);
    if (record->command == COMMAND_GET) {
        return AnswerWith(record, (holder.*Member).Text());
    }
    const auto text = TextToSet(record);
    return text && (holder.*Member).Load(holder, *text) ? 1 : 0;
}

template <auto Member>
constexpr Keyword Functions(const char* name) {
    return Row(name, KeywordKind::Addresses, FunctionListKeyword<Member>).Saved();
}
