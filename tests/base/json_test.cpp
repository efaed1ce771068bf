#include "base/json.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

TEST(Json, TakesOnlyWhatIsWrittenAsAnInteger) {
    struct Row {
        const char *text;
        std::optional<qint64> expected;
    };
    const Row rows[] = {
        {R"({"n":12})", 12},
        {"{ \"a\" : [1,{\"n\":5}] , \"n\"\t:\n-7 }", -7},
        {R"({"n":9223372036854775807})", 9223372036854775807},
        {R"({"\u006e":3})", 3},
        {R"({"n":1,"n":2})", 2},
        {R"({"n":9223372036854775808})", std::nullopt},
        {R"({"n":12,"a":"\ud800"})", 12}, // read wherever the other members are
        {R"({"n":12.0})", std::nullopt},
        {R"({"n":1e3})", std::nullopt},
        {R"({"n":true})", std::nullopt},
        {R"({"n":"12"})", std::nullopt},
        {R"({"n":null})", std::nullopt},
        {R"({"n":[12]})", std::nullopt},
        {R"({"a":{"n":12}})", std::nullopt},
        {R"({"a":"\",\"n\":12,"})", std::nullopt},
        {R"({"n":12)", std::nullopt},
        {R"([{"n":12}])", std::nullopt},
        {"", std::nullopt},
    };
    for (const Row &row : rows)
        EXPECT_EQ(json::integer(row.text, "n"_L1), row.expected) << row.text;
}

} // namespace velmo
