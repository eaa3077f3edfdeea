#include "platform/ui/window.h"

#include "platform/ui/button.h"
#include "platform/ui/label.h"
#include "platform/ui/view.h"
#include "platform/ui/window_controller.h"
#include "platform/ui/window_host.h"
#include "tests/support/lifetime.h"
#include "tests/support/views.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace trovel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Notes what a window tells its mirror, and copies what the window shows when it does.
class NotingHost final : public WindowHost {
public:
    ~NotingHost() = default;
    std::unique_ptr<WindowPeer> makePeer(Window& window) override {
        return std::make_unique<Peer>(*this, window);
    }

    std::vector<std::string> told;
    std::string title;
    std::vector<std::string> lines;

private:
    class Peer final : public WindowPeer {
    public:
        Peer(NotingHost& host, Window const& window) : host_(host), window_(window) {}
        void windowDidChange() override { note("window"); }
        void viewDidChange(View const&) override { note("view"); }
        void viewNeedsDisplay(View const&) override { note("display"); }
        void orderFrontRegardless() override { note("front"); }
        void makeKeyAndOrderFront() override { note("key"); }
        void orderOut() override { note("out"); }
        void center() override { note("center"); }

    private:
        void note(std::string what) {
            host_.told.push_back(std::move(what));
            host_.title = window_.attributes().title;
            if (auto const& content = window_.contentView()) host_.lines = linesOf(*content);
        }

        NotingHost& host_;
        Window const& window_;
    };
};

/// Notes the mouse events that reach it.
class NotingView final : public View {
public:
    NotingView(Rect frame, std::vector<std::string>& events) : View(frame), events_(events) {}

    void mouseDown(MouseEvent const&) override { events_.emplace_back("down"); }
    void mouseDragged(MouseEvent const&) override { events_.emplace_back("dragged"); }
    void mouseUp(MouseEvent const&) override { events_.emplace_back("up"); }
    void mouseEntered() override { events_.emplace_back("entered"); }
    void mouseExited() override { events_.emplace_back("exited"); }

private:
    std::vector<std::string>& events_;
};

/// Notes when it comes on the screen.
class AppearingView final : public View {
public:
    AppearingView(std::string name, std::vector<std::string>& told)
        : View({0, 0, 10, 10}), name_(std::move(name)), told_(told) {}

    void willAppear() override { told_.push_back(name_ + " will"); }
    void didAppear() override { told_.push_back(name_ + " did"); }

private:
    std::string name_;
    std::vector<std::string>& told_;
};

WindowAttributes const kTitled{.contentRect = {0, 0, 200, 100},
                               .styleMask = kStyleTitled | kStyleClosable};

class WindowControlsTest : public testing::Test {
protected:
    WindowControlsTest() { window->setContentView(content); }

    void press(Point point) { window->receive(MouseEvent{MouseEvent::Kind::leftDown, point, 0}); }
    void dragTo(Point point) {
        window->receive(MouseEvent{MouseEvent::Kind::leftDragged, point, 0});
    }
    void release(Point point) { window->receive(MouseEvent{MouseEvent::Kind::leftUp, point, 0}); }
    void type(std::string characters, EventFlags flags = 0) {
        window->receive(
            KeyEvent{KeyEvent::Kind::keyDown, kKeyReturn, flags, std::move(characters)});
    }
    std::shared_ptr<Button> addButton(Rect frame, std::string keyEquivalent = "") {
        Button::Look look;
        look.keyEquivalent = std::move(keyEquivalent);
        auto button = std::make_shared<Button>(frame, "Button", look, [this] { ++clicks; });
        content->addSubview(button);
        return button;
    }

    NotingHost host;
    std::shared_ptr<Window> window = newShared<Window>(host, kTitled);
    std::shared_ptr<View> content = std::make_shared<View>(Rect{0, 0, 200, 100});
    std::vector<std::string> events;
    int clicks = 0;
};

TEST_F(WindowControlsTest, TheMirrorIsMadeWhenTheWindowIsFirstShownAndToldOfEveryChange) {
    auto const label = std::make_shared<Label>(Rect{0, 0, 10, 10}, "text", Label::Look{});
    content->addSubview(label);
    EXPECT_THAT(host.told, IsEmpty());
    window->center();
    window->makeKeyAndOrderFront();
    EXPECT_THAT(host.told, ElementsAre("window", "center", "key"));
    host.told.clear();
    label->setText("other");
    label->setTextColor(Color::clear());
    label->setFrame({1, 1, 10, 10});
    label->setHidden(true);
    label->setLayer({});
    label->setAccessibility({});
    label->trackPointer();
    label->setClickAction([] {});
    label->removeFromSuperview();
    EXPECT_EQ(host.told, std::vector<std::string>(9, "view"));
    host.told.clear();
    label->setText("alone"); // no longer the window's
    auto attributes = window->attributes();
    attributes.title = "Title";
    window->setAttributes(attributes);
    EXPECT_THAT(host.told, ElementsAre("window"));
}

