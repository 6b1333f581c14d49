// Which texts may be set as the value of a keyword.

#include "Panelhost/PropertyValues.h"

#include "Panelhost/Hostinfo.h"
#include "Panelhost/Remote.h"
#include "Panelhost/Trace.h"
#include "base/Guard.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

#include <algorithm>

namespace {

bool IsListKeyword(std::string_view keyword) {
    return keyword == "connection" || keyword.starts_with("function");
}

// Whether the row sets what the object shows or passes on, and no row saves that.
bool IsMereValue(const KEYWORDROW* table, int row) {
    if (table[row].handler != table[0].handler) {
        return false;
    }
    for (const KEYWORDROW* other = table; other->keyword != nullptr; ++other) {
        if (other->handler == table[0].handler && (other->flags & KEYWORD_SAVED) != 0) {
            return false;
        }
    }
    return true;
}

} // namespace

std::string a_LengthObjection(std::string_view keyword, std::string_view text) {
    if (text.size() <= logic::MAXIMUM_VALUE) {
        return {};
    }
    return Guarded<std::string>({}, [&] {
        const std::string entries =
            IsListKeyword(keyword)
                ? ", " + std::to_string(logic::EntriesThatFit(text)) + " of its entries would fit"
                : "";
        return "is longer than " + std::to_string(logic::MAXIMUM_VALUE) + " bytes" + entries;
    });
}

bool a_IsPropertyValue(const HOSTINFO* object, const KEYWORDROW* table, int row, std::string_view text) {
    const HOSTINFO* editor = object->kind == KIND_ROOT ? object : object->parent;
    const std::string_view keyword = table[row].keyword;
    return Guarded(false, [&] {
        std::string objection = a_LengthObjection(keyword, text);
        if (objection.empty() && std::any_of(text.begin(), text.end(), logic::IsControl) &&
            !IsMereValue(table, row)) {
            objection = "holds control characters";
        }
        if (!objection.empty()) {
            EDITTRACE(editor, "The value of %s", (std::string(keyword) + " " + objection).c_str());
            return false;
        }
        return !a_IsRemote() || a_MayBeSetRemotely(object, table, row, text);
    });
}
