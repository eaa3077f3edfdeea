#include "platform/ui/button.h"
#include "platform/ui/canvas.h"
#include "platform/ui/label.h"
#include "tests/linux/qt/native_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCloseEvent>
#include <QHoverEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>

#include <malloc.h>

#include <cstddef>
#include <string>
#include <vector>

namespace trovel {
namespace {

using namespace std::chrono_literals;

constexpr Color kRed = Color::rgba(1, 0, 0, 1);
constexpr Color kGreen = Color::rgba(0, 1, 0, 1);

LayerStyle filled(Color color) {
    LayerStyle style;
    style.backgroundColor = color;
    return style;
}

/// Notes what reaches it.
class ProbeView final : public View {
public:
    using View::View;
    ~ProbeView() override = default;
    void mouseDown(MouseEvent const& event) override { mouse.push_back(event); }
    void mouseDragged(MouseEvent const& event) override { mouse.push_back(event); }
    void mouseUp(MouseEvent const& event) override { mouse.push_back(event); }
    void mouseEntered() override { pointer += "in "; }
    void mouseExited() override { pointer += "out "; }

    std::vector<MouseEvent> mouse;
    std::string pointer;
};

/// Fills its lower half.
class HalfCanvas final : public CanvasView {
public:
    using CanvasView::CanvasView;
    ~HalfCanvas() override = default;
    void draw(Canvas& canvas) const override {
        canvas.fillRect({0, 0, 40, 20}, kGreen, CompositingOperation::sourceOver);
    }
};

class Delegate final : public WindowDelegate, public Responder {
public:
    Delegate() = default;
    ~Delegate() = default;
    void windowWillClose() override { log += "close "; }
    void windowDidBecomeKey() override { log += "key "; }
    void windowDidResignKey() override { log += "resign "; }
    void keyDown(KeyEvent const& event) override { keys.push_back(event); }
    void flagsChanged(KeyEvent const& event) override { keys.push_back(event); }
    [[nodiscard]] Responder* nextResponder() const override { return nullptr; }

    std::string log;
    std::vector<KeyEvent> keys;
};

class WindowWidgetTest : public testing::Test {
protected:
    WindowWidgetTest() {
        window->setContentView(content);
        window->setDelegate(&delegate);
        window->setNextResponder(&delegate);
    }
    ~WindowWidgetTest() override {
        window.reset();
        world.runPending();
    }

    void open() {
        window->makeKeyAndOrderFront();
        world.runPending();
    }
    [[nodiscard]] WindowWidget& widget() const { return world.latest->widget(); }
    /// The colour at a point of the window, y upward.
    [[nodiscard]] QColor colorAt(double x, double y) const {
        return NativeWorld::picture(widget()).pixelColor(static_cast<int>(x),
                                                         199 - static_cast<int>(y));
    }
    void mouse(QEvent::Type type, QPointF at) const {
        auto const buttons = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        auto const button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, at, widget().mapToGlobal(at), button, buttons, Qt::ShiftModifier);
        QCoreApplication::sendEvent(&widget(), &event);
    }
    void hover(QEvent::Type type, QPointF at) const {
        QHoverEvent event(type, at, widget().mapToGlobal(at), QPointF());
        QCoreApplication::sendEvent(&widget(), &event);
    }
    void key(QEvent::Type type, int key, unsigned keycode, unsigned state = 0,
             QString const& text = {}) const {
        QKeyEvent event(type, key, Qt::NoModifier, keycode, 0, state, text);
        QCoreApplication::sendEvent(&widget(), &event);
    }
    [[nodiscard]] QPushButton* button() const { return widget().findChild<QPushButton*>(); }

