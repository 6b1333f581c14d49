#pragma once

#include "Panelhost/BindingList.h"

#include <string>
#include <vector>

enum class BindingColumn { Control, Keyword, Address, State, Value, Age };
constexpr int BINDING_COLUMNS = 6;
constexpr const char* BINDING_TITLES[BINDING_COLUMNS] = {"Control", "Keyword", "Bound to",
                                                         "State",   "Value",   "Age"};

// The bindings of a panel as rows: those that are searched for, in the order that is asked for.
class BindingTable {
public:
    // Looks at the panel: a walk over all its texts when something came, went or was bound since, otherwise
    // over the states alone. Whether other rows are shown than before, or in another order.
    bool Read(HOSTINFO* root);
    void Clear();

    // Rows that hold all words of the text, in control, keyword, address or state, without regard to case;
    // only those that are not live when that is asked for.
    void Search(const std::string& text);
    void ShowOnlyNotLive(bool only);
    // By a column; in the order of saving at first.
    void SortBy(BindingColumn column, bool descending);

    // Of the rows that are shown.
    int Count() const { return static_cast<int>(shown_.size()); }
    const BINDING& operator[](int row) const { return bindings_[shown_[static_cast<std::size_t>(row)]]; }
    std::string Cell(int row, BindingColumn column) const;
    // Numbers of the bindings in the order of rows: another order, or other rows, when they differ.
    const std::vector<std::size_t>& Shown() const { return shown_; }

    int Total() const { return static_cast<int>(bindings_.size()); }
    int NotLive() const { return notLive_; }

    // What is shown as a file: columns with blanks between them, or values with commas between them, quoted
    // where need be. Lines end with CR LF; the first one holds the titles.
    std::string Text() const;
    std::string Csv() const;

private:
    bool Arrange();
    bool Matches(const BINDING& binding) const;
    void Sort();
    std::string Cell(const BINDING& binding, BindingColumn column) const;

    std::vector<BINDING> bindings_;
    std::vector<std::size_t> shown_; // numbers of bindings, in the order of rows
    unsigned version_ = 0;
    bool isRead_ = false;
    int notLive_ = 0;
    std::vector<std::string> words_; // folded
    bool onlyNotLive_ = false;
    bool isSorted_ = false;
    BindingColumn column_ = BindingColumn::Control;
    bool descending_ = false;
};
