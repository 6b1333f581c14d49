#include "logic/RecoveryCopy.h"

#include <doctest/doctest.h>

using namespace logic;

TEST_CASE("a copy for recovery is read as it was written, and no part of it is taken for one") {
    const RecoveryCopy copy{"C:\\shows\\a=b.panel", "", 12, "size=1,2\r\nfile=x\r\n"};
    const std::string text = RecoveryText(copy);
    const auto read = ParseRecoveryText(text);
    REQUIRE(read);
    CHECK(read->file == copy.file);
    CHECK(read->devices.empty());
    CHECK(read->changes == 12);
    CHECK(read->panel == copy.panel);
    CHECK(ParseRecoveryText(RecoveryText({"", "D", 1, ""}))->devices == "D");
    for (std::size_t length = 0; length < text.size(); ++length) {
        CHECK_FALSE(ParseRecoveryText(text.substr(0, length)));
        CHECK_FALSE(ParseRecoveryText(text.substr(0, length) + std::string(text.size() - length, '\0')));
    }
    CHECK_FALSE(ParseRecoveryText(text + "x"));
    CHECK_FALSE(ParseRecoveryText(RecoveryText({"", "", 0, ""})));
    std::string huge = text;
    huge.replace(huge.find("bytes=") + 6, 2, "99999999999");
    CHECK_FALSE(ParseRecoveryText(huge));
}
