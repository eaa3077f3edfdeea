#include "platform/lifetime.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace trovel {
namespace {

TEST(Lifetime, ABlockRunsAsOftenAsItIsCalledWhileItLasts) {
    int runs = 0;
    Lifetime const lifetime;
    auto const block = lifetime.whileItLasts([&] { ++runs; });
    EXPECT_EQ(runs, 0);
    block();
    block();
    EXPECT_EQ(runs, 2);
}

TEST(Lifetime, ABlockDoesNothingOnceItIsOver) {
    int runs = 0;
    std::function<void()> block;
    {
        Lifetime const lifetime;
        block = lifetime.whileItLasts([&] { ++runs; });
    }
    block();
    EXPECT_EQ(runs, 0);
}

TEST(Lifetime, ANewOneDoesNotBringBackTheBlocksOfTheOld) {
    int oldRuns = 0;
    int newRuns = 0;
    std::optional<Lifetime> lifetime(std::in_place);
    auto const oldBlock = lifetime->whileItLasts([&] { ++oldRuns; });
    lifetime.emplace();
    auto const newBlock = lifetime->whileItLasts([&] { ++newRuns; });
    oldBlock();
    newBlock();
    EXPECT_EQ(oldRuns, 0);
    EXPECT_EQ(newRuns, 1);
}

TEST(Lifetime, ABlockMayEndIt) {
    int runs = 0;
    std::optional<Lifetime> lifetime(std::in_place);
    auto const block = lifetime->whileItLasts([&] {
        lifetime.reset();
        ++runs;
    });
    block();
    block();
    EXPECT_EQ(runs, 1);
}

} // namespace
} // namespace trovel
