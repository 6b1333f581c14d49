#include "logic/devices/osc/DeviceProfile.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>

#include "logic/controls/Crossover.h"
#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr std::int32_t FORMAT_VERSION = 1;
constexpr std::int32_t MOST_IN_RANGE = 1000;
constexpr std::size_t LONGEST_TEXT = 255;
constexpr std::size_t LONGEST_UNIT = 15;
constexpr std::size_t MOST_METERS = 4096; // of a block
constexpr std::string_view RESERVED[] = {"online", "state", "model", "unconfirmed"};

using Fields = std::vector<std::string_view>;

Fields TrimmedFields(std::string_view text) {
    Fields fields = SplitFields(text, ',');
    std::ranges::transform(fields, fields.begin(), TrimBlanks);
    return fields;
}

std::optional<std::int32_t> ReadWithin(std::string_view text, std::int32_t low, std::int32_t high) {
    const auto number = ParseWholeInteger(text);
    return number && *number >= low && *number <= high ? number : std::nullopt;
}

bool IsLetter(char character) {
    return character >= 'a' && character <= 'z';
}

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

// A word that names something in a profile.
bool IsName(std::string_view text) {
    return !text.empty() && text.size() <= DeviceProfileReader::LONGEST_NAME &&
           std::ranges::all_of(text, [](char character) {
               return IsLetter(character) || (character >= 'A' && character <= 'Z') || IsDigit(character) ||
                      character == '.' || character == '_' || character == '-';
           });
}

bool IsAddress(std::string_view text) {
    constexpr std::string_view patterns = "#*,?[]{}";
    return text.starts_with('/') && text.size() <= LONGEST_OSC_ADDRESS &&
           std::ranges::all_of(text, [&patterns](char character) {
               return character > ' ' && character < 127 && patterns.find(character) == patterns.npos;
           });
}

