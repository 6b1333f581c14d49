#include "Panel/lists/UnreadLines.h"

#include "Panelhost/HostInterface.h"

#include <algorithm>
#include <iterator>

namespace {

struct Reason {
    int reason;
    const char* text;     // of one line
    const char* singular; // of several, behind their number
    const char* plural;
};
constexpr Reason REASONS[] = {
    {PH_UNREAD_PICTURE, "picture missing", "missing picture", "missing pictures"},
    {PH_UNREAD_CLASS, "unknown class", "unknown control", "unknown controls"},
    {PH_UNREAD_NAME, "name taken", "taken name", "taken names"},
    {PH_UNREAD_OBJECT, "no such control", "line of a missing control", "lines of missing controls"},
    {PH_UNREAD_KEYWORD, "unknown keyword", "unknown keyword", "unknown keywords"},
    {PH_UNREAD_VALUE, "value refused", "refused value", "refused values"},
    {PH_UNREAD_DAMAGED, "damaged", "damaged line", "damaged lines"},
};

void __cdecl Receive(const PH_UNREADLINE* line, void* context) {
    static_cast<std::vector<UnreadLine>*>(context)->push_back(
        {line->object, line->line, line->number, line->reason});
}

} // namespace

std::vector<UnreadLine> UnreadLines(HOSTINFO* root) {
    std::vector<UnreadLine> lines;
    // Nothing is thrown inside the call: there is room for all.
    lines.reserve(static_cast<std::size_t>(std::max(0, ph_ListUnread(root, nullptr, nullptr))));
    ph_ListUnread(root, Receive, &lines);
    return lines;
}

std::string ReasonText(int reason) {
    const auto* known = std::find_if(std::begin(REASONS), std::end(REASONS),
                                     [reason](const Reason& row) { return row.reason == reason; });
    return known == std::end(REASONS) ? "" : known->text;
}

std::string UnreadSummary(const std::vector<UnreadLine>& lines) {
    std::string why;
    for (const Reason& row : REASONS) {
        const auto count = std::count_if(lines.begin(), lines.end(),
                                         [&](const UnreadLine& line) { return line.reason == row.reason; });
        if (count > 0) {
            why += (why.empty() ? "" : ", ") + std::to_string(count) + " " +
                   (count == 1 ? row.singular : row.plural);
        }
    }
    if (why.empty()) {
        return {};
    }
    return std::to_string(lines.size()) + (lines.size() == 1 ? " line" : " lines") +
           " could not be read: " + why + ". They are kept and saved as they are.";
}
