// What somebody who builds a panel sees: where on the screen a control, an entry of the palette, a property
// or a part of a dialog is, and what stands there. Asked by lines on the standard input, answered by a line
// each; "-" when there is no such thing. Nothing is changed.

#include "Panel/resource.h"

#include <windows.h>
#include <commctrl.h>

#include <cstdio>
#include <cstring>
#include <map>
#include <string>

namespace {

using Answer = std::string (*)(const std::string& argument);

constexpr UINT PATIENCE = 5000; // milliseconds
constexpr std::size_t TEXT_ROOM = 512;

LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    SendMessageTimeoutA(window, message, wParam, lParam, SMTO_NORMAL, PATIENCE, &result);
    return static_cast<LRESULT>(result);
}

// A message whose structure, and the text behind it, lie in the program that is looked at.
template <typename Structure>
class Shared {
public:
    explicit Shared(HWND window) : window_(window) {
        DWORD id = 0;
        GetWindowThreadProcessId(window, &id);
        process_ = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
        memory_ =
            VirtualAllocEx(process_, nullptr, sizeof(Structure) + TEXT_ROOM, MEM_COMMIT, PAGE_READWRITE);
    }
    ~Shared() {
        VirtualFreeEx(process_, memory_, 0, MEM_RELEASE);
        CloseHandle(process_);
    }
    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;

    char* Text() const { return static_cast<char*>(memory_) + sizeof(Structure); }
    LRESULT Send(UINT message, WPARAM wParam, Structure& structure) const {
        WriteProcessMemory(process_, memory_, &structure, sizeof structure, nullptr);
        const LRESULT result = Ask(window_, message, wParam, reinterpret_cast<LPARAM>(memory_));
        ReadProcessMemory(process_, memory_, &structure, sizeof structure, nullptr);
        return result;
    }
    std::string Read() const {
        char text[TEXT_ROOM] = "";
        ReadProcessMemory(process_, Text(), text, sizeof text - 1, nullptr);
        return text;
    }

private:
    HWND window_;
    HANDLE process_;
    void* memory_;
};

std::string TextOf(HWND window) {
    char text[TEXT_ROOM] = "";
    SendMessageTimeoutA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text), SMTO_NORMAL,
                        PATIENCE, nullptr);
    return text;
}

std::string RectangleText(const RECT& place) {
    return std::to_string(place.left) + " " + std::to_string(place.top) + " " + std::to_string(place.right) +
           " " + std::to_string(place.bottom);
}

std::string PlaceOf(HWND window) {
    RECT place;
    return IsWindowVisible(window) && GetWindowRect(window, &place) ? RectangleText(place) : "-";
}

// Of a part of a window: only what is seen of it.
std::string PlaceIn(HWND window, RECT part) {
    RECT client;
    GetClientRect(window, &client);
    if (!IntersectRect(&part, &part, &client) || part.bottom - part.top < 8) {
        return "-";
    }
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&part), 2);
    return RectangleText(part);
}

HWND Frame() {
    const HWND frame = FindWindowA("PanelFrame", nullptr);
    return IsWindowVisible(frame) ? frame : nullptr;
}

