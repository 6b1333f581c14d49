// property_reference: writes docs/property-reference.md from the keyword tables of all control classes, or
// checks that it is up to date. What the tables cannot say, the sentence on each keyword, comes from
// docs/keyword-notes.txt.

#include "Panelhost/Panelhost.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr const char* USAGE = "Usage: property_reference [--check] NOTES REFERENCE\n"
                              "\n"
                              "Writes the reference (Markdown) of all control classes.\n"
                              "  --check   write nothing; fail when the file is not what would be written\n";

constexpr const char* INTRODUCTION = "# Property reference\n"
                                     "\n"
                                     "Generated from the keyword tables of the controls by "
                                     "`property_reference`. Do not edit it here: the sentences\n"
                                     "stand in [keyword-notes.txt](keyword-notes.txt), everything else comes "
                                     "from the program. How to write it anew:\n"
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

// The sentences on classes ("KNOB"), on keywords of one class ("KNOB*interval") and on keywords of any class
// ("*interval").
class Notes {
public:
    explicit Notes(const char* path) {
        const std::string text = ReadText(path);
        for (std::size_t start = 0; start < text.size();) {
            const std::size_t end = std::min(text.find('\n', start), text.size());
            Enter(text.substr(start, end - start));
            start = end + 1;
        }
    }

    std::string OfClass(const std::string& name) { return Take({name}, "class " + name); }
    std::string OfKeyword(const std::string& className, const std::string& keyword) {
        return Take({className + "*" + keyword, "*" + keyword},
                    "keyword \"" + keyword + "\" of class " + className);
    }

    // What is wrong with the notes, a line each.
    std::string Problems() const {
        std::string all = problems_;
        for (const auto& [key, sentence] : sentences_) {
            if (used_.count(key) == 0) {
                all += "there is nothing any more that the note \"" + key + "\" is about\n";
            }
        }
        return all;
    }

private:
    void Enter(const std::string& line) {
        if (line.empty() || line.front() == '#') {
            return;
        }
        const std::size_t equals = line.find('=');
        if (equals == std::string::npos || equals + 1 == line.size()) {
            problems_ += "unreadable note: " + line + "\n";
        } else if (!sentences_.emplace(line.substr(0, equals), line.substr(equals + 1)).second) {
            problems_ += "second note: " + line + "\n";
        }
    }

    std::string Take(std::initializer_list<std::string> keys, const std::string& subject) {
        for (const std::string& key : keys) {
            if (const auto found = sentences_.find(key); found != sentences_.end()) {
                used_.insert(key);
                return found->second;
            }
        }
        problems_ += "there is no note on " + subject + "\n";
        return {};
    }

    std::map<std::string, std::string> sentences_;
    std::set<std::string> used_;
    std::string problems_;
};

// A row of a keyword table as the reference shows it.
struct Row {
    std::string keyword;
    bool saved;
    std::string value;
};

struct ClassEntry {
    std::string name;
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
    for (const KEYWORDROW* row = object->GetHostinfoTable(); row != nullptr && row->keyword != nullptr;
         ++row) {
        char value[TEXT_SIZE] = "";
        VALUERECORD record{COMMAND_GET, 0, DATATYPE_TEXT, 0, value, nullptr, 0};
        if (row->handler != nullptr) {
            row->handler(&record, object);
        }
        rows.push_back({row->keyword, row->handler != nullptr && (row->flags & KEYWORD_SAVED) != 0, value});
    }
    return rows;
}

bool IsCodeOf(HINSTANCE library, WNDPROC procedure) {
    HMODULE owner = nullptr;
    return GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                  GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                              reinterpret_cast<const char*>(procedure), &owner) &&
           owner == library;
}

