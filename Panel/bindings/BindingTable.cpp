#include "Panel/bindings/BindingTable.h"

#include "logic/text/Numbers.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <optional>

namespace {

constexpr std::size_t WIDEST = 60; // letters of a column of text

// "0.4 s", "12 s", "3 min", "2 h"
std::string AgeText(DWORD age) {
    if (age == NO_AGE) {
        return "";
    }
    const DWORD seconds = age / 1000;
    return seconds < 10     ? std::to_string(seconds) + "." + std::to_string(age % 1000 / 100) + " s"
           : seconds < 120  ? std::to_string(seconds) + " s"
           : seconds < 7200 ? std::to_string(seconds / 60) + " min"
                            : std::to_string(seconds / 3600) + " h";
}

// What a row is sorted by: nothing stands before numbers, and numbers before texts.
struct Key {
    std::optional<double> number;
    std::string text;

    int Rank() const { return number ? 1 : text.empty() ? 0 : 2; }
    bool operator<(const Key& other) const {
        if (Rank() != other.Rank()) {
            return Rank() < other.Rank();
        }
        return number ? *number < *other.number : text < other.text;
    }
};

std::string Quoted(const std::string& value) {
    if (value.find_first_of(",\"\r\n;") == std::string::npos) {
        return value;
    }
    std::string quoted = "\"";
    for (const char letter : value) {
        quoted += letter == '"' ? "\"\"" : std::string(1, letter);
    }
    return quoted + "\"";
}

} // namespace

bool BindingTable::Read(HOSTINFO* root) {
    const unsigned version = a_BindingsVersion(root);
    const bool isNew = !isRead_ || version != version_;
    if (isNew) {
        bindings_ = a_ListBindings(root);
        version_ = version;
        isRead_ = true;
    } else {
        for (BINDING& binding : bindings_) {
            a_RefreshBinding(&binding);
        }
    }
    notLive_ = static_cast<int>(std::count_if(
        bindings_.begin(), bindings_.end(), [](const BINDING& binding) { return !a_IsLive(binding.state); }));
    return Arrange() || isNew;
}

void BindingTable::Clear() {
    bindings_ = {};
    shown_ = {};
    isRead_ = false;
    notLive_ = 0;
}

void BindingTable::Search(const std::string& text) {
    words_.clear();
    for (const std::string_view word : logic::SplitFields(text, ' ')) {
        if (!word.empty()) {
            words_.push_back(logic::FoldName(word));
        }
    }
    Arrange();
}

void BindingTable::ShowOnlyNotLive(bool only) {
    onlyNotLive_ = only;
    Arrange();
}

void BindingTable::SortBy(BindingColumn column, bool descending) {
    isSorted_ = true;
    column_ = column;
    descending_ = descending;
    Arrange();
}

bool BindingTable::Matches(const BINDING& binding) const {
    if (!a_IsAlive(binding.object) || (onlyNotLive_ && a_IsLive(binding.state))) {
        return false;
    }
    if (words_.empty()) {
        return true;
    }
    const std::string text = logic::FoldName(binding.object->name + "\n" + binding.row->keyword + "\n" +
                                             binding.address + "\n" + a_StateName(binding.state));
    return std::all_of(words_.begin(), words_.end(),
                       [&](const std::string& word) { return text.find(word) != std::string::npos; });
}

// Which rows there are, and their order; whether that is another one.
bool BindingTable::Arrange() {
    std::vector<std::size_t> before;
    before.swap(shown_);
    for (std::size_t number = 0; number < bindings_.size(); ++number) {
        if (Matches(bindings_[number])) {
            shown_.push_back(number);
        }
    }
    if (isSorted_) {
        Sort();
    }
    return shown_ != before;
}

void BindingTable::Sort() {
    std::vector<Key> keys(bindings_.size());
    for (const std::size_t number : shown_) {
        const BINDING& binding = bindings_[number];
        Key& key = keys[number];
        if (column_ == BindingColumn::Age) {
            key.number = binding.age == NO_AGE ? std::nullopt : std::optional<double>(binding.age);
            continue;
        }
        key.text = logic::FoldName(Cell(binding, column_));
        if (column_ == BindingColumn::Value) {
            if (const auto value = logic::ParseFloat(key.text)) {
                key.number = *value;
            }
        }
    }
    std::stable_sort(shown_.begin(), shown_.end(), [&](std::size_t a, std::size_t b) {
        return descending_ ? keys[b] < keys[a] : keys[a] < keys[b];
    });
}

std::string BindingTable::Cell(int row, BindingColumn column) const {
    return Cell((*this)[row], column);
}

std::string BindingTable::Cell(const BINDING& binding, BindingColumn column) const {
    if (!a_IsAlive(binding.object)) { // until the next look
        return "";
    }
    switch (column) {
    case BindingColumn::Control:
        return binding.object->name;
    case BindingColumn::Keyword:
        return binding.row->keyword;
    case BindingColumn::Address:
        return binding.address;
    case BindingColumn::State:
        return a_StateName(binding.state);
    case BindingColumn::Value: {
        std::string value = a_BindingValue(binding);
        std::replace_if(value.begin(), value.end(), logic::IsControl, ' ');
        return value;
    }
    default:
        return AgeText(binding.age);
    }
}

std::string BindingTable::Csv() const {
    std::string text;
    for (int row = -1; row < Count(); ++row) {
        for (int column = 0; column < BINDING_COLUMNS; ++column) {
            text += column > 0 ? "," : "";
            text += row < 0 ? BINDING_TITLES[column] : Quoted(Cell(row, static_cast<BindingColumn>(column)));
        }
        text += "\r\n";
    }
    return text;
}

std::string BindingTable::Text() const {
    std::vector<std::vector<std::string>> cells;
    std::vector<std::size_t> widths(BINDING_COLUMNS);
    for (int row = -1; row < Count(); ++row) {
        std::vector<std::string>& line = cells.emplace_back();
        for (int column = 0; column < BINDING_COLUMNS; ++column) {
            line.push_back(row < 0 ? BINDING_TITLES[column] : Cell(row, static_cast<BindingColumn>(column)));
            std::size_t& width = widths[static_cast<std::size_t>(column)];
            width = std::max(width, std::min(line.back().size(), WIDEST));
        }
    }
    std::string text;
    for (const std::vector<std::string>& line : cells) {
        std::string padded;
        for (std::size_t column = 0; column < line.size(); ++column) {
            padded += line[column];
            padded.append(widths[column] - std::min(widths[column], line[column].size()) + 2, ' ');
        }
        padded.erase(padded.find_last_not_of(' ') + 1);
        text += padded + "\r\n";
    }
    return text;
}
