#include "app/process_entry.h"

#include "tests/support/desktop_test.h"

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// Notes which variables are asked for, in order.
class AskedApplication final : public Application {
public:
    explicit AskedApplication(std::string variable) : variable_(std::move(variable)) {}
    ~AskedApplication() = default;

    bool environmentHas(std::string_view name) const override {
        asked.emplace_back(name);
        return name == variable_;
    }
    void setDelegate(ApplicationDelegate* delegate) override { hasDelegate = delegate != nullptr; }
    void run() override { ++runs; }
    void terminate() override {}
    void activate() override {}
    void activateIgnoringOtherApps() override {}

    mutable std::vector<std::string> asked;
    bool hasDelegate = false;
    int runs = 0;

private:
    std::string variable_;
};

class ProcessEntryTest : public DesktopTest {
protected:
    void runWith(AskedApplication& application) {
        runProcess(with(platform, application, platform.hotkeys), product);
    }
};

TEST_F(ProcessEntryTest, AsksForBothTestBundleVariablesInOrder) {
    AskedApplication application("");
    runWith(application);
    EXPECT_THAT(application.asked, ElementsAre("XCTestBundlePath", "XCTestConfigurationFilePath"));
    EXPECT_TRUE(application.hasDelegate);
    EXPECT_EQ(application.runs, 1);
}

TEST_F(ProcessEntryTest, InATestBundleItRunsWithoutADelegate) {
    AskedApplication application("XCTestBundlePath");
    runWith(application);
    EXPECT_THAT(application.asked, ElementsAre("XCTestBundlePath"));
    EXPECT_FALSE(application.hasDelegate);
    EXPECT_EQ(application.runs, 1);
}

TEST_F(ProcessEntryTest, TheSecondVariableAloneIsEnough) {
    AskedApplication application("XCTestConfigurationFilePath");
    runWith(application);
    EXPECT_FALSE(application.hasDelegate);
    EXPECT_EQ(application.runs, 1);
}

TEST_F(ProcessEntryTest, InATestBundleThereIsNoHotkeyAndNoWindow) {
    desktop.application.setEnvironmentVariable("XCTestConfigurationFilePath");
    desktop.queue.after(1s, [this] {
        EXPECT_EQ(desktop.hotkeys.hotKeyCount(), 0U);
        EXPECT_FALSE(desktop.statusBar.hasItem());
        desktop.application.terminate();
    });
    runProcess(platform, product);
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(effect::Launched{}), Effect(effect::Terminated{})));
}

TEST_F(ProcessEntryTest, OtherwiseTheHotkeyLastsFromLaunchToTermination) {
    desktop.queue.after(1s, [this] {
        EXPECT_TRUE(desktop.hotkeys.isRegistered({19, 768}));
        EXPECT_TRUE(desktop.statusBar.hasItem());
        EXPECT_EQ(desktop.windows.visibleWindows().size(), 1U); // a first run
        desktop.application.terminate();
    });
    runProcess(platform, product);
    EXPECT_EQ(desktop.hotkeys.hotKeyCount(), 0U);
    EXPECT_EQ(desktop.hotkeys.handlerCount(), 0U);
    EXPECT_FALSE(desktop.statusBar.hasItem());
    EXPECT_THAT(desktop.windows.visibleWindows(), IsEmpty());
}

} // namespace
} // namespace trovel
