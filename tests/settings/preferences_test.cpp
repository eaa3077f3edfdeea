#include "settings/preferences.h"

#include "platform/simulated/simulated_desktop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace trovel {
namespace {

using testing::ElementsAre;

class PreferencesTest : public testing::Test {
protected:
    SimulatedDesktop desktop;
    SimulatedPreferenceStore& store = desktop.preferences;
    Preferences preferences{store};
};

TEST_F(PreferencesTest, AnAbsentKeyIsFalseZeroOrNothing) {
    EXPECT_FALSE(preferences.autoSendEnabled());
    EXPECT_FALSE(preferences.hotkeyIsCustom());
    EXPECT_EQ(preferences.hotkeyKeyCode(), 0);
    EXPECT_EQ(preferences.hotkeyModifiers(), 0);
    EXPECT_EQ(preferences.preferredAIApp(), std::nullopt);
    EXPECT_EQ(preferences.customAppName(), std::nullopt);
    EXPECT_EQ(preferences.customAppBundleID(), std::nullopt);
    EXPECT_FALSE(preferences.hasCompletedOnboarding());
    EXPECT_FALSE(preferences.terminalModeEnabled());
    EXPECT_EQ(preferences.terminalModeTarget(), 0);
}

TEST_F(PreferencesTest, ReadingWritesNothing) {
    static_cast<void>(preferences.autoSendEnabled());
    static_cast<void>(preferences.preferredAIApp());
    EXPECT_THAT(desktop.journal.all<effect::PreferenceWritten>(), ElementsAre());
}

TEST_F(PreferencesTest, EveryValueGoesUnderItsOwnKey) {
    preferences.setAutoSendEnabled(true);
    preferences.setHotkeyIsCustom(true);
    preferences.setHotkeyKeyCode(122);
    preferences.setHotkeyModifiers(6144);
    preferences.setPreferredAIApp("MyTool");
    preferences.setCustomAppName("MyTool");
    preferences.setCustomAppBundleID("com.example.tool");
    preferences.setHasCompletedOnboarding(true);
    preferences.setTerminalModeEnabled(true);
    preferences.setTerminalModeTarget(4);
    using Written = effect::PreferenceWritten;
    EXPECT_THAT(desktop.journal.all<Written>(),
                ElementsAre(Written{"autoSendEnabled", true}, Written{"hotkeyIsCustom", true},
                            Written{"hotkeyKeyCode", std::int64_t{122}},
                            Written{"hotkeyModifiers", std::int64_t{6144}},
                            Written{"preferredAIApp", "MyTool"}, Written{"customAppName", "MyTool"},
                            Written{"customAppBundleID", "com.example.tool"},
                            Written{"hasCompletedOnboarding", true},
                            Written{"terminalModeEnabled", true},
                            Written{"terminalModeTarget", std::int64_t{4}}));
}

TEST_F(PreferencesTest, AReadSeesWhatTheDatabaseHoldsAtThatMoment) {
    Preferences const reader{store};
    store.store(kAutoSendEnabled, true);
    store.store(kHotkeyIsCustom, true);
    store.store(kHotkeyKeyCode, std::int64_t{-3});
    store.store(kHotkeyModifiers, std::int64_t{4294967296});
    store.store(kPreferredAIApp, std::string("Safari"));
    store.store(kCustomAppName, std::string("A"));
    store.store(kCustomAppBundleID, std::string("b"));
    store.store(kHasCompletedOnboarding, true);
    store.store(kTerminalModeEnabled, true);
    store.store(kTerminalModeTarget, std::int64_t{6});
    EXPECT_TRUE(reader.autoSendEnabled());
    EXPECT_TRUE(reader.hotkeyIsCustom());
    EXPECT_EQ(reader.hotkeyKeyCode(), -3);
    EXPECT_EQ(reader.hotkeyModifiers(), 4294967296);
    EXPECT_EQ(reader.preferredAIApp(), "Safari");
    EXPECT_EQ(reader.customAppName(), "A");
    EXPECT_EQ(reader.customAppBundleID(), "b");
    EXPECT_TRUE(reader.hasCompletedOnboarding());
    EXPECT_TRUE(reader.terminalModeEnabled());
    EXPECT_EQ(reader.terminalModeTarget(), 6);
    store.remove(kPreferredAIApp);
    EXPECT_EQ(reader.preferredAIApp(), std::nullopt);
}

TEST_F(PreferencesTest, NegatingAutoSendTwiceLeavesItStored) {
    for (int i = 0; i < 2; ++i) preferences.setAutoSendEnabled(!preferences.autoSendEnabled());
    EXPECT_FALSE(preferences.autoSendEnabled());
    EXPECT_EQ(store.stored("autoSendEnabled"), PreferenceValue(false));
}

} // namespace
} // namespace trovel
