#include "platform/linux/system/single_instance.h"

#include <gtest/gtest.h>

#include <csignal>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

namespace trovel {
namespace {

constexpr uid_t kNobody = 65534;

/// A display name that no other test or session uses.
std::string uniqueDisplay(std::string const& test) {
    return "test-" + std::to_string(getpid()) + '-' + test + ":0";
}

TEST(SingleInstanceTest, TheSecondClaimFailsUntilTheFirstHasEnded) {
    auto const display = uniqueDisplay("second");
    auto first = SingleInstance::claim(display);
    ASSERT_TRUE(first);
    EXPECT_FALSE(SingleInstance::claim(display));
    EXPECT_FALSE(SingleInstance::claim(display));
    first.reset();
    EXPECT_TRUE(SingleInstance::claim(display));
}

TEST(SingleInstanceTest, ASecondStartIsNoticedOnce) {
    auto const display = uniqueDisplay("noticed");
    auto const first = SingleInstance::claim(display);
    ASSERT_TRUE(first);
    EXPECT_FALSE(first->takeSecondStarts());
    EXPECT_FALSE(SingleInstance::claim(display));
    EXPECT_FALSE(SingleInstance::claim(display));
    pollfd readable{first->fileDescriptor(), POLLIN, 0};
    EXPECT_EQ(poll(&readable, 1, 1000), 1);
    EXPECT_TRUE(first->takeSecondStarts());
    EXPECT_FALSE(first->takeSecondStarts());
}

TEST(SingleInstanceTest, AnotherUsersStartIsNone) {
    if (geteuid() != 0) GTEST_SKIP() << "needs root to be two users";
    auto const display = uniqueDisplay("stranger");
    auto const first = SingleInstance::claim(display);
    ASSERT_TRUE(first);
    ASSERT_EQ(seteuid(kNobody), 0);
    EXPECT_FALSE(SingleInstance::claim(display)); // it looks for this user's name all the same
    ASSERT_EQ(seteuid(0), 0);
    EXPECT_FALSE(first->takeSecondStarts());
}

TEST(SingleInstanceTest, EachDisplayHasItsOwn) {
    auto const first = SingleInstance::claim(uniqueDisplay("one"));
    auto const second = SingleInstance::claim(uniqueDisplay("two"));
    EXPECT_TRUE(first);
    EXPECT_TRUE(second);
}

TEST(SingleInstanceTest, TheScreenNumberPlaysNoPart) {
    EXPECT_EQ(singleInstanceName(":1.0"), singleInstanceName(":1"));
    EXPECT_EQ(singleInstanceName("host.example:1.2"), singleInstanceName("host.example:1"));
    EXPECT_NE(singleInstanceName(":1"), singleInstanceName(":10"));
    EXPECT_NE(singleInstanceName("host.example:1"), singleInstanceName("host.other:1"));
}

TEST(SingleInstanceTest, AClaimEndsWithItsProcessHoweverThatEnds) {
    auto const display = uniqueDisplay("killed");
    auto const child = fork();
    if (child == 0) {
        auto const claim = SingleInstance::claim(display);
        raise(SIGKILL);
    }
    waitpid(child, nullptr, 0);
    EXPECT_TRUE(SingleInstance::claim(display));
}

TEST(SingleInstanceTest, AnotherUsersSocketOfThatNameLocksNobodyOut) {
    if (geteuid() != 0) GTEST_SKIP() << "needs root to be two users";
    auto const display = uniqueDisplay("squatter");
    // The squatter takes this user's name: only its effective user differs.
    ASSERT_EQ(seteuid(kNobody), 0);
    auto const squatter = SingleInstance::claim(display);
    ASSERT_EQ(seteuid(0), 0);
    ASSERT_TRUE(squatter);
    EXPECT_TRUE(SingleInstance::claim(display));
}

} // namespace
} // namespace trovel