template <class Value>
std::optional<Value> WordOf(std::initializer_list<std::pair<std::string_view, Value>> words,
                            std::string_view word) {
    for (const auto& [known, value] : words) {
        if (known == word) {
            return value;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::size_t> DeviceProfile::Find(std::string_view name) const {
    const auto found = numbers.find(std::string(name));
    return found == numbers.end() ? std::nullopt : std::optional(found->second);
}

bool ReadRangeLimits(std::string_view text, RangeLimits& limits) {
    text = TrimBlanks(text);
    const std::size_t dash = text.find('-');
    if (text.size() < 2 || !IsLetter(text[0]) || text[1] != '=' || dash == std::string_view::npos) {
        return false;
    }
    const auto first = ReadWithin(text.substr(2, dash - 2), 0, MOST_IN_RANGE * MOST_IN_RANGE);
    const auto last = ReadWithin(text.substr(dash + 1), 0, MOST_IN_RANGE * MOST_IN_RANGE);
    return first && last && *first <= *last && limits.try_emplace(text[0], *first, *last).second;
}

std::string DeviceProfileReader::Take(std::string_view line) {
    if (++lines_ > MOST_LINES) {
        return "The profile has too many lines";
    }
    if (line.size() > LONGEST_LINE ||
        std::ranges::any_of(line, [](char c) { return IsControl(c) && c != '\t'; })) {
        return "The line is too long or damaged";
    }
    line = TrimBlanks(line);
    if (line.empty() || line.front() == '#') {
        return {};
    }
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) {
        return "There is no `=`";
    }
    const std::string_view key = TrimBlanks(line.substr(0, equals));
    const std::string_view text = TrimBlanks(line.substr(equals + 1));
    if (!isProfile_) {
        const Fields fields = TrimmedFields(text);
        isProfile_ = key == "profile" && fields.size() == 2 && fields[0] == "osc" &&
                     ParseWholeInteger(fields[1]) == FORMAT_VERSION;
        lines_ = isProfile_ ? lines_ : MOST_LINES; // and is none any more
        return isProfile_ ? "" : "It is no profile that can be read: the first line must be `profile=osc,1`";
    }
    const std::size_t star = key.find('*');
    if (star == std::string_view::npos) {
        return TakeSetting(key, text);
    }
    const std::string_view kind = TrimBlanks(key.substr(0, star));
    const std::string_view name = TrimBlanks(key.substr(star + 1));
    if (kind == "range") {
        return TakeRange(name, text);
    }
    if (!IsName(name)) {
        return "The name is none";
    }
    return kind == "law"      ? TakeLaw(name, text)
           : kind == "meters" ? TakeMeters(name, text)
                              : "There is no such line";
}

std::optional<DeviceProfile> DeviceProfileReader::Finish(std::string& why) {
    why = !isProfile_            ? "It is no profile"
          : !hasHello_           ? "The profile does not say how the device answers (`hello`)"
          : !limitFault_.empty() ? limitFault_
                                 : "";
    for (const auto& [letter, limits] : limits_) {
        if (why.empty() && !ranges_.contains(letter)) {
            why = std::string("The profile has no range ") + letter;
        }
    }
    profile_.parameters.shrink_to_fit(); // it stays as it is, for as long as the device
    return why.empty() ? std::optional(std::move(profile_)) : std::nullopt;
}

std::string DeviceProfileReader::TakeRange(std::string_view letter, std::string_view text) {
    const Fields fields = TrimmedFields(text);
    if (letter.size() != 1 || !IsLetter(letter[0]) || fields.size() != 2 ||
        !std::ranges::all_of(fields[0], IsDigit)) {
        return "A range is a letter, and its first and last number";
    }
    const auto first = ReadWithin(fields[0], 0, MOST_IN_RANGE * MOST_IN_RANGE);
    const auto last = ReadWithin(fields[1], 0, MOST_IN_RANGE * MOST_IN_RANGE);
    if (!first || !last || *first > *last || *last - *first >= MOST_IN_RANGE) {
        return "The ends of the range are none, or too far apart";
    }
    if (ranges_.contains(letter[0])) {
        return "The range is there already";
    }
    Range range{*first, *last, fields[0].size()};
    if (const auto limits = limits_.find(letter[0]); limits != limits_.end()) {
        const auto [from, to] = limits->second;
        if (from < range.first || to > range.last) {
            limitFault_ = std::string("The profile's range ") + letter[0] + " goes from " +
                          std::to_string(range.first) + " to " + std::to_string(range.last);
        } else {
            range.first = from;
            range.last = to;
        }
    }
    ranges_.emplace(letter[0], range);
    return {};
}

std::string DeviceProfileReader::TakeLaw(std::string_view name, std::string_view text) {
    auto law = ParameterLaw::Parse(text);
    if (!law) {
        return "The law is none";
    }
    if (!laws_.try_emplace(std::string(name), profile_.laws.size()).second) {
        return "The law is there already";
    }
    profile_.laws.push_back(std::move(*law));
    return {};
}

std::string DeviceProfileReader::TakeMeters(std::string_view name, std::string_view text) {
    const Fields fields = TrimmedFields(text);
    const auto renewal = fields.size() == 5 ? ReadWithin(fields[2], 500, 60'000) : std::nullopt;
    const auto format =
        fields.size() == 5
            ? WordOf<MeterFormat>({{"f32", MeterFormat::Float32}, {"i16", MeterFormat::Int16}}, fields[4])
            : std::nullopt;
    if (!renewal || !format || !IsAddress(fields[0]) || !IsAddress(fields[3])) {
        return "Meters are a request, its argument, milliseconds, the address of the answer, and f32 or i16";
    }
    if (!meters_.try_emplace(std::string(name), profile_.meters.size()).second) {
        return "The meters are there already";
    }
    profile_.meters.push_back({std::string(fields[0]), std::string(fields[1]),
                               static_cast<std::uint32_t>(*renewal), std::string(fields[3]), *format});
    return {};
}

std::string DeviceProfileReader::TakeHello(std::string_view text) {
    hasHello_ = text == "none";
    if (hasHello_) {
        profile_.helloSend.clear();
        return {};
    }
    const Fields fields = TrimmedFields(text);
    const auto index = fields.size() == 4 ? ReadWithin(fields[2], 0, MOST_OSC_TAGS - 1) : std::nullopt;
    if ((fields.size() != 2 && !index) || !IsAddress(fields[0]) || !IsAddress(fields[1])) {
        return "A hello is an address, the address of the answer, and perhaps the number of an argument with "
               "the texts that it may begin with";
    }
    hasHello_ = true;
    profile_.helloSend = fields[0];
    profile_.helloAnswer = fields[1];
    if (index) {
        profile_.helloIndex = static_cast<std::size_t>(*index);
        for (const std::string_view word : SplitFields(fields[3], ';')) {
            profile_.helloTexts.emplace_back(TrimBlanks(word));
        }
    }
    return {};
}

std::string DeviceProfileReader::TakeSetting(std::string_view keyword, std::string_view text) {
    if (keyword == "title") {
        profile_.title = text;
    } else if (keyword == "hello") {
        return TakeHello(text);
    } else if (keyword == "port") {
        const auto port = ReadWithin(text, 1, 65'535);
        if (!port) {
            return "The port is none";
        }
        profile_.port = static_cast<std::uint16_t>(*port);
    } else if (keyword == "keep") {
        const Fields fields = TrimmedFields(text);
        const auto every = fields.size() == 2 ? ReadWithin(fields[1], 500, 60'000) : std::nullopt;
        if (!every || !IsAddress(fields[0])) {
            return "What is kept up is an address, and milliseconds from 500 to 60000";
        }
        profile_.keepAddress = fields[0];
        profile_.keepEvery = static_cast<std::uint32_t>(*every);
    } else if (keyword == "echo") {
        const auto echo = WordOf<ProfileEcho>(
            {{"all", ProfileEcho::All}, {"others", ProfileEcho::Others}, {"none", ProfileEcho::None}}, text);
        if (!echo) {
            return "Echo is all, others or none";
        }
        profile_.echo = *echo;
    } else if (keyword == "window") {
        const auto window = ReadWithin(text, 1, 64);
        if (!window) {
            return "The window is none from 1 to 64";
        }
        profile_.window = static_cast<std::uint32_t>(*window);
    } else if (keyword == "rate") {
        const auto rate = ReadWithin(text, 10, 2000);
        if (!rate) {
            return "The rate is none from 10 to 2000";
        }
        profile_.rate = static_cast<std::uint32_t>(*rate);
    } else {
        return TakeParameter(keyword, text);
    }
    return {};
}

std::optional<std::string> DeviceProfileReader::Expand(std::string_view text, const Numbers& numbers) const {
    std::string expanded;
    while (!text.empty()) {
        const std::size_t open = std::min(text.find_first_of("{}"), text.size());
        expanded += text.substr(0, open);
        text.remove_prefix(open);
        if (text.empty()) {
            break;
        }
        const std::size_t close = text.find('}');
        if (text[0] != '{' || close == std::string_view::npos || close < 2) {
            return std::nullopt;
        }
        const std::string_view inside = text.substr(1, close - 1);
        const auto number = numbers.find(inside[0]);
        if (number == numbers.end()) {
            return std::nullopt;
        }
        std::string digits = std::to_string(number->second);
        if (inside.size() == 1) {
            const std::size_t wanted = ranges_.at(inside[0]).digits;
            expanded.append(wanted > digits.size() ? wanted - digits.size() : 0, '0');
        } else {
            const auto offset = ReadWithin(inside.substr(2), 0, MOST_IN_RANGE * MOST_IN_RANGE);
            if (!offset || !IsDigit(inside[2]) || (inside[1] != '+' && inside[1] != '-')) {
                return std::nullopt;
            }
            digits = std::to_string(number->second + (inside[1] == '+' ? *offset : -*offset));
        }
        expanded += digits;
        text.remove_prefix(close + 1);
    }
    return expanded;
}

std::string DeviceProfileReader::TakeParameter(std::string_view name, std::string_view text) {
    Numbers numbers;
    std::size_t count = 1;
    for (std::size_t open = name.find('{'); open != std::string_view::npos; open = name.find('{', open + 1)) {
        const auto range = open + 1 < name.size() ? ranges_.find(name[open + 1]) : ranges_.end();
        if (range == ranges_.end()) {
            return "The name holds a letter without a range";
        }
        if (numbers.try_emplace(range->first, range->second.first).second) {
            count *= static_cast<std::size_t>(range->second.last - range->second.first) + 1;
        }
        if (count > MOST_PARAMETERS - profile_.parameters.size()) {
            return "There are too many parameters";
        }
    }
    if (profile_.parameters.size() + count > MOST_PARAMETERS) {
        return "There are too many parameters";
    }
    const Fields fields = TrimmedFields(text);
    std::vector<ProfileParameter> declared;
    std::unordered_map<std::string, std::size_t> names;
    for (;;) {
        const auto own = Expand(name, numbers);
        if (!own || !IsName(*own)) {
            return "The name is none";
        }
        if (profile_.numbers.contains(*own) || std::ranges::find(RESERVED, *own) != std::end(RESERVED) ||
            !names.try_emplace(*own, profile_.parameters.size() + declared.size()).second) {
            return "The name is there already: " + *own;
        }
        ProfileParameter parameter;
        parameter.name = *own;
        if (std::string fault = ReadParameter(fields, numbers, parameter); !fault.empty()) {
            return fault;
        }
        declared.push_back(std::move(parameter));
        // The next combination, the last letter first.
        auto letter = numbers.rbegin();
        for (; letter != numbers.rend(); ++letter) {
            const Range& range = ranges_.at(letter->first);
            if (letter->second < range.last) {
                ++letter->second;
                break;
            }
            letter->second = range.first;
        }
        if (letter == numbers.rend()) {
            break;
        }
    }
    profile_.numbers.merge(names);
    std::ranges::move(declared, std::back_inserter(profile_.parameters));
    return {};
}

std::string DeviceProfileReader::ReadParameter(const std::vector<std::string_view>& fields,
                                               const Numbers& numbers, ProfileParameter& parameter) const {
    const auto type = WordOf<ParameterType>({{"integer", ParameterType::Integer},
                                             {"float", ParameterType::Float},
                                             {"text", ParameterType::Text},
                                             {"mastereq", ParameterType::MasterEq},
                                             {"channeleq", ParameterType::ChannelEq},
                                             {"xoverfilters", ParameterType::CrossoverFilters},
                                             {"delay", ParameterType::Delay}},
                                            fields[0]);
    if (!type) {
        return "There is no such type";
    }
    parameter.type = *type;
    if (parameter.IsBlock()) {
        return ReadBlock(fields, numbers, parameter);
    }
    if (fields.size() != 6 && (fields.size() != 7 || fields[6] != "read")) {
        return "A parameter is type, minimum, maximum, unit, address and law, and perhaps `read`";
    }
    if (*type == ParameterType::Text) {
        const auto longest = ReadWithin(fields[2], 1, LONGEST_TEXT);
        if (!longest || !fields[1].empty()) {
            return "A text has an empty minimum and 1 to 255 characters";
        }
        parameter.longest = static_cast<std::size_t>(*longest);
    } else {
        const auto minimum = ParseWholeFloat(fields[1]);
        const auto maximum = ParseWholeFloat(fields[2]);
        const auto isWhole = [](float number) { return number == std::round(number); };
        if (!minimum || !maximum || *minimum > *maximum ||
            (*type == ParameterType::Integer && !(isWhole(*minimum) && isWhole(*maximum)))) {
            return "Minimum and maximum are no range of the type";
        }
        parameter.minimum = *minimum;
        parameter.maximum = *maximum;
    }
    if (fields[3].size() > LONGEST_UNIT) {
        return "The unit is too long";
    }
    parameter.unit = fields[3];
    const auto law = laws_.find(std::string(fields[5]));
    if (law == laws_.end()) {
        return "There is no such law before this line";
    }
    parameter.law = law->second;
    const ParameterLaw& read = profile_.laws[parameter.law];
    if ((read.Wire() == WireType::Text) != (*type == ParameterType::Text)) {
        return "Texts have laws of texts, and numbers those of numbers";
    }
    parameter.canBeSet = fields.size() == 6 && read.CanBeSet();
    if (!parameter.canBeSet && read.IsTrigger()) {
        return "A trigger that cannot be set is nothing";
    }
    return ReadSource(fields[4], numbers, parameter);
}

std::string DeviceProfileReader::ReadSource(std::string_view source, const Numbers& numbers,
                                            ProfileParameter& parameter) const {
    constexpr std::string_view fromMeters = "meters:";
    const auto text = Expand(source, numbers);
    if (!text || !text->starts_with(fromMeters)) {
        parameter.address = text.value_or("");
        return IsAddress(parameter.address) ? "" : "The address is none";
    }
    const std::string_view place = std::string_view(*text).substr(fromMeters.size());
    const std::size_t colon = std::min(place.find(':'), place.size());
    const auto meters = meters_.find(std::string(place.substr(0, colon)));
    const auto index = ReadWithin(place.substr(std::min(colon + 1, place.size())), 0,
                                  static_cast<std::int32_t>(MOST_METERS) - 1);
    if (meters == meters_.end() || !index || parameter.type == ParameterType::Text) {
        return "There are no such meters before this line";
    }
    parameter.meters = meters->second;
    parameter.meterIndex = static_cast<std::size_t>(*index);
    parameter.canBeSet = false;
    return {};
}

std::string DeviceProfileReader::ReadBlock(const std::vector<std::string_view>& fields,
                                           const Numbers& numbers, ProfileParameter& parameter) const {
    const bool isDelay = parameter.type == ParameterType::Delay;
    const std::size_t count = isDelay ? 2 : parameter.type == ParameterType::CrossoverFilters ? 4 : 6;
    if (fields.size() != count + (isDelay ? 2 : 1)) {
        return "The block has another number of components";
    }
    if (isDelay) {
        const auto unit = IndexOfWord(DELAY_UNITS, fields.back());
        if (!unit) {
            return "There is no such unit";
        }
        parameter.delayUnit = *unit;
    }
    for (std::size_t i = 1; i <= count; ++i) {
        if (fields[i].empty()) {
            parameter.components.emplace_back();
        } else if (const auto constant = ParseWholeFloat(fields[i])) {
            parameter.components.emplace_back(*constant);
        } else {
            const auto name = Expand(fields[i], numbers);
            const auto component = name ? profile_.Find(*name) : std::nullopt;
            if (!component || !IsNumber(profile_.parameters[*component].type)) {
                return "There is no such number before this line: " + std::string(fields[i]);
            }
            parameter.components.emplace_back(*component);
            parameter.canBeSet = parameter.canBeSet && profile_.parameters[*component].canBeSet;
        }
    }
    return {};
}

} // namespace logic
