#include "capture/region_selection_controller.h"

#include "capture/selection_overlay_view.h"
#include "platform/ui/window.h"
#include "tests/support/desktop_test.h"
#include "tests/support/lifetime.h"

#include <memory>
#include <optional>
#include <vector>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr Rect kFirst{0, 0, 1440, 900};
constexpr Rect kSecond{-1280, -300, 1280, 1024};

class RegionSelectionControllerTest : public DesktopTest {
protected:
    RegionSelectionControllerTest() {
        desktop.screens.attach({2, kSecond, 1});
        // As on X11: no application comes or goes in the journal.
        desktop.application.setSelfActivation(SelfActivation::changesNothing);
    }

    void begin() {
        controller->begin([this](std::optional<SelectionResult> const& result) {
            results.push_back(result);
            windowsAtCompletion = desktop.windows.visibleWindows().size();
        });
    }
    bool isUp() const { return !desktop.windows.visibleWindows().empty(); }
    Window& window(std::size_t index) const { return *controller->overlayWindows().at(index); }
    void cancelsOnce() {
        desktop.queue.drain();
        ASSERT_THAT(results, SizeIs(1));
        EXPECT_FALSE(results.front());
        EXPECT_FALSE(isUp());
    }

    std::shared_ptr<RegionSelectionController> controller =
        newShared<RegionSelectionController>(platform);
    std::vector<std::optional<SelectionResult>> results;
    std::optional<std::size_t> windowsAtCompletion;
};

TEST_F(RegionSelectionControllerTest, ComesUpInOrder) {
    begin();
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(effect::OrderedFront{1}), Effect(effect::OrderedFront{2}),
                            Effect(effect::MonitorAdded{}), Effect(effect::ActivationAsked{true}),
                            Effect(effect::OrderedFront{1}), Effect(effect::MadeKey{1}),
                            Effect(effect::CrosshairPushed{})));
    EXPECT_THAT(results, IsEmpty());
}

TEST_F(RegionSelectionControllerTest, CoversEachScreenWithAWindowAboveEverything) {
    begin();
    ASSERT_THAT(controller->overlayWindows(), SizeIs(2));
    for (std::size_t index = 0; index < 2; ++index) {
        auto const frame = index == 0 ? kFirst : kSecond;
        auto const& attributes = window(index).attributes();
        EXPECT_EQ(attributes.contentRect, frame);
        EXPECT_EQ(attributes.styleMask, 0U);
        EXPECT_EQ(attributes.level, 1000);
        EXPECT_FALSE(attributes.isOpaque);
        EXPECT_EQ(attributes.backgroundColor, Color::clear());
        EXPECT_FALSE(attributes.hasShadow);
        EXPECT_FALSE(attributes.ignoresMouseEvents);
        EXPECT_TRUE(attributes.acceptsMouseMovedEvents);
        EXPECT_EQ(attributes.collectionBehavior, 257U);
        EXPECT_TRUE(window(index).canBecomeKey());
        auto const* view =
            dynamic_cast<SelectionOverlayView const*>(window(index).contentView().get());
        ASSERT_NE(view, nullptr);
        EXPECT_EQ(view->frame(), (Rect{0, 0, frame.width, frame.height}));
    }
    EXPECT_TRUE(window(0).isKeyWindow());
    EXPECT_EQ(window(0).firstResponder(), window(0).contentView().get());
}

TEST_F(RegionSelectionControllerTest, ReportsADragInGlobalPointsWithItsScreen) {
    begin();
    desktop.user.drag({100, 150}, {400, 350});
    desktop.queue.drain();
    ASSERT_THAT(results, SizeIs(1));
    ASSERT_TRUE(results.front());
    EXPECT_EQ(results.front()->rect, (Rect{100, 150, 300, 200}));
    EXPECT_EQ(results.front()->screen, desktop.screens.screens().at(0));
}

TEST_F(RegionSelectionControllerTest, OnASecondScreenTheFirstPressStartsTheDrag) {
    begin();
    desktop.user.drag({-1270, -280}, {-1170, -230});
    desktop.queue.drain();
    ASSERT_THAT(results, SizeIs(1));
    ASSERT_TRUE(results.front());
    EXPECT_EQ(results.front()->rect, (Rect{-1270, -280, 100, 50}));
    EXPECT_EQ(results.front()->screen, desktop.screens.screens().at(1));
}

