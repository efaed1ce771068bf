#include "base/json.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

TEST(Json, TakesOnlyWhatIsWrittenAsAnInteger) {
    const std::pair<const char *, qint64> integers[] = {{R"({"n":12})", 12},
                                                        {"{ \"a\" : [1,{\"n\":5}] , \"n\"\t:\n-7 }", -7},
                                                        {R"({"n":9223372036854775807})", 9223372036854775807},
                                                        {R"({"\u006e":3})", 3},
                                                        {R"({"n":1,"n":2})", 2}};
    for (const auto &[text, expected] : integers)
        EXPECT_EQ(json::integer(text, "n"_L1), expected) << text;
    for (const char *text : {R"({"n":9223372036854775808})", R"({"n":12.0})", R"({"n":1e3})", R"({"n":true})",
                             R"({"n":"12"})", R"({"n":null})", R"({"n":[12]})", R"({"a":{"n":12}})",
                             R"({"a":"\",\"n\":12,"})", R"({"n":12)", R"([{"n":12}])", ""})
        EXPECT_EQ(json::integer(text, "n"_L1), std::nullopt) << text;
}

} // namespace velmo
