// property_reference: writes docs/property-reference.md from the keyword tables of all control classes, or
// checks that it is up to date.

#include "Panelhost/HostInterface.h"
#include "Panelhost/Hostinfo.h"

#include <windows.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr const char* USAGE = "Usage: property_reference [--check] REFERENCE\n"
                              "\n"
                              "Writes the reference (Markdown) of all control classes.\n"
                              "  --check   write nothing; fail when the file is not what would be written\n";

constexpr const char* INTRODUCTION = "# Property reference\n"
                                     "\n"
                                     "Generated from the keyword tables of the controls by "
                                     "`property_reference`. Do not edit it here: the sentences\n"
                                     "stand in the tables. How to write it anew: "
                                     "[adding-a-control.md](adding-a-control.md#documentation).\n"
                                     "\n"
                                     "*Saved* keywords are written to a panel file and listed in the "
                                     "property dialog; the others can be loaded and\n"
                                     "asked for all the same. *New* is the value of a control just created, "
                                     "as text. Values bound to devices are in\n"
                                     "the unit of the device's parameter. A line with a keyword that its "
                                     "class does not know sets the default value.\n";

std::string ReadText(const char* path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error(std::string("cannot read ") + path);
    }
    std::string text{std::istreambuf_iterator<char>(file), {}};
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
}

// A row of a keyword table as the reference shows it.
struct Row {
    std::string keyword;
    bool saved;
    std::string value;
    std::string sentence;
};

struct ClassEntry {
    std::string name;
    std::string purpose;
    int controlType;
    const KEYWORDROW* table;
    std::vector<Row> rows;
};

class HiddenPanel {
public:
    HiddenPanel()
        : window_(
              CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 400, 300, nullptr, nullptr, nullptr, nullptr)),
          root_(ph_CreateRoot(window_, "Reference")) {
        if (root_ == nullptr) {
            throw std::runtime_error("cannot make a panel");
        }
    }
    ~HiddenPanel() {
        ph_DestroyRoot(root_);
        DestroyWindow(window_);
    }
    HiddenPanel(const HiddenPanel&) = delete;
    HiddenPanel& operator=(const HiddenPanel&) = delete;

    HWND Window() const { return window_; }
    HOSTINFO* Root() const { return root_; }

private:
    HWND window_;
    HOSTINFO* root_;
};

std::vector<Row> RowsOf(HOSTINFO* object) {
    std::vector<Row> rows;
    const KEYWORDINFO* info = object->GetKeywordInfo();
    if (info == nullptr) {
        throw std::runtime_error("nothing is said of the keywords of " + object->name);
    }
    for (const KEYWORDROW* row = object->GetHostinfoTable(); row->keyword != nullptr; ++row, ++info) {
        char value[TEXT_SIZE] = "";
        VALUERECORD record = VALUERECORD::GetText(value);
        if (row->handler != nullptr) {
            row->handler(&record, object);
        }
        rows.push_back({row->keyword, row->handler != nullptr && (row->flags & KEYWORD_SAVED) != 0, value,
                        info->sentence});
    }
    return rows;
}

// Every class that the library has described, by name.
std::vector<ClassEntry> Classes(const HiddenPanel& panel) {
    std::vector<const PH_CONTROLCLASS*> described;
    ph_ListControlClasses(
        [](const PH_CONTROLCLASS* one, void* all) {
            static_cast<std::vector<const PH_CONTROLCLASS*>*>(all)->push_back(one);
        },
        &described);
    std::vector<ClassEntry> classes;
    for (const PH_CONTROLCLASS* one : described) {
        const HWND window = CreateWindowExA(0, one->windowClass, "Control", WS_CHILD, 0, 0, 100, 100,
                                            panel.Window(), nullptr, nullptr, panel.Root());
        HOSTINFO* object = a_FromWindow(window);
        if (object == nullptr || *one->purpose == '\0') {
            throw std::runtime_error(std::string(one->windowClass) +
                                     (object == nullptr ? " cannot be created" : " says nothing of itself"));
        }
        classes.push_back({one->windowClass, one->purpose,
                           static_cast<int>(SendMessageA(window, CWM_GETCONTROLTYPE, 0, 0)),
                           object->GetHostinfoTable(), RowsOf(object)});
        DestroyWindow(window);
    }
    std::sort(classes.begin(), classes.end(),
              [](const ClassEntry& one, const ClassEntry& other) { return one.name < other.name; });
    return classes;
}

std::string TypeText(int controlType) {
    switch (controlType) {
    case DATATYPE_NONE:
        return "none";
    case DATATYPE_INTEGER:
        return "integer";
    case DATATYPE_FLOAT:
        return "float";
    case DATATYPE_TEXT:
        return "text";
    case DATATYPE_DATA:
        return "data";
    default:
        return "block " + std::to_string(controlType);
    }
}

