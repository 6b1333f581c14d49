#include "Panel/export/ControlList.h"

#include "Panelhost/BindingList.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/PropertyLines.h"
#include "base/FileNames.h"
#include "base/Handles.h"
#include "logic/text/Html.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <unordered_map>
#include <vector>

namespace {

constexpr const char* STYLE =
    "body{font:10pt Tahoma,Arial,sans-serif;margin:1.5em;color:#000;background:#fff}"
    "h1{font-size:14pt;margin:0 0 .3em}p{margin:.2em 0}"
    "table{border-collapse:collapse;width:100%;margin-top:1em}"
    "th,td{border:1px solid #888;padding:.2em .4em;text-align:left;"
    "vertical-align:top;overflow-wrap:anywhere}"
    "th{background:#ddd}.dead{font-weight:bold;color:#a00}"
    "@media print{body{margin:0}thead{display:table-header-group}"
    "tr{break-inside:avoid;page-break-inside:avoid}}";

using Bindings = std::unordered_map<const HOSTINFO*, std::vector<const BINDING*>>;

std::string Element(const char* name, const std::string& inside, const char* attributes = "") {
    return std::string("<") + name + attributes + ">" + inside + "</" + name + ">";
}

std::string Cell(const std::string& text) {
    return Element("td", logic::HtmlText(text));
}

// Nobody knows what is clicked: such an address is no fault.
bool LeadsSomewhere(const BINDING& binding) {
    return a_IsLive(binding.state) || binding.state == PARAMETER_UNKNOWN || binding.state == PARAMETER_SENT;
}

std::string BindingText(const BINDING& binding) {
    const std::string text = logic::HtmlText(std::string(binding.row->keyword) + ": " + binding.address +
                                             " (" + a_StateName(binding.state) + ")");
    return LeadsSomewhere(binding) ? text : Element("span", text, " class=\"dead\"");
}

std::string Row(const HOSTINFO& control, const Bindings& bindings) {
    char className[64] = "";
    GetClassNameA(control.window, className, sizeof className);
    std::string bound;
    if (const auto found = bindings.find(&control); found != bindings.end()) {
        for (const BINDING* binding : found->second) {
            bound += (bound.empty() ? "" : "<br>") + BindingText(*binding);
        }
    }
    return Element("tr", Cell(control.name) + Cell(className) + Cell(a_GetRectString(control.rectangle)) +
                             Element("td", bound)) +
           "\n";
}

std::string Count(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string Utf8(const std::string& text) {
    const std::wstring wide = WideFileName(text);
    const auto length = static_cast<int>(wide.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(std::max(0, size)), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, result.data(), size, nullptr, nullptr);
    return result;
}

} // namespace

std::string ControlList(HOSTINFO* root, const ControlListHead& head) {
    const std::vector<BINDING> list = a_ListBindings(root);
    Bindings bindings;
    for (const BINDING& binding : list) {
        bindings[binding.object].push_back(&binding);
    }
    const auto dead = std::count_if(list.begin(), list.end(),
                                    [](const BINDING& binding) { return !LeadsSomewhere(binding); });
    std::string rows;
    std::size_t controls = 0;
    for (const HOSTINFO* object : a_ListHostinfos(root)) {
        if (object->kind == KIND_CONTROL) {
            ++controls;
            rows += Row(*object, bindings);
        }
    }
    std::string devices;
    for (const auto& [name, status] : a_ListDevices(root)) {
        const std::string why = a_WhyNotLive(status);
        devices += (devices.empty() ? "" : ", ") + name + " (" + (why.empty() ? "live" : why) + ")";
    }
    const std::string title = logic::HtmlText(head.title);
    return Utf8(
        "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">" + Element("title", title) +
        Element("style", STYLE) + "</head>\n<body>" + Element("h1", title) + "\n" +
        Element("p", logic::HtmlText((head.file.empty() ? "" : head.file + ", ") + head.time + ": " +
                                     Count(controls, "control") + ", " + Count(list.size(), "binding") +
                                     ", of which " + std::to_string(dead) + " to nothing that is there")) +
        "\n" + (devices.empty() ? "" : Element("p", logic::HtmlText("Devices: " + devices)) + "\n") +
        "<table><thead><tr><th>Control</th><th>Class</th><th>Place</th><th>Bound to</th></tr>"
        "</thead>\n<tbody>\n" +
        rows + "</tbody></table></body></html>\n");
}

bool SaveControlList(HOSTINFO* root, const ControlListHead& head, const std::string& file) {
    const std::string page = ControlList(root, head);
    DWORD error = ERROR_SUCCESS;
    {
        const Handle opened = MakeFile(CreateFileA(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                                   FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!opened) {
            return false;
        }
        DWORD written = 0;
        if (WriteFile(opened.get(), page.data(), static_cast<DWORD>(page.size()), &written, nullptr) &&
            written == page.size()) {
            return true;
        }
        error = GetLastError();
    }
    DeleteFileA(file.c_str()); // half of it
    SetLastError(error);
    return false;
}

std::string LocalTimeText() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d", now.wYear, now.wMonth, now.wDay, now.wHour,
                  now.wMinute);
    return text;
}
