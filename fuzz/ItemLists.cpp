// Lists to choose from, as they stand in keywords and files and come from devices.
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Fuzzer.h"
#include "logic/text/Items.h"

using namespace logic;

namespace {

void CheckSame(const Items& items, const Items& again) {
    Require(again.Size() == items.Size());
    for (std::size_t i = 0; i < items.Size(); ++i) {
        Require(again.Caption(i) == items.Caption(i) && again.Value(i) == items.Value(i) &&
                again.HasValue(i) == items.HasValue(i) && again.Number(i) == items.Number(i));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    const Items list = Items::OfList(text);
    CheckSame(list, Items::OfList(list.Text()));
    Require(list.Text().size() <= 2 * size + 1);
    for (std::size_t i = 0; i < list.Size(); ++i) {
        Require(list.IndexOfValue(list.Value(i)) <= i);
        Require(list.IsNumbered(i) || list.Number(i) == static_cast<std::int32_t>(i) + 1);
    }
    const Items lines = Items::OfLines(text);
    CheckSame(lines, Items::OfList(lines.Text()));
    if (text.find_first_of(";\n\\") == std::string::npos) {
        CheckSame(list, lines);
    }
    return 0;
}
