// Conversations with a device that says anything at any time, while the panel wants and sets.
#include <algorithm>

#include "fuzz/Fuzzer.h"
#include "logic/devices/osc/OscLink.h"

using namespace logic;

namespace {

struct Owner : LinkOwner {
    void Send(std::string_view bytes) override {
        std::vector<OscMessage> messages;
        Require(ReadOsc(bytes, messages) == OscFault::None && bytes.size() <= LARGEST_OSC_MESSAGE);
        ++sent;
    }
    void Tell(std::size_t, const ParameterUpdate& update) override {
        Require(update.value.number >= -1 && update.value.number <= 100 && update.value.text.size() <= 12);
    }
    void Tell(const DeviceUpdate&) override {}
    void Trace(const std::string&) override {}
    int sent = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    DeviceProfileReader reader;
    for (const char* line :
         {"profile=osc,1", "hello=/h,/h,0,M", "rate=100", "keep=/k,500", "law*f=f,linear,10,0,100",
          "law*m=i,map,0:3,1:1", "law*s=s,same", "law*g=i,same,trigger", "law*a=f,amplitude",
          "meters*m=/m,/m,500,/m,f32", "a=float,0,100,,/a,f", "b=integer,0,5,,/b,m", "c=text,,12,,/c,s",
          "d=integer,0,9,,/d,g", "e=float,0,18,,meters:m:1,a"}) {
        Require(reader.Take(line).empty());
    }
    std::string why;
    const auto profile = std::make_shared<const DeviceProfile>(reader.Finish(why).value());
    Owner owner;
    Milliseconds now = 1000;
    OscLink link(profile, "D", owner, now);
    link.Want({0, 1, 2, 4}, now);
    std::uint32_t serial = 0;
    std::string rest(data, data + size);
    while (rest.size() > 2) {
        const auto what = static_cast<unsigned char>(rest[0]);
        const std::size_t number = what % 5;
        now += static_cast<unsigned char>(rest[1]) * (what & 32 ? 50U : 1U);
        rest.erase(0, 2);
        switch (what >> 6) {
        case 0: {
            const std::string word = rest.substr(0, 12);
            const LinkValue value{number == 2 ? 0 : static_cast<float>(rest[0]), number == 2 ? word : ""};
            link.Set({number, value, ++serial, (what & 16) != 0}, now);
            break;
        }
        case 1:
            link.Switch((what & 15) != 0, now);
            link.Ask(number, now);
            break;
        default: {
            const auto length = std::min<std::size_t>(static_cast<std::size_t>(what & 31) * 4, rest.size());
            const std::string fit("/h\0\0,s\0\0M\0\0\0", 12);
            link.Receive(length == 0 ? fit : rest.substr(0, length), now);
            rest.erase(0, length);
            break;
        }
        }
        const int before = owner.sent;
        Require(link.Step(now) > now);
        Require(owner.sent - before <= 40);
    }
    link.Finish(now);
    return 0;
}
