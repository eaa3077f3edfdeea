#include "delivery/terminal_mode.h"

#include "delivery/terminal_targets.h"
#include "platform/simulated/simulated_pixels.h"
#include "tests/support/desktop_test.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using effect::AlertShown;
using effect::PreferenceWritten;
using testing::ElementsAre;
using testing::IsEmpty;

std::string const kFolder = "/homes/ann/.trovel/captures";
std::string const kPath = kFolder + "/Trovel-1731700000000.png";

AlertShown shown(std::string sentence) {
    return {{"Trovel", std::move(sentence), AlertStyle::informational, {"OK"}}};
}

class TerminalModeTest : public DesktopTest {
protected:
    TerminalModeTest() {
        auto const moment = std::make_shared<SimulatedPixels::Moment>(
            SimulatedPixels::Moment{1, {0, 0, 2880, 1800}, {}, {}});
        image = {std::make_shared<SimulatedPixels>(moment, PixelRect{0, 0, 60, 40}), {30, 20}};
    }

    /// Starts a program and says who it is.
    RunningApplication start(std::string name, std::string bundleIdentifier) {
        auto const& program =
            desktop.workspace.start(chatProgram(std::move(name), std::move(bundleIdentifier)));
        return {program.processIdentifier, program.bundleIdentifier, program.localizedName,
                program.activationPolicy};
    }
    /// So many captures of long ago, one a second.
    void putOldCaptures(int count) {
        for (int index = 0; index < count; ++index) {
            desktop.files.put(kFolder + "/Trovel-" + std::to_string(1000 + index) + ".png",
                              FileSystem::Date(1000s + index * 1s));
        }
    }
    void storeTarget(std::int64_t tag) {
        desktop.preferences.store(kTerminalModeEnabled, true);
        desktop.preferences.store(kTerminalModeTarget, tag);
    }
    std::vector<effect::Pasted> pastesOf(RunningApplication const& app) {
        return desktop.workspace.program(app.processIdentifier)->all<effect::Pasted>();
    }
    void expectNothingDelivered() {
        EXPECT_EQ(desktop.pasteboard.changeCount(), 0U);
        EXPECT_EQ(desktop.journal.count<effect::ScriptExecuted>(), 0U);
        EXPECT_EQ(desktop.queue.pending(), 0U);
    }

    Image image;
    std::map<std::int64_t, std::string> titles{
        {2, "Terminal"}, {3, "iTerm"}, {4, "Warp"}, {5, "VS Code"}, {6, "Cursor"}};
    std::optional<RunningApplication> previous;
    std::shared_ptr<int> owner = std::make_shared<int>();
    TerminalMode mode{platform,
                      owner,
                      {.titleOfTarget = [this](std::int64_t tag) -> std::optional<std::string> {
                           if (!titles.contains(tag)) return std::nullopt;
                           return titles.at(tag);
                       },
                       .previousFrontmostApp = [this] { return previous; }}};
};

TEST(TerminalTargets, AreSevenInMenuOrder) {
    std::vector<std::tuple<std::int64_t, std::string, std::string>> rows;
    for (auto const& target : terminalTargets()) {
        rows.emplace_back(target.tag, target.title, target.bundleIdentifier);
    }
    EXPECT_THAT(rows, ElementsAre(std::tuple(0, "Off", ""), std::tuple(1, "Frontmost App", ""),
                                  std::tuple(2, "Terminal", "com.apple.Terminal"),
                                  std::tuple(3, "iTerm", "com.googlecode.iterm2"),
                                  std::tuple(4, "Warp", "dev.warp.Warp-Stable"),
                                  std::tuple(5, "VS Code", "com.microsoft.VSCode"),
                                  std::tuple(6, "Cursor", "com.todesktop.230313mzl4w4u92")));
}

TEST(TerminalTargets, FiveTagsHaveAnIdentifier) {
    for (std::int64_t const tag : {-1, 0, 1, 7, 100}) {
        EXPECT_EQ(terminalTargetBundleID(tag), std::nullopt) << tag;
    }
    EXPECT_EQ(terminalTargetBundleID(2), "com.apple.Terminal");
    EXPECT_EQ(terminalTargetBundleID(3), "com.googlecode.iterm2");
    EXPECT_EQ(terminalTargetBundleID(4), "dev.warp.Warp-Stable");
    EXPECT_EQ(terminalTargetBundleID(5), "com.microsoft.VSCode");
    EXPECT_EQ(terminalTargetBundleID(6), "com.todesktop.230313mzl4w4u92");
}

