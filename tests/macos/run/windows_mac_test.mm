#include "platform/alerts.h"
#include "platform/application.h"
#include "platform/cursors.h"
#include "platform/ui/button.h"
#include "tests/macos/run/mac_test.h"

#include <algorithm>

namespace trovel {
namespace {

using namespace std::chrono_literals;

/// A borderless window that takes the keyboard all the same.
class Overlay final : public Window {
public:
    using Window::Window;
    ~Overlay() override = default;
    [[nodiscard]] bool canBecomeKey() const override { return true; }
};

/// Counts its presses, also the one that makes its window key.
class PressedView final : public CanvasView {
public:
    using CanvasView::CanvasView;
    ~PressedView() override = default;
    [[nodiscard]] bool acceptsFirstMouse() const override { return true; }
    void mouseDown(MouseEvent const&) override { ++presses; }
    void draw(Canvas&) const override { ++drawings; }

    int presses = 0;
    mutable int drawings = 0;
};

class WindowsMac : public MacTest {
protected:
    void SetUp() override {
        fakes::Program program;
        program.name = "Editor";
        program.window = CGRectMake(0, 0, 1440, 900);
        editor = mac().start(std::move(program)).processIdentifier;
    }

    std::shared_ptr<Window> openOverlay() {
        WindowAttributes attributes;
        attributes.contentRect = {0, 0, 1440, 900};
        attributes.level = kScreenSaverWindowLevel;
        attributes.isOpaque = false;
        attributes.backgroundColor = Color::clear();
        attributes.hasShadow = false;
        attributes.collectionBehavior =
            kCollectionCanJoinAllSpaces | kCollectionFullScreenAuxiliary;
        auto window = std::make_shared<Overlay>(platform.windows, attributes);
        window->setContentView(pressed);
        window->orderFrontRegardless();
        platform.application.activateIgnoringOtherApps();
        window->makeKeyAndOrderFront();
        session.settle();
        return window;
    }
    std::shared_ptr<Window> openSetup() {
        return open(std::make_shared<View>(Rect{0, 0, 300, 200}), kTitledWindow);
    }
    static bool isInFront(Window const& window) {
        return mac().shown.front().window == nativeWindow(window);
    }

