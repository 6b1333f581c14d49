#include "logic/editing/EditHistory.h"

#include "logic/editing/ComponentText.h"
#include "logic/text/PropertyLine.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace logic {

namespace {

constexpr std::uint64_t RUN_PAUSE = 700; // milliseconds

std::string ParentOf(const std::string& name) {
    const auto star = name.rfind('*');
    return star == std::string::npos ? "" : name.substr(0, star);
}

bool IsInside(const std::string& name, const std::string& outer) {
    return name.size() > outer.size() && name[outer.size()] == '*' &&
           name.compare(0, outer.size(), outer) == 0;
}

// A control may have taken its size from an image, and a part that its owner makes comes as the owner makes
// it.
void FollowHeader(const EditStep::Text& text, EditTarget& target) {
    const auto wanted = HeaderOf(text.after);
    const auto held = HeaderOf(target.Text(text.name));
    if (!wanted || !held) {
        return;
    }
    if (!(held->rectangle == wanted->rectangle)) {
        target.Place(text.name, wanted->rectangle);
    }
    if (held->style != wanted->style) {
        target.SetStyle(text.name, held->style ^ wanted->style, wanted->style);
    }
}

bool Holds(std::string_view text, const std::string& lines) {
    const std::vector<std::string> all = SplitLines(text);
    const std::unordered_set<std::string> held(all.begin(), all.end());
    const std::vector<std::string> wanted = SplitLines(lines);
    const auto isSet = [&](const std::string& line) {
        return std::any_of(all.begin(), all.end(),
                           [&](const std::string& other) { return other.starts_with(line); });
    };
    return std::all_of(wanted.begin(), wanted.end(), [&](const std::string& line) {
        return held.contains(line) ||
               (line.ends_with('=') && !isSet(line)); // a keyword at nothing may not be written at all
    });
}

// Only siblings have an order of their own: what is inside a control goes with it.
void Reorder(const std::vector<std::string>& wanted, EditTarget& target) {
    std::map<std::string, std::pair<std::vector<std::string>, std::vector<std::string>>> families;
    for (const std::string& name : target.Order()) {
        families[ParentOf(name)].first.push_back(name);
    }
    for (const std::string& name : wanted) {
        families[ParentOf(name)].second.push_back(name);
    }
    for (const auto& [parent, orders] : families) {
        for (const OrderMove& move : OrderMoves(orders.first, orders.second)) {
            target.MoveBefore(move.name, move.before);
        }
    }
}

// Of the wanted lines those that an object has held and holds no more: another line has set their keyword
// too.
std::string LostLines(std::string_view before, std::string_view now, std::string_view wanted) {
    const std::vector<std::string> earlier = SplitLines(before);
    const std::unordered_set<std::string> was(earlier.begin(), earlier.end());
    const std::vector<std::string> later = SplitLines(now);
    const std::unordered_set<std::string> is(later.begin(), later.end());
    std::string lost;
    for (const std::string& line : SplitLines(wanted)) {
        const bool isLost = was.contains(line) && !is.contains(line);
        lost += isLost && SplitPropertyLine(line).keyword != "control" ? line + "\r\n" : "";
    }
    return lost;
}

void MakeAnew(const EditStep::Text& text, EditTarget& target) {
    const std::vector<std::string> order = target.Order();
    const bool hasParts = std::any_of(order.begin(), order.end(),
                                      [&](const std::string& name) { return IsInside(name, text.name); });
    if (!hasParts) { // parts hold more than the text of what they are in
        target.Destroy(text.name);
        target.Load(text.after);
        Reorder(order, target);
    }
}

void Change(const EditStep::Text& text, EditTarget& target) {
    const std::string lines = ChangedLines(text.before, text.after);
    if (!lines.empty()) {
        const std::string held = target.Text(text.name);
        bool isTaken = target.Load(lines);
        const std::string lost = LostLines(held, target.Text(text.name), text.after);
        isTaken = (lost.empty() || target.Load(lost)) && isTaken;
        // An empty name is the root's, which is never made anew.
        if (!text.name.empty() && (!isTaken || !Holds(target.Text(text.name), lines + lost))) {
            MakeAnew(text, target);
            return FollowHeader(text, target);
        }
    }
    const auto before = HeaderOf(text.before);
    const auto after = HeaderOf(text.after);
    if (!before || !after) {
        return;
    }
    if (!(before->rectangle == after->rectangle)) {
        target.Place(text.name, after->rectangle);
    }
    if (before->style != after->style) {
        target.SetStyle(text.name, before->style ^ after->style, after->style);
    }
}

void RestoreOrder(const EditStep& step, EditTarget& target) {
    // A control that makes its own parts has made those anew that were deleted before.
    const std::unordered_set<std::string> wanted(step.orderAfter.begin(), step.orderAfter.end());
    for (const std::string& name : target.Order()) {
        const bool isNew = std::any_of(step.texts.begin(), step.texts.end(), [&](const EditStep::Text& text) {
            return text.before.empty() && IsInside(name, text.name);
        });
        if (isNew && !wanted.contains(name) && target.Exists(name)) {
            target.Destroy(name);
        }
    }
    Reorder(step.orderAfter, target);
}

void Join(EditStep& step, EditStep&& next) {
    for (EditStep::Place& place : next.places) {
        const auto known =
            std::find_if(step.places.begin(), step.places.end(),
                         [&](const EditStep::Place& other) { return other.name == place.name; });
        if (known == step.places.end()) {
            step.places.push_back(std::move(place));
        } else {
            known->after = place.after;
        }
    }
    for (EditStep::Text& text : next.texts) {
        const auto known = std::find_if(step.texts.begin(), step.texts.end(),
                                        [&](const EditStep::Text& other) { return other.name == text.name; });
        if (known == step.texts.end()) {
            step.texts.push_back(std::move(text));
        } else {
            known->after = std::move(text.after);
        }
    }
}

} // namespace

