#include "platform/accessibility.h"
#include "platform/alerts.h"
#include "platform/bundle_info.h"
#include "platform/event_synthesizer.h"
#include "platform/file_system.h"
#include "platform/hotkey_service.h"
#include "platform/image_encoder.h"
#include "platform/login_item.h"
#include "platform/macos/bridge/image_mac.h"
#include "platform/open_panels.h"
#include "platform/pasteboard.h"
#include "platform/permissions.h"
#include "platform/preference_store.h"
#include "platform/process_host.h"
#include "platform/running_application.h"
#include "platform/ui/icons.h"
#include "platform/updater.h"
#include "platform/workspace.h"
#include "tests/macos/run/fakes/images.h"
#include "tests/macos/run/mac_test.h"

#import <ServiceManagement/ServiceManagement.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace trovel {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::SizeIs;

class ServicesMac : public MacTest {
protected:
    fakes::Program& start(std::string name) {
        fakes::Program program;
        program.name = std::move(name);
        program.bundleIdentifier = "com.example.program";
        program.window = CGRectMake(10, 20, 300, 200);
        return mac().start(std::move(program));
    }
    static std::string mode(fs::path const& path) {
        return std::to_string(static_cast<int>(fs::status(path).permissions()));
    }
    Image picture() {
        CFOwner<CGImageRef> native(
            fakes::makePicture(2, 1, [](long x, long) { return x == 0 ? 0x112233U : 0x445566U; }));
        return {std::make_shared<PixelImageMac>(std::move(native)), {1, 0.5}};
    }

    static std::int32_t countPress(void* userData) {
        ++*static_cast<int*>(userData);
        return kNoErr;
    }

    int presses = 0;
};

TEST_F(ServicesMac, AProgramThatHangsIsAskedForTwoSecondsAtMost) {
    auto& program = start("Stuck");
    program.accessibility = fakes::Program::Accessibility::hangs;
    EXPECT_EQ(platform.accessibility.focusedWindow(program.processIdentifier), nullptr);
    EXPECT_EQ(mac().timeInHungReads, 1s);
    EXPECT_EQ(platform.accessibility.windows(program.processIdentifier), std::nullopt);
    EXPECT_EQ(mac().timeInHungReads, 2s);
}

TEST_F(ServicesMac, AWindowOfAProgramThatBeginsToHangIsNotWaitedForEither) {
    auto& program = start("Slow");
    auto const window = platform.accessibility.focusedWindow(program.processIdentifier);
    ASSERT_TRUE(window);
    program.accessibility = fakes::Program::Accessibility::hangs;
    EXPECT_EQ(window->position(), std::nullopt);
    EXPECT_EQ(window->size(), std::nullopt);
    EXPECT_EQ(window->size(), std::nullopt);
    EXPECT_EQ(mac().timeInHungReads, 2s);
}

TEST_F(ServicesMac, AccessibilityThatIsRefusedOrEmptyGivesNoWindow) {
    auto& program = start("Shy");
    program.accessibility = fakes::Program::Accessibility::isRefused;
    EXPECT_EQ(platform.accessibility.focusedWindow(program.processIdentifier), nullptr);
    EXPECT_EQ(platform.accessibility.windows(program.processIdentifier), std::nullopt);
    program.accessibility = fakes::Program::Accessibility::hasNoWindow;
    EXPECT_EQ(platform.accessibility.focusedWindow(program.processIdentifier), nullptr);
    EXPECT_THAT(platform.accessibility.windows(program.processIdentifier), Optional(IsEmpty()));
    program.accessibility = fakes::Program::Accessibility::answers;
    mac().isTrusted = false;
    EXPECT_EQ(platform.accessibility.focusedWindow(program.processIdentifier), nullptr);
}

TEST_F(ServicesMac, WithoutAnEventSourceKeysArePostedAllTheSame) {
    auto const& program = start("Editor");
    mac().hasEventSource = false;
    auto const event = platform.events.keyboardEvent(kKeyReturn, KeyAction::down);
    ASSERT_TRUE(event);
    event->setFlags(0);
    event->post();
    EXPECT_THAT(program.keys, ElementsAre(kKeyReturn));
}

TEST_F(ServicesMac, WithoutTrustNothingIsPosted) {
    auto const& program = start("Editor");
    mac().isTrusted = false;
    platform.events.keyboardEvent(kKeyReturn, KeyAction::down)->post();
    EXPECT_THAT(program.keys, IsEmpty());
}

