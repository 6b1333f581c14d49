#include "Panel/common/CommandText.h"

namespace {

// "what it does\nname"
std::string TextOf(int command) {
    char text[256] = "";
    LoadStringA(GetModuleHandleA(nullptr), static_cast<UINT>(command), text, sizeof text);
    return text;
}

std::string KeyOf(int command, HMENU menu) {
    char text[128] = "";
    GetMenuStringA(menu, static_cast<UINT>(command), text, sizeof text, MF_BYCOMMAND);
    const std::string item = text;
    const std::size_t tab = item.find('\t');
    return tab == std::string::npos ? "" : item.substr(tab + 1);
}

} // namespace

std::string CommandStatus(int command) {
    const std::string text = TextOf(command);
    return text.substr(0, text.find('\n'));
}

std::string CommandTooltip(int command, HMENU menu) {
    const std::string text = TextOf(command);
    const std::size_t end = text.find('\n');
    if (end == std::string::npos) {
        return {};
    }
    const std::string key = KeyOf(command, menu);
    return text.substr(end + 1) + (key.empty() ? "" : " (" + key + ")");
}
