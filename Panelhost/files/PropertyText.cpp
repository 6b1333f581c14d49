// The parts of a property line, rectangles as text, and file names made absolute.

#include "Panelhost/PropertyText.h"

#include "Panelhost/Guard.h"
#include "Panelhost/Remote.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Messages.h"
#include "Panelhost/Trace.h"
#include "logic/ButtonLogic.h"
#include "logic/PropertyLine.h"
#include "logic/Text.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

int CopyPart(std::string_view part, char* out) {
    const std::size_t length = std::min<std::size_t>(part.size(), TEXT_SIZE - 1);
    std::memcpy(out, part.data(), length);
    out[length] = '\0';
    return length > 0 ? 1 : 0;
}

logic::PropertyLine Split(const char* line) {
    return logic::SplitPropertyLine(line == nullptr ? "" : line);
}

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

// Folder of a module with a backslash at its end.
std::string FolderOf(HMODULE module) {
    char path[MAX_PATH];
    const DWORD length = GetModuleFileNameA(module, path, MAX_PATH);
    const std::string full(path, length);
    return full.substr(0, full.find_last_of("\\/") + 1);
}

HMODULE OwnModule() {
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const char*>(&FolderOf), &module);
    return module;
}

bool IsAbsolute(std::string_view name) {
    return name.front() == '\\' || name.front() == '/' || (name.size() > 1 && name[1] == ':');
}

int MakeFullPath(const std::string& folder, const char* name, char* fullPath) {
    const std::string path = IsAbsolute(name) ? name : folder + name;
    const DWORD length = GetFullPathNameA(path.c_str(), MAX_PATH, fullPath, nullptr);
    if (length == 0 || length >= MAX_PATH) {
        *fullPath = '\0';
        return 0;
    }
    return 1;
}

} // namespace

int a_GetObjectName(const char* line, char* objectOut) {
    return CopyPart(Split(line).object, objectOut);
}
int a_GetKeyword(const char* line, char* keywordOut) {
    return CopyPart(Split(line).keyword, keywordOut);
}
int a_GetParameter(const char* line, char* valueOut) {
    return CopyPart(Split(line).value, valueOut);
}

std::string a_LengthObjection(std::string_view keyword, std::string_view text) {
    if (text.size() <= logic::maximumValue) {
        return {};
    }
    return Guarded<std::string>({}, [&] {
        const std::string entries =
            IsListKeyword(keyword)
                ? ", " + std::to_string(logic::EntriesThatFit(text)) + " of its entries would fit"
                : "";
        return "is longer than " + std::to_string(logic::maximumValue) + " bytes" + entries;
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

std::string a_GetRectString(const RECT& rectangle) {
    return Guarded<std::string>({}, [&] {
        return logic::RectangleText(
            {static_cast<std::int32_t>(rectangle.left), static_cast<std::int32_t>(rectangle.top),
             static_cast<std::int32_t>(rectangle.right), static_cast<std::int32_t>(rectangle.bottom)});
    });
}

int a_ReadRectString(const char* text, RECT* rectangle) {
    const auto read = logic::ParseRectangle(text == nullptr ? "" : text);
    if (!read || rectangle == nullptr) {
        return 0;
    }
    *rectangle = {read->left, read->top, read->right, read->bottom};
    return 1;
}

int a_MakeFullPathName(const char* name, char* fullPath) {
    *fullPath = '\0';
    if (name == nullptr || *name == '\0') {
        return 0;
    }
    return Guarded(0, [&] {
        static const std::string folder = FolderOf(OwnModule());
        return MakeFullPath(folder, name, fullPath);
    });
}

int a_MakeFullPathName2(HMODULE module, const char* name, char* fullPath) {
    *fullPath = '\0';
    if (name == nullptr || *name == '\0') {
        return 0;
    }
    return Guarded(0, [&] { return MakeFullPath(FolderOf(module), name, fullPath); });
}

int a_InsertString(char* text, std::initializer_list<INSERTION> insertions) {
    return Guarded(0, [&] {
        std::vector<logic::Placeholder> placeholders;
        for (const INSERTION& insertion : insertions) {
            placeholders.push_back({insertion.letter, insertion.text == nullptr ? "" : insertion.text});
        }
        const std::string expanded = logic::ExpandTemplate(text, placeholders);
        if (expanded.size() >= TEXT_SIZE) {
            return 0;
        }
        std::memcpy(text, expanded.c_str(), expanded.size() + 1);
        return 1;
    });
}
