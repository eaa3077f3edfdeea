#include "delivery/auto_paster.h"

#include "platform/simulated/simulated_desktop.h"
#include "tests/support/lifetime.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using effect::KeyPosted;
using effect::MousePosted;
using testing::ElementsAre;
using testing::IsEmpty;

KeyPosted const kPasteDown{9, KeyAction::down, 0x100000};
KeyPosted const kPasteUp{9, KeyAction::up, 0x100000};

class AutoPasterTest : public testing::Test {
protected:
    AutoPasterTest() {
        SimulatedProgram program;
        program.localizedName = "Claude";
        program.bundleIdentifier = "com.anthropic.claudefordesktop";
        auto& started = desktop.workspace.start(std::move(program));
        process = started.processIdentifier;
        desktop.workspace.openWindow(process, {100, 50}, {800, 600});
        desktop.workspace.bringToFront(process);
    }

    AIApp target(SendBehavior behavior) const {
        RunningApplication app;
        app.processIdentifier = process;
        return {"Claude", "com.anthropic.claudefordesktop", app, behavior};
    }
    void paste(SendBehavior behavior = SendBehavior::enter) { paster->paste(target(behavior)); }
    void setAutoSend(bool value) { desktop.preferences.store(kAutoSendEnabled, value); }
    SimulatedProgram& program() { return *desktop.workspace.program(process); }

    SimulatedDesktop desktop;
    std::int32_t process = 0;
    std::shared_ptr<AutoPaster> paster = newShared<AutoPaster>(desktop.platform());
};

TEST_F(AutoPasterTest, ClicksAtOnceInTheMiddleNearTheLowerEdge) {
    paste();
    EXPECT_THAT(desktop.journal.all<MousePosted>(),
                ElementsAre(MousePosted{MouseAction::leftDown, {500, 590}},
                            MousePosted{MouseAction::leftUp, {500, 590}}));
    EXPECT_THAT(desktop.journal.timesOf<MousePosted>(), ElementsAre(0ms, 0ms));
    EXPECT_THAT(desktop.journal.all<KeyPosted>(), IsEmpty());
}

TEST_F(AutoPasterTest, PastesThreeTenthsOfASecondAfterTheClickAndEnds) {
    paste();
    desktop.queue.advance(299ms);
    EXPECT_THAT(desktop.journal.all<KeyPosted>(), IsEmpty());
    desktop.queue.advance(10s);
    EXPECT_THAT(desktop.journal.all<KeyPosted>(), ElementsAre(kPasteDown, kPasteUp));
    EXPECT_THAT(desktop.journal.timesOf<KeyPosted>(), ElementsAre(300ms, 300ms));
    EXPECT_EQ(desktop.queue.pending(), 0U);
}

TEST_F(AutoPasterTest, CountsFromTheClickHoweverLongTheTargetTakesToSayWhereItsWindowIs) {
    program().answerTime = 200ms;
    paste();
    desktop.queue.advance(10s);
    // The window, its position and its size.
    EXPECT_THAT(desktop.journal.timesOf<MousePosted>(), ElementsAre(600ms, 600ms));
    EXPECT_THAT(desktop.journal.timesOf<KeyPosted>(), ElementsAre(900ms, 900ms));
}

TEST_F(AutoPasterTest, SubmitsEightTenthsLaterWithAPlainReturn) {
    setAutoSend(true);
    paste();
    desktop.queue.advance(10s);
    EXPECT_THAT(desktop.journal.all<KeyPosted>(),
                ElementsAre(kPasteDown, kPasteUp, KeyPosted{36, KeyAction::down, 0},
                            KeyPosted{36, KeyAction::up, 0}));
    EXPECT_THAT(desktop.journal.timesOf<KeyPosted>(), ElementsAre(300ms, 300ms, 1100ms, 1100ms));
}

TEST_F(AutoPasterTest, SubmitsWithCommandReturnWhereThatIsTheTargetsWay) {
    setAutoSend(true);
    paste(SendBehavior::cmdEnter);
    desktop.queue.advance(10s);
    EXPECT_THAT(desktop.journal.all<KeyPosted>(),
                ElementsAre(kPasteDown, kPasteUp, KeyPosted{36, KeyAction::down, 0x100000},
                            KeyPosted{36, KeyAction::up, 0x100000}));
}

TEST_F(AutoPasterTest, AutomaticSendingTurnedOffBeforeThePasteIsHeard) {
    setAutoSend(true);
    paste();
    desktop.queue.advance(299ms);
    setAutoSend(false);
    desktop.queue.advance(10s);
    EXPECT_THAT(desktop.journal.all<KeyPosted>(), ElementsAre(kPasteDown, kPasteUp));
}

TEST_F(AutoPasterTest, AutomaticSendingTurnedOffAfterThePasteComesTooLate) {
    setAutoSend(true);
    paste();
    desktop.queue.advance(300ms);
    setAutoSend(false);
    desktop.queue.advance(10s);
    EXPECT_EQ(desktop.journal.count<KeyPosted>(), 4U);
}

