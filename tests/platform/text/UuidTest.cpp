#include "platform/Text.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

namespace fernhop::text {

TEST(Uuid, IsRandomAndInUpperCase) {
    const std::regex form("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
    for (int count = 0; count < 100; ++count)
        EXPECT_TRUE(std::regex_match(makeUuid(), form));
}

TEST(Uuid, IsDifferentEachTime) {
    std::set<std::string> seen;
    for (int count = 0; count < 1000; ++count)
        seen.insert(makeUuid());
    EXPECT_EQ(seen.size(), 1000U);
}

} // namespace fernhop::text