    pid_t editor = 0;
    std::shared_ptr<PressedView> pressed = std::make_shared<PressedView>(Rect{0, 0, 1440, 900});
};

TEST_F(WindowsMac, ASetupWindowComesInFrontOfOtherProgramsWhateverTheSystemGrants) {
    for (auto const activation :
         {fakes::Activation::atOnce, fakes::Activation::late, fakes::Activation::never}) {
        mac().activation = activation;
        mac().bringToFront(editor);
        platform.application.activate();
        auto const window = openSetup();
        EXPECT_TRUE(isInFront(*window));
        session.wait(1s);
        EXPECT_EQ(window->isKeyWindow(), activation != fakes::Activation::never);
    }
}

TEST_F(WindowsMac, ARequestThatWasNotGrantedIsMadeOnceMoreForAWindow) {
    mac().activation = fakes::Activation::never;
    platform.application.activate();
    session.wait(1s);
    EXPECT_EQ(mac().count("activate ignoring others"), 0); // there is none yet
    auto const window = openSetup();
    platform.application.activate();
    session.wait(1s);
    EXPECT_EQ(mac().count("activate ignoring others"), 1);
}

TEST_F(WindowsMac, WithoutActivationTheFirstClickMakesTheWindowKey) {
    mac().activation = fakes::Activation::never;
    auto const content = std::make_shared<View>(Rect{0, 0, 300, 200});
    int presses = 0;
    auto const button =
        std::make_shared<Button>(Rect{0, 0, 100, 40}, "Go", Button::Look{}, [&] { ++presses; });
    content->addSubview(button);
    auto const window = open(content, kTitledWindow);
    EXPECT_FALSE(window->isKeyWindow());
    click(*button);
    EXPECT_TRUE(window->isKeyWindow());
    click(*button);
    EXPECT_EQ(presses, 1);
}

TEST_F(WindowsMac, AnAlertComesInFrontOfOtherProgramsWithoutActivation) {
    mac().activation = fakes::Activation::never;
    mac().runLoop.later(100ms, [&] {
        EXPECT_TRUE(mac().shown.front().window != nil);
        mac().closeAlert();
    });
    platform.alerts.runModal({"Trovel", "Text", AlertStyle::warning, {"OK"}});
    EXPECT_EQ(mac().count("order front regardless"), 1);
}

TEST_F(WindowsMac, AnOpenAlertDoesNotKeepTheProgramFromEnding) {
    [fakes::application() launch];
    mac().runLoop.later(100ms, [&] {
        platform.application.terminate();
        EXPECT_EQ(mac().count("terminate"), 1);
        mac().closeAlert();
    });
    platform.alerts.runModal({"Trovel", "Text", AlertStyle::informational, {"OK"}});
}

TEST_F(WindowsMac, OverAnAlertAnOverlayGetsTheMouseAndASetupWindowDoesNot) {
    auto const setup = openSetup();
    int presses = 0;
    setup->contentView()->setClickAction([&] { ++presses; });
    std::shared_ptr<Window> overlay;
    mac().runLoop.later(10ms, [&] {
        // The first one might only make the window key.
        for (int round = 0; round < 2; ++round)
            click(*setup->contentView());
        overlay = openOverlay();
        click(*overlay->contentView());
    });
    mac().runLoop.later(20ms, [&] { mac().closeAlert(); });
    platform.alerts.runModal({"Trovel", "Text", AlertStyle::warning, {"OK"}});
    EXPECT_EQ(pressed->presses, 1);
    EXPECT_EQ(presses, 0);
}

TEST_F(WindowsMac, AnOverlayIsAboveEverythingAndTakesTheMouseWhereItIsTransparent) {
    auto const overlay = openOverlay();
    NSWindow* const native = nativeWindow(*overlay);
    EXPECT_EQ(native.level, 1000);
    EXPECT_FALSE(native.opaque);
    EXPECT_FALSE(native.hasShadow);
    EXPECT_EQ([native.backgroundColor look], "0,0,0 0");
    EXPECT_EQ(native.collectionBehavior, 257U);
    EXPECT_EQ(native.animationBehavior, NSWindowAnimationBehaviorNone);
    EXPECT_FALSE(native->hasCursorRects_);
    EXPECT_TRUE(native.keyWindow);
    click(*overlay->contentView());
    EXPECT_EQ(pressed->presses, 1);
    EXPECT_TRUE(mac().find(editor)->clicks.empty());
}

TEST_F(WindowsMac, TheCrosshairIsSetAgainWhenItCanBeSeen) {
    mac().activation = fakes::Activation::late;
    auto const overlay = openOverlay();
    platform.cursors.pushCrosshair();
    EXPECT_EQ(mac().count("set cursor"), 0);
    session.wait(1s);
    EXPECT_GE(mac().count("set cursor"), 1); // the application has become active
    auto const before = mac().count("set cursor");
    mac().movePointer(NSMakePoint(500, 500));
    session.settle();
    EXPECT_GT(mac().count("set cursor"), before);
    platform.cursors.pop();
    EXPECT_TRUE(mac().cursors.empty());
    EXPECT_EQ(mac().count("push cursor"), 1);
}

TEST_F(WindowsMac, TheCloseButtonAsksTheTreeWhichCloses) {
    auto const window = openSetup();
    NSWindow* const native = nativeWindow(*window);
    @autoreleasepool {
        [native performClose];
    }
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(native.visible);
    window->makeKeyAndOrderFront();
    EXPECT_TRUE(native.visible);
}

TEST_F(WindowsMac, AWindowThatTheUserMovedStaysThereWhenItsTextChanges) {
    auto const window = openSetup();
    NSWindow* const native = nativeWindow(*window);
    EXPECT_EQ(fakes::textOf(native.frame), "100,100,300,228"); // with its title bar
    [native setFrame:NSMakeRect(500, 400, 300, 228) display:NO];
    auto attributes = window->attributes();
    attributes.title = "Another";
    attributes.isTitleHidden = true;
    attributes.titlebarAppearsTransparent = true;
    window->setAttributes(attributes);
    EXPECT_EQ(fakes::toText(native.title), "Another");
    EXPECT_EQ(native.titleVisibility, NSWindowTitleHidden);
    EXPECT_TRUE(native.titlebarAppearsTransparent);
    EXPECT_EQ(native.frame.origin.x, 500);
    attributes.contentRect = {10, 10, 200, 100};
    window->setAttributes(attributes);
    EXPECT_EQ(native.frame.origin.x, 10);
}

TEST_F(WindowsMac, AWindowIsCentredOverTheMiddleOfTheScreen) {
    auto const window = openSetup();
    window->center();
    NSRect const frame = nativeWindow(*window).frame;
    EXPECT_EQ(frame.origin.x, 570);
    EXPECT_GT(frame.origin.y, 336);
}

TEST_F(WindowsMac, AKeyWindowThatIsOrderedOutHandsTheKeysOn) {
    auto const first = openSetup();
    auto const second = openSetup();
    platform.application.activate();
    second->makeKeyAndOrderFront();
    session.settle();
    ASSERT_TRUE(second->isKeyWindow());
    second->orderOut();
    EXPECT_FALSE(second->isKeyWindow());
    EXPECT_TRUE(first->isKeyWindow());
    mac().bringToFront(editor);
    EXPECT_FALSE(first->isKeyWindow());
}

TEST_F(WindowsMac, ADrawingViewIsDrawnAgainWhenItAsksForIt) {
    auto const overlay = openOverlay();
    EXPECT_EQ(pressed->drawings, 1);
    session.wait(1s);
    EXPECT_EQ(pressed->drawings, 1);
    pressed->setNeedsDisplay();
    session.settle();
    EXPECT_EQ(pressed->drawings, 2);
}

TEST_F(WindowsMac, AWindowThatIsDroppedIsGoneFromTheScreen) {
    auto window = openSetup();
    window.reset();
    EXPECT_TRUE(
        std::ranges::none_of(mac().shown, [](auto const& each) { return each.window != nil; }));
    session.settle();
    EXPECT_TRUE(mac().windows.empty());
}

TEST_F(WindowsMac, WindowsStayOutOfTabs) {
    EXPECT_FALSE(NSWindow.allowsAutomaticWindowTabbing);
    EXPECT_EQ(fakes::application()->policy_, NSApplicationActivationPolicyAccessory);
}

} // namespace
} // namespace trovel
