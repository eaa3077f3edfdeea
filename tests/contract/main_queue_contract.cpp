#include "platform/alerts.h"
#include "platform/main_queue.h"
#include "platform/worker.h"
#include "tests/contract/contract_world.h"

#include <thread>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::ElementsAreArray;

class MainQueueContract : public ContractTest {
protected:
    [[nodiscard]] auto note(std::string word) {
        return [this, word = std::move(word)] { said.push_back(word); };
    }

    std::vector<std::string> said;
};

TEST_F(MainQueueContract, RunsBlocksByTheTimeTheyAreDueAndThenAsGiven) {
    platform.mainQueue.after(40ms, note("third"));
    platform.mainQueue.after(20ms, note("first"));
    platform.mainQueue.after(20ms, note("second"));
    ASSERT_TRUE(world->waitUntil([&] { return said.size() == 3; }));
    EXPECT_THAT(said, ElementsAre("first", "second", "third"));
}

TEST_F(MainQueueContract, RunsWhatIsPostedLaterAndInOrder) {
    platform.mainQueue.post(note("one"));
    platform.mainQueue.post(note("two"));
    EXPECT_TRUE(said.empty());
    ASSERT_TRUE(world->waitUntil([&] { return said.size() == 2; }));
    EXPECT_THAT(said, ElementsAre("one", "two"));
}

TEST_F(MainQueueContract, NeverRunsABlockInsideTheCallThatGivesIt) {
    platform.mainQueue.post([&] {
        platform.mainQueue.post(note("inner"));
        platform.mainQueue.after(0s, note("at once"));
        said.emplace_back("outer");
    });
    ASSERT_TRUE(world->waitUntil([&] { return said.size() == 3; }));
    EXPECT_EQ(said.front(), "outer");
}

TEST_F(MainQueueContract, TakesBlocksFromOtherThreadsAndRunsThemOnTheMainOne) {
    constexpr int kPosts = 100;
    std::vector<int> order;
    std::vector<int> expected;
    bool isElsewhere = false;
    std::thread([&, here = std::this_thread::get_id()] {
        for (int index = 0; index < kPosts; ++index) {
            platform.mainQueue.post([&, here, index] {
                order.push_back(index);
                isElsewhere |= std::this_thread::get_id() != here;
            });
        }
    }).join();
    for (int index = 0; index < kPosts; ++index) expected.push_back(index);
    ASSERT_TRUE(world->waitUntil([&] { return order.size() == kPosts; }));
    EXPECT_THAT(order, ElementsAreArray(expected));
    EXPECT_FALSE(isElsewhere);
}

TEST_F(MainQueueContract, ATimerRepeatsUntilItsRegistrationEnds) {
    auto timer = platform.mainQueue.every(10ms, note("tick"));
    ASSERT_TRUE(world->waitUntil([&] { return said.size() == 3; }));
    timer.reset();
    world->wait(50ms);
    EXPECT_EQ(said.size(), 3U);
}

TEST_F(MainQueueContract, ATimerMayEndItself) {
    Registration timer;
    timer = platform.mainQueue.every(10ms, [&] {
        timer.reset();
        said.emplace_back("tick");
    });
    world->wait(50ms);
    EXPECT_EQ(said.size(), 1U);
}

TEST_F(MainQueueContract, GoesOnWhileAnAlertIsUp) {
    auto const timer = platform.mainQueue.every(10ms, note("tick"));
    platform.mainQueue.post([&] {
        platform.mainQueue.after(50ms, note("block"));
        world->closeAlertAfter(200ms);
        platform.alerts.runModal({"Trovel", "Some text.", AlertStyle::informational, {"OK"}});
        said.emplace_back("closed");
    });
    ASSERT_TRUE(world->waitUntil([&] { return !said.empty() && said.back() == "closed"; }));
    EXPECT_THAT(said, testing::Contains("block"));
    EXPECT_THAT(said, testing::Contains("tick").Times(testing::Ge(5)));
}

TEST_F(MainQueueContract, AnAlertShownByABlockOfAnAlertClosesFirst) {
    auto const show = [this](std::string const& name) {
        platform.alerts.runModal({"Trovel", name, AlertStyle::informational, {"OK"}});
        said.push_back(name);
    };
    platform.mainQueue.post([&] {
        platform.mainQueue.after(50ms, [&] { show("inner"); });
        world->closeAlertAfter(200ms);
        world->closeAlertAfter(400ms);
        show("outer");
    });
    ASSERT_TRUE(world->waitUntil([&] { return said.size() == 2; }));
    EXPECT_THAT(said, ElementsAre("inner", "outer"));
}

TEST_F(MainQueueContract, TheWorkerRunsItsTasksInOrderAndHandsResultsBack) {
    std::vector<int> results;
    for (int index = 0; index < 10; ++index) {
        platform.worker.run(
            [&, index] { platform.mainQueue.post([&, index] { results.push_back(index); }); });
    }
    EXPECT_TRUE(results.empty());
    ASSERT_TRUE(world->waitUntil([&] { return results.size() == 10; }));
    EXPECT_THAT(results, ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9));
}

} // namespace
} // namespace trovel
