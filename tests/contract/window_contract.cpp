#include "platform/application.h"
#include "platform/ui/event_monitors.h"
#include "platform/ui/view.h"
#include "platform/ui/window.h"
#include "tests/contract/contract_world.h"

#include <algorithm>

namespace trovel {
namespace {

using namespace std::chrono_literals;

/// A view that takes every event and remembers it.
class ProbeView final : public View {
public:
    using View::View;
    ~ProbeView() override = default;

    [[nodiscard]] bool acceptsFirstResponder() const override { return true; }
    [[nodiscard]] bool acceptsFirstMouse() const override { return true; }
    void mouseDown(MouseEvent const& event) override { mouse.push_back(event); }
    void mouseDragged(MouseEvent const& event) override { mouse.push_back(event); }
    void mouseUp(MouseEvent const& event) override { mouse.push_back(event); }
    void rightMouseDown(MouseEvent const& event) override { mouse.push_back(event); }
    void keyDown(KeyEvent const& event) override { keys.push_back(event.keyCode); }

    [[nodiscard]] bool saw(MouseEvent::Kind kind) const {
        return std::ranges::find(mouse, kind, &MouseEvent::kind) != mouse.end();
    }

    std::vector<MouseEvent> mouse;
    std::vector<KeyCode> keys;
};

/// A borderless window that takes the keyboard all the same.
class ProbeWindow final : public Window {
public:
    using Window::Window;
    ~ProbeWindow() override = default;
    [[nodiscard]] bool canBecomeKey() const override { return true; }
};

class WindowContract : public ContractTest {
protected:
    std::shared_ptr<ProbeView> open(Rect frame) {
        WindowAttributes attributes;
        attributes.contentRect = frame;
        auto window = std::make_shared<ProbeWindow>(platform.windows, attributes);
        auto view = std::make_shared<ProbeView>(Rect{0, 0, frame.width, frame.height});
        window->setContentView(view);
        window->orderFrontRegardless();
        world->place(*window);
        windows.push_back(window);
        return view;
    }
    void makeKey(std::size_t index) {
        platform.application.activateIgnoringOtherApps();
        windows[index]->makeKeyAndOrderFront();
        ASSERT_TRUE(world->waitUntil([&] { return windows[index]->isKeyWindow(); }));
    }
    void press(KeyCode keyCode) {
        world->keyDown(keyCode, 0);
        world->keyUp(keyCode, 0);
    }
    /// The event at that place, give or take the pixel that a rounding may cost.
    static void expectAt(MouseEvent const& event, MouseEvent::Kind kind, Point place) {
        EXPECT_EQ(event.kind, kind);
        EXPECT_NEAR(event.locationInWindow.x, place.x, 1);
        EXPECT_NEAR(event.locationInWindow.y, place.y, 1);
    }

