// What another machine names: files, and the networks that it comes from.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Fuzzer.h"
#include "logic/remote/RemoteValues.h"
#include "logic/remote/TerminalAdmission.h"

using namespace logic;

namespace {

// The names that lead out of the folder, by a reckoning of its own: where a path ends when each part is
// followed.
void CheckStaysBelow(std::string_view path) {
    Require(path.find(':') == std::string_view::npos);
    int depth = 0;
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find_first_of("\\/", start), path.size());
        const std::string_view name = path.substr(start, end - start);
        Require(start > 0 || !name.empty() || end == path.size());
        depth += name == ".." ? -1 : name.empty() || name == "." ? 0 : 1;
        Require(depth >= 0);
        start = end + 1;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    if (IsPathBelow(text)) {
        CheckStaysBelow(text);
        Require(!IsPathBelow("\\" + text) && !IsPathBelow("..\\" + text) && IsPathBelow(".\\" + text));
        Require(!IsPathBelow(text + "\\NUL") && !IsPathBelow(text + "/../../x"));
    }
    if (HasFixedKeyword(text)) {
        Require(text.substr(0, text.find('=')).find("%l") == std::string::npos);
    }
    if (const auto networks = TerminalNetworks::Parse(text); networks && !text.empty()) {
        const auto more = TerminalNetworks::Parse(text + ",10.1.2.3/31");
        if (text.find("none") != std::string::npos) {
            Require(!networks->Contain(0) && !more);
        } else {
            Require(more && more->Contain(0x0A010202) && more->Contain(0) == networks->Contain(0));
        }
        Require(!TerminalNetworks::Parse(text + ",") && !TerminalNetworks::Parse(text + "x"));
    }
    return 0;
}
