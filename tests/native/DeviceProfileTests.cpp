// Profiles of real devices: what their lines declare, and what is refused.
#include "logic/devices/osc/DeviceProfile.h"
#include "tests/native/Tables.h"

#include <fstream>
#include <set>

using namespace logic;

namespace {

struct ReadProfile {
    std::optional<DeviceProfile> profile;
    std::vector<std::string> faults;
    std::string why;
};

ReadProfile ReadLines(const std::vector<std::string>& lines, RangeLimits limits = {}) {
    DeviceProfileReader reader(std::move(limits));
    ReadProfile read;
    for (const std::string& line : lines) {
        if (const std::string fault = reader.Take(line); !fault.empty()) {
            read.faults.push_back(fault);
        }
    }
    read.profile = reader.Finish(read.why);
    return read;
}

ReadProfile ReadFile(const std::string& name, RangeLimits limits = {}) {
    std::ifstream file(SOURCE_FOLDER "/" + name);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    return ReadLines(lines, std::move(limits));
}

// Behind what every profile needs.
ReadProfile ReadWith(std::vector<std::string> lines) {
    const std::vector<std::string> head{
        "profile=osc,1",   "hello=/hi,/hi",        "range*c=01,03",
        "range*e=1,4",     "law*plain=f,same",     "law*whole=i,same",
        "law*text=s,same", "law*show=f,amplitude", "meters*m=/m,/m/1,5000,/m/1,f32"};
    lines.insert(lines.begin(), head.begin(), head.end());
    return ReadLines(lines);
}

} // namespace

TEST_CASE("the profile of the console that is shipped") {
    const ReadProfile read = ReadFile("app/Profiles/x32.profile");
    CHECK(read.faults.empty());
    REQUIRE(read.profile);
    const DeviceProfile& console = *read.profile;
    CHECK(console.parameters.size() == 3198);
    std::set<std::string> addresses;
    for (const ProfileParameter& parameter : console.parameters) {
        if (!parameter.address.empty()) {
            addresses.insert(parameter.address);
        }
        CHECK(console.Find(parameter.name) ==
              static_cast<std::size_t>(&parameter - console.parameters.data()));
    }
    CHECK(addresses.size() == 2894);
    CHECK(console.port == 10023);
    CHECK(console.keepAddress == "/xremote");
    CHECK(console.helloTexts == std::vector<std::string>{"X32", "M32"});
    const auto at = [&console](const char* name) { return console.parameters[console.Find(name).value()]; };
    CHECK(at("ch07.eq3.q").address == "/ch/07/eq/3/q");
    CHECK(at("headamp127.gain").address == "/headamp/127/gain");
    CHECK(at("ch32.level").meterIndex == 31);
    CHECK_FALSE(at("ch32.level").canBeSet);
    CHECK(at("ch05.eq2").components.size() == 6);
    CHECK(std::get<std::size_t>(at("ch05.eq2").components[1]) == console.Find("ch05.eq2.type"));
    CHECK(std::get<float>(at("ch05.eq2").components[2]) == 2);
    CHECK(at("ch05.delay").delayUnit == 0);

    const ReadProfile parts = ReadFile("tests/profiles/zyn.profile");
    CHECK(parts.faults.empty());
    REQUIRE(parts.profile);
    CHECK(parts.profile->parameters.size() == 65);
}

TEST_CASE("a device can have a part of its profile's ranges") {
    RangeLimits limits;
    CHECK(ReadRangeLimits("c=01-16", limits));
    CHECK(ReadRangeLimits(" b=1-8", limits));
    CHECK_FALSE(ReadRangeLimits("c=1-2", limits)); // twice
    const ReadProfile read = ReadFile("app/Profiles/x32.profile", limits);
    REQUIRE(read.profile);
    CHECK(read.profile->Find("ch16.fader"));
    CHECK_FALSE(read.profile->Find("ch17.fader"));
    CHECK(read.profile->Find("bus08.fader"));
    CHECK(read.profile->Find("dca8.fader"));
    for (const char* text : {"c=0-16", "c=1-33", "y=1-2"}) {
        RangeLimits beyond;
        REQUIRE(ReadRangeLimits(text, beyond));
        const ReadProfile refused = ReadFile("app/Profiles/x32.profile", beyond);
        CHECK_FALSE(refused.profile);
        CHECK_FALSE(refused.why.empty());
    }
    const auto isRead = [](const std::string& text) {
        RangeLimits none;
        return ReadRangeLimits(text, none);
    };
    CheckRefused(isRead, "", "c", "c=", "c=1", "c=2-1", "c=-1-2", "C=1-2", "cc=1-2", "c=1-2-3", "c=a-b");
}