    std::vector<std::shared_ptr<ProbeWindow>> windows;
};

TEST_F(WindowContract, AFirstPressReachesTheWindowUnderIt) {
    auto const view = open({100, 200, 300, 200});
    makeKey(0);
    world->movePointer({150, 250});
    world->leftDown();
    world->leftUp();
    ASSERT_TRUE(world->waitUntil([&] { return view->saw(MouseEvent::Kind::leftUp); }));
    expectAt(view->mouse.front(), MouseEvent::Kind::leftDown, {50, 50});
    expectAt(view->mouse.back(), MouseEvent::Kind::leftUp, {50, 50});
}

TEST_F(WindowContract, ADragIsFollowedBeyondTheWindow) {
    auto const view = open({100, 200, 300, 200});
    makeKey(0);
    world->movePointer({150, 250});
    world->leftDown();
    world->movePointer({500, 450});
    world->leftUp();
    ASSERT_TRUE(world->waitUntil([&] { return view->saw(MouseEvent::Kind::leftUp); }));
    EXPECT_TRUE(view->saw(MouseEvent::Kind::leftDragged));
    expectAt(view->mouse.back(), MouseEvent::Kind::leftUp, {400, 250});
}

TEST_F(WindowContract, ARightClickReachesTheWindowUnderIt) {
    auto const view = open({100, 200, 300, 200});
    makeKey(0);
    world->movePointer({399, 201});
    world->rightClick();
    ASSERT_TRUE(world->waitUntil([&] { return !view->mouse.empty(); }));
    expectAt(view->mouse.front(), MouseEvent::Kind::rightDown, {299, 1});
}

TEST_F(WindowContract, APressOnAWindowThatIsNotKeyReachesAViewThatWantsIt) {
    open({0, 0, 200, 200});
    auto const other = open({300, 0, 200, 200});
    makeKey(0);
    world->movePointer({350, 50});
    world->leftDown();
    world->leftUp();
    ASSERT_TRUE(world->waitUntil([&] { return other->saw(MouseEvent::Kind::leftUp); }));
    EXPECT_EQ(other->mouse.front().kind, MouseEvent::Kind::leftDown);
}

TEST_F(WindowContract, KeysGoToTheKeyWindowOnly) {
    auto const first = open({0, 0, 200, 200});
    auto const second = open({300, 0, 200, 200});
    makeKey(0);
    press(kKeyReturn);
    ASSERT_TRUE(world->waitUntil([&] { return !first->keys.empty(); }));
    EXPECT_EQ(first->keys.front(), kKeyReturn);
    EXPECT_TRUE(second->keys.empty());
}

TEST_F(WindowContract, MonitorsSeeAKeyFirstAndMaySwallowIt) {
    auto const view = open({0, 0, 200, 200});
    makeKey(0);
    std::vector<KeyCode> monitored;
    auto monitor = platform.monitors.addLocalKeyDownMonitor([&](KeyEvent const& event) {
        monitored.push_back(event.keyCode);
        EXPECT_TRUE(view->keys.empty());
        return event.keyCode == kKeyEscape ? MonitorVerdict::swallow : MonitorVerdict::passOn;
    });
    press(kKeyEscape);
    press(kKeyReturn);
    ASSERT_TRUE(world->waitUntil([&] { return !view->keys.empty(); }));
    EXPECT_THAT(monitored, testing::ElementsAre(kKeyEscape, kKeyReturn));
    EXPECT_THAT(view->keys, testing::ElementsAre(kKeyReturn));
    monitor.reset();
    press(kKeyEscape);
    ASSERT_TRUE(world->waitUntil([&] { return view->keys.size() == 2; }));
    EXPECT_EQ(monitored.size(), 2U);
}

TEST_F(WindowContract, AWindowThatWasOrderedOutGetsNothingMore) {
    auto const program = world->startProgram("below", {0, 0}, {700, 500});
    auto const view = open({0, 0, 800, 600});
    makeKey(0);
    windows.front()->orderOut();
    world->bringToFront(program);
    world->movePointer({100, 500});
    world->leftDown();
    world->leftUp();
    press(kKeyReturn);
    EXPECT_TRUE(world->waitUntil([&] {
        auto const report = world->report(program);
        return !report.clicks.empty() && !report.keys.empty();
    }));
    EXPECT_TRUE(view->mouse.empty());
    EXPECT_TRUE(view->keys.empty());
}

TEST_F(WindowContract, AWindowMayBeOrderedOutAndDroppedByItsOwnEvent) {
    auto const view = open({0, 0, 200, 200});
    makeKey(0);
    auto const monitor = platform.monitors.addLocalKeyDownMonitor([&](KeyEvent const& event) {
        if (event.keyCode != kKeyEscape) return MonitorVerdict::passOn;
        windows.front()->orderOut();
        windows.clear();
        return MonitorVerdict::swallow;
    });
    press(kKeyEscape);
    ASSERT_TRUE(world->waitUntil([&] { return windows.empty(); }));
    press(kKeyReturn);
    world->wait(50ms);
    EXPECT_TRUE(view->keys.empty());
}

} // namespace
} // namespace trovel