TEST_F(WindowControlsTest, TheMirrorIsToldWhenTheChangeIsThereToBeSeen) {
    auto const label = std::make_shared<Label>(Rect{0, 0, 10, 10}, "text", Label::Look{});
    auto const button = addButton({0, 20, 10, 10});
    window->makeKeyAndOrderFront();
    std::vector<std::function<void()>> const changes{
        [&] { content->addSubview(label); },
        [&] { label->setText("other"); },
        [&] { label->setTextColor(Color::clear()); },
        [&] { label->setFrame({1, 1, 10, 10}); },
        [&] { label->setHidden(true); },
        [&] { label->setLayer({}); },
        [&] { label->setAccessibility({.label = "label", .value = ""}); },
        [&] { label->trackPointer(); },
        [&] { label->setClickAction([] {}); },
        [&] { button->setTitle("Title"); },
        [&] { button->setEnabled(false); },
        [&] { label->removeFromSuperview(); },
        [&] { content->removeAllSubviews(); },
        [&] { window->setContentView(label); },
    };
    for (auto const& change : changes) {
        auto const before = host.lines;
        change();
        EXPECT_NE(host.lines, before);
        EXPECT_EQ(host.lines, linesOf(*window->contentView()));
    }
    auto attributes = window->attributes();
    attributes.title = "Title";
    window->setAttributes(attributes);
    EXPECT_EQ(host.title, "Title");
}

TEST_F(WindowControlsTest, ViewsAreToldOnceWhenTheyComeOnTheScreenWithTheirWindow) {
    auto const outer = std::make_shared<AppearingView>("outer", host.told);
    outer->addSubview(std::make_shared<AppearingView>("inner", host.told));
    content->addSubview(outer);
    EXPECT_THAT(host.told, IsEmpty());
    window->orderFrontRegardless();
    EXPECT_THAT(host.told, ElementsAre("outer will", "inner will", "window", "front", "outer did",
                                       "inner did"));
    host.told.clear();
    window->makeKeyAndOrderFront();
    window->orderOut();
    window->orderFrontRegardless();
    EXPECT_THAT(host.told, ElementsAre("key", "out", "front"));
}

TEST_F(WindowControlsTest, AViewThatComesIntoAShownWindowIsToldAroundItsMirroring) {
    window->makeKeyAndOrderFront();
    host.told.clear();
    content->addSubview(std::make_shared<AppearingView>("late", host.told));
    EXPECT_THAT(host.told, ElementsAre("late will", "view", "late did"));
    host.told.clear();
    window->setContentView(std::make_shared<AppearingView>("other", host.told));
    EXPECT_THAT(host.told, ElementsAre("other will", "window", "other did"));
    window->orderOut();
    host.told.clear();
    window->contentView()->addSubview(std::make_shared<AppearingView>("hidden", host.told));
    window->setContentView(content);
    EXPECT_THAT(host.told, ElementsAre("view", "window"));
}

TEST_F(WindowControlsTest, TheMirrorIsToldOfViewsThatComeAndGoAndOfAnotherContent) {
    window->makeKeyAndOrderFront();
    host.told.clear();
    auto const box = std::make_shared<View>(Rect{0, 0, 100, 100});
    content->addSubview(box);
    EXPECT_THAT(host.told, ElementsAre("view"));
    auto const leaf = std::make_shared<View>(Rect{0, 0, 10, 10});
    box->addSubview(leaf);
    host.told.clear();
    box->removeAllSubviews();
    EXPECT_THAT(host.told, ElementsAre("view"));
    EXPECT_THAT(box->subviews(), IsEmpty());
    EXPECT_EQ(leaf->superview(), nullptr);
    host.told.clear();
    content->setNeedsDisplay();
    leaf->setNeedsDisplay(); // no longer the window's
    EXPECT_THAT(host.told, ElementsAre("display"));
    host.told.clear();
    window->setContentView(box);
    EXPECT_THAT(host.told, ElementsAre("window"));
}

