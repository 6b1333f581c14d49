// Messages as they travel, and how values become what a device sends and takes.
#include "logic/devices/ParameterLaw.h"
#include "logic/devices/osc/Osc.h"
#include "logic/text/Numbers.h"
#include "tests/native/Tables.h"

#include <bit>
#include <functional>

using namespace logic;

namespace {

std::string Bytes(std::string_view hex) {
    std::string bytes;
    std::string digits;
    for (const char digit : hex) {
        if (digit != ' ' && (digits += digit).size() == 2) {
            bytes += static_cast<char>(std::stoi(digits, nullptr, 16));
            digits.clear();
        }
    }
    return bytes;
}

// "/address 1 2.5 text <3 bytes> T": what was read.
std::string Read(const std::string& datagram) {
    std::vector<OscMessage> messages;
    std::string text;
    const OscFault fault = ReadOsc(datagram, messages);
    for (const OscMessage& message : messages) {
        text += std::string(text.empty() ? "" : "; ") + std::string(message.address);
        for (const OscArgument& argument : message.arguments) {
            text += std::string(" ") + argument.tag;
            text += argument.IsText()     ? std::string(argument.text)
                    : argument.IsBlob()   ? std::to_string(argument.text.size())
                    : argument.IsNumber() ? FormatFloat(static_cast<float>(argument.number))
                                          : "";
        }
    }
    return fault == OscFault::None ? text : "fault " + std::to_string(static_cast<int>(fault));
}

std::string Message(std::string_view address, const std::vector<OscValue>& arguments = {}) {
    return WriteOsc(address, arguments).value_or("");
}

std::string Bundle(const std::vector<std::string>& elements) {
    std::string bytes("#bundle\0\0\0\0\0\0\0\0\1", 16);
    for (const std::string& element : elements) {
        bytes += std::string(3, '\0') + static_cast<char>(element.size()) + element;
    }
    return bytes;
}

} // namespace

TEST_CASE("messages are written and read as others do it") {
    CHECK(Message("/ch/01/mix/fader", {0.75F}) ==
          Bytes("2f63682f30312f6d69782f6661646572 00000000 2c660000 3f400000"));
    CHECK(Message("/xinfo") == Bytes("2f78696e666f0000 2c000000"));
    CHECK(Message("/a", {true, false, std::int32_t{-2}, std::string("Kick")}) ==
          Bytes("2f610000 2c544669 73000000 fffffffe 4b69636b 00000000"));
    // What may not be sent.
    CHECK(Message("/a", {notANumber}).empty());
    CHECK(Message("/a", {std::string("a\0b", 3)}).empty());
    CHECK(Message("a").empty());
    CHECK(Message("/a", {std::string(503, 'x')}).size() == 512);
    CHECK(Message("/a", {std::string(504, 'x')}).empty());

    // Written by others: oscsend of liblo 0.31, and osc 2 of npm.
    CHECK(Read(Bytes("2f706172742f302f566f6c756d650000 2c660000 c0d00000")) == "/part/0/Volume f-6.5");
    CHECK(Read(Bytes("2f610000 2c696873 6454464e 49000000 00000001 0000000000000002 78797a00"
                     "4004000000000000")) == "/a i1 h2 sxyz d2.5 T1 F0 N I");
    CHECK(Read(Bytes("2f610000 2c696673 62544600 00000001 c0d00000 78797a00 00000003 01020300")) ==
          "/a i1 f-6.5 sxyz b3 T1 F0");
    CHECK(Read(Bytes("2362756e646c6500 0000000000000001 0000000c 2f610000 2c660000 3f800000"
                     "00000010 2f620000 2c730000 4b69636b 00000000")) == "/a f1; /b sKick");
    CHECK(Read(Bytes("2f610000")) == "/a"); // old ones leave out the tags
    CHECK(Read(Bundle({Message("/a", {1.0F}), Bundle({Message("/b"), Message("/c")})})) == "/a f1; /b; /c");
    CHECK(Read(Bundle({})) == "");
}