TEST_F(TerminalModeTest, ChoosingATargetStoresBothKeysInOrder) {
    mode.terminalTargetSelected(4);
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(PreferenceWritten{"terminalModeEnabled", true}),
                            Effect(PreferenceWritten{"terminalModeTarget", std::int64_t{4}})));
}

TEST_F(TerminalModeTest, ChoosingOffStoresFalseAndZero) {
    mode.terminalTargetSelected(4);
    mode.terminalTargetSelected(0);
    EXPECT_EQ(desktop.preferences.stored(kTerminalModeEnabled), PreferenceValue(false));
    EXPECT_EQ(desktop.preferences.stored(kTerminalModeTarget), PreferenceValue(std::int64_t{0}));
}

TEST_F(TerminalModeTest, FromThePictureToThePastedPathInOrder) {
    auto const warp = start("Warp", "dev.warp.Warp-Stable");
    storeTarget(4);
    desktop.preferences.store(kAutoSendEnabled, true);
    mode.deliverToTerminal(image);
    desktop.user.wait(1min);
    auto const size = simulatedPng(image).size();
    EXPECT_THAT(
        desktop.journal.entries(),
        ElementsAre(at(0s, effect::FolderMade{kFolder}), at(0s, effect::FileWritten{kPath, size}),
                    at(0s, effect::PasteboardCleared{}), at(0s, effect::TextWritten{kPath + " "}),
                    at(0s, effect::ScriptExecuted{"tell application \"Warp\" to activate"}),
                    at(50ms, effect::FrontmostChanged{warp.processIdentifier}),
                    at(600ms, effect::KeyPosted{9, KeyAction::down, 0x100000}),
                    at(600ms, effect::KeyPosted{9, KeyAction::up, 0x100000}),
                    at(600ms, effect::Pasted{warp.processIdentifier, kPath + " "})));
    EXPECT_EQ(desktop.files.files().at(kPath).contents, simulatedPng(image));
    EXPECT_EQ(desktop.pasteboard.image().pixels, nullptr);
    EXPECT_EQ(desktop.queue.pending(), 0U);
}

TEST_F(TerminalModeTest, ATargetThatComesWhileItIsAskedIsInFrontAtTheFirstCheck) {
    auto const warp = start("Warp", "dev.warp.Warp-Stable");
    desktop.workspace.program(warp.processIdentifier)->activationDelay = 0ms;
    storeTarget(4);
    mode.deliverToTerminal(image);
    desktop.user.wait(1min);
    EXPECT_THAT(desktop.journal.timesOf<effect::Pasted>(), ElementsAre(500ms));
}

TEST_F(TerminalModeTest, OfTwoCapturesOfOneMillisecondTheSecondReplacesTheFirst) {
    mode.deliverToTerminal(image);
    image.size = {60, 40};
    mode.deliverToTerminal(image);
    EXPECT_EQ(desktop.files.files().size(), 1U);
    EXPECT_EQ(desktop.files.files().at(kPath).contents, simulatedPng(image));
    desktop.user.wait(1ms);
    mode.deliverToTerminal(image);
    EXPECT_EQ(desktop.files.files().size(), 2U);
}

TEST_F(TerminalModeTest, FiftyCapturesAreKept) {
    for (int capture = 0; capture < 53; ++capture) {
        mode.deliverToTerminal(image);
        desktop.user.wait(1s);
    }
    EXPECT_EQ(desktop.files.files().size(), 50U);
    EXPECT_EQ(desktop.files.files().begin()->first, kFolder + "/Trovel-1731700003000.png");
}

TEST_F(TerminalModeTest, TheOldestCaptureGoesAfterTheSaveAndBeforeThePasteboardIsTouched) {
    putOldCaptures(50);
    mode.deliverToTerminal(image);
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(effect::FolderMade{kFolder}),
                            Effect(effect::FileWritten{kPath, simulatedPng(image).size()}),
                            Effect(effect::FileRemoved{kFolder + "/Trovel-1000.png"}),
                            Effect(effect::PasteboardCleared{}),
                            Effect(effect::TextWritten{kPath + " "})));
}

TEST_F(TerminalModeTest, AFailedSaveRemovesNoOlderCapture) {
    putOldCaptures(60);
    for (auto const fault : {Operation::encodePicture, Operation::makeFolder, Operation::writeFile,
                             Operation::keepFile}) {
        desktop.faults.failOnce(fault);
        mode.deliverToTerminal(image);
    }
    EXPECT_EQ(desktop.journal.count<AlertShown>(), 4U);
    EXPECT_EQ(desktop.journal.count<effect::FileRemoved>(), 0U);
    expectNothingDelivered();
}

