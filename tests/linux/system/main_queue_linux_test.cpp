#include "platform/linux/system/main_queue_linux.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <poll.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

bool isReadable(MainQueueLinux const& queue, int timeoutMilliseconds) {
    pollfd entry{queue.fileDescriptor(), POLLIN, 0};
    return poll(&entry, 1, timeoutMilliseconds) == 1;
}

/// One turn of a loop that has nothing but the queue; waits up to a second for a block.
void turn(MainQueueLinux& queue) {
    if (isReadable(queue, 1000)) queue.runDue();
}

class MainQueueLinuxTest : public testing::Test {
protected:
    MainQueue::Block note(std::string name) {
        return [this, name = std::move(name)] { order_.push_back(name); };
    }

    MainQueueLinux queue_;
    std::vector<std::string> order_;
};

TEST_F(MainQueueLinuxTest, PostedBlocksRunInTheirOrderInALaterTurn) {
    queue_.post(note("first"));
    queue_.post(note("second"));
    EXPECT_THAT(order_, ElementsAre());
    turn(queue_);
    EXPECT_THAT(order_, ElementsAre("first", "second"));
}

TEST_F(MainQueueLinuxTest, DelayedBlocksRunByTheTimeTheyAreDue) {
    queue_.after(30ms, note("late"));
    queue_.after(10ms, note("early"));
    queue_.post(note("now"));
    while (order_.size() < 3) turn(queue_);
    EXPECT_THAT(order_, ElementsAre("now", "early", "late"));
}

TEST_F(MainQueueLinuxTest, ADelayIsNeverCutShort) {
    auto const start = std::chrono::steady_clock::now();
    queue_.after(20ms, note("due"));
    while (order_.empty()) turn(queue_);
    EXPECT_GE(std::chrono::steady_clock::now() - start, 20ms);
}

TEST_F(MainQueueLinuxTest, ANegativeDelayIsNone) {
    queue_.post(note("before"));
    queue_.after(-1h, note("after"));
    turn(queue_);
    EXPECT_THAT(order_, ElementsAre("before", "after"));
}

TEST_F(MainQueueLinuxTest, ABlockThatIsPostedByABlockWaitsForTheNextTurn) {
    queue_.post([this] {
        order_.emplace_back("outer");
        queue_.post(note("inner"));
    });
    turn(queue_);
    EXPECT_THAT(order_, ElementsAre("outer"));
    turn(queue_);
    EXPECT_THAT(order_, ElementsAre("outer", "inner"));
}

TEST_F(MainQueueLinuxTest, BlocksRunInALoopThatABlockRuns) {
    queue_.post([this] {
        order_.emplace_back("alert opens");
        turn(queue_);
        order_.emplace_back("alert closes");
    });
    queue_.post(note("meanwhile"));
    turn(queue_);
    EXPECT_THAT(order_, ElementsAre("alert opens", "meanwhile", "alert closes"));
    EXPECT_FALSE(isReadable(queue_, 0));
}

TEST_F(MainQueueLinuxTest, ADelayThatEndsInALoopThatABlockRunsIsKept) {
    queue_.after(10ms, note("meanwhile"));
    queue_.post([this] {
        while (order_.empty()) turn(queue_);
        order_.emplace_back("alert closes");
    });
    turn(queue_);
    EXPECT_THAT(order_, ElementsAre("meanwhile", "alert closes"));
}

TEST_F(MainQueueLinuxTest, AnIdleQueueDoesNotWakeTheLoop) {
    EXPECT_FALSE(isReadable(queue_, 0));
    queue_.post(note("block"));
    EXPECT_TRUE(isReadable(queue_, 0));
    turn(queue_);
    EXPECT_FALSE(isReadable(queue_, 20));
}

TEST_F(MainQueueLinuxTest, ARepetitionRunsUntilItsRegistrationEnds) {
    auto repetition = queue_.every(5ms, note("tick"));
    while (order_.size() < 3) turn(queue_);
    repetition.reset();
    EXPECT_FALSE(isReadable(queue_, 20));
    EXPECT_EQ(order_.size(), 3U);
}

TEST_F(MainQueueLinuxTest, ARepetitionMayEndItself) {
    Registration repetition;
    repetition = queue_.every(5ms, [&] {
        order_.emplace_back("tick");
        repetition.reset();
    });
    turn(queue_);
    EXPECT_FALSE(isReadable(queue_, 20));
    EXPECT_THAT(order_, ElementsAre("tick"));
}

TEST_F(MainQueueLinuxTest, TimesThatARepetitionMissedAreNotMadeUpFor) {
    auto const repetition = queue_.every(10ms, note("tick"));
    queue_.post([] {
        MainQueueLinux stall;
        stall.after(35ms, [] {});
        static_cast<void>(isReadable(stall, 1000));
    });
    turn(queue_); // the stall
    turn(queue_); // what was due during it
    EXPECT_THAT(order_, ElementsAre("tick"));
    EXPECT_FALSE(isReadable(queue_, 0));
}

TEST_F(MainQueueLinuxTest, ARegistrationMayOutliveItsQueue) {
    Registration repetition;
    {
        MainQueueLinux queue;
        repetition = queue.every(5ms, note("tick"));
    }
    repetition.reset();
    EXPECT_THAT(order_, ElementsAre());
}

TEST_F(MainQueueLinuxTest, NothingRunsOnceItIsStopped) {
    queue_.post([this] {
        order_.emplace_back("last");
        queue_.stop();
    });
    queue_.post(note("too late"));
    turn(queue_);
    queue_.post(note("much too late"));
    EXPECT_FALSE(isReadable(queue_, 0));
    EXPECT_THAT(order_, ElementsAre("last"));
}

TEST_F(MainQueueLinuxTest, ClearingDropsWhatTheBlocksHold) {
    auto const held = std::make_shared<int>(1);
    queue_.after(1h, [held] {});
    queue_.clear();
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(MainQueueLinuxTest, ABlockMayPostWhileItIsDropped) {
    auto const held = std::shared_ptr<void>(nullptr, [this](void*) { queue_.post(note("end")); });
    auto repetition = queue_.every(1h, [held] {});
    repetition.reset();
    SUCCEED() << "no deadlock";
}

TEST_F(MainQueueLinuxTest, OtherThreadsMayPost) {
    constexpr std::size_t kThreads = 4;
    constexpr std::size_t kPosts = 500;
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < kThreads; ++i) {
        threads.emplace_back([this] {
            for (std::size_t j = 0; j < kPosts; ++j) queue_.post(note("posted"));
        });
    }
    while (order_.size() < kThreads * kPosts) turn(queue_);
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(order_.size(), kThreads * kPosts);
}

} // namespace
} // namespace trovel
