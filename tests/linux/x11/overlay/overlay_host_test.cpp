#include "platform/linux/x11/overlay/overlay_host.h"

#include "platform/carbon_modifiers.h"
#include "platform/ui/canvas.h"
#include "platform/ui/view.h"
#include "platform/ui/window.h"
#include "tests/linux/support/other_program.h"
#include "tests/linux/x11/overlay/frozen_desktop.h"

#include <xcb/xtest.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr xcb_keycode_t kEscapeKey = 9;
constexpr xcb_keycode_t kLetterA = 38;
constexpr xcb_keycode_t kControl = 37;
constexpr xcb_keycode_t kShift = 50;
constexpr xcb_keycode_t kTwo = 11;

std::string textOf(Point point) {
    auto const number = [](double value) {
        auto text = std::to_string(value);
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') text.pop_back();
        return text;
    };
    return number(point.x) + "," + number(point.y);
}

/// A canvas that dims itself, shows where it was pressed, and notes what it gets.
class NotingView final : public CanvasView {
public:
    using CanvasView::CanvasView;
    ~NotingView() override = default;

    [[nodiscard]] bool acceptsFirstResponder() const override { return true; }
    void mouseDown(MouseEvent const& event) override { note("down", event); }
    void mouseDragged(MouseEvent const& event) override { note("drag", event); }
    void mouseUp(MouseEvent const& event) override { note("up", event); }
    void rightMouseDown(MouseEvent const& event) override { note("right", event); }
    void keyDown(KeyEvent const& event) override {
        notes.push_back("key " + std::to_string(event.keyCode));
    }
    void draw(Canvas& canvas) const override {
        canvas.fillRect(bounds(), Color::white(0, 0.35), CompositingOperation::sourceOver);
        ++drawings;
    }

    std::vector<std::string> notes;
    mutable int drawings = 0;

private:
    void note(std::string const& what, MouseEvent const& event) {
        notes.push_back(what + " " + textOf(event.locationInWindow));
        setNeedsDisplay();
    }
};

class OverlayWindow final : public Window {
public:
    using Window::Window;
    ~OverlayWindow() override = default;
    [[nodiscard]] bool canBecomeKey() const override { return true; }
};

class OverlayHostTest : public testing::Test {
protected:
    OverlayHostTest() {
        EXPECT_TRUE(run({"xrandr", "--setmonitor", "*main", "800/100x600/100+480+0", "screen"}));
        EXPECT_TRUE(run({"xrandr", "--setmonitor", "side", "480/100x400/100+0+400", "none"}));
        moveTo(900, 300);
    }

    /// What a selection does at its start.
    void show() {
        desktop_.capturer.sessionWillBegin();
        for (auto const& screen : desktop_.screens.screens()) {
            auto const window = std::make_shared<OverlayWindow>(
                desktop_.windows,
                WindowAttributes{.contentRect = screen.frame, .level = kScreenSaverWindowLevel});
            views_.push_back(
                std::make_shared<NotingView>(Rect{0, 0, screen.frame.width, screen.frame.height}));
            window->setContentView(views_.back());
            window->orderFrontRegardless();
            windows_.push_back(window);
        }
        if (!windows_.empty()) windows_.front()->makeKeyAndOrderFront();
        desktop_.cursors.pushCrosshair();
        desktop_.settle();
    }
    void hide() {
        desktop_.cursors.pop();
        for (auto const& window : windows_) window->orderOut();
        desktop_.capturer.sessionDidEnd();
        desktop_.settle();
    }

