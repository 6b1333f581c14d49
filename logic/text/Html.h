#pragma once

#include <string>
#include <string_view>

namespace logic {

// The text as it stands in a page or in an attribute.
std::string HtmlText(std::string_view text);

} // namespace logic
