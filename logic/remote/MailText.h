// What a mail says, and how often one may go out.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>

namespace logic {

struct MailFacts {
    std::string value; // for "%v"
    std::string name;  // for "%n"
    std::string date;  // for "%d"
    std::string time;  // for "%t"
    // For "%{OBJECT*keyword}", asked with what stands between the braces; not called for an empty one.
    std::function<std::string(std::string_view address)> valueOf;
};

// Puts the facts into a template and turns "\n" and "\t" in it into line feed and tab, "\\" into a backslash.
// What is put in is not looked at again. A "%" in front of anything else stays, and so does a "%{" without an
// end.
std::string ExpandMailText(std::string_view text, const MailFacts& facts);

// Lets so many tries pass in any hour. Milliseconds of a clock that never goes back.
class HourlyLimit {
public:
    // Whether one more may pass now, which it then does.
    bool Pass(std::uint64_t now, std::int32_t limit);

private:
    std::deque<std::uint64_t> passed_; // of the last hour
};

} // namespace logic
