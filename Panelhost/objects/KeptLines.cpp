#include "Panelhost/objects/KeptLines.h"

#include "Panelhost/objects/PanelRoot.h"
#include "base/Guard.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

#include <algorithm>

namespace {

constexpr const char* CONNECTION = "connection";

std::string_view KeywordOf(std::string_view line) {
    return logic::SplitPropertyLine(line).keyword;
}

} // namespace

// Reading

void KeptLines::Begin() {
    reading_ = true;
    ++text_;
    ++stage_;
    older_ = strays_.size();
    GoTo(root_);
}

void KeptLines::GoTo(HOSTINFO& object) {
    current_ = &object;
    seen_.clear();
    occurrences_.clear();
    counted_ = 0;
}

void KeptLines::Passed(HOSTINFO& object, std::string_view keyword) {
    if (current_ != &object) {
        GoTo(object);
    }
    seen_.emplace_back(keyword);
    const auto known = keyword == CONNECTION ? blocks_.find(&object) : blocks_.end();
    if (known == blocks_.end()) {
        return;
    }
    // Connections are applied when all has been passed: what comes behind the line is to stand there.
    Block& block = known->second;
    if (std::none_of(block.entries.begin(), block.entries.end(),
                     [](const Entry& entry) { return entry.keyword == CONNECTION; })) {
        PlacesOf(block, CONNECTION).push_back(Insert(block, {CONNECTION, {}, 0, 0, text_, false}));
    }
}

void KeptLines::End() {
    reading_ = false;
    ++stage_;
}

KeptLines::Block::Places& KeptLines::PlacesOf(Block& block, std::string_view keyword) const {
    if (block.stage != stage_) {
        block.places.clear();
        for (auto entry = block.entries.begin(); entry != block.entries.end(); ++entry) {
            if (!(reading_ && entry->kept && entry->text == text_)) {
                block.places[entry->keyword].push_back(entry);
            }
        }
        block.stage = stage_;
    }
    return block.places[std::string(keyword)];
}

bool KeptLines::Forget(Block& block, std::string_view keyword) const {
    auto& places = PlacesOf(block, keyword);
    const auto isKept = [](const auto& entry) { return entry->kept; };
    const auto first = std::find_if(places.begin(), places.end(), isKept);
    if (first == places.end()) {
        return false;
    }
    (*first)->kept = false;
    (*first)->line.clear();
    std::erase_if(places, [&](const auto& entry) {
        const bool isErased = entry->kept;
        if (isErased) {
            block.entries.erase(entry);
        }
        return isErased;
    });
    return true;
}

std::list<KeptLines::Entry>::iterator KeptLines::Insert(Block& block, Entry entry) const {
    const auto last = std::find_if(block.entries.rbegin(), block.entries.rend(),
                                   [&](const Entry& other) { return other.text == text_; });
    return block.entries.insert(last == block.entries.rend() ? block.entries.end() : last.base(),
                                std::move(entry));
}

void KeptLines::Took(HOSTINFO& object, std::string_view keyword) {
    const auto known = blocks_.find(&object);
    if (known == blocks_.end()) {
        return;
    }
    Block& block = known->second;
    Forget(block, keyword);
    auto& places = PlacesOf(block, keyword); // marks alone by now
    if (!places.empty()) {
        places.front()->text = text_;
    } else {
        places.push_back(Insert(block, {std::string(keyword), {}, 0, 0, text_, false}));
    }
}

bool KeptLines::Refused(HOSTINFO& object, std::string_view line, std::size_t number, int reason) {
    const logic::PropertyLine parts = logic::SplitPropertyLine(line);
    Entry entry{std::string(parts.keyword), std::string(line), number, reason, text_, true};
    const auto [known, isNew] = blocks_.try_emplace(&object);
    Block& block = known->second;
    if (isNew && current_ == &object) {
        for (const std::string& keyword : seen_) {
            Took(object, keyword);
        }
    }
    const bool replaces = Forget(block, parts.keyword);
    if (replaces && parts.value.empty()) {
        return false;
    }
    // A keyword that this text has set before keeps its own line, too. Connections are applied when all has
    // been passed, so a mark says nothing about them.
    const bool isDeferred = parts.keyword == CONNECTION;
    auto& places = PlacesOf(block, parts.keyword);
    const auto mark = std::find_if(places.begin(), places.end(),
                                   [&](const auto& other) { return isDeferred || other->text != text_; });
    if (mark != places.end()) {
        **mark = std::move(entry);
        places.erase(mark);
    } else {
        Insert(block, std::move(entry));
    }
    return true;
}

