#include "platform/simulated/simulated_main_queue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

TEST(SimulatedMainQueue, RunsBlocksByTheTimeTheyAreDueAndThenAsGiven) {
    SimulatedMainQueue queue;
    std::vector<std::string> ran;
    queue.after(20ms, [&] { ran.emplace_back("late"); });
    queue.after(10ms, [&] { ran.emplace_back("early"); });
    queue.after(10ms, [&] { ran.emplace_back("early too"); });
    queue.post([&] { ran.emplace_back("now"); });
    queue.advance(20ms);
    EXPECT_THAT(ran, ElementsAre("now", "early", "early too", "late"));
}

TEST(SimulatedMainQueue, StandsAtTheDueTimeWhileABlockRuns) {
    SimulatedMainQueue queue;
    std::vector<MainQueue::Duration> times;
    queue.after(10ms, [&] {
        times.push_back(queue.now());
        queue.after(5ms, [&] { times.push_back(queue.now()); });
    });
    queue.advance(100ms);
    EXPECT_THAT(times, ElementsAre(10ms, 15ms));
    EXPECT_EQ(queue.now(), 100ms);
}

TEST(SimulatedMainQueue, LeavesForLaterWhatIsDueAfterTheEnd) {
    SimulatedMainQueue queue;
    bool ran = false;
    queue.after(10ms, [&] { ran = true; });
    queue.advance(9999us);
    EXPECT_FALSE(ran);
    EXPECT_EQ(queue.pending(), 1U);
    queue.advance(1us);
    EXPECT_TRUE(ran);
}

TEST(SimulatedMainQueue, ANegativeDelayIsNow) {
    SimulatedMainQueue queue;
    bool ran = false;
    queue.after(-1s, [&] { ran = true; });
    EXPECT_FALSE(ran);
    queue.drain();
    EXPECT_TRUE(ran);
    EXPECT_EQ(queue.now(), 0ms);
}

TEST(SimulatedMainQueue, DrainRunsWhatABlockPosts) {
    SimulatedMainQueue queue;
    int ran = 0;
    queue.post([&] {
        ++ran;
        queue.post([&] { ++ran; });
        queue.after(1ns, [&] { ++ran; });
    });
    queue.drain();
    EXPECT_EQ(ran, 2);
}

TEST(SimulatedMainQueue, RepeatsUntilTheRegistrationEnds) {
    SimulatedMainQueue queue;
    std::vector<MainQueue::Duration> times;
    auto timer = queue.every(1s, [&] { times.push_back(queue.now()); });
    queue.advance(3s);
    EXPECT_THAT(times, ElementsAre(1s, 2s, 3s));
    timer.reset();
    queue.advance(3s);
    EXPECT_EQ(times.size(), 3U);
    EXPECT_EQ(queue.pending(), 0U);
}

TEST(SimulatedMainQueue, ATimerMayEndItself) {
    SimulatedMainQueue queue;
    int ran = 0;
    Registration timer;
    timer = queue.every(1s, [&, guard = std::string(100, 'x')] {
        timer.reset();
        ran += guard.size() == 100 ? 1 : 100;
    });
    queue.advance(5s);
    EXPECT_EQ(ran, 1);
}

TEST(SimulatedMainQueue, ABlockMayMoveTheClockItself) {
    SimulatedMainQueue queue;
    std::vector<std::string> ran;
    queue.after(10ms, [&] {
        ran.emplace_back("outer begins");
        queue.advance(50ms);
        ran.emplace_back("outer ends");
    });
    queue.after(30ms, [&] { ran.emplace_back("inner"); });
    queue.advance(20ms);
    EXPECT_THAT(ran, ElementsAre("outer begins", "inner", "outer ends"));
    EXPECT_EQ(queue.now(), 60ms);
}

TEST(SimulatedMainQueue, WhatBecomesDueWhileTheMainThreadIsBusyRunsLate) {
    SimulatedMainQueue queue;
    std::vector<MainQueue::Duration> times;
    queue.after(10ms, [&] { times.push_back(queue.now()); });
    queue.holdUp(30ms);
    EXPECT_THAT(times, testing::IsEmpty());
    queue.after(10ms, [&] { times.push_back(queue.now()); });
    queue.advance(10ms);
    EXPECT_THAT(times, ElementsAre(30ms, 40ms));
}

TEST(SimulatedMainQueue, AdvanceUntilStopsAtTheFirstMomentThatFits) {
    SimulatedMainQueue queue;
    int ran = 0;
    auto const timer = queue.every(1s, [&] { ++ran; });
    EXPECT_TRUE(queue.advanceUntil([&] { return ran == 3; }, 10s));
    EXPECT_EQ(queue.now(), 3s);
    EXPECT_FALSE(queue.advanceUntil([&] { return ran == 30; }, 10s));
    EXPECT_EQ(queue.now(), 13s);
}

TEST(SimulatedMainQueue, TakesBlocksFromAnotherThread) {
    SimulatedMainQueue queue;
    int ran = 0;
    std::thread([&] {
        for (int post = 0; post < 100; ++post) queue.post([&] { ++ran; });
    }).join();
    queue.drain();
    EXPECT_EQ(ran, 100);
}

TEST(SimulatedMainQueue, WhatIsDroppedNeverRuns) {
    SimulatedMainQueue queue;
    bool ran = false;
    queue.after(1s, [&] { ran = true; });
    queue.clear();
    queue.advance(2s);
    EXPECT_FALSE(ran);
}

} // namespace
} // namespace trovel
