#include "platform/ui/window.h"

#include "platform/ui/view.h"
#include "tests/support/desktop_test.h"
#include "tests/support/lifetime.h"
#include "tests/support/probe_view.h"

namespace trovel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = MouseEvent::Kind;

class WindowTest : public DesktopTest {
protected:
    WindowTest() {
        window = newShared<Window>(
            platform.windows,
            WindowAttributes{.contentRect = {100, 100, 200, 200}, .styleMask = kStyleTitled});
        root = newShared<ProbeView>("root", Rect{0, 0, 200, 200}, log);
        left = newShared<ProbeView>("left", Rect{0, 0, 100, 200}, log);
        right = newShared<ProbeView>("right", Rect{100, 0, 100, 200}, log);
        root->addSubview(left);
        root->addSubview(right);
        window->setContentView(root);
    }
    ~WindowTest() override {
        window.reset();
        root.reset();
        left.reset();
        right.reset();
    }

    void send(Kind kind, Point point) { window->receive(MouseEvent{kind, point, 0}); }
    void sendKey(KeyCode keyCode) {
        window->receive(KeyEvent{KeyEvent::Kind::keyDown, keyCode, 0});
    }

    ProbeView::Log log;
    std::shared_ptr<Window> window;
    std::shared_ptr<ProbeView> root;
    std::shared_ptr<ProbeView> left;
    std::shared_ptr<ProbeView> right;
};

TEST(WindowAttributesTest, DescribeAPlainOpaqueWindowAtFirst) {
    WindowAttributes const expected{.contentRect = {0, 0, 0, 0},
                                    .styleMask = 0,
                                    .level = 0,
                                    .isOpaque = true,
                                    .backgroundColor =
                                        Color::system(Color::Name::controlBackground),
                                    .hasShadow = true,
                                    .ignoresMouseEvents = false,
                                    .acceptsMouseMovedEvents = false,
                                    .collectionBehavior = 0,
                                    .title = "",
                                    .titlebarAppearsTransparent = false,
                                    .isTitleHidden = false,
                                    .isMovableByBackground = false,
                                    .takesEveryKey = false};
    EXPECT_EQ(WindowAttributes{}, expected);
}

TEST_F(WindowTest, APressGoesToTheViewUnderItInTheWindowsCoordinates) {
    send(Kind::leftDown, {150, 20});
    EXPECT_THAT(log, ElementsAre("right down"));
    EXPECT_EQ(right->location, (Point{150, 20}));
}

TEST_F(WindowTest, DragsAndTheReleaseFollowThePressWhereverTheyHappen) {
    send(Kind::leftDown, {50, 50});
    send(Kind::leftDragged, {150, 50});
    send(Kind::leftDragged, {-500, 900});
    send(Kind::leftUp, {150, 50});
    EXPECT_THAT(log, ElementsAre("left down", "left dragged", "left dragged", "left up"));
}

