#include "platform/simulated/simulated_desktop.h"

#include "platform/accessibility.h"
#include "platform/activation_script.h"
#include "platform/simulated/simulated_pixels.h"
#include "platform/ui/window.h"
#include "tests/support/desktop_test.h"
#include "tests/support/probe_view.h"

#include <sstream>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class SimulatedDesktopTest : public DesktopTest {
protected:
    class KeyableProbe final : public Window {
    public:
        using Window::Window;
        ~KeyableProbe() override = default;
        [[nodiscard]] bool canBecomeKey() const override { return true; }
    };

    /// A window over the whole display that takes keys.
    std::shared_ptr<ProbeView> cover() {
        WindowAttributes attributes;
        attributes.contentRect = {0, 0, 1440, 900};
        attributes.level = kScreenSaverWindowLevel;
        window = std::make_shared<KeyableProbe>(platform.windows, attributes);
        auto view = std::make_shared<ProbeView>("view", Rect{0, 0, 1440, 900}, log);
        window->setContentView(view);
        window->makeKeyAndOrderFront();
        return view;
    }
    void postKey(KeyCode keyCode, EventFlags flags) {
        for (auto const action : {KeyAction::down, KeyAction::up}) {
            auto const event = platform.events.keyboardEvent(keyCode, action);
            ASSERT_TRUE(event);
            event->setFlags(flags);
            event->post();
        }
    }
    SimulatedProgram& startInFront() {
        auto& program = desktop.workspace.start(chatProgram("Claude", "com.anthropic"));
        desktop.workspace.bringToFront(program.processIdentifier);
        return program;
    }
    Image capture(bool showsCursor = false) {
        Image image;
        platform.worker.run([&] {
            auto const displays = platform.capturer.shareableDisplays();
            if (!displays) return;
            auto const captured =
                platform.capturer.captureImage(displays->front(), {2880, 1800, false, showsCursor});
            if (captured) image = {*captured, {1440, 900}};
        });
        desktop.queue.advance(1s);
        return image;
    }

    ProbeView::Log log;
    std::shared_ptr<Window> window;
};

TEST_F(SimulatedDesktopTest, AProgramRemembersClicksPastesAndKeys) {
    auto& program = startInFront();
    desktop.user.click({500, 310}); // 590 from the top of the 900 points
    desktop.user.pressKey(kKeyV, kFlagCommand);
    desktop.user.pressKey(kKeyReturn);
    auto const id = program.processIdentifier;
    EXPECT_THAT(program.all<effect::Clicked>(), ElementsAre(effect::Clicked{id, {500, 590}}));
    EXPECT_THAT(program.all<effect::Pasted>(), ElementsAre(effect::Pasted{id, {}}));
    EXPECT_THAT(program.all<effect::Typed>(), ElementsAre(effect::Typed{id, kKeyReturn, 0}));
}

TEST_F(SimulatedDesktopTest, AClickRaisesTheProgramUnderIt) {
    auto& back = startInFront();
    auto& front = desktop.workspace.start(chatProgram("Other", "org.other"));
    front.windows.front().position = {600, 50};
    desktop.workspace.bringToFront(front.processIdentifier);
    desktop.user.click({200, 800});
    EXPECT_EQ(desktop.workspace.frontmost(), back.processIdentifier);
    desktop.user.click({650, 800}); // both have a window there
    EXPECT_EQ(front.inputs.size(), 0U);
    EXPECT_EQ(back.inputs.size(), 2U);
}

TEST_F(SimulatedDesktopTest, APostedEventArrivesATurnLater) {
    auto const& program = startInFront();
    postKey(kKeyReturn, 0);
    EXPECT_TRUE(program.inputs.empty());
    desktop.queue.drain();
    EXPECT_EQ(program.inputs.size(), 1U);
    EXPECT_FALSE(desktop.input.isAnythingDown());
}

