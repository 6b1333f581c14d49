#include "Panel/start/WindowPlace.h"

#include "Panelhost/PropertyLines.h"

#include <algorithm>

namespace {

constexpr LONG FARTHEST = 100000; // pixels from the corner of the first screen

bool IsPlace(const RECT& place) {
    const auto isNear = [](LONG pixel) { return pixel >= -FARTHEST && pixel <= FARTHEST; };
    return isNear(place.left) && isNear(place.top) && isNear(place.right) && isNear(place.bottom) &&
           place.left < place.right && place.top < place.bottom;
}

} // namespace

bool ReadWindowPlace(const std::string& text, WindowPlace& place) {
    const std::size_t first = text.find("\r\n");
    const std::size_t second = first == std::string::npos ? first : text.find("\r\n", first + 2);
    RECT rectangle{};
    if (second == std::string::npos || a_ReadRectString(text.substr(0, first).c_str(), &rectangle) == 0 ||
        !IsPlace(rectangle)) {
        return false;
    }
    place = {rectangle, text.substr(first + 2, second - first - 2) == "maximized",
             text.substr(second + 2, text.find("\r\n", second + 2) - second - 2)};
    return true;
}

std::string WindowPlaceText(const WindowPlace& place) {
    return a_GetRectString(place.place) + std::string("\r\n") + (place.isMaximized ? "maximized" : "normal") +
           "\r\n" + place.panelFile + "\r\n";
}

RECT MovedInto(const RECT& place, const RECT& area) {
    const LONG width = std::min(place.right - place.left, area.right - area.left);
    const LONG height = std::min(place.bottom - place.top, area.bottom - area.top);
    const LONG left = std::clamp(place.left, area.left, area.right - width);
    const LONG top = std::clamp(place.top, area.top, area.bottom - height);
    return {left, top, left + width, top + height};
}

RECT MovedOntoScreen(const RECT& place) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (!GetMonitorInfoA(MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &monitor)) {
        return place;
    }
    return MovedInto(place, monitor.rcWork);
}
