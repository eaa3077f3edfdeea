#include "platform/linux/system/worker_linux.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

namespace trovel {
namespace {

TEST(WorkerLinuxTest, TasksRunOffTheCallingThreadInTheirOrder) {
    std::vector<int> order;
    std::thread::id thread;
    std::promise<void> done;
    WorkerLinux worker;
    worker.run([&] { order.push_back(1); });
    worker.run([&] {
        order.push_back(2);
        thread = std::this_thread::get_id();
        done.set_value();
    });
    done.get_future().wait();
    EXPECT_THAT(order, testing::ElementsAre(1, 2));
    EXPECT_NE(thread, std::this_thread::get_id());
}

TEST(WorkerLinuxTest, ATaskMayHandInAnother) {
    std::promise<void> done;
    WorkerLinux worker;
    worker.run([&] { worker.run([&] { done.set_value(); }); });
    done.get_future().wait();
}

TEST(WorkerLinuxTest, StoppingItFinishesTheRunningTaskAndDropsTheOthers) {
    std::promise<void> began;
    std::promise<void> mayEnd;
    std::atomic<bool> hasEnded = false;
    std::atomic<bool> ranAnother = false;
    // Goes when the task that holds it is dropped.
    auto held = std::shared_ptr<void>(nullptr, [&](void*) { mayEnd.set_value(); });
    WorkerLinux worker;
    worker.run([&] {
        began.set_value();
        mayEnd.get_future().wait();
        hasEnded = true;
    });
    worker.run([&ranAnother, held = std::move(held)] { ranAnother = true; });
    began.get_future().wait();
    worker.stop();
    worker.run([&] { ranAnother = true; });
    EXPECT_TRUE(hasEnded);
    EXPECT_FALSE(ranAnother);
}

TEST(WorkerLinuxTest, OneThatWasNeverUsedEndsAtOnce) {
    WorkerLinux worker;
    worker.stop();
    worker.stop();
}

TEST(WorkerLinuxTest, SeveralThreadsMayHandInTasks) {
    constexpr int kThreads = 4;
    constexpr int kTasks = 200;
    std::atomic<int> count = 0;
    std::promise<void> done;
    WorkerLinux worker;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            for (int j = 0; j < kTasks; ++j) {
                worker.run([&] {
                    if (++count == kThreads * kTasks) done.set_value();
                });
            }
        });
    }
    for (auto& thread : threads) thread.join();
    done.get_future().wait();
    EXPECT_EQ(count, kThreads * kTasks);
}

} // namespace
} // namespace trovel
