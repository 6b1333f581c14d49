#include "logic/editing/Renaming.h"

#include "logic/text/NamePattern.h"
#include "logic/text/PropertyLine.h"

#include <algorithm>

namespace logic {

namespace {

bool IsWithin(std::string_view folded, std::string_view outer) {
    return folded.starts_with(outer) && (folded.size() == outer.size() || folded[outer.size()] == '*');
}

bool IsSame(std::string_view name, std::string_view other) {
    return FoldName(name) == FoldName(other);
}

std::string PathOf(const std::string& name) {
    const auto star = name.rfind('*');
    return star == std::string::npos ? "" : name.substr(0, star);
}

std::string Inside(const std::string& path, std::string_view name) {
    return path.empty() ? std::string(name) : path + "*" + std::string(name);
}

std::string Insert(std::string_view text, const std::string& inserted) {
    std::string whole(text);
    for (auto place = whole.find("%n"); place != std::string::npos;
         place = whole.find("%n", place + inserted.size())) {
        whole.replace(place, 2, inserted);
    }
    return whole;
}

// What goes before is put in front of a name that is inside the path.
std::optional<std::string> TailOf(const std::string& name, const std::string& path) {
    return !path.empty() && name.size() > path.size() && IsWithin(FoldName(name), FoldName(path))
               ? std::optional(name.substr(path.size() + 1))
               : std::nullopt;
}

} // namespace

struct Renaming::Place {
    std::string path;
    std::string newPath;
    bool mayBeRelative = false;
    bool hasKeyword = false;
    std::string inserted; // for "%n"
    std::string newInserted;

    std::string Now(std::string_view text) const { return Expand(text, inserted); }
    std::string Then(std::string_view text) const { return Expand(text, newInserted); }

private:
    static std::string Expand(std::string_view text, const std::string& inserted) {
        std::string whole = Insert(text, inserted);
        return whole.starts_with('*') ? whole.substr(1) : whole;
    }
};

std::string Renaming::After(std::string_view fullName) const {
    const std::string folded = FoldName(fullName);
    const NewName* best = nullptr; // the most particular one
    for (const NewName& name : names_) {
        if (IsWithin(folded, FoldName(name.from)) &&
            (best == nullptr || name.from.size() > best->from.size())) {
            best = &name;
        }
    }
    return best == nullptr ? std::string(fullName)
                           : best->to + std::string(fullName.substr(best->from.size()));
}

bool Renaming::ExistsAfter(const std::string& fullName) const {
    const std::string folded = FoldName(fullName);
    for (const NewName& name : names_) {
        if (IsWithin(folded, FoldName(name.to))) {
            if (exists_(name.from + fullName.substr(name.to.size()))) {
                return true;
            }
        }
    }
    return IsSame(After(fullName), fullName) && exists_(fullName);
}

std::optional<Renaming::Found> Renaming::Find(std::string_view name, const std::string& path,
                                              const Place& place, const Exists& exists) {
    const auto star = name.rfind('*');
    for (const std::size_t length : {name.size(), place.hasKeyword ? star : std::string_view::npos}) {
        if (length == std::string_view::npos) {
            continue;
        }
        const std::string object(name.substr(0, length));
        const std::string rest(name.substr(length));
        if (place.mayBeRelative && !path.empty() && exists(Inside(path, object))) {
            return Found{Inside(path, object), rest, true};
        }
        if (exists(object)) {
            return Found{object, rest, false};
        }
    }
    return std::nullopt;
}

Renaming::Followed Renaming::FollowName(std::string_view name, const Place& place) const {
    const std::string now = place.Now(name);
    const Exists existsAfter = [this](const std::string& other) { return ExistsAfter(other); };
    const auto before = Find(now, place.path, place, exists_);
    if (!before) { // nothing has that name; it is followed by its letters
        const std::string inside = Inside(place.path, now);
        std::string then = After(now);
        if (place.mayBeRelative && then == now) {
            then = TailOf(After(inside), place.newPath).value_or(then);
        }
        const std::string text = IsSame(place.Then(name), then) ? std::string(name) : then;
        return {text, !Find(place.Then(text), place.newPath, place, existsAfter)};
    }
    const std::string wanted = After(before->object);
    std::vector<std::string> ways{std::string(name)};
    if (const auto tail = TailOf(wanted, place.newPath)) {
        if (name.starts_with("%n*")) {
            ways.push_back("%n*" + *tail + before->rest);
        }
        if (before->isRelative) {
            ways.push_back(*tail + before->rest);
        }
    }
    ways.push_back(wanted + before->rest);
    for (const std::string& way : ways) {
        const auto then = Find(place.Then(way), place.newPath, place, existsAfter);
        if (then && IsSame(then->object, wanted) && then->rest == before->rest) {
            return {way, true};
        }
    }
    return {ways.back(), false};
}

Renaming::Followed Renaming::FollowPattern(std::string_view pattern, const Holder& holder,
                                           const Place& place) const {
    // What stands in front of the name with the number is the same for all.
    const std::string now = place.Now(pattern);
    const std::size_t star = now.substr(0, now.find('%')).rfind('*');
    const std::string head = star == std::string::npos ? "" : now.substr(0, star);
    const std::string then = After(head) + now.substr(head.size());
    Followed followed{place.Then(pattern) == then ? std::string(pattern) : then};
    const std::vector<std::string> names = ExpandPatterns(now, holder.inputs, holder.outputs);
    const std::vector<std::string> wanted = ExpandPatterns(then, holder.inputs, holder.outputs);
    for (std::size_t i = 0; i < names.size() && followed.keepsMeaning; ++i) {
        const Followed one = FollowName(names[i], place);
        followed.keepsMeaning = one.keepsMeaning && IsSame(one.address, wanted[i]);
    }
    return followed;
}

Renaming::Followed Renaming::Follow(AddressForm form, std::string_view address, const Holder& holder) const {
    const std::string newName = After(holder.name);
    const bool isLookedUpInside = form == AddressForm::Line || form == AddressForm::Inserted;
    const std::string path = PathOf(holder.name);
    const std::string newPath = PathOf(newName);
    const bool isOfControl = form == AddressForm::Line || holder.isInLine; // what "%n" stands for
    const bool isInserted = isOfControl || form != AddressForm::Inserted;
    const Place place{path,
                      newPath,
                      isLookedUpInside,
                      form != AddressForm::Line,
                      isInserted ? (isOfControl ? holder.name : path) : "%n",
                      isInserted ? (isOfControl ? newName : newPath) : "%n"};
    if (form == AddressForm::Pattern) {
        return FollowPattern(address, holder, place);
    }
    if (form != AddressForm::Line) {
        return FollowName(address, place);
    }
    const std::string_view object = address.substr(0, std::min(address.rfind('*'), address.size()));
    if (Insert(object, "").find('%') != std::string::npos) { // it is not known before the click
        return {std::string(address)};
    }
    Followed followed = FollowName(object, place);
    followed.address += address.substr(object.size());
    return followed;
}

} // namespace logic