// Every class that the library registered, by name. Windows lists no classes, but answers for every atom.
std::vector<ClassEntry> Classes(HINSTANCE library, const HiddenPanel& panel) {
    std::vector<ClassEntry> classes;
    for (unsigned atom = 0xC000; atom <= 0xFFFF; ++atom) {
        WNDCLASSEXA windowClass{};
        windowClass.cbSize = sizeof windowClass;
        const char* identifier = MAKEINTRESOURCEA(atom);
        if (!GetClassInfoExA(library, identifier, &windowClass) ||
            !IsCodeOf(library, windowClass.lpfnWndProc)) {
            continue;
        }
        const HWND window = CreateWindowExA(0, identifier, "Control", WS_CHILD, 0, 0, 100, 100,
                                            panel.Window(), nullptr, library, panel.Root());
        HOSTINFO* object = a_FromWindow(window);
        char name[65] = "";
        GetClassNameA(window, name, sizeof name);
        if (object == nullptr) {
            throw std::runtime_error("cannot create a control of class atom " + std::to_string(atom));
        }
        classes.push_back({name, static_cast<int>(SendMessageA(window, CWM_GETCONTROLTYPE, 0, 0)),
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
        return "record " + std::to_string(controlType);
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

void WriteTable(std::string& text, const std::string& className, const std::vector<Row>& rows, Notes& notes) {
    text += "\n| Keyword | Saved | New | Meaning |\n|---|---|---|---|\n";
    for (const Row& row : rows) {
        const std::string keyword = row.keyword == " " ? "(default value)" : Code(row.keyword);
        text += "| " + keyword + " | " + (row.saved ? "yes" : "no") + " | " + Code(row.value) + " | " +
                notes.OfKeyword(className, row.keyword) + " |\n";
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

// Classes that share their table; a value in which they differ is left out.
void WriteGroup(std::string& text, const std::vector<const ClassEntry*>& group, Notes& notes) {
    std::vector<Row> rows = group.front()->rows;
    text += "\n## " + Heading(group) + "\n\n";
    if (group.size() == 1) {
        text += notes.OfClass(group.front()->name) + " Main value: " + TypeText(group.front()->controlType) +
                ".\n";
    } else {
        text += "| Class | Main value | Purpose |\n|---|---|---|\n";
        for (const ClassEntry* member : group) {
            text += "| " + Code(member->name) + " | " + TypeText(member->controlType) + " | " +
                    notes.OfClass(member->name) + " |\n";
            for (std::size_t row = 0; row < rows.size(); ++row) {
                rows[row].value = rows[row].value == member->rows[row].value ? rows[row].value : "";
            }
        }
    }
    WriteTable(text, group.size() == 1 ? group.front()->name : "", rows, notes);
}

// Classes with a table of their own first.
void WriteClasses(std::string& text, const std::vector<ClassEntry>& classes, Notes& notes) {
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
        WriteGroup(text, group, notes);
    }
}

std::string Reference(Notes& notes) {
    const HINSTANCE library = LoadLibraryA("OSMIRControlLib.dll");
    if (library == nullptr) {
        throw std::runtime_error("cannot load OSMIRControlLib.dll");
    }
    const HiddenPanel panel;
    std::string text = INTRODUCTION;
    text += "\n## The panel\n\n" + notes.OfClass("PANEL") + "\n";
    WriteTable(text, "PANEL", RowsOf(panel.Root()), notes);
    const std::vector<ClassEntry> classes = Classes(library, panel);
    if (classes.empty()) {
        throw std::runtime_error("the library registered no classes");
    }
    WriteClasses(text, classes, notes);
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
    if (count != (check ? 4 : 3)) {
        std::fputs(USAGE, stderr);
        return EXIT_FAILURE;
    }
    const char* path = arguments[count - 1];
    Notes notes(arguments[count - 2]);
    const std::string text = Reference(notes);
    if (const std::string problems = notes.Problems(); !problems.empty()) {
        std::fprintf(stderr, "%s:\n%s", arguments[count - 2], problems.c_str());
        return EXIT_FAILURE;
    }
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
