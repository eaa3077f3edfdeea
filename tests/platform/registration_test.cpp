#include "platform/registration.h"

#include <gtest/gtest.h>

#include <optional>

namespace trovel {
namespace {

TEST(Registration, EndsOnceWhenItIsDestroyed) {
    int ended = 0;
    {
        Registration const registration([&] { ++ended; });
    }
    EXPECT_EQ(ended, 1);
}

TEST(Registration, EndsOnceWhenItIsReset) {
    int ended = 0;
    {
        Registration registration([&] { ++ended; });
        EXPECT_TRUE(registration);
        registration.reset();
        EXPECT_FALSE(registration);
        registration.reset();
    }
    EXPECT_EQ(ended, 1);
}

TEST(Registration, StandsForNothingWhenItIsEmpty) {
    Registration registration;
    EXPECT_FALSE(registration);
    registration.reset();
}

TEST(Registration, MovesWithoutEnding) {
    int ended = 0;
    Registration first([&] { ++ended; });
    Registration second(std::move(first));
    EXPECT_EQ(ended, 0);
    EXPECT_TRUE(second);
    second.reset();
    EXPECT_EQ(ended, 1);
}

TEST(Registration, AnAssignmentEndsWhatWasThere) {
    int oldEnded = 0;
    int newEnded = 0;
    Registration registration([&] { ++oldEnded; });
    registration = Registration([&] { ++newEnded; });
    EXPECT_EQ(oldEnded, 1);
    EXPECT_EQ(newEnded, 0);
}

TEST(Registration, MayBeResetByItsOwnEnd) {
    int ended = 0;
    std::optional<Registration> registration;
    registration.emplace([&] {
        ++ended;
        registration->reset();
    });
    registration->reset();
    EXPECT_EQ(ended, 1);
}

} // namespace
} // namespace trovel
