#include "delivery/ai_app_detector.h"

#include "platform/simulated/simulated_desktop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace trovel {
namespace {

using testing::ElementsAre;
using enum SendBehavior;

constexpr auto kClaude = "com.anthropic.claudefordesktop";
constexpr auto kChatGPT = "com.openai.chat";
constexpr auto kGemini = "com.google.Gemini";
constexpr auto kSafari = "com.apple.Safari";

class AIAppDetectorTest : public testing::Test {
protected:
    AIAppDetectorTest() { desktop.workspace.bringToFront(0); }

    std::int32_t start(std::optional<std::string> bundleIdentifier,
                       ActivationPolicy policy = ActivationPolicy::regular) {
        SimulatedProgram program;
        program.localizedName = "Some name of its own";
        program.bundleIdentifier = std::move(bundleIdentifier);
        program.activationPolicy = policy;
        return desktop.workspace.start(std::move(program)).processIdentifier;
    }
    void prefer(std::string const& name) { desktop.preferences.store(kPreferredAIApp, name); }
    void custom(std::string const& name, std::string const& bundleID) {
        desktop.preferences.store(kCustomAppName, name);
        desktop.preferences.store(kCustomAppBundleID, bundleID);
    }
    std::string detectedName() const {
        auto const target = detector.detectTargetApp();
        return target ? target->name : "";
    }
    std::int32_t detectedProcess() const {
        auto const target = detector.detectTargetApp();
        return target ? target->app.processIdentifier : 0;
    }

