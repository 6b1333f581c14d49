#pragma once

#include <string>
#include <string_view>

namespace logic {

// An argument as it has to stand in a command line of the system, to be read as it is.
std::wstring QuotedArgument(std::wstring_view argument);

} // namespace logic