TEST_F(SimulatedDesktopTest, WithoutTheGrantAPostedEventIsPostedAndDropped) {
    auto const& program = startInFront();
    desktop.permissions.revoke(Permission::accessibility);
    desktop.journal.clear();
    postKey(kKeyReturn, kFlagCommand);
    desktop.queue.drain();
    EXPECT_TRUE(program.inputs.empty());
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(effect::KeyPosted{kKeyReturn, KeyAction::down, kFlagCommand},
                            effect::EventDropped{},
                            effect::KeyPosted{kKeyReturn, KeyAction::up, kFlagCommand},
                            effect::EventDropped{}));
}

TEST_F(SimulatedDesktopTest, WithoutTheGrantAccessibilityReadsFail) {
    auto const id = startInFront().processIdentifier;
    auto const element = platform.accessibility.focusedWindow(id);
    ASSERT_TRUE(element);
    desktop.permissions.revoke(Permission::accessibility);
    EXPECT_FALSE(platform.accessibility.focusedWindow(id));
    EXPECT_FALSE(platform.accessibility.windows(id));
    EXPECT_FALSE(element->position());
    EXPECT_FALSE(element->size());
}

TEST_F(SimulatedDesktopTest, WhoAsksAccessibilityWaitsForEachAnswer) {
    auto& program = startInFront();
    program.answerTime = 100ms;
    auto const element = platform.accessibility.focusedWindow(program.processIdentifier);
    EXPECT_EQ(desktop.queue.now(), 100ms);
    EXPECT_TRUE(platform.accessibility.windows(program.processIdentifier));
    EXPECT_TRUE(element->position());
    EXPECT_TRUE(element->size());
    EXPECT_EQ(desktop.queue.now(), 400ms);
}

TEST_F(SimulatedDesktopTest, WithoutTheGrantDisplaysCannotBeCaptured) {
    desktop.permissions.revoke(Permission::screenRecording);
    EXPECT_FALSE(capture().pixels);
}

TEST_F(SimulatedDesktopTest, AScriptActivatesAfterTheProgramsDelayUnlessItRefuses) {
    auto& program = desktop.workspace.start(chatProgram("Claude", "com.anthropic"));
    program.activationDelay = 250ms;
    program.refusesActivation = true;
    platform.scripts.execute(activationScript("Claude"));
    desktop.queue.advance(1s);
    EXPECT_EQ(desktop.workspace.frontmost(), 0);
    program.refusesActivation = false;
    platform.scripts.execute(activationScript("Claude"));
    desktop.queue.advance(249ms);
    EXPECT_EQ(desktop.workspace.frontmost(), 0);
    desktop.queue.advance(1ms);
    EXPECT_EQ(desktop.workspace.frontmost(), program.processIdentifier);
}

TEST_F(SimulatedDesktopTest, AProgramWithoutADelayIsInFrontWhenTheScriptEnds) {
    auto& program = desktop.workspace.start(chatProgram("Claude", "com.anthropic"));
    program.activationDelay = 0ms;
    platform.scripts.execute(activationScript("Claude"));
    EXPECT_EQ(desktop.workspace.frontmost(), program.processIdentifier);
}

TEST_F(SimulatedDesktopTest, AProgramThatQuitsGivesTheFrontBack) {
    auto const first = startInFront().processIdentifier;
    auto const second = startInFront().processIdentifier;
    EXPECT_EQ(desktop.workspace.frontmost(), second);
    desktop.workspace.quit(second);
    EXPECT_EQ(desktop.workspace.frontmost(), first);
    desktop.workspace.quit(first);
    EXPECT_EQ(desktop.workspace.frontmost(), 0);
    EXPECT_EQ(platform.workspace.frontmostApplication(), std::nullopt);
}

TEST_F(SimulatedDesktopTest, ActivationBringsTrovelToTheFrontOnlyWhereItDoes) {
    auto const program = startInFront().processIdentifier;
    desktop.application.setSelfActivation(SelfActivation::changesNothing);
    platform.application.activate();
    EXPECT_EQ(desktop.workspace.frontmost(), program);
    desktop.application.setSelfActivation(SelfActivation::comesToFront);
    desktop.faults.failOnce(Operation::activateSelf);
    platform.application.activate();
    EXPECT_EQ(desktop.workspace.frontmost(), program);
    platform.application.activate();
    EXPECT_EQ(desktop.workspace.frontmost(), kTrovelProcess);
}