// A visible window that begins with this caption; the frame for an empty one.
HWND TopWindow(const std::string& caption) {
    struct Search {
        const std::string& caption;
        HWND found;
    } search{caption, caption.empty() ? Frame() : nullptr};
    const auto look = [](HWND window, LPARAM of) -> BOOL __attribute__((stdcall)) {
        auto& wanted = *reinterpret_cast<Search*>(of);
        if (wanted.found == nullptr && IsWindowVisible(window) &&
            TextOf(window).starts_with(wanted.caption)) {
            wanted.found = window;
        }
        return TRUE;
    };
    EnumWindows(look, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

template <typename Matches>
HWND Descendant(HWND parent, const Matches& matches) {
    for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if (matches(child)) {
            return child;
        }
        if (const HWND found = Descendant(child, matches)) {
            return found;
        }
    }
    return nullptr;
}

HWND PartOf(HWND parent, int id) {
    return Descendant(parent,
                      [=](HWND window) { return GetDlgCtrlID(window) == id && IsWindowVisible(window); });
}

// "NUMBER rest": the part of that number in the window of that caption.
HWND PartNamed(const std::string& argument) {
    const std::size_t blank = argument.find(' ');
    const HWND top = TopWindow(blank == std::string::npos ? "" : argument.substr(blank + 1));
    return top == nullptr ? nullptr : PartOf(top, std::atoi(argument.c_str()));
}

// The palette and the properties.

HTREEITEM TreeItem(HWND tree, HTREEITEM from, const std::string& name) {
    const auto next = [&](WPARAM which, HTREEITEM item) {
        return reinterpret_cast<HTREEITEM>(Ask(tree, TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(item)));
    };
    for (HTREEITEM item = from != nullptr ? next(TVGN_CHILD, from) : next(TVGN_ROOT, nullptr);
         item != nullptr; item = next(TVGN_NEXT, item)) {
        const Shared<TVITEMA> shared(tree);
        TVITEMA asked{};
        asked.mask = TVIF_TEXT;
        asked.hItem = item;
        asked.pszText = shared.Text();
        asked.cchTextMax = TEXT_ROOM - 1;
        shared.Send(TVM_GETITEMA, 0, asked);
        if (shared.Read() == name) {
            return item;
        }
        if (const HTREEITEM inside = TreeItem(tree, item, name)) {
            return inside;
        }
    }
    return nullptr;
}

std::string Palette(const std::string& name) {
    const HWND tree = PartOf(Frame(), IDC_PALETTE_TREE);
    const HTREEITEM item = tree == nullptr ? nullptr : TreeItem(tree, nullptr, name);
    if (item == nullptr) {
        return "-";
    }
    union {
        HTREEITEM item;
        RECT place;
    } asked{};
    asked.item = item;
    const Shared<decltype(asked)> shared(tree);
    return shared.Send(TVM_GETITEMRECT, TRUE, asked) != 0 ? PlaceIn(tree, asked.place) : "-";
}

std::string ListText(HWND list, int row, int column) {
    const Shared<LVITEMA> shared(list);
    LVITEMA asked{};
    asked.iSubItem = column;
    asked.pszText = shared.Text();
    asked.cchTextMax = TEXT_ROOM - 1;
    shared.Send(LVM_GETITEMTEXTA, static_cast<WPARAM>(row), asked);
    return shared.Read();
}

int ListRow(HWND list, const std::string& name, int column = 0) {
    const int count = static_cast<int>(Ask(list, LVM_GETITEMCOUNT, 0, 0));
    for (int row = 0; row < count; ++row) {
        if (ListText(list, row, column) == name) {
            return row;
        }
    }
    return -1;
}

std::string Property(const std::string& name) {
    const HWND list = PartOf(Frame(), IDC_PROPERTIES);
    const int row = list == nullptr ? -1 : ListRow(list, name);
    if (row < 0) {
        return "-";
    }
    RECT place{};
    place.left = LVIR_BOUNDS;
    Shared<RECT>(list).Send(LVM_GETITEMRECT, static_cast<WPARAM>(row), place);
    place.left += static_cast<LONG>(Ask(list, LVM_GETCOLUMNWIDTH, 0, 0));
    return PlaceIn(list, place);
}

std::string Value(const std::string& name) {
    const HWND list = PartOf(Frame(), IDC_PROPERTIES);
    const int row = list == nullptr ? -1 : ListRow(list, name);
    return row < 0 ? "-" : "=" + ListText(list, row, 1);
}

// "NUMBER CAPTION": the row of the list of that window.
std::string Row(const std::string& argument) {
    const std::size_t blank = argument.find(' ');
    const HWND top = blank == std::string::npos ? nullptr : TopWindow(argument.substr(blank + 1));
    const HWND list = top == nullptr ? nullptr : PartOf(top, IDC_LIST);
    if (list == nullptr) {
        return "-";
    }
    RECT place{};
    place.left = LVIR_LABEL;
    const auto row = static_cast<WPARAM>(std::atoi(argument.c_str()));
    return Shared<RECT>(list).Send(LVM_GETITEMRECT, row, place) != 0 ? PlaceIn(list, place) : "-";
}

// By the text that its window was made with, the control's own name, behind those
// of what it is in; the panel for none.
std::string Control(const std::string& name) {
    const HWND panel = Descendant(Frame(), [](HWND window) {
        char className[64] = "";
        GetClassNameA(window, className, sizeof className);
        return std::strcmp(className, "PanelWindow") == 0;
    });
    if (panel == nullptr || name.empty()) {
        return panel == nullptr ? "-" : PlaceOf(panel);
    }
    HWND control = panel;
    for (std::size_t from = 0, to = 0; control != nullptr && to != std::string::npos; from = to + 1) {
        to = name.find('*', from);
        const std::string own = name.substr(from, to == std::string::npos ? to : to - from);
        control = Descendant(control, [&](HWND window) {
            char text[TEXT_ROOM] = "";
            GetWindowTextA(window, text, sizeof text);
            return IsWindowVisible(window) && own == text;
        });
    }
    return control != nullptr ? PlaceOf(control) : "-";
}

std::string Window(const std::string& caption) {
    const HWND window = TopWindow(caption);
    return window == nullptr ? "-" : PlaceOf(window);
}

std::string Caption(const std::string&) {
    return Frame() == nullptr ? "-" : "=" + TextOf(Frame());
}

std::string Part(const std::string& argument) {
    const HWND part = PartNamed(argument);
    return part == nullptr ? "-" : PlaceOf(part);
}

std::string Text(const std::string& argument) {
    const HWND part = PartNamed(argument);
    return part == nullptr ? "-" : "=" + TextOf(part);
}

// Whether the one who typed there would be heard by it now.
std::string Focus(const std::string& argument) {
    const HWND part = PartNamed(argument);
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return part != nullptr && GetGUIThreadInfo(GetWindowThreadProcessId(part, nullptr), &info) != FALSE &&
                   info.hwndFocus != nullptr && (info.hwndFocus == part || IsChild(part, info.hwndFocus))
               ? "=yes"
               : "-";
}

} // namespace

int main() {
    const std::map<std::string, Answer> questions{
        {"window", Window},   {"caption", Caption}, {"part", Part},         {"text", Text},
        {"focus", Focus},     {"palette", Palette}, {"property", Property}, {"value", Value},
        {"control", Control}, {"row", Row}};
    char line[TEXT_ROOM];
    while (std::fgets(line, sizeof line, stdin) != nullptr) {
        line[std::strcspn(line, "\r\n")] = '\0';
        const char* blank = std::strchr(line, ' ');
        const auto asked = questions.find(
            blank == nullptr ? line : std::string(line, static_cast<std::size_t>(blank - line)));
        const std::string answer =
            asked == questions.end() ? "?" : asked->second(blank == nullptr ? "" : blank + 1);
        std::printf("%s\n", answer.c_str());
        std::fflush(stdout);
    }
    return 0;
}