KeptLines::Place KeptLines::Reserve(HOSTINFO& owner, std::string_view line, std::size_t number, int reason) {
    Stray stray;
    stray.owner = &owner;
    stray.line = line;
    stray.number = number;
    stray.reason = reason;
    stray.text = text_;
    stray.after = current_;
    if (!seen_.empty()) {
        stray.behind = seen_.back();
        for (; counted_ < seen_.size(); ++counted_) {
            ++occurrences_[seen_[counted_]];
        }
        stray.occurrence = occurrences_[stray.behind];
    }
    return strays_.insert(strays_.end(), std::move(stray));
}

void KeptLines::Confirm(Place place) {
    // One that an earlier text had, or whose owner has come back, stands where it stood.
    const std::string full = FullLine(*place);
    const auto end = std::next(strays_.begin(), static_cast<std::ptrdiff_t>(older_));
    const auto former = std::find_if(strays_.begin(), end, [&](const Stray& stray) {
        return stray.text != text_ && (stray.present || stray.owner == nullptr) && FullLine(stray) == full;
    });
    place->present = true;
    if (former != end) {
        former->owner = place->owner;
        former->line = std::move(place->line);
        former->number = place->number;
        former->reason = place->reason;
        former->text = text_;
        former->present = true;
        strays_.erase(place);
    }
}

// Objects that come, change and go

void KeptLines::KeywordSet(HOSTINFO& object, std::string_view keyword) {
    if (const auto known = blocks_.find(&object); known != blocks_.end()) {
        Forget(known->second, keyword);
    }
}

void KeptLines::Added(HOSTINFO& object) {
    if (strays_.empty()) {
        return;
    }
    const std::string name = logic::FoldName(object.name);
    for (Stray& stray : strays_) {
        const auto was = std::find(stray.gone.begin(), stray.gone.end(), name);
        if (was != stray.gone.end()) {
            stray.after = &object;
            stray.gone.erase(was, stray.gone.end());
        }
    }
}

// What went is known by its name; what is inside the object would come back inside it.
void KeptLines::Renamed(const std::string& from, const std::string& to) {
    const std::string path = logic::FoldName(from) + "*";
    for (Stray& stray : strays_) {
        for (std::string& gone : stray.gone) {
            if (gone.starts_with(path)) {
                gone.replace(0, path.size() - 1, logic::FoldName(to));
            }
        }
        if (stray.owner == nullptr && logic::FoldName(stray.line).starts_with(path)) {
            stray.line.replace(0, path.size() - 1, to);
        }
    }
}

void KeptLines::Removed(HOSTINFO& object, HOSTINFO& before) noexcept {
    blocks_.erase(&object);
    if (current_ == &object) {
        GoTo(before);
    }
    for (Stray& stray : strays_) {
        if (stray.owner == &object) {
            Guarded([&] { stray.line = FullLine(stray); });
            stray.owner = nullptr;
            stray.present = false;
        }
        if (stray.after == &object) {
            stray.after = &before;
            Guarded([&] { stray.gone.push_back(logic::FoldName(object.name)); });
        }
    }
}

void KeptLines::Clear() {
    blocks_.clear();
    strays_.clear();
    older_ = 0;
    current_ = nullptr;
}

// Writing

struct KeptLines::Written {
    std::string keyword;
    std::string line;
    std::vector<std::string> strays; // directly behind it
};

std::string KeptLines::Prefix(const HOSTINFO& object) {
    return object.kind == KIND_ROOT ? "" : object.name + "*";
}

std::string KeptLines::FullLine(const Stray& stray) {
    return stray.owner == nullptr ? stray.line : Prefix(*stray.owner) + stray.line;
}