// A cell that no table syntax can break.
std::string Code(const std::string& text) {
    if (text.empty()) {
        return "";
    }
    std::string cell;
    for (const char character : text) {
        cell += character == '|' ? "\\|" : std::string(1, character);
    }
    return cell.find('`') == std::string::npos ? "`" + cell + "`" : "`` " + cell + " ``";
}

void WriteTable(std::string& text, const std::vector<Row>& rows) {
    text += "\n| Keyword | Saved | New | Meaning |\n|---|---|---|---|\n";
    for (const Row& row : rows) {
        const std::string keyword = row.keyword == " " ? "(default value)" : Code(row.keyword);
        text += "| " + keyword + " | " + (row.saved ? "yes" : "no") + " | " + Code(row.value) + " | " +
                row.sentence + " |\n";
    }
}

std::string Heading(const std::vector<const ClassEntry*>& group) {
    constexpr std::size_t NAMED = 4;
    if (group.size() > NAMED) {
        return std::to_string(group.size()) + " classes with the same keywords";
    }
    std::string heading;
    for (const ClassEntry* member : group) {
        heading += (heading.empty() ? "" : ", ") + member->name;
    }
    return heading;
}

// The class's place, by which help finds it: that of a class alone is its heading.
std::string Anchor(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return "<a id=\"" + name + "\"></a>";
}

// Classes that share their table; a value in which they differ is left out.
void WriteGroup(std::string& text, const std::vector<const ClassEntry*>& group) {
    std::vector<Row> rows = group.front()->rows;
    text += "\n## " + Heading(group) + "\n\n";
    if (group.size() == 1) {
        text += group.front()->purpose + " Main value: " + TypeText(group.front()->controlType) + ".\n";
    } else {
        text += "| Class | Main value | Purpose |\n|---|---|---|\n";
        for (const ClassEntry* member : group) {
            text += "| " + Anchor(member->name) + Code(member->name) + " | " + TypeText(member->controlType) +
                    " | " + member->purpose + " |\n";
            for (std::size_t row = 0; row < rows.size(); ++row) {
                rows[row].value = rows[row].value == member->rows[row].value ? rows[row].value : "";
            }
        }
    }
    WriteTable(text, rows);
}

// Classes with a table of their own first.
void WriteClasses(std::string& text, const std::vector<ClassEntry>& classes) {
    std::vector<std::vector<const ClassEntry*>> groups;
    for (const ClassEntry& entry : classes) {
        const auto group = std::find_if(groups.begin(), groups.end(), [&](const auto& candidate) {
            return candidate.front()->table == entry.table;
        });
        if (group == groups.end()) {
            groups.push_back({&entry});
        } else {
            group->push_back(&entry);
        }
    }
    std::stable_sort(groups.begin(), groups.end(),
                     [](const auto& one, const auto& other) { return one.size() == 1 && other.size() > 1; });
    for (const auto& group : groups) {
        WriteGroup(text, group);
    }
}

std::string Reference() {
    if (LoadLibraryA("OSMIRControlLib.dll") == nullptr) {
        throw std::runtime_error("cannot load OSMIRControlLib.dll");
    }
    const HiddenPanel panel;
    std::string text = INTRODUCTION;
    text += "\n## The panel\n\nThe panel as a whole. In a panel file its lines stand first and without an "
            "object.\n";
    WriteTable(text, RowsOf(panel.Root()));
    const std::vector<ClassEntry> classes = Classes(panel);
    if (classes.empty()) {
        throw std::runtime_error("the library registered no classes");
    }
    WriteClasses(text, classes);
    return text;
}

// 0 when the file holds the text.
int Check(const char* path, const std::string& expected) {
    const std::string text = ReadText(path);
    if (text == expected) {
        return EXIT_SUCCESS;
    }
    const auto [here, there] = std::mismatch(text.begin(), text.end(), expected.begin(), expected.end());
    const auto line = std::count(text.begin(), here, '\n') + 1;
    std::fprintf(stderr,
                 "%s is out of date from line %d on.\n"
                 "Write it anew: cmake --build --preset windows --target reference\n",
                 path, static_cast<int>(line));
    return EXIT_FAILURE;
}

int Run(int count, char** arguments) {
    const bool check = count > 1 && std::strcmp(arguments[1], "--check") == 0;
    if (count != (check ? 3 : 2)) {
        std::fputs(USAGE, stderr);
        return EXIT_FAILURE;
    }
    const char* path = arguments[count - 1];
    const std::string text = Reference();
    if (check) {
        return Check(path, text);
    }
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file) {
        throw std::runtime_error(std::string("cannot write ") + path);
    }
    return EXIT_SUCCESS;
}

} // namespace

int main(int count, char** arguments) {
    try {
        return Run(count, arguments);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "property_reference: %s\n", failure.what());
        return EXIT_FAILURE;
    }
}