TEST_F(SimulatedDesktopTest, AKeyWindowGetsKeysOnlyWhileTrovelIsActive) {
    auto& program = startInFront();
    cover();
    EXPECT_FALSE(window->isKeyWindow());
    desktop.user.pressKey(kKeyReturn);
    EXPECT_EQ(program.inputs.size(), 1U);
    EXPECT_THAT(log, IsEmpty());
    platform.application.activate();
    EXPECT_TRUE(window->isKeyWindow());
    desktop.user.pressKey(kKeyReturn);
    EXPECT_THAT(log, ElementsAre("view key 36"));
    desktop.workspace.bringToFront(program.processIdentifier);
    EXPECT_FALSE(window->isKeyWindow());
}

TEST_F(SimulatedDesktopTest, WhereActivationChangesNothingTheKeyWindowHasTheKeyboardAtOnce) {
    desktop.application.setSelfActivation(SelfActivation::changesNothing);
    auto const& program = startInFront();
    cover();
    EXPECT_TRUE(window->isKeyWindow());
    desktop.user.pressKey(kKeyReturn);
    EXPECT_THAT(log, ElementsAre("view key 36"));
    EXPECT_TRUE(program.inputs.empty());
}

TEST_F(SimulatedDesktopTest, AFirstPressReachesOnlyAViewThatWantsIt) {
    startInFront();
    auto const view = cover();
    view->takesFirstMouse = false;
    desktop.user.drag({10, 10}, {50, 50});
    EXPECT_THAT(log, IsEmpty());
    EXPECT_TRUE(window->isKeyWindow()); // the press made it so
    desktop.user.click({10, 10});
    EXPECT_THAT(log, ElementsAre("view down", "view dragged", "view up"));
}

TEST_F(SimulatedDesktopTest, APictureHoldsThePixelsOfItsDisplay) {
    auto const image = capture();
    ASSERT_TRUE(image.pixels);
    auto const& pixels = dynamic_cast<SimulatedPixels const&>(*image.pixels);
    EXPECT_EQ(pixels.colorAt(17, 1799), desktopColor(1, 17, 1799));
    EXPECT_NE(desktopColor(1, 17, 1799), desktopColor(1, 18, 1799));
    EXPECT_NE(desktopColor(1, 17, 1799), desktopColor(2, 17, 1799));
    EXPECT_TRUE(pixels.isClean());
}

TEST_F(SimulatedDesktopTest, AWindowOfTrovelsShowsInAPicture) {
    cover();
    auto const image = capture();
    auto const& pixels = dynamic_cast<SimulatedPixels const&>(*image.pixels);
    EXPECT_EQ(pixels.colorAt(0, 0), kOverlayColor);
    EXPECT_FALSE(pixels.isClean());
    window->orderOut();
    auto const second = capture();
    EXPECT_TRUE(dynamic_cast<SimulatedPixels const&>(*second.pixels).isClean());
}

TEST_F(SimulatedDesktopTest, ThePointerShowsWhereItIsAskedFor) {
    desktop.user.movePointer({100, 900 - 50});
    auto const with = capture(true);
    auto const& pixels = dynamic_cast<SimulatedPixels const&>(*with.pixels);
    EXPECT_EQ(pixels.colorAt(200, 99), kPointerColor);
    EXPECT_FALSE(pixels.isClean());
    auto const without = capture(false);
    EXPECT_TRUE(dynamic_cast<SimulatedPixels const&>(*without.pixels).isClean());
}

TEST_F(SimulatedDesktopTest, ADisplayThatIsGoneCannotBeCaptured) {
    std::string error;
    platform.worker.run([&] {
        auto const display = platform.capturer.shareableDisplays()->front();
        desktop.screens.detach(1);
        error = platform.capturer.captureImage(display, {10, 10, false, false}).error();
    });
    desktop.queue.advance(1s);
    EXPECT_EQ(error, "The display is not attached any more.");
    EXPECT_THAT(platform.screens.screens(), IsEmpty());
}