TEST_F(WindowControlsTest, AScreenReadersPressIsAClickInTheMiddle) {
    auto const group = std::make_shared<View>(Rect{50, 20, 100, 60});
    auto const target = std::make_shared<View>(Rect{10, 10, 20, 20});
    auto const noting = std::make_shared<NotingView>(Rect{40, 10, 20, 20}, events);
    target->setClickAction([this] { ++clicks; });
    group->addSubview(target);
    group->addSubview(noting);
    content->addSubview(group);
    window->receivePress(*target);
    EXPECT_EQ(clicks, 1);
    EXPECT_THAT(events, IsEmpty());
    window->receivePress(*noting);
    EXPECT_THAT(events, ElementsAre("down", "up"));
}

TEST_F(WindowControlsTest, AScreenReadersPressReachesAViewWhoseMiddleIsOutOfReach) {
    auto const outside = std::make_shared<NotingView>(Rect{-70, 10, 100, 20}, events);
    auto const behind = std::make_shared<View>(Rect{50, 50, 20, 20});
    behind->setClickAction([this] { ++clicks; });
    content->addSubview(outside);
    content->addSubview(behind);
    content->addSubview(std::make_shared<View>(Rect{40, 40, 60, 60}));
    window->receivePress(*outside);
    EXPECT_THAT(events, ElementsAre("down", "up"));
    window->receivePress(*behind);
    EXPECT_EQ(clicks, 1);
}

TEST_F(WindowControlsTest, AViewTakesClicksThatAreMeantForItOrForOneAroundIt) {
    auto const card = std::make_shared<View>(Rect{50, 20, 100, 60});
    auto const label = std::make_shared<Label>(Rect{0, 0, 10, 10}, "text", Label::Look{});
    card->addSubview(label);
    content->addSubview(card);
    EXPECT_FALSE(label->takesClicks());
    card->setAccessibility({});
    EXPECT_TRUE(card->takesClicks());
    EXPECT_TRUE(label->takesClicks());
    EXPECT_FALSE(content->takesClicks());
    EXPECT_TRUE(addButton({0, 0, 10, 10})->takesClicks());
    auto const tile = std::make_shared<View>(Rect{0, 0, 10, 10});
    tile->setClickAction([] {});
    EXPECT_TRUE(tile->takesClicks());
}

TEST_F(WindowControlsTest, TheMirrorIsNotToldOfWhatStaysAsItIs) {
    auto const label = std::make_shared<Label>(Rect{0, 0, 10, 10}, "text", Label::Look{});
    content->addSubview(label);
    auto const button = addButton({10, 10, 50, 20});
    auto const setAll = [&] {
        label->setText("other");
        label->setTextColor(Color::clear());
        label->setFrame({1, 1, 10, 10});
        label->setHidden(true);
        label->setLayer({});
        label->setAccessibility({});
        button->setTitle("Other");
        button->setEnabled(false);
    };
    window->makeKeyAndOrderFront();
    host.told.clear();
    setAll();
    EXPECT_EQ(host.told.size(), 8U);
    host.told.clear();
    setAll();
    EXPECT_THAT(host.told, IsEmpty());
}

TEST_F(WindowControlsTest, AButtonIsClickedByAPressAndAReleaseOnIt) {
    addButton({10, 10, 50, 20});
    press({20, 20});
    EXPECT_EQ(clicks, 0);
    release({30, 25});
    EXPECT_EQ(clicks, 1);
    press({20, 20});
    release({150, 50});
    EXPECT_EQ(clicks, 1);
    press({150, 50});
    release({20, 20});
    EXPECT_EQ(clicks, 1);
    release({20, 20});
    EXPECT_EQ(clicks, 1);
}

TEST_F(WindowControlsTest, APressOnOneButtonAndAReleaseOnAnotherIsNoClick) {
    addButton({10, 10, 50, 20});
    addButton({80, 10, 50, 20});
    press({20, 20});
    release({90, 20});
    EXPECT_EQ(clicks, 0);
}

TEST_F(WindowControlsTest, ADisabledButtonIsNeitherClickedNorPressedByItsKey) {
    auto const button = addButton({10, 10, 50, 20}, "\r");
    button->setEnabled(false);
    press({20, 20});
    release({20, 20});
    type("\r");
    EXPECT_EQ(clicks, 0);
    button->setEnabled(true);
    type("\r");
    EXPECT_EQ(clicks, 1);
}