TEST_F(WindowTest, ADragWithoutAPressGoesNowhere) {
    send(Kind::leftDragged, {50, 50});
    send(Kind::leftUp, {50, 50});
    send(Kind::leftDown, {500, 500});
    send(Kind::leftDragged, {50, 50});
    send(Kind::leftUp, {50, 50});
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(WindowTest, TheReleaseEndsThePress) {
    send(Kind::leftDown, {50, 50});
    send(Kind::leftUp, {50, 50});
    log.clear();
    send(Kind::leftDragged, {50, 50});
    send(Kind::leftUp, {50, 50});
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(WindowTest, ARightClickGoesToTheViewUnderItAndDisturbsNoPress) {
    send(Kind::leftDown, {50, 50});
    send(Kind::rightDown, {150, 50});
    send(Kind::leftUp, {150, 50});
    EXPECT_THAT(log, ElementsAre("left down", "right right", "left up"));
}

TEST_F(WindowTest, AnUnhandledEventGoesUpTheResponderChain) {
    left->passesOn = true;
    send(Kind::leftDown, {50, 50});
    send(Kind::leftDragged, {50, 50});
    send(Kind::leftUp, {50, 50});
    send(Kind::rightDown, {50, 50});
    EXPECT_THAT(log, ElementsAre("left down", "root down", "left dragged", "root dragged",
                                 "left up", "root up", "left right", "root right"));
}

TEST_F(WindowTest, AnEventThatNobodyHandlesEndsAtTheWindow) {
    left->passesOn = true;
    root->passesOn = true;
    send(Kind::leftDown, {50, 50});
    sendKey(1);
    EXPECT_THAT(log, ElementsAre("left down", "root down", "left key 1", "root key 1"));
}

TEST_F(WindowTest, KeysGoToTheFirstResponder) {
    EXPECT_TRUE(window->makeFirstResponder(right.get()));
    sendKey(7);
    window->receive(KeyEvent{KeyEvent::Kind::flagsChanged, 0, kFlagShift});
    EXPECT_THAT(log, ElementsAre("right key 7", "right flags"));
}

TEST_F(WindowTest, APressMakesAViewThatTakesKeysFirstResponder) {
    View const* duringThePress = nullptr;
    left->onEvent = [&] { duringThePress = window->firstResponder(); };
    send(Kind::leftDown, {50, 50});
    EXPECT_EQ(duringThePress, left.get());
    EXPECT_EQ(window->firstResponder(), left.get());
    right->takesKeys = false;
    send(Kind::leftDown, {150, 50});
    EXPECT_EQ(window->firstResponder(), left.get());
}

TEST_F(WindowTest, AViewThatTakesNoKeysDoesNotBecomeFirstResponder) {
    left->takesKeys = false;
    EXPECT_FALSE(window->makeFirstResponder(left.get()));
    EXPECT_FALSE(window->makeFirstResponder(nullptr));
    EXPECT_EQ(window->firstResponder(), nullptr);
    sendKey(7);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(WindowTest, AViewThatLeftTheWindowIsNotFirstResponderAnyMore) {
    EXPECT_TRUE(window->makeFirstResponder(right.get()));
    right->removeFromSuperview();
    EXPECT_EQ(window->firstResponder(), nullptr);
    sendKey(7);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(WindowTest, AWindowThatBecomesKeyStartsWithItsContent) {
    window->makeKeyAndOrderFront();
    EXPECT_EQ(window->firstResponder(), root.get());
    window->makeFirstResponder(left.get());
    window->makeKeyAndOrderFront();
    EXPECT_EQ(window->firstResponder(), left.get());
}

TEST_F(WindowTest, OnlyATitleBarMakesAWindowFitForTheKeyboard) {
    EXPECT_TRUE(window->canBecomeKey());
    auto attributes = window->attributes();
    attributes.styleMask = kStyleBorderless;
    window->setAttributes(attributes);
    EXPECT_FALSE(window->canBecomeKey());
}

TEST_F(WindowTest, IsVisibleFromItsFirstOrderingToItsOrderingOut) {
    EXPECT_FALSE(window->isVisible());
    window->orderOut();
    window->orderFrontRegardless();
    EXPECT_TRUE(window->isVisible());
    window->orderOut();
    EXPECT_FALSE(window->isVisible());
}

TEST_F(WindowTest, AViewMayRemoveItselfInItsOwnPress) {
    right->onEvent = [this] {
        auto* const self = right.get();
        right.reset();
        self->removeFromSuperview();
        log.emplace_back("still here");
    };
    send(Kind::leftDown, {150, 50});
    EXPECT_THAT(log, ElementsAre("right down", "still here", "right gone"));
    send(Kind::leftDragged, {150, 50});
    send(Kind::leftUp, {150, 50});
    EXPECT_EQ(log.size(), 3U);
}

TEST_F(WindowTest, AWindowMayBeDestroyedByItsOwnEvents) {
    left->onEvent = [this] {
        window->orderOut();
        window.reset();
        root.reset();
        right.reset();
        left.reset();
        log.emplace_back("handler ends");
    };
    window->orderFrontRegardless();
    send(Kind::leftDown, {50, 50});
    ASSERT_GE(log.size(), 2U);
    EXPECT_EQ(log[0], "left down");
    EXPECT_EQ(log[1], "handler ends");
    EXPECT_EQ(log.size(), 5U); // and all three views are gone
}

TEST_F(WindowTest, AWindowMayBeDestroyedByAKey) {
    EXPECT_TRUE(window->makeFirstResponder(left.get()));
    left->onEvent = [this] {
        window.reset();
        log.emplace_back("handler ends");
    };
    sendKey(kKeyEscape);
    EXPECT_THAT(log, ElementsAre("left key 53", "handler ends"));
    EXPECT_EQ(left->window(), nullptr);
}

} // namespace
} // namespace trovel
