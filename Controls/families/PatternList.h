#pragma once

#include "Controls/framework/Keywords.h"

#include <string>

// The functions of a control that are written as one pattern (logic/text/NamePattern.h): an address for each
// input and output, in which their numbers stand.
class PatternList {
public:
    // Once, when the control is created: from then on the requests follow what comes and goes.
    void Attach(HOSTINFO& control) { a_FollowRequests(&control, bindings_, requests_); }

    const std::string& Pattern() const { return pattern_; }
    // Binds to all addresses of the pattern, all outputs of the first input first; none for an empty one.
    // Without outputs there is one address an input, of which the number may be written either way.
    void Bind(HOSTINFO& control, const std::string& pattern, int inputs, int outputs);

    REQUESTLIST& Requests() { return requests_; }
    const REQUESTLIST& Requests() const { return requests_; }
    // The item with that number; one that cannot be reached when there is none.
    REQUESTITEM Item(std::size_t number) const;

private:
    std::string pattern_;
    BINDINGLIST bindings_;
    REQUESTLIST requests_;
};
