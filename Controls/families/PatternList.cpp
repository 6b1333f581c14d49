#include "Controls/families/PatternList.h"

#include "logic/text/NamePattern.h"

#include <algorithm>
#include <iterator>

void PatternList::Bind(HOSTINFO& control, const std::string& pattern, int inputs, int outputs) {
    BINDINGLIST addresses;
    for (int input = 1; !pattern.empty() && input <= inputs; ++input) {
        for (int output = 1; output <= std::max(outputs, 1); ++output) {
            addresses.push_back(logic::ExpandPattern(pattern, input, outputs > 0 ? output : input));
        }
    }
    std::string kept = pattern;
    pattern_.swap(kept);
    bindings_.swap(addresses);
    a_BuildRequestList(bindings_, {}, &control, requests_);
}

REQUESTITEM PatternList::Item(std::size_t number) const {
    return number < requests_.size() ? *std::next(requests_.begin(), static_cast<std::ptrdiff_t>(number))
                                     : REQUESTITEM{};
}
