#include "logic/text/Arguments.h"

namespace logic {

std::wstring QuotedArgument(std::wstring_view argument) {
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0; // right before
    for (const wchar_t character : argument) {
        if (character == L'"') {
            quoted.append(backslashes + 1, L'\\'); // those double, and one for the quotation mark
        }
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        quoted += character;
    }
    quoted.append(backslashes, L'\\');
    return quoted + L'"';
}

} // namespace logic
