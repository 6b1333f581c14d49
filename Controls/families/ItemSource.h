#pragma once

#include "Controls/families/FunctionList.h"
#include "logic/text/Items.h"

#include <optional>
#include <string>
#include <utility>

// The list that a control offers: that of text parameters it is bound to, as soon as there is one, else one
// of lines (of a file), else its own text.
class ItemSource {
public:
    // Once, when the control is created.
    void Attach(HOSTINFO& control) { functions_.Attach(control); }

    const logic::Items& Get() const { return items_; }

    // The control's own list as it was written.
    const std::string& Text() const { return own_; }
    void SetText(const std::string& text);
    // One entry a line; nothing for no such list.
    void SetLines(std::optional<std::string> lines);
    // The functions that hold a list, joined by ";".
    std::string Functions() const { return functions_.Text(); }
    bool SetFunctions(HOSTINFO& control, const std::string& text);

    // Asks for the list; the result of the poll. Without an answer the list stays.
    int Poll();
    // Whether it is another one since this was asked last.
    bool IsChanged() { return std::exchange(isChanged_, false); }

private:
    enum class From { Text, Lines, Functions };

    From Source() const;
    void Use(bool isNew); // the text of the source

    FunctionList functions_;
    std::string own_;
    std::optional<std::string> lines_;
    std::optional<std::string> heard_; // what the functions hold, as soon as they have answered
    From used_ = From::Text;
    logic::Items items_;
    bool isChanged_ = false;
};

// Keywords of such a list, by member functions of the control.
template <auto Get, auto Set>
constexpr Keyword ItemsKeyword() {
    return Property<Get, Set>("items").Saved().Label("Items").Says(
        "What can be chosen, joined by `;`: `caption`, or `caption=value` with the value that stands for it; "
        "a backslash in front of `;`, `=` or another one makes that part of the caption.");
}
template <auto Get, auto Set>
constexpr Keyword ItemsFunctionKeyword() {
    return Property<Get, Set>("itemsfunction", KeywordKind::Addresses)
        .Saved()
        .Label("Function of the items")
        .Says("Text parameters of devices that hold the items, joined by `;`, in place of those of the "
              "control.");
}
