// Hashes by published vectors, the lock of a panel, and how long wrong PINs make wait.

#include "logic/security/PinLock.h"
#include "logic/security/Sha256.h"
#include "tests/native/Tables.h"

using namespace logic;

namespace {

std::string Hex(const Sha256Digest& digest) {
    std::string text;
    for (const int byte : digest) {
        text += "0123456789abcdef"[byte >> 4];
        text += "0123456789abcdef"[byte & 15];
    }
    return text;
}

} // namespace

TEST_CASE("hashes are those of the published vectors") {
    CheckRows(
        [](const std::string& text) { return Hex(Sha256(text)); },
        {Row<std::string, std::string>{{""},
                                       "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
         {{"abc"}, "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
         {{"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"},
          "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
         {{std::string(1000000, 'a')}, "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"}});
    CheckRows([](const std::string& key, const std::string& text) { return Hex(HmacSha256(key, text)); },
              {Row<std::string, std::string, std::string>{
                   {"Jefe", "what do ya want for nothing?"},
                   "5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843"},
               {{std::string(131, '\xAA'), "Test Using Larger Than Block-Size Key - Hash Key First"},
                "60e431591ee0b67f0d8a26aacbf5b77f8e0bc6213728c5140546040f0ee37f54"}});
    // The first block of each.
    CheckRows(
        [](const std::string& password, const std::string& salt, std::uint32_t iterations) {
            return Hex(Pbkdf2Sha256(password, salt, iterations));
        },
        {Row<std::string, std::string, std::string, std::uint32_t>{
             {"passwd", "salt", 1}, "55ac046e56e3089fec1691c22544b605f94185216dde0465e68b9d57c20dacbc"},
         {{"Password", "NaCl", 80000}, "4ddcd8f60b98be21830cee5ef22701f9641a4418d04c0414aeff08876b34ab56"}});
}

TEST_CASE("a lock opens by its PIN alone, as made and as read again") {
    const PinLock::Salt salt{1, 2, 3, 0xFF};
    const auto made = PinLock::Make("4711", salt, 10000);
    REQUIRE(made);
    const std::string text = made->Text();
    CHECK(text.starts_with("pbkdf2-sha256,10000,010203ff000000000000000000000000,"));
    const auto read = PinLock::Parse(text);
    REQUIRE(read);
    CHECK(read->Text() == text);
    for (const char* pin : {"4711", "4712", "471", "47110", ""}) {
        CHECK(read->Opens(pin) == (std::string(pin) == "4711"));
    }
    CHECK(PinLock::Make("4711", {1}, 10000)->Text().substr(54) != text.substr(54));

    for (const std::size_t length : {0U, 3U, 4U, 64U, 65U}) {
        CHECK(PinLock::Make(std::string(length, '1'), salt, 10000).has_value() ==
              (length >= 4 && length <= 64));
    }
    for (std::size_t length = 0; length < text.size(); ++length) {
        CHECK_FALSE(PinLock::Parse(text.substr(0, length)));
    }
    for (const char* wrong : {"0", "9999", "1000001", "4294967296", "-10000", "10000 ", "x"}) {
        CHECK_FALSE(PinLock::Parse("pbkdf2-sha256," + std::string(wrong) + text.substr(19)));
    }
    for (const std::string& wrong : {text + "0", "x" + text, text.substr(0, 30) + "g" + text.substr(31)}) {
        CHECK_FALSE(PinLock::Parse(wrong));
    }
}

TEST_CASE("wrong PINs make wait, each longer than the one before, until the right one") {
    PinTries tries;
    std::uint64_t now = 1000;
    for (int i = 0; i < 2; ++i) {
        tries.Wrong(now);
        CHECK(tries.Wait(now) == 0);
    }
    for (std::uint64_t wait = 5000; wait < 15 * 60 * 1000; wait *= 2) {
        tries.Wrong(now);
        CHECK(tries.Wait(now) == wait);
        CHECK(tries.Wait(now + wait - 1) == 1);
        now += wait;
        CHECK(tries.Wait(now) == 0);
    }
    for (int i = 0; i < 100; ++i) {
        tries.Wrong(now);
        CHECK(tries.Wait(now) == 15 * 60 * 1000);
        now += tries.Wait(now);
    }
    tries.Right();
    tries.Wrong(now);
    CHECK(tries.Wait(now) == 0);
}
