#include "delivery/target_activation.h"

#include "platform/simulated/simulated_desktop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class TargetActivationTest : public testing::Test {
protected:
    TargetActivationTest() {
        SimulatedProgram program;
        program.localizedName = "Claude";
        target.processIdentifier = desktop.workspace.start(program).processIdentifier;
        other = desktop.workspace.start({}).processIdentifier;
        desktop.workspace.bringToFront(other);
    }

    void wait() {
        activation.waitForFrontmost(target, 0, [this] { actions.push_back(desktop.queue.now()); });
    }
    void bringToFrontAfter(MainQueue::Duration delay, std::int32_t process) {
        desktop.queue.after(delay, [this, process] { desktop.workspace.bringToFront(process); });
    }

    SimulatedDesktop desktop;
    std::int32_t other = 0;
    RunningApplication target{0, std::nullopt, "Claude", ActivationPolicy::regular};
    std::shared_ptr<int> owner = std::make_shared<int>();
    TargetActivation activation{desktop.platform(), owner};
    std::vector<MainQueue::Duration> actions;
};

TEST_F(TargetActivationTest, AsksByNameInOneSentence) {
    activation.activateWithAppleScript(target);
    EXPECT_THAT(desktop.journal.all<effect::ScriptExecuted>(),
                ElementsAre(effect::ScriptExecuted{"tell application \"Claude\" to activate"}));
}

TEST_F(TargetActivationTest, AnApplicationWithoutANameIsAskedByAnEmptyOne) {
    target.localizedName.reset();
    activation.activateWithAppleScript(target);
    EXPECT_THAT(desktop.journal.all<effect::ScriptExecuted>(),
                ElementsAre(effect::ScriptExecuted{"tell application \"\" to activate"}));
}

TEST_F(TargetActivationTest, AFailingScriptIsNoMatter) {
    desktop.faults.failAlways(Operation::executeScript);
    activation.activateWithAppleScript(target);
    EXPECT_EQ(desktop.journal.count<effect::AlertShown>(), 0U);
}

TEST_F(TargetActivationTest, InFrontAtTheFirstCheckTheActionFollowsHalfASecondLater) {
    desktop.workspace.bringToFront(target.processIdentifier);
    wait();
    EXPECT_THAT(actions, IsEmpty());
    desktop.queue.advance(10s);
    EXPECT_THAT(actions, ElementsAre(500ms));
}

TEST_F(TargetActivationTest, ChecksEveryTenthOfASecond) {
    bringToFrontAfter(250ms, target.processIdentifier);
    wait();
    desktop.queue.advance(10s);
    EXPECT_THAT(actions, ElementsAre(800ms));
}

TEST_F(TargetActivationTest, TheLastCheckIsTheTwentyFirst) {
    bringToFrontAfter(1950ms, target.processIdentifier);
    wait();
    desktop.queue.advance(10s);
    EXPECT_THAT(actions, ElementsAre(2500ms));
    EXPECT_EQ(desktop.journal.count<effect::AlertShown>(), 0U);
}

TEST_F(TargetActivationTest, AfterTheLastCheckItSaysThatThePictureIsOnTheClipboard) {
    bringToFrontAfter(2001ms, target.processIdentifier);
    wait();
    desktop.queue.advance(1999ms);
    EXPECT_EQ(desktop.journal.count<effect::AlertShown>(), 0U);
    desktop.queue.advance(10s);
    Alert const expected{"Trovel",
                         "Could not bring the target app to front. The screenshot is on your "
                         "clipboard — paste it manually.",
                         AlertStyle::informational,
                         {"OK"}};
    EXPECT_THAT(desktop.journal.all<effect::AlertShown>(),
                ElementsAre(effect::AlertShown{expected}));
    EXPECT_THAT(desktop.journal.timesOf<effect::AlertShown>(), ElementsAre(2000ms));
    EXPECT_THAT(actions, IsEmpty());
}

TEST_F(TargetActivationTest, OnlyWatchesAndNeverAsksAgain) {
    wait();
    desktop.queue.advance(1999ms);
    EXPECT_EQ(desktop.journal.count<effect::ScriptExecuted>(), 0U);
    EXPECT_EQ(desktop.journal.count<effect::ActivationAsked>(), 0U);
}

TEST_F(TargetActivationTest, TellsApplicationsApartByTheirProcess) {
    SimulatedProgram twin;
    twin.localizedName = "Claude";
    desktop.workspace.bringToFront(desktop.workspace.start(twin).processIdentifier);
    wait();
    desktop.queue.advance(10s);
    EXPECT_THAT(actions, IsEmpty());
}

TEST_F(TargetActivationTest, NothingInFrontIsNotTheTarget) {
    desktop.workspace.bringToFront(0);
    bringToFrontAfter(50ms, target.processIdentifier);
    wait();
    desktop.queue.advance(10s);
    EXPECT_THAT(actions, ElementsAre(600ms));
}

TEST_F(TargetActivationTest, OnceSeenInFrontItDoesNotMatterWhetherTheTargetStaysThere) {
    desktop.workspace.bringToFront(target.processIdentifier);
    wait();
    bringToFrontAfter(10ms, other);
    desktop.queue.advance(10s);
    EXPECT_THAT(actions, ElementsAre(500ms));
}

TEST_F(TargetActivationTest, WithTheOwnerGoneTheWaitEndsInSilence) {
    wait();
    desktop.queue.advance(150ms);
    owner.reset();
    desktop.workspace.bringToFront(target.processIdentifier);
    desktop.queue.advance(10s);
    EXPECT_THAT(actions, IsEmpty());
    EXPECT_EQ(desktop.journal.count<effect::AlertShown>(), 0U);
    EXPECT_EQ(desktop.queue.pending(), 0U);
}

} // namespace
} // namespace trovel
