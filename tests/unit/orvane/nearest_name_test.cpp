#include "orvane/nearest_name.h"

#include <gtest/gtest.h>

using namespace Orvane;

TEST(NearestName, TakesTheFewestChanges) {
    EXPECT_EQ(nearestName("chek", {"build", "check", "new"}), "check");
    EXPECT_EQ(nearestName("biuld", {"build", "check"}), "build");
    EXPECT_EQ(nearestName("BUILD", {"build", "check"}), "build");
    EXPECT_EQ(nearestName("unknown-functoin", {"unknown-function", "unknown-property"}),
              "unknown-function");
}

TEST(NearestName, NamesThatAreTooDifferentAreNotMeant) {
    EXPECT_EQ(nearestName("xyz", {"build", "check"}), "");
    EXPECT_EQ(nearestName("", {"build"}), "");
    EXPECT_EQ(nearestName("a", {}), "");
    EXPECT_EQ(nearestName(std::string(100'000, 'a'), {"a"}), "");
}
