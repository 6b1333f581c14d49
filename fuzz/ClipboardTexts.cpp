// Components out of the clipboard: whatever it holds, no line comes to belong to another control.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/Fuzzer.h"
#include "logic/editing/ComponentText.h"

using namespace logic;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<std::string> damaged;
    auto components = ReadComponents(std::string(data, data + size), damaged);
    std::vector<std::string> names;
    for (std::size_t i = 0; i < components.size(); ++i) {
        names.push_back("New " + std::to_string(i));
    }
    RenameComponents(components, names);
    for (std::size_t i = 0; i < components.size(); ++i) {
        for (const std::string& line : components[i].lines) {
            Require(SplitPropertyLine(line).object.starts_with(names[i]));
        }
    }
    std::vector<std::string> damagedAgain;
    Require(ReadComponents(ComponentsText(components), damagedAgain).size() == components.size());
    Require(damagedAgain.empty());
    return 0;
}