TEST_F(AutoPasterTest, AutomaticSendingTurnedOnBeforeThePasteIsHeard) {
    paste();
    desktop.queue.advance(299ms);
    setAutoSend(true);
    desktop.queue.advance(10s);
    EXPECT_EQ(desktop.journal.count<KeyPosted>(), 4U);
}

TEST_F(AutoPasterTest, WithoutAFocusedWindowItClicksIntoTheFirstOfTheList) {
    program().hidesFocusedWindow = true;
    desktop.workspace.openWindow(process, {0, 0}, {200, 100});
    paste();
    EXPECT_THAT(desktop.journal.all<MousePosted>(),
                ElementsAre(MousePosted{MouseAction::leftDown, {100, 90}},
                            MousePosted{MouseAction::leftUp, {100, 90}}));
}

TEST_F(AutoPasterTest, WithoutAnyWindowItPastesWithoutAClick) {
    program().windows.clear();
    paste();
    desktop.queue.advance(10s);
    EXPECT_THAT(desktop.journal.all<MousePosted>(), IsEmpty());
    EXPECT_THAT(desktop.journal.timesOf<KeyPosted>(), ElementsAre(300ms, 300ms));
}

TEST_F(AutoPasterTest, WithoutAWindowListItPastesWithoutAClick) {
    program().hidesFocusedWindow = true;
    program().hidesWindowList = true;
    paste();
    desktop.queue.advance(10s);
    EXPECT_THAT(desktop.journal.all<MousePosted>(), IsEmpty());
    EXPECT_THAT(desktop.journal.all<KeyPosted>(), ElementsAre(kPasteDown, kPasteUp));
}

TEST_F(AutoPasterTest, AWindowWithoutPositionOrSizeIsNotClicked) {
    for (auto const operation : {Operation::readPosition, Operation::readSize}) {
        desktop.faults.failOnce(operation);
        paste();
    }
    desktop.queue.advance(10s);
    EXPECT_THAT(desktop.journal.all<MousePosted>(), IsEmpty());
    EXPECT_EQ(desktop.journal.count<KeyPosted>(), 4U);
}

TEST_F(AutoPasterTest, OfTheTwoMouseEventsEachThatCouldBeMadeIsSent) {
    desktop.faults.failOnce(Operation::makeMouseEvent);
    paste();
    EXPECT_THAT(desktop.journal.all<MousePosted>(),
                ElementsAre(MousePosted{MouseAction::leftUp, {500, 590}}));
    desktop.faults.failAlways(Operation::makeMouseEvent);
    paste();
    EXPECT_EQ(desktop.journal.count<MousePosted>(), 1U);
}

TEST_F(AutoPasterTest, WithoutBothKeyEventsNoneIsSent) {
    setAutoSend(true);
    paste();
    desktop.faults.failOnce(Operation::makeKeyEvent);
    desktop.queue.advance(300ms);
    EXPECT_THAT(desktop.journal.all<KeyPosted>(), IsEmpty());
    // The step after it comes all the same.
    desktop.queue.advance(10s);
    EXPECT_THAT(desktop.journal.timesOf<KeyPosted>(), ElementsAre(1100ms, 1100ms));
}

TEST_F(AutoPasterTest, TwoPastesInQuickSuccessionAreTwoSequences) {
    setAutoSend(true);
    paste();
    desktop.queue.advance(200ms);
    paste();
    desktop.queue.advance(10s);
    EXPECT_THAT(desktop.journal.timesOf<KeyPosted>(),
                ElementsAre(300ms, 300ms, 500ms, 500ms, 1100ms, 1100ms, 1300ms, 1300ms));
}

TEST_F(AutoPasterTest, APasteThatHasBegunIsFinishedWhoeverLetsGo) {
    setAutoSend(true);
    paste();
    paster.reset();
    desktop.queue.advance(10s);
    EXPECT_EQ(desktop.journal.count<KeyPosted>(), 4U);
}

TEST_F(AutoPasterTest, ATargetThatEndsGetsNoClickAndTheKeysAreSentAllTheSame) {
    setAutoSend(true);
    desktop.workspace.quit(process);
    paste();
    desktop.queue.advance(10s);
    EXPECT_THAT(desktop.journal.all<MousePosted>(), IsEmpty());
    EXPECT_THAT(desktop.journal.timesOf<KeyPosted>(), ElementsAre(300ms, 300ms, 1100ms, 1100ms));
}

TEST_F(AutoPasterTest, NeitherActivatesNorWritesAnything) {
    setAutoSend(true);
    desktop.journal.clear();
    paste();
    desktop.queue.advance(10s);
    EXPECT_EQ(desktop.journal.count<effect::ActivationAsked>(), 0U);
    EXPECT_EQ(desktop.journal.count<effect::ScriptExecuted>(), 0U);
    EXPECT_EQ(desktop.journal.count<effect::PasteboardCleared>(), 0U);
    EXPECT_EQ(desktop.journal.count<effect::PreferenceWritten>(), 0U);
    EXPECT_EQ(desktop.journal.count<effect::AlertShown>(), 0U);
}

} // namespace
} // namespace trovel