TEST_F(ServicesMac, ARefusedHotKeyIsNone) {
    mac().refusesHotKeys = true;
    EXPECT_EQ(platform.hotkeys.registerEventHotKey(19, 0x300, {0, 1}), std::nullopt);
    EXPECT_THAT(mac().hotKeys, IsEmpty());
}

TEST_F(ServicesMac, ASuspendedHotKeyLetsItsKeysThroughUntilItsKeyIsUp) {
    auto const handler = platform.hotkeys.installEventHandler(countPress, &presses);
    auto const hotKey = platform.hotkeys.registerEventHotKey(19, 0x300, {0, 1});
    auto suspension = platform.hotkeys.suspend();
    EXPECT_THAT(mac().hotKeys, IsEmpty());
    mac().keyDown(19, kFlagCommand | kFlagShift);
    suspension.reset();
    session.wait(3s);
    EXPECT_THAT(mac().hotKeys, IsEmpty());
    mac().keyUp(19);
    session.wait(100ms);
    EXPECT_THAT(mac().hotKeys, SizeIs(1));
    EXPECT_EQ(presses, 0);
    press(19, kFlagCommand | kFlagShift, "");
    EXPECT_EQ(presses, 1);
    platform.hotkeys.unregisterEventHotKey(*hotKey);
    platform.hotkeys.removeEventHandler(*handler);
    EXPECT_THAT(mac().eventHandlers, IsEmpty());
}

TEST_F(ServicesMac, AHotKeyThatIsRegisteredDuringASuspensionWaitsToo) {
    auto suspension = platform.hotkeys.suspend();
    auto const hotKey = platform.hotkeys.registerEventHotKey(20, 0x100, {0, 1});
    ASSERT_TRUE(hotKey);
    EXPECT_THAT(mac().hotKeys, IsEmpty());
    suspension.reset();
    EXPECT_THAT(mac().hotKeys, SizeIs(1));
    platform.hotkeys.unregisterEventHotKey(*hotKey);
    EXPECT_THAT(mac().hotKeys, IsEmpty());
}

TEST_F(ServicesMac, AnAlertSaysWhatItIsGiven) {
    mac().runLoop.later(10ms, [&] {
        NSAlert* const alert = mac().alerts.back();
        EXPECT_EQ(alert.alertStyle, NSAlertStyleInformational);
        ASSERT_EQ(alert->buttons_.size(), 2U);
        EXPECT_EQ(fakes::toText(alert->buttons_[0].title), "OK");
        EXPECT_EQ(fakes::toText(alert->buttons_[1].title), "Cancel");
        EXPECT_TRUE(alert.icon == NSApplication.sharedApplication.applicationIconImage);
        mac().closeAlert();
    });
    platform.alerts.runModal(
        {"Title", "Zoë said so.", AlertStyle::informational, {"OK", "Cancel"}, true});
    EXPECT_EQ(mac().count("alert Title: Zoë said so."), 1);
}

TEST_F(ServicesMac, TheOpenPanelAsksAsItIsToldAndAnswersWithThePath) {
    OpenPanel panel;
    panel.title = "Choose an App";
    panel.directory = "/Applications";
    panel.applicationsOnly = true;
    EXPECT_EQ(platform.openPanels.runModal(panel), std::nullopt);
    mac().panels.chosenPath = "/Applications/Chat.app";
    mac().runLoop.later(100ms, [&] {
        NSOpenPanel* const native = static_cast<NSOpenPanel*>(mac().windows.back());
        EXPECT_EQ(fakes::toText(native.title), "Choose an App");
        EXPECT_TRUE(native.canChooseFiles);
        EXPECT_FALSE(native.canChooseDirectories);
        EXPECT_FALSE(native.allowsMultipleSelection);
        EXPECT_EQ(native.allowedContentTypes.count, 1U);
    });
    EXPECT_EQ(platform.openPanels.runModal(panel), "/Applications/Chat.app");
    EXPECT_EQ(mac().count("open panel in /Applications"), 2);
}

