#pragma once

#include "Controls/families/CurveView.h"
#include "Controls/families/HeldBlock.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// A view of curves whose items - bands, ways - are blocks of their own, each asked by itself. `Held` is the
// HeldBlock of one: made of the view, with IsMissing(), and with Text and Read for the form of its value.
template <class Held>
class CURVELISTPROPERTIES : public CURVEVIEWPROPERTIES {
public:
    void BindingsChanged() override {
        items_.clear();
        CURVEVIEWPROPERTIES::BindingsChanged();
    }

    void Poll() override {
        const bool isAll = FollowRequests();
        const std::vector<int> missingBefore = Missing();
        int worst = isAll ? REQUEST_UNCHANGED : REQUEST_UNREACHABLE;
        for (const auto& item : std::vector(items_)) { // whoever is asked may have them bound anew
            worst = std::max(worst, item->Ask());
        }
        if (Missing() != missingBefore) {
            RedrawView();
        }
        ShowPollResult(Missing().empty() ? worst : std::max(worst, REQUEST_DISAGREE));
    }

    std::vector<int> Missing() const override {
        std::vector<int> missing;
        for (std::size_t i = 0; i < items_.size(); ++i) {
            if (items_[i]->IsMissing()) {
                missing.push_back(static_cast<int>(i) + 1);
            }
        }
        return missing;
    }

    int ValueKeyword(VALUERECORD& record) {
        if (record.command == COMMAND_GET) {
            std::string text;
            for (const auto& item : items_) {
                text += (item == items_.front() ? "" : ";") + Held::Text(item->value);
            }
            return a_AnswerText(&record, text.c_str());
        }
        const auto text = record.index != 0 ? TextToSet(&record) : std::nullopt;
        FollowRequests();
        if (!text || items_.empty()) {
            return 0;
        }
        const std::vector<std::string_view> given = logic::SplitFields(*text, ';');
        const auto isRead = [](std::string_view item) {
            return item.empty() || Held::Read(item, {}).has_value();
        };
        if (given.size() > items_.size() || !std::all_of(given.begin(), given.end(), isRead)) {
            return 0;
        }
        for (std::size_t i = 0; i < given.size(); ++i) {
            SetItem(i, given[i]);
        }
        return 1;
    }

protected:
    // The items are those of the requests, which are built anew whenever something comes or goes. Whether all
    // of them can be shown.
    virtual bool FollowRequests() = 0;
    // Shows and sends what was read; an empty text changes nothing. The view may be gone afterwards.
    virtual void SetItem(std::size_t number, std::string_view text) = 0;

    std::vector<std::shared_ptr<Held>> items_;
};

template <class Held>
constexpr Keyword CurveListValue() {
    return Handled<&CURVELISTPROPERTIES<Held>::ValueKeyword>("value", KeywordKind::Text);
}