EditStep EditStep::Reversed() const {
    EditStep reversed = *this;
    std::reverse(reversed.names.begin(), reversed.names.end());
    for (Name& name : reversed.names) {
        name.before.swap(name.after);
    }
    reversed.namesComeLast = !namesComeLast;
    for (Text& text : reversed.texts) {
        text.before.swap(text.after);
    }
    for (Place& place : reversed.places) {
        std::swap(place.before, place.after);
    }
    reversed.orderBefore.swap(reversed.orderAfter);
    return reversed;
}

std::size_t EditStep::Bytes() const {
    std::size_t bytes = sizeof *this;
    for (const Name& name : names) {
        bytes += sizeof name + name.before.size() + name.after.size();
    }
    for (const Text& text : texts) {
        bytes += sizeof text + text.name.size() + text.before.size() + text.after.size();
    }
    for (const Place& place : places) {
        bytes += sizeof place + place.name.size();
    }
    for (const auto* order : {&orderBefore, &orderAfter}) {
        for (const std::string& name : *order) {
            bytes += sizeof name + name.size();
        }
    }
    return bytes;
}

void ApplyStep(const EditStep& step, EditTarget& target) {
    const auto rename = [&] {
        for (const EditStep::Name& name : step.names) {
            target.Rename(name.before, name.after);
        }
    };
    if (!step.namesComeLast) {
        rename();
    }
    for (auto text = step.texts.rbegin(); text != step.texts.rend(); ++text) { // parts before what holds them
        if (text->after.empty() && target.Exists(text->name)) {
            target.Destroy(text->name);
        }
    }
    std::string created;
    for (const EditStep::Text& text : step.texts) {
        if (text.before.empty()) {
            created += text.after;
        }
    }
    if (!created.empty()) {
        target.Load(created);
    }
    for (const EditStep::Text& text : step.texts) {
        if (text.after.empty()) {
            continue;
        }
        if (text.before.empty()) {
            FollowHeader(text, target);
        } else {
            Change(text, target);
        }
    }
    for (const EditStep::Place& place : step.places) {
        target.Place(place.name, place.after);
    }
    if (!step.orderAfter.empty()) {
        RestoreOrder(step, target);
    }
    if (step.namesComeLast) {
        rename();
    }
}

