// Datagrams of Open Sound Control: messages, bundles and blocks of meters.
#include "fuzz/Fuzzer.h"
#include "logic/devices/osc/Osc.h"

using namespace logic;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string datagram(data, data + size);
    std::vector<OscMessage> messages;
    if (ReadOsc(datagram, messages) != OscFault::None) {
        Require(messages.empty());
        return 0;
    }
    for (const OscMessage& message : messages) {
        Require(message.address.starts_with('/') && message.address.size() <= LONGEST_OSC_ADDRESS);
        std::vector<OscValue> values;
        for (const OscArgument& argument : message.arguments) {
            if (argument.tag == 'i') {
                values.emplace_back(static_cast<std::int32_t>(argument.whole));
            } else if (argument.IsText()) {
                values.emplace_back(std::string(argument.text));
            } else if (argument.IsBlob()) {
                for (const MeterFormat format : {MeterFormat::Float32, MeterFormat::Int16}) {
                    const auto meters = ReadMeterBlock(argument.text, format);
                    Require(!meters || meters->size() * 2 <= argument.text.size());
                }
            }
        }
        // What is written is read as it was.
        if (const auto written = WriteOsc(message.address, values)) {
            std::vector<OscMessage> back;
            Require(ReadOsc(*written, back) == OscFault::None && back.size() == 1);
            Require(back[0].address == message.address && back[0].arguments.size() == values.size());
        }
    }
    return 0;
}
