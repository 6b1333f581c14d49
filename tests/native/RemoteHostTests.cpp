#include "logic/remote/EchoRequest.h"
#include "logic/remote/HostStates.h"
#include "logic/remote/MailText.h"
#include "tests/native/Tables.h"

using namespace logic;

namespace {

// As the network delivers it: an IP header in front, and the kind of a reply.
std::vector<std::uint8_t> Reply(EchoNumber number, std::uint8_t kind = 0, std::size_t options = 0) {
    auto message = EchoRequest(123, number);
    message[0] = kind;
    message[2] = message[3] = 0;
    const std::uint16_t sum = InternetChecksum(message);
    message[2] = static_cast<std::uint8_t>(sum);
    message[3] = static_cast<std::uint8_t>(sum >> 8);
    std::vector<std::uint8_t> datagram(20 + options, 0);
    datagram[0] = static_cast<std::uint8_t>(0x45 + options / 4);
    datagram[9] = 1;
    datagram[12] = 10;
    datagram[15] = 9;
    datagram.insert(datagram.end(), message.begin(), message.end());
    return datagram;
}

} // namespace

TEST_CASE("an echo reply tells from whom and to which request, and nothing else is one") {
    const EchoNumber number{0x1234, 0x5678};
    for (const std::size_t options : {0, 4, 40}) {
        const auto read = ReadEchoReply(Reply(number, 0, options));
        REQUIRE(read);
        CHECK(read->address == 0x0A000009);
        CHECK(read->number == number);
    }
    CHECK(EchoRequest(7) == EchoRequest(7, {1, 1}));
    CHECK_FALSE(ReadEchoReply(Reply(number, 8))); // one's own request
    CHECK_FALSE(ReadEchoReply(Reply(number, 3)));
    const auto sound = Reply(number);
    for (std::size_t length = 0; length < sound.size(); ++length) {
        CHECK_FALSE(ReadEchoReply(std::span(sound).first(length)));
    }
    for (const std::size_t place : {0, 6, 7, 9, 21, 22, 24, 40}) { // version, pieces, protocol, code, sum
        auto damaged = sound;
        damaged[place] ^= 0x20;
        CAPTURE(place);
        CHECK_FALSE(ReadEchoReply(damaged));
    }
}

TEST_CASE("a list of hosts, and what is known of them") {
    CHECK(ParseHosts(" a.example ;;127.0.0.1; ")->size() == 2);
    CHECK(ParseHosts("")->empty());
    CheckRefused(ParseHosts, "a b", "a=b", std::string(256, 'a'), std::string(129, ';') + "a\tb");
    std::string many;
    for (std::size_t i = 0; i < MOST_HOSTS; ++i) {
        many += "h;";
    }
    CheckTaken(ParseHosts, many);
    CheckRefused(ParseHosts, many + "h");

    HostStates hosts(*ParseHosts("a;b"));
    CHECK(hosts.Text() == "a=unknown;b=unknown");
    CHECK(hosts.IsUnknown());
    CHECK(hosts.IsOf({"a", "b"}));
    CHECK_FALSE(hosts.IsOf({"a"}));
    CHECK_FALSE(hosts.IsOf({"a", "c"}));
    CHECK(hosts.LastTime() == -1);
    hosts.Take(0, 12, 2);
    CHECK_FALSE(hosts.IsUnknown());
    hosts.Take(1, std::nullopt, 2);
    CHECK(hosts.Text() == "a=ok;b=unknown");
    hosts.Take(0, std::nullopt, 2);
    hosts.Take(1, std::nullopt, 2);
    CHECK(hosts.Text() == "a=ok;b=gone");
    CHECK(hosts.Answering() == 1);
    CHECK(hosts.LastTime() == 12);
    hosts.Take(0, std::nullopt, 2);
    CHECK(hosts.Text() == "a=gone;b=gone");
    CHECK(hosts.LastTime() == -1);
    hosts.Take(1, 0, 2);
    hosts.Take(1, std::nullopt, 2); // counted anew
    CHECK(hosts.Text() == "a=gone;b=ok");
    hosts.Take(1, std::nullopt, 1);
    CHECK(hosts.Answering() == 0);
}

TEST_CASE("the text of a mail") {
    const MailFacts facts{
        .value = "7%n",
        .name = "Strip*Alarm",
        .date = "2026-02-03",
        .time = "04:05:06",
        .valueOf = [](std::string_view address) { return "<" + std::string(address) + ">"; }};
    const Row<std::string, const char*> rows[] = {
        {{"plain"}, "plain"},
        {{"%n is %v, %d %t"}, "Strip*Alarm is 7%n, 2026-02-03 04:05:06"},
        {{"a\\nb\\tc\\\\n\\x\\"}, "a\nb\tc\\n\\x\\"},
        {{"%{AMP1*gain} %{K}%{}"}, "<AMP1*gain> <K>"},
        {{"100% %x %{open %"}, "100% %x %{open %"},
    };
    CheckRows([&](const char* text) { return ExpandMailText(text, facts); }, rows);
}

TEST_CASE("so many tries an hour") {
    HourlyLimit limit;
    constexpr std::uint64_t MINUTE = 60'000;
    CHECK_FALSE(limit.Pass(0, 0));
    CHECK(limit.Pass(0, 2));
    CHECK(limit.Pass(30 * MINUTE, 2));
    CHECK_FALSE(limit.Pass(60 * MINUTE - 1, 2));
    CHECK(limit.Pass(60 * MINUTE, 2));
    CHECK_FALSE(limit.Pass(60 * MINUTE, 2));
    CHECK(limit.Pass(60 * MINUTE, 3));
    CHECK(limit.Pass(90 * MINUTE, 3));
}
