#include "Controls/families/PatternList.h"

#include "logic/text/NamePattern.h"

#include <iterator>

void PatternList::Bind(HOSTINFO& control, const std::string& pattern, int inputs, int outputs) {
    const std::vector<std::string> expanded = logic::ExpandPatterns(pattern, inputs, outputs);
    BINDINGLIST addresses(expanded.begin(), expanded.end());
    std::string kept = pattern;
    pattern_.swap(kept);
    bindings_.swap(addresses);
    a_BuildRequestList(bindings_, {}, &control, requests_);
}

REQUESTITEM PatternList::Item(std::size_t number) const {
    return number < requests_.size() ? *std::next(requests_.begin(), static_cast<std::ptrdiff_t>(number))
                                     : REQUESTITEM{};
}