TEST_F(TerminalModeTest, ARefusedTextGoesUnreportedAndThePasteIsTriedAllTheSame) {
    start("Warp", "dev.warp.Warp-Stable");
    storeTarget(4);
    desktop.faults.failOnce(Operation::writeText);
    mode.deliverToTerminal(image);
    desktop.user.wait(1min);
    EXPECT_EQ(desktop.journal.count<effect::KeyPosted>(), 2U);
    EXPECT_EQ(desktop.journal.count<AlertShown>(), 0U);
}

TEST_F(TerminalModeTest, APictureThatCannotBeEncodedIsReportedBeforeAnythingIsDone) {
    desktop.faults.failAlways(Operation::encodePicture);
    mode.deliverToTerminal(image);
    EXPECT_THAT(desktop.journal.all<AlertShown>(),
                ElementsAre(shown("Failed to encode screenshot.")));
    EXPECT_EQ(desktop.journal.count<effect::FolderMade>(), 0U);
    EXPECT_THAT(desktop.files.folders(), IsEmpty());
    expectNothingDelivered();
}

TEST_F(TerminalModeTest, AFolderThatCannotBeMadeIsReported) {
    desktop.files.put("/homes/ann/.trovel", std::nullopt); // a file in its place
    mode.deliverToTerminal(image);
    EXPECT_THAT(desktop.journal.all<AlertShown>(),
                ElementsAre(shown("Could not create captures directory.")));
    expectNothingDelivered();
}

TEST_F(TerminalModeTest, AFileThatCannotBeWrittenIsReportedAndStaysAsFarAsItIs) {
    desktop.faults.failOnce(Operation::writeFile);
    mode.deliverToTerminal(image);
    EXPECT_THAT(desktop.journal.all<AlertShown>(),
                ElementsAre(shown("Failed to save screenshot to disk.")));
    EXPECT_TRUE(desktop.files.fileExists(kPath));
    expectNothingDelivered();
}

TEST_F(TerminalModeTest, AFileThatIsGoneAfterTheWriteIsReported) {
    desktop.faults.failOnce(Operation::keepFile);
    mode.deliverToTerminal(image);
    EXPECT_THAT(desktop.journal.all<AlertShown>(),
                ElementsAre(shown("Screenshot file not found after save.")));
    expectNothingDelivered();
}

TEST_F(TerminalModeTest, AFailureActivatesTheProgramBeforeItsAlert) {
    desktop.faults.failAlways(Operation::encodePicture);
    mode.deliverToTerminal(image);
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(effect::FaultStruck{Operation::encodePicture}),
                            Effect(effect::ActivationAsked{false}),
                            Effect(effect::FrontmostChanged{kTrovelProcess}),
                            Effect(shown("Failed to encode screenshot.")),
                            Effect(effect::AlertClosed{})));
}

TEST_F(TerminalModeTest, AFolderThatCannotBeListedDoesNotStopTheDelivery) {
    desktop.faults.failAlways(Operation::listFolder);
    mode.deliverToTerminal(image);
    EXPECT_EQ(desktop.pasteboard.contents(), PasteboardContents(kPath + " "));
    EXPECT_EQ(desktop.journal.count<AlertShown>(), 0U);
}

TEST_F(TerminalModeTest, AStoppedTargetIsNamedAndThePathStaysOnThePasteboard) {
    for (auto const& [tag, name] :
         {std::pair(2, "Terminal"), std::pair(3, "iTerm"), std::pair(4, "Warp"),
          std::pair(5, "VS Code"), std::pair(6, "Cursor")}) {
        storeTarget(tag);
        desktop.journal.clear();
        mode.deliverToTerminal(image);
        EXPECT_THAT(desktop.journal.all<AlertShown>(),
                    ElementsAre(shown(std::string(name) + " is not running.")));
        auto const newest = desktop.files.files().rbegin()->first;
        EXPECT_EQ(desktop.pasteboard.contents(), PasteboardContents(newest + " "));
        EXPECT_EQ(desktop.journal.count<effect::ScriptExecuted>(), 0U);
        EXPECT_EQ(desktop.queue.pending(), 0U);
    }
}

TEST_F(TerminalModeTest, AStoppedTargetWithoutATitleIsTheSelectedApp) {
    storeTarget(6);
    titles.erase(6);
    mode.deliverToTerminal(image);
    EXPECT_THAT(desktop.journal.all<AlertShown>(),
                ElementsAre(shown("Selected app is not running.")));
}