TEST_F(ServicesMac, ABundleSaysWhoItIs) {
    EXPECT_EQ(platform.openPanels.bundleAtPath("/nowhere"), std::nullopt);
    mac().installed["com.example.chat"] = "/Applications/Chat.app";
    mac().bundleInfo["CFBundleName"] = @"Chat";
    auto const bundle = platform.openPanels.bundleAtPath("/Applications/Chat.app");
    ASSERT_TRUE(bundle);
    EXPECT_EQ(bundle->bundleIdentifier, "com.example.chat");
    EXPECT_EQ(bundle->bundleName, "Chat");
    EXPECT_EQ(platform.bundle.stringForKey("CFBundleName"), "Chat");
    EXPECT_EQ(platform.bundle.stringForKey("CFBundleVersion"), std::nullopt);
    mac().bundleInfo["CFBundleVersion"] = @7;
    EXPECT_EQ(platform.bundle.stringForKey("CFBundleVersion"), std::nullopt);
}

TEST_F(ServicesMac, TheLoginItemIsRegisteredAndTakenBackAndSaysWhyNot) {
    EXPECT_EQ(platform.loginItem.status(), LoginItemStatus::notRegistered);
    EXPECT_TRUE(platform.loginItem.registerItem());
    EXPECT_EQ(platform.loginItem.status(), LoginItemStatus::enabled);
    EXPECT_TRUE(platform.loginItem.unregisterItem());
    EXPECT_EQ(platform.loginItem.status(), LoginItemStatus::notRegistered);
    mac().loginItemError = "Operation not permitted";
    EXPECT_EQ(platform.loginItem.registerItem().error(), "Operation not permitted");
    EXPECT_EQ(platform.loginItem.unregisterItem().error(), "Operation not permitted");
    mac().loginItemStatus = SMAppServiceStatusRequiresApproval;
    EXPECT_EQ(platform.loginItem.status(), LoginItemStatus::requiresApproval);
    mac().loginItemStatus = SMAppServiceStatusNotFound;
    EXPECT_EQ(platform.loginItem.status(), LoginItemStatus::notFound);
    mac().loginItemStatus = 99;
    EXPECT_EQ(platform.loginItem.status(), LoginItemStatus::notFound);
}

TEST_F(ServicesMac, TheUpdaterIsStartedAndAsked) {
    auto const updater = platform.updater.makeStandardController();
    updater->checkForUpdates(nullptr);
    EXPECT_EQ(mac().count("SPUStandardUpdaterController initWithStartingUpdater:updaterDelegate:"
                          "userDriverDelegate:"),
              1);
    EXPECT_EQ(mac().count("SPUStandardUpdaterController checkForUpdates:"), 1);
}

TEST_F(ServicesMac, FilesAreTheUsersAlone) {
    auto const folder = mac().home + "/Pictures/Deep";
    auto const file = folder + "/one.png";
    ASSERT_TRUE(platform.files.createDirectory(folder));
    EXPECT_EQ(mode(folder), std::to_string(0700));
    EXPECT_TRUE(platform.files.createDirectory(folder));
    std::array<std::uint8_t, 3> const bytes{1, 2, 3};
    ASSERT_TRUE(platform.files.writeFile(file, bytes));
    EXPECT_EQ(mode(file), std::to_string(0600));
    EXPECT_EQ(fs::file_size(file), 3U);
    EXPECT_TRUE(platform.files.fileExists(file));
    std::ofstream(folder + "/.hidden") << "x";
    EXPECT_THAT(platform.files.contentsOfDirectory(folder), Optional(ElementsAre(file)));
    EXPECT_TRUE(platform.files.creationDate(file));
    EXPECT_TRUE(platform.files.removeItem(file));
    EXPECT_FALSE(platform.files.fileExists(file));
    EXPECT_EQ(platform.files.homeDirectory(), mac().home);
}

TEST_F(ServicesMac, AFolderInsteadOfAFileIsNeitherWrittenNorTakenAway) {
    auto const folder = mac().home + "/folder";
    fs::create_directories(folder + "/inner");
    std::array<std::uint8_t, 1> const bytes{1};
    EXPECT_FALSE(platform.files.writeFile(folder, bytes));
    EXPECT_FALSE(platform.files.removeItem(folder));
    EXPECT_TRUE(fs::exists(folder + "/inner"));
    std::ofstream(mac().home + "/file") << "x";
    EXPECT_FALSE(platform.files.createDirectory(mac().home + "/file"));
    EXPECT_EQ(platform.files.contentsOfDirectory(mac().home + "/none"), std::nullopt);
    EXPECT_EQ(platform.files.creationDate(mac().home + "/none"), std::nullopt);
}

