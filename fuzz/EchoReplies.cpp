// Any datagram as an echo reply, and any text as that of a mail.
#include <algorithm>

#include "fuzz/Fuzzer.h"
#include "logic/remote/EchoRequest.h"
#include "logic/remote/HostStates.h"
#include "logic/remote/MailText.h"

using namespace logic;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto reply = ReadEchoReply({data, size});
    Require(!reply || size >= 28);
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::size_t asked = 0;
    const MailFacts facts{
        .value = "%v", .name = "%{a}", .date = "\\n", .time = "", .valueOf = [&](std::string_view address) {
            asked += address.size() + 3;
            Require(!address.empty() && address.find('}') == address.npos);
            return std::string(address);
        }};
    const std::string expanded = ExpandMailText(text, facts);
    Require(asked <= text.size());
    Require(expanded.size() <= text.size() * 2);
    if (text.find_first_of("%\\") == text.npos) {
        Require(expanded == text);
    }
    if (const auto hosts = ParseHosts(text)) {
        HostStates states(*hosts);
        for (std::size_t i = 0; i < states.Size(); ++i) {
            states.Take(i, static_cast<std::int32_t>(i), 1);
        }
        Require(states.Answering() == static_cast<std::int32_t>(hosts->size()));
    }
    return 0;
}
