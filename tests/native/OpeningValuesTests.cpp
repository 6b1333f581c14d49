#include "logic/OpeningValues.h"
#include "tests/native/Tables.h"

TEST_CASE("the last value of each address is kept in order, until its time is over") {
    logic::OpeningValues values;
    const auto text = [&values] {
        std::string all;
        for (const auto& value : values.All())
            all += value.address + "=" + value.bytes + " ";
        return all;
    };
    values.Keep({"A*x", 11, "1"});
    values.Keep({"A*X", 11, "2"}); // another keyword
    values.Keep({"B*x", 11, "3"});
    values.Keep({"a*x", 11, "4"}); // the first one again
    CHECK(text() == "A*X=2 B*x=3 a*x=4 ");
    CHECK(values.Has("A*x"));
    values.Drop("b*x");
    values.Drop("b*x");
    CHECK(text() == "A*X=2 a*x=4 ");

    logic::OpeningValues others;
    others.Keep({"A*X", 11, "5"});
    others.Keep({"C*x", 11, "6"});
    values.Add(others);
    CHECK(text() == "a*x=4 A*X=5 C*x=6 ");

    constexpr std::uint64_t START = 0xFFFFFFF0; // beyond 32 bits there is no turn
    values.Start(START);
    CHECK(values.Expire(START + logic::OpeningValues::patience - 1).empty());
    CHECK(values.Expire(START + logic::OpeningValues::patience).size() == 3);
    CHECK(values.IsEmpty());
    CHECK_FALSE(values.Has("C*x"));
    values.Keep({"C*x", 11, "7"});
    CHECK(text() == "C*x=7 ");
}