TEST_F(TerminalModeTest, TheTargetsIdentifierMustBeTheWholeOneAndTheFirstOfTwoIsTaken) {
    start("Warp Preview", "dev.warp.Warp-Stable-Preview");
    auto const first = start("Warp", "dev.warp.Warp-Stable");
    auto const second = start("Warp", "dev.warp.Warp-Stable");
    storeTarget(4);
    mode.deliverToTerminal(image);
    // Two of one name: the script asks by name, and the system's choice is the first as well.
    desktop.user.wait(1min);
    EXPECT_EQ(pastesOf(first).size(), 1U);
    EXPECT_THAT(pastesOf(second), IsEmpty());
}

TEST_F(TerminalModeTest, FrontmostAppIsTheOneThatWasInFrontBeforeTheCapture) {
    previous = start("Kitty", "net.example.kitty");
    start("Terminal", "com.apple.Terminal");
    storeTarget(1);
    desktop.workspace.bringToFront(kTrovelProcess);
    mode.deliverToTerminal(image);
    desktop.user.wait(1min);
    EXPECT_EQ(pastesOf(*previous).size(), 1U);
    EXPECT_EQ(desktop.journal.count<AlertShown>(), 0U);
}

TEST_F(TerminalModeTest, ATargetThatTheTableDoesNotKnowIsTheFrontmostAppToo) {
    previous = start("Kitty", "net.example.kitty");
    std::size_t pastes = 0;
    for (std::int64_t const tag : {0, 7, -3}) {
        storeTarget(tag);
        mode.deliverToTerminal(image);
        desktop.user.wait(1min);
        EXPECT_EQ(pastesOf(*previous).size(), ++pastes) << tag;
    }
    desktop.preferences.remove(kTerminalModeTarget);
    mode.deliverToTerminal(image);
    desktop.user.wait(1min);
    EXPECT_EQ(pastesOf(*previous).size(), ++pastes);
}

TEST_F(TerminalModeTest, WithoutAPreviousAppTheDeliveryEndsSilentlyWithThePathOnThePasteboard) {
    storeTarget(1);
    mode.deliverToTerminal(image);
    EXPECT_EQ(desktop.pasteboard.contents(), PasteboardContents(kPath + " "));
    EXPECT_EQ(desktop.journal.count<AlertShown>(), 0U);
    EXPECT_EQ(desktop.journal.count<effect::ScriptExecuted>(), 0U);
    EXPECT_EQ(desktop.queue.pending(), 0U);
}

TEST_F(TerminalModeTest, ATargetThatNeverComesToTheFrontIsReportedAndNothingIsPasted) {
    auto const warp = start("Warp", "dev.warp.Warp-Stable");
    desktop.workspace.program(warp.processIdentifier)->refusesActivation = true;
    storeTarget(4);
    mode.deliverToTerminal(image);
    desktop.user.wait(1min);
    EXPECT_THAT(desktop.journal.all<AlertShown>(),
                ElementsAre(shown("Could not bring the target app to front. The screenshot is on "
                                  "your clipboard — paste it manually.")));
    EXPECT_THAT(desktop.journal.timesOf<AlertShown>(), ElementsAre(2s));
    EXPECT_EQ(desktop.journal.count<effect::KeyPosted>(), 0U);
    EXPECT_EQ(desktop.pasteboard.contents(), PasteboardContents(kPath + " "));
}

TEST_F(TerminalModeTest, AScriptThatFailsChangesNothingForATargetInFront) {
    auto const warp = start("Warp", "dev.warp.Warp-Stable");
    desktop.workspace.bringToFront(warp.processIdentifier);
    desktop.faults.failAlways(Operation::executeScript);
    storeTarget(4);
    mode.deliverToTerminal(image);
    desktop.user.wait(1min);
    EXPECT_THAT(desktop.journal.timesOf<effect::Pasted>(), ElementsAre(500ms));
}

TEST_F(TerminalModeTest, AnOwnerThatIsGoneEndsTheWait) {
    start("Warp", "dev.warp.Warp-Stable");
    storeTarget(4);
    mode.deliverToTerminal(image);
    owner.reset();
    desktop.user.wait(1min);
    EXPECT_EQ(desktop.journal.count<effect::KeyPosted>(), 0U);
    EXPECT_EQ(desktop.journal.count<AlertShown>(), 0U);
}

} // namespace
} // namespace trovel
