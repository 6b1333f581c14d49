#include "logic/devices/osc/Osc.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr std::size_t ALIGNMENT = 4;
constexpr std::string_view BUNDLE{"#bundle\0", 8};
constexpr std::size_t TIME_SIZE = 8;
constexpr int MOST_LEVELS = 4;
constexpr std::size_t MOST_ELEMENTS = 64; // of a datagram

std::size_t Padded(std::size_t size) {
    return (size + ALIGNMENT - 1) / ALIGNMENT * ALIGNMENT;
}

bool IsFiller(std::string_view bytes) {
    return std::ranges::all_of(bytes, [](char byte) { return byte == 0; });
}

// Takes items off the front of a datagram.
class Reader {
public:
    explicit Reader(std::string_view bytes) : rest_(bytes) {}

    bool IsAtEnd() const { return rest_.empty(); }

    // Bytes that are filled up with zeros to a multiple of four.
    std::optional<std::string_view> Bytes(std::size_t size) {
        if (size > rest_.size() || Padded(size) > rest_.size() ||
            !IsFiller(rest_.substr(size, Padded(size) - size))) {
            return std::nullopt;
        }
        const std::string_view bytes = rest_.substr(0, size);
        rest_.remove_prefix(Padded(size));
        return bytes;
    }
    std::optional<std::string_view> Text() {
        const std::size_t end = rest_.find('\0');
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        const auto text = Bytes(end + 1);
        return text ? std::optional(text->substr(0, end)) : std::nullopt;
    }
    template <class Unsigned>
    std::optional<Unsigned> Number() {
        const auto bytes = Bytes(sizeof(Unsigned));
        if (!bytes) {
            return std::nullopt;
        }
        Unsigned number = 0;
        for (const char byte : *bytes) {
            number = static_cast<Unsigned>(number << 8 | static_cast<unsigned char>(byte));
        }
        return number;
    }

private:
    std::string_view rest_;
};

void SetWhole(OscArgument& argument, std::int64_t whole) {
    argument.whole = whole;
    argument.number = static_cast<double>(whole);
}

OscFault ReadArgument(Reader& reader, OscArgument& argument) {
    switch (argument.tag) {
    case 'i':
    case 'f': {
        const auto bits = reader.Number<std::uint32_t>();
        if (bits && argument.tag == 'i') {
            SetWhole(argument, std::bit_cast<std::int32_t>(*bits));
        } else if (bits) {
            argument.number = std::bit_cast<float>(*bits);
        }
        return bits ? OscFault::None : OscFault::Argument;
    }
    case 'h':
    case 'd':
    case 't': {
        const auto bits = reader.Number<std::uint64_t>();
        if (bits && argument.tag == 'd') {
            argument.number = std::bit_cast<double>(*bits);
        } else if (bits) {
            SetWhole(argument, std::bit_cast<std::int64_t>(*bits));
        }
        return bits ? OscFault::None : OscFault::Argument;
    }
    case 's':
    case 'S':
    case 'b': {
        std::optional<std::string_view> bytes;
        if (argument.tag != 'b') {
            bytes = reader.Text();
        } else if (const auto size = reader.Number<std::uint32_t>()) {
            bytes = reader.Bytes(*size);
        }
        argument.text = bytes.value_or(std::string_view());
        return bytes ? OscFault::None : OscFault::Argument;
    }
    case 'T':
    case 'F':
        SetWhole(argument, argument.tag == 'T' ? 1 : 0);
        return OscFault::None;
    case 'N':
    case 'I':
        return OscFault::None;
    default:
        return OscFault::Tags;
    }
}

OscFault ReadMessage(std::string_view bytes, std::vector<OscMessage>& messages) {
    Reader reader(bytes);
    const auto address = reader.Text();
    if (!address || !address->starts_with('/') || address->size() > LONGEST_OSC_ADDRESS ||
        std::ranges::any_of(*address, IsControl)) {
        return OscFault::Address;
    }
    OscMessage message{*address, {}};
    if (!reader.IsAtEnd()) {
        const auto tags = reader.Text();
        if (!tags || !tags->starts_with(',') || tags->size() > MOST_OSC_TAGS + 1) {
            return OscFault::Tags;
        }
        for (const char tag : tags->substr(1)) {
            OscArgument& argument = message.arguments.emplace_back();
            argument.tag = tag;
            if (const OscFault fault = ReadArgument(reader, argument); fault != OscFault::None) {
                return fault;
            }
        }
        if (!reader.IsAtEnd()) {
            return OscFault::Argument;
        }
    }
    messages.push_back(std::move(message));
    return OscFault::None;
}

