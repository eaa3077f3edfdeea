#include "app/update_manager.h"

#include "platform/updater.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

namespace trovel {
namespace {

constexpr int kThreads = 8;

/// A framework that takes its time to start: until every thread has begun to ask for it.
class SlowUpdater final : public Updater {
public:
    std::unique_ptr<UpdaterController> makeStandardController() override {
        ++made;
        while (asking < kThreads) std::this_thread::yield();
        return nullptr;
    }

    std::atomic<int> asking = 0;
    std::atomic<int> made = 0;
};

TEST(SharedUpdateManagerTest, ThreadsThatAskAtOnceGetTheSameManager) {
    SlowUpdater updater;
    SharedUpdateManager shared;
    std::vector<UpdateManager*> got(kThreads);
    std::vector<std::thread> threads;
    for (auto& manager : got) {
        threads.emplace_back([&] {
            ++updater.asking;
            manager = &shared.get(updater);
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(updater.made, 1);
    EXPECT_THAT(got, testing::Each(&shared.get(updater)));
}

} // namespace
} // namespace trovel