TEST_F(RegionSelectionControllerTest, ADragAcrossAScreensEdgeBelongsToTheScreenWhereItBegan) {
    begin();
    desktop.user.drag({-100, 100}, {100, 200});
    desktop.queue.drain();
    ASSERT_TRUE(results.front());
    EXPECT_EQ(results.front()->rect, (Rect{-100, 100, 200, 100}));
    EXPECT_EQ(results.front()->screen, desktop.screens.screens().at(1));
}

TEST_F(RegionSelectionControllerTest, GoesDownInTheNextTurnAndReportsLast) {
    begin();
    desktop.journal.clear();
    controller->finish(std::nullopt);
    EXPECT_THAT(effectsOf(desktop.journal), IsEmpty());
    EXPECT_THAT(results, IsEmpty());
    EXPECT_THAT(controller->overlayWindows(), IsEmpty());
    EXPECT_TRUE(isUp());
    cancelsOnce();
    EXPECT_EQ(windowsAtCompletion, 0U);
    auto const torn =
        only<effect::MonitorRemoved, effect::CursorPopped, effect::OrderedOut>(desktop.journal);
    EXPECT_THAT(torn,
                ElementsAre(at(0ms, effect::MonitorRemoved{}), at(0ms, effect::CursorPopped{}),
                            at(0ms, effect::OrderedOut{1}), at(0ms, effect::OrderedOut{2})));
    EXPECT_EQ(desktop.cursors.depth(), 0);
    EXPECT_EQ(desktop.monitors.count(), 0U);
}

TEST_F(RegionSelectionControllerTest, TheFirstOfSeveralFinishesCounts) {
    begin();
    SelectionResult const first{{1, 2, 30, 40}, desktop.screens.screens().front()};
    controller->finish(first);
    controller->finish(std::nullopt);
    desktop.queue.drain();
    controller->finish(std::nullopt);
    desktop.user.wait(40s);
    ASSERT_THAT(results, SizeIs(1));
    ASSERT_TRUE(results.front());
    EXPECT_EQ(results.front()->rect, first.rect);
    EXPECT_EQ(desktop.journal.count<effect::CursorPopped>(), 1U);
}

TEST_F(RegionSelectionControllerTest, EscapeIsSwallowedByTheMonitorAndCancels) {
    begin();
    EXPECT_TRUE(desktop.monitors.swallows({KeyEvent::Kind::keyDown, 53, 0}));
    cancelsOnce();
}

TEST_F(RegionSelectionControllerTest, EscapeCancelsOnceWhenTheMonitorSeesItFirst) {
    begin();
    desktop.user.pressKey(53);
    desktop.user.pressKey(53);
    cancelsOnce();
}

TEST_F(RegionSelectionControllerTest, EscapeThatReachesTheViewCancelsToo) {
    begin();
    window(1).contentView()->keyDown({KeyEvent::Kind::keyDown, 53, 0});
    cancelsOnce();
}

TEST_F(RegionSelectionControllerTest, AnyOtherKeyPassesTheMonitorAndDoesNothing) {
    begin();
    EXPECT_FALSE(desktop.monitors.swallows({KeyEvent::Kind::keyDown, 36, 0}));
    desktop.user.pressKey(36);
    desktop.user.pressKey(12, kFlagCommand);
    desktop.queue.drain();
    EXPECT_THAT(results, IsEmpty());
    EXPECT_TRUE(isUp());
}

TEST_F(RegionSelectionControllerTest, ARightClickOnAnyScreenCancels) {
    begin();
    desktop.user.rightClick({-500, 100});
    cancelsOnce();
}

TEST_F(RegionSelectionControllerTest, APlainClickCancels) {
    begin();
    desktop.user.click({500, 100});
    cancelsOnce();
}

TEST_F(RegionSelectionControllerTest, LeftAloneItCancelsAfterThirtySeconds) {
    begin();
    desktop.user.wait(29999ms);
    EXPECT_TRUE(isUp());
    EXPECT_THAT(results, IsEmpty());
    desktop.user.wait(1ms);
    cancelsOnce();
}