bool KeptLines::Concerns(const HOSTINFO& object) const {
    return blocks_.find(&object) != blocks_.end() ||
           std::any_of(strays_.begin(), strays_.end(),
                       [&](const Stray& stray) { return stray.present && stray.after == &object; });
}

std::vector<KeptLines::Written> KeptLines::MergedBlock(const HOSTINFO& object, std::string_view own) const {
    std::list<Written> lines;
    std::unordered_map<std::string, std::list<Written>::iterator> ownLines;
    for (std::string_view line : logic::SplitFields(own, '\n')) {
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        if (!line.empty()) {
            const std::string keyword(KeywordOf(line));
            ownLines.emplace(keyword, lines.insert(lines.end(), {keyword, std::string(line), {}}));
        }
    }
    auto at = lines.begin();
    if (at != lines.end() && at->keyword == "control") {
        ++at;
    }
    if (const auto known = blocks_.find(&object); known != blocks_.end()) {
        std::unordered_map<std::string_view, bool> isSet; // a keyword that the text also set
        for (const Entry& entry : known->second.entries) {
            isSet[entry.keyword] |= !entry.kept;
        }
        for (const Entry& entry : known->second.entries) {
            const auto ownLine = ownLines.find(entry.keyword);
            if (!entry.kept) {
                at = ownLine == ownLines.end() ? at : std::next(ownLine->second);
            } else if (ownLine == ownLines.end() || isSet[entry.keyword]) {
                lines.insert(at, {entry.keyword, Prefix(object) + entry.line, {}});
            } else {
                ownLine->second->line = Prefix(object) + entry.line;
                at = std::next(ownLine->second);
                ownLines.erase(ownLine);
            }
        }
    }
    return {std::make_move_iterator(lines.begin()), std::make_move_iterator(lines.end())};
}

std::string KeptLines::Merged(const HOSTINFO& object, std::string_view own, bool forFile) const {
    std::vector<Written> lines = MergedBlock(object, own);
    std::vector<std::string> head;
    std::vector<std::string> tail;
    for (const Stray& stray : strays_) {
        if (!stray.present || (forFile ? stray.after : stray.owner) != &object) {
            continue;
        }
        if (!forFile) {
            tail.push_back(FullLine(stray));
            continue;
        }
        std::size_t left = stray.gone.empty() ? stray.occurrence : 0;
        Written* behind = nullptr; // that line, or the last such where there are fewer
        for (Written& line : lines) {
            if (left > 0 && line.keyword == stray.behind) {
                behind = &line;
                --left;
            }
        }
        const bool isFirst = stray.occurrence == 0 && stray.gone.empty();
        (behind != nullptr ? behind->strays : isFirst ? head : tail).push_back(FullLine(stray));
    }
    std::string text;
    const auto append = [&text](const std::vector<std::string>& all) {
        for (const std::string& line : all) {
            text += line + "\r\n";
        }
    };
    append(head);
    for (const Written& line : lines) {
        text += line.line + "\r\n";
        append(line.strays);
    }
    append(tail);
    return text;
}

std::vector<KeptLines::Unread> KeptLines::List() const {
    std::vector<Unread> all;
    for (const auto& [object, block] : blocks_) {
        for (const Entry& entry : block.entries) {
            if (entry.kept) {
                all.push_back({object->kind == KIND_ROOT ? "" : object->name, Prefix(*object) + entry.line,
                               entry.number, entry.reason});
            }
        }
    }
    for (const Stray& stray : strays_) {
        if (stray.present) {
            all.push_back({stray.owner->kind == KIND_ROOT ? "" : stray.owner->name, FullLine(stray),
                           stray.number, stray.reason});
        }
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const Unread& one, const Unread& other) { return one.number < other.number; });
    return all;
}

std::string KeptLines::ValueRefused(const HOSTINFO& object, int reason) const {
    if (const auto known = blocks_.find(&object); known != blocks_.end()) {
        for (const Entry& entry : known->second.entries) {
            if (entry.kept && entry.reason == reason) {
                return std::string(logic::SplitPropertyLine(entry.line).value);
            }
        }
    }
    return {};
}
