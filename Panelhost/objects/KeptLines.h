#pragma once

#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class HOSTINFO;
class PanelRoot;

// Lines of panel files that nothing could be made of here: the name of a picture that is missing, a keyword
// or class of a newer version, damage. They are written back where they stood, so that opening a panel and
// saving it loses nothing.
//
// A line of an object that lives stands in place of the object's own line of that keyword and goes when the
// keyword is set. All others are strays: a control of an unknown class with all its lines, a header that
// cannot be read. They belong to the object that was to contain them, and stand behind a line of the object
// in front.
class KeptLines {
public:
    struct Unread {
        std::string object; // full name of the object that the line belongs to; empty: the panel
        std::string line;   // as the file had it
        std::size_t number = 0;
        int reason = 0; // PH_UNREAD_...
    };
    struct Stray {
        HOSTINFO* owner = nullptr; // null: it went, and the line with it, unless both come back
        std::string line;          // without the owner's name; with it once the owner is gone
        std::size_t number = 0;
        int reason = 0;
        unsigned text = 0; // the text it came with
        bool present = false;

        HOSTINFO* after = nullptr; // stands in the text of that object
        std::string behind;        // behind the line of that keyword
        std::size_t occurrence = 0;
        std::vector<std::string> gone; // names of objects that it stood after, the first one last
    };
    using Place = std::list<Stray>::iterator;

    explicit KeptLines(PanelRoot& root) : root_(root) {}

    // While one text is read. What it says about an object replaces what earlier texts said.
    class Reading {
    public:
        explicit Reading(KeptLines& lines) : lines_(lines) { lines_.Begin(); }
        ~Reading() { lines_.End(); }
        Reading(const Reading&) = delete;
        Reading& operator=(const Reading&) = delete;

    private:
        KeptLines& lines_;
    };
    // Reading has come past a line of that object, whatever became of it.
    void Passed(HOSTINFO& object, std::string_view keyword);
    // The object took the line. This and Refused come before Passed.
    void Took(HOSTINFO& object, std::string_view keyword);
    // The object refused the line, given without the object's name. False when it only took back what was
    // kept.
    bool Refused(HOSTINFO& object, std::string_view line, std::size_t number, int reason);
    // A line for a stray at this place of the text; it is none before Confirm.
    Place Reserve(HOSTINFO& owner, std::string_view line, std::size_t number, int reason);
    void Confirm(Place place);
    void Drop(Place place) { strays_.erase(place); }

    // The keyword was set by other means than a panel file.
    void KeywordSet(HOSTINFO& object, std::string_view keyword);
    void Added(HOSTINFO& object);
    void Renamed(const std::string& from, const std::string& to);
    // The object goes; the one in front of it in the order of saving is given.
    void Removed(HOSTINFO& object, HOSTINFO& before) noexcept;
    void Clear();

    bool IsEmpty() const { return blocks_.empty() && strays_.empty(); }
    // Whether the object's text in a panel file needs merging.
    bool Concerns(const HOSTINFO& object) const;
    // The text that the object wrote, with what is kept in it. With what stands there and belongs to others,
    // for a panel file; else with the strays that belong to the object, for a text of it alone.
    std::string Merged(const HOSTINFO& object, std::string_view own, bool forFile) const;
    // In the order of their numbers.
    std::vector<Unread> List() const;
    // What the object refused for that reason: the value of the first such line, or empty.
    std::string ValueRefused(const HOSTINFO& object, int reason) const;

private:
    // A line of an object as it was read: kept, or only known to have stood there.
    struct Entry {
        std::string keyword;
        std::string line;
        std::size_t number = 0;
        int reason = 0;
        unsigned text = 0; // the text it came with
        bool kept = false;
    };
    struct Block {
        using Places = std::vector<std::list<Entry>::iterator>;
        std::list<Entry> entries;
        // By keyword, in order, what a further line can act on: all but what the text that is being read
        // keeps itself, which may be a great deal.
        std::unordered_map<std::string, Places> places;
        unsigned stage = 0; // in which the places were made
    };
    struct Written;

    void Begin();
    void End();
    void GoTo(HOSTINFO& object); // whose lines come now
    Block::Places& PlacesOf(Block& block, std::string_view keyword) const;
    // Turns the first line of that keyword that is kept from an earlier text into a mark of its place, and
    // drops the others. False when there is none.
    bool Forget(Block& block, std::string_view keyword) const;
    // Behind what the text that is read has said so far.
    std::list<Entry>::iterator Insert(Block& block, Entry entry) const;
    std::vector<Written> MergedBlock(const HOSTINFO& object, std::string_view own) const;
    static std::string Prefix(const HOSTINFO& object);
    static std::string FullLine(const Stray& stray);

    PanelRoot& root_;
    std::unordered_map<const HOSTINFO*, Block> blocks_;
    std::list<Stray> strays_; // those of earlier texts first
    std::size_t older_ = 0;   // number of these

    bool reading_ = false;
    unsigned stage_ = 0;            // each text that is read, and each time between two
    unsigned text_ = 0;             // number of the text that is read, or was read last
    HOSTINFO* current_ = nullptr;   // object of the last line
    std::vector<std::string> seen_; // keywords of its lines so far
    std::unordered_map<std::string, std::size_t> occurrences_; // in the first of these, so many:
    std::size_t counted_ = 0;
};