TEST_CASE("what is no message is dropped as a whole") {
    const auto fault = [](OscFault of) { return "fault " + std::to_string(static_cast<int>(of)); };
    const std::string sound = Message("/a", {1.0F});
    std::string deep = sound;
    for (int level = 0; level < 4; ++level) {
        deep = Bundle({deep});
    }
    CHECK(Read(deep) == "/a f1");
    const Row<std::string, std::string> rows[] = {
        {{""}, fault(OscFault::Size)},
        {{"/a"}, fault(OscFault::Size)},
        {{std::string(8196, '\0')}, fault(OscFault::Size)},
        {{std::string("abc\0", 4)}, fault(OscFault::Address)},
        {{"/abc"}, fault(OscFault::Address)},
        {{std::string("/a\n\0,\0\0\0", 8)}, fault(OscFault::Address)},
        {{"/" + std::string(255, 'a') + std::string(4, '\0')}, fault(OscFault::Address)},
        {{std::string("/a\0x,\0\0\0", 8)}, fault(OscFault::Address)}, // filled up with something else
        {{std::string("/a\0\0,q\0\0", 8)}, fault(OscFault::Tags)},
        {{std::string("/a\0\0,NNN", 8)}, fault(OscFault::Tags)},
        {{std::string("/a\0\0NNN\0", 8)}, fault(OscFault::Tags)},
        {{std::string("/a\0\0,", 5) + std::string(131, 'N') + std::string(4, '\0')}, fault(OscFault::Tags)},
        {{std::string("/a\0\0,f\0\0", 8)}, fault(OscFault::Argument)},
        {{sound + std::string(4, '\0')}, fault(OscFault::Argument)},
        {{Bytes("2f610000 2c620000 00000005 01020304")}, fault(OscFault::Argument)},
        {{Bytes("2f610000 2c620000 ffffffff 01020304")}, fault(OscFault::Argument)},
        {{Bundle({sound, sound.substr(0, 10)})}, fault(OscFault::Size)},
        {{Bundle({sound, "abc" + std::string(1, '\0')})}, fault(OscFault::Address)}, // the sound one, too
        {{Bundle({sound}) + std::string(4, '\0')}, fault(OscFault::Bundle)},
        {{Bundle({deep})}, fault(OscFault::Bundle)},
        {{Bundle(std::vector<std::string>(65, Message("/a")))}, fault(OscFault::Bundle)}};
    CheckRows(Read, rows);
    // Every truncation and every flipped bit is read within the datagram.
    for (std::string datagram : {deep, Message("/a", {true, 1.5F, std::string("text")}),
                                 Bytes("2f610000 2c627300 00000004 01020304 78797a00")}) {
        for (std::size_t length = 0; length < datagram.size(); ++length) {
            CHECK(Read(std::string(datagram, 0, length)).size() < 200);
        }
        for (std::size_t bit = 0; bit < datagram.size() * 8; ++bit) {
            std::string flipped(datagram);
            flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ 1 << bit % 8);
            CHECK(Read(flipped).size() < 200);
        }
    }
}

TEST_CASE("meter blocks hold no more than they have bytes for") {
    const auto values = [](std::string_view hex, MeterFormat format) {
        const auto read = ReadMeterBlock(Bytes(hex), format);
        return read ? JoinFloats(*read) : "none";
    };
    const Row<std::string, std::string_view, MeterFormat> rows[] = {
        {{"02000000 0000803f 0000003f", MeterFormat::Float32}, "1,0.5"},
        {{"02000000 00ff 8000 ffff", MeterFormat::Int16}, "-1,0.5"},
        {{"00000000", MeterFormat::Float32}, ""},
        {{"03000000 0000803f 0000003f", MeterFormat::Float32}, "none"},
        {{"ffffffff 0000803f", MeterFormat::Int16}, "none"},
        {{"010000", MeterFormat::Float32}, "none"},
        {{"", MeterFormat::Float32}, "none"}};
    CheckRows(values, rows);
}