    SimulatedDesktop desktop;
    AIAppDetector detector{desktop.workspace, Preferences(desktop.preferences)};
};

TEST_F(AIAppDetectorTest, NothingRunningIsNothing) {
    EXPECT_EQ(detector.detectTargetApp(), std::nullopt);
}

TEST_F(AIAppDetectorTest, TheChoiceWinsWhateverIsInFront) {
    desktop.workspace.bringToFront(start(kClaude));
    auto const gemini = start(kGemini);
    prefer("Gemini");
    EXPECT_EQ(detectedProcess(), gemini);
}

TEST_F(AIAppDetectorTest, AChoiceThatDoesNotRunGivesWayToTheKnownOneInFront) {
    prefer("Gemini");
    start(kClaude);
    desktop.workspace.bringToFront(start(kSafari));
    auto const target = detector.detectTargetApp();
    ASSERT_TRUE(target);
    EXPECT_EQ(target->name, "Safari");
    EXPECT_EQ(target->sendBehavior, enter);
}

TEST_F(AIAppDetectorTest, WithNothingKnownInFrontTheCataloguesOrderDecides) {
    start(kChatGPT);
    start(kClaude);
    desktop.workspace.bringToFront(start("com.example.editor"));
    EXPECT_EQ(detectedName(), "Claude");
}

TEST_F(AIAppDetectorTest, ABrowserInTheBackgroundIsNoTarget) {
    start(kSafari);
    EXPECT_EQ(detector.detectTargetApp(), std::nullopt);
    prefer("Safari");
    EXPECT_EQ(detectedName(), "Safari");
}

TEST_F(AIAppDetectorTest, OfTwoThatMatchTheFirstInTheSystemsListIsTaken) {
    auto const first = start(kClaude);
    start(std::string(kClaude) + ".beta");
    EXPECT_EQ(detectedProcess(), first);
    prefer("Claude");
    EXPECT_EQ(detectedProcess(), first);
}

TEST_F(AIAppDetectorTest, AgentsAndBackgroundProgramsAreNoTargets) {
    start(kClaude, ActivationPolicy::accessory);
    start(kChatGPT, ActivationPolicy::prohibited);
    prefer("Claude");
    EXPECT_EQ(detector.detectTargetApp(), std::nullopt);
}

TEST_F(AIAppDetectorTest, WhatIsInFrontIsATargetWhateverItsPolicy) {
    desktop.workspace.bringToFront(start(kClaude, ActivationPolicy::accessory));
    EXPECT_EQ(detectedName(), "Claude");
}

TEST_F(AIAppDetectorTest, AProgramWithoutAnIdentifierMatchesNothing) {
    desktop.workspace.bringToFront(start(std::nullopt));
    EXPECT_EQ(detector.detectTargetApp(), std::nullopt);
    // Not even a custom choice with an empty identifier, which every other program matches.
    prefer("MyTool");
    custom("MyTool", "");
    EXPECT_EQ(detector.detectTargetApp(), std::nullopt);
}

TEST_F(AIAppDetectorTest, ACustomChoiceMatchesByPrefixUnderItsOwnName) {
    prefer("MyTool");
    custom("MyTool", "com.example.tool");
    auto const agent = start("com.example.tool.agent");
    auto const target = detector.detectTargetApp();
    ASSERT_TRUE(target);
    EXPECT_EQ(target->name, "MyTool");
    EXPECT_EQ(target->bundleIdentifier, "com.example.tool.agent");
    EXPECT_EQ(target->app.processIdentifier, agent);
    EXPECT_EQ(target->sendBehavior, enter);
}

TEST_F(AIAppDetectorTest, ACustomChoiceOfAnotherNameFallsThrough) {
    prefer("MyTool");
    custom("OtherTool", "com.example.tool");
    start("com.example.tool");
    start(kChatGPT);
    EXPECT_EQ(detector.preferredApp(), std::nullopt);
    EXPECT_EQ(detectedName(), "ChatGPT");
}

TEST_F(AIAppDetectorTest, ACustomChoiceWithoutAnIdentifierFallsThrough) {
    prefer("MyTool");
    desktop.preferences.store(kCustomAppName, std::string("MyTool"));
    EXPECT_EQ(detector.preferredApp(), std::nullopt);
}

TEST_F(AIAppDetectorTest, PrefixesHaveNoBoundary) {
    start("com.perplexity.mac");
    EXPECT_EQ(detectedName(), "Perplexity");
    start("com.openai.chatter");
    EXPECT_EQ(detectedName(), "ChatGPT");
}

TEST_F(AIAppDetectorTest, PrefixesAreCaseSensitiveAndStartAtTheBeginning) {
    start("com.Anthropic.claudefordesktop");
    start("org.com.anthropic.claudefordesktop");
    start("com.anthropic.claudefordeskto");
    EXPECT_EQ(detector.detectTargetApp(), std::nullopt);
}

TEST_F(AIAppDetectorTest, NamesAreCaseSensitive) {
    prefer("claude");
    EXPECT_EQ(detector.preferredApp(), std::nullopt);
}

TEST_F(AIAppDetectorTest, PreferredAppIsTheRowOfThatName) {
    EXPECT_EQ(detector.preferredApp(), std::nullopt);
    prefer("Copilot");
    EXPECT_EQ(detector.preferredApp(),
              (KnownAIApp{"Copilot", "com.microsoft.copilot", enter, "cpu"}));
    prefer("Edge");
    EXPECT_EQ(detector.preferredApp(),
              (KnownAIApp{"Edge", "com.microsoft.edgemac", enter, "globe"}));
    prefer("MyTool");
    custom("MyTool", "com.example.tool");
    EXPECT_EQ(detector.preferredApp(),
              (KnownAIApp{"MyTool", "com.example.tool", enter, "app.fill"}));
}

TEST_F(AIAppDetectorTest, ACataloguedNameWinsOverACustomAppOfThatName) {
    prefer("Claude");
    custom("Claude", "com.example.tool");
    EXPECT_EQ(detector.preferredApp()->bundlePrefix, kClaude);
}

TEST_F(AIAppDetectorTest, MatchingKnowsAllTenRowsAndNoOther) {
    RunningApplication app{7, "org.mozilla.firefox", "Fox", ActivationPolicy::regular};
    EXPECT_EQ(detector.matchKnownApp(app), (AIApp{"Firefox", "org.mozilla.firefox", app, enter}));
    app.bundleIdentifier = "com.example.tool";
    EXPECT_EQ(detector.matchKnownApp(app), std::nullopt);
    app.bundleIdentifier.reset();
    EXPECT_EQ(detector.matchKnownApp(app), std::nullopt);
}

TEST_F(AIAppDetectorTest, SavingACustomAppWritesItsParametersAndThenTheChoice) {
    detector.saveCustomApp("MyTool", "com.example.tool");
    using Written = effect::PreferenceWritten;
    EXPECT_THAT(desktop.journal.all<Written>(),
                ElementsAre(Written{"customAppName", "MyTool"},
                            Written{"customAppBundleID", "com.example.tool"},
                            Written{"preferredAIApp", "MyTool"}));
    EXPECT_EQ(detector.preferredApp()->bundlePrefix, "com.example.tool");
}

TEST_F(AIAppDetectorTest, NothingIsKeptBetweenTwoQuestions) {
    auto const claude = start(kClaude);
    EXPECT_EQ(detectedName(), "Claude");
    desktop.workspace.quit(claude);
    EXPECT_EQ(detectedName(), "");
    start(kGemini);
    EXPECT_EQ(detectedName(), "Gemini");
}

} // namespace
} // namespace trovel
