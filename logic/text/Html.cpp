#include "logic/text/Html.h"

namespace logic {

std::string HtmlText(std::string_view text) {
    std::string html;
    for (const char character : text) {
        switch (character) {
        case '<':
            html += "&lt;";
            break;
        case '>':
            html += "&gt;";
            break;
        case '&':
            html += "&amp;";
            break;
        case '"':
            html += "&quot;";
            break;
        default:
            html += character;
            break;
        }
    }
    return html;
}

} // namespace logic
