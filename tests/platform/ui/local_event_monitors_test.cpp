#include "platform/ui/local_event_monitors.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace trovel {
namespace {

using testing::ElementsAre;

class LocalEventMonitorsTest : public testing::Test {
protected:
    [[nodiscard]] auto say(std::string word, MonitorVerdict verdict) {
        return [this, word = std::move(word), verdict](KeyEvent const&) {
            said.push_back(word);
            return verdict;
        };
    }

    LocalEventMonitors monitors;
    std::vector<std::string> said;
};

TEST_F(LocalEventMonitorsTest, WithoutMonitorsNothingIsSwallowed) {
    EXPECT_FALSE(monitors.swallows({}));
    EXPECT_EQ(monitors.count(), 0U);
}

TEST_F(LocalEventMonitorsTest, TheNewestIsAskedFirst) {
    auto const first = monitors.addLocalKeyDownMonitor(say("first", MonitorVerdict::passOn));
    auto const second = monitors.addLocalKeyDownMonitor(say("second", MonitorVerdict::passOn));
    EXPECT_FALSE(monitors.swallows({}));
    EXPECT_THAT(said, ElementsAre("second", "first"));
}

TEST_F(LocalEventMonitorsTest, OneThatSwallowsIsTheLastToSeeTheEvent) {
    auto const first = monitors.addLocalKeyDownMonitor(say("first", MonitorVerdict::passOn));
    auto const second = monitors.addLocalKeyDownMonitor(say("second", MonitorVerdict::swallow));
    EXPECT_TRUE(monitors.swallows({}));
    EXPECT_THAT(said, ElementsAre("second"));
}

TEST_F(LocalEventMonitorsTest, AnEndedMonitorSeesNothing) {
    auto first = monitors.addLocalKeyDownMonitor(say("first", MonitorVerdict::swallow));
    first.reset();
    EXPECT_FALSE(monitors.swallows({}));
    EXPECT_TRUE(said.empty());
    EXPECT_EQ(monitors.count(), 0U);
}

TEST_F(LocalEventMonitorsTest, AHandlerMayEndItself) {
    Registration monitor;
    monitor = monitors.addLocalKeyDownMonitor([&, word = std::string(100, 'x')](KeyEvent const&) {
        monitor.reset();
        said.push_back(word); // what the handler holds is still there
        return MonitorVerdict::swallow;
    });
    EXPECT_TRUE(monitors.swallows({}));
    EXPECT_FALSE(monitors.swallows({}));
    EXPECT_THAT(said, ElementsAre(std::string(100, 'x')));
}

TEST_F(LocalEventMonitorsTest, AHandlerMayEndTheNextOne) {
    auto first = monitors.addLocalKeyDownMonitor(say("first", MonitorVerdict::swallow));
    auto const second = monitors.addLocalKeyDownMonitor([&](KeyEvent const&) {
        first.reset();
        return MonitorVerdict::passOn;
    });
    EXPECT_FALSE(monitors.swallows({}));
    EXPECT_TRUE(said.empty());
}

TEST_F(LocalEventMonitorsTest, OneThatIsAddedMeanwhileSeesTheNextEvent) {
    Registration inner;
    auto const outer = monitors.addLocalKeyDownMonitor([&](KeyEvent const&) {
        if (!inner) inner = monitors.addLocalKeyDownMonitor(say("inner", MonitorVerdict::passOn));
        return MonitorVerdict::passOn;
    });
    EXPECT_FALSE(monitors.swallows({}));
    EXPECT_TRUE(said.empty());
    EXPECT_FALSE(monitors.swallows({}));
    EXPECT_THAT(said, ElementsAre("inner"));
}

TEST(LocalEventMonitors, ARegistrationMayOutliveThem) {
    std::optional<LocalEventMonitors> monitors;
    monitors.emplace();
    auto registration =
        monitors->addLocalKeyDownMonitor([](KeyEvent const&) { return MonitorVerdict::passOn; });
    monitors.reset();
    registration.reset();
}

} // namespace
} // namespace trovel