TEST_F(WindowControlsTest, AHiddenViewTakesNoMouseAndNoKey) {
    auto const button = addButton({10, 10, 50, 20}, "\r");
    button->setHidden(true);
    press({20, 20});
    release({20, 20});
    type("\r");
    content->setHidden(true);
    button->setHidden(false);
    type("\r");
    press({20, 20});
    release({20, 20});
    EXPECT_EQ(clicks, 0);
}

TEST_F(WindowControlsTest, AKeyEquivalentIsItsKeyAlone) {
    addButton({10, 10, 50, 20}, "\r");
    for (auto const flag : {kFlagCommand, kFlagShift, kFlagControl, kFlagOption}) {
        type("\r", flag);
    }
    type("");
    type("x");
    EXPECT_EQ(clicks, 0);
    type("\r", kFlagCapsLock | kFlagNumericPad);
    EXPECT_EQ(clicks, 1);
}

TEST_F(WindowControlsTest, AKeyEquivalentIsFoundAtAnyDepth) {
    auto const box = std::make_shared<View>(Rect{0, 0, 100, 100});
    auto const button = addButton({10, 10, 50, 20}, "\r");
    content->addSubview(box);
    box->addSubview(button);
    type("\r");
    EXPECT_EQ(clicks, 1);
}

TEST_F(WindowControlsTest, AClickActionAnswersAClickOnWhateverLiesOnItsView) {
    auto const tile = std::make_shared<NotingView>(Rect{10, 10, 50, 50}, events);
    tile->addSubview(std::make_shared<Label>(Rect{5, 5, 20, 20}, "+", Label::Look{}));
    tile->setClickAction([this] { ++clicks; });
    content->addSubview(tile);
    press({20, 20}); // on the label
    EXPECT_EQ(clicks, 0);
    release({55, 55}); // on the tile beside it
    EXPECT_EQ(clicks, 1);
    EXPECT_THAT(events, IsEmpty());
    press({20, 20});
    release({100, 20});
    EXPECT_EQ(clicks, 1);
}

TEST_F(WindowControlsTest, AViewWithoutAnActionGetsThePressTheDragsAndTheRelease) {
    auto const view = std::make_shared<NotingView>(Rect{10, 10, 50, 50}, events);
    content->addSubview(view);
    view->addSubview(std::make_shared<Label>(Rect{0, 0, 50, 50}, "text", Label::Look{}));
    press({20, 20});
    dragTo({500, 500});
    release({500, 500});
    EXPECT_THAT(events, ElementsAre("down", "dragged", "up"));
}

TEST_F(WindowControlsTest, ThePointersComingAndGoingReachesItsView) {
    auto const view = std::make_shared<NotingView>(Rect{10, 10, 50, 50}, events);
    content->addSubview(view);
    window->receivePointer(*view, true);
    window->receivePointer(*view, false);
    EXPECT_THAT(events, ElementsAre("entered", "exited"));
}

TEST_F(WindowControlsTest, AViewThatDoesNotCareForThePointerPassesItOn) {
    auto const view = std::make_shared<NotingView>(Rect{10, 10, 50, 50}, events);
    auto const inner = std::make_shared<View>(Rect{0, 0, 10, 10});
    content->addSubview(view);
    view->addSubview(inner);
    window->receivePointer(*inner, true);
    window->receivePointer(*inner, false);
    EXPECT_THAT(events, ElementsAre("entered", "exited"));
}

TEST_F(WindowControlsTest, AViewRemovedInItsOwnClickLivesUntilTheClickIsOver) {
    auto tile = newShared<View>(Rect{10, 10, 50, 50});
    std::weak_ptr<View> const weak = tile;
    bool lived = false;
    tile->setClickAction([&] {
        content->removeAllSubviews();
        lived = !weak.expired();
    });
    content->addSubview(std::move(tile));
    press({20, 20});
    release({20, 20});
    EXPECT_TRUE(lived);
    EXPECT_TRUE(weak.expired());
}

TEST_F(WindowControlsTest, AButtonRemovedByItsOwnKeyLivesUntilItsActionIsOver) {
    std::weak_ptr<Button> weak;
    bool lived = false;
    Button::Look look;
    look.keyEquivalent = "\r";
    auto button = newShared<Button>(Rect{10, 10, 50, 20}, "Remove", look, [&] {
        content->removeAllSubviews();
        lived = !weak.expired();
    });
    weak = button;
    content->addSubview(std::move(button));
    type("\r");
    EXPECT_TRUE(lived);
    EXPECT_TRUE(weak.expired());
}

