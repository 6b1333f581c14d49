// Profiles: what a kind of real device can be asked for and told, read from a text. One line declares one
// parameter, or many: `{c}` in it stands for each number of a range.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "logic/devices/ParameterLaw.h"
#include "logic/devices/RemoteParameter.h"
#include "logic/devices/osc/Osc.h"

namespace logic {

struct ProfileParameter : RemoteParameter {
    std::string address;               // empty: of a meter or a block
    std::size_t law = 0;               // its number in the profile; not of a block
    std::optional<std::size_t> meters; // the block of meters that its value comes with
    std::size_t meterIndex = 0;
};

// Values that come together, as long as they are subscribed to.
struct ProfileMeters {
    std::string request;
    std::string argument;
    std::uint32_t renewal = 0; // milliseconds
    std::string answer;        // the address that they come with
    MeterFormat format = MeterFormat::Float32;
};

// Who hears of a value that was set.
enum class ProfileEcho { All, Others, None };

struct DeviceProfile {
    std::string title;
    std::uint16_t port = 0; // 0: none is said

    std::string helloSend; // empty: a device that answers nothing by nature
    std::string helloAnswer;
    std::optional<std::size_t> helloIndex; // the argument of the answer that must begin with one of the texts
    std::vector<std::string> helloTexts;
    std::string keepAddress;     // empty: none
    std::uint32_t keepEvery = 0; // milliseconds
    ProfileEcho echo = ProfileEcho::Others;
    std::uint32_t window = 8; // outstanding reads
    std::uint32_t rate = 200; // datagrams a second

    std::vector<ParameterLaw> laws;
    std::vector<ProfileMeters> meters;
    std::vector<ProfileParameter> parameters;

    bool AnswersNothing() const { return helloSend.empty(); }
    std::optional<std::size_t> Find(std::string_view name) const;

    std::unordered_map<std::string, std::size_t> numbers; // of the parameters, by name
};

// Numbers of a range that a device has, of those that its profile has: letter, first and last.
using RangeLimits = std::map<char, std::pair<std::int32_t, std::int32_t>>;
// Reads "c=01-16" into them. False when it is no such text, or the letter has limits already.
bool ReadRangeLimits(std::string_view text, RangeLimits& limits);

// Reads a profile line by line, as they come from a file.
class DeviceProfileReader {
public:
    static constexpr std::size_t MOST_LINES = 2000;
    static constexpr std::size_t LONGEST_LINE = 1000;
    static constexpr std::size_t MOST_PARAMETERS = 20'000;
    static constexpr std::size_t LONGEST_NAME = 63;

    explicit DeviceProfileReader(RangeLimits limits = {}) : limits_(std::move(limits)) {}

    // What is wrong with the line, of which nothing is taken then; empty when it was understood.
    std::string Take(std::string_view line);
    // The profile. Nothing when its first line does not say that it is one, it has no hello, or limits do not
    // lie within its ranges; why stands in the text.
    std::optional<DeviceProfile> Finish(std::string& why);

private:
    struct Range {
        std::int32_t first, last;
        std::size_t digits;
    };
    using Numbers = std::map<char, std::int32_t>; // of the letters, in one expansion

    std::string TakeRange(std::string_view letter, std::string_view text);
    std::string TakeLaw(std::string_view name, std::string_view text);
    std::string TakeMeters(std::string_view name, std::string_view text);
    std::string TakeSetting(std::string_view keyword, std::string_view text);
    std::string TakeHello(std::string_view text);
    std::string TakeParameter(std::string_view name, std::string_view text);
    std::string ReadParameter(const std::vector<std::string_view>& fields, const Numbers& numbers,
                              ProfileParameter& parameter) const;
    std::string ReadBlock(const std::vector<std::string_view>& fields, const Numbers& numbers,
                          ProfileParameter& parameter) const;
    std::string ReadSource(std::string_view source, const Numbers& numbers,
                           ProfileParameter& parameter) const;
    // The text with numbers in place of letters in brackets; nothing when there are others.
    std::optional<std::string> Expand(std::string_view text, const Numbers& numbers) const;

    RangeLimits limits_;
    std::map<char, Range> ranges_;
    std::unordered_map<std::string, std::size_t> laws_;
    std::unordered_map<std::string, std::size_t> meters_;
    DeviceProfile profile_;
    std::size_t lines_ = 0;
    bool isProfile_ = false;
    bool hasHello_ = false;
    std::string limitFault_;
};

} // namespace logic