TEST_CASE("lines of a profile are repeated, or refused as a whole") {
    const ReadProfile read =
        ReadWith({"ch{c}.eq{e}=float,0,1,,/ch/{c}/{e}/{c+9}/{c-1},plain", "one=text,,12,,/one,text,read",
                  "ch{c}.in=float,-90,18,dB,meters:m:{c-1},show", "pair{c}=delay,,ch{c}.eq1,ft"});
    CHECK(read.faults.empty());
    REQUIRE(read.profile);
    CHECK(read.profile->parameters.size() == 12 + 1 + 3 + 3);
    const auto at = [&read](const char* name) {
        return read.profile->parameters[read.profile->Find(name).value()];
    };
    CHECK(at("ch02.eq4").address == "/ch/02/4/11/1");
    CHECK(at("ch03.in").meterIndex == 2);
    CHECK_FALSE(at("one").canBeSet);
    CHECK(std::holds_alternative<std::monostate>(at("pair01").components[0]));
    CHECK(at("pair01").delayUnit == 2);

    const auto isTaken = [](const std::string& line) {
        const ReadProfile one = ReadWith({"there=float,0,1,,/there,plain", line});
        // What is refused leaves nothing behind.
        CHECK((one.faults.empty() || one.profile->parameters.size() == 1));
        return one.faults.empty();
    };
    CheckTaken(isTaken, "", "# note", "  port = 65535 ", "echo=none", "window=64", "rate=10",
               "keep=/keep,500", "range*z=000,999", "a=integer,0,1,,/a,whole",
               "title=", "b=channeleq,,,2,there,there,");
    CheckRefused(
        isTaken, "nothing", "port=0", "port=65536", "echo=some", "window=0", "window=65", "rate=2001",
        "keep=/keep,499", "keep=keep,500", "hello=/a", "hello=/a,/b,1", "hello=/a,/b,x,y", "range*c=1,2",
        "range*cd=1,2", "range*d=2,1", "range*d=-1,2", "range*d=0,1000", "range*D=1,2", "law*plain=f,same",
        "law*=f,same", "law*new=nothing", "meters*m=/m,,5000,/m/1,f32", "meters*n=/m,,5000,/m/1,f64",
        "meters*n=/m,,100,/m/1,f32", "other*n=1", "a=double,0,1,,/a,plain", "a=float,1,0,,/a,plain",
        "a=float,0,1,,a,plain", "a=float,0,1,,/a b,plain", "a=float,0,1,,/a,none", "a=float,0,1,,/a,text",
        "a=text,,12,,/a,plain", "a=text,,0,,/a,text", "a=text,1,12,,/a,text", "a=integer,0.5,1,,/a,whole",
        "a=float,0,1,,/a", "a=float,0,1,,/a,plain,write", "a=float,0,inf,,/a,plain",
        "there=float,0,1,,/a,plain", "online=float,0,1,,/a,plain", "state=float,0,1,,/a,plain",
        "a b=float,0,1,,/a,plain", "=float,0,1,,/a,plain", "a{x}=float,0,1,,/a,plain",
        "a{c=float,0,1,,/a,plain", "a{c}=float,0,1,,/a/{e},plain", "a{c}=float,0,1,,/a/{c*2},plain",
        "a{c}=float,0,1,,/a/{c+},plain", "a{c}=float,0,1,,/a/},plain", "a{c+1}{c}{=float,0,1,,/a,plain",
        "a=float,0,1,,meters:x:1,show", "a=float,0,1,,meters:m:-1,show", "a=float,0,1,,meters:m,show",
        "a=channeleq,there,there", "a=delay,,there,mm", "a=delay,,missing,ms", "a=mastereq,,,,a,,",
        "a=xoverfilters,1,2,3", std::string(1001, 'a'), "a=text,,12,,/a\x01,text");
    // A name twice within one line.
    CHECK(ReadWith({"x{c}=float,0,1,,/a,plain", "x0{e}=float,0,1,,/a,plain"}).profile->parameters.size() ==
          3);
}

TEST_CASE("what is no profile, or too large, is none") {
    CHECK_FALSE(ReadLines({}).profile);
    CHECK_FALSE(ReadLines({"profile=osc,1"}).profile);
    CHECK(ReadLines({"# first", "", "profile=osc,1", "hello=none"}).profile->AnswersNothing());
    const ReadProfile other = ReadLines({"title=x", "profile=osc,1", "hello=none"});
    CHECK_FALSE(other.profile);
    CHECK_FALSE(other.why.empty());
    CHECK_FALSE(ReadLines({"profile=osc,2", "hello=none"}).profile);

    // 20,000 parameters, and not one more.
    const ReadProfile large = ReadWith(
        {"range*x=1,100", "range*y=1,200", "{x}.{y}=float,0,1,,/{x}/{y},plain", "more=float,0,1,,/a,plain"});
    CHECK(large.profile->parameters.size() == 20'000);
    CHECK(large.faults.size() == 1);
    const ReadProfile beyond =
        ReadWith({"range*x=0,999", "range*y=0,999", "{x}.{y}=float,0,1,,/{x}/{y},plain"});
    CHECK(beyond.profile->parameters.empty());

    std::vector<std::string> lines(2000, "# note");
    lines.insert(lines.begin(), {"profile=osc,1", "hello=none"});
    CHECK(ReadLines(lines).faults.size() == 2);
}