TEST_CASE("laws lead to values and back") {
    const auto law = [](std::string_view text) { return ParameterLaw::Parse(text).value(); };
    struct Pair {
        const char* law;
        float wire, value;
    };
    constexpr const char* level = "f,points,1023,0:-90,0.0625:-60,0.25:-30,0.5:-10,1:10";
    for (const Pair& pair : std::initializer_list<Pair>{{level, 0, -90},
                                                        {level, 0.25F, -30},
                                                        {level, 0.5F, -10},
                                                        {level, 0.75F, 0},
                                                        {level, 1, 10},
                                                        {"f,linear,144,-12,60", 0.5F, 24},
                                                        {"f,log,200,20,20000", 0.5F, 632.4555F},
                                                        {"f,log,100,20,400", 0.5F, 89.44272F},
                                                        {"f,log,0,10,0.3", 0.5F, 1.7320508F},
                                                        {"i,not", 1, 0},
                                                        {"i,map,0:3,1:1,2:0,4:2,5:4", 4, 2},
                                                        {"T,same", 1, 1},
                                                        {"f,same", -6.5F, -6.5F}}) {
        INFO(std::string(pair.law), " ", pair.wire);
        CHECK(law(pair.law).ToValue(static_cast<double>(pair.wire)) == doctest::Approx(pair.value));
        // On a step, of which the value may lie half a one off.
        CHECK(std::fabs(law(pair.law).ToWire(pair.value).value() - pair.wire) <= 0.5F / 1023 + 1e-6F);
    }
    CHECK(law("f,amplitude").ToValue(1) == 0);
    CHECK(law("f,amplitude").ToValue(8) == doctest::Approx(18.0618F));
    CHECK(law("f,amplitude").ToValue(0) == -largest);
    CHECK_FALSE(law("f,amplitude").ToWire(0));
    CHECK(law("i,map,0:3").ToValue(7) == ParameterLaw::UNKNOWN);
    CHECK_FALSE(law("i,map,0:3").ToWire(7));
    CHECK_FALSE(law("i,same").ToWire(3e9F));
    CHECK(law("i,same").ToWire(2.6F) == 3);
    CHECK(law("T,same").ToWire(0.2F) == 1);
    CHECK(law("f,same,trigger").IsTrigger());

    for (const char* text : {level, "f,linear,144,-12,60", "f,linear,13,60,-12", "f,log,200,20,20000",
                             "f,log,71,10,0.3", "f,linear,0,0,1", "f,points,0,0:1,1:2"}) {
        INFO(std::string(text));
        const ParameterLaw read = law(text);
        const bool isRising = read.ToValue(1) > read.ToValue(0);
        constexpr int count = 1023;
        for (int k = 0; k <= count; ++k) {
            const float value = read.ToValue(static_cast<double>(k) / count);
            const float wire = read.ToWire(value).value();
            CHECK((wire >= 0 && wire <= 1));
            CHECK(read.IsSame(static_cast<double>(k) / count, static_cast<double>(wire), 1));
            CHECK(read.ToWire(read.ToValue(static_cast<double>(wire))) == wire); // a step is one
            CHECK((k == 0 || (value > read.ToValue(static_cast<double>(k - 1) / count)) == isRising));
        }
        for (const float beyond : {-largest, largest, 0.0F}) {
            const auto wire = read.ToWire(beyond);
            CHECK((wire >= 0.0F && wire <= 1.0F));
        }
        for (const float odd : {notANumber, infinity, -infinity}) {
            CHECK_FALSE(read.ToWire(odd));
        }
    }
    CHECK(law("f,same").IsSame(0, 0.09, 100));
    CHECK_FALSE(law("f,same").IsSame(0, 0.11, 100));
    CHECK_FALSE(law("f,same").IsSame(0, std::nan(""), 100));
    CHECK_FALSE(law("i,same").IsSame(1, 2, 1e9F));

    CheckRefused(ParameterLaw::Parse, "", "f", "f,", "x,same", "f,sum", "f,same,1", "s,not", "s,linear,0,0,1",
                 "i,linear,0,0,1", "f,linear,0,1,1", "f,linear,-1,0,1", "f,linear,0,0", "f,linear,0,0,1,2",
                 "f,log,0,0,1", "f,log,0,-1,1", "f,points,0,0:0", "f,points,0,0:0,0.5:1",
                 "f,points,0,0:0,1:0", "f,points,0,0:0,0.5:1,0.5:2,1:3", "f,points,0,0.1:0,1:1", "f,map,0:1",
                 "i,map", "i,map,", "i,map,0:1,0:2", "i,map,0:1,1:1", "i,map,0:1.5", "i,map,0", "T,amplitude",
                 "f,amplitude,trigger", "f,linear,0,nan,1", "f,linear,2000000,0,1");
}
