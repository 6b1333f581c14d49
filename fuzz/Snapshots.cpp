// Snapshots: any lines in place of one, and any text that asks for a recall.
#include "fuzz/Fuzzer.h"
#include "logic/devices/SnapshotFile.h"
#include "logic/text/Text.h"

using namespace logic;

namespace {

std::optional<Snapshot> Read(std::string_view text) {
    SnapshotReader reader;
    for (std::string_view line : SplitFields(text, '\n')) {
        reader.Take(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line);
    }
    return reader.Finish();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const FuzzInput input(data, size);
    if (const auto snapshot = Read("snapshot=1\n" + std::string(input.bytes))) {
        const auto again = Read(SnapshotText(*snapshot));
        Require(again && again->panel == snapshot->panel && again->values == snapshot->values);
    }
    Read(input.bytes);
    if (const auto recall = ReadSnapshotRecall(input.bytes)) {
        Require(recall->name.find_first_of("\\/:,") == std::string::npos && recall->milliseconds >= 0);
        const auto again = ReadSnapshotRecall(recall->name + "," + std::to_string(recall->milliseconds));
        Require(again && again->name == recall->name && again->milliseconds == recall->milliseconds);
    }
    return 0;
}