std::vector<OrderMove> OrderMoves(const std::vector<std::string>& from, const std::vector<std::string>& to) {
    std::unordered_map<std::string, std::size_t> now;
    for (std::size_t i = 0; i < from.size(); ++i) {
        now[from[i]] = i;
    }
    std::vector<std::string> wanted;
    for (const std::string& name : to) {
        if (now.contains(name)) {
            wanted.push_back(name);
        }
    }
    // Those of the longest series that is in order already stay where they are.
    std::vector<std::size_t> tails; // of the best series of each length: index in wanted
    std::vector<std::size_t> previous(wanted.size(), SIZE_MAX);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const auto place =
            std::lower_bound(tails.begin(), tails.end(), now[wanted[i]],
                             [&](std::size_t tail, std::size_t at) { return now[wanted[tail]] < at; });
        if (place != tails.begin()) {
            previous[i] = *(place - 1);
        }
        if (place == tails.end()) {
            tails.push_back(i);
        } else {
            *place = i;
        }
    }
    std::vector<bool> stays(wanted.size(), false);
    for (std::size_t i = tails.empty() ? SIZE_MAX : tails.back(); i != SIZE_MAX; i = previous[i]) {
        stays[i] = true;
    }
    std::vector<OrderMove> moves;
    for (std::size_t i = wanted.size(); i-- > 0;) {
        if (!stays[i]) {
            moves.push_back({wanted[i], i + 1 < wanted.size() ? wanted[i + 1] : ""});
        }
    }
    return moves;
}

bool EditHistory::Commit(EditStep step, std::string label) {
    return CommitRun(std::move(step), std::move(label), 0, 0);
}

bool EditHistory::CommitRun(EditStep step, std::string label, int key, std::uint64_t milliseconds) {
    if (step.IsEmpty()) {
        return false;
    }
    if (key != 0 && position_ > 0 && !CanRedo() && !IsSaved()) {
        Entry& last = entries_.back();
        if (last.key == key && milliseconds - last.time <= RUN_PAUSE) {
            Join(last.step, std::move(step));
            last.time = milliseconds;
            bytes_ -= std::exchange(last.bytes, last.step.Bytes());
            bytes_ += last.bytes;
            Shorten();
            return false;
        }
    }
    if (saved_ && *saved_ > position_) {
        saved_.reset(); // there is no way back to it
    }
    while (CanRedo()) {
        bytes_ -= entries_.back().bytes;
        entries_.pop_back();
    }
    const std::size_t bytes = step.Bytes();
    entries_.push_back({std::move(step), std::move(label), key, milliseconds, bytes});
    bytes_ += bytes;
    ++position_;
    Shorten();
    return true;
}

// Called when there is nothing to redo.
void EditHistory::Shorten() {
    while (bytes_ > limit_ && entries_.size() > 1) {
        bytes_ -= entries_.front().bytes;
        entries_.pop_front();
        --position_;
        if (saved_ && (*saved_)-- == 0) {
            saved_.reset();
        }
    }
}

std::optional<EditStep> EditHistory::Undo() {
    if (!CanUndo()) {
        return std::nullopt;
    }
    entries_[--position_].key = 0; // a run does not go on over an undo
    return entries_[position_].step.Reversed();
}

std::optional<EditStep> EditHistory::Redo() {
    if (!CanRedo()) {
        return std::nullopt;
    }
    return entries_[position_++].step;
}

void EditHistory::MarkSaved() {
    saved_ = position_;
}

} // namespace logic
