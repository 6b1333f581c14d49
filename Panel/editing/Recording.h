#pragma once

#include "Panel/editing/PanelTarget.h"
#include "logic/editing/EditHistory.h"

#include <string>
#include <unordered_set>
#include <vector>

// What an action changes on a panel, found by comparing property texts before and after. All that reads a
// text throws TextLost.
class Recording {
public:
    explicit Recording(PanelTarget& target);
    // The objects, with all that is inside them, may change or go from now on.
    void Touch(const std::vector<std::string>& names);
    // The objects have come. The step ends here.
    void Created(const std::vector<std::string>& names);
    logic::EditStep Finish();

private:
    void Add(const std::vector<std::string>& names, bool existed);

    PanelTarget& target_;
    logic::EditStep step_;
    std::vector<std::string> touched_;
    std::unordered_set<std::string> known_;
};
