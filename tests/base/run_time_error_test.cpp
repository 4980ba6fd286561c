#include "base/run_time_error.h"

#include <gtest/gtest.h>

namespace stelvan::base {
namespace {

TEST(RunTimeError, theProgramsOwnFailuresHaveTheirNumbers) {
    EXPECT_EQ(overflow().number(), 6);
    EXPECT_EQ(subscriptOutOfRange().number(), 9);
    EXPECT_EQ(typeMismatch().number(), 13);
    EXPECT_EQ(objectNotSet().number(), 91);
    EXPECT_EQ(invalidUseOfNull().number(), 94);
}

}  // namespace
}  // namespace stelvan::base