TEST_F(SimulatedDesktopTest, WorkerTasksTakeTheirTimeOneAfterTheOther) {
    std::vector<MainQueue::Duration> ends;
    desktop.worker.setLatency(30ms);
    for (int task = 0; task < 2; ++task) {
        platform.worker.run([&] { ends.push_back(desktop.queue.now()); });
    }
    desktop.queue.advance(1s);
    EXPECT_THAT(ends, ElementsAre(30ms, 60ms));
}

TEST_F(SimulatedDesktopTest, AWorkerTaskThatTakesNoTimeIsThroughAtOnceUnlessAnotherRuns) {
    bool ran = false;
    desktop.worker.setLatency(30ms);
    platform.worker.run([] {});
    desktop.worker.setLatency(0ms);
    platform.worker.run([&] { ran = true; });
    EXPECT_FALSE(ran);
    desktop.queue.advance(30ms);
    EXPECT_TRUE(ran);
    ran = false;
    platform.worker.run([&] { ran = desktop.worker.isRunningTask(); });
    EXPECT_TRUE(ran);
    EXPECT_FALSE(desktop.worker.isRunningTask());
}

TEST_F(SimulatedDesktopTest, AnAlertLastsAsLongAsTheUserReads) {
    desktop.alerts.setReadingTime(700ms);
    platform.alerts.runModal({"Trovel", "Text.", AlertStyle::informational, {"OK"}});
    EXPECT_EQ(desktop.queue.now(), 700ms);
    EXPECT_THAT(desktop.alerts.shown(), IsEmpty());
}

TEST_F(SimulatedDesktopTest, ReturnAndEscapeCloseAnAlertThatHasTheKeyboard) {
    desktop.alerts.setReadingTime(std::nullopt);
    for (auto const key : {kKeyReturn, kKeyEscape}) {
        auto const begin = desktop.queue.now();
        platform.application.activate();
        desktop.queue.after(2s, [this, key] { desktop.user.pressKey(key); });
        platform.alerts.runModal({"Trovel", "Text.", AlertStyle::informational, {"OK"}});
        EXPECT_EQ(desktop.queue.now(), begin + 2s);
    }
}

TEST_F(SimulatedDesktopTest, TerminatingClosesAnAlert) {
    desktop.application.launch();
    desktop.alerts.setReadingTime(std::nullopt);
    desktop.queue.after(3s, [this] { platform.application.terminate(); });
    platform.alerts.runModal({"Trovel", "Text.", AlertStyle::informational, {"OK"}});
    EXPECT_EQ(desktop.queue.now(), 3s);
}

TEST_F(SimulatedDesktopTest, AFaultStrikesOnceAlwaysOrByTheSeed) {
    auto const fails = [this] {
        return platform.events.keyboardEvent(kKeyV, KeyAction::down) == nullptr;
    };
    desktop.faults.failOnce(Operation::makeKeyEvent);
    EXPECT_TRUE(fails());
    EXPECT_FALSE(fails());
    desktop.faults.failAlways(Operation::makeKeyEvent);
    EXPECT_TRUE(fails() && fails());
    desktop.faults.failSometimes(Operation::makeKeyEvent, 500);
    int failures = 0;
    for (int attempt = 0; attempt < 1000; ++attempt) failures += fails() ? 1 : 0;
    EXPECT_NEAR(failures, 500, 100);
    desktop.faults.heal(Operation::makeKeyEvent);
    EXPECT_FALSE(fails());
}

TEST_F(SimulatedDesktopTest, ARefusedPictureLeavesThePasteboardEmpty) {
    desktop.pasteboard.copyElsewhere("text");
    desktop.faults.failOnce(Operation::writePicture);
    EXPECT_FALSE(platform.pasteboard.writeImage(capture()));
    EXPECT_EQ(desktop.pasteboard.contents(), PasteboardContents());
}

TEST_F(SimulatedDesktopTest, HandlersAreAskedTheNewestFirstUntilOneHandles) {
    auto const handled = [](void* said) {
        static_cast<std::vector<int>*>(said)->push_back(kNoErr);
        return kNoErr;
    };
    auto const refused = [](void* said) {
        static_cast<std::vector<int>*>(said)->push_back(kEventNotHandledErr);
        return kEventNotHandledErr;
    };
    std::vector<int> said;
    platform.hotkeys.installEventHandler(handled, &said);
    platform.hotkeys.installEventHandler(handled, &said);
    platform.hotkeys.installEventHandler(refused, &said);
    platform.hotkeys.registerEventHotKey(19, 768, {1, 1});
    desktop.user.pressDefaultHotkey();
    EXPECT_THAT(said, ElementsAre(kEventNotHandledErr, kNoErr));
}

