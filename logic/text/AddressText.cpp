#include "logic/text/AddressText.h"

#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

#include <algorithm>

namespace logic {

namespace {

constexpr int DEEPEST_LINE = 8; // lines that set lines

class Finder {
public:
    Finder(std::string_view text, const FormOfKeyword& formOf) : text_(text), formOf_(formOf) {}

    std::vector<AddressPlace> Find(AddressForm form) {
        Search(form, 0, 0);
        return std::move(places_);
    }

private:
    // In the text from there on.
    void Search(AddressForm form, std::size_t from, int depth) {
        switch (form) {
        case AddressForm::Functions:
        case AddressForm::Connections:
            for (std::size_t entry = from; entry <= text_.size();) {
                const std::size_t end = std::min(text_.find(';', entry), text_.size());
                Add(entry, end, form);
                entry = end + 1;
            }
            break;
        case AddressForm::Pattern:
            Add(from, text_.size(), form);
            break;
        case AddressForm::Line:
            SearchLine(from, depth);
            break;
        case AddressForm::Inserted:
            SearchInsertions(from);
            break;
        case AddressForm::None:
            break;
        }
    }

    void SearchLine(std::size_t from, int depth) {
        const PropertyLine line = SplitPropertyLine(text_.substr(from));
        if (!line.hasEquals) {
            return; // it sets nothing
        }
        if (!line.object.empty()) {
            Add(from, from + line.object.size() + 1 + line.keyword.size(), AddressForm::Line);
        }
        if (formOf_ && depth < DEEPEST_LINE) {
            Search(formOf_(line.keyword), static_cast<std::size_t>(line.value.data() - text_.data()),
                   depth + 1);
        }
    }

    void SearchInsertions(std::size_t from) {
        while ((from = text_.find("%{", from)) != std::string_view::npos) {
            const std::size_t end = text_.find('}', from);
            if (end == std::string_view::npos) {
                break;
            }
            Add(from + 2, end, AddressForm::Inserted);
            from = end + 1;
        }
    }

    void Add(std::size_t from, std::size_t end, AddressForm form) {
        const std::string_view address = form == AddressForm::Functions || form == AddressForm::Connections
                                             ? TrimBlanks(text_.substr(from, end - from))
                                             : text_.substr(from, end - from);
        if (!address.empty()) {
            places_.push_back(
                {static_cast<std::size_t>(address.data() - text_.data()), address.size(), form});
        }
    }

    std::string_view text_;
    const FormOfKeyword& formOf_;
    std::vector<AddressPlace> places_;
};

} // namespace

std::vector<AddressPlace> FindAddresses(AddressForm form, std::string_view text,
                                        const FormOfKeyword& formOf) {
    return Finder(text, formOf).Find(form);
}

std::optional<std::string> WithAddresses(AddressForm form, std::string_view text,
                                         const std::vector<AddressPlace>& places,
                                         const std::vector<std::string>& addresses,
                                         const FormOfKeyword& formOf) {
    std::string changed;
    std::size_t done = 0;
    for (std::size_t i = 0; i < places.size() && i < addresses.size(); ++i) {
        changed += text.substr(done, places[i].from - done);
        changed += addresses[i];
        done = places[i].from + places[i].length;
    }
    changed += text.substr(done);
    const std::vector<AddressPlace> found = FindAddresses(form, changed, formOf);
    const bool isRead = std::equal(
        found.begin(), found.end(), addresses.begin(), addresses.end(),
        [&](const AddressPlace& place, const std::string& address) { return place.In(changed) == address; });
    return isRead ? std::optional(std::move(changed)) : std::nullopt;
}

} // namespace logic