    NativeWorld world;
    Delegate delegate;
    std::shared_ptr<View> content = std::make_shared<View>(Rect{0, 0, 300, 200});
    std::shared_ptr<Window> window =
        std::make_shared<Window>(world, WindowAttributes{.contentRect = {0, 0, 300, 200},
                                                         .styleMask = kStyleTitled | kStyleClosable,
                                                         .title = "A title"});
};

TEST_F(WindowWidgetTest, HasTheTitleAndTheSizeOfTheTree) {
    open();
    EXPECT_EQ(widget().windowTitle(), "A title");
    EXPECT_EQ(widget().size(), QSize(300, 200));
    EXPECT_EQ(widget().minimumSize(), widget().maximumSize());
    EXPECT_TRUE(world.runUntil([this] { return world.askedForKey > 0; }))
        << "it asks the window manager for the keyboard";
}

TEST_F(WindowWidgetTest, ViewsLieWhereTheirFramesSayAndStickOutOfTheirParents) {
    auto outer = std::make_shared<View>(Rect{100, 50, 40, 40});
    outer->setLayer(filled(kRed));
    auto inner = std::make_shared<View>(Rect{-20, 30, 30, 20});
    inner->setLayer(filled(kGreen));
    outer->addSubview(inner);
    content->addSubview(outer);
    open();
    EXPECT_EQ(colorAt(120, 60), QColor(Qt::red));
    EXPECT_EQ(colorAt(85, 95), QColor(Qt::green));
    EXPECT_NE(colorAt(120, 95), QColor(Qt::red));
    EXPECT_EQ(colorAt(105, 82), QColor(Qt::green));
    outer->setHidden(true);
    EXPECT_NE(colorAt(85, 95), QColor(Qt::green));
    outer->setHidden(false);
    inner->removeFromSuperview();
    EXPECT_EQ(colorAt(105, 82), QColor(Qt::red));
}

TEST_F(WindowWidgetTest, ALayerHasCornersABorderAndOpacity) {
    LayerStyle style = filled(kRed);
    style.cornerRadius = 10;
    style.borderWidth = 4;
    style.borderColor = kGreen;
    auto view = std::make_shared<View>(Rect{100, 50, 40, 40});
    view->setLayer(style);
    content->addSubview(view);
    open();
    auto const behind = colorAt(10, 10);
    EXPECT_EQ(colorAt(100, 50), behind);
    EXPECT_EQ(colorAt(120, 51), QColor(Qt::green));
    EXPECT_EQ(colorAt(120, 70), QColor(Qt::red));
    style.opacity = 0;
    view->setLayer(style);
    EXPECT_EQ(colorAt(120, 70), behind);
}

TEST_F(WindowWidgetTest, ACanvasIsDrawnWithItsOriginAtTheLowerLeft) {
    content->addSubview(std::make_shared<HalfCanvas>(Rect{50, 50, 40, 40}));
    open();
    EXPECT_EQ(colorAt(60, 55), QColor(Qt::green));
    EXPECT_NE(colorAt(60, 85), QColor(Qt::green));
}

TEST_F(WindowWidgetTest, ALabelShowsItsTextInItsColour) {
    auto label = std::make_shared<Label>(
        Rect{0, 100, 300, 40}, "████", Label::Look{Font::system(30), kRed, TextAlignment::center});
    content->addSubview(label);
    open();
    EXPECT_EQ(colorAt(150, 120), QColor(Qt::red));
    label->setTextColor(kGreen);
    EXPECT_EQ(colorAt(150, 120), QColor(Qt::green));
    label->setText("");
    EXPECT_NE(colorAt(150, 120), QColor(Qt::green));
}

TEST_F(WindowWidgetTest, ATextKeepsClearOfItsBezel) {
    Label::Look look{Font::system(30), kRed, TextAlignment::center};
    look.isBezeled = true;
    content->addSubview(
        std::make_shared<Label>(Rect{50, 100, 200, 40}, "████████████████████", look));
    open();
    EXPECT_EQ(colorAt(150, 120), QColor(Qt::red));
    for (double const x : {51.0, 56.0, 244.0, 249.0}) {
        EXPECT_NE(colorAt(x, 120), QColor(Qt::red)) << x;
    }
}

TEST_F(WindowWidgetTest, AButtonIsAWidgetThatPressesTheTreesButton) {
    int presses = 0;
    auto const made = std::make_shared<Button>(Rect{100, 20, 80, 30}, "Fish & Chips",
                                               Button::Look{}, [&] { ++presses; });
    content->addSubview(made);
    open();
    ASSERT_NE(button(), nullptr);
    EXPECT_EQ(button()->geometry(), QRect(100, 150, 80, 30));
    EXPECT_EQ(button()->text(), "Fish && Chips");
    button()->click();
    EXPECT_EQ(presses, 1);
    made->setEnabled(false);
    EXPECT_FALSE(button()->isEnabled());
    made->setHidden(true);
    EXPECT_FALSE(button()->isVisible());
}

TEST_F(WindowWidgetTest, AButtonMayRemoveItselfAndItsWindowInItsOwnClick) {
    std::shared_ptr<Button> made;
    made = std::make_shared<Button>(Rect{100, 20, 80, 30}, "End", Button::Look{}, [&] {
        content->removeAllSubviews();
        made.reset();
        window->close();
        window.reset();
    });
    content->addSubview(made);
    open();
    auto* const native = &widget();
    button()->click();
    EXPECT_EQ(native->peer(), nullptr);
    EXPECT_EQ(window, nullptr);
    world.runPending();
}

TEST_F(WindowWidgetTest, ReturnPressesTheButtonThatHasIt) {
    int presses = 0;
    Button::Look look;
    look.keyEquivalent = "\r";
    content->addSubview(
        std::make_shared<Button>(Rect{0, 0, 80, 30}, "OK", look, [&] { ++presses; }));
    open();
    key(QEvent::KeyPress, Qt::Key_Return, 36, 0, "\r");
    EXPECT_EQ(presses, 1);
    EXPECT_TRUE(delegate.keys.empty());
}

TEST_F(WindowWidgetTest, KeysComeWithTheirPositionAndTheirModifiers) {
    open();
    key(QEvent::KeyPress, Qt::Key_Control, 37);
    key(QEvent::KeyPress, Qt::Key_At, 11, 4);
    key(QEvent::KeyRelease, Qt::Key_At, 11, 4);
    key(QEvent::KeyRelease, Qt::Key_Control, 37, 4);
    ASSERT_EQ(delegate.keys.size(), 3U);
    EXPECT_EQ(delegate.keys[0].kind, KeyEvent::Kind::flagsChanged);
    EXPECT_EQ(delegate.keys[0].modifierFlags, kFlagCommand);
    EXPECT_EQ(delegate.keys[1].kind, KeyEvent::Kind::keyDown);
    EXPECT_EQ(delegate.keys[1].keyCode, 19U);
    EXPECT_EQ(delegate.keys[1].modifierFlags, kFlagCommand);
    EXPECT_EQ(delegate.keys[2].modifierFlags, 0U);
}

TEST_F(WindowWidgetTest, AMonitorMaySwallowAKey) {
    open();
    auto const monitor = world.monitors.addLocalKeyDownMonitor(
        [](KeyEvent const&) { return MonitorVerdict::swallow; });
    key(QEvent::KeyPress, Qt::Key_A, 38);
    EXPECT_TRUE(delegate.keys.empty());
}

TEST_F(WindowWidgetTest, PressDragAndReleaseReachTheViewUnderThePress) {
    auto probe = std::make_shared<ProbeView>(Rect{100, 50, 40, 40});
    content->addSubview(probe);
    open();
    mouse(QEvent::MouseButtonPress, {110, 140});
    mouse(QEvent::MouseMove, {200, 10});
    mouse(QEvent::MouseButtonRelease, {200, 10});
    ASSERT_EQ(probe->mouse.size(), 3U);
    EXPECT_EQ(probe->mouse[0].locationInWindow, (Point{110.5, 59.5}));
    EXPECT_EQ(probe->mouse[0].modifierFlags, kFlagShift);
    EXPECT_EQ(probe->mouse[1].kind, MouseEvent::Kind::leftDragged);
    EXPECT_EQ(probe->mouse[2].kind, MouseEvent::Kind::leftUp);
}

TEST_F(WindowWidgetTest, ThePointerIsReportedToViewsThatTrackIt) {
    auto left = std::make_shared<ProbeView>(Rect{0, 0, 50, 50});
    auto right = std::make_shared<ProbeView>(Rect{50, 0, 50, 50});
    left->trackPointer();
    right->trackPointer();
    content->addSubview(left);
    content->addSubview(right);
    open();
    hover(QEvent::HoverMove, {10, 190});
    hover(QEvent::HoverMove, {20, 190});
    EXPECT_EQ(left->pointer, "in ");
    hover(QEvent::HoverMove, {60, 190});
    EXPECT_EQ(left->pointer, "in out ");
    EXPECT_EQ(right->pointer, "in ");
    hover(QEvent::HoverLeave, {-1, -1});
    EXPECT_EQ(right->pointer, "in out ");
}

TEST_F(WindowWidgetTest, TheTitleBarsCloseClosesTheWindowAndKeepsIt) {
    open();
    QCloseEvent event;
    QCoreApplication::sendEvent(&widget(), &event);
    EXPECT_FALSE(widget().isVisible());
    EXPECT_NE(delegate.log.find("close "), std::string::npos);
    EXPECT_NE(window, nullptr);
    open();
    EXPECT_TRUE(widget().isVisible());
}

TEST_F(WindowWidgetTest, TheDelegateIsToldOfTheKeyboardsComingAndGoing) {
    open();
    ASSERT_TRUE(world.runUntil([&] { return window->isKeyWindow(); }));
    EXPECT_EQ(delegate.log, "key ");
    window->orderOut();
    EXPECT_EQ(delegate.log, "key resign ");
    EXPECT_FALSE(window->isKeyWindow());
}

TEST_F(WindowWidgetTest, AGroupFadesFromWhatIsShownAndEnds) {
    auto view = std::make_shared<View>(Rect{100, 50, 40, 40});
    view->setLayer(filled(kRed));
    content->addSubview(view);
    open();
    world.animator.runGroup(100ms, [&] { view->setLayer(filled(kGreen)); });
    auto const first = colorAt(120, 70);
    EXPECT_GT(first.red(), 128) << "it starts where it was";
    EXPECT_TRUE(world.runUntil([&] {
        auto const now = colorAt(120, 70);
        return now.red() > 0 && now.green() > 0;
    })) << "it passes through the middle";
    EXPECT_TRUE(world.runUntil([&] { return colorAt(120, 70) == QColor(Qt::green); }));
    EXPECT_TRUE(world.runUntil([&] { return !world.latest->isAnimating(); }));
}

TEST_F(WindowWidgetTest, WithoutAGroupAChangeIsShownAtOnce) {
    auto view = std::make_shared<View>(Rect{100, 50, 40, 40});
    view->setLayer(filled(kRed));
    content->addSubview(view);
    open();
    view->setLayer(filled(kGreen));
    EXPECT_EQ(colorAt(120, 70), QColor(Qt::green));
    EXPECT_FALSE(world.latest->isAnimating());
}

TEST_F(WindowWidgetTest, AWindowIsMovedByItsBackgroundOnly) {
    auto attributes = window->attributes();
    attributes.isMovableByBackground = true;
    window->setAttributes(attributes);
    auto card = std::make_shared<View>(Rect{0, 0, 50, 50});
    card->setAccessibility({AccessibilityInfo::Role::button, "Card", ""});
    card->addSubview(std::make_shared<View>(Rect{10, 10, 10, 10}));
    content->addSubview(card);
    open();
    EXPECT_TRUE(world.latest->isMovedFrom({100, 100}));
    EXPECT_FALSE(world.latest->isMovedFrom({15, 15}));
}

TEST_F(WindowWidgetTest, AWindowFollowsThePointerThatHoldsItsBackground) {
    auto attributes = window->attributes();
    attributes.isMovableByBackground = true;
    window->setAttributes(attributes);
    open();
    auto const before = widget().pos();
    mouse(QEvent::MouseButtonPress, {100, 100});
    mouse(QEvent::MouseMove, {103, 102});
    EXPECT_EQ(widget().pos(), before) << "a click may shake a little";
    mouse(QEvent::MouseMove, {140, 120});
    EXPECT_EQ(widget().pos(), before + QPoint(40, 20));
    mouse(QEvent::MouseButtonRelease, {100, 100});
    mouse(QEvent::MouseMove, {160, 160});
    EXPECT_EQ(widget().pos(), before + QPoint(40, 20));
}

TEST_F(WindowWidgetTest, NothingIsLeftOfAWindowThatIsGone) {
    auto const before = QApplication::allWidgets().size();
    for (int i = 0; i < 20; ++i) {
        auto other = std::make_shared<Window>(world, window->attributes());
        auto view = std::make_shared<View>(Rect{0, 0, 300, 200});
        view->addSubview(
            std::make_shared<Button>(Rect{0, 0, 80, 30}, "OK", Button::Look{}, Button::Action()));
        other->setContentView(view);
        other->makeKeyAndOrderFront();
        world.runPending();
        other->close();
    }
    world.runPending();
    EXPECT_EQ(QApplication::allWidgets().size(), before);
}

TEST_F(WindowWidgetTest, AHundredWindowsOpenedAndClosedLeaveNoMemoryBehind) {
    open();
    auto const inUse = [] {
        auto const memory = mallinfo2();
        return static_cast<std::ptrdiff_t>(memory.uordblks + memory.hblkhd);
    };
    auto const openAndClose = [&] {
        auto other = std::make_shared<Window>(world, window->attributes());
        auto view = std::make_shared<View>(Rect{0, 0, 300, 200});
        view->addSubview(
            std::make_shared<Button>(Rect{0, 0, 80, 30}, "OK", Button::Look{}, Button::Action()));
        view->addSubview(std::make_shared<Label>(Rect{0, 50, 80, 30}, "Text", Label::Look{}));
        other->setContentView(view);
        other->center();
        other->makeKeyAndOrderFront();
        world.runPending();
        other->close();
        other.reset();
        world.runPending();
    };
    for (int i = 0; i < 60; ++i) openAndClose(); // what is kept for all of them
    auto const before = inUse();
    for (int i = 0; i < 100; ++i) openAndClose();
    constexpr std::ptrdiff_t kMost = 32 * 1024;
    EXPECT_LT(inUse() - before, kMost);
}

} // namespace
} // namespace trovel