OscFault ReadElement(std::string_view bytes, int level, std::vector<OscMessage>& messages,
                     std::size_t& elements) {
    if (!bytes.starts_with(BUNDLE)) {
        return ReadMessage(bytes, messages);
    }
    Reader reader(bytes.substr(BUNDLE.size()));
    if (level == MOST_LEVELS || !reader.Bytes(TIME_SIZE)) {
        return OscFault::Bundle;
    }
    while (!reader.IsAtEnd()) {
        const auto size = reader.Number<std::uint32_t>();
        const auto element = size ? reader.Bytes(*size) : std::nullopt;
        if (!element || element->empty() || element->size() % ALIGNMENT != 0 || ++elements > MOST_ELEMENTS) {
            return OscFault::Bundle;
        }
        const OscFault fault = ReadElement(*element, level + 1, messages, elements);
        if (fault != OscFault::None) {
            return fault;
        }
    }
    return OscFault::None;
}

void AppendText(std::string& bytes, std::string_view text) {
    bytes += text;
    bytes.resize(Padded(bytes.size() + 1));
}

void AppendNumber(std::string& bytes, std::uint32_t number) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(number >> shift & 0xFF);
    }
}

} // namespace

bool OscArgument::IsNumber() const {
    return std::string_view("ihfdTF").find(tag) != std::string_view::npos;
}

OscFault ReadOsc(std::string_view datagram, std::vector<OscMessage>& messages) {
    messages.clear();
    std::size_t elements = 0;
    const bool hasSize =
        !datagram.empty() && datagram.size() <= LARGEST_OSC_DATAGRAM && datagram.size() % ALIGNMENT == 0;
    const OscFault fault = hasSize ? ReadElement(datagram, 0, messages, elements) : OscFault::Size;
    if (fault != OscFault::None) {
        messages.clear();
    }
    return fault;
}

std::optional<std::string> WriteOsc(std::string_view address, std::span<const OscValue> arguments) {
    std::string tags = ",";
    std::string data;
    bool isSound = address.starts_with('/') && address.find('\0') == std::string_view::npos;
    for (const OscValue& argument : arguments) {
        if (const auto* integer = std::get_if<std::int32_t>(&argument)) {
            tags += 'i';
            AppendNumber(data, std::bit_cast<std::uint32_t>(*integer));
        } else if (const auto* number = std::get_if<float>(&argument)) {
            tags += 'f';
            AppendNumber(data, std::bit_cast<std::uint32_t>(*number));
            isSound = isSound && std::isfinite(*number);
        } else if (const auto* isOn = std::get_if<bool>(&argument)) {
            tags += *isOn ? 'T' : 'F';
        } else {
            const auto& text = std::get<std::string>(argument);
            tags += 's';
            AppendText(data, text);
            isSound = isSound && text.find('\0') == std::string::npos;
        }
    }
    std::string datagram;
    AppendText(datagram, address);
    AppendText(datagram, tags);
    datagram += data;
    return isSound && datagram.size() <= LARGEST_OSC_MESSAGE ? std::optional(std::move(datagram))
                                                             : std::nullopt;
}

std::optional<std::vector<float>> ReadMeterBlock(std::string_view blob, MeterFormat format) {
    const auto number = [&blob](std::size_t place, std::size_t size) {
        std::uint32_t bits = 0;
        for (std::size_t i = size; i-- > 0;) {
            bits = bits << 8 | static_cast<unsigned char>(blob[place + i]);
        }
        return bits;
    };
    constexpr std::size_t countSize = 4;
    const std::size_t size = format == MeterFormat::Float32 ? 4 : 2;
    if (blob.size() < countSize || number(0, countSize) > (blob.size() - countSize) / size) {
        return std::nullopt;
    }
    std::vector<float> values(number(0, countSize));
    for (std::size_t i = 0; i < values.size(); ++i) {
        const std::uint32_t bits = number(countSize + i * size, size);
        constexpr float steps = 256; // of a dB
        values[i] = format == MeterFormat::Float32
                        ? std::bit_cast<float>(bits)
                        : static_cast<float>(static_cast<std::int16_t>(bits)) / steps;
    }
    return values;
}

} // namespace logic