TEST_F(SimulatedDesktopTest, ACanvasIsDrawnInTheNextTurnOnce) {
    class Canvas final : public CanvasView {
    public:
        using CanvasView::CanvasView;
        ~Canvas() override = default;
        void draw(trovel::Canvas& canvas) const override {
            canvas.fillRect(bounds(), Color::clear(), CompositingOperation::copy);
        }
    };
    Window shown(platform.windows, {});
    auto const view = std::make_shared<Canvas>(Rect{0, 0, 10, 10});
    shown.setContentView(view);
    desktop.queue.drain();
    EXPECT_THAT(desktop.windows.drawing(*view), IsEmpty());
    shown.orderFrontRegardless();
    view->setNeedsDisplay();
    view->setNeedsDisplay();
    EXPECT_THAT(desktop.windows.drawing(*view), IsEmpty());
    desktop.queue.drain();
    EXPECT_EQ(desktop.windows.drawing(*view).size(), 1U);
    EXPECT_EQ(desktop.windows.displayCount(), 1);
}

TEST_F(SimulatedDesktopTest, WindowsStandByLevelAndThenByTheLastOrdering) {
    auto const make = [this](int level) {
        WindowAttributes attributes;
        attributes.level = level;
        attributes.contentRect = {0, 0, 10, 10};
        return std::make_shared<Window>(platform.windows, attributes);
    };
    auto const high = make(kScreenSaverWindowLevel);
    auto const first = make(kNormalWindowLevel);
    auto const second = make(kNormalWindowLevel);
    for (auto const& each : {high, first, second}) each->orderFrontRegardless();
    EXPECT_THAT(desktop.windows.visibleWindows(),
                ElementsAre(high.get(), second.get(), first.get()));
    first->orderFrontRegardless();
    EXPECT_THAT(desktop.windows.visibleWindows(),
                ElementsAre(high.get(), first.get(), second.get()));
    EXPECT_EQ(desktop.windows.windowAt({5, 5}), high.get());
    high->orderOut();
    EXPECT_EQ(desktop.windows.windowAt({5, 5}), first.get());
    EXPECT_EQ(desktop.windows.windowAt({50, 50}), nullptr);
}

TEST_F(SimulatedDesktopTest, TextHasOneWidthForEveryCharacter) {
    auto const font = Font::system(10);
    EXPECT_EQ(simulatedTextSize("320 x 240", font), (Size{54, 12}));
    EXPECT_EQ(simulatedTextSize("⌘⇧2", font), (Size{18, 12}));
}

TEST_F(SimulatedDesktopTest, TheJournalReadsAsOneLineAnEffect) {
    desktop.queue.advance(1500us);
    platform.preferences.setString("key", "a \"word\"");
    ASSERT_EQ(desktop.journal.entries().size(), 1U);
    std::ostringstream stream;
    stream << desktop.journal.entries().front();
    EXPECT_EQ(stream.str(), "1.5 ms: PreferenceWritten key = \"a \\\"word\\\"\"");
}

TEST_F(SimulatedDesktopTest, TheDigestTellsWhetherTheSameThingsHappenedAtTheSameTimes) {
    SimulatedDesktop other;
    auto const act = [](SimulatedDesktop& treated, MainQueue::Duration pause) {
        treated.queue.advance(pause);
        treated.platform().cursors.pushCrosshair();
    };
    act(desktop, 1ms);
    act(other, 1ms);
    EXPECT_EQ(desktop.journal.digest(), other.journal.digest());
    act(desktop, 1ms);
    act(other, 2ms);
    EXPECT_NE(desktop.journal.digest(), other.journal.digest());
    auto const digest = desktop.journal.digest();
    desktop.journal.clear();
    EXPECT_EQ(desktop.journal.digest(), digest);
}

} // namespace
} // namespace trovel