    void user(std::uint8_t type, std::uint8_t detail, int x = 0, int y = 0) {
        xcb_test_fake_input(other_.connection().get(), type, detail, 0, other_.connection().root(),
                            static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
        other_.sync();
        desktop_.settle();
    }
    void moveTo(int x, int y) { user(XCB_MOTION_NOTIFY, 0, x, y); }
    void press(std::uint8_t button) { user(XCB_BUTTON_PRESS, button); }
    void release(std::uint8_t button) { user(XCB_BUTTON_RELEASE, button); }
    void tap(xcb_keycode_t key) {
        user(XCB_KEY_PRESS, key);
        user(XCB_KEY_RELEASE, key);
    }

    [[nodiscard]] std::vector<std::string>& notes(std::size_t screen) {
        return views_[screen]->notes;
    }

    /// Whether anybody could have the pointer and the keyboard now.
    [[nodiscard]] bool isInputFree() {
        auto& x = other_.connection();
        auto const pointer = x.reply<xcb_grab_pointer_reply>(
            xcb_grab_pointer(x.get(), 0, x.root(), 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                             XCB_NONE, XCB_NONE, XCB_CURRENT_TIME));
        auto const keyboard = x.reply<xcb_grab_keyboard_reply>(xcb_grab_keyboard(
            x.get(), 0, x.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        xcb_ungrab_pointer(x.get(), XCB_CURRENT_TIME);
        xcb_ungrab_keyboard(x.get(), XCB_CURRENT_TIME);
        other_.sync();
        return pointer->status == XCB_GRAB_STATUS_SUCCESS &&
               keyboard->status == XCB_GRAB_STATUS_SUCCESS;
    }

    [[nodiscard]] std::size_t windowCount() {
        auto& x = other_.connection();
        auto const tree = x.reply<xcb_query_tree_reply>(xcb_query_tree(x.get(), x.root()));
        return tree->children_len;
    }

    ScopedEnvironment scales_{"QT_SCREEN_SCALE_FACTORS", "main=2;side=1.25"};
    TestDisplay display_;
    QtFonts fonts_;
    OtherProgram other_;
    FrozenDesktop desktop_;
    std::vector<std::shared_ptr<NotingView>> views_;
    std::vector<std::shared_ptr<Window>> windows_;
};

TEST_F(OverlayHostTest, ADragIsDeliveredInPointsToTheWindowUnderThePress) {
    show();
    moveTo(480 + 100, 200);
    press(1);
    moveTo(480 + 300, 400);
    release(1);
    EXPECT_THAT(notes(0), ElementsAre("down 50,200", "drag 150,100", "up 150,100"));
    EXPECT_THAT(notes(1), IsEmpty());
    hide();
}

TEST_F(OverlayHostTest, ADragBelongsToItsWindowBeyondTheScreensEdge) {
    show();
    moveTo(100, 500);
    press(1);
    moveTo(480 + 20, 0);
    release(1);
    EXPECT_THAT(notes(1), ElementsAre("down 80,240", "drag 400,640", "up 400,640"));
    EXPECT_THAT(notes(0), IsEmpty());
    hide();
}

TEST_F(OverlayHostTest, TheLastPixelOfAScreenIsItsFarEdge) {
    show();
    moveTo(480, 0);
    press(1);
    moveTo(1279, 599);
    release(1);
    EXPECT_THAT(notes(0), ElementsAre("down 0,300", "drag 400,0", "up 400,0"));
    hide();
}

TEST_F(OverlayHostTest, MotionsThatArriveTogetherAreOneDragAndOneDrawing) {
    show();
    moveTo(600, 100);
    press(1);
    int const before = views_[0]->drawings;
    notes(0).clear();
    for (int x = 610; x <= 700; x += 10) {
        xcb_test_fake_input(other_.connection().get(), XCB_MOTION_NOTIFY, 0, 0,
                            other_.connection().root(), static_cast<std::int16_t>(x), 120, 0);
    }
    other_.sync();
    desktop_.settle();
    EXPECT_THAT(notes(0), ElementsAre("drag 110,240"));
    EXPECT_EQ(views_[0]->drawings, before + 1);
    release(1);
    hide();
}

TEST_F(OverlayHostTest, ThePointerThatMovesWithoutAButtonWakesNobody) {
    show();
    int events = 0;
    auto const counting =
        desktop_.x->addEventHandler([&](xcb_generic_event_t const&) { ++events; });
    moveTo(700, 200);
    moveTo(720, 220);
    EXPECT_EQ(events, 0);
    hide();
}

TEST_F(OverlayHostTest, ARightClickAndOtherButtons) {
    show();
    moveTo(580, 200);
    press(3);
    release(3);
    press(2);
    release(2);
    press(4);
    release(4);
    EXPECT_THAT(notes(0), ElementsAre("right 50,200"));
    hide();
}

TEST_F(OverlayHostTest, KeysGoToTheKeyWindowUnlessAMonitorSwallowsThem) {
    show();
    tap(kLetterA);
    tap(kEscapeKey);
    EXPECT_THAT(notes(0), ElementsAre("key 0", "key 53"));
    notes(0).clear();
    auto const monitor = desktop_.monitors.addLocalKeyDownMonitor([](KeyEvent const& event) {
        return event.keyCode == kKeyEscape ? MonitorVerdict::swallow : MonitorVerdict::passOn;
    });
    tap(kLetterA);
    tap(kEscapeKey);
    tap(kShift);
    EXPECT_THAT(notes(0), ElementsAre("key 0"));
    hide();
}

TEST_F(OverlayHostTest, APressMakesItsWindowKey) {
    show();
    EXPECT_TRUE(windows_[0]->isKeyWindow());
    moveTo(100, 500);
    press(1);
    EXPECT_FALSE(windows_[0]->isKeyWindow());
    EXPECT_TRUE(windows_[1]->isKeyWindow());
    release(1);
    notes(1).clear();
    tap(kLetterA);
    EXPECT_THAT(notes(1), ElementsAre("key 0"));
    hide();
    EXPECT_FALSE(windows_[1]->isKeyWindow());
}

TEST_F(OverlayHostTest, TheHotKeyReachesItsHandlerAndNobodyElse) {
    int presses = 0;
    desktop_.hotkeys.installEventHandler(
        [](void* count) -> std::int32_t {
            ++*static_cast<int*>(count);
            return kNoErr;
        },
        &presses);
    ASSERT_TRUE(desktop_.hotkeys.registerEventHotKey(19, kCmdKey + kShiftKey, {1, 1}));
    show();
    user(XCB_KEY_PRESS, kControl);
    user(XCB_KEY_PRESS, kShift);
    tap(kTwo);
    user(XCB_KEY_RELEASE, kShift);
    user(XCB_KEY_RELEASE, kControl);
    EXPECT_EQ(presses, 1);
    EXPECT_THAT(notes(0), IsEmpty());
    hide();
}

TEST_F(OverlayHostTest, TheInputIsFreeAtOnceAndTheScreenWhenThePictureIsRead) {
    auto const before = windowCount();
    show();
    EXPECT_EQ(windowCount(), before + 2);
    EXPECT_FALSE(isInputFree());
    desktop_.cursors.pop();
    for (auto const& window : windows_) window->orderOut();
    desktop_.settle();
    EXPECT_TRUE(isInputFree());
    EXPECT_NE(desktop_.overlays.snapshot(), nullptr) << "the capture still needs it";
    EXPECT_EQ(windowCount(), before + 2) << "nobody paints the desktop before that";
    desktop_.capturer.sessionDidEnd();
    desktop_.settle();
    EXPECT_EQ(desktop_.overlays.snapshot(), nullptr);
    EXPECT_EQ(windowCount(), before);
}

TEST_F(OverlayHostTest, AWindowThatOutlastsTheSessionGoesByItself) {
    auto const before = windowCount();
    show();
    desktop_.capturer.sessionDidEnd();
    desktop_.settle();
    EXPECT_EQ(windowCount(), before + 2);
    desktop_.cursors.pop();
    for (auto const& window : windows_) window->orderOut();
    desktop_.settle();
    EXPECT_EQ(windowCount(), before);
}

TEST_F(OverlayHostTest, WindowsMayEndWhileTheyAreShown) {
    show();
    ASSERT_TRUE(windows_.front()->isKeyWindow());
    windows_.clear();
    desktop_.settle();
    EXPECT_TRUE(isInputFree());
}

TEST_F(OverlayHostTest, ASessionWithoutWindowsLeavesNothingBehind) {
    desktop_.capturer.sessionWillBegin();
    desktop_.capturer.sessionDidEnd();
    desktop_.settle();
    EXPECT_TRUE(isInputFree());
    EXPECT_EQ(desktop_.overlays.snapshot(), nullptr);
}

TEST_F(OverlayHostTest, APointerThatSomebodyLetsGoIsTakenThen) {
    auto& x = other_.connection();
    static_cast<void>(x.reply<xcb_grab_pointer_reply>(
        xcb_grab_pointer(x.get(), 0, x.root(), 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                         XCB_NONE, XCB_NONE, XCB_CURRENT_TIME)));
    show();
    moveTo(580, 200);
    xcb_ungrab_pointer(x.get(), XCB_CURRENT_TIME);
    other_.sync();
    EXPECT_TRUE(desktop_.turnsUntil([&] {
        press(1);
        release(1);
        return !notes(0).empty();
    }));
    EXPECT_EQ(notes(0).front(), "down 50,200");
    hide();
}

TEST_F(OverlayHostTest, APointerThatSomebodyKeepsEndsInAnEscape) {
    auto& x = other_.connection();
    static_cast<void>(x.reply<xcb_grab_pointer_reply>(
        xcb_grab_pointer(x.get(), 0, x.root(), 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                         XCB_NONE, XCB_NONE, XCB_CURRENT_TIME)));
    show();
    EXPECT_TRUE(desktop_.turnsUntil([&] { return !notes(0).empty(); }));
    EXPECT_THAT(notes(0), ElementsAre("key 53"));
    hide();
}

TEST_F(OverlayHostTest, AScreenThatGoesAwayWhileItIsCoveredHarmsNothing) {
    show();
    moveTo(100, 500);
    press(1);
    ASSERT_TRUE(run({"xrandr", "--delmonitor", "side"}));
    desktop_.settle();
    moveTo(200, 600);
    release(1);
    EXPECT_THAT(notes(1), ElementsAre("down 80,240", "drag 160,160", "up 160,160"));
    hide();
}

TEST_F(OverlayHostTest, AWindowForAScreenThatIsGoneShowsNothing) {
    desktop_.capturer.sessionWillBegin();
    auto const before = windowCount();
    auto const window = std::make_shared<OverlayWindow>(
        desktop_.windows,
        WindowAttributes{.contentRect = {5000, 0, 100, 100}, .level = kScreenSaverWindowLevel});
    window->setContentView(std::make_shared<NotingView>(Rect{0, 0, 100, 100}));
    window->makeKeyAndOrderFront();
    desktop_.settle();
    EXPECT_EQ(windowCount(), before);
    window->orderOut();
    desktop_.capturer.sessionDidEnd();
}

TEST_F(OverlayHostTest, AServerThatGoesAwayIsReportedOnceAndHarmsNothing) {
    show();
    int losses = 0;
    desktop_.x->setLostHandler([&] { ++losses; });
    display_.kill();
    desktop_.turn();
    desktop_.turn();
    EXPECT_EQ(losses, 1);
    hide();
}

TEST_F(OverlayHostTest, DrawingOutsideOfAnEventHappensInALaterTurn) {
    show();
    int const before = views_[0]->drawings;
    views_[0]->setNeedsDisplay();
    views_[0]->setNeedsDisplay();
    EXPECT_EQ(views_[0]->drawings, before);
    desktop_.settle();
    EXPECT_EQ(views_[0]->drawings, before + 1);
    hide();
}

} // namespace
} // namespace trovel