TEST_F(RegionSelectionControllerTest, TheTimeOutCancelsEvenInTheMiddleOfADrag) {
    begin();
    desktop.user.mouseDown({100, 100});
    desktop.user.movePointer({300, 300});
    desktop.user.wait(30s);
    cancelsOnce();
    desktop.user.mouseUp({300, 300});
    desktop.queue.drain();
    EXPECT_THAT(results, SizeIs(1));
}

TEST_F(RegionSelectionControllerTest, TheTimeOutOfASessionIsNoneOfTheNext) {
    begin();
    desktop.user.wait(20s);
    desktop.user.pressKey(53);
    desktop.queue.drain();
    controller = newShared<RegionSelectionController>(platform);
    begin();
    desktop.user.wait(29999ms);
    EXPECT_TRUE(isUp());
    EXPECT_THAT(results, SizeIs(1));
}

TEST_F(RegionSelectionControllerTest, ReleasedWhileUpItFallsSilent) {
    begin();
    auto const kept = controller->overlayWindows();
    controller.reset();
    kept.front()->contentView()->rightMouseDown({MouseEvent::Kind::rightDown, {1, 1}, 0});
    desktop.user.drag({100, 100}, {200, 200});
    desktop.user.wait(40s);
    EXPECT_THAT(results, IsEmpty());
    EXPECT_EQ(desktop.monitors.count(), 0U);
}

TEST_F(RegionSelectionControllerTest, ReleasedWithItsWindowsItLeavesTheScreensFree) {
    begin();
    controller.reset();
    EXPECT_FALSE(isUp());
    desktop.user.wait(40s);
    EXPECT_THAT(results, IsEmpty());
}

TEST_F(RegionSelectionControllerTest, ReleasedWhileFinishingItStillGoesDownAndReports) {
    begin();
    desktop.user.drag({100, 100}, {200, 200});
    controller.reset();
    desktop.queue.drain();
    ASSERT_THAT(results, SizeIs(1));
    EXPECT_TRUE(results.front());
    EXPECT_FALSE(isUp());
    EXPECT_EQ(desktop.cursors.depth(), 0);
    EXPECT_EQ(desktop.monitors.count(), 0U);
}

TEST_F(RegionSelectionControllerTest, WithoutAnyScreenItEndsAtOnceWithNothing) {
    desktop.screens.detachAll();
    begin();
    EXPECT_THAT(results, IsEmpty());
    cancelsOnce();
    EXPECT_EQ(desktop.queue.now(), 0ms);
    EXPECT_EQ(desktop.journal.count<effect::MadeKey>(), 0U);
    EXPECT_EQ(desktop.journal.count<effect::CrosshairPushed>(), 1U);
    EXPECT_EQ(desktop.cursors.depth(), 0);
    EXPECT_EQ(desktop.monitors.count(), 0U);
    desktop.user.wait(40s);
    EXPECT_THAT(results, SizeIs(1));
}

TEST_F(RegionSelectionControllerTest, AScreenUnpluggedWhileUpChangesNothing) {
    begin();
    desktop.screens.detach(2);
    desktop.user.drag({-1270, -280}, {-1170, -230});
    desktop.queue.drain();
    ASSERT_TRUE(results.at(0));
    EXPECT_EQ(results.front()->screen.screenNumber, 2U);
}

TEST_F(RegionSelectionControllerTest, ShowsTheDragOnItsScreenOnly) {
    begin();
    desktop.user.mouseDown({100, 100});
    desktop.queue.drain();
    EXPECT_THAT(desktop.windows.drawing(*window(0).contentView()), SizeIs(1));
    desktop.user.movePointer({300, 300});
    desktop.queue.drain();
    EXPECT_THAT(desktop.windows.drawing(*window(0).contentView()), SizeIs(5));
    EXPECT_THAT(desktop.windows.drawing(*window(1).contentView()), SizeIs(1));
    desktop.user.mouseDown({300, 300});
    desktop.queue.drain();
    EXPECT_THAT(desktop.windows.drawing(*window(0).contentView()), SizeIs(1));
}

} // namespace
} // namespace trovel
