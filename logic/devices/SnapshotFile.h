// A snapshot: what parameters of devices held at some time, as a text file.
//
//     snapshot=1
//     panel=Hall.panel
//     time=2026-03-01 19:30:00
//     program=Panel.exe 1.0
//     FOH*ch01.fader=-10
//     FOH*ch01.mute=0
//
// The first line says that it is one; those without a "*" in front of the "=" are its head, in any order, and
// unknown ones do not matter.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace logic {

struct SnapshotValue {
    std::string address; // DEVICE*parameter
    std::string text;

    bool operator==(const SnapshotValue&) const = default;
};

struct Snapshot {
    std::string panel, time, program; // for people; may be empty
    std::vector<SnapshotValue> values;
};

constexpr std::string_view SNAPSHOT_EXTENSION = ".snapshot";

// A value that would break its line is left out.
std::string SnapshotText(const Snapshot& snapshot);

// Takes a snapshot's lines one by one.
class SnapshotReader {
public:
    static constexpr std::size_t MOST_VALUES = 100'000;

    // False for a line that is none of a snapshot; the others are read all the same. Empty lines do not
    // matter.
    bool Take(std::string_view line);
    // Nothing when the first line did not say that it is a snapshot, or there were too many values.
    std::optional<Snapshot> Finish();

private:
    Snapshot snapshot_;
    bool isFirst_ = true;
    bool isSnapshot_ = false;
    bool isTooLong_ = false;
};

// What stands behind `snapshot=`: a name, and after the last comma the milliseconds of a fade.
struct SnapshotRecall {
    std::string name;
    int milliseconds = 0;
};
constexpr int LONGEST_FADE = 3'600'000; // milliseconds

// "Evening" or "Evening,2000". Nothing when the name is none, or the time is no whole number from 0 to
// LONGEST_FADE; what stands behind the last comma is always a time.
std::optional<SnapshotRecall> ReadSnapshotRecall(std::string_view text);

// Whether the text can name a snapshot: it becomes a file of that name beside the panel, so it has no path,
// nothing that the system keeps for itself, and no comma.
bool IsSnapshotName(std::string_view name);

} // namespace logic
