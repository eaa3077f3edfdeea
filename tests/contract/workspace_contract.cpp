#include "platform/accessibility.h"
#include "platform/activation_script.h"
#include "platform/event_synthesizer.h"
#include "platform/permissions.h"
#include "platform/script_runner.h"
#include "platform/workspace.h"
#include "tests/contract/contract_world.h"

#include <algorithm>

namespace trovel {
namespace {

using namespace std::chrono_literals;

class WorkspaceContract : public ContractTest {
protected:
    [[nodiscard]] bool isRunning(RunningApplication const& program) const {
        auto const running = platform.workspace.runningApplications();
        return std::ranges::find(running, program) != running.end();
    }
    [[nodiscard]] bool isFrontmost(RunningApplication const& program) const {
        auto const frontmost = platform.workspace.frontmostApplication();
        return frontmost && frontmost->processIdentifier == program.processIdentifier;
    }
    void pressPosted(KeyCode keyCode, EventFlags flags) {
        for (auto const action : {KeyAction::down, KeyAction::up}) {
            auto const event = platform.events.keyboardEvent(keyCode, action);
            ASSERT_TRUE(event);
            event->setFlags(flags);
            event->post();
        }
    }
};

TEST_F(WorkspaceContract, ListsProgramsWhileTheyRun) {
    auto const program = world->startProgram("editor", {50, 50}, {400, 300});
    EXPECT_TRUE(isRunning(program));
    EXPECT_EQ(program.activationPolicy, ActivationPolicy::regular);
    EXPECT_TRUE(program.bundleIdentifier);
    world->quitProgram(program);
    EXPECT_TRUE(world->waitUntil([&] { return !isRunning(program); }));
    EXPECT_FALSE(isFrontmost(program));
}

TEST_F(WorkspaceContract, TellsTwoProgramsOfOneNameApart) {
    auto const first = world->startProgram("twin", {50, 50}, {200, 200});
    auto const second = world->startProgram("twin", {300, 50}, {200, 200});
    EXPECT_NE(first.processIdentifier, second.processIdentifier);
    world->bringToFront(first);
    EXPECT_TRUE(isFrontmost(first));
    world->bringToFront(second);
    EXPECT_TRUE(isFrontmost(second));
}

TEST_F(WorkspaceContract, AnActivationScriptBringsAProgramToTheFront) {
    auto const first = world->startProgram("first", {50, 50}, {300, 300});
    auto const second = world->startProgram("second", {100, 100}, {300, 300});
    world->bringToFront(second);
    ASSERT_TRUE(first.localizedName);
    platform.scripts.execute(activationScript(*first.localizedName));
    EXPECT_TRUE(world->waitUntil([&] { return isFrontmost(first); }));
}

TEST_F(WorkspaceContract, AnyOtherScriptDoesNothing) {
    auto const first = world->startProgram("first", {50, 50}, {300, 300});
    auto const second = world->startProgram("second", {100, 100}, {300, 300});
    world->bringToFront(second);
    platform.scripts.execute("tell application \"first\" to quit");
    platform.scripts.execute("tell application \"first\" to activate ");
    platform.scripts.execute(activationScript("nobody"));
    platform.scripts.execute("");
    world->wait(300ms);
    EXPECT_TRUE(isRunning(first));
    EXPECT_TRUE(isFrontmost(second));
}

TEST_F(WorkspaceContract, TellsWhereTheFocusedWindowIsAndAClickLandsThere) {
    auto const program = world->startProgram("editor", {120, 80}, {400, 300});
    world->bringToFront(program);
    auto const window = platform.accessibility.focusedWindow(program.processIdentifier);
    ASSERT_TRUE(window);
    auto const position = window->position();
    auto const size = window->size();
    ASSERT_TRUE(position && size);
    EXPECT_EQ(*position, (Point{120, 80}));
    EXPECT_EQ(*size, (Size{400, 300}));
    auto const windows = platform.accessibility.windows(program.processIdentifier);
    ASSERT_TRUE(windows);
    EXPECT_EQ(windows->size(), 1U);

    Point const place{position->x + size->width * 0.5, position->y + size->height * 0.9};
    for (auto const action : {MouseAction::leftDown, MouseAction::leftUp}) {
        auto const event = platform.events.mouseEvent(action, place);
        ASSERT_TRUE(event);
        event->post();
    }
    ASSERT_TRUE(world->waitUntil([&] { return !world->report(program).clicks.empty(); }));
    auto const click = world->report(program).clicks.front();
    EXPECT_NEAR(click.x, place.x, 1);
    EXPECT_NEAR(click.y, place.y, 1);
}

TEST_F(WorkspaceContract, AWindowThatIsGoneHasNeitherPositionNorSize) {
    auto const program = world->startProgram("editor", {120, 80}, {400, 300});
    world->bringToFront(program);
    auto const window = platform.accessibility.focusedWindow(program.processIdentifier);
    ASSERT_TRUE(window);
    world->quitProgram(program);
    EXPECT_EQ(window->position(), std::nullopt);
    EXPECT_EQ(window->size(), std::nullopt);
    EXPECT_FALSE(platform.accessibility.focusedWindow(program.processIdentifier));
}

TEST_F(WorkspaceContract, APostedPasteAndReturnReachTheProgramInFront) {
    auto const behind = world->startProgram("behind", {50, 50}, {300, 300});
    auto const front = world->startProgram("front", {100, 100}, {300, 300});
    world->bringToFront(front);
    pressPosted(kKeyV, kFlagCommand);
    pressPosted(kKeyReturn, 0);
    ASSERT_TRUE(world->waitUntil([&] {
        auto const report = world->report(front);
        return report.pastes > 0 && !report.keys.empty();
    }));
    EXPECT_EQ(world->report(front).pastes, 1);
    EXPECT_THAT(world->report(front).keys, testing::ElementsAre(kKeyReturn));
    EXPECT_EQ(world->report(behind).pastes, 0);
}

TEST_F(WorkspaceContract, AnEventThatIsNeverPostedDoesNothing) {
    auto const program = world->startProgram("editor", {0, 0}, {400, 300});
    world->bringToFront(program);
    EXPECT_TRUE(platform.events.keyboardEvent(kKeyReturn, KeyAction::down));
    EXPECT_TRUE(platform.events.mouseEvent(MouseAction::leftDown, {100, 100}));
    world->wait(100ms);
    EXPECT_TRUE(world->report(program).keys.empty());
    EXPECT_TRUE(world->report(program).clicks.empty());
}

TEST_F(WorkspaceContract, BothGrantsAreGiven) {
    EXPECT_TRUE(platform.permissions.isAccessibilityTrusted());
    EXPECT_TRUE(platform.permissions.preflightScreenCapture());
}

} // namespace
} // namespace trovel