TEST_F(WindowControlsTest, AButtonThatGoesInItsOwnActionTakesItsWindowAlongSafely) {
    std::weak_ptr<Window> const weak = window;
    addButton({10, 10, 50, 20});
    Button::Look const look;
    content->addSubview(newShared<Button>(Rect{80, 10, 50, 20}, "Close", look, [this] {
        content.reset();
        window.reset();
    }));
    window->receive(MouseEvent{MouseEvent::Kind::leftDown, {90, 20}, 0});
    auto* const bare = window.get();
    bare->receive(MouseEvent{MouseEvent::Kind::leftUp, {90, 20}, 0});
    EXPECT_TRUE(weak.expired());
}

TEST_F(WindowControlsTest, AClickOnTheWindowsEdgeIsAClick) {
    addButton({10, 10, 50, 20});
    press({60, 30});
    release({10, 10});
    EXPECT_EQ(clicks, 1);
}

TEST_F(WindowControlsTest, AViewPutElsewhereLeavesWhereItWas) {
    auto const first = std::make_shared<View>(Rect{});
    auto const second = std::make_shared<View>(Rect{});
    auto const view = std::make_shared<View>(Rect{3, 4, 5, 6});
    first->addSubview(view);
    second->addSubview(view);
    EXPECT_THAT(first->subviews(), IsEmpty());
    EXPECT_EQ(view->superview(), second.get());
    EXPECT_EQ(view->bounds(), (Rect{0, 0, 5, 6}));
    view->removeFromSuperview();
    view->removeFromSuperview();
    EXPECT_EQ(view->superview(), nullptr);
    EXPECT_EQ(view->window(), nullptr);
}

/// A controller in a slot that it empties when its window closes.
class SlotController final : public WindowController {
public:
    SlotController(std::shared_ptr<Window> window, std::shared_ptr<SlotController>& slot,
                   std::vector<std::string>& said)
        : WindowController(std::move(window)), slot_(slot), said_(said) {}
    ~SlotController() override { said_.emplace_back("gone"); }

    void windowWillClose() override {
        said_.emplace_back(window()->isVisible() ? "closes" : "closes unseen");
        slot_.reset();
    }
    void windowDidBecomeKey() override { said_.emplace_back("key"); }
    void windowDidResignKey() override { said_.emplace_back("not key"); }
    void keyDown(KeyEvent const& event) override { said_.push_back("typed " + event.characters); }

private:
    std::shared_ptr<SlotController>& slot_;
    std::vector<std::string>& said_;
};

class WindowControllerTest : public WindowControlsTest {
protected:
    std::vector<std::string> said;
    std::shared_ptr<SlotController> slot = newShared<SlotController>(window, slot, said);
};

TEST_F(WindowControllerTest, IsTheDelegateAndTheLastResponder) {
    slot->showWindow();
    EXPECT_THAT(host.told, ElementsAre("window", "key"));
    window->receiveKeyState(true);
    window->receiveKeyState(true);
    type("a");
    window->receiveKeyState(false);
    EXPECT_THAT(said, ElementsAre("key", "typed a", "not key"));
}

TEST_F(WindowControllerTest, AKeyEquivalentGoesToNobodyElse) {
    addButton({10, 10, 50, 20}, "\r");
    type("\r");
    type("\r", kFlagCommand);
    EXPECT_EQ(clicks, 1);
    EXPECT_THAT(said, ElementsAre("typed \r"));
}

TEST_F(WindowControllerTest, MayGoInsideItsWindowsCloseAndTheWindowWithIt) {
    std::weak_ptr<Window> const weak = window;
    slot->showWindow();
    auto* const bare = window.get();
    window.reset();
    bare->receiveCloseRequest();
    EXPECT_THAT(said, ElementsAre("closes", "gone"));
    EXPECT_TRUE(weak.expired());
    EXPECT_EQ(host.told.back(), "out");
}

TEST_F(WindowControllerTest, AWindowThatOutlivesItsControllerTellsNobody) {
    slot.reset();
    window->receiveKeyState(true);
    type("a");
    window->close();
    EXPECT_THAT(said, ElementsAre("gone"));
}

TEST_F(WindowControllerTest, OnlyAClosableWindowListensToTheCloseBox) {
    auto attributes = kTitled;
    attributes.styleMask = kStyleTitled;
    window->setAttributes(attributes);
    slot->showWindow();
    window->receiveCloseRequest();
    EXPECT_TRUE(window->isVisible());
    EXPECT_THAT(said, IsEmpty());
}

} // namespace
} // namespace trovel