TEST_F(ServicesMac, ThePictureBecomesAFilePixelForPixel) {
    auto const png = platform.imageEncoder.pngRepresentation(picture());
    ASSERT_TRUE(png);
    std::vector<std::uint32_t> words(png->size() / sizeof(std::uint32_t));
    std::memcpy(words.data(), png->data(), png->size());
    EXPECT_THAT(words, ElementsAre(2U, 1U, 0x112233U, 0x445566U));
}

TEST_F(ServicesMac, WhatIsWrittenTakesTheWholePasteboard) {
    EXPECT_FALSE(platform.pasteboard.writeText("too soon"));
    platform.pasteboard.clearContents();
    EXPECT_TRUE(platform.pasteboard.writeText("Zoë"));
    EXPECT_EQ(fakes::toText([mac().pasted objectAtIndex:0]), "Zoë");
    platform.pasteboard.clearContents();
    EXPECT_TRUE(platform.pasteboard.writeImage(picture()));
    NSImage* const image = [mac().pasted objectAtIndex:0];
    EXPECT_EQ(image->size_.height, 0.5);
}

TEST_F(ServicesMac, GrantsAreAskedForWithAPrompt) {
    mac().isTrusted = false;
    mac().mayRecordScreen = false;
    EXPECT_FALSE(platform.permissions.isAccessibilityTrusted());
    EXPECT_FALSE(platform.permissions.preflightScreenCapture());
    platform.permissions.promptForAccessibility();
    platform.permissions.requestScreenCapture();
    EXPECT_EQ(mac().count("ask for accessibility"), 1);
    EXPECT_EQ(mac().count("ask for screen recording"), 1);
}

TEST_F(ServicesMac, OnlyAddressesAreOpened) {
    platform.workspace.openUrl("https://trovel.example/changelog");
    platform.workspace.openUrl("no address");
    platform.workspace.openUrl("");
    EXPECT_THAT(mac().journal, ElementsAre("open https://trovel.example/changelog"));
}

TEST_F(ServicesMac, ProgramsAreWhatTheySayTheyAre) {
    auto& program = start("Agent");
    program.policy = NSApplicationActivationPolicyAccessory;
    auto const found =
        platform.workspace.runningApplicationsWithBundleIdentifier("com.example.program");
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found.front().activationPolicy, ActivationPolicy::accessory);
    EXPECT_EQ(found.front().localizedName, "Agent");
    program.policy = NSApplicationActivationPolicyProhibited;
    EXPECT_EQ(platform.workspace.frontmostApplication()->activationPolicy,
              ActivationPolicy::prohibited);
    EXPECT_THAT(platform.workspace.runningApplicationsWithBundleIdentifier("other"), IsEmpty());
}

TEST_F(ServicesMac, IconsAreTwiceAsManyPixelsAsPoints) {
    auto const& program = start("Chat");
    RunningApplication const running{program.processIdentifier, {}, {}, {}};
    auto const icon = platform.icons.iconOfRunningApplication(running, 32);
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->image.pixels->widthPixels(), 64);
    EXPECT_EQ(icon->image.size, (Size{32, 32}));
    EXPECT_EQ(platform.icons.iconOfRunningApplication({1, {}, {}, {}}, 32), std::nullopt);
    EXPECT_EQ(platform.icons.iconOfInstalledApplication("com.example.chat", 32), std::nullopt);
    mac().installed["com.example.chat"] = "/Applications/Chat.app";
    EXPECT_TRUE(platform.icons.iconOfInstalledApplication("com.example.chat", 32));
    EXPECT_TRUE(platform.icons.hasSystemSymbol("camera"));
    EXPECT_FALSE(platform.icons.hasSystemSymbol("no such symbol"));
}

TEST_F(ServicesMac, AChildIsStartedWithItsArgumentsInOrder) {
    std::array<std::string, 2> const arguments{"-c", "sleep 1; open \"$0\""};
    EXPECT_TRUE(platform.process.startChild("/bin/bash", arguments));
    EXPECT_EQ(mac().count("launch /bin/bash -c sleep 1; open \"$0\""), 1);
    EXPECT_EQ(platform.process.bundlePath(), "/Applications/Trovel.app");
    EXPECT_EQ(platform.process.processIdentifier(), fakes::kOwnProcess);
    EXPECT_TRUE(platform.process.isSystemAtLeast(15, 0));
    EXPECT_FALSE(platform.process.isSystemAtLeast(16, 0));
}

} // namespace
} // namespace trovel
